#include "core/datos/esquema.hpp"

#include <cstdio>
#include <fstream>
#include <sstream>
#include <unordered_set>

#include "core/datos/connection.hpp"
#include "core/datos/motor.hpp"
#include "core/datos/session.hpp"
#include "core/runtime/error.hpp"

namespace tpv::datos {

namespace {

[[noreturn]] void Fail(const std::string& origin, int line, const std::string& what) {
    throw RuntimeError(kErrDatabase, origin + ":" + std::to_string(line) + ": " + what);
}

ColType TypeOf(const std::string& word) {
    std::string w = Minusculas(word);
    if (w == "integer") return ColType::Integer;
    if (w == "double") return ColType::Double;
    if (w == "text") return ColType::Text;
    if (w == "date") return ColType::Date;
    if (w == "time") return ColType::Time;
    if (w == "flag") return ColType::Flag;
    return ColType::Unknown;
}

std::vector<std::string> Words(const std::string& line) {
    std::vector<std::string> out;
    std::string cur;
    bool quoted = false;
    for (char c : line) {
        if (c == '\'') quoted = !quoted;
        if (!quoted && (c == ' ' || c == '\t' || c == '(' || c == ')' || c == ',')) {
            if (!cur.empty()) out.push_back(cur);
            cur.clear();
            continue;
        }
        cur += c;
    }
    if (!cur.empty()) out.push_back(cur);
    return out;
}

}  // namespace

SchemaDef LeerEsquemaTexto(const std::string& text, const std::string& origin) {
    SchemaDef s;
    std::istringstream in(text);
    std::string line;
    int n = 0;
    TableDef* table = nullptr;
    while (std::getline(in, line)) {
        ++n;
        auto hash = line.find('#');
        if (hash != std::string::npos) line.resize(hash);
        // A partial index: "... (COLUMNS) where CONDITION".
        std::string where;
        const std::size_t cierre = line.find(')');
        if (cierre != std::string::npos) {
            std::string resto = line.substr(cierre + 1);
            const std::size_t a = resto.find_first_not_of(" \t");
            if (a != std::string::npos && Minusculas(resto.substr(a, 6)) == "where ") {
                where = resto.substr(a + 6);
                line.resize(cierre + 1);
            }
        }
        std::vector<std::string> w = Words(line);
        if (w.empty()) continue;
        std::string first = Minusculas(w[0]);
        if (first == "table") {
            if (w.size() != 2) Fail(origin, n, "se esperaba 'table NOMBRE'");
            s.tables.push_back(TableDef{w[1], {}});
            table = &s.tables.back();
        } else if (first == "index" || (first == "unique" && w.size() > 1 && Minusculas(w[1]) == "index")) {
            bool unique = first == "unique";
            std::size_t k = unique ? 2 : 1;
            if (w.size() < k + 4 || Minusculas(w[k + 1]) != "on") Fail(origin, n, "se esperaba 'index NOMBRE on TABLA (COLUMNAS)'");
            IndexDef ix;
            ix.unique = unique;
            ix.where = where;
            ix.name = w[k];
            ix.table = w[k + 2];
            ix.columns.assign(w.begin() + static_cast<long>(k) + 3, w.end());
            s.indexes.push_back(std::move(ix));
            table = nullptr;
        } else {
            if (!where.empty()) Fail(origin, n, "'where' fuera de un índice");
            if (!table) Fail(origin, n, "columna fuera de una tabla");
            if (w.size() < 2) Fail(origin, n, "falta el tipo de la columna");
            ColumnDef c;
            c.info.name = w[0];
            c.info.type = TypeOf(w[1]);
            if (c.info.type == ColType::Unknown) Fail(origin, n, "tipo desconocido '" + w[1] + "'");
            if (w.size() >= 4 && Minusculas(w[2]) == "default") c.defaultValue = w[3];
            else if (w.size() > 2) Fail(origin, n, "se esperaba 'default VALOR'");
            for (const ColumnDef& o : table->columns)
                if (IgualesSinCaso(o.info.name, c.info.name)) Fail(origin, n, "columna repetida '" + c.info.name + "'");
            table->columns.push_back(std::move(c));
        }
    }
    return s;
}

SchemaDef LeerEsquema(const std::string& path) {
    std::ifstream f(path);
    if (!f) throw RuntimeError(53, "No se encontró el archivo '" + path + "'.");
    std::stringstream ss;
    ss << f.rdbuf();
    return LeerEsquemaTexto(ss.str(), path);
}

std::string CarpetaEsquemas() {
    if (const char* env = std::getenv("TPV_SCHEMA_DIR")) return env;
#ifdef TPV_SCHEMA_DIR
    return TPV_SCHEMA_DIR;
#else
    return "core/schema";
#endif
}

void CrearBaseDeDatos(const std::string& uri, const std::string& schemaFile) {
    SchemaDef schema = LeerEsquema(schemaFile);
    std::unique_ptr<Engine> engine;
    const DestinoBase destino = LeerUri(uri);
    if (destino.servidor) {
        engine = OpenPostgres(uri, true);
    } else {
        const std::string& path = destino.ruta;
        std::remove(path.c_str());
        std::remove((path + "-wal").c_str());
        std::remove((path + "-shm").c_str());
        engine = OpenSqlite(path, true);
    }
    engine->CreateSchema(schema);
}

IndicesCompletados CompletarIndices(Connection& cn, const std::string& schemaFile) {
    const SchemaDef schema = LeerEsquema(schemaFile);
    Engine& engine = cn.session().engine();
    std::unordered_set<std::string> hay;
    for (const std::string& n : engine.IndexNames()) hay.insert(Minusculas(n));
    IndicesCompletados hecho;
    for (const IndexDef& ix : schema.indexes) {
        if (hay.count(Minusculas(ix.name))) continue;
        try {
            engine.CreateIndex(ix);
            hecho.creados.push_back(ix.name);
        } catch (const RuntimeError& e) {
            hecho.fallidos.emplace_back(ix.name, e.what());
        }
    }
    return hecho;
}

}  // namespace tpv::datos
