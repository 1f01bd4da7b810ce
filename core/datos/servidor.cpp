#include "core/datos/servidor.hpp"

#include "core/datos/postgres_dialecto.hpp"

namespace tpv::datos::servidor {

namespace {

// Where the database name starts (after "scheme://authority/") and ends
// (before "?"), or npos when the URI has no path.
bool Tramo(const std::string& uri, std::size_t& desde, std::size_t& hasta) {
    std::size_t esquema = uri.find("://");
    if (esquema == std::string::npos) return false;
    std::size_t barra = uri.find('/', esquema + 3);
    std::size_t pregunta = uri.find('?', esquema + 3);
    if (barra == std::string::npos || (pregunta != std::string::npos && pregunta < barra)) {
        desde = hasta = pregunta == std::string::npos ? uri.size() : pregunta;
        return false;
    }
    desde = barra + 1;
    hasta = pregunta == std::string::npos ? uri.size() : pregunta;
    return true;
}

int Hex(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

bool EsUri(const std::string& uri) { return uri.rfind("postgresql://", 0) == 0 || uri.rfind("postgres://", 0) == 0; }

std::string Base(const std::string& uri) {
    std::size_t desde, hasta;
    if (!Tramo(uri, desde, hasta)) return "";
    std::string out;
    for (std::size_t i = desde; i < hasta; ++i) {
        if (uri[i] == '%' && i + 2 < hasta && Hex(uri[i + 1]) >= 0 && Hex(uri[i + 2]) >= 0) {
            out += static_cast<char>(Hex(uri[i + 1]) * 16 + Hex(uri[i + 2]));
            i += 2;
        } else {
            out += uri[i];
        }
    }
    return out;
}

std::string ConBase(const std::string& uri, const std::string& base) {
    std::size_t desde, hasta;
    bool conRuta = Tramo(uri, desde, hasta);
    std::string nombre;
    for (unsigned char c : base) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-' ||
            c == '.') {
            nombre += static_cast<char>(c);
        } else {
            static const char kHex[] = "0123456789ABCDEF";
            nombre += '%';
            nombre += kHex[c >> 4];
            nombre += kHex[c & 15];
        }
    }
    return uri.substr(0, desde) + (conRuta ? "" : "/") + nombre + uri.substr(hasta);
}

std::string Identificador(const std::string& name) {
    std::string out = "\"";
    for (char c : name) {
        if (c == '"') out += '"';
        out += c;
    }
    return out + "\"";
}

std::string Ddl(const SchemaDef& schema) { return pg::Ddl(schema); }

}  // namespace tpv::datos::servidor
