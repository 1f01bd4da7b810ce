#pragma once
#include <cstdint>
#include <string>

// The till's options: read once at start into the session, and the few that
// the till screen changes, written back.
namespace tpv {

// Reads opciones, opciones_terminal, configuracionregional, the multi-shop
// setting, the terminal's printers, the second identifier, the screen size,
// the region, the sector, the tariffs and the keys of relaciones_fijas, in
// that order. A NULL where the options allow none is a run-time error.
void CargarConfiguracion();

// "PedirCantidadProductos": asking a quantity before each item. Stores the
// flag in the session and returns it; only an exact "NO" turns it off.
bool LeerPedirCantidad();

// Write-backs: the row of the key is added when missing. Flags are stored as
// "SI" and "NO". The session variable is the caller's to set.
void GuardarPedirCantidad(bool pedir);
void GuardarPedirPrecioTotal(bool pedir);
void GuardarLineaXProducto(bool lineaPorUnidad);
void GuardarFiltroPantallaTactil(const std::string& filtro);

// Rewrites the validity of discount vouchers in days (-1: never expire).
void GuardarDiasCaducidadValeDescuento(std::int32_t dias);

}  // namespace tpv
