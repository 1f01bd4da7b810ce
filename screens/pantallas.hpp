#pragma once
#include "core/sesion/arranque.hpp"
#include "screens/anfitrion.hpp"

// The screens of the start: the employee selection, the waiting screen and
// the till screen (its layout; its workings are added to it).
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

class frmCaja : public Ventana {
public:
    Frame fr_Padre, fr_hijo, frTactil;
    TextBox txtcod, txtCodBarras, CajaText_Pago, txtUltProd, txtUltCant, txtTArticulos, txtNomCliente;
    Grid FGCaja;
    Label lblNumVenta, lbl_Empleado, lblHora, lblCodCliente, lblCodProd, lblnomProd;
    CommandButton cmdTerminarVenta, cmdNuevaVenta, cmd_CambioEmpleado, cmd_Salir;
    DTPicker Fecha1;
    Timer tmrHora;

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
