#pragma once
#include <cstdint>
#include <string>

namespace tpv {

// The lines and the header of a refund, copied from the open sale
// `numeroVenta` into `detalle_abono` and `cabecera_abono` under the refund
// number `numeroAbono`, against the invoice `numeroFactura`.
void GrabarDetalleAbono(std::int32_t numeroAbono, std::int32_t numeroVenta, std::int32_t numeroFactura);
void GrabarCabeceraAbono(std::int32_t numeroAbono, std::int32_t numeroVenta, const std::string& formaPago,
                         const std::string& tarjeta, std::int32_t numeroFactura);

}  // namespace tpv
