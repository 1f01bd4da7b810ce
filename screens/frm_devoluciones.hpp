#pragma once
#include <string>

#include "screens/anfitrion.hpp"

// The screen that asks for a closed sale: to refund it, to modify it or to
// delete it. It lists the 30 latest sales (those with a debt in red); a
// click on one, or its number typed in, and Aceptar. It hands its answer to
// the till screen (frmCaja's VentaReabierta or VentaBorrar) and unloads.
namespace tpv {

class frmDevoluciones : public Ventana {
public:
    // The mode, set before showing it: refund (Abono), modification
    // (Modificacion) or, with both false, deletion.
    bool Abono = false;
    bool Modificacion = false;
    // The open sale that a modification or deletion made of the closed one.
    std::string NumeroVentaReabierta = "0";

    Label Label1, lblBuscarCliente, lblEliminarInfo;
    TextBox txtNumFac;
    CommandButton cmdAceptar, cmdSalir;
    Grid grid_devolucion;

    void cmdAceptar_Click();
    void cmdSalir_Click();
    void pantallaAbono();
    void PantallaDevolucion();
    void PantallaBorrado();

protected:
    void Disenar() override;
    void Form_Load() override;

private:
    void CargarUltimasVentas();
};

}  // namespace tpv
