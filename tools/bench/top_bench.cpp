// Time of the two rankings of the till over the last year of closed sales,
// as the rankings panel reads them: the statement and the name of each of
// the 30 places. Needs a shop made with `tpvdemo --historial`.
#include <benchmark/benchmark.h>

#include <string>

#include "core/datos/recordset.hpp"
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

void Registrar(const std::string& uri, const std::string& motor) {
    benchmark::RegisterBenchmark(("Top/" + motor + "/productos").c_str(), Ranking, uri, std::string("P"))
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("Top/" + motor + "/clientes").c_str(), Ranking, uri, std::string("clientes"))
        ->Unit(benchmark::kMillisecond);
}

const tpvbench::Banco banco(Registrar);

}  // namespace
