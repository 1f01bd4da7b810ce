#include "tools/tpvsql/resultado.hpp"

#include <cctype>
#include <charconv>
#include <sstream>

#include "core/datos/recordset.hpp"
#include "core/runtime/fecha.hpp"

namespace tpv::herramientas {

namespace {

std::string Invariante(const Value& v) {
    switch (v.kind()) {
        case Value::Kind::Null: return "NULL";
        case Value::Kind::Integer: return std::to_string(v.integer());
        case Value::Kind::Double: {
            char buf[64];
            auto r = std::to_chars(buf, buf + sizeof buf, v.real());
            return std::string(buf, r.ptr);
        }
        case Value::Kind::Text: return v.text();
        case Value::Kind::Date: return fecha::ATextoIso(v.date());
    }
    return "";
}

}  // namespace

bool DevuelveFilas(const std::string& sql) {
    std::size_t i = sql.find_first_not_of(" \t\r\n(");
    if (i == std::string::npos) return false;
    std::string w = sql.substr(i, 6);
    for (char& c : w) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return w == "select";
}

void EscribirResultado(Connection& cn, const std::string& sql, std::ostream& salida) {
    if (!DevuelveFilas(sql)) {
        const long long cambiadas = cn.Execute(sql);
        salida << cambiadas << "\n";
        return;
    }
    Recordset rs;
    rs.Open(sql, cn, adOpenStatic, adLockReadOnly);
    std::ostringstream texto;
    for (int i = 0; i < rs.FieldCount(); ++i) texto << (i ? "\t" : "") << rs.FieldName(i);
    texto << "\n";
    for (; !rs.Eof(); rs.MoveNext()) {
        for (int i = 0; i < rs.FieldCount(); ++i) texto << (i ? "\t" : "") << Invariante(rs.Fields(i).Value());
        texto << "\n";
    }
    salida << texto.str();
}

}  // namespace tpv::herramientas
