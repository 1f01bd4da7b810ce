#pragma once
#include <cstdint>
#include <string>

// Stock movements of a closed sale. Closing walks the sale's lines and hands
// each one to MoverStockLinea. In every sector but the bakery the line moves
// its product's own figures; in "PANADERIA" the sold unit is recorded and its
// components are consumed, first from the internal stock of opened material.
namespace tpv {

// productos.salida and productos.entrada; 0 with no row (NULL too).
double LeerSalida(std::int32_t codigo);
double LeerEntrada(std::int32_t codigo);
// productos.stock, 0 for NULL and with no row; `coste` gets the unit cost,
// NULL as 0.
double LeerStock(std::int32_t codigo, double& coste);

// True when the product has a recipe of components.
bool EsProductoElaborado(std::int32_t codigo);

// The next running number of today's movements in HistoricoStock: 1 for the
// first of the day.
std::int16_t SiguienteIndiceHistorico();

// One HistoricoStock row of a sold (or refunded) unit: the quantity without
// sign, the cost with the sign of the units.
void GrabarHistoricoVenta(std::int32_t codigo, const std::string& nombre, double unidades, std::int32_t ticket,
                          bool modoAbono);

// Consumes the product's components, or the product itself when it has no
// recipe; `indice` goes up by one for each movement.
void DescontarElaborado(std::int32_t codigo, double unidades, std::int32_t ticket, std::int16_t& indice);

// Moves one product: a product of its own (`esComponente` false) has its
// salida and stock moved and nothing more; a component is consumed from the
// internal stock when that holds more than the quantity, else from the
// general stock. `codPadre` is the composite product, -1 for the line's own.
void DescontarComponente(std::int32_t codigo, double cantidad, bool esComponente, std::int32_t ticket,
                         std::int16_t indice, std::int32_t codPadre);

// A component taken from the internal stock (movement 7, internal type 2).
void ConsumirStockInterno(std::int32_t codigo, double cantidad, std::int32_t ticket, std::int16_t indice,
                          std::int32_t codPadre);
// A component taken from the general stock (movement 5, internal type 1).
// The quantity leaves the general stock and is also added to the internal
// one, in full: the shop's figures have always been kept that way.
void ConsumirStockGeneral(std::int32_t codigo, double cantidad, std::int32_t ticket, std::int16_t indice,
                          std::int32_t codPadre);

// The stock of one line of a sale being closed under number `ticket`. In the
// bakery every line is recorded and consumed, whatever its kind; elsewhere a
// product line ("P") moves salida and stock and leaves one movement, and any
// other line moves nothing. In the bakery the caller takes `indice` from
// SiguienteIndiceHistorico before the first line.
void MoverStockLinea(std::int32_t codigo, const std::string& producto, double unidades, const std::string& tipoVenta,
                     std::int32_t ticket, bool modoAbono, std::int16_t& indice);

// The line flow of every sector but the bakery, for a product line.
void SalidaStockLinea(std::int32_t codigo, const std::string& producto, double unidades, std::int32_t ticket,
                      bool modoAbono);

}  // namespace tpv
