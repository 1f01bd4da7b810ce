#pragma once
#include "core/datos/connection.hpp"
#include "core/servicios/formulario.hpp"

namespace tpv {

// Fits a screen drawn for one size to the display: positions and sizes scale
// by the ratio of the real to the designed size, each axis on its own, and
// fonts by the smaller of the two ratios so that text still fits.
class ScreenFitter {
public:
    static ScreenFitter& Instancia();

    // The factors of the last Ajustar (1 before the first).
    double FactorAncho() const { return factorAncho_; }
    double FactorAlto() const { return factorAlto_; }

    // A size that isn't positive gives the factor 1 on its axis.
    void Ajustar(Connection& conexion, Formulario& pantalla, double anchoPantalla, double altoPantalla,
                 double anchoDiseno, double altoDiseno);

private:
    ScreenFitter() = default;
    double factorAncho_ = 1.0;
    double factorAlto_ = 1.0;
};

}  // namespace tpv
