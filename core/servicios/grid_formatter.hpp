#pragma once
#include <string>

#include "core/servicios/formulario.hpp"

namespace tpv {

// Sets up a grid's columns from two texts:
// - `titulos`: the headers, ";" between columns;
// - `columnas`: each column as width "/" alignment, ";" between them:
//   "2600/izquierda;800/Centrado;0/Izquierda;". The width (twips) may carry
//   a decimal comma; 0 hides the column. Alignments "izquierda", "centrado"
//   and "derecha", in any case; none or an unknown word is left.
// A final ";" opens no column. The grid gets as many columns as the longer
// of the two lists; the titles go into the heading row. A width that isn't
// a number is the run-time error 13. `extra` is not used.
class GridFormatter {
public:
    GridFormatter() = default;
    static GridFormatter& Instancia();

    void Formatear(Grid& grid, const std::string& titulos, const std::string& columnas, const std::string& extra = "");
};

}  // namespace tpv
