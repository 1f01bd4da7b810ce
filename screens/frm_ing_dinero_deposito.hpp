#pragma once
#include <array>

#include "screens/anfitrion.hpp"

// Money a customer leaves at the shop: the amount typed or keyed on the pad
// becomes a sale of the deposit service, which the till then settles; the
// customer's balance goes up when it is paid.
namespace tpv {

class frmIngDineroDeposito : public Ventana {
public:
    TextBox txtDindep;
    Label Label1, Label2, lblCodCliente, lblNumVenta;
    Frame frmNumerico;
    std::array<CommandButton, 11> btnNumerico_Cobro;  // 0 to 9, and 10 the comma
    CommandButton cmd_nuevoCobro, cmdAceptar, cmdCancelar;

    double ImporteDinDep = 0;  // the amount being paid in

    void pantallaInicial();
    void txtDindep_KeyPress(int& tecla);
    void PulsarTecla(int indice);
    void cmdAceptar_Click();
    // The amount typed goes in as a new sale, and the till knows the sale
    // on it is money paid in. Written without the ñ of "Añadir", as the
    // till's other names are.
    void AnadirDinDep();
    void IngresoDeposito();

protected:
    void Disenar() override;
    void Form_Load() override;
};

}  // namespace tpv
