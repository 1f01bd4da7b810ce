// The server engine: the shop's database on a PostgreSQL server, shared by
// tills on several machines. Statements arrive translated by the dialect of
// postgres_dialecto.cpp; here they are prepared once per connection, run with
// their values as parameters, and their rows read back as the till's values.
#include "core/datos/fallos.hpp"
#include "core/datos/motor.hpp"
#include "core/datos/servidor.hpp"
#include "core/runtime/error.hpp"

#ifdef TPV_WITH_POSTGRESQL

#include <libpq-fe.h>

#include <atomic>
#include <charconv>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <set>
#include <unordered_map>

#include "core/datos/postgres_dialecto.hpp"
#include "core/runtime/registro.hpp"

namespace tpv::datos {

namespace {

using pg::Dialecto;

// Type numbers of the server's built-in types.
enum : Oid {
    kBool = 16, kInt8 = 20, kInt2 = 21, kInt4 = 23, kOid = 26, kFloat4 = 700, kFloat8 = 701, kNumeric = 1700,
    kDate = 1082, kTime = 1083, kTimestamp = 1114, kTimestampTz = 1184, kTimeTz = 1266, kText = 25,
    kDesconocido = 0,  // the server takes the type from where the value goes
};

struct CerrarConexion {
    void operator()(PGconn* c) const { PQfinish(c); }
};
struct LiberarResultado {
    void operator()(PGresult* r) const { PQclear(r); }
};
using ConexionPtr = std::unique_ptr<PGconn, CerrarConexion>;
using ResultadoPtr = std::unique_ptr<PGresult, LiberarResultado>;

// A parameter as the server gets it: text, with a type or none.
struct Parametro {
    Oid tipo = kDesconocido;
    bool nulo = true;
    std::string texto;
};

std::string SinSaltoFinal(std::string s) {
    while (!s.empty() && (s.back() == '\n' || s.back() == ' ')) s.pop_back();
    return s;
}

bool Contiene(const std::string& texto, const char* trozo) { return texto.find(trozo) != std::string::npos; }

// A connection refused before any statement: libpq gives no SQLSTATE for it,
// only the server's words (or its own).
Fallo FalloAlConectar(PGconn* c, const std::string& mensaje) {
    if (PQconnectionNeedsPassword(c) || Contiene(mensaje, "authentication failed") ||
        Contiene(mensaje, "no password supplied") || (Contiene(mensaje, "role \"") && Contiene(mensaje, "does not exist")))
        return Fallo::Acceso;
    if (Contiene(mensaje, "database \"") && Contiene(mensaje, "does not exist")) return Fallo::NoSeAbre;
    if (Contiene(mensaje, "permission denied")) return Fallo::NoSeAbre;
    return Fallo::SinServidor;
}

Fallo FalloDeEstado(const std::string& estado) {
    if (estado == "23505") return Fallo::Repetido;
    if (estado == "23502") return Fallo::Obligatorio;
    if (estado.rfind("23", 0) == 0) return Fallo::Regla;
    if (estado == "28P01" || estado == "28000") return Fallo::Acceso;
    if (estado.rfind("08", 0) == 0 || estado == "57P01" || estado == "57P02" || estado == "57P03")
        return Fallo::SinServidor;
    if (estado == "3D000") return Fallo::NoSeAbre;
    if (estado == "55P03" || estado == "40P01") return Fallo::Ocupada;
    if (estado == "25006") return Fallo::SoloLectura;
    if (estado == "XX001" || estado == "XX002") return Fallo::NoValida;
    return Fallo::Otro;
}

// The database a connection reaches, as messages name it (no password).
std::string NombreBase(PGconn* c) {
    const char* host = PQhost(c);
    const char* puerto = PQport(c);
    const char* db = PQdb(c);
    return std::string("postgresql://") + (PQuser(c) ? PQuser(c) : "") + "@" + (host ? host : "") +
           (puerto && *puerto ? std::string(":") + puerto : "") + "/" + (db ? db : "");
}

ConexionPtr Conectar(const std::string& uri) {
    // A server that doesn't answer is given up in ten seconds, unless the URI says otherwise.
    const char* claves[] = {"connect_timeout", "dbname", "client_encoding", "fallback_application_name", nullptr};
    const char* valores[] = {"10", uri.c_str(), "UTF8", "tpv", nullptr};
    ConexionPtr c(PQconnectdbParams(claves, valores, 1));
    if (!c) throw DbError("08001", "No hay memoria para conectar con la base de datos.", "");
    if (PQstatus(c.get()) != CONNECTION_OK) {
        const std::string mensaje = SinSaltoFinal(PQerrorMessage(c.get()));
        throw ErrorDeMotor(FalloAlConectar(c.get(), mensaje), uri, "08001", mensaje, "");
    }
    PQsetNoticeProcessor(c.get(), [](void*, const char*) {}, nullptr);
    return c;
}

[[noreturn]] void Falla(PGconn* c, const PGresult* r, const std::string& sql) {
    const char* estado = r ? PQresultErrorField(r, PG_DIAG_SQLSTATE) : nullptr;
    const char* mensaje = r ? PQresultErrorField(r, PG_DIAG_MESSAGE_PRIMARY) : nullptr;
    // No answer from the server at all: the connection is gone.
    const std::string codigo = estado ? estado : "08006";
    throw ErrorDeMotor(FalloDeEstado(codigo), NombreBase(c), codigo,
                       mensaje ? mensaje : SinSaltoFinal(PQerrorMessage(c)), sql);
}

std::atomic<long long> g_idas{0};

ResultadoPtr Comprobar(PGconn* c, PGresult* crudo, const std::string& sql) {
    ++g_idas;
    ResultadoPtr r(crudo);
    ExecStatusType st = r ? PQresultStatus(r.get()) : PGRES_FATAL_ERROR;
    if (st != PGRES_COMMAND_OK && st != PGRES_TUPLES_OK) Falla(c, r.get(), sql);
    return r;
}

// One command of the server's own SQL (or several, as one transaction).
ResultadoPtr Simple(PGconn* c, const std::string& sql) { return Comprobar(c, PQexec(c, sql.c_str()), sql); }

Parametro ParametroDe(const Value& v) {
    switch (v.kind()) {
        case Value::Kind::Null: return {};
        case Value::Kind::Integer: return {kInt8, false, std::to_string(v.integer())};
        case Value::Kind::Double: return {kFloat8, false, pg::TextoDouble(v.real())};
        case Value::Kind::Text: return {kText, false, v.text()};
        case Value::Kind::Date: return {kDesconocido, false, pg::TextoFechaHora(v.date())};
    }
    return {};
}

// A value for a column: text meant for a column of another type is read by
// the server as that type ("15/11/2026" into a date).
Parametro ParametroColumna(const Value& v, ColType columna) {
    Parametro p = ParametroDe(v);
    if (v.kind() == Value::Kind::Text && columna != ColType::Text) p.tipo = kDesconocido;
    return p;
}

// A value of a row as it was read, to be compared with what the row holds:
// typed by its column, so that every type reads back exactly.
Parametro ParametroImagen(const Value& v) {
    Parametro p = ParametroDe(v);
    p.tipo = kDesconocido;
    return p;
}

Value Leer(const PGresult* r, int fila, int col) {
    if (PQgetisnull(r, fila, col)) return Value();
    std::string_view t(PQgetvalue(r, fila, col), static_cast<std::size_t>(PQgetlength(r, fila, col)));
    switch (PQftype(r, col)) {
        case kBool: return Value(static_cast<long long>(t == "t" ? -1 : 0));
        case kInt2:
        case kInt4:
        case kInt8:
        case kOid: {
            long long n = 0;
            auto res = std::from_chars(t.data(), t.data() + t.size(), n);
            if (res.ec == std::errc() && res.ptr == t.data() + t.size()) return Value(n);
            break;
        }
        case kFloat4:
        case kFloat8:
        case kNumeric: {
            double d = 0;
            auto res = std::from_chars(t.data(), t.data() + t.size(), d);
            if (res.ec == std::errc() && res.ptr == t.data() + t.size()) return Value(d);
            break;
        }
        case kDate:
        case kTimestamp:
        case kTimestampTz: {
            DateTime d;
            if (pg::LeerFechaHora(t, d)) return Value(d);
            break;
        }
        case kTime:
        case kTimeTz: {
            DateTime d;
            if (pg::LeerHora(t, d)) return Value(d);
            break;
        }
        default: break;
    }
    return Value(std::string(t));
}

ColType TipoDeColumna(std::string_view nombre, char categoria) {
    switch (categoria) {
        case 'N':
            if (nombre == "int2") return ColType::Flag;
            if (nombre == "int4" || nombre == "int8" || nombre == "oid") return ColType::Integer;
            return ColType::Double;
        case 'S': return ColType::Text;
        case 'B': return ColType::Flag;
        case 'D': return nombre == "time" || nombre == "timetz" ? ColType::Time : ColType::Date;
        default: return ColType::Unknown;
    }
}

// Tables and views of the search path, columns in their order. A comment that
// spells the name in another case gives the name as the schema wrote it.
constexpr const char* kCatalogo = R"sql(
SELECT c.relname, COALESCE(dt.description, ''), a.attname, COALESCE(dc.description, ''),
       t.typname, t.typcategory
  FROM pg_catalog.pg_class c
  JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace
  JOIN pg_catalog.pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped
  JOIN pg_catalog.pg_type t ON t.oid = a.atttypid
  LEFT JOIN pg_catalog.pg_description dt
         ON dt.objoid = c.oid AND dt.classoid = 'pg_catalog.pg_class'::regclass AND dt.objsubid = 0
  LEFT JOIN pg_catalog.pg_description dc
         ON dc.objoid = c.oid AND dc.classoid = 'pg_catalog.pg_class'::regclass AND dc.objsubid = a.attnum
 WHERE c.relkind IN ('r', 'v', 'm', 'f', 'p') AND n.nspname = ANY (pg_catalog.current_schemas(false))
 ORDER BY array_position(pg_catalog.current_schemas(false), n.nspname::text), c.relname, a.attnum
)sql";

// The columns that a unique index covers alone, with no condition.
constexpr const char* kColumnasUnicas = R"sql(
SELECT c.relname, a.attname
  FROM pg_catalog.pg_index i
  JOIN pg_catalog.pg_class c ON c.oid = i.indrelid
  JOIN pg_catalog.pg_namespace n ON n.oid = c.relnamespace
  JOIN pg_catalog.pg_attribute a ON a.attrelid = c.oid AND a.attnum = i.indkey[0]
 WHERE i.indisunique AND i.indnatts = 1 AND i.indpred IS NULL AND i.indexprs IS NULL
   AND n.nspname = ANY (pg_catalog.current_schemas(false))
)sql";

std::string Nombre(const std::string& real, const std::string& comentario) {
    return !comentario.empty() && IgualesSinCaso(real, comentario) ? comentario : real;
}

// A write that the server may have committed although its answer never came:
// the connection broke between the two. The caller got an error; if the write
// went through anyway (a counter's number spent, a row written) the log says
// so when a connection to the same database works again. It outlives the
// engine, as the till may open a new connection after the failure.
struct EscrituraEnDuda {
    std::string base;
    std::string sentencia;
};
std::mutex mutexDuda;
std::optional<EscrituraEnDuda> escrituraEnDuda;

void AnotarEscrituraEnDuda(PGconn* c, const std::string& sql, const std::vector<Parametro>& ps) {
    std::string texto = sql;
    for (std::size_t i = 0; i < ps.size(); ++i)
        texto += (i ? ", $" : " con $") + std::to_string(i + 1) + " = " + (ps[i].nulo ? "NULL" : "'" + ps[i].texto + "'");
    std::lock_guard<std::mutex> cierre(mutexDuda);
    escrituraEnDuda = EscrituraEnDuda{NombreBase(c), std::move(texto)};
}

void AvisarEscrituraEnDuda(PGconn* c) {
    std::lock_guard<std::mutex> cierre(mutexDuda);
    if (!escrituraEnDuda || escrituraEnDuda->base != NombreBase(c)) return;
    Registrar("Vuelve la conexión con la base de datos '" + escrituraEnDuda->base +
              "'. La escritura en curso cuando se cortó se dio por fallida, pero el servidor pudo hacerla "
              "(si cambiaba un contador, el número que tenía quedó gastado sin usar): " + escrituraEnDuda->sentencia);
    escrituraEnDuda.reset();
}

class PostgresEngine : public Engine {
public:
    explicit PostgresEngine(const std::string& uri) : uri_(uri), conn_(Conectar(uri)) {
        AvisarEscrituraEnDuda(conn_.get());
        Preparar();
    }

    const Dialect& dialect() const override { return Dialecto(); }

    Result Run(const std::string& sql, const std::vector<Value>& params, bool returnsRows) override {
        std::vector<Parametro> ps;
        ps.reserve(params.size());
        for (const Value& v : params) ps.push_back(ParametroDe(v));
        ResultadoPtr r = Ejecutar(sql, ps, !returnsRows);
        return Filas(r.get(), returnsRows);
    }

    Catalog LoadCatalog() override {
        ResultadoPtr r = Ejecutar(kCatalogo, {});
        ResultadoPtr u = Ejecutar(kColumnasUnicas, {});
        std::set<std::pair<std::string, std::string>> unicas;
        for (int i = 0, n = PQntuples(u.get()); i < n; ++i) unicas.emplace(PQgetvalue(u.get(), i, 0), PQgetvalue(u.get(), i, 1));
        Catalog cat;
        TableInfo actual;
        std::string clave;
        auto cerrar = [&] {
            if (!actual.name.empty() && !cat.Find(actual.name)) cat.Add(std::move(actual));
            actual = TableInfo{};
        };
        for (int i = 0, n = PQntuples(r.get()); i < n; ++i) {
            std::string tabla = PQgetvalue(r.get(), i, 0);
            if (tabla != clave) {
                cerrar();
                clave = tabla;
                actual.name = Nombre(tabla, PQgetvalue(r.get(), i, 1));
            }
            actual.columns.push_back(
                ColumnInfo{Nombre(PQgetvalue(r.get(), i, 2), PQgetvalue(r.get(), i, 3)),
                           TipoDeColumna(PQgetvalue(r.get(), i, 4), PQgetvalue(r.get(), i, 5)[0]),
                           unicas.count({tabla, PQgetvalue(r.get(), i, 2)}) > 0});
        }
        cerrar();
        return cat;
    }

    // The database's name as the URI gives it, case kept: its last component
    // is the shop's sector ("SUPERMERCADO").
    std::string DefaultDatabase() const override { return PQdb(conn_.get()); }

    void CreateSchema(const SchemaDef& schema) override {
        ResultadoPtr cod = Simple(conn_.get(), "SHOW server_encoding");
        std::string codificacion = PQgetvalue(cod.get(), 0, 0);
        if (codificacion != "UTF8")
            throw DbError("22023", "La base de datos '" + DefaultDatabase() + "' está en " + codificacion +
                                       ": una tienda necesita UTF8.", "");
        std::string ddl = pg::Ddl(schema);
        ResultadoPtr r(PQexec(conn_.get(), ddl.c_str()));
        ExecStatusType st = r ? PQresultStatus(r.get()) : PGRES_FATAL_ERROR;
        if (st == PGRES_COMMAND_OK || st == PGRES_TUPLES_OK) return;
        const char* estado = r ? PQresultErrorField(r.get(), PG_DIAG_SQLSTATE) : nullptr;
        if (estado && std::string(estado) == "42P07")
            throw DbError(estado, "La base de datos '" + DefaultDatabase() + "' ya tiene tablas de una tienda: " +
                                      SinSaltoFinal(PQresultErrorField(r.get(), PG_DIAG_MESSAGE_PRIMARY)), "");
        Falla(conn_.get(), r.get(), "");
    }

    std::vector<std::string> IndexNames() override {
        ResultadoPtr r = Ejecutar(
            "SELECT indexname FROM pg_catalog.pg_indexes WHERE schemaname = ANY (pg_catalog.current_schemas(false))", {});
        std::vector<std::string> names;
        for (int i = 0, n = PQntuples(r.get()); i < n; ++i) names.emplace_back(PQgetvalue(r.get(), i, 0));
        return names;
    }

    void CreateIndex(const IndexDef& ix) override { Simple(conn_.get(), pg::IndiceDdl(ix)); }

    void Begin() override { Simple(conn_.get(), "BEGIN"); }
    void Commit() override { Simple(conn_.get(), "COMMIT"); }
    void Rollback() override {
        if (PQtransactionStatus(conn_.get()) != PQTRANS_IDLE) Simple(conn_.get(), "ROLLBACK");
    }

    std::vector<Value> InsertRow(const TableInfo& t, const std::vector<int>& columns,
                                 const std::vector<Value>& values) override {
        const auto& d = Dialecto();
        std::string sql = "INSERT INTO " + d.QuoteIdent(t.name);
        std::vector<Parametro> ps;
        if (columns.empty()) {
            sql += " DEFAULT VALUES";
        } else {
            std::string marcas;
            for (std::size_t i = 0; i < columns.size(); ++i) {
                const ColumnInfo& c = t.columns[static_cast<std::size_t>(columns[i])];
                sql += (i ? ", " : " (") + d.QuoteIdent(c.name);
                marcas += (i ? ", $" : "$") + std::to_string(i + 1);
                ps.push_back(ParametroColumna(d.Bind(values[i], c.type), c.type));
            }
            sql += ") VALUES (" + marcas + ")";
        }
        sql += " RETURNING ctid";
        for (const ColumnInfo& c : t.columns) sql += ", " + d.QuoteIdent(c.name);
        Result r = Filas(Ejecutar(sql, ps, true).get(), true);
        if (r.rows.empty()) throw DbError("fila", "No se encuentra la fila recién insertada.", sql);
        return r.rows[0];
    }

    long long UpdateRow(const TableInfo& t, const Value& key, const std::vector<Value>& image,
                        const std::vector<int>& columns, const std::vector<Value>& values) override {
        if (columns.empty()) return 1;
        const auto& d = Dialecto();
        std::string sql = "UPDATE " + d.QuoteIdent(t.name) + " SET ";
        std::vector<Parametro> ps;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const ColumnInfo& c = t.columns[static_cast<std::size_t>(columns[i])];
            ps.push_back(ParametroColumna(d.Bind(values[i], c.type), c.type));
            sql += (i ? ", " : "") + d.QuoteIdent(c.name) + " = $" + std::to_string(ps.size());
        }
        sql += CondicionImagen(t, key, image, ps) + " RETURNING ctid";
        ResultadoPtr r = Ejecutar(sql, ps, true);
        long long n = PQntuples(r.get());
        if (n == 1) {
            movidaDesde_ = key;
            movidaA_ = Value(std::string(PQgetvalue(r.get(), 0, 0)));
        }
        return n;
    }

    long long DeleteRow(const TableInfo& t, const Value& key, const std::vector<Value>& image) override {
        std::vector<Parametro> ps;
        std::string sql = "DELETE FROM " + Dialecto().QuoteIdent(t.name) + CondicionImagen(t, key, image, ps);
        return std::atoll(PQcmdTuples(Ejecutar(sql, ps, true).get()));
    }

    // Every update leaves a new version of the row in a new place.
    Value KeyAfterUpdate(const Value& key) const override { return key == movidaDesde_ ? movidaA_ : key; }

private:
    void Preparar() {
        // Dates in and out as ISO, regional text into a date as day/month;
        // doubles in their shortest exact form.
        // A row locked by another program is waited for as long as the
        // embedded engine waits for a locked file, then the statement fails.
        Simple(conn_.get(),
               "SET DateStyle = 'ISO, DMY'; SET extra_float_digits = 3; SET client_min_messages = warning; "
               "SET lock_timeout = " + std::to_string(EsperaOcupada().count()));
    }

    // The row by its place, and only while it still holds what was read:
    // text byte for byte, case too; every other type as its column reads it.
    static std::string CondicionImagen(const TableInfo& t, const Value& key, const std::vector<Value>& image,
                                       std::vector<Parametro>& ps) {
        const auto& d = Dialecto();
        ps.push_back(ParametroImagen(key));
        std::string s = " WHERE ctid = $" + std::to_string(ps.size()) + "::tid";
        for (std::size_t i = 0; i < t.columns.size() && i < image.size(); ++i) {
            const ColumnInfo& c = t.columns[i];
            if (c.type == ColType::Unknown) continue;  // a type without equality
            ps.push_back(ParametroImagen(image[i]));
            s += " AND " + d.QuoteIdent(c.name) + (c.type == ColType::Text ? " COLLATE \"C\"" : "") +
                 " IS NOT DISTINCT FROM $" + std::to_string(ps.size());
        }
        return s;
    }

    // escribe: the statement changes rows, and commits on its own unless a
    // transaction is open.
    ResultadoPtr Ejecutar(const std::string& sql, const std::vector<Parametro>& ps, bool escribe = false) {
        if (PQstatus(conn_.get()) != CONNECTION_OK) {
            // The server went away: one new attempt, with the session set up again.
            PQreset(conn_.get());
            preparadas_.clear();
            if (PQstatus(conn_.get()) != CONNECTION_OK) Falla(conn_.get(), nullptr, sql);
            AvisarEscrituraEnDuda(conn_.get());
            Preparar();
        }
        const bool seConfirmaSola = escribe && PQtransactionStatus(conn_.get()) == PQTRANS_IDLE;
        std::vector<const char*> valores;
        valores.reserve(ps.size());
        for (const Parametro& p : ps) valores.push_back(p.nulo ? nullptr : p.texto.c_str());
        for (int intento = 0;; ++intento) {
            const std::string& nombre = Preparada(sql, ps);
            PGresult* r = PQexecPrepared(conn_.get(), nombre.c_str(), static_cast<int>(ps.size()), valores.data(),
                                         nullptr, nullptr, 0);
            const char* estado = r ? PQresultErrorField(r, PG_DIAG_SQLSTATE) : nullptr;
            if (intento == 0 && estado && std::string(estado) == "26000") {
                // Somebody discarded the session's prepared statements.
                PQclear(r);
                preparadas_.clear();
                continue;
            }
            if (seConfirmaSola && PQstatus(conn_.get()) == CONNECTION_BAD) AnotarEscrituraEnDuda(conn_.get(), sql, ps);
            return Comprobar(conn_.get(), r, sql);
        }
    }

    // Each statement is prepared once per connection and type of its values.
    const std::string& Preparada(const std::string& sql, const std::vector<Parametro>& ps) {
        std::string clave = sql;
        clave += '\x1f';
        std::vector<Oid> tipos;
        for (const Parametro& p : ps) {
            tipos.push_back(p.tipo);
            clave += std::to_string(p.tipo) + ",";
        }
        auto it = preparadas_.find(clave);
        if (it != preparadas_.end()) return it->second;
        if (preparadas_.size() >= 400) {
            Simple(conn_.get(), "DEALLOCATE ALL");
            preparadas_.clear();
        }
        std::string nombre = "tpv" + std::to_string(++numero_);
        Comprobar(conn_.get(),
                  PQprepare(conn_.get(), nombre.c_str(), sql.c_str(), static_cast<int>(tipos.size()), tipos.data()),
                  sql);
        return preparadas_.emplace(std::move(clave), std::move(nombre)).first->second;
    }

    static Result Filas(const PGresult* r, bool returnsRows) {
        Result out;
        int ncol = PQnfields(r);
        if (returnsRows) {
            for (int c = 0; c < ncol; ++c) out.names.emplace_back(PQfname(r, c));
            int n = PQntuples(r);
            out.rows.reserve(static_cast<std::size_t>(n));
            for (int i = 0; i < n; ++i) {
                std::vector<Value> fila;
                fila.reserve(static_cast<std::size_t>(ncol));
                for (int c = 0; c < ncol; ++c) fila.push_back(Leer(r, i, c));
                out.rows.push_back(std::move(fila));
            }
        } else {
            out.changes = std::atoll(PQcmdTuples(const_cast<PGresult*>(r)));
        }
        return out;
    }

    std::string uri_;
    ConexionPtr conn_;
    std::unordered_map<std::string, std::string> preparadas_;
    long numero_ = 0;
    Value movidaDesde_, movidaA_;
};

// A connection for creating and dropping databases: to the maintenance
// database of the server, or to template1 where that one is missing.
ConexionPtr ConectarServidor(const std::string& uri) {
    try {
        return Conectar(uri);
    } catch (const DbError&) {
        if (servidor::Base(uri) == "template1") throw;
        return Conectar(servidor::ConBase(uri, "template1"));
    }
}

}  // namespace

std::unique_ptr<Engine> OpenPostgres(const std::string& uri, bool create) {
    if (create) {
        std::string base = servidor::Base(uri);
        std::string admin = servidor::ConBase(uri, "postgres");
        if (!base.empty() && !servidor::ExisteBase(admin, base)) servidor::CrearBase(admin, base);
    }
    return std::make_unique<PostgresEngine>(uri);
}

namespace servidor {

long long Idas() { return g_idas.load(); }

void Ejecutar(const std::string& uri, const std::string& sql) {
    ConexionPtr c = Conectar(uri);
    Simple(c.get(), sql);
}

bool ExisteBase(const std::string& uri, const std::string& base) {
    ConexionPtr c = ConectarServidor(uri);
    const char* valores[] = {base.c_str()};
    const std::string sql = "SELECT 1 FROM pg_catalog.pg_database WHERE datname = $1";
    ResultadoPtr r =
        Comprobar(c.get(), PQexecParams(c.get(), sql.c_str(), 1, nullptr, valores, nullptr, nullptr, 0), sql);
    return PQntuples(r.get()) > 0;
}

void CrearBase(const std::string& uri, const std::string& base, const std::string& plantilla) {
    ConexionPtr c = ConectarServidor(uri);
    const std::string sql = "CREATE DATABASE " + Identificador(base);
    if (!plantilla.empty()) {
        Simple(c.get(), sql + " TEMPLATE " + Identificador(plantilla));
        return;
    }
    try {
        Simple(c.get(), sql + " ENCODING 'UTF8' TEMPLATE template0");
    } catch (const DbError& e) {
        // The server's own locale doesn't take UTF8: the neutral one does,
        // and the shop's text compares through its own collation anyway.
        if (e.EngineCode() != "22023") throw;
        Simple(c.get(), sql + " ENCODING 'UTF8' LC_COLLATE 'C' LC_CTYPE 'C' TEMPLATE template0");
    }
}

void BorrarBase(const std::string& uri, const std::string& base) {
    ConexionPtr c = ConectarServidor(uri);
    Simple(c.get(), "DROP DATABASE IF EXISTS " + Identificador(base) + " WITH (FORCE)");
}

}  // namespace servidor

}  // namespace tpv::datos

#else  // built without libpq: every road to a server says so.

namespace tpv::datos {

namespace {
[[noreturn]] void SinPostgres(const std::string& uri) {
    throw DbError("pg", "Este programa se construyó sin PostgreSQL: no puede abrir '" + servidor::SinClave(uri) + "'.",
                  "");
}
}  // namespace

std::unique_ptr<Engine> OpenPostgres(const std::string& uri, bool) { SinPostgres(uri); }

namespace servidor {
long long Idas() { return 0; }
void Ejecutar(const std::string& uri, const std::string&) { SinPostgres(uri); }
bool ExisteBase(const std::string& uri, const std::string&) { SinPostgres(uri); }
void CrearBase(const std::string& uri, const std::string&, const std::string&) { SinPostgres(uri); }
void BorrarBase(const std::string& uri, const std::string&) { SinPostgres(uri); }
}  // namespace servidor

}  // namespace tpv::datos

#endif
