// The panels that open over the settlement screen: leaving a debt,
// applying a voucher, the refund, and the gift ticket with its articles and
// its comment. Paying from the balance is in frm_cobrar_deposito.cpp.
#include "closing/cierre.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/ventas_abiertas.hpp"
#include "screens/frm_caja.hpp"
#include "screens/frm_cobrar.hpp"

namespace tpv {

namespace {

constexpr long kAmarillo = 65535;
constexpr long kBlanco = 0xFFFFFF;

double Importe(const TextBox& caja) { return caja.Text().empty() ? 0.0 : CDbl(Value(caja.Text())); }

std::string Formatear(double x) { return FormatNumber(x, sesion().opciones.NumDecimales); }

}  // namespace

bool HayValesAplicables(double total) {
    const std::string hoy = Format(Value(Date()), "mm/dd/yyyy");
    Recordset rs;
    lectura::Abrir(rs, "Select *   from vales_descuento  where desde<=#" + hoy + "# and (hasta >=#" + hoy +
                           "# or hasta =#01/01/1900#) and estado =0  and impminproxcompra <= " +
                           Replace(CStr(Value(total)), ",", "."));
    const bool hay = !rs.Eof();
    rs.Close();
    return hay;
}

// --- Debt ---------------------------------------------------------------

void frmCobrar::cmdDeuda_Click() {
    double deuda = 0;
    if (DeudaCliente(lblCodCliente.caption, deuda)) {
        lblDeudaCliente.caption = Formatear(deuda);
        Frame6.visible = true;
    }
    lblInfoDeuda.caption = "El cliente " + Unica<frmCaja>().txtNomCliente.Text() + " nos va a deber " +
                           Formatear(Importe(CajaText_Pago) - Importe(txt_Entrega));
    frInfoDeuda.visible = true;
    cmdDeuda.visible = false;
}

// A debt with no method chosen is stored as cash.
void frmCobrar::cmdAceptarDeuda_Click() {
    if (FormaPago == "0" || FormaPago.empty()) FormaPago = "1";
    cmd_FinVenta_Click();
}

// --- Voucher ------------------------------------------------------------

void frmCobrar::cmdapliVale_Click() {
    for (Control* c : std::initializer_list<Control*>{&cmd_FinVenta, &cmdDeuda, &cmdSalir}) c->enabled = false;
    frPideVale.visible = true;
    frmCaja::FocoSeguro(txtnumVale);
}

void frmCobrar::cmdCancelaVale_Click() {
    for (Control* c : std::initializer_list<Control*>{&cmd_FinVenta, &cmdDeuda, &cmdSalir}) c->enabled = true;
    frPideVale.visible = false;
}

void frmCobrar::cmdAplicaVale_Click() {
    const bool encontrado = AplicaVale && AplicaVale(txtnumVale.Text());
    if (!encontrado) {
        frNoExisteVale.visible = true;
        frmCaja::FocoSeguro(txtnumVale);
        return;
    }
    cmdCancelaVale_Click();
    // A sale wholly paid by voucher finishes by itself.
    if (Importe(CajaText_Pago) == 0 && !PanelFormasPago.Botones().empty()) {
        const ButtonRecord& primero = PanelFormasPago.Botones().front();
        SeleccionFPago(primero.Codigo, primero.Texto);
        cmd_FinVenta_Click();
    }
}

// --- Gift ticket --------------------------------------------------------

void frmCobrar::cmdTicketRegalo_Click() {
    const Grid& venta = Unica<frmCaja>().FGCaja;
    FGCaja.SetRows(venta.Rows());
    FGCaja.SetCols(venta.Cols());
    for (long f = 0; f < venta.Rows(); ++f)
        for (long c = 0; c < venta.Cols(); ++c) FGCaja.SetTextMatrix(f, c, venta.TextMatrix(f, c));
    for (long c = 0; c < venta.Cols(); ++c) {
        FGCaja.SetColWidth(c, venta.ColWidth(c));
        if (FGCaja.ColWidth(c) > 50) FGCaja.SetColWidth(c, FGCaja.ColWidth(c) - 175);
    }
    frTicketRegalo.visible = true;
}

// A row clicked turns yellow, or back to white if it was yellow.
void frmCobrar::FGCaja_Click() {
    const long fila = FGCaja.Row();
    if (fila < 1) return;
    const long color = FGCaja.CellBackColor(fila, 0) == kAmarillo ? kBlanco : kAmarillo;
    for (long c = 0; c < FGCaja.Cols(); ++c) FGCaja.SetCellBackColor(fila, c, color);
}

std::string frmCobrar::ObtenerListaProdTicketRegalo() {
    std::string lista;
    FGCaja.SetCol(0);
    for (long f = 0; f < FGCaja.Rows(); ++f) {
        FGCaja.SetRow(f);
        if (FGCaja.CellBackColor() == kAmarillo) lista += "#" + FGCaja.Text();
    }
    // A single one-character code keeps its mark.
    if (Len(lista) > 2) lista = Mid(lista, 2);
    return lista;
}

void frmCobrar::cmd_ObsTRegalo_Click() {
    fr_TRegalo.visible = true;
    txtObsTRegalo.SetText(sesion().ComentarioTicketRegalo);
}

void frmCobrar::GuardarComentarioTRegalo(const std::string& texto) {
    const std::string a = Left(texto, 50);
    const std::string b = Len(texto) > 50 ? Mid(texto, 51) : "";
    Recordset rs;
    lectura::AbrirParaCambiar(rs, "select * from relaciones_fijas where indice = 'ComentarioTicketRegalo'");
    if (rs.Eof()) {
        rs.AddNew();
        rs["indice"] = Value("ComentarioTicketRegalo");
    }
    rs["DatoA"] = Value(a);
    rs["otros"] = Value(b);
    rs.Update();
    rs.Close();
    sesion().ComentarioTicketRegalo = texto;
}

void frmCobrar::ConectarPaneles() {
    cmdDeuda.Click = [this] { cmdDeuda_Click(); };
    cmdAceptarDeuda.Click = [this] { cmdAceptarDeuda_Click(); };
    cmdCancelarDeuda.Click = [this] { frInfoDeuda.visible = false; };
    cmdapliVale.Click = [this] { cmdapliVale_Click(); };
    cmdCancelaVale.Click = [this] { cmdCancelaVale_Click(); };
    cmdAplicaVale.Click = [this] { cmdAplicaVale_Click(); };
    txtnumVale.KeyPress = [this](int& tecla) {
        if (tecla == vbKeyReturn) {
            tecla = 0;
            cmdAplicaVale_Click();
        } else {
            FiltrarEntrada(txtnumVale, tecla);
        }
    };
    cmdImprimirValeDescuento.Click = [this] {
        // The money of the refund isn't given back: a voucher for it comes out.
        ImprimirValeAbono = true;
        cmd_FinVenta_Click();
    };
    cmdTicketRegalo.Click = [this] { cmdTicketRegalo_Click(); };
    FGCaja.Click = [this] { FGCaja_Click(); };
    cmdImpTicketRegalo.Click = [this] { frTicketRegalo.visible = false; };
    cmdSalirTicketRegalo.Click = [this] { frTicketRegalo.visible = false; };
    cmd_ObsTRegalo.Click = [this] { cmd_ObsTRegalo_Click(); };
    cmd_AceptarTRegalo.Click = [this] {
        GuardarComentarioTRegalo(txtObsTRegalo.Text());
        fr_TRegalo.visible = false;
    };
    cmd_CancelarTRegalo.Click = [this] { fr_TRegalo.visible = false; };
}

}  // namespace tpv
