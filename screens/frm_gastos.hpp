#pragma once
#include <string>

#include "screens/frm_caja_inicial.hpp"

// Money taken out of the till for an expense: one new row of `Gastos` for
// each one accepted. First the employee and their password, then the
// concept and the amount; a negative amount corrects an earlier entry.
namespace tpv {

class frmGastos : public VentanaConClave {
public:
    Label Label3, Label4;
    Frame frConcepto;
    ComboBox cmbConcepto;

    void CargarGastos();
    void txtImporte_KeyPress(int& tecla);
    void cmdAceptarEmp_Click();
    void GuardarGasto(const std::string& empleado);

protected:
    void Disenar() override;
    void Form_Load() override;
};

}  // namespace tpv
