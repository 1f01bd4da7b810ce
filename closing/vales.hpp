#pragma once
#include <cstdint>
#include <string>

#include "core/servicios/formulario.hpp"

// Spending a discount voucher on the sale being paid: whether any could be
// spent, the one typed in, its value spread over the sale's lines as a
// percentage, and what is left of it once the sale closes.
namespace tpv {

// Whether any voucher of any customer is in force today and could be spent
// on a purchase of `total`.
bool HayValesAplicables(double total);

// The value of the voucher `numero` if it is in force today, not used up,
// and `importe` (a number written with a dot) reaches its minimum
// purchase. A number that isn't a whole number finds nothing, as a voucher
// that doesn't exist.
bool BuscarValeAplicable(const std::string& numero, const std::string& importe, double& descuento);

// Takes `porcentaje` off every line of the sale in `grid`, from row 1 to the
// first empty row: the amount goes down, the taxes are worked out again, the
// line is written to the open sale `numeroVenta` and shown on the pole
// display.
void AplicarPorcentajeALineas(double porcentaje, Grid& grid, std::int32_t numeroVenta);

// The voucher `numero`, worth `importe` when it was applied, now keeps
// `resto`: a new slip is printed for the rest, or it is used up at 0. When
// another till spent it meanwhile its value no longer matches, and nothing
// is changed.
void ActualizarValeUsado(double resto, double importe, std::int32_t numero);

}  // namespace tpv
