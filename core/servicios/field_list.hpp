#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "core/runtime/value.hpp"

namespace tpv {

// One "name=value" pair of a FieldList.
struct CampoFieldList {
    std::string nombre;  // trimmed of blanks
    std::string valor;   // as written, blanks included
};

// The text "name=value|name=value|" that RecordWriter takes for a row's
// values. Every pair ends with "|" (a last pair without it is taken too);
// each pair splits at its first "="; there is no escaping, so a value with a
// "|" breaks the list. Values are plain text: numbers with the decimal
// comma, dates day first, flags -1 and 0, "" for an empty text or a NULL.
class FieldList {
public:
    // The pairs in order; empty segments ("||") are skipped. A segment
    // without "=" or without a name is a run-time error.
    static std::vector<CampoFieldList> Leer(std::string_view campos);

    // "nombre=" & valor & "|", with the value as joining it to a text gives
    // it: the decimal comma, dates day first, NULL as "".
    static std::string Par(std::string_view nombre, const Value& valor);
};

}  // namespace tpv
