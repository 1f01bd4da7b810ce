#include "core/servicios/screen_fitter.hpp"

#include <algorithm>
#include <cmath>

namespace tpv {

namespace {

double Factor(double real, double diseno) {
    if (!(real > 0) || !(diseno > 0) || !std::isfinite(real) || !std::isfinite(diseno)) return 1.0;
    return real / diseno;
}

}  // namespace

ScreenFitter& ScreenFitter::Instancia() {
    static ScreenFitter instancia;
    return instancia;
}

void ScreenFitter::Ajustar(Connection&, Formulario& pantalla, double anchoPantalla, double altoPantalla,
                           double anchoDiseno, double altoDiseno) {
    factorAncho_ = Factor(anchoPantalla, anchoDiseno);
    factorAlto_ = Factor(altoPantalla, altoDiseno);
    const double letra = std::min(factorAncho_, factorAlto_);
    pantalla.width *= factorAncho_;
    pantalla.height *= factorAlto_;
    for (Control& c : pantalla.controles) {
        c.left *= factorAncho_;
        c.width *= factorAncho_;
        c.top *= factorAlto_;
        c.height *= factorAlto_;
        c.fontSize *= letra;
    }
}

}  // namespace tpv
