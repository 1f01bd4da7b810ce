#include "closing/abono.hpp"

namespace tpv {

// Placeholders until the refund routines land: write nothing.
void GrabarDetalleAbono(std::int32_t, std::int32_t, std::int32_t) {}
void GrabarCabeceraAbono(std::int32_t, std::int32_t, const std::string&, const std::string&, std::int32_t) {}

}  // namespace tpv
