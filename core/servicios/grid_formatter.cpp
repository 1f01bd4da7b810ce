#include "core/servicios/grid_formatter.hpp"

#include <algorithm>
#include <vector>

#include "core/datos/tipos.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/valor_columna.hpp"

namespace tpv {

namespace {

std::vector<std::string> Partes(const std::string& texto) {
    std::vector<std::string> partes;
    if (texto.empty()) return partes;
    std::size_t inicio = 0;
    while (true) {
        std::size_t fin = texto.find(';', inicio);
        if (fin == std::string::npos) {
            partes.push_back(texto.substr(inicio));
            break;
        }
        partes.push_back(texto.substr(inicio, fin - inicio));
        inicio = fin + 1;
    }
    if (partes.back().empty()) partes.pop_back();
    return partes;
}

Alineacion LeerAlineacion(const std::string& palabra) {
    const std::string p = datos::Minusculas(Recortar(palabra));
    if (p == "centrado" || p == "centro" || p == "centrada") return Alineacion::Centro;
    if (p == "derecha") return Alineacion::Derecha;
    return Alineacion::Izquierda;
}

}  // namespace

GridFormatter& GridFormatter::Instancia() {
    static GridFormatter instancia;
    return instancia;
}

void GridFormatter::Formatear(Grid& grid, const std::string& titulos, const std::string& columnas, const std::string&) {
    const std::vector<std::string> cabeceras = Partes(titulos);
    const std::vector<std::string> formatos = Partes(columnas);
    const std::size_t total = std::max(cabeceras.size(), formatos.size());
    grid.SetCols(static_cast<long>(total));
    for (std::size_t i = 0; i < total; ++i) {
        const long c = static_cast<long>(i);
        if (grid.FixedRows() > 0) grid.SetTextMatrix(0, c, i < cabeceras.size() ? cabeceras[i] : "");
        if (i >= formatos.size()) continue;
        const std::string& f = formatos[i];
        const std::size_t barra = f.find('/');
        const std::string ancho = Recortar(f.substr(0, barra));
        double x = 0;
        if (!ancho.empty() && !LeerNumeroFieldList(ancho, x))
            throw RuntimeError(kErrTypeMismatch, "No coinciden los tipos: ancho de columna '" + ancho + "'");
        grid.SetColWidth(c, std::max(0.0, x));
        grid.SetColAlignment(c,
                             barra == std::string::npos ? Alineacion::Izquierda : LeerAlineacion(f.substr(barra + 1)));
    }
}

}  // namespace tpv
