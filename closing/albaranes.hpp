#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "core/servicios/formulario.hpp"

// Delivery notes: an open sale that left the shop with the customer, unpaid,
// under a note number; later any of the customer's notes are joined into one
// new open sale, which is settled and closed as one invoice. Stock moves
// only then.
namespace tpv {

// Gives the open sale `numeroVenta` the next note number, which takes it off
// the list of open sales, and prints `copias` copies of the note. A printer
// failure is told after each copy from the failed one on; the note stays.
void GrabarAlbaran(std::int32_t numeroVenta, int copias);

// The lines of the note `origen` change owner to the sale `destino`, each
// with the place it had: lines of several notes can share a place.
void PasoDetallesANuevaVenta(std::int32_t origen, std::int32_t destino);

// Adds the total, surcharge, discount and tax of the header `origen` to
// those of `destino` (a missing value counts 0; the second tax is left out).
// A header already gone adds nothing.
void AumentoTotalCabecera(std::int32_t origen, std::int32_t destino);

// A new open sale for `cliente` with the lines and totals of each note of
// `notas` (their `numero`), whose headers go. The new number is shown on
// `lblNumVenta` and returned. There is no transaction: a failure half-way
// leaves a sale with part of the notes.
std::int32_t JuntarAlbaranes(Label& lblNumVenta, std::int32_t cliente, const std::vector<std::int32_t>& notas);

// A note waiting to be invoiced, as the list of the customer's notes shows it.
struct AlbaranPendiente {
    std::string albaran, cliente, fecha, importe, empleado, numero;
};

// The customer's notes, newest sale first.
std::vector<AlbaranPendiente> AlbaranesPendientes(std::int32_t cliente);

// The customer's full name; "Cliente Generico" when there is no such customer.
std::string NombreCliente(const std::string& cliente);

}  // namespace tpv
