// The panels that open over the settlement screen: the refund, and the
// gift ticket with its articles and its comment. Paying from the balance,
// the debt and the voucher have files of their own.
#include "closing/cierre.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/frm_caja.hpp"
#include "screens/frm_cobrar.hpp"

namespace tpv {

namespace {

constexpr long kAmarillo = 65535;
constexpr long kBlanco = 0xFFFFFF;

}  // namespace

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
