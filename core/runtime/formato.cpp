#include "core/runtime/formato.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "core/runtime/calendario.hpp"
#include "core/runtime/cifras.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/fecha.hpp"

namespace tpv {

namespace {

char Minuscula(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

bool IgualSinCaso(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (Minuscula(a[i]) != Minuscula(b[i])) return false;
    return true;
}

// Copies a quoted text or an escaped character of the pattern to `out` and
// moves past it; false when `p[i]` starts neither.
bool LeerLiteral(std::string_view p, std::size_t& i, std::string& out) {
    if (p[i] == '"') {
        std::size_t fin = p.find('"', i + 1);
        if (fin == std::string_view::npos) fin = p.size();
        out.append(p.substr(i + 1, fin - i - 1));
        i = fin + 1;
        return true;
    }
    if (p[i] == '\\') {
        ++i;
        // The whole character, however many bytes it takes.
        do {
            if (i < p.size()) out.push_back(p[i]);
            ++i;
        } while (i < p.size() && (static_cast<unsigned char>(p[i]) & 0xC0) == 0x80);
        return true;
    }
    return false;
}

// --- Dates ---

const char* const kMeses[] = {"enero", "febrero", "marzo",      "abril",   "mayo",      "junio",
                              "julio", "agosto",  "septiembre", "octubre", "noviembre", "diciembre"};
const char* const kMesesCortos[] = {"ene", "feb", "mar", "abr", "may", "jun",
                                    "jul", "ago", "sep", "oct", "nov", "dic"};
const char* const kDias[] = {"domingo", "lunes", "martes", "miércoles", "jueves", "viernes", "sábado"};
const char* const kDiasCortos[] = {"dom", "lun", "mar", "mié", "jue", "vie", "sáb"};

struct TokenFecha {
    char letra = 0;  // d w m q y h n s t c, 'A' for AM/PM, 'a' for A/P, 0 for literal text
    int veces = 0;
    std::string texto;  // the literal, or the AM/PM marker as written
};

std::vector<TokenFecha> TokensFecha(std::string_view p) {
    std::vector<TokenFecha> tokens;
    auto literal = [&](std::string_view t) {
        if (tokens.empty() || tokens.back().letra != 0) tokens.push_back({});
        tokens.back().texto.append(t);
    };
    std::size_t i = 0;
    while (i < p.size()) {
        std::string texto;
        if (LeerLiteral(p, i, texto)) {
            literal(texto);
            continue;
        }
        if (IgualSinCaso(p.substr(i, 5), "am/pm")) {
            tokens.push_back({'A', 1, std::string(p.substr(i, 5))});
            i += 5;
            continue;
        }
        if (IgualSinCaso(p.substr(i, 3), "a/p")) {
            tokens.push_back({'a', 1, std::string(p.substr(i, 3))});
            i += 3;
            continue;
        }
        const char c = Minuscula(p[i]);
        if (std::string_view("dwmqyhnstc").find(c) == std::string_view::npos) {
            literal(p.substr(i, 1));
            ++i;
            continue;
        }
        int veces = 0;
        while (i < p.size() && Minuscula(p[i]) == c) ++i, ++veces;
        if (c == 't' && veces < 5) literal(std::string(static_cast<std::size_t>(veces), p[i - 1]));
        else tokens.push_back({c, veces, {}});
    }
    return tokens;
}

std::string Numero(int v, bool dosCifras) {
    char buf[16];
    std::snprintf(buf, sizeof buf, dosCifras ? "%02d" : "%d", v);
    return buf;
}

std::string FormatearFecha(DateTime d, std::string_view patron) {
    const fecha::Partes p = fecha::Descomponer(d);
    const int diaSemana = Weekday(Value(d));
    const std::vector<TokenFecha> tokens = TokensFecha(patron);
    bool doceHoras = false;
    for (const auto& t : tokens) doceHoras = doceHoras || t.letra == 'A' || t.letra == 'a';
    const int hora = doceHoras ? (p.hora % 12 == 0 ? 12 : p.hora % 12) : p.hora;

    // "m" is the minute right after an hour or right before a second.
    auto esMinuto = [&](std::size_t k) {
        for (std::size_t j = k; j-- > 0;)
            if (tokens[j].letra != 0) {
                if (tokens[j].letra == 'h') return true;
                break;
            }
        for (std::size_t j = k + 1; j < tokens.size(); ++j)
            if (tokens[j].letra != 0) return tokens[j].letra == 's';
        return false;
    };

    std::string out;
    for (std::size_t k = 0; k < tokens.size(); ++k) {
        const TokenFecha& t = tokens[k];
        const bool dos = t.veces >= 2;
        switch (t.letra) {
            case 0: out += t.texto; break;
            case 'd':
                if (t.veces <= 2) out += Numero(p.dia, dos);
                else if (t.veces == 3) out += kDiasCortos[diaSemana - 1];
                else if (t.veces == 4) out += kDias[diaSemana - 1];
                else if (t.veces == 5) out += FormatearFecha(d, "dd/mm/yyyy");
                else out += FormatearFecha(d, "dddd, d \\de mmmm \\de yyyy");
                break;
            case 'w':
                if (t.veces == 1) {
                    out += Numero(diaSemana, false);
                } else {
                    const int enero1 = Weekday(Value(DateSerial(p.anio, 1, 1)));
                    const int diaDelAnio = static_cast<int>(DateDiff("d", DateSerial(p.anio, 1, 1), d)) + 1;
                    out += Numero((diaDelAnio - 1 + enero1 - 1) / 7 + 1, false);
                }
                break;
            case 'm':
                if (t.veces <= 2 && esMinuto(k)) out += Numero(p.minuto, dos);
                else if (t.veces <= 2) out += Numero(p.mes, dos);
                else if (t.veces == 3) out += kMesesCortos[p.mes - 1];
                else out += kMeses[p.mes - 1];
                break;
            case 'q': out += Numero((p.mes - 1) / 3 + 1, false); break;
            case 'y':
                if (t.veces == 1) out += Numero(static_cast<int>(DateDiff("d", DateSerial(p.anio, 1, 1), d)) + 1, false);
                else if (t.veces <= 3) out += Numero(p.anio % 100, true);
                else out += Numero(p.anio, false);
                break;
            case 'h': out += Numero(hora, dos); break;
            case 'n': out += Numero(p.minuto, dos); break;
            case 's': out += Numero(p.segundo, dos); break;
            case 't': out += FormatearFecha(d, "hh:nn:ss"); break;
            case 'c': out += CStr(Value(d)); break;
            case 'A':
            case 'a': {
                // The marker keeps the case it was written in: "AM/PM", "am/pm", "A/P".
                const std::size_t barra = t.texto.find('/');
                out += p.hora < 12 ? t.texto.substr(0, barra) : t.texto.substr(barra + 1);
                break;
            }
        }
    }
    return out;
}

bool EsPatronFecha(std::string_view p) {
    bool fecha = false;
    std::string ignorado;
    for (std::size_t i = 0; i < p.size();) {
        if (LeerLiteral(p, i, ignorado)) continue;
        const char c = Minuscula(p[i++]);
        if (c == '0' || c == '#') return false;
        if (std::string_view("dwmqyhnstc").find(c) != std::string_view::npos) fecha = true;
    }
    return fecha;
}

// --- Numbers ---

enum class Tk { Cero, Almohadilla, Punto, Coma, Porcentaje, Exponente, Literal };

struct TokenNumero {
    Tk tipo;
    std::string texto;      // a literal; "E" or "e" for the exponent
    bool signoMas = false;  // E+ shows the sign of a positive exponent, E- doesn't
    int cerosExponente = 0;
};

std::vector<std::string_view> Secciones(std::string_view p) {
    std::vector<std::string_view> secciones;
    std::size_t inicio = 0;
    std::string ignorado;
    for (std::size_t i = 0; i < p.size();) {
        if (LeerLiteral(p, i, ignorado)) continue;
        if (p[i] == ';') {
            secciones.push_back(p.substr(inicio, i - inicio));
            inicio = i + 1;
        }
        ++i;
    }
    secciones.push_back(p.substr(inicio < p.size() ? inicio : p.size()));
    return secciones;
}

std::vector<TokenNumero> TokensNumero(std::string_view p) {
    std::vector<TokenNumero> tokens;
    auto literal = [&](std::string_view t) {
        if (tokens.empty() || tokens.back().tipo != Tk::Literal) tokens.push_back({Tk::Literal, {}});
        tokens.back().texto.append(t);
    };
    for (std::size_t i = 0; i < p.size();) {
        std::string texto;
        if (LeerLiteral(p, i, texto)) {
            literal(texto);
            continue;
        }
        const char c = p[i];
        if ((c == 'E' || c == 'e') && i + 1 < p.size() && (p[i + 1] == '+' || p[i + 1] == '-')) {
            TokenNumero t{Tk::Exponente, std::string(1, c), p[i + 1] == '+'};
            for (i += 2; i < p.size() && (p[i] == '0' || p[i] == '#'); ++i) t.cerosExponente += p[i] == '0';
            tokens.push_back(t);
            continue;
        }
        ++i;
        switch (c) {
            case '0': tokens.push_back({Tk::Cero, {}}); break;
            case '#': tokens.push_back({Tk::Almohadilla, {}}); break;
            case '.': tokens.push_back({Tk::Punto, {}}); break;
            case ',': tokens.push_back({Tk::Coma, {}}); break;
            case '%': tokens.push_back({Tk::Porcentaje, {}}); break;
            default: literal(std::string_view(&c, 1));
        }
    }
    return tokens;
}

bool EsCifra(const TokenNumero& t) { return t.tipo == Tk::Cero || t.tipo == Tk::Almohadilla; }

std::string FormatearSeccion(double x, std::string_view seccion, bool conSigno) {
    const std::vector<TokenNumero> tokens = TokensNumero(seccion);
    const std::size_t n = tokens.size();
    std::size_t punto = n, exponente = n;
    for (std::size_t k = 0; k < n; ++k) {
        if (tokens[k].tipo == Tk::Punto && punto == n) punto = k;
        if (tokens[k].tipo == Tk::Exponente && exponente == n) exponente = k;
    }
    const std::size_t finEntera = std::min(punto, exponente);
    std::vector<std::size_t> enteras, decimales;
    for (std::size_t k = 0; k < n; ++k) {
        if (!EsCifra(tokens[k])) continue;
        if (k < finEntera) enteras.push_back(k);
        else if (k > punto && k < exponente) decimales.push_back(k);
    }
    // A comma between digit places groups thousands; commas after the last
    // digit place of the whole part divide by a thousand each.
    bool agrupar = false;
    int escala = 0, porcentajes = 0;
    for (std::size_t k = 0; k < n; ++k) {
        if (tokens[k].tipo == Tk::Porcentaje) ++porcentajes;
        if (tokens[k].tipo != Tk::Coma || k >= finEntera || enteras.empty() || k < enteras.front()) continue;
        if (k < enteras.back()) agrupar = true;
        else ++escala;
    }
    for (int i = 0; i < porcentajes; ++i) x *= 100.0;
    for (int i = 0; i < escala; ++i) x /= 1000.0;

    const int nDecimales = static_cast<int>(decimales.size());
    cifras::Cifras c = cifras::Descomponer(x);
    int exp10 = 0;
    if (exponente < n && !c.EsCero()) {
        const int enterasMantisa = static_cast<int>(enteras.size());
        exp10 = c.exponente - enterasMantisa;
        c.exponente = enterasMantisa;
        cifras::RedondearMitadArriba(c, nDecimales);
        if (c.exponente > enterasMantisa) {  // 9,99 rounded up to 10,0
            ++exp10;
            c.exponente = enterasMantisa;
        }
    } else {
        cifras::RedondearMitadArriba(c, nDecimales);
    }

    std::string entera = cifras::ParteEntera(c);
    std::size_t minimo = 0;
    for (std::size_t j = 0; j < enteras.size(); ++j)
        if (tokens[enteras[j]].tipo == Tk::Cero) {
            minimo = enteras.size() - j;
            break;
        }
    if (entera.size() < minimo) entera.insert(0, minimo - entera.size(), '0');
    std::string fraccion = cifras::ParteDecimal(c, nDecimales);
    while (!fraccion.empty() && tokens[decimales[fraccion.size() - 1]].tipo == Tk::Almohadilla &&
           fraccion.back() == '0')
        fraccion.pop_back();
    if (agrupar) entera = cifras::Agrupar(entera);

    std::string out = conSigno && c.negativo ? "-" : "";
    std::size_t ranuraEntera = 0, ranuraDecimal = 0;
    const long sobrantes = static_cast<long>(entera.size()) - static_cast<long>(enteras.size());
    for (std::size_t k = 0; k < n; ++k) {
        const TokenNumero& t = tokens[k];
        switch (t.tipo) {
            case Tk::Literal: out += t.texto; break;
            case Tk::Porcentaje: out += '%'; break;
            case Tk::Coma: break;
            case Tk::Punto: out += ','; break;
            case Tk::Exponente: {
                out += t.texto;
                if (exp10 < 0) out += '-';
                else if (t.signoMas) out += '+';
                std::string e = std::to_string(exp10 < 0 ? -exp10 : exp10);
                if (static_cast<int>(e.size()) < t.cerosExponente)
                    e.insert(0, static_cast<std::size_t>(t.cerosExponente) - e.size(), '0');
                out += e;
                break;
            }
            case Tk::Cero:
            case Tk::Almohadilla:
                if (k < finEntera) {
                    // Digits fill the places from the right; the first place
                    // takes whatever doesn't fit.
                    const long j = static_cast<long>(ranuraEntera++);
                    if (agrupar) {
                        if (j == 0) out += entera;
                    } else if (j == 0) {
                        if (sobrantes + 1 > 0) out += entera.substr(0, static_cast<std::size_t>(sobrantes + 1));
                    } else if (sobrantes + j >= 0) {
                        out += entera[static_cast<std::size_t>(sobrantes + j)];
                    }
                } else if (k > punto && k < exponente) {
                    if (ranuraDecimal < fraccion.size()) out += fraccion[ranuraDecimal];
                    ++ranuraDecimal;
                }
                break;
        }
    }
    return out;
}

std::string FormatearNumero(double x, std::string_view patron) {
    const std::vector<std::string_view> secciones = Secciones(patron);
    if (x < 0 && secciones.size() >= 2 && !secciones[1].empty()) return FormatearSeccion(-x, secciones[1], false);
    if (x == 0 && secciones.size() >= 3 && !secciones[2].empty()) return FormatearSeccion(x, secciones[2], true);
    return FormatearSeccion(x, secciones[0], true);
}

// --- Named patterns ---

struct Nombrado {
    const char* nombre;
    const char* patron;
};

const Nombrado kNombrados[] = {
    {"currency", "#,##0.00 €"}, {"fixed", "0.00"},           {"standard", "#,##0.00"},
    {"percent", "0.00%"},       {"scientific", "0.00E+00"},  {"long date", "dddddd"},
    {"medium date", "dd-mmm-yy"}, {"short date", "ddddd"},   {"long time", "ttttt"},
    {"medium time", "hh:nn AM/PM"}, {"short time", "hh:nn"},
};

}  // namespace

std::string Format(const Value& v, std::string_view patron) {
    if (v.IsNull()) return {};
    const bool texto = v.kind() == Value::Kind::Text;
    if (patron.empty()) return Texto(v);
    if (IgualSinCaso(patron, "general number")) return texto && !IsNumeric(v) ? v.text() : CStr(Value(CDbl(v)));
    if (IgualSinCaso(patron, "general date")) return texto && !IsDate(v) ? v.text() : CStr(Value(CDate(v)));
    for (const Nombrado& n : kNombrados)
        if (IgualSinCaso(patron, n.nombre)) patron = n.patron;

    if (EsPatronFecha(patron)) {
        if (texto && !IsDate(v) && !IsNumeric(v)) return v.text();
        DateTime d = texto && IsDate(v) ? CDate(v) : CDate(Value(CDbl(v)));
        return FormatearFecha(d, patron);
    }
    if (texto && !IsNumeric(v)) return v.text();
    return FormatearNumero(CDbl(v), patron);
}

}  // namespace tpv
