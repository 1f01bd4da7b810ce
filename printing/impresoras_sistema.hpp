#pragma once
#include "printing/page_device.hpp"

namespace tpv {

// Fills the list with the printers this machine reaches: those the suite's
// settings declare, then the queues of the print system.
void CargarImpresorasDelSistema(PrinterList& lista);

}  // namespace tpv
