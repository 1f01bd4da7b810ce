#pragma once
#include <string>
#include <string_view>

// Code page 858 (the Western European page with the euro sign), the one the
// ticket printer and the pole display are set to. Characters it lacks become
// "?".
namespace tpv {

std::string APc858(std::string_view utf8);
std::string DesdePc858(std::string_view bytes);

}  // namespace tpv
