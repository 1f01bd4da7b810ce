// Rows of a recordset as text, values in an invariant form, so a table of
// expected rows reads the same on every engine.
#pragma once

#include <cstdio>
#include <string>

#include "core/datos/recordset.hpp"
#include "core/runtime/fecha.hpp"

namespace tpv::prueba {

inline std::string TextoInvariante(const Value& v) {
    switch (v.kind()) {
        case Value::Kind::Null:
            return "NULL";
        case Value::Kind::Integer:
            return std::to_string(v.integer());
        case Value::Kind::Double: {
            char buf[32];
            std::snprintf(buf, sizeof buf, "%g", v.real());
            return buf;
        }
        case Value::Kind::Text:
            return v.text();
        case Value::Kind::Date:
            return fecha::ATextoIso(v.date());
    }
    return "";
}

// The current row as "v1|v2|...".
inline std::string Fila(Recordset& rs) {
    std::string fila;
    for (int i = 0; i < rs.FieldCount(); ++i) fila += (i ? "|" : "") + TextoInvariante(rs.Fields(i).Value());
    return fila;
}

}  // namespace tpv::prueba
