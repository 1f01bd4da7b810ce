#pragma once
#include <cstdint>
#include <string>

#include "core/servicios/formulario.hpp"
#include "sale/grid_venta.hpp"

// Opening a sale and adding items to it: price, tariff, tax, second tax and
// promotion of each item, its line in the grid and in detalle_factura_temp,
// and the header's totals. Each figure goes through the grid's text cells.
namespace tpv {

// Takes the next sale number, inserts the sale's header and shows the
// number on `etiquetaNumero` (the screen's lblNumVenta). Returns the number.
std::int32_t AbrirVenta(Label& etiquetaNumero, std::int32_t cliente, const std::string& nombreEmpleado,
                        const std::string& codigoEmpleado);

// AnadirLineaVenta, then the sale's total into CajaText_Pago.
void AnadirItem(std::int32_t numero, std::int32_t codigo, double cantidad, const std::string& etiqueta,
                const std::string& tipo, const std::string& codigoEmpleado, const std::string& nombreEmpleado,
                std::int32_t invitado, ControlesVenta& controles);

// Adds `cantidad` of the product ("P") or service ("S") `codigo` to the
// sale: to the line of the same code when lines join (LineaXProducto off),
// else to a new one. A code that isn't there ends quietly.
void AnadirLineaVenta(std::int32_t numero, std::int32_t codigo, double cantidad, const std::string& etiqueta,
                      const std::string& tipo, const std::string& codigoEmpleado, const std::string& nombreEmpleado,
                      std::int32_t invitado, ControlesVenta& controles);

// The employee's name as the lines show it: "Juan Perez Lopez" is
// "Juan  P. L.", "Juan Perez" is "Juan  P", and a name of one word is " ".
std::string NombreCorto(const std::string& nombreEmpleado);

// The row where an item goes: the first empty row, or, with lines joining,
// the row of the same code and kind if it comes first; a new last row when
// there is neither.
long BuscarFilaVenta(Grid& grid, std::int32_t codigo, const std::string& tipo);

// A line of detalle_factura_temp as the grid's routines write it.
struct LineaTemp {
    std::int32_t numero = 0;
    std::string tipo;
    std::int16_t codigo = 0;
    std::string nombre;
    double unidades = 0;
    double precio = 0;
    double descuento = 0;
    double precioUnit = 0;
    double tipoImpuesto = 0;
    double impuesto = 0;
    double tipoImpuesto2 = 0;
    double impuesto2 = 0;
    std::string codEmpleados;      // "/" between several
    std::string nombresEmpleados;  // "/" between several
    std::int32_t codFamilia = 0;
};

// Writes the line of grid row `fila` (its `orden`): changes the row found
// there, or adds one; `forzarNueva` adds one in any case when lines join.
void GrabarLineaTemp(const LineaTemp& linea, bool forzarNueva, std::int16_t fila);

// As GrabarLineaTemp, finding the line by code and kind alone (the first,
// when there are several) and leaving its `orden` as it is.
void GrabarLineaTempSinOrden(const LineaTemp& linea);

// The header's total, tax and second tax as the sums over its lines.
void ActualizarTotalesCabecera(std::int32_t numero);

// The header's total, tax, discount and surcharge as the sums over its
// lines; the second tax stays as it is.
void RecalcularCabecera(std::int32_t numero);

// The sum of the lines' amounts into `cajaTotal`, with the shop's decimals.
void SumarTotalGrid(TextBox& cajaTotal, const Grid& grid);

}  // namespace tpv
