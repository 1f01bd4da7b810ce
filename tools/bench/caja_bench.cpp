// Time from the keys of a scanned code in txtcod to its line on the sale
// grid, through the till screen as a headless host drives it: each
// character's key events, Enter, the lookup, the line written and the grid
// and total brought up to date. On the databases given with --base (a large
// demo shop: tpvdemo --size large), in a sale that already holds 50 lines.
#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/pantallas.hpp"
#include "tools/bench/bancos.hpp"
#include "tools/bench/caja_banco.hpp"

namespace {

using namespace tpv;

std::vector<std::string> CodigosDeBarras(Connection& cn) {
    std::vector<std::string> codigos;
    Recordset rs;
    rs.Open(
        "select top 1000 codigocliente from productos where borrar = false and mostrarencaja = -1 and "
        "codigo <= 32767 and codigocliente <> '' order by codigo desc",
        cn, adOpenStatic, adLockOptimistic);
    for (; !rs.Eof(); rs.MoveNext()) codigos.push_back(Texto(rs.Fields(0).Value()));
    return codigos;
}

void Teclear(Anfitrion& anfitrion, TextBox& caja, const std::string& codigo) {
    for (unsigned char ch : codigo) anfitrion.Tecla(caja, (ch >= 'a' && ch <= 'z') ? ch - 32 : ch, ch);
    anfitrion.Tecla(caja, vbKeyReturn, vbKeyReturn);
}

// `nueva`: every scan makes a new line (taken away again outside the
// timing); otherwise it joins one of the 50 lines already there.
void TeclaALineaEnPantalla(benchmark::State& state, std::string uri, bool nueva) {
    Sesion& s = sesion();
    s.Reiniciar();
    s.Conexion.Open(uri);
    s.opciones.iva = true;
    s.opciones.NumDecimales = 2;
    s.opciones.modopantallacaja = 1;
    FijarNumDecimales(2);
    s.TarifaActual = -1;
    s.TerminalActual = "BANCO";
    s.CodigoEmpleadoActual = 1;
    s.NombreEmpleadoActual = "Banco de Pruebas";
    s.PedirCantidad = false;
    s.LineaXProducto = false;
    s.CampoOrdenItemsCaja = "Nombre";
    const std::vector<std::string> codigos = CodigosDeBarras(s.Conexion);
    if (codigos.size() < 100) {
        state.SkipWithError("la base no tiene 100 productos que vender");
        return;
    }
    AnfitrionSinPantalla anfitrion;
    frmCaja& caja = tpvbench::AbrirCaja(anfitrion);
    for (std::size_t i = 0; i < 50; ++i) Teclear(anfitrion, caja.txtcod, codigos[i]);
    const std::string numero = caja.lblNumVenta.caption;
    std::mt19937 rng(11);
    for (auto _ : state) {
        const std::size_t i = nueva ? 50 + rng() % (codigos.size() - 50) : rng() % 50;
        const long antes = caja.FGCaja.Rows();
        Teclear(anfitrion, caja.txtcod, codigos[i]);
        if (nueva && caja.FGCaja.Rows() > antes) {
            state.PauseTiming();
            const long fila = caja.FGCaja.Rows() - 1;
            s.Conexion.Execute("delete * from detalle_factura_temp where num_factura = " + numero +
                               " and orden = " + std::to_string(fila));
            caja.FGCaja.SetRows(fila);
            state.ResumeTiming();
        }
    }
    state.counters["lineas"] = static_cast<double>(caja.FGCaja.Rows() - 1);
    if (!numero.empty()) {
        s.Conexion.Execute("delete * from detalle_factura_temp where num_factura = " + numero);
        s.Conexion.Execute("delete * from cabecera_factura_temp where numero = " + numero);
    }
    tpvbench::CerrarCaja(caja);
    s.Reiniciar();
}

void Registrar(const std::string& uri, const std::string& motor) {
    benchmark::RegisterBenchmark(("TeclaALineaEnPantalla/" + motor + "/une").c_str(), TeclaALineaEnPantalla, uri,
                                 false)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("TeclaALineaEnPantalla/" + motor + "/nueva").c_str(), TeclaALineaEnPantalla, uri,
                                 true)
        ->Unit(benchmark::kMillisecond);
}

const tpvbench::Banco banco(Registrar);

}  // namespace
