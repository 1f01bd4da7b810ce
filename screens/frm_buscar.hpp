#pragma once
#include <array>
#include <string>

#include "screens/anfitrion.hpp"

// The search screen: finds a customer or a product and hands its code back
// to the till. One screen with two faces, by the till's ModoBusqueda: "Cl"
// customers (FrCli), "Pr" products (FrProd). The result list ListBusClie
// has a hidden twin, Auxiliar, with the codes in the same order.
namespace tpv {

// The keys of the on-screen keyboard of the touch tills, each with its
// character code in its Tag: the digits, the letters with "Ñ" (209), the
// comma, the space (32), the backspace (8) and Enter (13). A key is named
// bt_letraNN after its code.
inline constexpr std::array<int, 41> kCodigosTeclado = {
    49, 50, 51, 52, 53, 54, 55, 56, 57, 48, 8,                    // 1 ... 0 BORRAR
    81, 87, 69, 82, 84, 89, 85, 73, 79, 80,                       // Q ... P
    65, 83, 68, 70, 71, 72, 74, 75, 76, 209,                      // A ... Ñ
    90, 88, 67, 86, 66, 78, 77, 44, 32, 13};                      // Z ... M , ESPACIO Intro
using TecladoLetras = std::array<CommandButton, kCodigosTeclado.size()>;

// Lays the keyboard out in four rows inside `marco` from (x, y) with keys of
// `ancho` x `alto` twips, and sends each key's code to `pulsada`.
void PonerTeclado(Ventana& v, TecladoLetras& teclas, Control* marco, double x, double y, double ancho, double alto,
                  const std::function<void(int codigo)>& pulsada);

// One key of the on-screen keyboard on `caja`: 8 takes its last character;
// any other code, when `soloDigitos` only a digit, is appended, the text
// being emptied first when it is all selected.
void TeclaEnTexto(TextBox& caja, int codigo, bool soloDigitos);

class frmBuscar : public Ventana {
public:
    Frame FrCli, FrProd, frTeclado;
    // Customers.
    TextBox txtnombre, txtapellidos, txtTelefono, txtMovil, txtcodigo, txtEmail, txtDNI;
    DTPicker fechadesde, fechahasta;
    // Products.
    TextBox txtNombreProd, txtCodigoProd, txtPrecioProd, txtCodBarras;
    ComboBox cmbComboProductos, cmb_AuxComboProductos, cbProveedor, cbAuxProveedor;
    Label lblNombre, lblApellidos, lblTelefono, lblMovil, lblCodigo, lblEmail, lblDNI, lblDesde, lblHasta,
        lblNombreProd, lblCodigoProd, lblPrecioProd, lblCodBarras, lblSeccion, lblProveedor;
    ListBox ListBusClie, Auxiliar;
    CommandButton cmdbuscar, cmdLimpiar, cmdSalir;
    TecladoLetras bt_letra;

    // "Cl" or "Pr": the face, taken from the till when the screen loads.
    std::string ModoBusqueda;

    void pantallaInicial();
    void BotonFuncion(int tecla);
    void BuscarClientesxNombre(const std::string& texto);
    void BuscarProductosxNombre(const std::string& texto);
    void cmdbuscar_Click();
    void cmdLimpiar_Click();
    void CambiarFoco();
    void PulsarLetra(int codigo);
    // The selected row's code goes back to the till, and the screen closes.
    void ListBusClie_DblClick();

protected:
    void Disenar() override;
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload(int& cancelar) override;

private:
    void DisenarClientes();
    void DisenarProductos();
    void BuscarClientes();
    void BuscarProductos();
    // Fills both lists from the rows of `sql` (name column, code column).
    bool LlenarListas(const std::string& sql, bool conApellidos, const std::string& codigo);
    TextBox* CajaActiva();

    TextBox* cajaActiva_ = nullptr;
    bool elegido_ = false;
};

}  // namespace tpv
