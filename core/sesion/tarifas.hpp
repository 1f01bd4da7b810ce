#pragma once
#include <cstdint>
#include <string>

// The tariffs of the till: the one this machine applies and the panel of
// those in force today.
namespace tpv {

// The tariff in force for this machine (its row "TarifaAplicada" under
// ClaveTerminal); -1 for none, and -1 too when its dates no longer cover today.
std::int32_t LeerTarifaAplicada();

// Fills Tarifas with "General" and the tariffs valid today, each with its
// colour, and ColorTarifaActual with the colour of TarifaActual. With no
// tariff valid today Tarifas stays empty.
void CargarTarifas();

// The description of a tariff.
std::string NombreTarifa(std::int32_t identificador);

}  // namespace tpv
