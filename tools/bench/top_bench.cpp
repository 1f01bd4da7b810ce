// Time of the two rankings of the till over the last year of closed sales,
// as the rankings panel reads them: the statement and the name of each of
// the 30 places; and the start-up's look at the indexes of such a shop.
// Needs a shop made with `tpvdemo --historial`.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/datos/esquema.hpp"
#include "core/datos/recordset.hpp"
#include "core/datos/session.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/rankings.hpp"
#include "tools/bench/bancos.hpp"

namespace {

using namespace tpv;

long LineasDelAnio(Connection& cn, DateTime desde, DateTime hasta) {
    Recordset rs;
    rs.Open("select count(*) as n from detalle_factura,cabecera_factura where detalle_factura.num_factura = "
            "cabecera_factura.numero and cabecera_factura.fechaventa between #" +
                Format(Value(desde), "mm/dd/yyyy") + "# and #" + Format(Value(hasta), "mm/dd/yyyy") + "#",
            cn, adOpenStatic);
    return CLng(rs.Get("n"));
}

void Ranking(benchmark::State& state, std::string uri, std::string tipo) {
    Sesion& s = sesion();
    s.Reiniciar();
    s.Conexion.Open(uri);
    s.NombreTienda = "";
    const DateTime hasta = Date();
    const DateTime desde{hasta.serial - 365};
    const long lineas = LineasDelAnio(s.Conexion, desde, hasta);
    if (lineas < 100000) {
        state.SkipWithError("la base no tiene un año de ventas (hágala con tpvdemo --historial)");
        return;
    }
    long puestos = 0;
    for (auto _ : state) {
        const TablaTop tabla = LeerTop(tipo, desde, hasta);
        puestos = 0;
        for (const FilaTop& f : tabla) puestos += f.cifra != 0 ? 1 : 0;
        benchmark::DoNotOptimize(tabla);
    }
    state.counters["lineas"] = static_cast<double>(lineas);
    state.counters["puestos"] = static_cast<double>(puestos);
    s.Conexion.Close();
}

// What start-up pays to find that every index of the schema is in place.
// It only reads: a shop that lacks one is left alone (the till's next start
// makes it).
void IndicesCompletos(benchmark::State& state, std::string uri) {
    Connection cn;
    cn.Open(uri);
    const datos::SchemaDef esquema = datos::LeerEsquema(datos::CarpetaEsquemas() + "/tienda.schema");
    const std::vector<std::string> hay = cn.session().engine().IndexNames();
    for (const datos::IndexDef& ix : esquema.indexes)
        if (std::none_of(hay.begin(), hay.end(), [&](const std::string& n) { return datos::IgualesSinCaso(n, ix.name); })) {
            state.SkipWithError(("falta el índice " + ix.name + ": arranque la caja una vez sobre esta base").c_str());
            return;
        }
    for (auto _ : state) benchmark::DoNotOptimize(datos::CompletarIndices(cn, datos::CarpetaEsquemas() + "/tienda.schema"));
}

void Registrar(const std::string& uri, const std::string& motor) {
    benchmark::RegisterBenchmark(("Top/" + motor + "/productos").c_str(), Ranking, uri, std::string("P"))
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("Top/" + motor + "/clientes").c_str(), Ranking, uri, std::string("clientes"))
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("Top/" + motor + "/indices").c_str(), IndicesCompletos, uri)
        ->Unit(benchmark::kMillisecond);
}

const tpvbench::Banco banco(Registrar);

}  // namespace
