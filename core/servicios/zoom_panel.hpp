#pragma once
#include "core/datos/connection.hpp"
#include "core/servicios/formulario.hpp"

namespace tpv {

// Larger letters for those who need them: with the flag on, every font of the
// screen is enlarged by a fixed factor; with it off, fonts go back to their
// size. Applying the same flag twice changes nothing more.
class ZoomPanel {
public:
    static constexpr double kFactorLetra = 1.25;

    static ZoomPanel& Instancia();

    void Aplicar(Connection& conexion, Formulario& pantalla, bool ajusteLetra);

private:
    ZoomPanel() = default;
};

}  // namespace tpv
