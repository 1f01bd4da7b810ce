#pragma once
#include <cstdint>
#include <vector>

#include "printing/papel.hpp"

// The ESC/POS bytes of a ticket's paper: initialise (ESC @), code page 858
// (ESC t 19), then line by line each run of text at its column (ESC $), in
// its font (ESC M), size (GS !) and double strike (ESC G), ended by a line
// feed; pictures as raster images (GS v 0); the drawer's kick where the
// document asks for it; and at the end a feed and a cut (GS V). A document
// that only opens the drawer is sent without feed or cut.
namespace tpv {

using Bytes = std::vector<std::uint8_t>;

struct OpcionesEscPos {
    Bytes secuenciaCajon{27, 112, 0, 25, 250};  // ESC p 0 25 250
    int anchoPapelPuntos = 512;                 // 80 mm paper at 180 dpi
    int lineasAntesDelCorte = 4;
};

Bytes CodificarEscPos(const Papel& papel, const OpcionesEscPos& opciones = {});

}  // namespace tpv
