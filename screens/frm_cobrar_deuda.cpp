// A debt left by a customer who pays less than the total: the panel that
// tells how much is left owing, with what the customer already owes.
#include "core/runtime/conversiones.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/ventas_abiertas.hpp"
#include "screens/frm_caja.hpp"
#include "screens/frm_cobrar.hpp"

namespace tpv {

namespace {

double Importe(const TextBox& caja) { return caja.Text().empty() ? 0.0 : CDbl(Value(caja.Text())); }

}  // namespace

void frmCobrar::cmdDeuda_Click() {
    const int decimales = sesion().opciones.NumDecimales;
    double deuda = 0;
    if (DeudaCliente(lblCodCliente.caption, deuda)) {
        lblDeudaCliente.caption = FormatNumber(Value(deuda), decimales);
        Frame6.visible = true;
    }
    lblInfoDeuda.caption = "El cliente " + Unica<frmCaja>().txtNomCliente.Text() + " nos va a deber " +
                           FormatNumber(Value(Importe(CajaText_Pago) - Importe(txt_Entrega)), decimales);
    frInfoDeuda.visible = true;
    cmdDeuda.visible = false;
}

// A debt with no method chosen is stored as cash.
void frmCobrar::cmdAceptarDeuda_Click() {
    if (FormaPago == "0" || FormaPago.empty()) FormaPago = "1";
    cmd_FinVenta_Click();
}

// Only the panel goes: the debt button comes back when the amount handed
// over changes.
void frmCobrar::cmdCancelarDeuda_Click() { frInfoDeuda.visible = false; }

void frmCobrar::ConectarDeuda() {
    cmdDeuda.Click = [this] { cmdDeuda_Click(); };
    cmdAceptarDeuda.Click = [this] { cmdAceptarDeuda_Click(); };
    cmdCancelarDeuda.Click = [this] { cmdCancelarDeuda_Click(); };
}

}  // namespace tpv
