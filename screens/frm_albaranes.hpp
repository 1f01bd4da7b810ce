#pragma once
#include <cstdint>
#include <string>

#include "screens/anfitrion.hpp"

// The customer's delivery notes, to be invoiced together: a touch on a note
// of the upper list moves it to the lower one of the chosen notes, and back.
// Accepting joins the chosen notes into one new open sale, which the till
// then settles; its number is left in frmCaja.VentaAlbaranes.
namespace tpv {

class frmAlbaranes : public Ventana {
public:
    Grid grid_devolucion, gridSel;
    Label Label1, Label2, Label3, Label4, lblNumVenta;
    TextBox txtTotal;
    CommandButton cmdAceptar, cmdSalir;
    Timer tmrColorear;

    void grid_devolucion_Click();
    void gridSel_Click();
    void txtTotal_Change();
    void cmdAceptar_Click();
    void JuntarAlbaranesYMostrar();

protected:
    void Disenar() override;
    void Form_Load() override;

private:
    void CargarAlbaranes();
    void tmrColorear_Timer();
    // Moves the note of row `fila` of `origen` to the end of `destino`.
    void MoverFila(Grid& origen, long fila, Grid& destino);
    void SumarAlTotal(double importe);

    long colorFondo_ = 0, colorSegundo_ = 0;
};

}  // namespace tpv
