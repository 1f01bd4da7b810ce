#pragma once
#include <cstdint>
#include <string>

#include "screens/anfitrion.hpp"
#include "screens/frm_buscar.hpp"

// The customer card: registers a new customer at the till with a short
// card, adds them to the in-memory list, puts their code on the till and
// prints the privacy contract for them to sign. It only adds customers:
// changing one is the back office's work.
namespace tpv {

class frmClientes : public Ventana {
public:
    Frame frAltaCli, frTeclado;
    Label lblCod, lblTituloCod, lblCodigo, lblNombre, lblApellidos, lblSexo, lblNif, lblTlfFijo, lblTlfMovil,
        lblDireccion, lblPoblacion, lblProvincia, lblCP, lblDesc, lblEmail, lblNacimiento, lblBarra,
        lblRecomendadoPor;
    TextBox txtcodigo, txtnombre, txtapellidos, txtNif, txtTlfFijo, txtTlfMovil, txtDireccion, txtPoblacion,
        txtProvincia, txtCP, txtDesc, txtEmail, txtDia, TxtMes, txtRecomendadoPor;
    ComboBox cmbSexo;
    CommandButton cmdAceptar, cmdCancelar, cmdSalir_Alta;
    TecladoLetras bt_letra;
    std::string ColorFoco;

    // Proposes the new customer's number (lblCod) and card code (txtcodigo).
    void darcodigo();
    // The number of another customer with that card code, -1 when none.
    void ExisteCodigo(const std::string& codigo, std::int32_t& encontrado);
    void GuardarCliente();
    // Prints the privacy contract of the customer `codigo` when the shop
    // asks for one; a failure is told in a box and the card goes on.
    void ImprimirContratoConfi(const std::string& codigo);
    void cmdAceptar_Click();
    void cmdCancelar_Click();
    void PulsarLetra(int codigo);

protected:
    void Disenar() override;
    void Form_Load() override;
    void Form_Activate() override;

private:
    TextBox* cajaActiva_ = nullptr;
};

}  // namespace tpv
