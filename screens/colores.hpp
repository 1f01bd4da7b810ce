#pragma once
#include <string>

#include "core/runtime/conversiones.hpp"

namespace tpv {

// A colour kept as decimal text, as the panels and schemes hold them, as a
// number; a text that is no number gives black.
inline long NumeroDeColor(const std::string& color) {
    const Value v(color);
    return IsNumeric(v) ? CLng(v) : 0;
}

}  // namespace tpv
