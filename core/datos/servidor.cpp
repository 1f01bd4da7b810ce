#include "core/datos/servidor.hpp"

#include "core/datos/postgres_dialecto.hpp"
#include "core/datos/tipos.hpp"

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

std::string SinClave(const std::string& uri) {
    std::size_t inicio = uri.find("://");
    if (inicio == std::string::npos) return uri;
    inicio += 3;
    std::string out = uri;
    // user:password@host
    std::size_t finAutoridad = out.find_first_of("/?", inicio);
    if (finAutoridad == std::string::npos) finAutoridad = out.size();
    std::size_t arroba = out.rfind('@', finAutoridad);
    if (arroba != std::string::npos && arroba >= inicio) {
        std::size_t dos = out.find(':', inicio);
        if (dos != std::string::npos && dos < arroba) out = out.substr(0, dos + 1) + "***" + out.substr(arroba);
    }
    // ?password=... and &password=..., whatever the case of the name
    std::size_t pregunta = out.find('?');
    for (std::size_t i = pregunta; i != std::string::npos && i < out.size(); i = out.find('&', i + 1)) {
        std::size_t nombre = i + 1;
        std::size_t igual = out.find('=', nombre);
        std::size_t fin = out.find('&', nombre);
        if (fin == std::string::npos) fin = out.size();
        if (igual == std::string::npos || igual > fin) continue;
        if (!IgualesSinCaso(out.substr(nombre, igual - nombre), "password")) continue;
        out = out.substr(0, igual + 1) + "***" + out.substr(fin);
    }
    return out;
}

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
