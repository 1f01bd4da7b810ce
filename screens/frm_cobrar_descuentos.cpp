// A discount on the whole sale given at the settlement screen: by an amount,
// turned into a percentage of what is to pay, or by a percentage. Either is
// laid on every line of the till's sale, in its grid and in the open sale's
// rows, and the amounts to pay here and on the till follow. Leaving the
// screen without closing keeps the discount on the sale.
#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/texto.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/anulacion.hpp"
#include "sale/descuento_venta.hpp"
#include "sale/grid_venta.hpp"
#include "sale/lineas_venta.hpp"
#include "screens/frm_caja.hpp"
#include "screens/frm_cobrar.hpp"

namespace tpv {

namespace {

// Beside the keypad, under the document ticks.
constexpr double kColumnaBotones = 7920 + 3840;
constexpr double kAnchoBoton = 3240;

Grid& GridDeLaVenta() { return Unica<frmCaja>().FGCaja; }

}  // namespace

void frmCobrar::DisenarDescuentos() {
    Poner(cmd_DescImporte, "cmd_DescImporte", kColumnaBotones, 4200, kAnchoBoton, 660, "Descuento X Importe");
    Poner(cmd_DescPorcentaje, "cmd_DescPorcentaje", kColumnaBotones, 4920, kAnchoBoton, 660,
          "Descuento X Porcentaje");
    Poner(frDescuentoImporte, "frDescuentoImporte", 2400, 2400, 10560, 3600, "");
    frDescuentoImporte.visible = false;
    Poner(lblTitDesc, "lblTitDesc", 240, 240, 10080, 480, "", &frDescuentoImporte);
    lblTitDesc.fontSize = 12;
    Poner(lblImporteDesc, "lblImporteDesc", 240, 1080, 4800, 600, "", &frDescuentoImporte);
    Poner(txtImporte, "txtImporte", 5160, 960, 5160, 720, "", &frDescuentoImporte);
    txtImporte.fontSize = 14;
    Poner(cmdAceptarEmp, "cmdAceptarEmp", 240, 2280, 4920, 960, "Aceptar", &frDescuentoImporte);
    Poner(cmdCancelarDesc, "cmdCancelarDesc", 5400, 2280, 4920, 960, "Cancelar", &frDescuentoImporte);
}

void frmCobrar::ConectarDescuentos() {
    cmd_DescImporte.Click = [this] { cmd_DescImporte_Click(); };
    cmd_DescPorcentaje.Click = [this] { cmd_DescPorcentaje_Click(); };
    txtImporte.GotFocus = [this] { txtImporte.backColor = colorFoco_; };
    txtImporte.KeyPress = [this](int& tecla) { txtImporte_KeyPress(tecla); };
    txtImporte.Change = [this] { txtImporte_Change(); };
    cmdAceptarEmp.Click = [this] { cmdAceptarEmp_Click(); };
    cmdCancelarDesc.Click = [this] { cmdCancelarDesc_Click(); };
}

// Opens the panel for a discount by amount (modo 0, any length) or by
// percentage (modo 1, three characters), if the sale has a line selected.
void frmCobrar::PedirDescuento(int modo, int maximo, const CommandButton& boton, const std::string& etiqueta) {
    const Grid& grid = GridDeLaVenta();
    if (grid.TextMatrix(grid.Row(), kColPvp).empty()) return;
    ModoDescuento = modo;
    txtImporte.maxLength = maximo;
    lblTitDesc.caption = boton.caption;
    lblImporteDesc.caption = etiqueta;
    frDescuentoImporte.visible = true;
    frmCaja::FocoSeguro(txtImporte);
}

void frmCobrar::cmd_DescImporte_Click() { PedirDescuento(0, 0, cmd_DescImporte, "Importe a descontar:"); }

void frmCobrar::cmd_DescPorcentaje_Click() { PedirDescuento(1, 3, cmd_DescPorcentaje, "Porcentaje de Descuento"); }

void frmCobrar::txtImporte_KeyPress(int& tecla) {
    const long largo = Len(txtImporte.Text());
    if (largo > 0 && txtImporte.selStart == 0 && txtImporte.selLength == largo) {
        txtImporte.SetText("");
        txtImporte.selLength = 0;
    }
    TeclaDeDescuento(tecla, txtImporte, [this] { cmdAceptarEmp_Click(); });
}

// A percentage over 100 loses its last character; the cursor goes to the end.
void frmCobrar::txtImporte_Change() {
    if (!PorcentajeExcesivo(ModoDescuento, txtImporte)) return;
    const std::string corto = Left(txtImporte.Text(), Len(txtImporte.Text()) - 1);
    txtImporte.SetText(corto);
    txtImporte.selStart = Len(corto);
    txtImporte.selLength = 0;
}

void frmCobrar::cmdAceptarEmp_Click() {
    if (!txtImporte.Text().empty()) AplicarDescuento();
}

void frmCobrar::cmdCancelarDesc_Click() {
    txtImporte.SetText("");
    frDescuentoImporte.visible = false;
    frmCaja::FocoSeguro(txt_Entrega);
}

void frmCobrar::AplicarDescuento() {
    double porcentaje = CDbl(Value(txtImporte.Text()));
    if (ModoDescuento == 0) {
        // What the amount is taken from: the amount to pay, or the sale
        // without its tax when prices carry none.
        const double total =
            sesion().opciones.iva ? CDbl(Value(CajaText_Pago.Text())) : BaseVenta(lblNumVenta.caption);
        const double importe = porcentaje;
        if (total < importe) {
            MsgBox("No se pueden hacer descuentos por importe mayor al de la compra", vbCritical, "Descuentos");
            return;
        }
        if (total == 0) throw ErrorDesbordamiento();  // 0 of 0: no percentage to take
        porcentaje = importe / total * 100;
    }
    AplicarDescuentoGrid(porcentaje);
    AplicarDescuentoBD();
}

void frmCobrar::AplicarDescuentoGrid(double& porcentaje) {
    tpv::AplicarDescuentoGrid(GridDeLaVenta(), CLng(Value(lblNumVenta.caption)), porcentaje);
}

// The till's own total follows too: going back to the sale, it shows (and
// this screen reads again) what the sale is now worth.
void frmCobrar::AplicarDescuentoBD() {
    RecalcularCabecera(CLng(Value(lblNumVenta.caption)));
    SumarTotalGrid(CajaText_Pago, GridDeLaVenta());
    Unica<frmCaja>().CajaText_Pago.SetText(CajaText_Pago.Text());
}

}  // namespace tpv
