#pragma once
#include <cstdint>
#include <string>

#include "core/datos/connection.hpp"
#include "printing/ticket_configurable.hpp"

namespace tpv {

// Prints a closed document as a ticket when the configurable ticket is off,
// and on every reprint. It lays the ticket out with the configurable ticket's
// engine, in the shop's wording of `confticket` when that table holds its
// row, else in a wording of its own built from the shop's details.
class TicketService {
public:
    // `devolucion` and `entrega` are the change and the money handed over as
    // the settlement shows them ("" for none).
    void ImprimirTicketVenta(Connection& conexion, const std::string& impresoraTickets, std::int32_t numero,
                             const std::string& devolucion, const std::string& entrega);
    void ImprimirTicketAbono(Connection& conexion, const std::string& impresoraTickets, std::int32_t numero,
                             const std::string& devolucion, const std::string& entrega);
};

// The wording of a ticket for a shop without a `confticket` row.
ConfTicket RotulosDelServicio(Connection& conexion);

}  // namespace tpv
