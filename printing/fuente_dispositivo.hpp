#pragma once
#include <string>

#include "printing/page_device.hpp"

// The device fonts of a ticket printer: fixed-pitch cells on a grid of dots
// at 180 dpi (8 twips a dot). The table of names is in page_device.hpp.
namespace tpv {

inline constexpr double kTwipsPorPunto = 8.0;  // 1440 twips / 180 dpi

struct FuenteDispositivo {
    char letra = 'A';          // 'A' or 'B'
    bool control = false;      // the control font: its "A" kicks the drawer
    int anchoPuntos = 12;      // one character at single size
    int altoLineaPuntos = 30;  // one line at single size
    int multAncho = 1;         // width multiplier, 1 to 8
    int multAlto = 1;          // height multiplier, 1 to 8

    // Twips of one character as it prints, and of one character at single
    // size (the unit of the paper's columns).
    double AnchoCaracter() const { return anchoPuntos * multAncho * kTwipsPorPunto; }
    double AnchoNormal() const { return anchoPuntos * kTwipsPorPunto; }
    double AltoLinea() const { return altoLineaPuntos * multAlto * kTwipsPorPunto; }
};

FuenteDispositivo FuenteDeDispositivo(const PrinterFont& fuente);

// The paper column of a position: x over the width of a normal character of
// the font, rounded half up, never below 0.
int ColumnaDePosicion(double x, const FuenteDispositivo& fuente);

}  // namespace tpv
