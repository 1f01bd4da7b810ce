#include "sale/descuento_venta.hpp"

#include "core/runtime/conversiones.hpp"
#include "core/servicios/tax_calculator.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/grid_venta.hpp"
#include "sale/lineas_venta.hpp"

namespace tpv {

namespace {

// The taxes of an amount at the row's rates, each rounded to the shop's
// decimals. The second is reckoned at the row's second rate whether or not a
// second tax is in force when `segundoSiempre`, else only where it is.
void Impuestos(const Grid& grid, long fila, double importe, LineaTemp& l, bool segundoSiempre) {
    const Sesion& s = sesion();
    const TaxCalculator& calculo = TaxCalculator::Instancia();
    const int decimales = s.opciones.NumDecimales;
    l.tipoImpuesto = NumeroCelda(grid, fila, kColTipoIva);
    l.tipoImpuesto2 = NumeroCelda(grid, fila, kColImpuesto2);
    l.impuesto = Fmt(calculo.CalcularImpuesto(importe, l.tipoImpuesto, s.opciones.iva), decimales);
    l.impuesto2 = 0;
    if (segundoSiempre || s.configuracionregional.segundoimpuesto)
        l.impuesto2 = Fmt(calculo.CalcularImpuesto(importe, l.tipoImpuesto2, s.opciones.iva), decimales);
}

LineaTemp LineaDeFila(const Grid& grid, long fila, std::int32_t numero) {
    LineaTemp l;
    l.numero = numero;
    l.tipo = grid.TextMatrix(fila, kColTipo);
    l.codigo = CInt(Value(grid.TextMatrix(fila, kColCodigo)));
    l.nombre = grid.TextMatrix(fila, kColNombre);
    l.unidades = NumeroCelda(grid, fila, kColUnidades);
    l.precio = NumeroCelda(grid, fila, kColImporte);
    l.descuento = NumeroCelda(grid, fila, kColDescuento);
    l.precioUnit = NumeroCelda(grid, fila, kColPrecio);
    l.codEmpleados = grid.TextMatrix(fila, kColCodEmpleado);
    l.nombresEmpleados = grid.TextMatrix(fila, kColEmpleado);
    l.codFamilia = CLng(Value(NumeroCelda(grid, fila, kColCodFamilia)));
    return l;
}

}  // namespace

void AplicarDescuentoGrid(Grid& grid, std::int32_t numero, double& porcentaje) {
    const Sesion& s = sesion();
    const int decimales = s.opciones.NumDecimales;
    for (long fila = 1; fila < grid.Rows(); ++fila) {
        if (grid.TextMatrix(fila, kColPvp).empty()) continue;
        grid.SetTextMatrix(fila, kColPorcentaje, FormatNumber(Value(porcentaje), decimales));
        const double acumulado = NumeroCelda(grid, fila, kColDescuento);
        if (s.opciones.iva) {
            const double base = NumeroCelda(grid, fila, kColImporte);
            const double descuento = porcentaje / 100 * base;
            const double nuevo = base - descuento;
            grid.SetTextMatrix(fila, kColImporte, FormatNumber(Value(nuevo), decimales));
            grid.SetTextMatrix(fila, kColDescuento, CStr(Value(acumulado + descuento)));
            // The second tax follows the row's second rate even in a shop
            // that doesn't charge one, as the sale's discount always did.
            LineaTemp l = LineaDeFila(grid, fila, numero);
            Impuestos(grid, fila, nuevo, l, true);
            GrabarLineaTemp(l, false, FilaCorta(fila));
        } else {
            // The unit price is net here: the line's amount is rebuilt from
            // it with its taxes on top.
            const double base = NumeroCelda(grid, fila, kColPrecio);
            const double descuento = porcentaje / 100 * base;
            const double nuevo = base - descuento;
            grid.SetTextMatrix(fila, kColPrecio, FormatNumber(Value(nuevo), decimales));
            LineaTemp l = LineaDeFila(grid, fila, numero);
            const double neto = NumeroCelda(grid, fila, kColPrecio) * l.unidades;
            Impuestos(grid, fila, neto, l, false);
            grid.SetTextMatrix(fila, kColImporte, FormatNumber(Value(neto + l.impuesto + l.impuesto2), decimales));
            grid.SetTextMatrix(fila, kColDescuento, CStr(Value(acumulado + descuento)));
            l.precio = NumeroCelda(grid, fila, kColImporte);
            l.descuento = NumeroCelda(grid, fila, kColDescuento);
            GrabarLineaTempSinOrden(l);
        }
    }
}

}  // namespace tpv
