#include "tools/tpvguion/guion.hpp"

#include <cctype>
#include <charconv>

#include "core/datos/tipos.hpp"
#include "core/runtime/fecha.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/formulario.hpp"

namespace tpv::guion {

std::optional<Linea> Partir(const std::string& texto, std::string& error) {
    Linea linea;
    std::vector<std::string> partes;
    std::size_t i = 0;
    const std::size_t n = texto.size();
    auto blanco = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (i < n) {
        while (i < n && blanco(texto[i])) ++i;
        if (i >= n) break;
        std::string parte;
        if (texto[i] == '"') {
            ++i;
            bool cerrada = false;
            while (i < n) {
                if (texto[i] == '\\' && i + 1 < n && texto[i + 1] == '"') {
                    parte += '"';
                    i += 2;
                } else if (texto[i] == '"') {
                    ++i;
                    cerrada = true;
                    break;
                } else {
                    parte += texto[i++];
                }
            }
            if (!cerrada) {
                error = "falta la comilla que cierra el texto";
                return std::nullopt;
            }
        } else {
            while (i < n && !blanco(texto[i])) parte += texto[i++];
        }
        partes.push_back(std::move(parte));
    }
    if (partes.empty() || partes[0].rfind('#', 0) == 0) return linea;
    linea.accion = datos::Minusculas(partes[0]);
    linea.argumentos.assign(partes.begin() + 1, partes.end());
    return linea;
}

namespace {

bool Numero(std::string_view s, int& valor) {
    if (s.empty()) return false;
    for (char c : s)
        if (!std::isdigit(static_cast<unsigned char>(c))) return false;
    auto r = std::from_chars(s.data(), s.data() + s.size(), valor);
    return r.ec == std::errc();
}

bool Campos(const std::string& texto, char separador, std::vector<int>& campos) {
    campos.clear();
    for (const std::string& p : Split(texto, std::string(1, separador))) {
        int v = 0;
        if (!Numero(p, v)) return false;
        campos.push_back(v);
    }
    return true;
}

}  // namespace

std::optional<DateTime> LeerMomento(const std::string& texto) {
    const std::vector<std::string> partes = Split(Trim(texto), " ");
    std::vector<std::string> limpias;
    for (const std::string& p : partes)
        if (!p.empty()) limpias.push_back(p);
    if (limpias.empty() || limpias.size() > 2) return std::nullopt;
    std::vector<int> f, h;
    if (!Campos(limpias[0], '/', f) || f.size() != 3) return std::nullopt;
    const int dia = f[0], mes = f[1], anio = f[2];
    if (anio < 100 || !fecha::EsFechaValida(anio, mes, dia)) return std::nullopt;
    int hora = 0, minuto = 0, segundo = 0;
    if (limpias.size() == 2) {
        if (!Campos(limpias[1], ':', h) || h.size() < 2 || h.size() > 3) return std::nullopt;
        hora = h[0];
        minuto = h[1];
        segundo = h.size() == 3 ? h[2] : 0;
        if (hora > 23 || minuto > 59 || segundo > 59) return std::nullopt;
    }
    return DateTime{fecha::DesdeFecha(anio, mes, dia).serial + fecha::DesdeHora(hora, minuto, segundo).serial};
}

bool LeerTecla(const std::string& nombre, int& keyCode, int& keyAscii) {
    const std::string n = datos::Minusculas(nombre);
    struct Nombrada {
        const char* nombre;
        int codigo, caracter;
    };
    static const Nombrada kTeclas[] = {{"enter", vbKeyReturn, vbKeyReturn},
                                       {"escape", vbKeyEscape, vbKeyEscape},
                                       {"retroceso", vbKeyBack, vbKeyBack},
                                       {"tab", vbKeyTab, 0}};
    for (const Nombrada& t : kTeclas)
        if (n == t.nombre) {
            keyCode = t.codigo;
            keyAscii = t.caracter;
            return true;
        }
    int f = 0;
    if (n.size() >= 2 && n[0] == 'f' && Numero(std::string_view(n).substr(1), f) && f >= 1 && f <= 12) {
        keyCode = vbKeyF1 + f - 1;
        keyAscii = 0;
        return true;
    }
    if (Len(nombre) != 1) return false;
    TeclaDeCaracter(nombre, keyCode, keyAscii);
    return true;
}

void TeclaDeCaracter(const std::string& caracter, int& keyCode, int& keyAscii) {
    keyAscii = Asc(caracter);
    // Letters give the code of their key, the capital; the rest their own.
    keyCode = keyAscii < 128 ? std::toupper(keyAscii) : keyAscii;
}

std::optional<long long> LeerEntero(const std::string& texto) {
    long long v = 0;
    const char* fin = texto.data() + texto.size();
    auto r = std::from_chars(texto.data(), fin, v);
    if (texto.empty() || r.ec != std::errc() || r.ptr != fin) return std::nullopt;
    return v;
}

}  // namespace tpv::guion
