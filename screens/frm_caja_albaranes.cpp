// The till's way to the customer's delivery notes: the notes chosen become
// one sale, shown on the till and taken straight to the settlement.
#include "core/runtime/conversiones.hpp"
#include "screens/frm_albaranes.hpp"
#include "screens/frm_caja.hpp"

namespace tpv {

void frmCaja::cmdAlbaranes_Click() {
    if (!(Val(lblCodCliente.caption) > 0)) return;
    VentaAlbaranes = "";
    Unica<frmAlbaranes>().Show(true);
    if (VentaAlbaranes.empty()) return;
    mostrarVenta(CLng(Value(VentaAlbaranes)));
    cmdTerminarVenta_Click();
}

void frmCaja::ConectarAlbaranes() {
    cmdAlbaranes.Click = [this] { cmdAlbaranes_Click(); };
}

}  // namespace tpv
