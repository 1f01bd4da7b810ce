// Money paid into the customer's balance from the till, and the balance
// shown on the till for the customer of the sale.
#include "core/runtime/conversiones.hpp"
#include "core/runtime/fecha.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/frm_caja.hpp"
#include "screens/frm_ing_dinero_deposito.hpp"

namespace tpv {

void frmCaja::cmdIngDeposito_Click() {
    if (frUltimaVenta.visible) frUltimaVenta.visible = false;
    EmpezarVentaDinDep();
    Unica<frmIngDineroDeposito>().Show(true);
    // Straight to the settlement of the money paid in.
    if (VentaDinDep) cmdTerminarVenta_Click();
}

void frmCaja::EmpezarVentaDinDep() {
    LimpiarPantallaDinDep();
    // The sale that stood on the screen stays open; the deposit is a new one.
    VentaNueva = true;
    Fecha1.SetValue(fecha::Hoy());
    FocoSeguro(txtcod);
}

void frmCaja::DineroDeposito(std::int32_t indiceCliente) {
    const Sesion& s = sesion();
    if (indiceCliente < 0 || static_cast<std::size_t>(indiceCliente) >= s.Clientes.size() || !s.opciones.Deposito)
        return;
    const RegistroCliente& cliente = s.Clientes[static_cast<std::size_t>(indiceCliente)];
    if (!cliente.ActivarDinDep) {
        frDindep.visible = false;
        return;
    }
    lblValorDinDep.caption = CStr(Value(cliente.DinDep));
    frDindep.visible = true;
}

void frmCaja::ConectarDeposito() {
    cmdIngDeposito.Click = [this] { cmdIngDeposito_Click(); };
}

}  // namespace tpv
