#pragma once
#include <string>

#include "screens/anfitrion.hpp"

// The opening float: the money an employee puts in the till at the start of
// the day, one row of `caja_inicial` per day and terminal. The employee
// picks their button and proves it with their password; three wrong ones
// close the screen.
namespace tpv {

// The session's employee buttons on a panel of a cash-desk screen.
void DarPanelEmpleados(ButtonMatrix& panel);

// The employee's password as the back office keeps it; "" when it has none.
std::string ClaveDeEmpleado(const std::string& codigo);

// The screen's own geometry fitted to the display.
void AjustarPantallaDeCaja(Formulario& pantalla);

// Wrong passwords let through before the next one closes the screen.
inline constexpr int kIntentosClave = 2;

// What the float and the expenses share: a title, the employee buttons, the
// password of the one chosen and an amount, and the count of wrong tries.
class VentanaConClave : public Ventana {
public:
    Label Label1;  // the title
    Frame fr_Empleados;
    ButtonMatrix PanelEmpleados;
    Label lblEmpInfo, Label2;
    TextBox txtPW, txtImporte;
    CommandButton cmdAceptarEmp, cmdCancelar;

    std::string codigo;  // the employee chosen
    std::string clave;   // their password
    int intentos = 0;    // wrong passwords so far

    void PanelEmpleados_Pulsado();

protected:
    // Lays out and wires what is shared; the amount is placed by each screen.
    void DisenarComun(const std::string& nombre_, const std::string& titulo);
    // Opening: fitted, the employees' buttons, no employee and no tries yet.
    void AbrirComun();
    // A key in the amount: a text wholly selected is cleared first.
    void BorrarImporteSeleccionado();
};

class frmCajaInicial : public VentanaConClave {
public:
    Label Label3;
    CommandButton Command1;

    void txtImporte_KeyPress(int& tecla);
    void cmdAceptarEmp_Click();
    void GuardarCajaInicial(const std::string& empleado);

protected:
    void Disenar() override;
    void Form_Load() override;
};

}  // namespace tpv
