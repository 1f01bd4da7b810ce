#pragma once
#include <memory>
#include <string>

#include "printing/page_device.hpp"

// The printers of this machine. The suite's settings declare them by name:
//
//   impresoras = Tickets caja|Listados
//   impresora.Tickets caja = socket://192.168.1.50:9100
//   impresora.Listados = cups:Oficina
//   impresora.Listados.driver = PDF
//
// The driver is "ESC/POS" (a ticket printer) or "PDF" (a page printer); a
// declared printer is a ticket printer unless said otherwise. The queues of
// the print system follow, those not already declared: a raw queue as a
// ticket printer, any other as a page printer.
namespace tpv {

void CargarImpresorasDelSistema(PrinterList& lista);

// A printer from its name, driver and device URI.
std::unique_ptr<PageDevice> CrearImpresora(const std::string& nombre, const std::string& driver,
                                           const std::string& uri);

}  // namespace tpv
