#pragma once
#include <string>

#include "core/datos/connection.hpp"

// Pictures for the demo's touch panels: a coloured tile with the initials of
// each hand-made product and of each employee, written as PNG files into
// `carpeta` (the till's photo folder), their names set in the rows' `imagen`.
namespace tpv::demo {

// Returns how many pictures were written.
int EscribirFotos(Connection& tienda, const std::string& carpeta);

// The letters on a tile: the first letter of the first two words that start
// with a letter, in capitals ("Bolsa de organza" gives "BO").
std::string Iniciales(const std::string& nombre);

}  // namespace tpv::demo
