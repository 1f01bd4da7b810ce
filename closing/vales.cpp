#include "closing/vales.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/tax_calculator.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/sesion.hpp"
#include "core/sesion/visor.hpp"
#include "printing/vales.hpp"
#include "sale/grid_venta.hpp"
#include "sale/lineas_venta.hpp"

namespace tpv {

namespace {

// A number for SQL text, with the dot.
std::string NumeroSql(double x) { return Replace(CStr(Value(x)), ",", "."); }

bool EsNumeroDeVale(const std::string& numero) {
    if (numero.empty() || numero.size() > 9) return false;
    for (char c : numero)
        if (c < '0' || c > '9') return false;
    return true;
}

}  // namespace

// A voucher that never expires carries 01/01/1900 as its last day.
bool HayValesAplicables(double total) {
    const std::string hoy = Format(Value(Date()), "mm/dd/yyyy");
    Recordset rs;
    lectura::Abrir(rs, "Select *   from vales_descuento  where desde<=#" + hoy + "# and (hasta >=#" + hoy +
                           "# or hasta =#01/01/1900#) and estado =0  and impminproxcompra <= " + NumeroSql(total));
    const bool hay = !rs.Eof();
    rs.Close();
    return hay;
}

bool BuscarValeAplicable(const std::string& numero, const std::string& importe, double& descuento) {
    if (!EsNumeroDeVale(numero)) return false;
    const std::string hoy = Format(Value(Date()), "mm/dd/yyyy");
    Recordset rs;
    lectura::Abrir(rs, "Select *   from vales_descuento  where num_Factura = " + numero + " and desde<=#" + hoy +
                           "# and (hasta >=#" + hoy + "# or hasta = #01/01/1900#) and estado =0  and " +
                           "impminproxcompra <= " + importe);
    const bool hay = !rs.Eof();
    if (hay) descuento = CDbl(rs["descuento"]);
    rs.Close();
    return hay;
}

void AplicarPorcentajeALineas(double porcentaje, Grid& grid, std::int32_t numeroVenta) {
    const Sesion& s = sesion();
    const int decimales = s.opciones.NumDecimales;
    const TaxCalculator& calculo = TaxCalculator::Instancia();
    for (long fila = 1; fila < grid.Rows() && !grid.TextMatrix(fila, kColNombre).empty(); ++fila) {
        grid.SetTextMatrix(fila, kColPorcentaje, CStr(Value(porcentaje)));
        const double importe = NumeroCelda(grid, fila, kColImporte);
        const double base = NumeroCelda(grid, fila, kColPrecio);
        const double rebaja = porcentaje / 100 * importe;
        grid.SetTextMatrix(fila, kColImporte, FormatNumber(Value(importe - rebaja), decimales));
        // The taxes come from the catalogue price less the discount.
        const double neto = base - rebaja;
        LineaTemp l;
        l.numero = numeroVenta;
        l.tipo = grid.TextMatrix(fila, kColTipo);
        l.codigo = CInt(Value(grid.TextMatrix(fila, kColCodigo)));
        l.nombre = grid.TextMatrix(fila, kColNombre);
        l.unidades = NumeroCelda(grid, fila, kColUnidades);
        l.precio = NumeroCelda(grid, fila, kColImporte);
        l.descuento = rebaja;
        l.precioUnit = base;
        l.tipoImpuesto = NumeroCelda(grid, fila, kColTipoIva);
        l.impuesto = Fmt(calculo.CalcularImpuesto(neto, l.tipoImpuesto, s.opciones.iva), decimales);
        l.tipoImpuesto2 = NumeroCelda(grid, fila, kColImpuesto2);
        l.impuesto2 = Fmt(calculo.CalcularImpuesto(neto, l.tipoImpuesto2, s.opciones.iva), decimales);
        l.codEmpleados = grid.TextMatrix(fila, kColCodEmpleado);
        l.nombresEmpleados = grid.TextMatrix(fila, kColEmpleado);
        l.codFamilia = CLng(Value(NumeroCelda(grid, fila, kColCodFamilia)));
        GrabarLineaTemp(l, false, FilaCorta(fila));
        if (s.VisorActivo)
            VisorDelPuesto().MostrarEnVisor(grid.TextMatrix(fila, kColNombre), grid.TextMatrix(fila, kColImporte));
    }
}

void ActualizarValeUsado(double resto, double importe, std::int32_t numero) {
    Sesion& s = sesion();
    const std::string vale = CStr(Value(numero));
    Recordset rs;
    lectura::AbrirParaCambiar(rs, "select descuento,estado,hasta,impMinProxCompra from vales_descuento where "
                                  "num_factura=" + vale + " and descuento = " + NumeroSql(importe));
    // Another till spent it first: its value is no longer the one applied.
    if (rs.Eof()) return;
    rs["descuento"] = Value(resto);
    if (resto != 0) {
        // The same number carries the rest, with its dates as they were.
        ImprimirAlbaran::ImprimirValeDescuento(s.Conexion, s.ImpresoraTickets, vale, FormatNumber(Value(resto)),
                                               Format(rs["hasta"].Value(), "dd/mm/yyyy"),
                                               FormatNumber(rs["impMinProxCompra"].Value()));
    } else {
        rs["estado"] = Value(-1);
    }
    rs.Update();
    rs.Close();
}

}  // namespace tpv
