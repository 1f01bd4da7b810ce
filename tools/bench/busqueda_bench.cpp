// Time of the bar-code lookup, as the till issues it for every scan, on a
// (large) demo shop, beside what the engine alone takes for it, and the
// load of the customer list at start-up. Usage: tpvbench --base=URI [--base=URI2 ...] [benchmark flags]
#include <benchmark/benchmark.h>

#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "core/datos/recordset.hpp"
#include "tools/bench/bancos.hpp"
#include "tools/bench/bench.hpp"

namespace tpvbench {

const char* const kSentenciaClientes =
    "Select codigo,nombre,apellidos,nacimiento,descuento,activardindep,dindep from clientes where "
    "borrar=false and codigo >= 0 order by Nombre";

std::string SentenciaCodigoBarras(const std::string& c) {
    return "SELECT distinct(Productos.Codigo) as codigoInt, "
           "productos.nombre,productos.stock,productos.UbicacionPrincipal,productos.imagen,productos.modoventa,"
           "productos.precio "
           "  FROM Productos LEFT JOIN Productos_CodigosExtra ON Productos.Codigo = Productos_CodigosExtra.Codigo "
           " WHERE (((Productos_CodigosExtra.Codigo_Extra) like '" +
           c + "') or codigocliente = '" + c + "') AND BORRAR =FALSE and mostrarencaja = -1";
}

namespace {

std::vector<std::string> Muestra(tpv::Connection& cn, const std::string& sql) {
    std::vector<std::string> out;
    tpv::Recordset rs;
    rs.Open(sql, cn, tpv::adOpenStatic, tpv::adLockOptimistic);
    while (!rs.Eof()) {
        const tpv::Value& v = rs.Fields(0).Value();
        if (v.kind() == tpv::Value::Kind::Text && !v.text().empty()) out.push_back(v.text());
        rs.MoveNext();
    }
    return out;
}

}  // namespace

std::vector<std::string> Codigos(tpv::Connection& cn, int tipo) {
    if (tipo == 0) return Muestra(cn, "select top 1000 codigocliente from productos where borrar = false and mostrarencaja = -1 order by codigo desc");
    if (tipo == 1) return Muestra(cn, "select top 1000 codigo_extra from productos_codigosextra order by codigo desc");
    return {"0000000000000", "9999999999999", "NOEXISTE"};
}

}  // namespace tpvbench

namespace {

using namespace tpvbench;

void Busqueda(benchmark::State& state, std::string uri, int tipo) {
    tpv::Connection cn;
    cn.Open(uri);
    std::vector<std::string> codigos = Codigos(cn, tipo);
    if (codigos.empty()) {
        state.SkipWithError("la base no tiene códigos que buscar");
        return;
    }
    std::mt19937 rng(7);
    long encontrados = 0;
    for (auto _ : state) {
        const std::string& c = codigos[rng() % codigos.size()];
        tpv::Recordset rs;
        rs.Open(SentenciaCodigoBarras(c), cn, tpv::adOpenStatic, tpv::adLockOptimistic);
        if (rs.RecordCount() > 0) {
            benchmark::DoNotOptimize(rs["nombre"].Value());
            ++encontrados;
        }
        rs.Close();
    }
    state.counters["encontrados"] = static_cast<double>(encontrados);
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> bases;
    std::vector<char*> resto;
    for (int i = 0; i < argc; ++i) {
        if (std::strncmp(argv[i], "--base=", 7) == 0) bases.emplace_back(argv[i] + 7);
        else resto.push_back(argv[i]);
    }
    if (bases.empty()) {
        std::cerr << "uso: tpvbench --base=BASE [--base=OTRA] [opciones de benchmark]\n";
        return 2;
    }
#if !defined(NDEBUG) || defined(__SANITIZE_ADDRESS__)
    std::cerr << "tpvbench: aviso: compilado sin optimizar o con comprobaciones; las cifras solo valen en una "
                 "compilación Release (scripts/bench.sh)\n";
#endif
    for (const auto& uri : bases) {
        // A missing file would be made empty by opening it: say so instead.
        const bool servidor = uri.rfind("postgres", 0) == 0;
        std::error_code ec;
        if (!servidor && !std::filesystem::exists(uri.rfind("sqlite:", 0) == 0 ? uri.substr(7) : uri, ec)) {
            std::cerr << "tpvbench: no existe la base de datos '" << uri << "' (hágala con tpvdemo --size large)\n";
            return 1;
        }
        try {
            tpv::Connection cn;
            cn.Open(uri);
            tpv::Recordset rs;
            rs.Open("select top 1 codigo from productos", cn, tpv::adOpenStatic, tpv::adLockReadOnly);
        } catch (const std::exception& e) {
            std::cerr << "tpvbench: no se puede usar la base de datos '" << uri << "': " << e.what() << "\n";
            return 1;
        }
    }
    for (const auto& uri : bases) {
        std::string motor = uri.rfind("postgres", 0) == 0 ? "PostgreSQL" : "SQLite";
        benchmark::RegisterBenchmark(("CodigoBarras/" + motor + "/codigocliente").c_str(), Busqueda, uri, 0)->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("CodigoBarras/" + motor + "/codigo_extra").c_str(), Busqueda, uri, 1)->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("CodigoBarras/" + motor + "/inexistente").c_str(), Busqueda, uri, 2)->Unit(benchmark::kMicrosecond);
        for (tpvbench::Registrar registrar : tpvbench::Bancos()) registrar(uri, motor);
    }
    int n = static_cast<int>(resto.size());
    benchmark::Initialize(&n, resto.data());
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
