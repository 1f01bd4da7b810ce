#include "printing/pdf_printer.hpp"

#include <cairo-pdf.h>
#include <cairo.h>
#include <pango/pangocairo.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <vector>

#include "core/runtime/unicode.hpp"
#include "printing/destino.hpp"
#include "printing/imagen.hpp"

namespace tpv {

namespace {

constexpr double kTwipsPorPuntoPdf = 20.0;
constexpr double kMargen = 567;  // 1 cm: the page's unprintable edge

cairo_status_t Acumular(void* destino, const unsigned char* datos, unsigned int n) {
    auto* v = static_cast<std::vector<std::uint8_t>*>(destino);
    v->insert(v->end(), datos, datos + n);
    return CAIRO_STATUS_SUCCESS;
}

// The family a font name stands for: the ticket printers' device fonts have
// no face of their own, so they print monospaced.
std::string Familia(const PrinterFont& f) {
    const std::string n = unicode::Lower(f.Name);
    if (n.empty() || n.rfind("fonta", 0) == 0 || n.rfind("fontb", 0) == 0 || n == "control") return "Monospace";
    return f.Name;
}

PangoLayout* Maquetar(cairo_t* cr, const PrinterFont& f, const std::string& texto) {
    PangoLayout* layout = pango_cairo_create_layout(cr);
    pango_cairo_context_set_resolution(pango_layout_get_context(layout), 72);
    pango_layout_context_changed(layout);
    PangoFontDescription* d = pango_font_description_new();
    pango_font_description_set_family(d, Familia(f).c_str());
    pango_font_description_set_size(d, static_cast<int>((f.Size > 0 ? f.Size : 9) * PANGO_SCALE));
    pango_font_description_set_weight(d, f.Bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(layout, d);
    pango_font_description_free(d);
    pango_layout_set_text(layout, texto.c_str(), -1);
    return layout;
}

// Width and height in twips of a text in a font.
void Medir(cairo_t* cr, const PrinterFont& f, const std::string& texto, double& ancho, double& alto) {
    PangoLayout* layout = Maquetar(cr, f, texto.empty() ? " " : texto);
    int w = 0, h = 0;
    pango_layout_get_size(layout, &w, &h);
    g_object_unref(layout);
    ancho = texto.empty() ? 0 : w * kTwipsPorPuntoPdf / PANGO_SCALE;
    alto = h * kTwipsPorPuntoPdf / PANGO_SCALE;
}

cairo_t* ContextoDeMedida() {
    static cairo_surface_t* s = cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1);
    static cairo_t* cr = cairo_create(s);
    return cr;
}

}  // namespace

struct PdfPrinter::Documento {
    std::vector<std::uint8_t> bytes;
    cairo_surface_t* superficie = nullptr;
    cairo_t* cr = nullptr;

    Documento() {
        superficie = cairo_pdf_surface_create_for_stream(Acumular, &bytes, PdfPrinter::kAnchoPagina / kTwipsPorPuntoPdf,
                                                         PdfPrinter::kAltoPagina / kTwipsPorPuntoPdf);
        cr = cairo_create(superficie);
    }
    ~Documento() {
        cairo_destroy(cr);
        cairo_surface_destroy(superficie);
    }
};

PdfPrinter::PdfPrinter(std::string nombre, std::string uri) : nombre_(std::move(nombre)), uri_(std::move(uri)) {
    Font.Name = "Sans";
    Font.Size = 10;
}

PdfPrinter::~PdfPrinter() = default;

PdfPrinter::Documento& PdfPrinter::Doc() {
    if (!doc_) doc_ = std::make_unique<Documento>();
    return *doc_;
}

double PdfPrinter::TextWidth(const std::string& text) const {
    double ancho, alto;
    Medir(ContextoDeMedida(), Font, text, ancho, alto);
    return ancho;
}

double PdfPrinter::TextHeight(const std::string& text) const {
    double ancho, alto;
    Medir(ContextoDeMedida(), Font, text, ancho, alto);
    return alto;
}

void PdfPrinter::NewPage() {
    cairo_show_page(Doc().cr);
    CurrentX = 0;
    CurrentY = 0;
}

void PdfPrinter::Print(const std::string& text) {
    cairo_t* cr = Doc().cr;
    const double alto = TextHeight(text);
    if (CurrentY > 0 && CurrentY + alto > kAltoPagina - 2 * kMargen) NewPage();
    if (!text.empty()) {
        PangoLayout* layout = Maquetar(cr, Font, text);
        cairo_set_source_rgb(cr, 0, 0, 0);
        cairo_move_to(cr, (kMargen + CurrentX) / kTwipsPorPuntoPdf, (kMargen + CurrentY) / kTwipsPorPuntoPdf);
        pango_cairo_show_layout(cr, layout);
        g_object_unref(layout);
    }
    CurrentX = 0;
    CurrentY += alto;
}

void PdfPrinter::PaintPicture(const std::string& path, double x, double y, double width, double height) {
    // The picture at 150 dots to the inch, black and white.
    const int ancho = static_cast<int>(width / 1440 * 150), alto = static_cast<int>(height / 1440 * 150);
    ImagenMono im;
    if (!CargarImagenMono(path, ancho, alto, im)) return;
    cairo_surface_t* mascara = cairo_image_surface_create(CAIRO_FORMAT_A8, ancho, alto);
    unsigned char* datos = cairo_image_surface_get_data(mascara);
    const int paso = cairo_image_surface_get_stride(mascara);
    for (int fy = 0; fy < alto; ++fy)
        for (int fx = 0; fx < ancho; ++fx) datos[fy * paso + fx] = im.Negro(fx, fy) ? 255 : 0;
    cairo_surface_mark_dirty(mascara);
    cairo_t* cr = Doc().cr;
    cairo_save(cr);
    cairo_translate(cr, (kMargen + x) / kTwipsPorPuntoPdf, (kMargen + y) / kTwipsPorPuntoPdf);
    cairo_scale(cr, width / kTwipsPorPuntoPdf / ancho, height / kTwipsPorPuntoPdf / alto);
    cairo_set_source_rgb(cr, 0, 0, 0);
    cairo_mask_surface(cr, mascara, 0, 0);
    cairo_restore(cr);
    cairo_surface_destroy(mascara);
}

void PdfPrinter::Line(double x1, double y1, double x2, double y2, double grosor, double gris) {
    cairo_t* cr = Doc().cr;
    cairo_save(cr);
    cairo_set_source_rgb(cr, gris, gris, gris);
    cairo_set_line_width(cr, grosor / kTwipsPorPuntoPdf);
    cairo_move_to(cr, (kMargen + x1) / kTwipsPorPuntoPdf, (kMargen + y1) / kTwipsPorPuntoPdf);
    cairo_line_to(cr, (kMargen + x2) / kTwipsPorPuntoPdf, (kMargen + y2) / kTwipsPorPuntoPdf);
    cairo_stroke(cr);
    cairo_restore(cr);
}

void PdfPrinter::FillBox(double x, double y, double width, double height, double gris) {
    cairo_t* cr = Doc().cr;
    cairo_save(cr);
    cairo_set_source_rgb(cr, gris, gris, gris);
    cairo_rectangle(cr, (kMargen + x) / kTwipsPorPuntoPdf, (kMargen + y) / kTwipsPorPuntoPdf,
                    width / kTwipsPorPuntoPdf, height / kTwipsPorPuntoPdf);
    cairo_fill(cr);
    cairo_restore(cr);
}

void PdfPrinter::SaveAs(const std::string& ruta) {
    CurrentX = 0;
    CurrentY = 0;
    std::unique_ptr<Documento> doc = std::move(doc_);
    if (!doc) doc = std::make_unique<Documento>();
    cairo_surface_finish(doc->superficie);
    const std::string temporal = ruta + ".tmp";
    std::ofstream f(temporal, std::ios::binary | std::ios::trunc);
    f.write(reinterpret_cast<const char*>(doc->bytes.data()), static_cast<std::streamsize>(doc->bytes.size()));
    f.close();
    std::error_code ec;
    if (f) std::filesystem::rename(temporal, ruta, ec);
    if (!f || ec) {
        std::filesystem::remove(temporal, ec);
        throw ErrorImpresora(ruta + ": no se puede escribir");
    }
    ultimoFichero_ = ruta;
}

void PdfPrinter::EndDoc() {
    CurrentX = 0;
    CurrentY = 0;
    if (!doc_) return;
    std::unique_ptr<Documento> doc = std::move(doc_);
    cairo_surface_finish(doc->superficie);
    auto destino = DestinoDeUri(uri_);
    destino->Enviar(doc->bytes, true);
    ultimoFichero_ = destino->UltimoFichero();
}

}  // namespace tpv

// The font library keeps its caches for the life of the process; the leak
// checker of the test builds is told so.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\nleak:libpango\nleak:libharfbuzz.so\nleak:libglib-2.0.so\n";
}
