#include "printing/dispositivo_ticket.hpp"

#include "core/runtime/unicode.hpp"

namespace tpv {

double DispositivoTicket::TextWidth(const std::string& text) const {
    Comprobar();
    return static_cast<double>(unicode::Length(text)) * FuenteDeDispositivo(Font).AnchoCaracter();
}

double DispositivoTicket::TextHeight(const std::string&) const {
    Comprobar();
    return FuenteDeDispositivo(Font).AltoLinea();
}

void DispositivoTicket::Print(const std::string& text) {
    Comprobar();
    pendiente_.Imprimir(CurrentX, CurrentY, Font, text);
    CurrentX = 0;
    CurrentY += FuenteDeDispositivo(Font).AltoLinea();
}

void DispositivoTicket::PaintPicture(const std::string& path, double x, double y, double width, double height) {
    Comprobar();
    pendiente_.Dibujar(path, x, y, width, height);
}

void DispositivoTicket::EndDoc() {
    Comprobar();
    Papel papel = std::move(pendiente_);
    pendiente_.Limpiar();
    CurrentX = 0;
    CurrentY = 0;
    Entregar(std::move(papel));
}

}  // namespace tpv
