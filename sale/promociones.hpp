#pragma once
#include <cstdint>
#include <string>

#include "core/runtime/value.hpp"
#include "core/servicios/formulario.hpp"

// Promotions of the table descuentos in force today, and the gift line that
// a fixed-price promotion brings.
namespace tpv {

// The promotion of the product (or of all products) in force today: its
// `tipo`, or -1 when there is none. With several, the first row the
// database yields rules. Type 1 gives `dto` (percent off); type 2 gives
// `codRegalo` and `precioPromo`; other types give nothing more.
std::int16_t BuscarPromocion(std::int32_t codigo, double& dto, std::int32_t& codRegalo, double& precioPromo);

// A line of its own for the gift `codRegalo`, at no price, painted as a
// gift. A gift that names no product is left out, silently.
void AnadirLineaRegalo(std::int32_t numero, std::int32_t codRegalo, std::int16_t unidades, const std::string& etiqueta,
                       const std::string& tipo, Grid& grid, const std::string& codigoEmpleado,
                       const std::string& nombreEmpleado, std::int32_t invitado);

// The cells of a weighed or gift line that say who sold it, what kind of
// line it is, its code and its tax rate; no percentage off.
void PonerCeldasDeLinea(Grid& grid, long fila, const std::string& nombreCorto, const std::string& tipo,
                        std::int32_t invitado, const std::string& codigoEmpleado, std::int32_t codigo,
                        const Value& iva);

// The first row with no name, or a new last row.
long FilaLibreGrid(Grid& grid);

// Paints every cell of the row with the colour of an entry with the focus,
// leaving that row as the grid's current one.
void ColorearFilaRegalo(std::int16_t fila, Grid& grid);

}  // namespace tpv
