#include "sale/grid_venta.hpp"

#include "core/runtime/conversiones.hpp"

namespace tpv {

Grid NuevaGridVenta() {
    Grid grid(2, kColumnasVenta);
    grid.nombre = "FGCaja";
    return grid;
}

double NumeroCelda(const Grid& grid, long fila, long columna) {
    const std::string& texto = grid.TextMatrix(fila, columna);
    return texto.empty() ? 0.0 : CDbl(texto);
}

std::int16_t FilaCorta(long fila) { return CInt(Value(fila)); }

}  // namespace tpv
