#include "printing/en_letras.hpp"

#include <vector>

#include "core/runtime/conversiones.hpp"
#include "core/runtime/unicode.hpp"

namespace tpv {

namespace {

constexpr const char* kUnidades[] = {"", "", "dos ", "tres ", "cuatro ", "cinco ", "seis ", "siete ", "ocho ", "nueve "};
constexpr const char* kDecenasRedondas[] = {"",          "diez ",    "veinte ",  "treinta ", "cuarenta ",
                                            "cincuenta ", "sesenta ", "setenta ", "ochenta ", "noventa "};
constexpr const char* kDecenasCon[] = {"",           "dieci",      "veinti",     "treinta y ", "cuarenta y ",
                                       "cincuenta y ", "sesenta y ", "setenta y ", "ochenta y ", "noventa y "};
constexpr const char* kOnceAQuince[] = {"", "once ", "doce ", "trece ", "catorce ", "quince "};
constexpr const char* kCentenas[] = {"",           "",            "doscientos ", "trescientos ", "cuatrocientos ",
                                     "quinientos ", "seiscientos ", "setecientos ", "ochocientos ", "novecientos "};

int Cifra(char32_t c) { return c >= U'0' && c <= U'9' ? static_cast<int>(c - U'0') : -1; }

// The character at a position counted from 1; 0 past the end.
char32_t En(const std::vector<char32_t>& t, long p) {
    return p >= 1 && p <= static_cast<long>(t.size()) ? t[static_cast<std::size_t>(p - 1)] : 0;
}

// A number too long for a double is as far out of range as a tenth digit.
bool DentroDeNueveCifras(std::string_view texto) {
    try {
        const double valor = Val(texto);
        return valor >= -999999999.0 && valor <= 999999999.0;
    } catch (const RuntimeError&) {
        return false;
    }
}

}  // namespace

std::string EnLetras(std::string_view texto, std::string_view moneda) {
    std::vector<char32_t> entero;
    std::vector<char32_t> decimalesCifras;
    bool trasPunto = false;
    for (char32_t c : unicode::Decode(texto)) {
        if (c == U'.') {
            trasPunto = true;
            continue;
        }
        (trasPunto ? decimalesCifras : entero).push_back(c);
    }
    if (decimalesCifras.size() == 1) decimalesCifras.push_back(U'0');
    std::string decimales;
    if (!decimalesCifras.empty()) decimales = EnLetras(unicode::Encode(decimalesCifras), "");

    if (!DentroDeNueveCifras(texto)) return "";

    const long largo = static_cast<long>(entero.size());
    bool saltarUnidad = false;
    std::string resultado;
    for (long i = largo; i >= 1; --i) {
        const long p = largo - i + 1;
        const int d = Cifra(En(entero, p));
        switch (i) {
            case 3:
            case 6:
            case 9:
                if (d == 1)
                    resultado += En(entero, p + 1) == U'0' && En(entero, p + 2) == U'0' ? "cien " : "ciento ";
                else if (d >= 2)
                    resultado += kCentenas[d];
                break;
            case 2:
            case 5:
            case 8: {
                if (d < 1) break;
                const char32_t siguiente = En(entero, p + 1);
                const int s = Cifra(siguiente);
                if (siguiente == U'0') {
                    resultado += kDecenasRedondas[d];
                    saltarUnidad = true;
                } else if (d == 1 && s >= 1 && s <= 5) {
                    resultado += kOnceAQuince[s];
                    saltarUnidad = true;
                } else {
                    resultado += kDecenasCon[d];
                    saltarUnidad = false;
                }
                break;
            }
            case 1:
            case 4:
            case 7:
                if (saltarUnidad) break;
                if (d == 1) {
                    if (i == 1)
                        resultado += "uno ";
                    else if (!resultado.empty())
                        resultado += "un ";
                } else if (d >= 2) {
                    resultado += kUnidades[d];
                }
                break;
            default:
                break;
        }
        if (i == 4) {
            // The thousands word looks at the 4th to 6th characters from the
            // left whatever the length: right for nine digits only.
            bool algunaNoCero = false;
            for (long q = 4; q <= 6; ++q) algunaNoCero = algunaNoCero || En(entero, q) != U'0';
            if (algunaNoCero || largo <= 6) resultado += "mil ";
        }
        if (i == 7) {
            if (largo == 7 && En(entero, 1) == U'1') {
                if (resultado.empty()) resultado += "un ";
                resultado += "millón ";
            } else {
                resultado += "millones ";
            }
        }
    }

    const bool negativo = !entero.empty() && entero.front() == U'-';
    if (!decimales.empty()) resultado += "con " + decimales;
    if (negativo) resultado = "menos " + resultado;
    if (!moneda.empty()) resultado += " " + std::string(moneda);
    return resultado;
}

}  // namespace tpv
