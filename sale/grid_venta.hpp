#pragma once
#include <cstdint>
#include <string>

#include "core/servicios/formulario.hpp"

// The sale grid FGCaja: a heading row and one row per line of the sale, the
// row number being the line's `orden`. All line arithmetic passes through
// its text cells: numbers go in as CStr and come back as CDbl reads them.
namespace tpv {

// The seventeen columns.
enum ColumnaVenta : long {
    kColNombre = 0,       // name shown; "  REGALO " & name on a gift line
    kColPvp = 1,          // unit price charged
    kColEmpleado = 2,     // employee display name(s), "/" between them
    kColTipo = 3,         // tipo_Venta: "P" or "S"
    kColInvitado = 4,     // free-line mark
    kColPorcentaje = 5,   // discount percentage
    kColCodEmpleado = 6,  // employee code(s), "/" between them
    kColCodigo = 7,       // product or service code
    kColTipoIva = 8,      // tax rate
    kColUnidades = 9,     // units of the line
    kColImporte = 10,     // line amount
    kColRecargo = 11,     // surcharge
    kColPrecio = 12,      // catalogue unit price
    kColImpuesto2 = 13,   // second tax rate (a resumed sale: the line's tax amounts)
    kColCodFamilia = 14,  // CodFamilia
    kColEtiqueta = 15,    // the caller's text, never stored
    kColDescuento = 16,   // line discount amount
};
inline constexpr long kColumnasVenta = 17;

// A grid shaped as FGCaja: 17 columns, the heading row and one empty row.
Grid NuevaGridVenta();

// A cell read as a number the way the line arithmetic reads it: an empty
// cell counts as 0, anything else goes through CDbl (a text that isn't a
// number is the run-time error 13).
double NumeroCelda(const Grid& grid, long fila, long columna);

// A grid row as the 16-bit whole number the line routines take.
std::int16_t FilaCorta(long fila);

// The controls and values of the till screen that the item routines
// update or read: the screen hands its own over.
struct ControlesVenta {
    Grid& FGCaja;
    TextBox& CajaText_Pago;    // the sale's total
    TextBox& txtUltProd;       // last product sold
    TextBox& txtUltCant;       // its quantity
    TextBox& txtTArticulos;    // articles in the sale
    bool ModoAbono = false;    // refund mode: units and amounts go negative
    double ImporteDinDep = 0;  // amount of the deposit service line
};

}  // namespace tpv
