#include "core/sesion/pantalla.hpp"

namespace tpv {

namespace {

std::unique_ptr<Pantalla>& Actual() {
    static std::unique_ptr<Pantalla> pantalla;
    return pantalla;
}

}  // namespace

Pantalla& PantallaActual() {
    static PantallaFija sinDisplay(1024, 768);
    auto& p = Actual();
    return p ? *p : static_cast<Pantalla&>(sinDisplay);
}

void FijarPantalla(std::unique_ptr<Pantalla> pantalla) { Actual() = std::move(pantalla); }

}  // namespace tpv
