#pragma once
#include <string>
#include <vector>

namespace tpv {

// What stands behind one button of a touch panel: six texts, in the order the
// panel control takes them. A pseudo-entry ("Sin Proveedores", "General",
// "Elaboracion Propia") carries the code "-1".
struct ButtonRecord {
    std::string TextoSuperior;  // text above the picture; tariffs show their name here
    std::string Color;          // decimal text of the colour
    std::string Imagen;         // full path of a picture, or ""
    std::string Texto;          // the caption
    std::string Quinto;         // kept for the panel; the till never sets it
    std::string Codigo;         // text of the code behind the button
};

// A panel's list, indexed from 0.
using PanelRegistros = std::vector<ButtonRecord>;

}  // namespace tpv
