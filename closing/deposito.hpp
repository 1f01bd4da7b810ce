#pragma once
#include <cstdint>
#include <string>

#include "core/servicios/formulario.hpp"
#include "sale/grid_venta.hpp"

// The customer's balance: money left at the shop and spent later. Money in
// is sold as the reserved service 2 at the amount given; money spent is the
// payment method 4. The balance lives in clientes.dindep and in the session's
// customer list, which every change keeps in step at once. A till whose list
// is out of date writes over another till's change.
namespace tpv {

// The service that carries money into the balance.
inline constexpr std::int32_t kServicioDeposito = 2;

// A new open sale for `cliente` holding one line of the deposit service at
// `importe`, on the till's grid and boxes; the number goes to
// `lblNumVenta`. With no employee chosen nothing is opened.
void IngresoDeposito(Label& lblNumVenta, std::int32_t cliente, double importe, ControlesVenta& controles);

// The balance of the customer at `indiceCliente` of the list goes up by
// `pagado`, from what the list holds; the new balance is written and kept.
// A customer not in the list is left alone. Returns the balance before.
double AumentarDinDep(std::int32_t indiceCliente, const std::string& cliente, double pagado);

// The customer's balance becomes `valor`, in the table and, when
// `indiceCliente` is a place of the list, in the list.
void GrabarDinDep(std::int32_t indiceCliente, std::int32_t cliente, double valor);

}  // namespace tpv
