#include "screens/frm_gastos.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/key_filter.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/pantallas.hpp"

namespace tpv {

void frmGastos::Disenar() {
    DisenarComun("frmGastos", "Gastos");
    // Concept and amount, once the password is right.
    Poner(frConcepto, "frConcepto", 9840, 3600, 5280, 4800);
    Poner(Label3, "Label3", 0, 0, 5280, 480, "Concepto:", &frConcepto);
    Poner(cmbConcepto, "cmbConcepto", 0, 480, 5280, 720, "", &frConcepto);
    cmbConcepto.fontSize = 14;
    cmbConcepto.toolTipText = "Seleccione el concepto o añada uno nuevo";
    Poner(Label4, "Label4", 0, 1560, 5280, 480, "Importe:", &frConcepto);
    Poner(txtImporte, "txtImporte", 0, 2040, 5280, 720, "", &frConcepto);
    txtImporte.fontSize = 14;
    frConcepto.visible = false;
    cmbConcepto.tabIndex = 1;
    txtImporte.tabIndex = 2;
    txtImporte.KeyPress = [this](int& k) { txtImporte_KeyPress(k); };
    cmbConcepto.Click = [this] { txtImporte.SetFocus(); };
    cmdAceptarEmp.Click = [this] { cmdAceptarEmp_Click(); };
}

void frmGastos::Form_Load() {
    AbrirComun();
    CargarGastos();
}

// The concepts are the motives already used: a new one joins the list the
// next time the screen opens.
void frmGastos::CargarGastos() {
    Recordset rs;
    rs.Open("Select distinct(motivo) as concepto from gastos", sesion().Conexion);
    for (; !rs.Eof(); rs.MoveNext()) cmbConcepto.AddItem(Texto(rs["concepto"]));
}

// One minus sign may stand anywhere in the amount; the rest is a money entry.
void frmGastos::txtImporte_KeyPress(int& tecla) {
    BorrarImporteSeleccionado();
    if (tecla == '-') {
        if (InStr(txtImporte.Text(), "-") > 0) tecla = 0;
        return;
    }
    tecla = KeyFilter::Instancia().FiltrarTecla(tecla, txtImporte, sesion().opciones.NumDecimales);
}

void frmGastos::cmdAceptarEmp_Click() {
    if (frConcepto.visible) {
        GuardarGasto(codigo);
        Unload();
        return;
    }
    if (txtPW.Text() == clave) {
        frConcepto.visible = true;
        cmbConcepto.SetFocus();
    } else if (intentos != kIntentosClave) {
        MsgBox("Clave Incorrecta, por favor verifique su clave.", vbCritical, "Restauracion");
        ++intentos;
    } else {
        Unload();
    }
}

void frmGastos::GuardarGasto(const std::string& empleado) {
    if (txtImporte.Text().empty() || cmbConcepto.Text().empty()) return;
    Sesion& s = sesion();
    RecordWriter::Instancia().Insertar(s.Conexion, "Gastos",
                                       "fecha=" + Format(Date(), "dd/mm/yyyy") + "|hora=" + Format(Now(), "hh:mm:ss") +
                                           "|empleado=" + empleado + "|importe=" + txtImporte.Text() +
                                           "|motivo=" + cmbConcepto.Text() + "|terminal=" + s.TerminalActual + "|",
                                       s.NombreTienda, s.Multitienda);
}

}  // namespace tpv
