// Time from a scanned code to its line in the sale: the bar-code lookup and
// AnadirItem, into a sale that already holds 50 lines, as the till does it
// for every scan, on the databases given with --base (a large demo shop:
// tpvdemo --size large).
#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/busqueda.hpp"
#include "sale/grid_venta.hpp"
#include "sale/lineas_venta.hpp"
#include "tools/bench/bancos.hpp"

namespace {

using namespace tpv;

// Bar codes of products that the till can sell: shown, not withdrawn, and
// with a code that fits a line.
std::vector<std::string> CodigosVendibles(Connection& cn) {
    std::vector<std::string> codigos;
    Recordset rs;
    rs.Open(
        "select top 1000 codigocliente from productos where borrar = false and mostrarencaja = -1 and "
        "codigo <= 32767 and codigocliente <> '' order by codigo desc",
        cn, adOpenStatic, adLockOptimistic);
    for (; !rs.Eof(); rs.MoveNext()) codigos.push_back(Texto(rs.Fields(0).Value()));
    return codigos;
}

// A sale of its own with 50 lines, its grid and boxes; taken away at the end.
struct VentaDePrueba {
    Label lblNumVenta;
    Grid FGCaja = NuevaGridVenta();
    TextBox CajaText_Pago, txtUltProd, txtUltCant, txtTArticulos;
    ControlesVenta controles{FGCaja, CajaText_Pago, txtUltProd, txtUltCant, txtTArticulos};
    std::int32_t numero = 0;

    void Escanear(const std::string& codigo) {
        ProductoEncontrado p;
        const std::int32_t c = BuscarPorCodigoBarras(codigo, p);
        if (c >= 0) AnadirItem(numero, c, 1, codigo, "P", "1", "Banco de Pruebas", 0, controles);
    }
    ~VentaDePrueba() {
        if (numero == 0) return;
        const std::string n = std::to_string(numero);
        sesion().Conexion.Execute("delete * from detalle_factura_temp where num_factura = " + n);
        sesion().Conexion.Execute("delete * from cabecera_factura_temp where numero = " + n);
    }
};

// `nueva`: every scan makes a new line (taken away again outside the
// timing); otherwise it joins one of the 50 lines already there.
void EscanearALinea(benchmark::State& state, std::string uri, bool nueva) {
    Sesion& s = sesion();
    s.Reiniciar();
    s.Conexion.Open(uri);
    s.opciones.iva = true;
    s.opciones.NumDecimales = 2;
    FijarNumDecimales(2);
    s.TarifaActual = -1;
    s.TerminalActual = "BANCO";
    s.LineaXProducto = false;
    const std::vector<std::string> codigos = CodigosVendibles(s.Conexion);
    if (codigos.size() < 100) {
        state.SkipWithError("la base no tiene 100 productos que vender");
        return;
    }
    {
        VentaDePrueba venta;
        venta.numero = AbrirVenta(venta.lblNumVenta, 0, "Banco de Pruebas", "1");
        for (std::size_t i = 0; i < 50; ++i) venta.Escanear(codigos[i]);
        std::mt19937 rng(11);
        for (auto _ : state) {
            const std::size_t i = nueva ? 50 + rng() % (codigos.size() - 50) : rng() % 50;
            venta.Escanear(codigos[i]);
            if (nueva) {
                state.PauseTiming();
                const long fila = venta.FGCaja.Rows() - 1;
                s.Conexion.Execute("delete * from detalle_factura_temp where num_factura = " +
                                   std::to_string(venta.numero) + " and orden = " + std::to_string(fila));
                venta.FGCaja.SetRows(fila);
                state.ResumeTiming();
            }
        }
        state.counters["lineas"] = static_cast<double>(venta.FGCaja.Rows() - 1);
    }
    s.Reiniciar();
}

void Registrar(const std::string& uri, const std::string& motor) {
    benchmark::RegisterBenchmark(("EscanearALinea/" + motor + "/une").c_str(), EscanearALinea, uri, false)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("EscanearALinea/" + motor + "/nueva").c_str(), EscanearALinea, uri, true)
        ->Unit(benchmark::kMillisecond);
}

const tpvbench::Banco banco(Registrar);

}  // namespace
