// Discounts on the whole sale from the till: by an amount, turned into a
// percentage of the sale, or by a percentage; either is laid on every line.
#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/key_filter.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/anulacion.hpp"
#include "sale/descuento_venta.hpp"
#include "sale/grid_venta.hpp"
#include "sale/lineas_venta.hpp"
#include "screens/frm_caja.hpp"

namespace tpv {

void TeclaDeDescuento(int& tecla, TextBox& importe, const std::function<void()>& aceptar) {
    if (tecla == vbKeyReturn) {
        tecla = 0;
        aceptar();
        return;
    }
    tecla = KeyFilter::Instancia().FiltrarTecla(tecla, importe, sesion().opciones.NumDecimales);
}

bool PorcentajeExcesivo(int modoDescuento, const TextBox& importe) {
    double valor = 0;
    return modoDescuento == 1 && LeerNumero(importe.Text(), valor) && valor > 100;
}

void frmCaja::DisenarDescuentos() {
    Poner(lblTitDesc, "lblTitDesc", 120, 120, frDescuentoImporte.width - 240, 480, "", &frDescuentoImporte);
    lblTitDesc.fontSize = 12;
    Poner(lblImporteDesc, "lblImporteDesc", 120, 840, 2400, 480, "", &frDescuentoImporte);
    Poner(txtImporte, "txtImporte", 2640, 720, frDescuentoImporte.width - 2760, 600, "", &frDescuentoImporte);
    txtImporte.fontSize = 14;
    Poner(cmdAceptarEmp, "cmdAceptarEmp", 120, 1560, 2280, 600, "Aceptar", &frDescuentoImporte);
    Poner(cmdCancelar, "cmdCancelar", 2520, 1560, frDescuentoImporte.width - 2640, 600, "Cancelar",
          &frDescuentoImporte);
}

void frmCaja::ConectarDescuentos() {
    cmd_DescImporte.Click = [this] { cmd_DescImporte_Click(); };
    cmd_DescPorcentaje.Click = [this] { cmd_DescPorcentaje_Click(); };
    txtImporte.KeyPress = [this](int& k) { txtImporte_KeyPress(k); };
    txtImporte.Change = [this] { txtImporte_Change(); };
    cmdAceptarEmp.Click = [this] { cmdAceptarEmp_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

void frmCaja::cmd_DescImporte_Click() {
    if (FGCaja.TextMatrix(FGCaja.Row(), kColPvp).empty()) return;
    ModoDescuento = 0;
    txtImporte.maxLength = 0;
    lblTitDesc.caption = cmd_DescImporte.caption;
    lblImporteDesc.caption = "Importe a descontar:";
    frDescuentoImporte.visible = true;
    FocoSeguro(txtImporte);
}

void frmCaja::cmd_DescPorcentaje_Click() {
    if (FGCaja.TextMatrix(FGCaja.Row(), kColPvp).empty()) return;
    ModoDescuento = 1;
    txtImporte.maxLength = 3;
    lblTitDesc.caption = cmd_DescPorcentaje.caption;
    lblImporteDesc.caption = "Porcentaje de Descuento";
    frDescuentoImporte.visible = true;
    FocoSeguro(txtImporte);
}

void frmCaja::txtImporte_KeyPress(int& tecla) {
    if (txtImporte.selLength > 0 && txtImporte.selLength == Len(txtImporte.Text())) {
        txtImporte.SetText("");
        txtImporte.selStart = 0;
        txtImporte.selLength = 0;
    }
    TeclaDeDescuento(tecla, txtImporte, [this] { cmdAceptarEmp_Click(); });
}

// A percentage over 100 loses the digit just typed.
void frmCaja::txtImporte_Change() {
    if (!PorcentajeExcesivo(ModoDescuento, txtImporte)) return;
    txtImporte.SetText(Left(txtImporte.Text(), Len(txtImporte.Text()) - 1));
    txtImporte.selStart = Len(txtImporte.Text());
    txtImporte.selLength = 0;
}

void frmCaja::cmdAceptarEmp_Click() {
    if (!txtImporte.Text().empty()) AplicarDescuento();
}

void frmCaja::cmdCancelar_Click() {
    txtImporte.SetText("");
    frDescuentoImporte.visible = false;
    FocoEntrada();
}

void frmCaja::AplicarDescuento() {
    const Sesion& s = sesion();
    double porcentaje;
    if (ModoDescuento == 0) {
        const double total = s.opciones.iva ? CDbl(Value(CajaText_Pago.Text())) : BaseVenta(lblNumVenta.caption);
        const double importe = CDbl(Value(txtImporte.Text()));
        if (total < importe) {
            MsgBox("No se pueden hacer descuentos por importe mayor al de la compra", vbCritical, "Descuentos");
            return;
        }
        // A sale worth nothing has no percentage to take from it.
        if (total == 0) throw ErrorDesbordamiento();
        porcentaje = importe / total * 100;
    } else {
        porcentaje = CDbl(Value(txtImporte.Text()));
    }
    AplicarDescuentoGrid(porcentaje);
    AplicarDescuentoBD();
}

void frmCaja::AplicarDescuentoGrid(double& porcentaje) {
    tpv::AplicarDescuentoGrid(FGCaja, CLng(Value(lblNumVenta.caption)), porcentaje);
}

void frmCaja::AplicarDescuentoBD() {
    RecalcularCabecera(CLng(Value(lblNumVenta.caption)));
    SumarTotalGrid(CajaText_Pago, FGCaja);
}

}  // namespace tpv
