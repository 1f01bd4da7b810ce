#include "sale/linea_editada.hpp"

#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/tax_calculator.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/anulacion.hpp"
#include "sale/grid_venta.hpp"
#include "sale/lineas_venta.hpp"

namespace tpv {

void GrabarLineaEditada(const Grid& grid, long fila, std::int32_t numero, const std::string& tipo) {
    const Sesion& s = sesion();
    const bool iva = s.opciones.iva;
    auto celda = [&](long columna) { return NumeroCelda(grid, fila, columna); };
    const double unidades = celda(kColUnidades);
    const double unitario = celda(iva ? kColPvp : kColPrecio);
    const double tipoIva = celda(kColTipoIva);
    double importe = unidades * unitario - unidades * celda(kColPorcentaje);
    if (!iva) importe = unidades * unitario / (1 + tipoIva / 100);

    const TaxCalculator& calculo = TaxCalculator::Instancia();
    LineaTemp l;
    l.numero = numero;
    l.tipo = tipo;
    l.codigo = CInt(Value(grid.TextMatrix(fila, kColCodigo)));
    l.nombre = Trim(grid.TextMatrix(fila, kColNombre));
    l.unidades = unidades;
    l.precio = celda(kColImporte);
    l.descuento = iva ? celda(kColDescuento) : 0.0;
    l.precioUnit = unitario;
    l.tipoImpuesto = tipoIva;
    l.impuesto = Fmt(calculo.CalcularImpuesto(importe, tipoIva, iva), 2);
    l.tipoImpuesto2 = celda(kColImpuesto2);
    if (s.configuracionregional.segundoimpuesto)
        l.impuesto2 = Fmt(calculo.CalcularImpuesto(importe, l.tipoImpuesto2, iva), 2);
    l.codEmpleados = grid.TextMatrix(fila, kColCodEmpleado);
    l.nombresEmpleados = grid.TextMatrix(fila, kColEmpleado);
    l.codFamilia = CLng(Value(celda(kColCodFamilia)));
    if (iva)
        GrabarLineaTemp(l, false, FilaCorta(fila));
    else
        GrabarLineaTempSinOrden(l);
}

void EliminoItemGrid(Grid& grid, long fila, std::int32_t numero) {
    if (grid.Rows() == 2 && fila == 1) {
        for (long c = 0; c < grid.Cols(); ++c) {
            grid.SetTextMatrix(fila, c, "");
            grid.SetCellBackColor(fila, c, 0xFFFFFF);
        }
        return;
    }
    grid.RemoveItem(fila);
    RenumerarOrden(FilaCorta(fila), numero, false);
}

}  // namespace tpv
