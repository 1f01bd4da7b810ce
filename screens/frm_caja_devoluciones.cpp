// The till's buttons for closed sales: a refund against an invoice, a closed
// sale taken back to be modified, and a closed sale deleted.
#include "core/runtime/conversiones.hpp"
#include "core/sesion/mensajes.hpp"
#include "sale/anulacion.hpp"
#include "sale/ventas_abiertas.hpp"
#include "screens/frm_caja.hpp"
#include "screens/frm_devoluciones.hpp"

namespace tpv {

namespace {

frmDevoluciones& PedirVenta(bool abono, bool modificacion) {
    frmDevoluciones& d = Unica<frmDevoluciones>();
    d.Abono = abono;
    d.Modificacion = modificacion;
    return d;
}

}  // namespace

void frmCaja::ConectarDevoluciones() {
    cmdAbonoVenta.Click = [this] { cmdAbonoVenta_Click(); };
    cmdDevoluciones.Click = [this] { cmdDevoluciones_Click(); };
    cmdBorrarVentas.Click = [this] { cmdBorrarVentas_Click(); };
}

void frmCaja::cmdAbonoVenta_Click() {
    if (!cmdAbonoVenta.enabled) return;
    frOpcionesCaja.visible = false;
    ModoAbono = true;
    PedirVenta(true, false).Show(true);
    if (VentaReabierta == 0) {
        ModoAbono = false;
        return;
    }
    NumeroFacturaAbonada = CStr(Value(VentaReabierta));
    // The till comes to the front again as the screen goes, and its
    // activation starts the refund.
    Form_Activate();
}

void frmCaja::cmdDevoluciones_Click() {
    if (frUltimaVenta.visible) frUltimaVenta.visible = false;
    PedirVenta(false, true).Show(true);
    if (VentaReabierta != 0) {
        LimpiarPantalla();
        mostrarVenta(VentaReabierta);
        tmrColorear.SetEnabled(true);
    }
    FocoSeguro(txtcod);
}

void frmCaja::cmdBorrarVentas_Click() {
    if (!cmdBorrarVentas.enabled) return;
    frOpcionesCaja.visible = false;
    VentaBorrar = 0;
    PedirVenta(false, false).Show(true);
    if (VentaBorrar == 0) return;
    // By now the closed sale is gone: it stands as an open sale, which is
    // annulled at once and leaves the incident behind.
    const std::int32_t numero = FacturaOrigen(VentaBorrar);
    MsgBox("Acaba de borrar la venta " + CStr(Value(numero)) +
               " recuerde que esta accion quedara registrado \r\ncomo incidencia y lo podra consultar desde la "
               "opcion de Visor de Incidencias",
           vbInformation, "Borrar ventas ya cobradas");
    LimpiarPantalla();
    mostrarVenta(VentaBorrar);
    tmrColorear.SetEnabled(true);
    cmd_Borrar_Click();
}

void frmCaja::cmd_Borrar_Click() {
    if (lblNumVenta.caption.empty()) return;
    AnularVenta(CLng(Value(lblNumVenta.caption)), Fecha1.Value());
    CargarPanelVentas();
    cargarPanelVentas();
    LimpiarPantalla();
    VentaNueva = true;
    FocoEntrada();
}

}  // namespace tpv
