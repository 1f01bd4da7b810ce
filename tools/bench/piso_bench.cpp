// The floor of each figure: the same work done by the engine's own client
// library, with statements prepared once and no translation, no values
// built and no rows kept.
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#ifdef TPV_WITH_POSTGRESQL
#include <libpq-fe.h>
#endif

#include <random>
#include <string>
#include <vector>

#include "core/datos/session.hpp"
#include "core/runtime/unicode.hpp"
#include "tools/bench/bancos.hpp"
#include "tools/bench/bench.hpp"

namespace tpvbench {

namespace {

int Jet(void*, int na, const void* a, int nb, const void* b) {
    return tpv::unicode::CompareText(std::string_view(static_cast<const char*>(a), static_cast<std::size_t>(na)),
                                     std::string_view(static_cast<const char*>(b), static_cast<std::size_t>(nb)));
}

struct Sqlite {
    sqlite3* db = nullptr;
    explicit Sqlite(const std::string& path) {
        sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
        sqlite3_create_collation(db, "JET", SQLITE_UTF8, nullptr, Jet);
    }
    ~Sqlite() { sqlite3_close_v2(db); }
    sqlite3_stmt* Preparar(const std::string& sql) {
        sqlite3_stmt* st = nullptr;
        if (sqlite3_prepare_v3(db, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &st, nullptr) != SQLITE_OK) st = nullptr;
        return st;
    }
};

// Steps a statement to its end, touching every column as a reader would.
int Leer(sqlite3_stmt* st) {
    int filas = 0;
    int n = sqlite3_column_count(st);
    while (sqlite3_step(st) == SQLITE_ROW) {
        ++filas;
        for (int c = 0; c < n; ++c) {
            if (sqlite3_column_type(st, c) == SQLITE_TEXT) benchmark::DoNotOptimize(sqlite3_column_text(st, c));
            else benchmark::DoNotOptimize(sqlite3_column_double(st, c));
        }
    }
    sqlite3_reset(st);
    return filas;
}

// The lookup as two indexed point queries: the extra codes, then the
// product's own code.
void DosConsultas(benchmark::State& state, std::string uri, int tipo) {
    tpv::Connection cn;
    cn.Open(uri);
    std::vector<std::string> codigos = Codigos(cn, tipo);
    Sqlite s(uri);
    const std::string columnas =
        "SELECT \"Codigo\", \"nombre\", \"stock\", \"UbicacionPrincipal\", \"imagen\", \"modoventa\", \"precio\" FROM "
        "\"Productos\" WHERE ";
    sqlite3_stmt* extra = s.Preparar("SELECT \"Codigo\" FROM \"Productos_CodigosExtra\" WHERE \"Codigo_Extra\" = ?");
    sqlite3_stmt* porCodigo = s.Preparar(columnas + "\"Codigo\" = ? AND \"borrar\" = 0 AND \"mostrarencaja\" = -1");
    sqlite3_stmt* propio = s.Preparar(columnas + "\"codigocliente\" = ? AND \"borrar\" = 0 AND \"mostrarencaja\" = -1");
    if (!extra || !porCodigo || !propio || codigos.empty()) {
        state.SkipWithError(sqlite3_errmsg(s.db));
        return;
    }
    std::mt19937 rng(7);
    for (auto _ : state) {
        const std::string& c = codigos[rng() % codigos.size()];
        sqlite3_bind_text(extra, 1, c.data(), static_cast<int>(c.size()), SQLITE_STATIC);
        while (sqlite3_step(extra) == SQLITE_ROW) {
            sqlite3_bind_int64(porCodigo, 1, sqlite3_column_int64(extra, 0));
            Leer(porCodigo);
        }
        sqlite3_reset(extra);
        sqlite3_bind_text(propio, 1, c.data(), static_cast<int>(c.size()), SQLITE_STATIC);
        Leer(propio);
    }
    for (auto* st : {extra, porCodigo, propio}) sqlite3_finalize(st);
}

// The statement the translator writes, run by the engine alone.
void Traducida(benchmark::State& state, std::string uri, int tipo) {
    tpv::Connection cn;
    cn.Open(uri);
    std::vector<std::string> codigos = Codigos(cn, tipo);
    auto p = cn.session().Prepare(SentenciaCodigoBarras(codigos.empty() ? "x" : codigos[0]), false);
    Sqlite s(uri);
    sqlite3_stmt* st = s.Preparar(p->sql);
    if (!st || codigos.empty()) {
        state.SkipWithError(sqlite3_errmsg(s.db));
        return;
    }
    std::mt19937 rng(7);
    for (auto _ : state) {
        const std::string& c = codigos[rng() % codigos.size()];
        for (int i = 1; i <= sqlite3_bind_parameter_count(st); ++i) {
            const tpv::Value& v = p->params[static_cast<std::size_t>(i - 1)];
            if (v.kind() == tpv::Value::Kind::Text) sqlite3_bind_text(st, i, c.data(), static_cast<int>(c.size()), SQLITE_STATIC);
            else sqlite3_bind_int64(st, i, static_cast<sqlite3_int64>(v.number()));
        }
        Leer(st);
    }
    state.SetLabel(p->sql.substr(0, 60));
    sqlite3_finalize(st);
}

void ClientesSqlite(benchmark::State& state, std::string uri) {
    tpv::Connection cn;
    cn.Open(uri);
    auto p = cn.session().Prepare(kSentenciaClientes, false);
    Sqlite s(uri);
    sqlite3_stmt* st = s.Preparar(p->sql);
    if (!st) {
        state.SkipWithError(sqlite3_errmsg(s.db));
        return;
    }
    for (int i = 0; i < static_cast<int>(p->params.size()); ++i)
        sqlite3_bind_int64(st, i + 1, static_cast<sqlite3_int64>(p->params[static_cast<std::size_t>(i)].number()));
    int filas = 0;
    for (auto _ : state) filas = Leer(st);
    state.counters["filas"] = filas;
    sqlite3_finalize(st);
}

#ifdef TPV_WITH_POSTGRESQL
// The types of the parameters, as the data layer gives them to the server
// (a bare "-$1" has none the server can choose).
std::vector<Oid> Tipos(const std::vector<tpv::Value>& params) {
    std::vector<Oid> tipos;
    for (const tpv::Value& v : params)
        tipos.push_back(v.kind() == tpv::Value::Kind::Text ? 25 : v.kind() == tpv::Value::Kind::Integer ? 20 : 701);
    return tipos;
}

// One round trip: the translated statement, prepared once on the server.
void UnaIda(benchmark::State& state, std::string uri, int tipo) {
    tpv::Connection cn;
    cn.Open(uri);
    std::vector<std::string> codigos = Codigos(cn, tipo);
    auto p = cn.session().Prepare(SentenciaCodigoBarras(codigos.empty() ? "x" : codigos[0]), false);
    PGconn* c = PQconnectdb(uri.c_str());
    PGresult* r = PQprepare(c, "piso", p->sql.c_str(), static_cast<int>(p->params.size()), Tipos(p->params).data());
    bool bien = PQresultStatus(r) == PGRES_COMMAND_OK;
    PQclear(r);
    if (!bien || codigos.empty()) {
        state.SkipWithError(PQerrorMessage(c));
        PQfinish(c);
        return;
    }
    std::vector<std::string> textos;
    for (const tpv::Value& v : p->params)
        textos.push_back(v.kind() == tpv::Value::Kind::Text ? "" : std::to_string(static_cast<long long>(v.number())));
    std::vector<const char*> valores(textos.size());
    std::mt19937 rng(7);
    for (auto _ : state) {
        const std::string& codigo = codigos[rng() % codigos.size()];
        for (std::size_t i = 0; i < textos.size(); ++i)
            valores[i] = p->params[i].kind() == tpv::Value::Kind::Text ? codigo.c_str() : textos[i].c_str();
        PGresult* res = PQexecPrepared(c, "piso", static_cast<int>(valores.size()), valores.data(), nullptr, nullptr, 0);
        for (int f = 0; f < PQntuples(res); ++f)
            for (int k = 0; k < PQnfields(res); ++k) benchmark::DoNotOptimize(PQgetvalue(res, f, k));
        PQclear(res);
    }
    PQfinish(c);
}

// The customer list in one round trip, every cell touched.
void ClientesPostgres(benchmark::State& state, std::string uri) {
    tpv::Connection cn;
    cn.Open(uri);
    auto p = cn.session().Prepare(kSentenciaClientes, false);
    PGconn* c = PQconnectdb(uri.c_str());
    std::vector<std::string> textos;
    for (const tpv::Value& v : p->params) textos.push_back(std::to_string(static_cast<long long>(v.number())));
    std::vector<const char*> valores;
    for (const auto& t : textos) valores.push_back(t.c_str());
    PGresult* r = PQprepare(c, "clientes", p->sql.c_str(), static_cast<int>(p->params.size()), Tipos(p->params).data());
    bool bien = PQresultStatus(r) == PGRES_COMMAND_OK;
    PQclear(r);
    if (!bien) {
        state.SkipWithError(PQerrorMessage(c));
        PQfinish(c);
        return;
    }
    int filas = 0;
    for (auto _ : state) {
        PGresult* res = PQexecPrepared(c, "clientes", static_cast<int>(valores.size()), valores.data(), nullptr, nullptr, 0);
        filas = PQntuples(res);
        for (int f = 0; f < filas; ++f)
            for (int k = 0; k < PQnfields(res); ++k) benchmark::DoNotOptimize(PQgetvalue(res, f, k));
        PQclear(res);
    }
    state.counters["filas"] = filas;
    PQfinish(c);
}
#endif

// What the engines themselves take for the same work, through their own
// client libraries: the floor of each figure.
void RegistrarPisos(const std::string& uri, const std::string& motor) {
    const char* tipos[] = {"codigocliente", "codigo_extra", "inexistente"};
    for (int tipo = 0; tipo < 3; ++tipo) {
        std::string sufijo = std::string("/") + tipos[tipo];
        if (motor == "SQLite") {
            benchmark::RegisterBenchmark(("Piso/SQLite/dos_consultas" + sufijo).c_str(), DosConsultas, uri, tipo)
                ->Unit(benchmark::kMicrosecond);
            benchmark::RegisterBenchmark(("Piso/SQLite/traducida" + sufijo).c_str(), Traducida, uri, tipo)
                ->Unit(benchmark::kMicrosecond);
        }
#ifdef TPV_WITH_POSTGRESQL
        if (motor == "PostgreSQL")
            benchmark::RegisterBenchmark(("Piso/PostgreSQL/una_ida" + sufijo).c_str(), UnaIda, uri, tipo)
                ->Unit(benchmark::kMicrosecond);
#endif
    }
    if (motor == "SQLite")
        benchmark::RegisterBenchmark("Piso/SQLite/clientes", ClientesSqlite, uri)->Unit(benchmark::kMillisecond);
#ifdef TPV_WITH_POSTGRESQL
    if (motor == "PostgreSQL")
        benchmark::RegisterBenchmark("Piso/PostgreSQL/clientes", ClientesPostgres, uri)->Unit(benchmark::kMillisecond);
#endif
}

const Banco banco(RegistrarPisos);

}  // namespace

}  // namespace tpvbench
