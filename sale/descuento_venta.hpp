#pragma once
#include <cstdint>

#include "core/servicios/formulario.hpp"

// A discount laid on every line of a sale at once, in the grid and in
// detalle_factura_temp, by one percentage. The till and the settlement
// screen both give it.
namespace tpv {

// Lays `porcentaje` on every row of `grid` that is a sale line. The row's
// discount cell takes the percentage itself (the line editor keeps money
// there: both stay so). With prices that carry tax the line's amount is
// reduced; without, the catalogue unit price is, and the amount and taxes
// follow from it. Each line's discount amount adds up over discounts given
// one after another.
void AplicarDescuentoGrid(Grid& grid, std::int32_t numero, double& porcentaje);

}  // namespace tpv
