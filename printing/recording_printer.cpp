#include "printing/recording_printer.hpp"

#include "core/runtime/unicode.hpp"

namespace tpv {

RecordingPrinter::RecordingPrinter(std::string name, std::string driver, std::string port)
    : name_(std::move(name)), driver_(std::move(driver)), port_(std::move(port)) {}

void RecordingPrinter::Comprobar() const {
    if (failing_) throw ErrorImpresora(name_ + " no responde");
}

double RecordingPrinter::TextWidth(const std::string& text) const {
    Comprobar();
    return static_cast<double>(unicode::Length(text)) * FuenteDeDispositivo(Font).AnchoCaracter();
}

double RecordingPrinter::TextHeight(const std::string&) const {
    Comprobar();
    return FuenteDeDispositivo(Font).AltoLinea();
}

void RecordingPrinter::Print(const std::string& text) {
    Comprobar();
    calls_.push_back(Call{"Print", text, CurrentX, CurrentY, Font, 0, 0});
    pending_.Imprimir(CurrentX, CurrentY, Font, text);
    CurrentX = 0;
    CurrentY += FuenteDeDispositivo(Font).AltoLinea();
}

void RecordingPrinter::PaintPicture(const std::string& path, double x, double y, double width, double height) {
    Comprobar();
    calls_.push_back(Call{"PaintPicture", path, x, y, Font, width, height});
    pending_.Dibujar(path, x, y, width, height);
}

void RecordingPrinter::EndDoc() {
    Comprobar();
    calls_.push_back(Call{"EndDoc", "", CurrentX, CurrentY, Font, 0, 0});
    Document doc;
    doc.paper = pending_.Lineas();
    doc.opensDrawer = pending_.AbreCajon();
    doc.layout = std::move(pending_);
    pending_.Limpiar();
    CurrentX = 0;
    CurrentY = 0;
    documents_.push_back(std::move(doc));
    if (observer_) observer_(*this, documents_.back());
}

void RecordingPrinter::Clear() {
    calls_.clear();
    documents_.clear();
    pending_.Limpiar();
}

}  // namespace tpv
