#pragma once
#include <functional>
#include <string>
#include <vector>

#include "core/datos/connection.hpp"

// Several tills at once, as separate processes of the test program.
namespace tpv::prueba {

// Forks `n` children that all start `cuerpo` at the same moment, once every
// one of them exists. Each child's result is the text `cuerpo` returns, or
// "error: " and the message of what it threw. Returns them in child order.
std::vector<std::string> EnProcesos(int n, const std::function<std::string()>& cuerpo);

// In a child: leaves the connection inherited from the parent alone (closing
// it would close the parent's) and opens a connection of its own to `uri`.
void ConexionPropia(Connection& conexion, const std::string& uri);

}  // namespace tpv::prueba
