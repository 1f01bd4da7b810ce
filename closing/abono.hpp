#pragma once
#include <cstdint>
#include <string>

#include "core/runtime/value.hpp"

// Refunds against a closed invoice: what the till asks of the invoice before
// taking one, and the refund document written when it is closed.
namespace tpv {

// The lines and the header of a refund, copied from the open sale
// `numeroVenta` into `detalle_abono` and `cabecera_abono` under the refund
// number `numeroAbono`, against the invoice `numeroFactura`. Units and the
// total change sign (a refund is typed in negative); every refunded product
// comes back into stock, in every sector. A row that can't be written is
// passed over and the next one is tried. `fecha1` is the date on the till
// screen, for the day the refund counts on.
void GrabarDetalleAbono(std::int32_t numeroAbono, std::int32_t numeroVenta, std::int32_t numeroFactura);
void GrabarCabeceraAbono(std::int32_t numeroAbono, std::int32_t numeroVenta, const std::string& formaPago,
                         const std::string& tarjeta, std::int32_t numeroFactura, DateTime fecha1);

// The customer of a closed invoice, as text; "" when there is no such invoice.
std::string ClienteAbono(const std::string& numeroFactura);

// What the returns screen asks of a number typed in.
bool existeNumFactura(std::int32_t numero);
bool existeNumFacturaHoy(std::int32_t numero);
// A closed sale with a total below 0 (a refund rung up as a sale).
bool EsAbono(std::int32_t numero);
// The sale has a debt not yet settled.
bool TieneDeuda(std::int32_t numero);
// "nombre apellidos" of the customer, "Cliente Generico" with no such customer.
std::string NombreCliente(const Value& cliente);

}  // namespace tpv
