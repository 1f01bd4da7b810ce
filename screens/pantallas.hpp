#pragma once
#include "core/sesion/arranque.hpp"
#include "screens/anfitrion.hpp"
#include "screens/frm_caja.hpp"

// The screens of the start: the employee selection, the waiting screen and
// the till screen (screens/frm_caja.hpp).
namespace tpv {

// Design size of every screen, in twips.
inline constexpr double kAnchoDiseno = 15360;
inline constexpr double kAltoDiseno = 11520;

class frmPrincipalCantarel : public Ventana {
public:
    ButtonMatrix PanelEmpleados;
    CommandButton cmd_Salir;
    Label lblSelEmpInfo;
    Label lblSelEmp;
    std::string ColorResalte;

    void cargarPanelEmpleados();

protected:
    void Disenar() override;
    void Form_Load() override;
};

// A fixed wait of about five seconds while a report loads.
class frmEsperar : public Ventana {
public:
    Label Label1;
    Label Label2;
    ProgressBar ProgressBar1;
    Timer tmr_barra;

protected:
    void Disenar() override;
    void Form_Load() override;
};

// Opens the first screen of a run, for Main.
class PantallasDeArranque : public PrimeraPantalla {
public:
    void MostrarSeleccionEmpleado() override;
    void MostrarCaja() override;
};

}  // namespace tpv
