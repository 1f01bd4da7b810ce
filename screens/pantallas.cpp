#include "screens/pantallas.hpp"

#include "core/runtime/conversiones.hpp"
#include "core/runtime/fecha.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/reloj.hpp"
#include "core/servicios/caption_translator.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/screen_fitter.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/frm_cobrar.hpp"

namespace tpv {


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
        ConectarCobro(Unica<frmCaja>());
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

void PantallasDeArranque::MostrarSeleccionEmpleado() { Unica<frmPrincipalCantarel>().Show(); }

void PantallasDeArranque::MostrarCaja() {
    ConectarCobro(Unica<frmCaja>());
    Unica<frmCaja>().Show();
}

}  // namespace tpv
