// A discount voucher spent on the settlement screen: the panel that asks
// for its number, its value spread over the sale's lines, and the sale it
// pays in whole finishing by itself.
#include "closing/vales.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/key_filter.hpp"
#include "screens/frm_caja.hpp"
#include "screens/frm_cobrar.hpp"

namespace tpv {

namespace {

// While the number is asked for, nothing else can finish or leave.
void BotonesDeSalida(frmCobrar& f, bool activos) {
    for (Control* c : std::initializer_list<Control*>{&f.cmd_FinVenta, &f.cmdDeuda, &f.cmdSalir})
        c->enabled = activos;
}

}  // namespace

void frmCobrar::cmdapliVale_Click() {
    BotonesDeSalida(*this, false);
    frPideVale.visible = true;
    frmCaja::FocoSeguro(txtnumVale);
}

void frmCobrar::cmdCancelaVale_Click() {
    BotonesDeSalida(*this, true);
    frPideVale.visible = false;
}

// A number that finds no voucher gets the same panel whatever the reason:
// used up, expired, a purchase below its minimum, or no such voucher.
void frmCobrar::cmdAplicaVale_Click() {
    if (!AplicaVale(txtnumVale.Text())) {
        frNoExisteVale.visible = true;
        frmCaja::FocoSeguro(txtnumVale);
        return;
    }
    NumeroVale = CLng(Value(txtnumVale.Text()));
    cmdCancelaVale_Click();
    // A sale wholly paid by the voucher finishes by itself, with the first
    // method of the panel. The amount left is read whole, cents included: a
    // rest below one unit is still to be paid.
    if (CDbl(Value(CajaText_Pago.Text())) == 0 && !PanelFormasPago.Botones().empty()) {
        const ButtonRecord& primero = PanelFormasPago.Botones().front();
        SeleccionFPago(primero.Codigo, primero.Texto);
        cmd_FinVenta_Click();
    }
}

// The amount the voucher is checked against is the whole part of the sale's
// total: the cents are not counted.
bool frmCobrar::AplicaVale(const std::string& numero) {
    std::string importe = CStr(Value(Val(CajaText_Pago.Text())));
    if (KeyFilter::Instancia().SeparadorDecimal() == ",") importe = Replace(importe, ",", ".");
    double descuento = 0;
    if (!BuscarValeAplicable(numero, importe, descuento)) return false;
    AplicarValeDescuento(descuento);
    return true;
}

// The voucher's value as a percentage of the sale: all of it when the
// voucher covers the sale, and what it doesn't spend stays on it.
void frmCobrar::AplicarValeDescuento(double importe) {
    const double pago = Val(CajaText_Pago.Text());
    ImporteVale = importe;
    const double porcentaje = importe < pago ? importe / pago * 100 : 100;
    AplicarPorcentajeALineas(porcentaje, Unica<frmCaja>().FGCaja, CLng(Value(lblNumVenta.caption)));
    // The discount is in the open sale at once: leaving the screen doesn't
    // take it back.
    AplicarDescuentoBD();
    RestoVale = importe > pago ? importe - pago : 0;
}

void frmCobrar::ConectarVales() {
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
}

}  // namespace tpv
