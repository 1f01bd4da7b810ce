#include "screens/frm_caja_inicial.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/key_filter.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/servicios/screen_fitter.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/colores.hpp"
#include "screens/pantallas.hpp"

namespace tpv {

void DarPanelEmpleados(ButtonMatrix& panel) {
    const Sesion& s = sesion();
    panel.Recibo_Datos_De_Matriz(s.PanelEmpleados);
    panel.LimpiarPanel();
    panel.Cargar_Contenido_Boton();
    panel.UsaColores = s.opciones.UtilizaColores_empleados;
}

std::string ClaveDeEmpleado(const std::string& codigo) {
    Recordset rs;
    rs.Open("SELECT clave FROM Empleados where codigo = " + codigo, sesion().Conexion);
    if (rs.Eof() || rs["clave"].IsNull()) return "";
    return Texto(rs["clave"]);
}

void AjustarPantallaDeCaja(Formulario& pantalla) {
    Sesion& s = sesion();
    ScreenFitter::Instancia().Ajustar(s.Conexion, pantalla, s.AnchoPantalla, s.AltoPantalla, kAnchoDiseno,
                                      kAltoDiseno);
}

void VentanaConClave::DisenarComun(const std::string& nombre_, const std::string& titulo) {
    nombre = nombre_;
    caption = titulo;
    width = kAnchoDiseno;
    height = kAltoDiseno;
    Poner(Label1, "Label1", 240, 240, 14880, 720, titulo);
    Label1.fontSize = 18;
    // Employees on the left, password and the rest on the right.
    Poner(fr_Empleados, "fr_Empleados", 240, 1200, 9360, 9840, "Seleccione el empleado");
    Poner(PanelEmpleados, "PanelEmpleados", 120, 360, 9120, 9360, "", &fr_Empleados);
    PanelEmpleados.Separacion = 240;
    PanelEmpleados.TamanoBoton = 2160;
    Poner(lblEmpInfo, "lblEmpInfo", 9840, 1200, 5280, 720, "");
    lblEmpInfo.fontSize = 14;
    Poner(Label2, "Label2", 9840, 2160, 5280, 480, "Clave de Empleado:");
    Poner(txtPW, "txtPW", 9840, 2640, 5280, 720);
    txtPW.fontSize = 14;
    Poner(cmdAceptarEmp, "cmdAceptarEmp", 9840, 9120, 2520, 1080, "Aceptar");
    Poner(cmdCancelar, "cmdCancelar", 12600, 9120, 2520, 1080, "Cancelar");
    txtPW.tabIndex = 0;
    cmdAceptarEmp.tabIndex = 3;
    cmdCancelar.tabIndex = 4;
    PanelEmpleados.Pulsado = [this] { PanelEmpleados_Pulsado(); };
    txtPW.GotFocus = [this] {
        txtPW.backColor = NumeroDeColor(ColourScheme().ColorFoco(sesion().Conexion, sesion().EsquemaColores));
        txtPW.selStart = 0;
        txtPW.selLength = Len(txtPW.Text());
    };
    cmdCancelar.Click = [this] { Unload(); };
}

void VentanaConClave::AbrirComun() {
    AjustarPantallaDeCaja(*this);
    DarPanelEmpleados(PanelEmpleados);
    codigo.clear();
    clave.clear();
    intentos = 0;
}

void VentanaConClave::PanelEmpleados_Pulsado() {
    lblEmpInfo.caption = PanelEmpleados.TextoPulsado;
    codigo = PanelEmpleados.CodigoPulsado;
    clave = ClaveDeEmpleado(codigo);
    txtPW.SetText("");
    txtPW.SetFocus();
}

void VentanaConClave::BorrarImporteSeleccionado() {
    if (txtImporte.selLength > 0 && txtImporte.selLength == Len(txtImporte.Text())) txtImporte.SetText("");
}

void frmCajaInicial::Disenar() {
    DisenarComun("frmCajaInicial", "Caja Inicial");
    Poner(Label3, "Label3", 9840, 3600, 5280, 480, "Importe:");
    Poner(txtImporte, "txtImporte", 9840, 4080, 5280, 720);
    txtImporte.fontSize = 14;
    txtImporte.tabIndex = 1;
    Poner(Command1, "Command1", 14640, 240, 480, 480, "X");
    txtImporte.KeyPress = [this](int& k) { txtImporte_KeyPress(k); };
    cmdAceptarEmp.Click = [this] { cmdAceptarEmp_Click(); };
    Command1.Click = [this] { Unload(); };
}

void frmCajaInicial::Form_Load() { AbrirComun(); }

void frmCajaInicial::txtImporte_KeyPress(int& tecla) {
    BorrarImporteSeleccionado();
    tecla = KeyFilter::Instancia().FiltrarTecla(tecla, txtImporte, sesion().opciones.NumDecimales);
}

void frmCajaInicial::cmdAceptarEmp_Click() {
    if (txtPW.Text() != clave) {
        if (intentos == kIntentosClave) {
            Unload();
            return;
        }
        MsgBox("Clave Incorrecta, por favor verifique su clave.", vbCritical, "Restauracion");
        ++intentos;
        txtPW.SetFocus();
        return;
    }
    if (txtImporte.Text().empty()) {
        MsgBox("Ingrese el importe de caja inicial", vbCritical, "Caja Inicial");
        return;
    }
    GuardarCajaInicial(codigo);
    Unload();
}

// The day's row of this terminal is written once and then overwritten: the
// condition names the day month first, the values day first.
void frmCajaInicial::GuardarCajaInicial(const std::string& empleado) {
    Sesion& s = sesion();
    const std::string condicion =
        "fecha = #" + Format(Date(), "mm/dd/yyyy") + "# and terminal='" + s.TerminalActual + "'";
    Recordset rs;
    rs.Open("Select * from caja_inicial where " + condicion, s.Conexion);
    const bool hayFila = !rs.Eof();
    rs.Close();
    const std::string valores = "hora=" + Format(Now(), "hh:mm:ss") + "|empleado=" + empleado +
                                "|importe=" + txtImporte.Text() + "|";
    if (!hayFila) {
        RecordWriter::Instancia().Insertar(s.Conexion, "caja_inicial",
                                           "fecha=" + Format(Date(), "dd/mm/yyyy") + "|" + valores +
                                               "terminal=" + s.TerminalActual + "|",
                                           s.NombreTienda, s.Multitienda);
    } else {
        RecordWriter::Instancia().Actualizar(s.Conexion, "caja_inicial", valores, s.NombreTienda, s.Multitienda,
                                             condicion);
    }
}

}  // namespace tpv
