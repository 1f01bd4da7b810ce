#include "screens/frm_ing_dinero_deposito.hpp"

#include "closing/deposito.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/caption_translator.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/key_filter.hpp"
#include "core/servicios/screen_fitter.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/frm_caja.hpp"
#include "screens/pantallas.hpp"

namespace tpv {

namespace {

constexpr double kFuenteGrande = 14;

}  // namespace

void frmIngDineroDeposito::Disenar() {
    nombre = "frmIngDineroDeposito";
    caption = "Ingresar Dinero en Deposito";
    width = 8400;
    height = 7200;
    Poner(Label1, "Label1", 240, 240, 3600, 600, "Importe a añadir");
    Label1.fontSize = kFuenteGrande;
    Poner(Label2, "Label2", 240, 840, 7920, 480, "o saldo a favor de ");
    Poner(txtDindep, "txtDindep", 240, 1440, 3600, 1080, "");
    txtDindep.fontSize = 26;
    Poner(lblCodCliente, "lblCodCliente", 240, 2640, 1200, 360, "0");
    lblCodCliente.visible = false;
    Poner(lblNumVenta, "lblNumVenta", 1560, 2640, 1200, 360, "");
    lblNumVenta.visible = false;
    PonerTecladoCobro(*this, frmNumerico, btnNumerico_Cobro, cmd_nuevoCobro, 4200, 1440);
    for (int n = 0; n <= 10; ++n) btnNumerico_Cobro[static_cast<std::size_t>(n)].Click = [this, n] { PulsarTecla(n); };
    Poner(cmdAceptar, "cmdAceptar", 240, 5880, 3600, 960, "Aceptar");
    Poner(cmdCancelar, "cmdCancelar", 4200, 5880, 3720, 960, "Cancelar");
    txtDindep.tabIndex = 0;
    cmdAceptar.tabIndex = 1;
    cmdCancelar.tabIndex = 2;

    txtDindep.KeyPress = [this](int& tecla) { txtDindep_KeyPress(tecla); };
    cmd_nuevoCobro.Click = [this] { txtDindep.SetText(""); };
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { Unload(); };
}

void frmIngDineroDeposito::Form_Load() {
    Sesion& s = sesion();
    CaptionTranslator::Instancia().Traducir(s.Conexion, *this);
    ColourScheme colores;
    colores.Colorear(*this, s.EsquemaColores, s.Conexion);
    ScreenFitter::Instancia().Ajustar(s.Conexion, *this, s.AnchoPantalla, s.AltoPantalla, kAnchoDiseno, kAltoDiseno);
    ImporteDinDep = 0;
    pantallaInicial();
}

void frmIngDineroDeposito::pantallaInicial() {
    const frmCaja& caja = Unica<frmCaja>();
    lblCodCliente.caption = caja.lblCodCliente.caption;
    lblNumVenta.caption = caja.lblNumVenta.caption;
    Label2.caption = "o saldo a favor de " + caja.txtNomCliente.Text();
}

void frmIngDineroDeposito::txtDindep_KeyPress(int& tecla) {
    if (txtDindep.selLength > 0 && txtDindep.selLength == static_cast<long>(txtDindep.Text().size()))
        txtDindep.SetText("");
    tecla = KeyFilter::Instancia().FiltrarTecla(tecla, txtDindep, sesion().opciones.NumDecimales);
}

// The pad writes at the end of the amount, through the same filter as the
// keyboard; its separator key is the comma.
void frmIngDineroDeposito::PulsarTecla(int indice) {
    const int tecla = indice == 10 ? ',' : '0' + indice;
    KeyFilter::Instancia().PulsarTeclaPad(txtDindep, tecla, sesion().opciones.NumDecimales);
}

void frmIngDineroDeposito::cmdAceptar_Click() {
    AnadirDinDep();
    Unload();
}

void frmIngDineroDeposito::AnadirDinDep() {
    ImporteDinDep = txtDindep.Text().empty() ? 0.0 : CDbl(Value(txtDindep.Text()));
    IngresoDeposito();
    Unica<frmCaja>().VentaDinDep = true;
}

void frmIngDineroDeposito::IngresoDeposito() {
    frmCaja& caja = Unica<frmCaja>();
    if (sesion().CodigoEmpleadoActual == -1) return;
    tpv::IngresoDeposito(caja.lblNumVenta, CLng(Value(lblCodCliente.caption)), ImporteDinDep, caja.controlesVenta);
    // The till now shows an open sale: what is scanned next goes into it.
    caja.VentaNueva = false;
    caja.cmdTerminarVenta.visible = true;
    caja.cmdTerminarVenta_Tactil.visible = true;
}

}  // namespace tpv
