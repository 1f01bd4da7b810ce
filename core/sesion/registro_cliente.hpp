#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "core/runtime/value.hpp"

namespace tpv {

// One customer of the in-memory list read at start, so that the till shows a
// customer's name, discount and balance without going to the database.
struct RegistroCliente {
    std::string Nombre;
    std::string Apellidos;
    std::int32_t Codigo = 0;
    DateTime Nacimiento;  // 01/01/2000 when the card has none
    double Descuento = 0.0;
    bool ActivarDinDep = false;
    double DinDep = 0.0;
};

using ListaClientes = std::vector<RegistroCliente>;

}  // namespace tpv
