#pragma once
#include <cstdint>
#include <string>

#include "core/runtime/value.hpp"

// Lines and sales given up. Nothing is simply deleted: each line and header
// is first copied to the annulment tables, so that the shop can see what was
// rung up and removed.
namespace tpv {

// A line taken out of the sale: copied, then deleted. `codigo` > -1 picks a
// code and its `tipo`; `orden` > -1 picks a place; -1 in both takes every
// line of the sale.
void AnularLinea(std::int32_t numero, std::int32_t codigo, const std::string& tipo, std::int16_t orden);

// The whole sale given up: lines and header copied, then both deleted. If
// a step fails half-way the sale stays whole in the open tables with its
// copies already made. `fecha1` is the date on the till screen.
void AnularVenta(std::int32_t numero, DateTime fecha1);

void GuardarLineasAnuladas(std::int32_t numero, std::int32_t codigo, const std::string& tipo, std::int16_t orden);
void BorrarLineasTemp(std::int32_t numero, std::int32_t codigo, const std::string& tipo, std::int16_t orden);
void BorrarCabeceraTemp(std::int32_t numero);

// The header's copy, with pago 1 whatever the sale, and a line of audit
// before it: code 35 with the closed sale's number and amount when the sale
// was modifying one, else code 32. A header that isn't there, or is there
// twice, is passed over.
void GuardarCabeceraAnulada(std::int32_t numero, DateTime fecha1);

// Moves the places of the sale's lines from `desde` on by one, up when
// `sumar`, else down: after a line leaves, those behind it close the gap.
void RenumerarOrden(std::int16_t desde, std::int32_t numero, bool sumar);

// The open sale's total less its tax; 0 when there's no such sale.
double BaseVenta(const std::string& numero);

}  // namespace tpv
