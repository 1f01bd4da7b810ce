#include "screens/frm_observaciones.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/frm_caja_inicial.hpp"
#include "screens/pantallas.hpp"

namespace tpv {

namespace {

constexpr double kArriba = 1200;  // where both frames start, under the title
constexpr double kAnchoMarco = 14880;
constexpr double kAltoMarco = 10080;

}  // namespace

void frmObservaciones::Disenar() {
    nombre = "frmObservaciones";
    caption = "Observaciones de Ventas del dia";
    width = kAnchoDiseno;
    height = kAltoDiseno;
    Poner(Label1, "Label1", 240, 240, 14880, 720, "Observaciones de Ventas del dia");
    Label1.fontSize = 18;
    // The list of the day's notes first; a new note takes its place.
    Poner(frObservaciones, "frObservaciones", 240, kArriba, kAnchoMarco, kAltoMarco);
    Poner(lbObservaciones, "lbObservaciones", 0, 0, kAnchoMarco, 6840, "", &frObservaciones);
    lbObservaciones.fontSize = 12;
    Poner(lbLObservacion, "lbLObservacion", 0, 6960, kAnchoMarco, 1680, "", &frObservaciones);
    lbLObservacion.fontSize = 12;
    Poner(cmdNuevo, "cmdNuevo", 6960, 8880, 4200, 1080, "Nueva Observacion", &frObservaciones);
    Poner(cmdSalir, "cmdSalir", 11400, 8880, 3480, 1080, "Salir", &frObservaciones);
    Poner(frNuevo, "frNuevo", 240, kArriba, kAnchoMarco, kAltoMarco);
    Poner(PanelEmpleados, "PanelEmpleados", 0, 0, 9120, kAltoMarco, "", &frNuevo);
    PanelEmpleados.Separacion = 240;
    PanelEmpleados.TamanoBoton = 2160;
    Poner(lblEmpInfo, "lblEmpInfo", 9360, 0, 5520, 720, "", &frNuevo);
    lblEmpInfo.fontSize = 14;
    Poner(txtobservacion, "txtobservacion", 9360, 960, 5520, 5520, "", &frNuevo);
    txtobservacion.fontSize = 12;
    Poner(cmdAceptarEmp, "cmdAceptarEmp", 9360, 8880, 2640, 1080, "Aceptar", &frNuevo);
    Poner(cmdCancelar, "cmdCancelar", 12240, 8880, 2640, 1080, "Cancelar", &frNuevo);
    frNuevo.visible = false;

    lbObservaciones.Click = [this] {
        if (lbObservaciones.ListIndex() >= 0) lbLObservacion.caption = lbObservaciones.Text();
    };
    cmdNuevo.Click = [this] { cmdNuevo_Click(); };
    cmdSalir.Click = [this] { Unload(); };
    PanelEmpleados.Pulsado = [this] { PanelEmpleados_Pulsado(); };
    cmdAceptarEmp.Click = [this] { cmdAceptarEmp_Click(); };
    cmdCancelar.Click = [this] { Unload(); };
}

void frmObservaciones::Form_Load() {
    AjustarPantallaDeCaja(*this);
    ColocarPaneles();
    DarPanelEmpleados(PanelEmpleados);
    codigo.clear();
    cargarObservaciones();
}

// Both frames stand in the same place: one shows at a time.
void frmObservaciones::ColocarPaneles() {
    frNuevo.left = frObservaciones.left;
    frNuevo.top = frObservaciones.top;
    frNuevo.width = frObservaciones.width;
    frNuevo.height = frObservaciones.height;
    frObservaciones.visible = true;
    frNuevo.visible = false;
}

// Each note as its author's name, the initial of the surname and the text.
// Notes of employees that are gone drop out with the join.
void frmObservaciones::cargarObservaciones() {
    Sesion& s = sesion();
    Recordset rs;
    rs.Open("Select empleados.Nombre AS NOM,empleados.Apellidos AS APE,ObservacionCaja.observacion from "
            "ObservacionCaja,empleados where fecha = #" +
                Format(Date(), "mm/dd/yyyy") + "# and terminal = '" + s.TerminalActual +
                "' and empleados.codigo = observacioncaja.empleado",
            s.Conexion);
    for (; !rs.Eof(); rs.MoveNext())
        lbObservaciones.AddItem(Texto(rs["nom"]) + " " + Left(Texto(rs["ape"]), 1) + ": " +
                                Texto(rs["observacion"]));
}

void frmObservaciones::cmdNuevo_Click() {
    lblEmpInfo.caption = "";
    frObservaciones.visible = false;
    frNuevo.visible = true;
}

void frmObservaciones::PanelEmpleados_Pulsado() {
    lblEmpInfo.caption = PanelEmpleados.TextoPulsado;
    codigo = PanelEmpleados.CodigoPulsado;
    txtobservacion.SetText("");
    txtobservacion.SetFocus();
}

void frmObservaciones::cmdAceptarEmp_Click() {
    if (lblEmpInfo.caption.empty() || txtobservacion.Text().empty()) return;
    GuardarObservaciones(codigo);
    Unload();
}

void frmObservaciones::GuardarObservaciones(const std::string& empleado) {
    Sesion& s = sesion();
    RecordWriter::Instancia().Insertar(s.Conexion, "ObservacionCaja",
                                       "fecha=" + Format(Date(), "dd/mm/yyyy") + "|hora=" + Format(Now(), "hh:mm:ss") +
                                           "|empleado=" + empleado + "|Observacion=" + txtobservacion.Text() +
                                           "|terminal=" + s.TerminalActual + "|",
                                       s.NombreTienda, s.Multitienda);
}

}  // namespace tpv
