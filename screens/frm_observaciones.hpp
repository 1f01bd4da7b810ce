#pragma once
#include <string>

#include "screens/anfitrion.hpp"

// The notes employees leave for the next shift: today's notes of this
// terminal in a list, and a new one from any employee, without password.
namespace tpv {

class frmObservaciones : public Ventana {
public:
    Label Label1;  // the title
    Frame frObservaciones;
    ListBox lbObservaciones;
    Label lbLObservacion;
    CommandButton cmdNuevo, cmdSalir;
    Frame frNuevo;
    ButtonMatrix PanelEmpleados;
    Label lblEmpInfo;
    TextBox txtobservacion;
    CommandButton cmdAceptarEmp, cmdCancelar;

    std::string codigo;  // the employee chosen

    void ColocarPaneles();
    void cargarObservaciones();
    void cmdNuevo_Click();
    void PanelEmpleados_Pulsado();
    void cmdAceptarEmp_Click();
    void GuardarObservaciones(const std::string& empleado);

protected:
    void Disenar() override;
    void Form_Load() override;
};

}  // namespace tpv
