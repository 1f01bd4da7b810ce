#pragma once
#include <string>
#include <vector>

#include "core/runtime/value.hpp"
#include "printing/pdf_printer.hpp"

// Drawing helpers for the reports laid out on A4: text placed by its left or
// right edge or its centre, paragraphs broken into lines that fit a width,
// rules and shaded bands. Positions are twips inside the page's printable
// area, as on the page device.
namespace tpv {

class HojaPdf {
public:
    enum class Alinear { Izquierda, Derecha, Centro };

    // The printable area of the page device, and the margins the reports keep
    // inside it.
    static constexpr double kIzquierda = 567;
    static constexpr double kDerecha = PdfPrinter::kAnchoPagina - 2 * 567 - 567;
    static constexpr double kAncho = kDerecha - kIzquierda;
    static constexpr double kArriba = 567;
    static constexpr double kPie = PdfPrinter::kAltoPagina - 2 * 567 - 500;

    explicit HojaPdf(PdfPrinter& p) : p_(p) {}

    void Fuente(double puntos, bool negrita = false);
    double Ancho(const std::string& texto) const { return p_.TextWidth(texto); }
    double AltoLinea() const { return p_.TextHeight("Ág"); }

    // `x` is the left edge, the right edge or the centre.
    void Texto(double x, double y, const std::string& texto, Alinear a = Alinear::Izquierda);
    // The text cut to fit `ancho`, with "..." when it was cut.
    std::string Ajustar(const std::string& texto, double ancho) const;
    // The text in lines no wider than `ancho`: broken at blanks, a word too
    // long for a line broken where it must. An empty text gives one empty line.
    std::vector<std::string> Partir(const std::string& texto, double ancho) const;

    void Raya(double x1, double y1, double x2, double y2, double grosor = 10, double gris = 0) {
        p_.Line(x1, y1, x2, y2, grosor, gris);
    }
    void Banda(double x, double y, double ancho, double alto, double gris) { p_.FillBox(x, y, ancho, alto, gris); }
    void Marco(double x, double y, double ancho, double alto, double gris = 0.6);
    void NuevaPagina() { p_.NewPage(); }

private:
    PdfPrinter& p_;
};

// A date as "14 de marzo de 2026".
std::string FechaLarga(const Value& fecha);

}  // namespace tpv
