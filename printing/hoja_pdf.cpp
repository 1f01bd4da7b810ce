#include "printing/hoja_pdf.hpp"

#include "core/runtime/calendario.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/unicode.hpp"

namespace tpv {

namespace {

// Control characters (a line end stored in a column) print as blanks.
std::string UnaLinea(const std::string& texto) {
    std::string s = texto;
    for (char& c : s)
        if (static_cast<unsigned char>(c) < 32) c = ' ';
    return s;
}

}  // namespace

void HojaPdf::Fuente(double puntos, bool negrita) {
    p_.Font.Name = "Sans";
    p_.Font.Size = puntos;
    p_.Font.Bold = negrita;
}

void HojaPdf::Texto(double x, double y, const std::string& texto, Alinear a) {
    const std::string s = UnaLinea(texto);
    if (s.empty()) return;
    double izquierda = x;
    if (a == Alinear::Derecha) izquierda = x - Ancho(s);
    if (a == Alinear::Centro) izquierda = x - Ancho(s) / 2;
    p_.CurrentX = izquierda;
    p_.CurrentY = y;
    p_.Print(s);
}

std::string HojaPdf::Ajustar(const std::string& texto, double ancho) const {
    const std::string s = UnaLinea(texto);
    if (Ancho(s) <= ancho) return s;
    std::vector<char32_t> cps = unicode::Decode(s);
    while (!cps.empty() && Ancho(unicode::Encode(cps) + "...") > ancho) cps.pop_back();
    return unicode::Encode(cps) + "...";
}

std::vector<std::string> HojaPdf::Partir(const std::string& texto, double ancho) const {
    std::vector<std::string> lineas;
    std::string parrafo;
    auto partirParrafo = [&](const std::string& p) {
        std::vector<char32_t> linea, palabra;
        auto cabe = [&](const std::vector<char32_t>& v) { return Ancho(unicode::Encode(v)) <= ancho; };
        auto cerrarLinea = [&] {
            while (!linea.empty() && linea.back() == U' ') linea.pop_back();
            lineas.push_back(unicode::Encode(linea));
            linea.clear();
        };
        auto ponerPalabra = [&] {
            if (palabra.empty()) return;
            std::vector<char32_t> junto = linea;
            if (!junto.empty()) junto.push_back(U' ');
            junto.insert(junto.end(), palabra.begin(), palabra.end());
            if (cabe(junto)) {
                linea = junto;
            } else {
                if (!linea.empty()) cerrarLinea();
                // A word wider than the line goes in pieces.
                for (char32_t c : palabra) {
                    linea.push_back(c);
                    if (!cabe(linea) && linea.size() > 1) {
                        linea.pop_back();
                        cerrarLinea();
                        linea.push_back(c);
                    }
                }
            }
            palabra.clear();
        };
        for (char32_t c : unicode::Decode(p)) {
            if (c == U' ' || c == U'\t') ponerPalabra();
            else palabra.push_back(c < 32 ? U' ' : c);
        }
        ponerPalabra();
        cerrarLinea();
    };
    for (char c : texto) {
        if (c == '\n') {
            partirParrafo(parrafo);
            parrafo.clear();
        } else if (c != '\r') {
            parrafo += c;
        }
    }
    partirParrafo(parrafo);
    return lineas;
}

void HojaPdf::Marco(double x, double y, double ancho, double alto, double gris) {
    Raya(x, y, x + ancho, y, 10, gris);
    Raya(x + ancho, y, x + ancho, y + alto, 10, gris);
    Raya(x + ancho, y + alto, x, y + alto, 10, gris);
    Raya(x, y + alto, x, y, 10, gris);
}

std::string FechaLarga(const Value& fecha) {
    return std::to_string(Day(fecha)) + " de " + Format(fecha, "mmmm") + " de " + std::to_string(Year(fecha));
}

}  // namespace tpv
