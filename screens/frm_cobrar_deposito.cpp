// Paying from the customer's balance on the settlement screen: the panel
// that offers it, the whole balance or a part of it, and its refusal.
#include "closing/deposito.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/frm_caja.hpp"
#include "screens/frm_cobrar.hpp"

namespace tpv {

// Offered only on a sale that costs something, to a customer who may use
// a balance and has one.
void frmCobrar::DineroDeposito() {
    const Sesion& s = sesion();
    const double pago = CajaText_Pago.Text().empty() ? 0.0 : CDbl(Value(CajaText_Pago.Text()));
    if (!(pago > 0) || !s.opciones.Deposito || IndiceCliente <= -1) return;
    const RegistroCliente& cliente = s.Clientes[static_cast<std::size_t>(IndiceCliente)];
    SaldoDinDep = cliente.DinDep;
    if (!cliente.ActivarDinDep || !(SaldoDinDep > 0)) return;
    frDinDep.visible = true;
    txt_Entrega.SetText(CajaText_Pago.Text());
    txt_Entrega.locked = true;
    CobroConDinDep = true;
}

void frmCobrar::cmdAceptarDinDep_Click() {
    const double pago = Val(CajaText_Pago.Text());
    const double resto = SaldoDinDep - pago;
    if (resto < 0) {
        // The balance doesn't cover the sale: it all goes, and the rest is
        // paid by any method, typed on the pad or taken by the method. The
        // rest always shows two decimals.
        CajaText_Pago.SetText(FormatNumber(pago - SaldoDinDep, 2));
        SaldoRestante = 0;
        DescontarDinDep = true;
        txt_Entrega.SetText("0");
        frDinDep.visible = false;
        return;
    }
    SaldoRestante = resto;
    DescontarDinDep = true;
    FormaPago = "4";
    lblFormaPago.caption = "Dinero en Deposito";
    cmd_FinVenta_Click();
}

// The balance refused: the sale is paid as any other.
void frmCobrar::cmdCancelar_Click() {
    frDinDep.visible = false;
    CobroConDinDep = false;
    txt_Entrega.locked = false;
    txt_Entrega.SetText(FormatNumber(Value("0,00"), sesion().opciones.NumDecimales));
    txt_Entrega.selStart = 0;
    txt_Entrega.selLength = Len(txt_Entrega.Text());
    frmCaja::FocoSeguro(txt_Entrega);
}

// `valor` is the new balance, not what was spent.
void frmCobrar::DisminuyoDinDepACliente(double valor, std::int32_t cliente) {
    GrabarDinDep(IndiceCliente, cliente, valor);
}

void frmCobrar::ConectarDeposito() {
    cmdAceptarDinDep.Click = [this] { cmdAceptarDinDep_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

}  // namespace tpv
