#pragma once
#include <cstdint>
#include <string>

#include "core/sesion/registro_cliente.hpp"

// The customer of the sale: finding a customer by the code on a card or in
// the in-memory list, putting one on an open sale, and handing one to the
// customer history tool.
namespace tpv {

// The place of the customer `codigo` in `lista`, walking it from the start;
// -1 when it isn't there (or the list is empty).
long BuscarClienteEnLista(std::int32_t codigo, const ListaClientes& lista);

// The `codigo` of the customer whose card code (`codigocliente`) is `texto`,
// -1 when there is none. The text goes into the statement as it is.
std::int32_t BuscarCodigoCliente(const std::string& texto);

// Puts the customer `codigo` on the open sale `numero`; with no sale open
// (`numero` empty) nothing is written: the sale takes the customer when it
// opens.
void AnadirClienteVentaAbierta(const std::string& codigo, const std::string& numero);

// Leaves the customer `codigoCliente` in `pasardatos` for the history tool:
// the terminal's rows go, one row takes their place with `indice` the
// program that writes.
void LlamadaHistorico(const std::string& indice, const std::string& terminal, const std::string& codigoCliente);

// The settings key that names the customer history tool, and the program
// started when none does.
inline constexpr const char* kClaveProgramaHistorico = "programa_historico";
inline constexpr const char* kProgramaHistoricoPorDefecto = "historico_clientes";

}  // namespace tpv
