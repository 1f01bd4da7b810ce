#include "sale/peso.hpp"

#include "core/runtime/conversiones.hpp"
#include "core/servicios/tax_calculator.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/linea_comun.hpp"
#include "sale/lineas_venta.hpp"
#include "sale/promociones.hpp"

namespace tpv {

void AnadirLineaPeso(std::int32_t numero, std::int32_t codigo, double peso, double& importe,
                     [[maybe_unused]] const std::string& etiqueta, const std::string& tipo,
                     const std::string& codigoEmpleado, const std::string& nombreEmpleado, std::int32_t invitado,
                     ControlesVenta& controles) {
    const Sesion& s = sesion();
    const TaxCalculator& tc = TaxCalculator::Instancia();
    const bool iva = s.opciones.iva;
    // Weighed goods have no promotions: the answer is asked for and left.
    double dto = 0, precioPromo = 0;
    std::int32_t codRegalo = -1;
    BuscarPromocion(codigo, dto, codRegalo, precioPromo);
    if (controles.ModoAbono) importe = -importe;

    ArticuloVenta a;
    if (!LeerArticulo("Productos", codigo, a)) return;
    Grid& grid = controles.FGCaja;
    const long fila = FilaLibreGrid(grid);  // never the line of an earlier weighing
    const std::string nombreCorto = NombreCorto(nombreEmpleado);

    // The unit price follows from the amount; in a refund only the amount
    // has its sign changed yet, so the unit price comes out negative.
    const double precioUnit = peso == 0 ? Fmt(0) : Fmt(importe / peso);
    const double tipoIva = CDbl(a.iva);
    const double impuesto = Fmt(tc.CalcularImpuesto(importe, tipoIva, iva));
    double pvp = Fmt(tc.CalcularPvp(importe, impuesto, iva, 0, 0));
    double tipo2 = 0, imp2 = 0;
    if (s.configuracionregional.segundoimpuesto) {
        tipo2 = CeroSiNulo(a.impuesto_2);
        imp2 = Fmt(tc.CalcularImpuesto(pvp, tipo2, iva));
        pvp = pvp + imp2;
    }
    const double pesoLinea = controles.ModoAbono ? -peso : peso;

    auto poner = [&](long columna, std::string texto) { grid.SetTextMatrix(fila, columna, std::move(texto)); };
    poner(kColNombre, CStr(a.nombre));
    poner(kColPvp, CStr(precioUnit));
    PonerCeldasDeLinea(grid, fila, nombreCorto, tipo, invitado, codigoEmpleado, codigo, a.iva);
    poner(kColUnidades, CStr(pesoLinea + NumeroCelda(grid, fila, kColUnidades)));
    poner(kColImporte, CStr(pvp + NumeroCelda(grid, fila, kColImporte)));
    poner(kColRecargo, "0");
    poner(kColPrecio, CStr(precioUnit));
    poner(kColImpuesto2, CStr(Fmt(CeroSiNulo(a.impuesto_2))));
    poner(kColCodFamilia, "0");  // the caller's text is not kept on a weighing
    poner(kColDescuento, "0");

    // The tax stands as worked out on the whole amount above.
    LineaTemp linea;
    linea.numero = numero;
    linea.tipo = tipo;
    linea.codigo = CInt(grid.TextMatrix(fila, kColCodigo));
    linea.nombre = CStr(a.nombre);
    linea.unidades = NumeroCelda(grid, fila, kColUnidades);
    linea.precio = NumeroCelda(grid, fila, kColImporte);
    linea.descuento = NumeroCelda(grid, fila, kColDescuento);
    linea.precioUnit = precioUnit;
    linea.tipoImpuesto = tipoIva;
    linea.impuesto = impuesto;
    linea.tipoImpuesto2 = tipo2;
    linea.impuesto2 = imp2;
    linea.codEmpleados = grid.TextMatrix(fila, kColCodEmpleado);
    linea.nombresEmpleados = grid.TextMatrix(fila, kColEmpleado);
    GrabarLineaTemp(linea, true, FilaCorta(fila));

    MostrarLineaEnVisor(linea.nombre, grid.TextMatrix(fila, kColImporte));
    ActualizarTotalesCabecera(numero);

    // A weighing counts as one article, whatever it weighs.
    controles.txtUltProd.SetText(grid.TextMatrix(fila, kColNombre));
    controles.txtUltCant.SetText(CStr(Round(peso, 1)));
    controles.txtTArticulos.SetText(SumarArticulos(controles.txtTArticulos.Text(), 1));
}

void AnadirItemPeso(std::int32_t numero, std::int32_t codigo, double peso, double& importe, const std::string& etiqueta,
                    const std::string& tipo, const std::string& codigoEmpleado, const std::string& nombreEmpleado,
                    std::int32_t invitado, ControlesVenta& controles) {
    AnadirLineaPeso(numero, codigo, peso, importe, etiqueta, tipo, codigoEmpleado, nombreEmpleado, invitado, controles);
    SumarTotalGrid(controles.CajaText_Pago, controles.FGCaja);
}

}  // namespace tpv
