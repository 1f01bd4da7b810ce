#pragma once
#include <cstdint>
#include <string>

namespace tpv {

// Stages the closed sale `numero` for the invoice report: empties `informes`
// on the reporting data source and writes one row per line of the sale with
// the shop, the customer and the head repeated on each. A sale without lines
// leaves the table empty. Reads the shop's database through the session's
// connection.
void PrepararFactura(std::int32_t numero);

}  // namespace tpv
