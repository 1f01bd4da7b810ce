// tpvsql: runs statements of the till's SQL dialect against a shop database.
//   tpvsql DATABASE [-e STATEMENT]...   (without -e: one statement a line from stdin)
//   tpvsql --create DATABASE [SCHEMA_FILE]
#include <charconv>
#include <iostream>
#include <string>
#include <vector>

#include "core/datos/esquema.hpp"
#include "core/datos/recordset.hpp"
#include "core/runtime/fecha.hpp"

namespace {

std::string Invariante(const tpv::Value& v) {
    switch (v.kind()) {
        case tpv::Value::Kind::Null: return "NULL";
        case tpv::Value::Kind::Integer: return std::to_string(v.integer());
        case tpv::Value::Kind::Double: {
            char buf[64];
            auto r = std::to_chars(buf, buf + sizeof buf, v.real());
            return std::string(buf, r.ptr);
        }
        case tpv::Value::Kind::Text: return v.text();
        case tpv::Value::Kind::Date: return tpv::fecha::ATextoIso(v.date());
    }
    return "";
}

bool DevuelveFilas(const std::string& sql) {
    std::size_t i = sql.find_first_not_of(" \t\r\n(");
    if (i == std::string::npos) return false;
    std::string w = sql.substr(i, 6);
    for (char& c : w) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return w == "select";
}

bool Ejecutar(tpv::Connection& cn, const std::string& sql) {
    try {
        if (DevuelveFilas(sql)) {
            tpv::Recordset rs;
            rs.Open(sql, cn, tpv::adOpenStatic, tpv::adLockReadOnly);
            for (int i = 0; i < rs.FieldCount(); ++i) std::cout << (i ? "\t" : "") << rs.FieldName(i);
            std::cout << "\n";
            while (!rs.Eof()) {
                for (int i = 0; i < rs.FieldCount(); ++i) std::cout << (i ? "\t" : "") << Invariante(rs.Fields(i).Value());
                std::cout << "\n";
                rs.MoveNext();
            }
        } else {
            std::cout << cn.Execute(sql) << "\n";
        }
        return true;
    } catch (const std::exception& e) {
        std::cerr << "error: " << e.what() << "\n";
        return false;
    }
}

int Uso() {
    std::cerr << "uso: tpvsql BASE [-e INSTRUCCION]...\n"
                 "     tpvsql --create BASE [ARCHIVO_DE_ESQUEMA]\n";
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty()) return Uso();
    try {
        if (args[0] == "--create") {
            if (args.size() < 2 || args.size() > 3) return Uso();
            std::string schema = args.size() == 3 ? args[2] : tpv::datos::CarpetaEsquemas() + "/tienda.schema";
            tpv::datos::CrearBaseDeDatos(args[1], schema);
            return 0;
        }
        tpv::Connection cn;
        cn.Open(args[0]);
        bool ok = true;
        if (args.size() == 1) {
            std::string line;
            while (std::getline(std::cin, line)) {
                if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
                ok = Ejecutar(cn, line) && ok;
            }
        } else {
            for (std::size_t i = 1; i < args.size(); ++i) {
                if (args[i] != "-e" || i + 1 >= args.size()) return Uso();
                ok = Ejecutar(cn, args[++i]) && ok;
            }
        }
        return ok ? 0 : 1;
    } catch (const std::exception& e) {
        std::cerr << "error: " << e.what() << "\n";
        return 1;
    }
}
