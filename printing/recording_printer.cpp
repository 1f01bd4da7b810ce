#include "printing/recording_printer.hpp"

namespace tpv {

RecordingPrinter::RecordingPrinter(std::string name, std::string driver, std::string port)
    : DispositivoTicket(std::move(name), std::move(port)), driver_(std::move(driver)) {}

void RecordingPrinter::Comprobar() const {
    if (failing_) throw ErrorImpresora(DeviceName() + " no responde");
}

void RecordingPrinter::Print(const std::string& text) {
    Comprobar();
    calls_.push_back(Call{"Print", text, CurrentX, CurrentY, Font, 0, 0});
    DispositivoTicket::Print(text);
}

void RecordingPrinter::PaintPicture(const std::string& path, double x, double y, double width, double height) {
    Comprobar();
    calls_.push_back(Call{"PaintPicture", path, x, y, Font, width, height});
    DispositivoTicket::PaintPicture(path, x, y, width, height);
}

void RecordingPrinter::EndDoc() {
    Comprobar();
    calls_.push_back(Call{"EndDoc", "", CurrentX, CurrentY, Font, 0, 0});
    DispositivoTicket::EndDoc();
}

void RecordingPrinter::Entregar(Papel papel) {
    Document doc;
    doc.paper = papel.Lineas();
    doc.opensDrawer = papel.AbreCajon();
    doc.layout = std::move(papel);
    documents_.push_back(std::move(doc));
    if (observer_) observer_(*this, documents_.back());
}

void RecordingPrinter::Clear() {
    calls_.clear();
    documents_.clear();
}

}  // namespace tpv
