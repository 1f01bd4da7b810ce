#pragma once
#include <cstdint>
#include <string>

#include "core/servicios/formulario.hpp"
#include "sale/grid_venta.hpp"

// The open sales of this till: the panel that lists them, bringing one back
// onto the screen, and what closing asks of a sale.
namespace tpv {

// Rebuilds the session's PanelVentas from the open sales of this terminal
// that are neither quotes nor delivery notes: one button each, and one spare
// empty record at the end. With none, the panel keeps a single empty record.
// A sale that modifies a closed one shows that one's number under
// "Modificando " and takes the scheme's highlight colour.
void CargarPanelVentas();

// Adds the lines of the open sale to the sale grid, in the order the
// database gives them. A line with no price and no discount comes back as a
// gift, painted so; a deposit line sets `ventaDinDep`, which is otherwise
// left as it is.
void MostrarLineasVenta(std::int32_t numero, Grid& grid, bool& ventaDinDep);

// True when the open sale is modifying a closed one (it has its row in
// ventasdevolucion).
bool EsVentaModificada(std::int32_t numero);
// The number of the closed sale it modifies; 0 when it modifies none.
std::int32_t FacturaOrigen(std::int32_t numero);

// The employee and customer of an open sale, as texts: the employee's code
// and name, the customer's code and "name surnames" (" " without a
// customer). Left as they are when the sale isn't there.
void LeerDatosVenta(std::int32_t numero, std::string& codigoEmpleado, std::string& empleado, std::string& cliente,
                    std::string& nombreCliente);

// What the customer still owes on open debts, less what was paid against
// them, rounded to the money decimals; true when it is above 0.
bool DeudaCliente(const std::string& cliente, double& deuda);

}  // namespace tpv
