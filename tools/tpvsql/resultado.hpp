#pragma once
#include <ostream>
#include <string>

#include "core/datos/connection.hpp"

// How tpvsql prints what a statement gives: rows tab-separated under a line
// of the column names, values in an invariant form (NULL, numbers with a dot,
// dates yyyy-mm-dd, times hh:mm:ss); other statements print how many rows
// they changed. The scripted runner prints its `sql` lines the same way.
namespace tpv::herramientas {

// Whether the statement gives rows (it starts with select).
bool DevuelveFilas(const std::string& sql);

// Runs the statement and writes its result; a failure is thrown as the data
// layer throws it, before anything of it is written.
void EscribirResultado(Connection& cn, const std::string& sql, std::ostream& salida);

}  // namespace tpv::herramientas
