#pragma once
#include <string>
#include <string_view>

// The till's log file: one line per event a technician may need afterwards
// (errors with their statement, why a start ended, numbers spent in doubt).
// It goes to the file TPV_LOG names, else to $XDG_STATE_HOME/tpv/tpv.log
// (~/.local/state/tpv/tpv.log); when that can't be written, to standard
// error. Writing the log never fails the caller.
namespace tpv {

void Registrar(std::string_view linea);

// Where the log is written now.
std::string RutaRegistro();

}  // namespace tpv
