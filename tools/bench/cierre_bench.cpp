// Time of closing an open sale of 50 lines on a (large) demo shop, two ways:
// CerrarVenta alone (invoice number, lines with their stock, header,
// deletes, one ticket on a recording printer, the earned voucher), and the
// whole finish as the operator sees it, from the settlement screen's
// "Terminar Venta" to the till cleared for the next customer, through the
// till and settlement screens on the headless host. The sale is written
// afresh before each run, outside the timing; what the runs closed is taken
// away at the end and the stock put back.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "closing/cierre.hpp"
#include "core/datos/recordset.hpp"
#include "core/datos/servidor.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/sesion.hpp"
#include "core/sesion/paneles.hpp"
#include "printing/cajon.hpp"
#include "printing/page_device.hpp"
#include "printing/recording_printer.hpp"
#include "screens/frm_cobrar.hpp"
#include "screens/pantallas.hpp"
#include "tools/bench/bancos.hpp"
#include "tools/bench/caja_banco.hpp"

namespace {

using namespace tpv;

constexpr int kLineas = 50;
constexpr int kNumeroBanco = 900000000;  // far from the demo's own open sales

std::vector<std::string> Productos(Connection& cn) {
    std::vector<std::string> codigos;
    Recordset rs;
    rs.Open("select top 50 codigo from productos where codigo <= 32767 order by codigo", cn);
    for (; !rs.Eof(); rs.MoveNext()) codigos.push_back(Texto(rs.Fields(0).Value()));
    return codigos;
}

void EscribirVenta(Connection& cn, int numero, const std::vector<std::string>& productos) {
    cn.Execute("insert into cabecera_factura_temp (numero,fecha,hora,cliente,empleado,codigo_empleado,terminal,total,"
               "impuesto,impuesto_2,impuestoincluido,presupuesto) values (" +
               std::to_string(numero) + ",#" + Format(Value(Date()), "mm/dd/yyyy") +
               "#,#10:00:00#,0,'Banco Prueba',1,'BANCO',500,86.78,0,-1,0)");
    for (int orden = 1; orden <= kLineas; ++orden)
        cn.Execute("insert into detalle_factura_temp (num_factura,codigo,producto,unidades,precio,descuento,recargo,"
                   "precio_unit,impuesto,tipoimpuesto,impuesto_2,tipoimpuesto_2,servido,codempleado,nombreempleado,"
                   "tipo_venta,codfamilia,orden) values (" +
                   std::to_string(numero) + "," + productos[static_cast<std::size_t>(orden - 1)] +
                   ",'Producto de banco',1,10,0,0,10,1.74,21,0,0,0,1,'Banco  P','P',0," + std::to_string(orden) + ")");
}

std::int32_t Contador(Connection& cn) {
    Recordset rs;
    rs.Open("select daton from relaciones_fijas where indice = 'Factura'", cn);
    return rs.Eof() ? 0 : CLng(rs.Fields(0).Value());
}

// Takes away what the runs closed and gives the products their stock back.
void Deshacer(Connection& cn, std::int32_t primera, long cerradas, const std::vector<std::string>& productos) {
    const std::string desde = std::to_string(primera);
    cn.Execute("delete from detalle_factura where num_factura >= " + desde);
    cn.Execute("delete from cabecera_factura where numero >= " + desde);
    cn.Execute("delete from historicostock where ticket >= " + desde + " and tipo = 1 and descripciontipo = 2");
    cn.Execute("delete from vales_descuento where num_factura >= " + desde);
    cn.Execute("delete from detalle_factura_temp where num_factura >= " + std::to_string(kNumeroBanco));
    cn.Execute("delete from cabecera_factura_temp where numero >= " + std::to_string(kNumeroBanco));
    cn.Execute("update relaciones_fijas set daton = " + desde + " where indice = 'Factura'");
    if (cerradas == 0) return;
    for (const std::string& codigo : productos)
        cn.Execute("update productos set stock = stock + " + std::to_string(cerradas) + ", salida = salida - " +
                   std::to_string(cerradas) + " where codigo = " + codigo);
}

void CerrarVenta50(benchmark::State& state, std::string uri) {
    Sesion& s = sesion();
    s.Reiniciar();
    s.Conexion.Open(uri);
    s.TerminalActual = s.IdentificadorTerminal = "BANCO";
    s.opciones.NumDecimales = 2;
    FijarNumDecimales(2);
    s.opciones.NumCopiasFactura = 1;
    s.TicketConfigurable = true;
    s.ImpresoraTickets = "BANCO";
    RecordWriter::FijarPuesto("BANCO", "1");
    std::vector<std::unique_ptr<PageDevice>> impresoras;
    impresoras.push_back(std::make_unique<RecordingPrinter>("BANCO"));
    auto* papel = static_cast<RecordingPrinter*>(impresoras.back().get());
    InstallPrinters(std::move(impresoras));

    const std::vector<std::string> productos = Productos(s.Conexion);
    if (productos.size() < kLineas) {
        state.SkipWithError("la base no tiene 50 productos");
        return;
    }
    const std::int32_t primera = Contador(s.Conexion);
    bool modoAbono = false;
    CajaEnCierre caja{modoAbono, "", Date(), "", nullptr};
    int numero = kNumeroBanco;
    long cerradas = 0;
    long long idas = 0;  // round trips to a server, none on SQLite
    for (auto _ : state) {
        state.PauseTiming();
        EscribirVenta(s.Conexion, ++numero, productos);
        papel->Clear();
        DatosCierre datos;
        datos.numeroVenta = numero;
        datos.imprimir = true;
        datos.entrega = "500,00";
        datos.devolucion = "0,00";
        datos.formaPago = "1";
        state.ResumeTiming();
        const long long antes = datos::servidor::Idas();
        CerrarVenta(datos, caja);
        idas += datos::servidor::Idas() - antes;
        ++cerradas;
    }
    state.counters["lineas"] = kLineas;
    state.counters["idas"] = benchmark::Counter(static_cast<double>(idas), benchmark::Counter::kAvgIterations);
    Deshacer(s.Conexion, primera, cerradas, productos);
    ResetPrinters();
    s.Reiniciar();
}

// The sale is put on the till as a resumed one would be, F9 opens the
// settlement screen with the exact amount handed over, and the clock runs
// from the finish button until the till is clear again.
void CobroDesdeLaCaja50(benchmark::State& state, std::string uri) {
    Sesion& s = sesion();
    s.Reiniciar();
    s.Conexion.Open(uri);
    s.opciones.iva = true;
    s.opciones.NumDecimales = 2;
    s.opciones.NumCopiasFactura = 1;
    s.opciones.imprimirticket = true;
    s.opciones.abrircajetin = true;
    FijarNumDecimales(2);
    s.TarifaActual = -1;
    s.TerminalActual = s.IdentificadorTerminal = "BANCO";
    s.CodigoEmpleadoActual = 1;
    s.NombreEmpleadoActual = "Banco de Pruebas";
    s.TicketConfigurable = true;
    s.ImpresoraTickets = "BANCO";
    s.PuertoImpresora = "COM1";
    s.SecuenciaApertura = "27|112|0|25|250";
    RecordWriter::FijarPuesto("BANCO", "1");
    std::vector<std::unique_ptr<PageDevice>> impresoras;
    impresoras.push_back(std::make_unique<RecordingPrinter>("BANCO"));
    auto* papel = static_cast<RecordingPrinter*>(impresoras.back().get());
    InstallPrinters(std::move(impresoras));
    long cajones = 0;
    FijarEscritorPuerto([&](const std::string&, const std::vector<std::uint8_t>&) { ++cajones; });
    CargarPanelFormasPago();

    const std::vector<std::string> productos = Productos(s.Conexion);
    if (productos.size() < kLineas) {
        state.SkipWithError("la base no tiene 50 productos");
        return;
    }
    AnfitrionSinPantalla anfitrion;
    frmCaja& caja = tpvbench::AbrirCaja(anfitrion);
    ConectarCobro(caja);

    bool enMarcha = false;
    long long idasAlEmpezar = 0;
    long long idas = 0;  // round trips to a server, none on SQLite
    // The settlement screen's modal wait: the amount handed over is typed
    // outside the timing, which starts at the finish button.
    anfitrion.siguiente = [&] {
        frmCobrar& cobro = Unica<frmCobrar>();
        if (enMarcha) return false;
        cobro.txt_Entrega.SetText(cobro.CajaText_Pago.Text());
        enMarcha = true;
        state.ResumeTiming();
        idasAlEmpezar = datos::servidor::Idas();
        cobro.cmd_FinVenta_Click();
        return true;
    };

    const std::int32_t primera = Contador(s.Conexion);
    int numero = kNumeroBanco;
    long cerradas = 0;
    for (auto _ : state) {
        state.PauseTiming();
        EscribirVenta(s.Conexion, ++numero, productos);
        papel->Clear();
        caja.LimpiarPantalla();
        caja.mostrarVenta(numero);
        enMarcha = false;
        try {
            caja.cmdTerminarVenta_Click();
        } catch (...) {
            if (!enMarcha) state.ResumeTiming();
            state.SkipWithError("el cobro no llegó a terminar");
            break;
        }
        if (!enMarcha) {
            state.ResumeTiming();
            state.SkipWithError("la pantalla de cobro no se abrió");
            break;
        }
        if (!caja.lblNumVenta.caption.empty() || papel->Documents().empty()) {
            state.SkipWithError("la venta no quedó cerrada");
            break;
        }
        idas += datos::servidor::Idas() - idasAlEmpezar;
        ++cerradas;
    }
    state.counters["lineas"] = kLineas;
    state.counters["idas"] = benchmark::Counter(static_cast<double>(idas), benchmark::Counter::kAvgIterations);
    state.counters["cajones"] = static_cast<double>(cajones);
    anfitrion.siguiente = nullptr;
    Unica<frmCobrar>().Unload();
    tpvbench::CerrarCaja(caja);
    FijarEscritorPuerto(nullptr);
    Deshacer(s.Conexion, primera, cerradas, productos);
    ResetPrinters();
    s.Reiniciar();
}

void Registrar(const std::string& uri, const std::string& motor) {
    benchmark::RegisterBenchmark(("CerrarVenta50/" + motor).c_str(), CerrarVenta50, uri)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("CobroDesdeLaCaja50/" + motor).c_str(), CobroDesdeLaCaja50, uri)
        ->Unit(benchmark::kMillisecond);
}

const tpvbench::Banco banco(Registrar);

}  // namespace
