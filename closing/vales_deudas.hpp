#pragma once
#include <cstdint>

#include "core/runtime/value.hpp"

// What hangs on a closed sale: the debt of a customer who paid less than the
// total, and the discount vouchers, spent on the sale or earned by it.
namespace tpv {

// The unpaid rest of the closed sale `numeroFactura` as an open payment on
// account: a new row, or the sale's existing row brought up to date (a
// modified sale keeps its debt number). Nothing when the closed header
// isn't there.
void GrabarDeuda(std::int32_t numeroFactura, double deuda);

// The voucher `numeroVale` was spent on the sale `numeroFactura`.
void MarcarValeAplicado(std::int32_t numeroVale, std::int32_t numeroFactura);
// A note of the spent voucher on the highest empty line of the ticket's
// texts, and its removal after the copies. The texts are shared by every
// till, so two closings at once can print each other's note.
void AnotarValeEnTicket(std::int32_t numeroVale);
void QuitarValeDeTicket();

// The voucher a sale earns by its total, by the shop's scale: printed
// whether or not the ticket was, then stored.
void EmitirValeVenta(std::int32_t numeroFactura);
// A refund handed out as a voucher worth `importe`, kept under the refunded
// invoice's number. A printer failure doesn't stop it being stored.
void EmitirValeAbono(std::int32_t numeroFactura, double importe);

// Stores a voucher under `numeroFactura`, replacing any voucher of that
// number, used or not.
void GrabarVale(std::int32_t numeroFactura, double importe, double descuento, DateTime desde, DateTime hasta,
                const Value& impMinimo);
// The highest step of the voucher scale that `total` reaches; false when it
// reaches none.
bool BuscarDescuentoVale(double total, double& descuento, std::int32_t& numdias, Value& impMinimo);
// The total of a closed sale; 0 when there is none.
double TotalFactura(std::int32_t numeroFactura);

}  // namespace tpv
