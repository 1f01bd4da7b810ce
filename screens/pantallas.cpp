#include "screens/pantallas.hpp"

#include "core/runtime/conversiones.hpp"
#include "core/runtime/fecha.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/reloj.hpp"
#include "core/servicios/caption_translator.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/screen_fitter.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

namespace {

// Captions, colours and size of a screen as it opens.
void PrepararPantalla(Formulario& pantalla, ColourScheme& colores, double anchoDiseno, double altoDiseno) {
    Sesion& s = sesion();
    CaptionTranslator::Instancia().Traducir(s.Conexion, pantalla);
    colores.Colorear(pantalla, s.EsquemaColores, s.Conexion);
    ScreenFitter::Instancia().Ajustar(s.Conexion, pantalla, s.AnchoPantalla, s.AltoPantalla, anchoDiseno, altoDiseno);
}

}  // namespace

void frmPrincipalCantarel::Disenar() {
    nombre = "frmPrincipalCantarel";
    caption = "Seleccion de Empleado";
    width = kAnchoDiseno;
    height = kAltoDiseno;
    Poner(lblSelEmp, "lblSelEmp", 240, 240, 3000, 600, "CAJA");
    Poner(lblSelEmpInfo, "lblSelEmpInfo", 240, 960, 6000, 400, "Seleccione el Empleado");
    Poner(PanelEmpleados, "PanelEmpleados", 240, 1500, 14800, 8800);
    PanelEmpleados.tabIndex = 0;
    PanelEmpleados.Separacion = 240;
    PanelEmpleados.TamanoBoton = 2400;
    Poner(cmd_Salir, "cmd_Salir", 12960, 10440, 2160, 720, "Salir");
    cmd_Salir.tabIndex = 1;
    PanelEmpleados.Pulsado = [this] {
        Sesion& s = sesion();
        s.NombreEmpleadoActual = PanelEmpleados.TextoPulsado;
        s.CodigoEmpleadoActual = CLng(Value(PanelEmpleados.CodigoPulsado));
        Unica<frmCaja>().Show();
    };
    cmd_Salir.Click = [this] { Unload(); };
}

void frmPrincipalCantarel::Form_Load() {
    Sesion& s = sesion();
    if (s.AltoPantalla < 11085) {
        PanelEmpleados.Separacion = 300;
        PanelEmpleados.TamanoBoton = 1800;
    }
    CaptionTranslator::Instancia().Traducir(s.Conexion, *this);
    ColourScheme colores;
    colores.Colorear(*this, s.EsquemaColores, s.Conexion);
    ColorResalte = colores.ColorResalte(s.Conexion, s.EsquemaColores);
    ScreenFitter::Instancia().Ajustar(s.Conexion, *this, s.AnchoPantalla, s.AltoPantalla, s.AnchoDiseno, s.AltoDiseno);
    cargarPanelEmpleados();
}

void frmPrincipalCantarel::cargarPanelEmpleados() {
    const Sesion& s = sesion();
    PanelEmpleados.Recibo_Datos_De_Matriz(s.PanelEmpleados);
    PanelEmpleados.LimpiarPanel();
    PanelEmpleados.Cargar_Contenido_Boton();
    PanelEmpleados.UsaColores = s.opciones.UtilizaColores_empleados;
}

void frmEsperar::Disenar() {
    nombre = "frmEsperar";
    caption = "";
    width = 6000;
    height = 1800;
    Poner(Label1, "Label1", 240, 240, 5400, 400, "Generando Reporte");
    Poner(Label2, "Label2", 240, 1320, 5400, 300, "formulario utilizado para dar tiempo a carga los report");
    Label2.visible = false;
    Poner(ProgressBar1, "ProgressBar1", 240, 760, 5400, 400);
    Poner(tmr_barra, "tmr_barra", 0, 0, 0, 0);
    tmr_barra.SetInterval(50);
    tmr_barra.enabled = true;
    tmr_barra.Tick = [this] {
        ProgressBar1.SetValue(ProgressBar1.Value() + 1);
        if (ProgressBar1.Value() >= 100) {
            ProgressBar1.SetValue(0);
            Unload();
        }
    };
}

void frmEsperar::Form_Load() {
    Sesion& s = sesion();
    ColourScheme colores;
    CaptionTranslator::Instancia().Traducir(s.Conexion, *this);
    colores.Colorear(*this, s.EsquemaColores, s.Conexion);
    const long color = CLng(Value(colores.Color2(s.Conexion, s.EsquemaColores)));
    ProgressBar1.foreColor = color;
    ScreenFitter::Instancia().Ajustar(s.Conexion, *this, s.AnchoPantalla, s.AltoPantalla, kAnchoDiseno, kAltoDiseno);
}

void frmCaja::Disenar() {
    nombre = "frmCaja";
    caption = "Caja";
    width = kAnchoDiseno;
    height = kAltoDiseno;
    keyPreview = false;
    Poner(fr_Padre, "fr_Padre", 0, 0, kAnchoDiseno, kAltoDiseno);
    Poner(fr_hijo, "fr_hijo", 0, 0, kAnchoDiseno, 9600, "", &fr_Padre);
    Poner(frTactil, "frTactil", 0, 0, 7680, 9600, "", &fr_Padre);
    Poner(txtcod, "txtcod", 240, 240, 3600, 480, "", &fr_hijo);
    txtcod.tabIndex = 0;
    Poner(txtCodBarras, "txtCodBarras", 240, 240, 3600, 480, "", &frTactil);
    Poner(FGCaja, "FGCaja", 240, 960, 10800, 6600, "", &fr_hijo);
    FGCaja.SetCols(17);
    Poner(lblNumVenta, "lblNumVenta", 11280, 240, 1800, 360, "", &fr_hijo);
    Poner(lbl_Empleado, "lbl_Empleado", 11280, 720, 3600, 360, "", &fr_hijo);
    lbl_Empleado.toolTipText = "Empleado que apertura la venta";
    Poner(lblHora, "lblHora", 13440, 240, 1200, 360, "", &fr_hijo);
    Poner(lblCodCliente, "lblCodCliente", 11280, 1200, 1200, 360, "0", &fr_hijo);
    Poner(txtNomCliente, "txtNomCliente", 12600, 1200, 2400, 360, "", &fr_hijo);
    Poner(lblCodProd, "lblCodProd", 4080, 240, 1200, 360, "", &fr_hijo);
    Poner(lblnomProd, "lblnomProd", 5400, 240, 5400, 360, "", &fr_hijo);
    Poner(CajaText_Pago, "CajaText_Pago", 11280, 7200, 3600, 720, "", &fr_hijo);
    Poner(txtUltProd, "txtUltProd", 240, 7800, 5400, 360, "", &fr_hijo);
    Poner(txtUltCant, "txtUltCant", 5760, 7800, 1200, 360, "", &fr_hijo);
    Poner(txtTArticulos, "txtTArticulos", 7080, 7800, 1200, 360, "", &fr_hijo);
    Poner(Fecha1, "Fecha1", 11280, 1680, 1800, 360, "", &fr_hijo);
    Poner(cmdNuevaVenta, "cmdNuevaVenta", 240, 9840, 2160, 720, "Nueva Venta <F1>", &fr_Padre);
    Poner(cmd_CambioEmpleado, "cmd_CambioEmpleado", 2520, 9840, 2160, 720, "Cambiar Empleado <F2>", &fr_Padre);
    Poner(cmdTerminarVenta, "cmdTerminarVenta", 11280, 8160, 3600, 720, "Terminar Venta <F9>", &fr_hijo);
    cmdTerminarVenta.visible = false;
    Poner(cmd_Salir, "cmd_Salir", 14160, 9840, 960, 720, "", &fr_Padre);
    Poner(tmrHora, "tmrHora", 0, 0, 0, 0);
    tmrHora.SetInterval(1000);
    tmrHora.enabled = true;
    tmrHora.Tick = [this] { lblHora.caption = Format(Value(reloj::Ahora()), "HH:MM"); };
    cmd_Salir.Click = [this] { Unload(); };
}

void frmCaja::Form_Load() {
    Sesion& s = sesion();
    ColourScheme colores;
    PrepararPantalla(*this, colores, s.AnchoDiseno, s.AltoDiseno);
    frTactil.visible = s.opciones.modopantallacaja != 1;
    lblHora.caption = Format(Value(reloj::Ahora()), "HH:MM");
    lbl_Empleado.caption = s.NombreEmpleadoActual;
    txtNomCliente.SetText("Cliente Generico");
    Fecha1.SetValue(fecha::Hoy());
}

void PantallasDeArranque::MostrarSeleccionEmpleado() { Unica<frmPrincipalCantarel>().Show(); }

void PantallasDeArranque::MostrarCaja() { Unica<frmCaja>().Show(); }

}  // namespace tpv
