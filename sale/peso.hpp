#pragma once
#include <cstdint>
#include <string>

#include "sale/grid_venta.hpp"

// Items sold by weight: the amount of each weighing is what the customer
// pays, and the unit price follows from it. Each weighing is a line.
namespace tpv {

// AnadirLineaPeso, then the sale's total into CajaText_Pago. `importe` is
// the caller's own, negated in refund mode.
void AnadirItemPeso(std::int32_t numero, std::int32_t codigo, double peso, double& importe, const std::string& etiqueta,
                    const std::string& tipo, const std::string& codigoEmpleado, const std::string& nombreEmpleado,
                    std::int32_t invitado, ControlesVenta& controles);

// A new line for one weighing of the product `codigo`. In refund mode the
// caller's `importe` is negated in place.
void AnadirLineaPeso(std::int32_t numero, std::int32_t codigo, double peso, double& importe,
                     const std::string& etiqueta, const std::string& tipo, const std::string& codigoEmpleado,
                     const std::string& nombreEmpleado, std::int32_t invitado, ControlesVenta& controles);

}  // namespace tpv
