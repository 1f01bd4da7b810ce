#include "printing/impresoras_sistema.hpp"

namespace tpv {

void CargarImpresorasDelSistema(PrinterList&) {}

}  // namespace tpv
