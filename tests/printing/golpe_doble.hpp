#pragma once
#include <string>

#include "printing/page_device.hpp"

namespace tpv::prueba {

// A head the way the tickets print it: at 14 points, centred on a line of
// 35 characters, struck twice a little apart to look bold.
inline void ImprimirCabeceraEnNegrita(PageDevice& p, const std::string& texto) {
    const double anchoLinea = p.TextWidth(std::string(35, '8'));
    p.Font.Size = 14;
    const double x = anchoLinea / 2 - p.TextWidth(texto) / 2;
    const double y = p.CurrentY;
    p.CurrentX = x;
    p.Print(texto);
    p.CurrentY = y;
    p.CurrentX = x + 10;
    p.Print(texto);
    p.Font.Size = 9;
}

}  // namespace tpv::prueba
