#include "core/runtime/conversiones.hpp"

#include <cctype>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <optional>

#include "core/runtime/cifras.hpp"
#include "core/runtime/fecha.hpp"

namespace tpv {

namespace {

bool EsDigito(char c) { return c >= '0' && c <= '9'; }
bool EsBlanco(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string_view Recortar(std::string_view t) {
    while (!t.empty() && EsBlanco(t.front())) t.remove_prefix(1);
    while (!t.empty() && EsBlanco(t.back())) t.remove_suffix(1);
    return t;
}

bool EmpiezaSinCaso(std::string_view t, std::string_view prefijo) {
    if (t.size() < prefijo.size()) return false;
    for (std::size_t i = 0; i < prefijo.size(); ++i) {
        char c = t[i];
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
        if (c != prefijo[i]) return false;
    }
    return true;
}

bool IgualSinCaso(std::string_view a, std::string_view b) { return a.size() == b.size() && EmpiezaSinCaso(a, b); }

enum class Lectura { Numero, NoNumero, Desborda };

// "1234.5e-3" (ASCII, dot) to a double; overflow is the runtime's error 6,
// underflow reads as 0.
Lectura ConvertirAscii(const std::string& s, double& out) {
    double v = 0.0;
    auto r = std::from_chars(s.data(), s.data() + s.size(), v);
    if (r.ec == std::errc::result_out_of_range) {
        // from_chars doesn't say which way: look at the exponent's sign.
        std::size_t e = s.find_first_of("eE");
        bool grande = e == std::string::npos || s[e + 1] != '-';
        if (grande) return Lectura::Desborda;
        out = 0.0;
        return Lectura::Numero;
    }
    if (r.ec != std::errc() || r.ptr != s.data() + s.size()) return Lectura::NoNumero;
    out = v;
    return Lectura::Numero;
}

// &H and &O numbers. Up to 16 bits they are an Integer and up to 32 a Long,
// both signed: &HFFFF is -1.
Lectura LeerBase(std::string_view digitos, int base, double& out) {
    if (digitos.empty()) return Lectura::NoNumero;
    unsigned long long v = 0;
    for (char c : digitos) {
        int d = EsDigito(c) ? c - '0' : (c >= 'a' && c <= 'f') ? c - 'a' + 10 : (c >= 'A' && c <= 'F') ? c - 'A' + 10 : 99;
        if (d >= base) return Lectura::NoNumero;
        v = v * static_cast<unsigned>(base) + static_cast<unsigned>(d);
        if (v > 0xFFFFFFFFull) return Lectura::Desborda;
    }
    if (v <= 0xFFFF) out = static_cast<std::int16_t>(static_cast<std::uint16_t>(v));
    else out = static_cast<std::int32_t>(static_cast<std::uint32_t>(v));
    return Lectura::Numero;
}

constexpr std::string_view kEuro = "\xE2\x82\xAC";

// A number as the regional settings write it: "-1.234,5", "12,50 €",
// "(3)", "5-", "1,5E3". Thousands dots may stand anywhere in the whole part
// after its first digit and are ignored, as the runtime ignored them.
Lectura LeerNumeroRegional(std::string_view texto, double& out) {
    std::string_view t = Recortar(texto);
    if (t.size() >= 2 && t[0] == '&') {
        if (t[1] == 'H' || t[1] == 'h') return LeerBase(t.substr(2), 16, out);
        if (t[1] == 'O' || t[1] == 'o') return LeerBase(t.substr(2), 8, out);
        return Lectura::NoNumero;
    }
    bool negativo = false, conSigno = false, parentesis = false, euro = false;
    auto quitarEuro = [&](bool alPrincipio) {
        if (euro) return;
        if (alPrincipio && t.substr(0, kEuro.size()) == kEuro) t.remove_prefix(kEuro.size());
        else if (!alPrincipio && t.size() >= kEuro.size() && t.substr(t.size() - kEuro.size()) == kEuro)
            t.remove_suffix(kEuro.size());
        else return;
        euro = true;
        t = Recortar(t);
    };
    if (!t.empty() && t.front() == '(' && t.back() == ')') {
        parentesis = negativo = true;
        t = Recortar(t.substr(1, t.size() - 2));
    }
    quitarEuro(true);
    if (!t.empty() && (t.front() == '-' || t.front() == '+') && !parentesis) {
        negativo = t.front() == '-';
        conSigno = true;
        t = Recortar(t.substr(1));
    }
    quitarEuro(true);
    if (!t.empty() && (t.back() == '-' || t.back() == '+') && !conSigno && !parentesis) {
        negativo = t.back() == '-';
        t = Recortar(t.substr(0, t.size() - 1));
    }
    quitarEuro(false);

    std::string ascii = negativo ? "-" : "";
    std::size_t i = 0;
    int cifras = 0;
    for (; i < t.size(); ++i) {
        if (EsDigito(t[i])) {
            ascii.push_back(t[i]);
            ++cifras;
        } else if (t[i] != '.' || cifras == 0) {
            break;
        }
    }
    if (i < t.size() && t[i] == ',') {
        ascii.push_back('.');
        for (++i; i < t.size() && EsDigito(t[i]); ++i, ++cifras) ascii.push_back(t[i]);
    }
    if (cifras == 0) return Lectura::NoNumero;
    if (i < t.size() && (t[i] == 'e' || t[i] == 'E')) {
        ascii.push_back('e');
        ++i;
        if (i < t.size() && (t[i] == '+' || t[i] == '-')) ascii.push_back(t[i++]);
        std::size_t inicio = i;
        for (; i < t.size() && EsDigito(t[i]); ++i) ascii.push_back(t[i]);
        if (i == inicio) return Lectura::NoNumero;
    }
    if (i != t.size()) return Lectura::NoNumero;
    return ConvertirAscii(ascii, out);
}

double LeerONoCoinciden(std::string_view texto) {
    double v = 0.0;
    switch (LeerNumeroRegional(texto, v)) {
        case Lectura::Numero: return v;
        case Lectura::Desborda: throw ErrorDesbordamiento();
        default: throw ErrorTiposNoCoinciden();
    }
}

// --- Dates in text ---

struct LectorFecha {
    std::string_view t;
    std::size_t i = 0;

    void Blancos() {
        while (i < t.size() && EsBlanco(t[i])) ++i;
    }
    bool Numero(int& v, int& cifras) {
        v = 0;
        cifras = 0;
        while (i < t.size() && EsDigito(t[i]) && cifras < 5) {
            v = v * 10 + (t[i++] - '0');
            ++cifras;
        }
        return cifras > 0 && (i >= t.size() || !EsDigito(t[i]));
    }
    bool Fin() const { return i >= t.size(); }
};

int AnioCompleto(int anio, int cifras) {
    if (cifras > 2) return anio;
    return anio < 30 ? 2000 + anio : 1900 + anio;
}

bool LeerParteFecha(LectorFecha& l, int& anio, int& mes, int& dia) {
    int n[3], c[3], partes = 0;
    char separador = 0;
    for (;;) {
        if (!l.Numero(n[partes], c[partes])) return false;
        ++partes;
        if (partes == 3 || l.Fin()) break;
        char s = l.t[l.i];
        if (s != '/' && s != '-' && s != '.') break;
        if (separador != 0 && s != separador) return false;
        separador = s;
        ++l.i;
    }
    if (partes < 2) return false;
    if (partes == 2) {
        if (c[1] > 2 || n[1] > 31) {  // "11/2026": a month and a year
            anio = AnioCompleto(n[1], c[1]);
            mes = n[0];
            dia = 1;
            return fecha::EsFechaValida(anio, mes, dia);
        }
        anio = fecha::Descomponer(fecha::Hoy()).anio;
        dia = n[0];
        mes = n[1];
        if (!fecha::EsFechaValida(anio, mes, dia)) std::swap(dia, mes);
        return fecha::EsFechaValida(anio, mes, dia);
    }
    if (c[0] >= 3) {
        anio = AnioCompleto(n[0], c[0]);
        mes = n[1];
        dia = n[2];
        return fecha::EsFechaValida(anio, mes, dia);
    }
    anio = AnioCompleto(n[2], c[2]);
    dia = n[0];
    mes = n[1];
    if (!fecha::EsFechaValida(anio, mes, dia)) std::swap(dia, mes);
    return fecha::EsFechaValida(anio, mes, dia);
}

bool LeerParteHora(LectorFecha& l, double& fraccion) {
    int h, m, s = 0, c;
    if (!l.Numero(h, c) || l.Fin() || l.t[l.i] != ':') return false;
    ++l.i;
    if (!l.Numero(m, c)) return false;
    if (!l.Fin() && l.t[l.i] == ':') {
        ++l.i;
        if (!l.Numero(s, c)) return false;
    }
    l.Blancos();
    std::string_view resto = l.t.substr(l.i);
    bool am = EmpiezaSinCaso(resto, "am"), pm = EmpiezaSinCaso(resto, "pm");
    if (am || pm) {
        if (h < 1 || h > 12) return false;
        h = h % 12 + (pm ? 12 : 0);
        l.i += 2;
    }
    if (h > 23 || m > 59 || s > 59) return false;
    fraccion = fecha::DesdeHora(h, m, s).serial;
    return true;
}

std::optional<DateTime> LeerFechaRegional(std::string_view texto) {
    LectorFecha l{Recortar(texto)};
    if (l.t.empty()) return std::nullopt;
    double hora = 0.0;
    // A time alone, or a date with an optional time after it.
    LectorFecha prueba = l;
    if (LeerParteHora(prueba, hora)) {
        prueba.Blancos();
        if (prueba.Fin()) return DateTime{hora};
        return std::nullopt;
    }
    int anio, mes, dia;
    if (!LeerParteFecha(l, anio, mes, dia)) return std::nullopt;
    DateTime d = fecha::DesdeFecha(anio, mes, dia);
    l.Blancos();
    if (!l.Fin()) {
        if (!LeerParteHora(l, hora)) return std::nullopt;
        l.Blancos();
        if (!l.Fin()) return std::nullopt;
        d.serial += hora;
    }
    return d;
}

using fecha::kSerialMaximo;
using fecha::kSerialMinimo;

// --- Numbers and dates to text ---

// 15 significant digits, no trailing zeros; exponent form beyond 15 digits
// before the point or 4 zeros after it.
std::string EscribirDouble(double x, char coma, bool ceroInicial) {
    if (std::isnan(x)) return std::string("-1") + coma + "#IND";
    if (std::isinf(x)) return std::string(x < 0 ? "-1" : "1") + coma + "#INF";
    cifras::Cifras c = cifras::Descomponer(x);
    if (c.EsCero()) return "0";
    std::string s = c.negativo ? "-" : "";
    const int exp10 = c.exponente - 1;
    if (exp10 < -4 || exp10 >= 15) {
        s.push_back(c.digitos[0]);
        if (c.digitos.size() > 1) {
            s.push_back(coma);
            s.append(c.digitos, 1);
        }
        char e[16];
        std::snprintf(e, sizeof e, "E%c%02d", exp10 < 0 ? '-' : '+', exp10 < 0 ? -exp10 : exp10);
        return s + e;
    }
    const std::string entera = cifras::ParteEntera(c);
    if (!entera.empty()) s += entera;
    else if (ceroInicial) s.push_back('0');
    std::string decimales = cifras::ParteDecimal(c);
    if (!decimales.empty()) {
        s.push_back(coma);
        s += decimales;
    }
    return s;
}

std::string EscribirFecha(DateTime d) {
    fecha::Partes p = fecha::Descomponer(d);
    char buf[32];
    const bool sinDia = std::trunc(d.serial) == 0.0;
    const bool sinHora = p.hora == 0 && p.minuto == 0 && p.segundo == 0;
    if (sinDia)
        std::snprintf(buf, sizeof buf, "%02d:%02d:%02d", p.hora, p.minuto, p.segundo);
    else if (sinHora)
        std::snprintf(buf, sizeof buf, "%02d/%02d/%04d", p.dia, p.mes, p.anio);
    else
        std::snprintf(buf, sizeof buf, "%02d/%02d/%04d %02d:%02d:%02d", p.dia, p.mes, p.anio, p.hora, p.minuto,
                      p.segundo);
    return buf;
}

int gNumDecimales = 2;

}  // namespace

// --- Numbers out of text ---

double Val(std::string_view texto) {
    // The runtime skipped blanks, tabs and line feeds anywhere in the text.
    std::string t;
    for (char c : texto)
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r') t.push_back(c);
    double v = 0.0;
    if (t.size() >= 2 && t[0] == '&') {
        const int base = (t[1] == 'H' || t[1] == 'h') ? 16 : (t[1] == 'O' || t[1] == 'o') ? 8 : 0;
        if (base == 0) return 0.0;
        std::size_t fin = 2;
        while (fin < t.size() && (base == 16 ? std::isxdigit(static_cast<unsigned char>(t[fin])) != 0
                                             : (t[fin] >= '0' && t[fin] <= '7')))
            ++fin;
        if (LeerBase(std::string_view(t).substr(2, fin - 2), base, v) == Lectura::Desborda) throw ErrorDesbordamiento();
        return v;
    }
    std::string ascii;
    std::size_t i = 0;
    if (i < t.size() && (t[i] == '-' || t[i] == '+')) ascii.push_back(t[i++]);
    int cifras = 0;
    for (; i < t.size() && EsDigito(t[i]); ++i, ++cifras) ascii.push_back(t[i]);
    if (i < t.size() && t[i] == '.') {
        ascii.push_back('.');
        for (++i; i < t.size() && EsDigito(t[i]); ++i, ++cifras) ascii.push_back(t[i]);
    }
    if (cifras == 0) return 0.0;
    if (i < t.size() && (t[i] == 'e' || t[i] == 'E' || t[i] == 'd' || t[i] == 'D')) {
        std::size_t j = i + 1;
        std::string exponente = "e";
        if (j < t.size() && (t[j] == '-' || t[j] == '+')) exponente.push_back(t[j++]);
        std::size_t inicio = j;
        for (; j < t.size() && EsDigito(t[j]); ++j) exponente.push_back(t[j]);
        if (j > inicio) ascii += exponente;
    }
    if (ascii.front() == '+') ascii.erase(0, 1);
    if (ConvertirAscii(ascii, v) == Lectura::Desborda) throw ErrorDesbordamiento();
    return v;
}

double CDbl(const Value& v) {
    switch (v.kind()) {
        case Value::Kind::Null: throw ErrorUsoDeNull();
        case Value::Kind::Text: return LeerONoCoinciden(v.text());
        default: return v.number();
    }
}

float CSng(const Value& v) {
    double x = CDbl(v);
    if (std::isfinite(x) && std::fabs(x) > FLT_MAX) throw ErrorDesbordamiento();
    return static_cast<float>(x);
}

std::int16_t CInt(const Value& v) {
    // nearbyint rounds half to even in the default rounding mode, as the runtime did.
    double r = std::nearbyint(CDbl(v));
    if (!(r >= -32768.0 && r <= 32767.0)) throw ErrorDesbordamiento();
    return static_cast<std::int16_t>(r);
}

std::int32_t CLng(const Value& v) {
    if (v.kind() == Value::Kind::Integer) {
        std::int64_t n = v.integer();
        if (n < INT32_MIN || n > INT32_MAX) throw ErrorDesbordamiento();
        return static_cast<std::int32_t>(n);
    }
    double r = std::nearbyint(CDbl(v));
    if (!(r >= -2147483648.0 && r <= 2147483647.0)) throw ErrorDesbordamiento();
    return static_cast<std::int32_t>(r);
}

bool CBool(const Value& v) {
    if (v.kind() != Value::Kind::Text) return CDbl(v) != 0.0;
    std::string_view t = Recortar(v.text());
    if (IgualSinCaso(t, "true") || IgualSinCaso(t, "verdadero")) return true;
    if (IgualSinCaso(t, "false") || IgualSinCaso(t, "falso")) return false;
    return LeerONoCoinciden(t) != 0.0;
}

DateTime CDate(const Value& v) {
    switch (v.kind()) {
        case Value::Kind::Null: throw ErrorUsoDeNull();
        case Value::Kind::Date: return v.date();
        case Value::Kind::Text: {
            auto d = LeerFechaRegional(v.text());
            if (!d) throw ErrorTiposNoCoinciden();
            return *d;
        }
        default: {
            double x = v.number();
            if (!(x >= kSerialMinimo && x < kSerialMaximo)) throw ErrorDesbordamiento();
            return DateTime{x};
        }
    }
}

bool LeerNumero(std::string_view texto, double& out) {
    return LeerNumeroRegional(texto, out) == Lectura::Numero;
}

bool LeerNumeroODesborda(std::string_view texto, double& out) {
    switch (LeerNumeroRegional(texto, out)) {
        case Lectura::Numero: return true;
        case Lectura::Desborda: throw ErrorDesbordamiento();
        default: return false;
    }
}

bool IsNumeric(const Value& v) {
    switch (v.kind()) {
        case Value::Kind::Integer:
        case Value::Kind::Double: return true;
        case Value::Kind::Text: {
            double x;
            return LeerNumeroRegional(v.text(), x) == Lectura::Numero;
        }
        default: return false;
    }
}

bool IsDate(const Value& v) {
    if (v.kind() == Value::Kind::Date) return true;
    return v.kind() == Value::Kind::Text && LeerFechaRegional(v.text()).has_value();
}

// --- Text out of numbers and dates ---

std::string CStr(const Value& v) {
    switch (v.kind()) {
        case Value::Kind::Null: throw ErrorUsoDeNull();
        case Value::Kind::Integer: return std::to_string(v.integer());
        case Value::Kind::Double: return EscribirDouble(v.real(), ',', true);
        case Value::Kind::Text: return v.text();
        case Value::Kind::Date: return EscribirFecha(v.date());
    }
    return {};
}

std::string Str(double x) {
    std::string s = EscribirDouble(x, '.', false);
    return s.front() == '-' ? s : " " + s;
}

std::string Texto(const Value& v) { return v.IsNull() ? std::string() : CStr(v); }

// --- Rounding ---

std::string FormatNumber(const Value& v, int decimales) {
    if (decimales < -1) throw ErrorLlamadaNoValida();
    if (decimales == -1) decimales = 2;
    const double x = CDbl(v);
    if (!std::isfinite(x)) return EscribirDouble(x, ',', true);
    cifras::Cifras c = cifras::Descomponer(x);
    cifras::RedondearMitadArriba(c, decimales);
    std::string entera = cifras::ParteEntera(c);
    std::string s = c.negativo ? "-" : "";
    s += entera.empty() ? "0" : cifras::Agrupar(entera);
    if (decimales > 0) {
        s.push_back(',');
        s += cifras::ParteDecimal(c, decimales);
    }
    return s;
}

double Fmt(double x, int decimales) {
    if (!std::isfinite(x)) return x;
    cifras::Cifras c = cifras::Descomponer(x);
    cifras::RedondearMitadArriba(c, decimales);
    return cifras::ADouble(c);
}

double Fmt(double x) { return Fmt(x, gNumDecimales); }
void FijarNumDecimales(int decimales) { gNumDecimales = decimales; }
int NumDecimales() { return gNumDecimales; }

double Round(double x, int decimales) {
    if (decimales < 0) throw ErrorLlamadaNoValida();
    if (!std::isfinite(x) || decimales > 400) return x;
    // The exact decimal expansion of the binary value, rounded half to even:
    // to_chars gives exactly that.
    std::string buf(static_cast<std::size_t>(decimales) + 340, '\0');
    auto r = std::to_chars(buf.data(), buf.data() + buf.size(), x, std::chars_format::fixed, decimales);
    double v = 0.0;
    std::from_chars(buf.data(), r.ptr, v);
    return v == 0.0 ? 0.0 : v;
}

double Int(double x) { return std::floor(x); }
double Fix(double x) { return std::trunc(x); }
double Abs(double x) { return std::fabs(x); }
int Sgn(double x) { return x > 0 ? 1 : x < 0 ? -1 : 0; }

}  // namespace tpv
