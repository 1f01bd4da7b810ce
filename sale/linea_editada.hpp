#pragma once
#include <cstdint>
#include <string>

#include "core/servicios/formulario.hpp"

// A line of the sale changed or taken out from the till's line editor: what
// reaches detalle_factura_temp once the grid row holds the edited figures,
// and the grid row that leaves.
namespace tpv {

// Writes grid row `fila`, as the editor left it, to its line of the sale.
// The tax goes on an amount worked out apart from the row's total: with
// prices that carry tax, units times the unit price less units times the
// unit discount; with prices without tax, units times the catalogue price
// taken out of a tax it never carried, the discount left out. Both ways the
// tax is rounded to cents whatever the shop's decimals.
void GrabarLineaEditada(const Grid& grid, long fila, std::int32_t numero, const std::string& tipo);

// Takes row `fila` off the grid after its line left the table, and closes
// the gap in the places of the lines behind it. The only line of a sale is
// blanked and painted white instead: the grid keeps its two rows.
void EliminoItemGrid(Grid& grid, long fila, std::int32_t numero);

}  // namespace tpv
