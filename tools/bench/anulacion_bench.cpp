// Time of giving up a whole open sale of 50 lines (AnularVenta: copies of
// lines and header, audit line, deletes), on a (large) demo shop. The sale
// is written afresh before each run, outside the timing.
#include <benchmark/benchmark.h>

#include <string>

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/sesion/sesion.hpp"
#include "core/servicios/record_writer.hpp"
#include "sale/anulacion.hpp"
#include "tools/bench/bancos.hpp"

namespace {

constexpr int kLineas = 50;
constexpr int kNumeroBanco = 900000000;  // far from the demo's own sales

void EscribirVenta(tpv::Connection& cn, int numero) {
    cn.Execute("insert into cabecera_factura_temp (numero,fecha,hora,cliente,empleado,codigo_empleado,terminal,total,"
               "impuesto,impuesto_2,impuestoincluido,presupuesto) values (" +
               std::to_string(numero) + ",#01/15/2026#,#10:00:00#,0,'Banco Prueba',1,'BANCO',500,86.78,0,-1,0)");
    for (int orden = 1; orden <= kLineas; ++orden)
        cn.Execute("insert into detalle_factura_temp (num_factura,codigo,producto,unidades,precio,descuento,recargo,"
                   "precio_unit,impuesto,tipoimpuesto,impuesto_2,tipoimpuesto_2,servido,codempleado,nombreempleado,"
                   "tipo_venta,codfamilia,orden) values (" +
                   std::to_string(numero) + "," + std::to_string(orden) + ",'Producto de banco',1,10,0,0,10,1.74,21,0,"
                   "0,0,1,'Banco  P','P',0," + std::to_string(orden) + ")");
}

void Limpiar(tpv::Connection& cn) {
    const std::string desde = std::to_string(kNumeroBanco);
    cn.Execute("delete from detalle_factura_temp where num_factura >= " + desde);
    cn.Execute("delete from cabecera_factura_temp where numero >= " + desde);
    cn.Execute("delete from detalle_factura_anulaciones where num_factura >= " + desde);
    cn.Execute("delete from cabecera_factura_anulaciones where numero >= " + desde);
    cn.Execute("delete from registrocambios where terminal = 'BANCO'");
}

void AnularVenta50(benchmark::State& state, std::string uri) {
    tpv::Sesion& s = tpv::sesion();
    s.Reiniciar();
    s.Conexion.Open(uri);
    s.TerminalActual = "BANCO";
    tpv::RecordWriter::FijarPuesto("BANCO", "1");
    Limpiar(s.Conexion);
    int numero = kNumeroBanco;
    for (auto _ : state) {
        state.PauseTiming();
        EscribirVenta(s.Conexion, ++numero);
        state.ResumeTiming();
        tpv::AnularVenta(numero, tpv::Date());
    }
    state.counters["lineas"] = kLineas;
    Limpiar(s.Conexion);
    s.Reiniciar();
}

void Registrar(const std::string& uri, const std::string& motor) {
    benchmark::RegisterBenchmark(("AnularVenta50/" + motor).c_str(), AnularVenta50, uri)
        ->Unit(benchmark::kMillisecond);
}

const tpvbench::Banco banco(Registrar);

}  // namespace
