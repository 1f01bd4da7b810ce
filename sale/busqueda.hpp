#pragma once
#include <cstdint>
#include <string>

// Turning a typed or scanned code into a product, and the small lookups
// that selling needs: the tariff's price, a pending customer order, the
// leading zeros of a scanned code and the test of a refunded sale.
namespace tpv {

// What a lookup hands back besides the code. Each lookup clears it first.
struct ProductoEncontrado {
    std::string nombre;
    double stock = 0;
    double pedido = 0;    // units of the newest pending order
    std::string entrega;  // its delivery date, "" when none
    std::string UbicacionPrincipal;
    std::string imagen;
    bool modoventa = false;  // sold by weight
    double precio = 0;
};

// Result of BuscarPorCodigoBarras for a code that stands on several products.
inline constexpr std::int16_t kCodigoDuplicado = -100;

// By the code on the label or an extra bar code, among the products sold at
// the till. -1 when nothing matches, kCodigoDuplicado (after a box naming
// the products) when several do, else the product's code, which must fit 16
// bits. A code with an apostrophe breaks the statement: run-time error.
std::int16_t BuscarPorCodigoBarras(const std::string& codigo, ProductoEncontrado& producto);

// By the internal code, whether or not the till shows the product; -1 when
// it isn't there or is withdrawn.
std::int32_t BuscarPorCodigo(std::int32_t codigo, ProductoEncontrado& producto);

// For the line editor: by the internal code, withdrawn products too; also
// gives the code on the label. -1 when it isn't there.
std::int32_t BuscarParaLupa(std::int32_t codigo, ProductoEncontrado& producto, std::string& codigocliente);

// Units of the newest customer order of the product, when it is delivered
// today or later, with its date in `entrega`; 0 and "" otherwise.
double LeerPedidoPendiente(std::int32_t codigo, std::string& entrega);

// The product's price in the tariff in force; -1 when the tariff has none.
double PrecioTarifa(std::int32_t codigo);

// The code without its leading zeros, always keeping the last character:
// "00120" is "120", "000" is "0".
std::string QuitarCerosIzquierda(const std::string& codigo);

// Whether the closed sale `factura` sold the product `codigo` (given as
// the text the screen holds).
bool ProductoEnFactura(std::int32_t factura, const std::string& codigo);

}  // namespace tpv
