#pragma once
#include <cstdint>
#include <string>

#include "core/runtime/value.hpp"
#include "core/servicios/formulario.hpp"

// Pieces that the routines making lines (sold, weighed, gifts) share.
namespace tpv {

// The fields of a product or service that a line takes, as read.
struct ArticuloVenta {
    Value nombre, precio, iva, impuesto_2;
};

// "Select nombre,precio,iva,impuesto_2 from <tabla> where codigo = ..."; false
// when there is no such row.
bool LeerArticulo(const std::string& tabla, std::int32_t codigo, ArticuloVenta& articulo);

// A rate or amount that may be NULL, counted as 0.
double CeroSiNulo(const Value& v);

// The colour of an entry with the focus, of the till's colour scheme.
long ColorFocoActual();

// Paints one cell the way the grid control did: choosing Row and Col, then
// the colour.
void PintarCelda(Grid& grid, long fila, long columna, long color);

// The line on the customer's display, when the terminal has one.
void MostrarLineaEnVisor(const std::string& nombre, const std::string& importe);

// The articles of the sale on the screen's counter plus `cuantos`.
std::string SumarArticulos(const std::string& texto, double cuantos);

}  // namespace tpv
