#pragma once
// The pieces the benchmarks of tpvbench share.
#include <string>
#include <vector>

#include "core/datos/connection.hpp"

namespace tpvbench {

// The bar-code lookup as the till writes it for a scanned code.
std::string SentenciaCodigoBarras(const std::string& codigo);

// Codes to look up: 0 the products' own codes, 1 extra codes, 2 codes that
// no product has.
std::vector<std::string> Codigos(tpv::Connection& cn, int tipo);

// The statement that loads the customer list at start-up.
extern const char* const kSentenciaClientes;

}  // namespace tpvbench
