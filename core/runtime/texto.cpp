#include "core/runtime/texto.hpp"

#include <algorithm>

#include "core/runtime/error.hpp"
#include "core/runtime/unicode.hpp"

namespace tpv {

namespace {

// A text split into characters, keeping where each starts, so that the
// pieces cut from it keep their bytes as they were. Bytes that are not
// UTF-8 count as one character each, as unicode::Decode takes them.
struct Caracteres {
    std::vector<char32_t> cp;
    std::vector<std::size_t> inicio;  // one more than cp: the end of the text

    explicit Caracteres(std::string_view s) {
        std::size_t i = 0;
        while (i < s.size()) {
            inicio.push_back(i);
            const unsigned char c = static_cast<unsigned char>(s[i]);
            const int extra = c < 0x80 ? 0 : (c & 0xE0) == 0xC0 ? 1 : (c & 0xF0) == 0xE0 ? 2 : (c & 0xF8) == 0xF0 ? 3 : -1;
            char32_t valor = c;
            bool valido = extra > 0 && i + static_cast<std::size_t>(extra) < s.size();
            if (valido) {
                valor = c & (0x3F >> extra);
                for (int k = 1; valido && k <= extra; ++k) {
                    const unsigned char cc = static_cast<unsigned char>(s[i + static_cast<std::size_t>(k)]);
                    valido = (cc & 0xC0) == 0x80;
                    valor = (valor << 6) | (cc & 0x3F);
                }
            }
            cp.push_back(valido ? valor : c);
            i += valido ? static_cast<std::size_t>(extra) + 1 : 1;
        }
        inicio.push_back(s.size());
    }

    long Cuenta() const { return static_cast<long>(cp.size()); }
    // Characters [desde, hasta) as bytes of the original text.
    std::string_view Trozo(std::string_view s, long desde, long hasta) const {
        desde = std::clamp(desde, 0L, Cuenta());
        hasta = std::clamp(hasta, desde, Cuenta());
        return s.substr(inicio[static_cast<std::size_t>(desde)],
                        inicio[static_cast<std::size_t>(hasta)] - inicio[static_cast<std::size_t>(desde)]);
    }
};

bool Iguales(char32_t a, char32_t b, CompareMethod comparacion) {
    if (comparacion == CompareMethod::Text) return unicode::ToLower(a) == unicode::ToLower(b);
    return a == b;
}

// Whether `b` stands in `a` at character `pos`.
bool CoincideEn(const Caracteres& a, long pos, const Caracteres& b, CompareMethod comparacion) {
    if (pos < 0 || pos + b.Cuenta() > a.Cuenta()) return false;
    for (long k = 0; k < b.Cuenta(); ++k)
        if (!Iguales(a.cp[static_cast<std::size_t>(pos + k)], b.cp[static_cast<std::size_t>(k)], comparacion))
            return false;
    return true;
}

// The code page 1252 characters at 0x80-0x9F; the five holes map to the
// control characters of the same value, as Windows maps them.
constexpr char32_t kWindows1252[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

long Len(std::string_view s) { return Caracteres(s).Cuenta(); }

std::string Mid(std::string_view s, long inicio) {
    if (inicio < 1) throw ErrorLlamadaNoValida();
    Caracteres c(s);
    return std::string(c.Trozo(s, inicio - 1, c.Cuenta()));
}

std::string Mid(std::string_view s, long inicio, long longitud) {
    if (inicio < 1 || longitud < 0) throw ErrorLlamadaNoValida();
    Caracteres c(s);
    const long desde = inicio - 1;
    const long hasta = longitud > c.Cuenta() ? c.Cuenta() : desde + longitud;
    return std::string(c.Trozo(s, desde, hasta));
}

std::string Left(std::string_view s, long longitud) {
    if (longitud < 0) throw ErrorLlamadaNoValida();
    return std::string(Caracteres(s).Trozo(s, 0, longitud));
}

std::string Right(std::string_view s, long longitud) {
    if (longitud < 0) throw ErrorLlamadaNoValida();
    Caracteres c(s);
    return std::string(c.Trozo(s, c.Cuenta() - std::min(longitud, c.Cuenta()), c.Cuenta()));
}

long InStr(std::string_view s, std::string_view buscado, CompareMethod comparacion) {
    return InStr(1, s, buscado, comparacion);
}

long InStr(long inicio, std::string_view s, std::string_view buscado, CompareMethod comparacion) {
    if (inicio < 1) throw ErrorLlamadaNoValida();
    const Caracteres a(s), b(buscado);
    if (a.Cuenta() == 0 || inicio > a.Cuenta() + (b.Cuenta() == 0 ? 1 : 0)) return 0;
    if (b.Cuenta() == 0) return inicio;
    for (long pos = inicio - 1; pos + b.Cuenta() <= a.Cuenta(); ++pos)
        if (CoincideEn(a, pos, b, comparacion)) return pos + 1;
    return 0;
}

long InStrRev(std::string_view s, std::string_view buscado, long inicio, CompareMethod comparacion) {
    if (inicio == 0 || inicio < -1) throw ErrorLlamadaNoValida();
    const Caracteres a(s), b(buscado);
    if (inicio == -1) inicio = a.Cuenta();
    if (a.Cuenta() == 0 || inicio > a.Cuenta()) return 0;
    if (b.Cuenta() == 0) return inicio;
    for (long pos = inicio - b.Cuenta(); pos >= 0; --pos)
        if (CoincideEn(a, pos, b, comparacion)) return pos + 1;
    return 0;
}

std::string LTrim(std::string_view s) {
    const std::size_t i = s.find_first_not_of(' ');
    return i == std::string_view::npos ? std::string() : std::string(s.substr(i));
}

std::string RTrim(std::string_view s) {
    const std::size_t i = s.find_last_not_of(' ');
    return i == std::string_view::npos ? std::string() : std::string(s.substr(0, i + 1));
}

std::string Trim(std::string_view s) { return LTrim(RTrim(s)); }

std::string Recortar(std::string_view s, std::string_view blancos) {
    std::size_t a = s.find_first_not_of(blancos);
    if (a == std::string_view::npos) return "";
    std::size_t b = s.find_last_not_of(blancos);
    return std::string(s.substr(a, b - a + 1));
}

std::string Replace(std::string_view s, std::string_view buscado, std::string_view nuevo, long inicio, long veces,
                    CompareMethod comparacion) {
    if (inicio < 1 || veces < -1) throw ErrorLlamadaNoValida();
    const Caracteres a(s), b(buscado);
    if (inicio > a.Cuenta()) return {};
    std::string out;
    long desde = inicio - 1, pos = desde;
    while (pos + b.Cuenta() <= a.Cuenta() && b.Cuenta() > 0 && veces != 0) {
        if (!CoincideEn(a, pos, b, comparacion)) {
            ++pos;
            continue;
        }
        out += a.Trozo(s, desde, pos);
        out += nuevo;
        pos += b.Cuenta();
        desde = pos;
        if (veces > 0) --veces;
    }
    out += a.Trozo(s, desde, a.Cuenta());
    return out;
}

std::string UCase(std::string_view s) { return unicode::Upper(s); }
std::string LCase(std::string_view s) { return unicode::Lower(s); }

std::string Space(long n) {
    if (n < 0) throw ErrorLlamadaNoValida();
    return std::string(static_cast<std::size_t>(n), ' ');
}

std::string String(long n, std::string_view caracter) {
    if (n < 0 || caracter.empty()) throw ErrorLlamadaNoValida();
    const Caracteres c(caracter);
    const std::string_view primero = c.Trozo(caracter, 0, 1);
    std::string out;
    out.reserve(primero.size() * static_cast<std::size_t>(n));
    for (long i = 0; i < n; ++i) out += primero;
    return out;
}

std::string String(long n, int codigo) {
    if (codigo < 0) throw ErrorLlamadaNoValida();
    return String(n, Chr(codigo % 256));
}

std::string StrReverse(std::string_view s) {
    const Caracteres c(s);
    std::string out;
    out.reserve(s.size());
    for (long i = c.Cuenta(); i > 0; --i) out += c.Trozo(s, i - 1, i);
    return out;
}

int StrComp(std::string_view a, std::string_view b, CompareMethod comparacion) {
    if (comparacion == CompareMethod::Text) {
        const int r = unicode::CompareText(a, b);
        return r < 0 ? -1 : r > 0 ? 1 : 0;
    }
    const Caracteres x(a), y(b);
    const bool menor = std::lexicographical_compare(x.cp.begin(), x.cp.end(), y.cp.begin(), y.cp.end());
    if (menor) return -1;
    return x.cp == y.cp ? 0 : 1;
}

int Asc(std::string_view s) {
    const char32_t cp = static_cast<char32_t>(AscW(s));
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) return static_cast<int>(cp);
    for (int i = 0; i < 32; ++i)
        if (kWindows1252[i] == cp) return 0x80 + i;
    return '?';
}

long AscW(std::string_view s) {
    const Caracteres c(s);
    if (c.Cuenta() == 0) throw ErrorLlamadaNoValida();
    return static_cast<long>(c.cp[0]);
}

std::string Chr(int codigo) {
    if (codigo < 0 || codigo > 255) throw ErrorLlamadaNoValida();
    std::string out;
    unicode::Append(out, codigo >= 0x80 && codigo < 0xA0 ? kWindows1252[codigo - 0x80] : static_cast<char32_t>(codigo));
    return out;
}

std::string ChrW(long codigo) {
    if (codigo < -32768 || codigo > 65535) throw ErrorLlamadaNoValida();
    if (codigo < 0) codigo += 65536;
    // A lone surrogate has no UTF-8 form: it becomes the replacement character.
    if (codigo >= 0xD800 && codigo <= 0xDFFF) codigo = 0xFFFD;
    std::string out;
    unicode::Append(out, static_cast<char32_t>(codigo));
    return out;
}

std::vector<std::string> Split(std::string_view s, std::string_view separador, long limite,
                               CompareMethod comparacion) {
    if (limite < -1) throw ErrorLlamadaNoValida();
    std::vector<std::string> partes;
    if (s.empty() || limite == 0) return partes;
    const Caracteres a(s), b(separador);
    if (b.Cuenta() == 0) return {std::string(s)};
    long desde = 0, pos = 0;
    while (pos + b.Cuenta() <= a.Cuenta() && (limite == -1 || static_cast<long>(partes.size()) < limite - 1)) {
        if (!CoincideEn(a, pos, b, comparacion)) {
            ++pos;
            continue;
        }
        partes.emplace_back(a.Trozo(s, desde, pos));
        pos += b.Cuenta();
        desde = pos;
    }
    partes.emplace_back(a.Trozo(s, desde, a.Cuenta()));
    return partes;
}

std::string Join(const std::vector<std::string>& partes, std::string_view separador) {
    std::string out;
    for (std::size_t i = 0; i < partes.size(); ++i) {
        if (i > 0) out += separador;
        out += partes[i];
    }
    return out;
}

}  // namespace tpv
