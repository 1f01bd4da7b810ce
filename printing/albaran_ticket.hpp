#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/datos/connection.hpp"
#include "core/runtime/value.hpp"

// The template tickets: the delivery note of an open sale, and (vales.hpp)
// the discount voucher and the gift ticket. Their head and foot come from the
// lines of `DatosImpresion`, which hold markers in angle brackets; their
// middle is a fixed layout on the ticket printer. The module keeps the
// document it prints in module-level state.
namespace tpv::ImprimirAlbaran {

// One line of the document, as text.
struct LineaAlbaran {
    std::string producto, unidades, Precio_Unit, precio, descuento, impuesto;
};

struct ImpuestoAlbaran {
    std::string tipoimpuesto;
    double val_impuesto = 0.0;
    double base = 0.0;
};

// What the module knows of the printer, the shop's settings and the document.
struct Modulo {
    // Printer and settings.
    std::string nombreFuente;
    std::int16_t numCaracteres = 35;
    std::int32_t modelo = 0;
    std::int16_t numDecimales = 2;
    bool quitarPUnitario = false;
    std::int32_t lineasFinales = 0;
    std::string nombreImpuesto = "IVA";
    double anchoLinea = 0.0;
    std::string guiones;
    // Lines 1 to 17 of DatosImpresion (index 0 unused).
    std::array<std::string, 18> lineas;

    // The document: head values, customer, lines and taxes.
    std::string entregaTexto, cambioTexto;
    std::string numAlbaran, empleado, total = "0", recargo = "0", pago, descuento, impuesto;
    std::string clienteNombre, clienteApellidos, clienteNif, clienteTelefono;
    std::vector<LineaAlbaran> detalle;
    std::vector<ImpuestoAlbaran> impuestos;
};

// The state of the module.
Modulo& Estado();

// Prints the delivery note of the open sale `numero` on the printer named
// `impresora`; with both money texts given, the money handed over and the
// change too. Failures of the printer pass to the caller.
void ImprimirAlbaranTicket(Connection& conexion, const std::string& impresora, std::int32_t numero,
                           const std::string& cambio, const std::string& entrega);

// A template text with its markers (<fecha>, <TOTAL>, <Nombre del Cliente>...)
// replaced by the document's values; an unknown marker gives "".
std::string ExpandirMarcadores(const std::string& texto);

// Three columns, each 0.3 of the line: the first left-aligned, the others
// right-aligned.
std::string LineaTresColumnas(std::string primera, std::string segunda, std::string tercera);

// Shared with the voucher and the gift ticket.
void LeerImpresora(Connection& conexion, const std::string& impresora);
// Makes the named printer current and measures the line and the separator.
void PrepararImpresora(const std::string& impresora);
// Reads lines 8 to 17 of DatosImpresion (the rows with numlinea above 7, in
// table order) and the count of closing blank lines.
void LeerLineasPie(Connection& conexion);
// A long text in pieces of a line's characters, as many as its width asks for.
void ImprimirEnPiezas(const std::string& texto);
void ImprimirEn(double x, const std::string& texto);
// The shop's head: line 1 large, then lines 2 to `ultima` at the usual size.
void ImprimirLineasTienda(int ultima);
// Prints without moving to the next line.
void ImprimirSinSalto(double x, const std::string& texto);

}  // namespace tpv::ImprimirAlbaran
