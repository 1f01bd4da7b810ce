#pragma once
#include <cstdint>
#include <string>

#include "core/datos/connection.hpp"

// The discount voucher and the gift ticket, printed on the ticket printer
// with the template ticket's set-up (albaran_ticket.hpp).
namespace tpv::ImprimirAlbaran {

// The voucher handed out with a sale: the shop's lines, the amount in a box
// of stars, its code and the conditions of use. `fechaHasta` "01/01/1900"
// means a voucher with no end.
void ImprimirValeDescuento(Connection& conexion, const std::string& impresora, const std::string& codigo,
                           const std::string& importe, const std::string& fechaHasta, const std::string& minimo);

// The gift ticket of the closed sale `numero`: the products named in
// `productos` (joined by "#"), without prices. The last two values are not read.
void ImprimirTicketRegalo(Connection& conexion, const std::string& impresora, std::int32_t numero,
                          const std::string& productos, const std::string& reservado1 = "",
                          const std::string& reservado2 = "");

}  // namespace tpv::ImprimirAlbaran
