#pragma once
#include <cstdint>
#include <string>

#include "screens/anfitrion.hpp"

// A ticket of a closed sale printed again: the twenty latest sales in a
// grid, or any number typed.
namespace tpv {

// Columns of a grid from a heading list ("a;b;c") and a list of
// "width/alignment" items, the alignment word "Centrado", "Izquierda" or
// "Derecha" in any case.
void InicializarGrid(Grid& grid, const std::string& encabezados, const std::string& columnas);

// The customer's name and surname; "Cliente Generico" when there is no such
// customer, as for a sale without one.
std::string ObtenerNomClientexCodigo(std::int32_t codigo);

class frmReImprimir : public Ventana {
public:
    Frame Frame1;
    Label Label1, Label2, Label3, Label4;
    TextBox txtnumFactura;
    Grid grid_Reimprimir;
    CommandButton Command1, cmd_Salir;

    // The base width the grid's columns are reckoned from.
    double ancho = 1;

    void CargarUltimasVentas();
    void Command1_Click();

protected:
    void Disenar() override;
    void Form_Load() override;
};

}  // namespace tpv
