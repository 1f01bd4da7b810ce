#include "core/servicios/zoom_panel.hpp"

namespace tpv {

ZoomPanel& ZoomPanel::Instancia() {
    static ZoomPanel instancia;
    return instancia;
}

void ZoomPanel::Aplicar(Connection&, Formulario& pantalla, bool ajusteLetra) {
    const double objetivo = ajusteLetra ? kFactorLetra : 1.0;
    const double actual = pantalla.zoomLetra > 0 ? pantalla.zoomLetra : 1.0;
    if (objetivo == actual) return;
    for (Control& c : pantalla.controles) c.fontSize *= objetivo / actual;
    pantalla.zoomLetra = objetivo;
}

}  // namespace tpv
