#pragma once
#include <cstdint>
#include <string>

#include "core/runtime/value.hpp"

// The copy of an open sale into the closed tables: its lines with their
// stock, and its header.
namespace tpv {

// Copies the lines of the open sale `numeroVenta` to Detalle_Factura under
// `numeroFactura`, each after its stock has moved, holding the semaphore
// "SalidaProd". A line or movement that can't be written is lost in silence.
void GrabarLineasFactura(std::int32_t numeroFactura, std::int32_t numeroVenta);

// Copies the header of the open sale to Cabecera_Factura with the payment
// given, the customer's last visit first. `fecha1` is the date on the till
// screen: when it is not today the sale counts on that day and the change is
// audited. Nothing is written when the open header isn't there exactly once.
void GrabarCabeceraFactura(std::int32_t numeroFactura, std::int32_t numeroVenta, const std::string& formaPago,
                           const std::string& tarjeta, DateTime fecha1);

// The day the closed sale `numeroFactura` counted on, for a sale being
// modified; today when that isn't known.
DateTime FechaVentaModificada(std::int32_t numeroFactura);

// The customer's last visit; customer 0 changes no row.
void ActualizarUltimaVisita(const Value& cliente, DateTime fecha);

}  // namespace tpv
