#pragma once
#include <string>
#include <string_view>

#include "core/runtime/value.hpp"

namespace tpv {

// The runtime's Format under the Spanish regional settings.
//
// Dates and times: d dd ddd dddd, m mm mmm mmmm (minutes after h or before
// s), yy yyyy, h hh, n nn, s ss, w ww, q, y, ttttt, c, AM/PM and A/P; "/" and
// ":" print as themselves. Names of months and days are Spanish.
//
// Numbers: 0 # . , % E+ E-, sections "positive;negative;zero". In the
// pattern "." is the decimal mark and "," the grouping, as the runtime wrote
// patterns; the result carries the regional comma and dot: Format(1234.5,
// "#,##0.00") is "1.234,50". Halves round away from zero on the number's
// decimal text.
//
// Named patterns: "General Number", "Currency", "Fixed", "Standard",
// "Percent", "Scientific", "General Date", "Long Date", "Medium Date",
// "Short Date", "Long Time", "Medium Time", "Short Time".
//
// NULL gives "". A text that is neither a number nor a date comes back as
// it is; one that reads as a number or a date is formatted as such.
std::string Format(const Value& v, std::string_view patron = {});

}  // namespace tpv
