#pragma once
#include <cstdint>
#include <string>

#include "core/datos/recordset.hpp"

// Small lookups of the ticket: names of the employee, the customer, the
// payment method and the table of a sale, and the tip's concept. Each runs its
// own query on the connection it is given.
namespace tpv {

// The first five letters of the name and the initial of the surname;
// "Xxxxx X" when the employee is unknown.
std::string ObtenerNomEmpleado(Connection& cn, std::int32_t codigo);

// The name of a table; "" when the code is not above 0 or unknown.
std::string obtenerNomPedido_x_Mesa(Connection& cn, const std::string& codigo);

// Name and surname, with the tax id, the mobile telephone and the address
// given back; "Cliente Generico" and empty texts for a code not above 0 or
// unknown.
std::string ObtenerNomClientexCodigo(Connection& cn, std::int32_t codigo, std::string& nif, std::string& telefono,
                                     std::string& direccion);

// The name of a payment method; "" when the code is not above 0 or unknown.
std::string ObtenerNomFormaPago(Connection& cn, std::int32_t codigo);

// The number of the table a sale is served at: "Barra" by default; with no
// table row, the sale's order number when its recordset is given.
std::string NumeroMesaDeVenta(Connection& cn, std::int32_t codigo, Recordset* venta);

// The tip as the shop configures it (row UtilizaConceptoPropina).
struct ConceptoPropina {
    double porcentaje = 0.0;
    std::string base = "TOTAL";  // "TOTAL": a share of the total; another word: of the base
    std::string etiqueta;        // "" when there is no tip row
};
ConceptoPropina ObtenerConceptoPropina(Connection& cn);

// A blank tip line is wanted on pre-tickets (row LineaPropinas holds "SI").
bool HayLineaPropinas(Connection& cn);

}  // namespace tpv
