#include "core/servicios/colour_scheme.hpp"

#include <array>

#include "core/datos/tipos.hpp"

namespace tpv {

namespace {

// The platform's colour number: red in the low byte.
constexpr long Rgb(int r, int g, int b) { return (static_cast<long>(b) << 16) | (g << 8) | r; }

struct Esquema {
    long fondo, texto;           // screens, labels and frames
    long entrada, textoEntrada;  // entries, lists and grids
    long boton, textoBoton;      // command buttons
    long color[4];               // the generic colours of panel buttons
    long foco, resalte;
    long tarifaTexto, tarifaFondo;  // the tariff "General"
};

// clang-format off
// Each row: background, text, entry, entry text, button, button text, the four
// generic colours, focus, highlight, and the tariff "General" text and back.
constexpr std::array<Esquema, ColourScheme::kNumEsquemas> kEsquemas{{
    // 0: classic greys
    {Rgb(236, 233, 216), Rgb(0, 0, 0), Rgb(255, 255, 255), Rgb(0, 0, 0), Rgb(212, 208, 200), Rgb(0, 0, 0),
     {Rgb(192, 255, 192), Rgb(255, 255, 192), Rgb(192, 224, 255), Rgb(255, 192, 192)},
     Rgb(255, 255, 128), Rgb(255, 128, 0), Rgb(0, 0, 0), Rgb(192, 255, 192)},
    // 1: blue
    {Rgb(200, 220, 240), Rgb(0, 0, 64), Rgb(255, 255, 255), Rgb(0, 0, 64), Rgb(170, 200, 230), Rgb(0, 0, 64),
     {Rgb(160, 200, 255), Rgb(200, 230, 255), Rgb(170, 240, 240), Rgb(220, 200, 255)},
     Rgb(255, 255, 160), Rgb(0, 90, 200), Rgb(0, 0, 64), Rgb(160, 200, 255)},
    // 2: green
    {Rgb(210, 235, 210), Rgb(0, 48, 0), Rgb(255, 255, 255), Rgb(0, 48, 0), Rgb(180, 220, 180), Rgb(0, 48, 0),
     {Rgb(170, 230, 170), Rgb(230, 245, 180), Rgb(190, 230, 220), Rgb(245, 215, 170)},
     Rgb(255, 250, 170), Rgb(0, 140, 60), Rgb(0, 48, 0), Rgb(170, 230, 170)},
    // 3: dark
    {Rgb(48, 48, 48), Rgb(255, 255, 255), Rgb(240, 240, 240), Rgb(0, 0, 0), Rgb(80, 80, 80), Rgb(255, 255, 255),
     {Rgb(60, 120, 60), Rgb(130, 110, 40), Rgb(50, 90, 140), Rgb(140, 60, 60)},
     Rgb(255, 230, 120), Rgb(255, 160, 0), Rgb(255, 255, 255), Rgb(60, 120, 60)},
}};
// clang-format on

const Esquema& Elegir(int esquema) {
    return kEsquemas[esquema >= 0 && esquema < ColourScheme::kNumEsquemas ? static_cast<std::size_t>(esquema) : 0];
}

std::string Texto(long color) { return std::to_string(color); }

bool Es(const std::string& tipo, const char* nombre) { return datos::IgualesSinCaso(tipo, nombre); }

}  // namespace

ColourScheme::ColourScheme() = default;

std::string ColourScheme::ColoresTarifaGeneral(Connection&, int esquema) {
    const Esquema& e = Elegir(esquema);
    return Texto(e.tarifaTexto) + "|" + Texto(e.tarifaFondo);
}

std::string ColourScheme::Color1(Connection&, int esquema) { return Texto(Elegir(esquema).color[0]); }
std::string ColourScheme::Color2(Connection&, int esquema) { return Texto(Elegir(esquema).color[1]); }
std::string ColourScheme::Color3(Connection&, int esquema) { return Texto(Elegir(esquema).color[2]); }
std::string ColourScheme::Color4(Connection&, int esquema) { return Texto(Elegir(esquema).color[3]); }
std::string ColourScheme::ColorFoco(Connection&, int esquema) { return Texto(Elegir(esquema).foco); }
std::string ColourScheme::ColorResalte(Connection&, int esquema) { return Texto(Elegir(esquema).resalte); }

void ColourScheme::Colorear(Formulario& pantalla, int esquema, Connection&) {
    const Esquema& e = Elegir(esquema);
    pantalla.backColor = e.fondo;
    pantalla.foreColor = e.texto;
    for (Control& c : pantalla.controles) {
        if (Es(c.tipo, "TextBox") || Es(c.tipo, "ComboBox") || Es(c.tipo, "ListBox") || Es(c.tipo, "Grid")) {
            c.backColor = e.entrada;
            c.foreColor = e.textoEntrada;
        } else if (Es(c.tipo, "CommandButton")) {
            c.backColor = e.boton;
            c.foreColor = e.textoBoton;
        } else if (Es(c.tipo, "Label") || Es(c.tipo, "Frame") || Es(c.tipo, "CheckBox") || Es(c.tipo, "OptionButton")) {
            c.backColor = e.fondo;
            c.foreColor = e.texto;
        }
        // Panels of buttons, pictures and the like keep colours of their own.
    }
}

}  // namespace tpv
