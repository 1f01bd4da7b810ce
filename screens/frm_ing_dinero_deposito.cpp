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

constexpr double kLado = 1080;
constexpr double kPaso = 1200;
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
    Poner(frmNumerico, "frmNumerico", 4200, 1440, 3 * kPaso + 120, 4 * kPaso + 120);
    static constexpr int kOrden[4][3] = {{7, 8, 9}, {4, 5, 6}, {1, 2, 3}, {0, 10, -1}};
    for (int f = 0; f < 4; ++f)
        for (int c = 0; c < 3; ++c) {
            const int n = kOrden[f][c];
            if (n < 0) continue;
            CommandButton& b = btnNumerico_Cobro[static_cast<std::size_t>(n)];
            Poner(b, "btnNumerico_Cobro" + std::to_string(n), 60 + c * kPaso, 60 + f * kPaso, kLado, kLado,
                  n == 10 ? "," : std::to_string(n), &frmNumerico);
            b.fontSize = kFuenteGrande;
            b.tabStop = false;
            b.Click = [this, n] { PulsarTecla(n); };
        }
    Poner(cmd_nuevoCobro, "cmd_nuevoCobro", 60 + 2 * kPaso, 60 + 3 * kPaso, kLado, kLado, "C", &frmNumerico);
    cmd_nuevoCobro.fontSize = kFuenteGrande;
    cmd_nuevoCobro.tabStop = false;
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
