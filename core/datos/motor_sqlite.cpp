// The embedded engine: one SQLite file per shop, shared by the tills of the
// shop on one machine. WAL journal and a bounded wait let several till
// processes write the same file without "database is locked" reaching anyone,
// unless another program holds the file for longer than the wait (10 s in
// all): then the statement fails and says so.
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <thread>
#include <unordered_map>
#include <utility>

#include "core/datos/esquema.hpp"
#include "core/datos/fallos.hpp"
#include "core/datos/motor.hpp"
#include "core/datos/sqlite_jet.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/fecha.hpp"
#include "core/runtime/registro.hpp"

namespace tpv::datos {

namespace {

class SqliteDialect : public Dialect {
public:
    std::string QuoteIdent(const std::string& name) const override {
        std::string out = "\"";
        for (char c : name) {
            if (c == '"') out += '"';
            out += c;
        }
        return out + "\"";
    }
    std::string Placeholder(int) const override { return "?"; }
    std::string Concat(const std::string& a, ColType ta, const std::string& b, ColType tb) const override {
        return Part(a, ta) + " || " + Part(b, tb);
    }
    std::string Like(const std::string& value, const std::string& pattern) const override {
        return "jet_like(" + value + ", " + pattern + ")";
    }
    std::string TextCollate(const std::string& expr) const override { return expr + " COLLATE JET"; }
    std::string Divide(const std::string& a, const std::string& b) const override {
        return "CAST(" + a + " AS REAL) / " + b;
    }
    std::string RowKey() const override { return "rowid"; }
    bool FoldsDistinctLate() const override { return true; }  // DISTINCT builds a temporary b-tree
    // The keys go into one set, built once per run of the statement, and each
    // row's key is tested against it: a lookup in an index per row costs
    // several times more.
    std::string KeySet(const std::string& key, const std::string& subquery) const override {
        return "jet_en_claves(" + key + ", (" + subquery + "))";
    }
    std::string KeySetColumn(const std::string& column) const override { return "jet_claves(" + column + ")"; }
    Value Bind(const Value& v, ColType) const override {
        if (v.kind() == Value::Kind::Date) return Value(fecha::ATextoIso(v.date()));
        return v;
    }

private:
    static std::string Part(const std::string& e, ColType t) {
        if (t == ColType::Text) return "COALESCE(" + e + ", '')";
        return "jet_text(" + e + ")";
    }
};

const SqliteDialect kDialect;

using Reloj = std::chrono::steady_clock;

Fallo FalloDeCodigo(int rc) {
    switch (rc & 0xFF) {
        case SQLITE_CANTOPEN:
        case SQLITE_PERM: return Fallo::NoSeAbre;
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT: return Fallo::NoValida;
        case SQLITE_BUSY:
        case SQLITE_LOCKED: return Fallo::Ocupada;
        case SQLITE_READONLY: return Fallo::SoloLectura;
        case SQLITE_AUTH: return Fallo::Acceso;
        case SQLITE_CONSTRAINT:
            if (rc == SQLITE_CONSTRAINT_UNIQUE || rc == SQLITE_CONSTRAINT_PRIMARYKEY || rc == SQLITE_CONSTRAINT_ROWID)
                return Fallo::Repetido;
            if (rc == SQLITE_CONSTRAINT_NOTNULL) return Fallo::Obligatorio;
            return Fallo::Regla;
        default: return Fallo::Otro;
    }
}

// "file:" URI of a path, for the options that only a URI can give.
std::string UriDeArchivo(const std::string& path) {
    std::string out = "file:";
    for (unsigned char c : std::filesystem::absolute(path).string()) {
        if (c == '%' || c == '?' || c == '#' || c < 0x20) {
            char buf[4];
            std::snprintf(buf, sizeof buf, "%%%02X", c);
            out += buf;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out;
}

ColType TypeFromDecl(std::string decl) {
    for (char& c : decl) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (decl.rfind("FLAG", 0) == 0 || decl.rfind("BOOL", 0) == 0) return ColType::Flag;
    if (decl.rfind("DATE", 0) == 0) return ColType::Date;
    if (decl.rfind("TIME", 0) == 0) return ColType::Time;
    if (decl.find("INT") != std::string::npos) return ColType::Integer;
    if (decl.find("CHAR") != std::string::npos || decl.find("TEXT") != std::string::npos ||
        decl.find("CLOB") != std::string::npos)
        return ColType::Text;
    if (decl.find("REAL") != std::string::npos || decl.find("FLOA") != std::string::npos ||
        decl.find("DOUB") != std::string::npos || decl.find("NUM") != std::string::npos ||
        decl.find("DEC") != std::string::npos)
        return ColType::Double;
    return ColType::Unknown;
}

const char* DeclOf(ColType t) {
    switch (t) {
        case ColType::Integer: return "INTEGER";
        case ColType::Double: return "DOUBLE";
        case ColType::Text: return "TEXT COLLATE JET";
        case ColType::Date: return "DATE";
        case ColType::Time: return "TIME";
        case ColType::Flag: return "FLAG";
        default: return "";
    }
}

class SqliteEngine : public Engine {
public:
    SqliteEngine(const std::string& path, bool create) : path_(path) {
        if (path.empty())
            throw DbError("ruta", "No se ha indicado el archivo de la base de datos.", "", kErrBaseNoSeAbre);
        std::error_code ec;
        if (!create && std::filesystem::is_regular_file(path, ec) && std::filesystem::file_size(path, ec) == 0 && !ec)
            throw ErrorDeMotor(Fallo::NoValida, path, std::to_string(SQLITE_NOTADB), "el archivo está vacío (0 bytes)", "");
        try {
            Abrir(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (create ? SQLITE_OPEN_CREATE : 0));
            if (sqlite3_db_readonly(db_, "main") == 1) {
                AbrirParaLeer();
            } else {
                Simple("PRAGMA journal_mode=WAL");
                Simple("PRAGMA synchronous=NORMAL");
            }
        } catch (...) {
            // Nothing of a failed open stays behind.
            sqlite3_close_v2(db_);
            throw;
        }
    }

    ~SqliteEngine() override {
        for (auto& [k, st] : cache_) sqlite3_finalize(st);
        sqlite3_close_v2(db_);
    }

    const Dialect& dialect() const override { return kDialect; }

    Result Run(const std::string& sql, const std::vector<Value>& params, bool returnsRows) override {
        const RowSink* sink = std::exchange(sink_, nullptr);  // only this statement's rows go to it
        Plazo();
        sqlite3_stmt* st = Prepare(sql);
        struct Reset {
            sqlite3_stmt* s;
            ~Reset() {
                sqlite3_reset(s);
                sqlite3_clear_bindings(s);
            }
        } reset{st};
        for (std::size_t i = 0; i < params.size(); ++i) BindOne(st, static_cast<int>(i + 1), params[i], sql);
        Result r;
        long long leidas = 0;
        int ncol = sqlite3_column_count(st);
        if (returnsRows)
            for (int c = 0; c < ncol; ++c) r.names.emplace_back(sqlite3_column_name(st, c));
        for (;;) {
            int rc = sqlite3_step(st);
            if (rc == SQLITE_ROW) {
                std::vector<Value> row;
                row.reserve(static_cast<std::size_t>(ncol));
                for (int c = 0; c < ncol; ++c) row.push_back(Column(st, c));
                ++leidas;
                if (sink) (*sink)(row);
                else r.rows.push_back(std::move(row));
                continue;
            }
            if (rc == SQLITE_DONE) break;
            // A busy answer that the waiting routine didn't see (a snapshot
            // gone stale, a journal being recovered): the same wait applies.
            if ((rc & 0xFF) == SQLITE_BUSY && leidas == 0 && Reloj::now() < plazo_) {
                sqlite3_reset(st);
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
                continue;
            }
            Throw(rc, sql);
        }
        r.changes = returnsRows ? 0 : sqlite3_changes(db_);
        return r;
    }

    // The rows of Run, each handed over as sqlite3_step reads it.
    void RunEach(const std::string& sql, const std::vector<Value>& params, const RowSink& sink) override {
        sink_ = &sink;
        Run(sql, params, true);
    }

    Catalog LoadCatalog() override {
        Catalog cat;
        Result tables = Run("SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%'", {}, true);
        for (auto& row : tables.rows) {
            TableInfo t;
            t.name = row[0].text();
            Result cols = Run("SELECT name, type FROM pragma_table_info(?)", {Value(t.name)}, true);
            for (auto& c : cols.rows) t.columns.push_back(ColumnInfo{c[0].text(), TypeFromDecl(c[1].IsNull() ? "" : c[1].text())});
            Result unicas = Run(
                "SELECT ii.name FROM pragma_index_list(?) il, pragma_index_info(il.name) ii WHERE il.\"unique\" "
                "AND NOT il.partial AND (SELECT count(*) FROM pragma_index_info(il.name)) = 1",
                {Value(t.name)}, true);
            for (auto& u : unicas.rows)
                if (int i = u[0].IsNull() ? -1 : t.IndexOf(u[0].text()); i >= 0) t.columns[static_cast<std::size_t>(i)].unico = true;
            cat.Add(std::move(t));
        }
        return cat;
    }

    std::string DefaultDatabase() const override {
        std::string p = path_;
        auto slash = p.find_last_of('/');
        auto dot = p.find_last_of('.');
        if (dot != std::string::npos && (slash == std::string::npos || dot > slash)) p.resize(dot);
        return p;
    }

    void CreateSchema(const SchemaDef& schema) override {
        Begin();
        try {
            for (const TableDef& t : schema.tables) {
                std::string ddl = "CREATE TABLE " + kDialect.QuoteIdent(t.name) + " (";
                for (std::size_t i = 0; i < t.columns.size(); ++i) {
                    const ColumnDef& c = t.columns[i];
                    if (i) ddl += ", ";
                    ddl += kDialect.QuoteIdent(c.info.name) + " " + DeclOf(c.info.type);
                    if (!c.defaultValue.empty()) ddl += " DEFAULT " + c.defaultValue;
                }
                ddl += ")";
                Simple(ddl);
            }
            for (const IndexDef& ix : schema.indexes) CreateIndex(ix);
            Commit();
        } catch (...) {
            Rollback();
            throw;
        }
    }

    std::vector<std::string> IndexNames() override {
        std::vector<std::string> names;
        for (auto& row : Run("SELECT name FROM sqlite_master WHERE type = 'index'", {}, true).rows)
            names.push_back(row[0].text());
        return names;
    }

    void CreateIndex(const IndexDef& ix) override {
        std::string ddl = std::string(ix.unique ? "CREATE UNIQUE INDEX" : "CREATE INDEX") + " IF NOT EXISTS " +
                          kDialect.QuoteIdent(ix.name) + " ON " + kDialect.QuoteIdent(ix.table) + " (";
        for (std::size_t i = 0; i < ix.columns.size(); ++i) ddl += (i ? ", " : "") + kDialect.QuoteIdent(ix.columns[i]);
        Simple(ddl + ")" + (ix.where.empty() ? "" : " WHERE " + ix.where));
    }

    void Begin() override { Simple("BEGIN IMMEDIATE"); }
    void Commit() override { Simple("COMMIT"); }
    void Rollback() override {
        if (!sqlite3_get_autocommit(db_)) Simple("ROLLBACK");
    }

    std::vector<Value> InsertRow(const TableInfo& t, const std::vector<int>& columns, const std::vector<Value>& values) override {
        std::string sql;
        std::vector<Value> params;
        if (columns.empty()) {
            sql = "INSERT INTO " + kDialect.QuoteIdent(t.name) + " DEFAULT VALUES";
        } else {
            sql = "INSERT INTO " + kDialect.QuoteIdent(t.name) + " (";
            std::string marks;
            for (std::size_t i = 0; i < columns.size(); ++i) {
                sql += (i ? ", " : "") + kDialect.QuoteIdent(t.columns[static_cast<std::size_t>(columns[i])].name);
                marks += i ? ", ?" : "?";
                params.push_back(kDialect.Bind(values[i], t.columns[static_cast<std::size_t>(columns[i])].type));
            }
            sql += ") VALUES (" + marks + ")";
        }
        Run(sql, params, false);
        long long id = sqlite3_last_insert_rowid(db_);
        Result r = Run("SELECT rowid, " + ColumnList(t) + " FROM " + kDialect.QuoteIdent(t.name) + " WHERE rowid = ?",
                       {Value(id)}, true);
        if (r.rows.empty()) throw DbError("fila", "No se encuentra la fila recién insertada.", sql);
        return r.rows[0];
    }

    long long UpdateRow(const TableInfo& t, const Value& key, const std::vector<Value>& image,
                        const std::vector<int>& columns, const std::vector<Value>& values) override {
        if (columns.empty()) return 1;
        std::string sql = "UPDATE " + kDialect.QuoteIdent(t.name) + " SET ";
        std::vector<Value> params;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const ColumnInfo& c = t.columns[static_cast<std::size_t>(columns[i])];
            sql += (i ? ", " : "") + kDialect.QuoteIdent(c.name) + " = ?";
            params.push_back(kDialect.Bind(values[i], c.type));
        }
        sql += " WHERE rowid = ?" + ImageCondition(t, image, params, key);
        return Run(sql, params, false).changes;
    }

    long long DeleteRow(const TableInfo& t, const Value& key, const std::vector<Value>& image) override {
        std::vector<Value> params;
        std::string sql = "DELETE FROM " + kDialect.QuoteIdent(t.name) + " WHERE rowid = ?" + ImageCondition(t, image, params, key);
        return Run(sql, params, false).changes;
    }

private:
    void Abrir(const std::string& nombre, int flags) {
        int rc = sqlite3_open_v2(nombre.c_str(), &db_, flags, nullptr);
        if (rc != SQLITE_OK) {
            std::string msg = db_ ? sqlite3_errmsg(db_) : sqlite3_errstr(rc);
            sqlite3_close_v2(db_);
            db_ = nullptr;
            throw ErrorDeMotor(FalloDeCodigo(rc), path_, std::to_string(rc), msg, "");
        }
        sqlite3_extended_result_codes(db_, 1);
        sqlite3_busy_handler(db_, Esperar, this);
        rc = RegistrarFuncionesJet(db_);
        if (rc != SQLITE_OK) Throw(rc, "");
    }

    // A file this user may only read: it is read as it is, with no change of
    // journal. A database in WAL mode needs its shared-memory file beside it;
    // where the folder can't take one either, it is read as a file that
    // nobody changes.
    void AbrirParaLeer() {
        Registrar("La base de datos '" + path_ + "' se abre solo para leer: este usuario no puede escribir en ella.");
        char* err = nullptr;
        int rc = sqlite3_exec(db_, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, &err);
        sqlite3_free(err);
        if (rc == SQLITE_OK) return;
        sqlite3_close_v2(db_);
        db_ = nullptr;
        Abrir(UriDeArchivo(path_) + "?immutable=1", SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX);
    }

    // The one wait for a database held by another program: every busy answer
    // of a statement counts against the same time.
    void Plazo() { plazo_ = Reloj::now() + EsperaOcupada(); }

    static int Esperar(void* yo, int veces) {
        auto* engine = static_cast<SqliteEngine*>(yo);
        auto queda = engine->plazo_ - Reloj::now();
        if (queda <= Reloj::duration::zero()) return 0;
        auto pausa = std::chrono::milliseconds(std::min(1 + veces, 50));
        std::this_thread::sleep_for(std::min<Reloj::duration>(pausa, queda));
        return 1;
    }

    static std::string ColumnList(const TableInfo& t) {
        std::string s;
        for (std::size_t i = 0; i < t.columns.size(); ++i) s += (i ? ", " : "") + kDialect.QuoteIdent(t.columns[i].name);
        return s;
    }

    // Every column must still hold what was read (byte for byte, case too).
    static std::string ImageCondition(const TableInfo& t, const std::vector<Value>& image, std::vector<Value>& params,
                                      const Value& key) {
        params.push_back(key);
        std::string s;
        for (std::size_t i = 0; i < t.columns.size() && i < image.size(); ++i) {
            s += " AND " + kDialect.QuoteIdent(t.columns[i].name) + " IS ? COLLATE BINARY";
            params.push_back(image[i]);
        }
        return s;
    }

    void Simple(const std::string& sql) {
        Plazo();
        char* err = nullptr;
        int rc = sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &err);
        if (rc != SQLITE_OK) {
            std::string msg = err ? err : sqlite3_errstr(rc);
            sqlite3_free(err);
            throw ErrorDeMotor(FalloDeCodigo(rc), path_, std::to_string(rc), msg, sql);
        }
    }

    sqlite3_stmt* Prepare(const std::string& sql) {
        auto it = cache_.find(sql);
        if (it != cache_.end()) return it->second;
        if (cache_.size() > 400) {
            for (auto& [k, st] : cache_) sqlite3_finalize(st);
            cache_.clear();
        }
        sqlite3_stmt* st = nullptr;
        int rc = sqlite3_prepare_v3(db_, sql.c_str(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &st, nullptr);
        if (rc != SQLITE_OK) Throw(rc, sql);
        cache_.emplace(sql, st);
        return st;
    }

    void BindOne(sqlite3_stmt* st, int i, const Value& v, const std::string& sql) {
        int rc = SQLITE_OK;
        switch (v.kind()) {
            case Value::Kind::Null: rc = sqlite3_bind_null(st, i); break;
            case Value::Kind::Integer: rc = sqlite3_bind_int64(st, i, v.integer()); break;
            case Value::Kind::Double: rc = sqlite3_bind_double(st, i, v.real()); break;
            case Value::Kind::Text:
                rc = sqlite3_bind_text(st, i, v.text().data(), static_cast<int>(v.text().size()), SQLITE_TRANSIENT);
                break;
            case Value::Kind::Date: {
                std::string s = fecha::ATextoIso(v.date());
                rc = sqlite3_bind_text(st, i, s.data(), static_cast<int>(s.size()), SQLITE_TRANSIENT);
                break;
            }
        }
        if (rc != SQLITE_OK) Throw(rc, sql);
    }

    static Value Column(sqlite3_stmt* st, int c) {
        switch (sqlite3_column_type(st, c)) {
            case SQLITE_INTEGER: return Value(static_cast<long long>(sqlite3_column_int64(st, c)));
            case SQLITE_FLOAT: return Value(sqlite3_column_double(st, c));
            case SQLITE_TEXT:
            case SQLITE_BLOB: {
                const char* t = reinterpret_cast<const char*>(sqlite3_column_text(st, c));
                return Value(std::string(t ? t : "", static_cast<std::size_t>(sqlite3_column_bytes(st, c))));
            }
            default: return Value();
        }
    }

    [[noreturn]] void Throw(int rc, const std::string& sql) {
        throw ErrorDeMotor(FalloDeCodigo(rc), path_, std::to_string(rc), sqlite3_errmsg(db_), sql);
    }

    sqlite3* db_ = nullptr;
    std::string path_;
    Reloj::time_point plazo_{};
    std::unordered_map<std::string, sqlite3_stmt*> cache_;
    const RowSink* sink_ = nullptr;  // set while RunEach runs
};

}  // namespace

std::unique_ptr<Engine> OpenSqlite(const std::string& path, bool create) {
    return std::make_unique<SqliteEngine>(path, create);
}

}  // namespace tpv::datos
