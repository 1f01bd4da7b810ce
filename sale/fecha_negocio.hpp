#pragma once
#include "core/runtime/value.hpp"

namespace tpv {

// The day on which a sale counts. `fecha1` is the date on the till screen:
// when it is not today, it is that day. Otherwise today, or yesterday for a
// shop that closes after midnight (its opening hour above its closing hour,
// as the terminal's row of `entradas` gives them) while the hour now is
// before the closing hour.
DateTime FechaNegocio(DateTime fecha1);

}  // namespace tpv
