#pragma once
#include <string>

#include "core/datos/recordset.hpp"
#include "core/runtime/value.hpp"

// Pieces of the field lists that copy a sale's rows from one of its tables
// to another (closing, refund, annulment, reopening).
namespace tpv {

// "nombre=-1|" for a set flag, "nombre=0|" otherwise, NULL included.
std::string ParBandera(const char* nombre, const Value& valor);

// The value as it stands, or 0 for NULL.
std::string ParCeroSiNulo(const char* nombre, const Value& valor);

// The pairs of a line from `codigo` to `codfamilia`, as a closed, refunded
// or annulled line takes them: `unidades` in place of the column's, the flags
// as -1 and 0, and a missing menu code as one blank.
std::string CamposLineaVenta(Recordset& rs, const Value& unidades);

}  // namespace tpv
