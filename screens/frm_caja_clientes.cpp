// The customer of the sale on the till screen: a card read into
// txtNomCliente, the search screen, a new customer's card, what the till
// shows of the customer, and the customer history tool.
#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/connection_opener.hpp"
#include "core/servicios/suite_launcher.hpp"
#include "core/servicios/suite_settings.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/clientes.hpp"
#include "sale/ventas_abiertas.hpp"
#include "screens/colores.hpp"
#include "screens/frm_buscar.hpp"
#include "screens/frm_caja.hpp"
#include "screens/frm_clientes.hpp"

namespace tpv {

void frmCaja::ConectarClientes() {
    txtNomCliente.KeyPress = [this](int& tecla) { txtNomCliente_KeyPress(tecla); };
    txtNomCliente.Click = [this] { txtNomCliente_Click(); };
    cmdBuscarCliente.Click = [this] { cmdBuscarCliente_Click(); };
    Command10.Click = [this] { Command10_Click(); };
    bt_historico.Click = [this] { bt_historico_Click(); };
    MostrarBuscar = [] { Unica<frmBuscar>().Show(true); };
}

void frmCaja::txtNomCliente_KeyPress(int& tecla) {
    if (tecla != vbKeyReturn) {
        const std::string& texto = txtNomCliente.Text();
        if (!texto.empty() && txtNomCliente.selStart == 0 && txtNomCliente.selLength >= Len(texto)) {
            txtNomCliente.SetText("");
            txtNomCliente.selLength = 0;
        }
        return;
    }
    tecla = 0;
    const std::int32_t codigo = BuscarCodigoCliente(txtNomCliente.Text());
    if (codigo != -1) {
        lblCodCliente.caption = std::to_string(codigo);
        MostrarResultadoBusqueda();
        FocoEntrada();
        return;
    }
    // An unknown card falls back to the generic customer without a word.
    txtNomCliente.SetText("Cliente Generico");
    lblCodCliente.caption = "0";
    frDeuda.visible = false;
    if (!lblNumVenta.caption.empty()) AnadirClienteVentaAbierta("0", lblNumVenta.caption);
}

void frmCaja::txtNomCliente_Click() {
    frUltimaVenta.visible = false;
    txtNomCliente.selStart = 0;
    txtNomCliente.selLength = Len(txtNomCliente.Text());
}

void frmCaja::cmdBuscarCliente_Click() {
    frUltimaVenta.visible = false;
    ModoBusqueda = "Cl";
    Unica<frmBuscar>().Show(true);
    tmrVolverLista.SetEnabled(true);
    MostrarResultadoBusqueda();
    FocoSeguro(txtcod);
}

void frmCaja::Command10_Click() {
    frUltimaVenta.visible = false;
    FGCaja.tabStop = false;
    Unica<frmClientes>().Show(true);
    if (lblCodCliente.caption != "-1") MostrarResultadoBusqueda();
    FGCaja.tabStop = true;
}

void frmCaja::MostrarResultadoBusqueda() {
    Sesion& s = sesion();
    lblDescuentoInfo.caption = "";
    const std::string codigo = lblCodCliente.caption;
    if (codigo == "-1") return;
    const long indice = BuscarClienteEnLista(CLng(Value(codigo)), s.Clientes);
    if (indice < 0) return;
    const RegistroCliente& cliente = s.Clientes[static_cast<std::size_t>(indice)];
    const std::string nombreCliente = cliente.Nombre + " " + cliente.Apellidos;
    txtNomCliente.SetText(nombreCliente);
    if (codigo != "0") {
        double deuda = 0;
        if (DeudaCliente(codigo, deuda)) {
            lblDeudaInfo.caption = nombreCliente + " tiene una deuda con nosotros de: ";
            lblImpDeuda.caption = FormatNumber(Value(deuda), s.opciones.NumDecimales);
            frDeuda.backColor = NumeroDeColor(ColorResalte);
            frDeuda.visible = true;
            ticksDeuda_ = 0;
            tmrfinDeuda.SetEnabled(true);
        }
        // The card's discount is only offered: the assistant applies it.
        if (cliente.Descuento > 0) {
            lblDescuentoInfo.caption = "Aplicar " + CStr(Value(cliente.Descuento)) + "% de descuento segun ficha.";
            tmrColorear.SetEnabled(true);
        }
        cmdIngDeposito.visible = false;
        tmrDinDep.SetEnabled(false);
        if (cliente.ActivarDinDep) {
            cmdIngDeposito.caption = CStr(Value(cliente.DinDep)) + "\r\n" + "Saldo a favor";
            cmdIngDeposito.visible = true;
            tmrDinDep.SetEnabled(true);
        }
        DineroDeposito(static_cast<std::int32_t>(indice));
        bt_historico.visible = true;
    }
    if (!lblNumVenta.caption.empty()) AnadirClienteVentaAbierta(codigo, lblNumVenta.caption);
}

void frmCaja::bt_historico_Click() {
    if (lblCodCliente.caption == "-1") return;
    Sesion& s = sesion();
    LlamadaHistorico("Cantarel", s.ClaveTerminal, lblCodCliente.caption);
    AnfitrionActual().HacerEventos();
    AnfitrionActual().HacerEventos();
    s.Conexion.Close();
    // The tool runs on its own; a failure to start it doesn't stop the till,
    // and the till takes its connection back at once.
    try {
        const std::string programa =
            SuiteSettings::Instancia().Leer(kClaveProgramaHistorico, kProgramaHistoricoPorDefecto);
        SuiteLauncher().Lanzar(programa, "Historico Clientes", s.Conexion);
    } catch (const std::exception&) {
    }
    ConnectionOpener::Instancia().Abrir("", s.Conexion);
}

}  // namespace tpv
