#include <cmath>
#include <map>

#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/texto.hpp"
#include "core/runtime/unicode.hpp"
#include "printing/hoja_pdf.hpp"
#include "printing/informe.hpp"

// The invoice on A4: the shop and the title at the top, the invoice's number
// and date beside the customer's details, the lines in a ruled table, then
// the tax table and the totals with the note on the tax. Long invoices go on
// over several pages, the table's head repeated on each.
namespace tpv {

namespace {

using A = HojaPdf::Alinear;

constexpr double L = HojaPdf::kIzquierda;
constexpr double R = HojaPdf::kDerecha;
constexpr double W = HojaPdf::kAncho;
constexpr double kRelleno = 60;       // above and below the text of a table row
constexpr double kGrisBanda = 0.88;   // the shaded heads
constexpr double kGrisRaya = 0.75;    // the rules between lines

// Right edges of the lines table's columns, and the description's width.
constexpr double kDescripcion = L + 100;
constexpr double kAnchoDescripcion = 4500;
constexpr double kCantidad = L + 5500;
constexpr double kPrecio = L + 6700;
constexpr double kDescuento = L + 7550;
constexpr double kTipo = L + 8450;
constexpr double kImporte = R - 100;

double SinCeroNegativo(double x) { return std::fabs(x) < 0.005 ? 0.0 : x; }

std::string Dinero(double x) { return FormatNumber(SinCeroNegativo(x), 2) + " €"; }
std::string Importe(double x) { return FormatNumber(SinCeroNegativo(x), 2); }

// Units as they were sold: whole units plain, weights with their decimals.
std::string Cantidad(double x) {
    if (x == std::floor(x)) return FormatNumber(x, 0);
    std::string s = FormatNumber(x, 3);
    while (s.back() == '0') s.pop_back();
    return s;
}

std::string Tipo(double tipo) { return FormatNumber(tipo, tipo == std::floor(tipo) ? 0 : 2) + " %"; }

struct Grupo {
    double base = 0, cuota = 0, total = 0;
};

struct Totales {
    std::map<double, Grupo> porTipo;
    double base = 0, cuota = 0, total = 0;
};

Totales Sumar(const FilasInforme& filas) {
    Totales t;
    for (const FilaInforme& f : filas) {
        const double precio = f.Numero("numerico2"), impuesto = f.Numero("numerico3");
        Grupo& g = t.porTipo[f.Numero("numerico6")];
        g.base += precio - impuesto;
        g.cuota += impuesto;
        g.total += precio;
        t.base += precio - impuesto;
        t.cuota += impuesto;
        t.total += precio;
    }
    return t;
}

class Factura {
public:
    Factura(PdfPrinter& p, const FilasInforme& filas) : h_(p), filas_(filas), cab_(filas.front()) {}

    void Dibujar() {
        h_.Fuente(9);
        lineaAlta_ = h_.AltoLinea();
        Paginar();
        double y = CabeceraPrimera();
        std::size_t pagina = 0;
        for (std::size_t i = 0; i < filas_.size(); ++i) {
            if (paginaDeFila_[i] != pagina) {
                Pie(pagina);
                h_.NuevaPagina();
                pagina = paginaDeFila_[i];
                y = CabeceraSiguiente();
            }
            y = Fila(filas_[i], descripciones_[i], y);
        }
        if (paginaTotales_ != pagina) {
            Pie(pagina);
            h_.NuevaPagina();
            pagina = paginaTotales_;
            y = CabeceraSiguiente();
        }
        TotalesYNota(y + 300);
        Pie(pagina);
    }

private:
    // Where each line and the totals fall, before anything is drawn, so that
    // every page can say how many there are.
    void Paginar() {
        h_.Fuente(9);
        for (const FilaInforme& f : filas_)
            descripciones_.push_back(h_.Partir(f.Texto("texto9"), kAnchoDescripcion));
        const double inicioPrimera = AltoCabeceraPrimera(), inicioSiguientes = kAltoCabeceraSiguiente;
        const double limite = HojaPdf::kPie - 300;
        double y = inicioPrimera;
        std::size_t pagina = 0;
        for (const auto& d : descripciones_) {
            const double alto = AltoFila(d);
            if (y + alto > limite && y > (pagina == 0 ? inicioPrimera : inicioSiguientes)) {
                ++pagina;
                y = inicioSiguientes;
            }
            paginaDeFila_.push_back(pagina);
            y += alto;
        }
        paginaTotales_ = y + 300 + AltoTotales() > limite ? pagina + 1 : pagina;
        paginas_ = paginaTotales_ + 1;
    }

    double AltoFila(const std::vector<std::string>& descripcion) const {
        return static_cast<double>(descripcion.size()) * lineaAlta_ + 2 * kRelleno;
    }

    double AltoTotales() {
        const double tabla = (static_cast<double>(Sumar(filas_).porTipo.size()) + 1) * (lineaAlta_ + 2 * kRelleno);
        const double totales = 4 * (lineaAlta_ + 2 * kRelleno) + 2 * lineaAlta_;
        return std::max(tabla, totales) + 200;
    }

    // The rule under the shop's details, and the height of the boxes of the
    // document and the customer.
    double YRaya() const {
        return HojaPdf::kArriba + 480 + static_cast<double>(DatosTienda().size()) * lineaAlta_ + 250;
    }
    double AltoBloqueCliente() const {
        const double lineas = std::max(2.8, 1.3 + static_cast<double>(DatosCliente().size()));
        return 400 + lineas * lineaAlta_ + 200;
    }
    double AltoCabeceraPrimera() const {
        return YRaya() + 250 + AltoBloqueCliente() + 350 + lineaAlta_ + 2 * kRelleno;
    }
    static constexpr double kAltoCabeceraSiguiente = HojaPdf::kArriba + 1100;

    // The shop's name and details on the left, the title on the right.
    double CabeceraPrimera() {
        double y = HojaPdf::kArriba;
        h_.Fuente(16, true);
        h_.Texto(L, y, h_.Ajustar(cab_.Texto("texto1"), W * 0.6));
        h_.Fuente(22, true);
        h_.Texto(R, y - 40, unicode::Upper(cab_.Texto("texto13")), A::Derecha);
        y += 480;
        h_.Fuente(9);
        for (const std::string& linea : DatosTienda()) {
            h_.Texto(L, y, linea);
            y += lineaAlta_;
        }
        y = YRaya();
        h_.Raya(L, y, R, y, 15, 0.3);
        y += 250;

        // The document on the left, the customer on the right.
        const double alto = AltoBloqueCliente();
        const double anchoDoc = W * 0.36, xCliente = L + anchoDoc + 300, anchoCliente = R - xCliente;
        Bloque(L, y, anchoDoc, alto, "DATOS DE LA FACTURA");
        double yy = y + 400;
        Par(L + 150, L + anchoDoc - 150, yy, "Número", Cantidad(cab_.Numero("numerico1")), true);
        yy += lineaAlta_ * 1.4;
        Par(L + 150, L + anchoDoc - 150, yy, "Fecha", Format(cab_.Valor("fecha1"), "dd/mm/yyyy"), false);

        Bloque(xCliente, y, anchoCliente, alto, "CLIENTE");
        yy = y + 400;
        h_.Fuente(10, true);
        h_.Texto(xCliente + 150, yy, h_.Ajustar(cab_.Texto("texto6"), anchoCliente - 300));
        yy += lineaAlta_ * 1.3;
        h_.Fuente(9);
        for (const std::string& linea : DatosCliente()) {
            h_.Texto(xCliente + 150, yy, h_.Ajustar(linea, anchoCliente - 300));
            yy += lineaAlta_;
        }
        return CabeceraTabla(y + alto + 350);
    }

    double CabeceraSiguiente() {
        double y = HojaPdf::kArriba;
        h_.Fuente(11, true);
        h_.Texto(L, y, h_.Ajustar(cab_.Texto("texto1"), W * 0.6));
        h_.Texto(R, y, cab_.Texto("texto13") + " " + Cantidad(cab_.Numero("numerico1")), A::Derecha);
        h_.Fuente(9);
        h_.Texto(R, y + 300, Format(cab_.Valor("fecha1"), "dd/mm/yyyy"), A::Derecha);
        h_.Raya(L, y + 650, R, y + 650, 15, 0.3);
        return CabeceraTabla(kAltoCabeceraSiguiente - lineaAlta_ - 2 * kRelleno);
    }

    double CabeceraTabla(double y) {
        const double alto = lineaAlta_ + 2 * kRelleno;
        h_.Banda(L, y, W, alto, kGrisBanda);
        h_.Fuente(8.5, true);
        const double t = y + kRelleno;
        h_.Texto(kDescripcion, t, "Descripción");
        h_.Texto(kCantidad, t, "Cantidad", A::Derecha);
        h_.Texto(kPrecio, t, "Precio", A::Derecha);
        h_.Texto(kDescuento, t, "Dto.", A::Derecha);
        h_.Texto(kTipo, t, "IVA", A::Derecha);
        h_.Texto(kImporte, t, "Importe", A::Derecha);
        h_.Fuente(9);
        return y + alto;
    }

    double Fila(const FilaInforme& f, const std::vector<std::string>& descripcion, double y) {
        h_.Fuente(9);
        const double t = y + kRelleno;
        for (std::size_t i = 0; i < descripcion.size(); ++i)
            h_.Texto(kDescripcion, t + static_cast<double>(i) * lineaAlta_, descripcion[i]);
        h_.Texto(kCantidad, t, Cantidad(f.Numero("numerico4")), A::Derecha);
        h_.Texto(kPrecio, t, Importe(f.Numero("numerico20")), A::Derecha);
        const double descuento = f.Numero("numerico5");
        if (SinCeroNegativo(descuento) != 0) h_.Texto(kDescuento, t, Importe(descuento), A::Derecha);
        h_.Texto(kTipo, t, Tipo(f.Numero("numerico6")), A::Derecha);
        h_.Texto(kImporte, t, Importe(f.Numero("numerico2")), A::Derecha);
        const double fin = y + AltoFila(descripcion);
        h_.Raya(L, fin, R, fin, 8, kGrisRaya);
        return fin;
    }

    // The tax table on the left, the totals on the right, the note below.
    void TotalesYNota(double y) {
        const Totales t = Sumar(filas_);
        const double alto = lineaAlta_ + 2 * kRelleno;
        const double xTipo = L + 100, xBase = L + 2700, xCuota = L + 3800, xTotal = L + 4900;
        h_.Banda(L, y, xTotal - L + 100, alto, kGrisBanda);
        h_.Fuente(8.5, true);
        h_.Texto(xTipo, y + kRelleno, "Tipo IVA");
        h_.Texto(xBase, y + kRelleno, "Base imponible", A::Derecha);
        h_.Texto(xCuota, y + kRelleno, "Cuota", A::Derecha);
        h_.Texto(xTotal, y + kRelleno, "Total", A::Derecha);
        h_.Fuente(9);
        double yy = y + alto;
        for (const auto& [tipo, g] : t.porTipo) {
            h_.Texto(xTipo, yy + kRelleno, Tipo(tipo));
            h_.Texto(xBase, yy + kRelleno, Importe(g.base), A::Derecha);
            h_.Texto(xCuota, yy + kRelleno, Importe(g.cuota), A::Derecha);
            h_.Texto(xTotal, yy + kRelleno, Importe(g.total), A::Derecha);
            yy += alto;
            h_.Raya(L, yy, xTotal + 100, yy, 8, kGrisRaya);
        }

        const double xEtiqueta = L + 6000;
        yy = y;
        auto linea = [&](const std::string& etiqueta, const std::string& valor) {
            h_.Texto(xEtiqueta, yy + kRelleno, etiqueta);
            h_.Texto(kImporte, yy + kRelleno, valor, A::Derecha);
            yy += alto;
        };
        h_.Fuente(9);
        linea("Base imponible", Dinero(t.base));
        linea("Cuota de IVA", Dinero(t.cuota));
        const double descuento = cab_.Numero("numerico21");
        if (SinCeroNegativo(descuento) != 0) linea("Descuentos aplicados", Dinero(descuento));
        yy += 60;
        h_.Banda(xEtiqueta - 100, yy, R - xEtiqueta + 100, alto + 80, kGrisBanda);
        h_.Fuente(11, true);
        yy += 40;
        linea("TOTAL", Dinero(t.total));
        yy += 100;
        h_.Fuente(9);
        h_.Texto(kImporte, yy, cab_.Texto("texto29"), A::Derecha);
    }

    void Pie(std::size_t pagina) {
        const double y = HojaPdf::kPie;
        h_.Raya(L, y - 80, R, y - 80, 8, kGrisRaya);
        h_.Fuente(7.5);
        std::string tienda = cab_.Texto("texto1");
        if (!IdentificacionTienda().empty()) tienda += " · " + IdentificacionTienda();
        h_.Texto(L, y, h_.Ajustar(tienda, W - 2500));
        h_.Texto(R, y, "Página " + std::to_string(pagina + 1) + " de " + std::to_string(paginas_), A::Derecha);
    }

    void Bloque(double x, double y, double ancho, double alto, const std::string& titulo) {
        h_.Marco(x, y, ancho, alto);
        h_.Fuente(7.5, true);
        h_.Texto(x + 150, y + 100, titulo);
    }

    void Par(double x, double derecha, double y, const std::string& etiqueta, const std::string& valor, bool fuerte) {
        h_.Fuente(9);
        h_.Texto(x, y, etiqueta);
        h_.Fuente(fuerte ? 10 : 9, fuerte);
        h_.Texto(derecha, y, valor, A::Derecha);
        h_.Fuente(9);
    }

    std::vector<std::string> DatosTienda() const {
        std::vector<std::string> v;
        Anadir(v, cab_.Texto("texto3"));
        Anadir(v, Junto(cab_.Texto("texto4"), cab_.Texto("texto5")));
        // The telephone's label comes staged with it; a label alone says nothing.
        if (cab_.Texto("texto11") != "Tlf: ") Anadir(v, cab_.Texto("texto11"));
        Anadir(v, IdentificacionTienda());
        return v;
    }

    // The shop's tax number comes with its label when the shop names one;
    // otherwise the label staged beside it goes in front.
    std::string IdentificacionTienda() const {
        const std::string cif = cab_.Texto("texto2"), etiqueta = Trim(cab_.Texto("texto20"));
        if (cif.empty() || etiqueta.empty() || cif.rfind(etiqueta, 0) == 0) return cif;
        return etiqueta + " " + cif;
    }

    std::vector<std::string> DatosCliente() const {
        std::vector<std::string> v;
        if (!cab_.Texto("texto12").empty()) {
            std::string etiqueta = cab_.Texto("texto20");
            if (!etiqueta.empty() && etiqueta.back() != ' ') etiqueta += ' ';
            v.push_back(etiqueta + cab_.Texto("texto12"));
        }
        Anadir(v, cab_.Texto("texto14"));
        Anadir(v, Junto(cab_.Texto("texto15"), cab_.Texto("texto16")));
        if (cab_.Texto("texto17") != cab_.Texto("texto16")) Anadir(v, cab_.Texto("texto17"));
        if (!cab_.Texto("texto18").empty()) v.push_back("Tlf: " + cab_.Texto("texto18"));
        return v;
    }

    static void Anadir(std::vector<std::string>& v, const std::string& s) {
        if (!s.empty()) v.push_back(s);
    }
    static std::string Junto(const std::string& a, const std::string& b) {
        return a.empty() ? b : b.empty() ? a : a + " " + b;
    }

    HojaPdf h_;
    const FilasInforme& filas_;
    const FilaInforme& cab_;
    double lineaAlta_ = 200;
    std::vector<std::vector<std::string>> descripciones_;
    std::vector<std::size_t> paginaDeFila_;
    std::size_t paginaTotales_ = 0, paginas_ = 1;
};

}  // namespace

void MaquetarFactura(PdfPrinter& hoja, const FilasInforme& filas) {
    if (filas.empty()) return;
    Factura(hoja, filas).Dibujar();
}

}  // namespace tpv
