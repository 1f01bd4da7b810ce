#pragma once
#include <cstdint>
#include <string>

#include "core/runtime/value.hpp"

// A closed sale taken back into an open sale, to be changed and closed again
// under its own number, or annulled. Its stock is undone, its closed rows are
// deleted, and a row of ventasdevolucion ties the open sale to the invoice.
namespace tpv {

// The whole move; `numeroVentaOut` gets the new open sale's number as text.
void ReabrirFactura(std::int32_t numeroFactura, std::string& numeroVentaOut);

// The business date the closed sale counted on; today when it isn't there.
DateTime FechaVentaFactura(std::int32_t numeroFactura);

// The closed lines and header copied into the open tables under
// `numeroVenta`, undoing each product line's stock on the way. A row that
// can't be copied is passed over.
void DevolverLineasATemp(std::int32_t numeroFactura, std::int32_t numeroVenta);
void DevolverCabeceraATemp(std::int32_t numeroFactura, std::int32_t numeroVenta);

void RegistrarVentaDevolucion(std::int32_t numeroFactura, std::int32_t numeroVenta, DateTime fecha);

// `codigo` -1 deletes every line of the invoice.
void BorrarDetalleFactura(std::int32_t numeroFactura, std::int32_t codigo);
void BorrarCabeceraFactura(std::int32_t numeroFactura);

// The open sale's total; 0 when it isn't there.
double TotalVentaTemp(std::int32_t numeroVenta);

}  // namespace tpv
