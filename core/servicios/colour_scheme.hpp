#pragma once
#include <string>

#include "core/datos/connection.hpp"
#include "core/servicios/formulario.hpp"

namespace tpv {

// The suite's fixed colour schemes, 0 to 3 (an unknown number takes scheme 0).
// Colours come as decimal texts of 0xBBGGRR numbers, as screens store them.
// Made by a routine for its own use.
class ColourScheme {
public:
    ColourScheme();

    static constexpr int kNumEsquemas = 4;

    // "fore|back": the second part colours the tariff "General".
    std::string ColoresTarifaGeneral(Connection& conexion, int esquema);
    // The four generic colours of panel buttons.
    std::string Color1(Connection& conexion, int esquema);
    std::string Color2(Connection& conexion, int esquema);
    std::string Color3(Connection& conexion, int esquema);
    std::string Color4(Connection& conexion, int esquema);
    // Back colour of an entry with the focus.
    std::string ColorFoco(Connection& conexion, int esquema);
    // Colour of a highlighted element.
    std::string ColorResalte(Connection& conexion, int esquema);

    // Paints the screen and each control by its kind.
    void Colorear(Formulario& pantalla, int esquema, Connection& conexion);
};

}  // namespace tpv
