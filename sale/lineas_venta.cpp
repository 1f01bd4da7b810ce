#include "sale/lineas_venta.hpp"

#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/tax_calculator.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/busqueda.hpp"
#include "sale/linea_comun.hpp"
#include "sale/promociones.hpp"

namespace tpv {

namespace {

// Price and tax of one unit of an item, as they are worked out before the
// line is written.
struct PrecioItem {
    double precio = 0;  // unit price of the catalogue or tariff
    double tipoIva = 0;
    double impuesto = 0;
    double pvp = 0;  // unit price charged
    double tipo2 = 0;
    double imp2 = 0;
};

// Tax and price charged of `importe` at the item's rate, each rounded.
void CalcularDesde(double importe, PrecioItem& p) {
    const TaxCalculator& tc = TaxCalculator::Instancia();
    const bool iva = sesion().opciones.iva;
    p.impuesto = Fmt(tc.CalcularImpuesto(importe, p.tipoIva, iva));
    p.pvp = Fmt(tc.CalcularPvp(importe, p.impuesto, iva, 0, 0));
}

PrecioItem PrecioDelItem(const ArticuloVenta& a, std::int32_t codigo, const std::string& tipo, std::int16_t tp,
                         double dto, double precioPromo, std::int32_t invitado, double importeDinDep) {
    const Sesion& s = sesion();
    const TaxCalculator& tc = TaxCalculator::Instancia();
    const bool iva = s.opciones.iva;
    PrecioItem p;
    // The tax and the price charged come from the field as read, not from
    // the rounded price.
    const double campoPrecio = CDbl(a.precio);
    p.precio = Fmt(campoPrecio);
    p.tipoIva = CDbl(a.iva);
    CalcularDesde(campoPrecio, p);

    if (tipo == "S" && codigo == 2) {  // the deposit service: the amount comes from the screen
        p.precio = p.pvp = importeDinDep;
        p.impuesto = 0;
        p.tipoIva = 0;
    }
    if (s.TarifaActual > -1) {
        const double tarifa = PrecioTarifa(codigo);
        if (tarifa != -1) {
            p.precio = Fmt(tarifa);
            CalcularDesde(p.precio, p);
        }
    }
    if (s.configuracionregional.segundoimpuesto) {
        p.tipo2 = CeroSiNulo(a.impuesto_2);
        p.imp2 = Fmt(tc.CalcularImpuesto(p.precio, p.tipo2, iva));
        p.pvp = p.pvp + p.imp2;
    }
    if (tp == 1) {
        const double precioDto = p.precio - (dto / 100) * p.precio;
        p.impuesto = Fmt(tc.CalcularImpuesto(precioDto, p.tipoIva, iva));
    }
    if (tp == 2) {
        // The price charged is worked out afresh, so the second tax drops out
        // of it while its amount stays on the line.
        p.precio = precioPromo;
        CalcularDesde(p.precio, p);
    }
    if (invitado > 0) p = PrecioItem{};
    return p;
}

}  // namespace

std::string NombreCorto(const std::string& nombreEmpleado) {
    const std::vector<std::string> palabras = Split(nombreEmpleado, " ");
    std::string corto = Left(nombreEmpleado, InStr(nombreEmpleado, " ")) + " ";
    if (palabras.size() > 1) corto += Left(palabras[1], 1);
    if (palabras.size() > 2) corto += ". " + Left(palabras[2], 1) + ".";
    return corto;
}

long BuscarFilaVenta(Grid& grid, std::int32_t codigo, const std::string& tipo) {
    const bool unaLineaPorItem = sesion().LineaXProducto;
    for (long f = 1; f < grid.Rows(); ++f) {
        if (grid.TextMatrix(f, kColNombre).empty()) return f;
        if (!unaLineaPorItem && Val(grid.TextMatrix(f, kColCodigo)) == codigo && grid.TextMatrix(f, kColTipo) == tipo)
            return f;
    }
    grid.SetRows(grid.Rows() + 1);
    return grid.Rows() - 1;
}

void AnadirLineaVenta(std::int32_t numero, std::int32_t codigo, double cantidad, const std::string& etiqueta,
                      const std::string& tipo, const std::string& codigoEmpleado, const std::string& nombreEmpleado,
                      std::int32_t invitado, ControlesVenta& controles) {
    const Sesion& s = sesion();
    double dto = 0, precioPromo = 0;
    std::int32_t codRegalo = -1;
    const std::int16_t tp = BuscarPromocion(codigo, dto, codRegalo, precioPromo);
    double cant = cantidad;

    ArticuloVenta a;
    if (!LeerArticulo(tipo == "S" ? "Servicios" : "Productos", codigo, a)) return;
    Grid& grid = controles.FGCaja;
    const long fila = BuscarFilaVenta(grid, codigo, tipo);
    const std::string nombreCorto = NombreCorto(nombreEmpleado);

    PrecioItem p = PrecioDelItem(a, codigo, tipo, tp, dto, precioPromo, invitado, controles.ImporteDinDep);
    if (controles.ModoAbono) cant = -cant;

    auto poner = [&](long columna, std::string texto) { grid.SetTextMatrix(fila, columna, std::move(texto)); };
    auto numero_ = [&](long columna) { return NumeroCelda(grid, fila, columna); };
    poner(kColNombre, CStr(a.nombre));
    poner(kColPvp, CStr(p.pvp));
    poner(kColEmpleado, nombreCorto);
    poner(kColTipo, tipo);
    poner(kColInvitado, CStr(invitado));
    poner(kColPorcentaje, "0");
    if (tp == 1) {
        poner(kColPorcentaje, CStr(dto));
        PintarCelda(grid, fila, kColPorcentaje, ColorFocoActual());
    }
    poner(kColCodEmpleado, codigoEmpleado);
    poner(kColCodigo, CStr(codigo));
    poner(kColTipoIva, CStr(a.iva));
    poner(kColUnidades, CStr(cant + numero_(kColUnidades)));
    poner(kColImporte, CStr(Fmt(p.pvp * cant + numero_(kColImporte))));
    double unidades = 0, importe = 0;
    if (tp == 1) {
        // A percentage is laid on all the units of the line afresh.
        unidades = numero_(kColUnidades);
        importe = Fmt((1 - dto / 100) * (p.pvp * unidades));
        poner(kColImporte, CStr(importe));
    }
    if (tp == 2) {
        unidades = numero_(kColUnidades);
        importe = Fmt(precioPromo * unidades);
        poner(kColImporte, CStr(importe));
    }
    poner(kColRecargo, "0");
    poner(kColPrecio, CStr(p.precio));
    poner(kColImpuesto2, CStr(Fmt(CeroSiNulo(a.impuesto_2))));
    poner(kColCodFamilia, "0");
    poner(kColEtiqueta, etiqueta);
    poner(kColDescuento, "0");
    if (tp == 1) poner(kColDescuento, CStr(p.pvp * unidades - importe));

    // The line's tax comes from the line's amount, which carries tax
    // whatever the shop's prices do; never units times the unit's tax.
    const TaxCalculator& tc = TaxCalculator::Instancia();
    const bool iva = s.opciones.iva;
    double base = numero_(kColImporte);
    if (!iva) base = Fmt(base / (1 + p.tipoIva / 100));
    p.impuesto = Fmt(tc.CalcularImpuesto(base, p.tipoIva, iva));
    if (s.configuracionregional.segundoimpuesto) p.imp2 = Fmt(tc.CalcularImpuesto(base, p.tipo2, iva));

    LineaTemp linea;
    linea.numero = numero;
    linea.tipo = tipo;
    linea.codigo = CInt(grid.TextMatrix(fila, kColCodigo));
    linea.nombre = CStr(a.nombre);
    linea.unidades = numero_(kColUnidades);
    linea.precio = numero_(kColImporte);
    linea.descuento = numero_(kColDescuento);
    linea.precioUnit = p.precio;
    linea.tipoImpuesto = p.tipoIva;
    linea.impuesto = p.impuesto;
    linea.tipoImpuesto2 = p.tipo2;
    linea.impuesto2 = p.imp2;
    linea.codEmpleados = grid.TextMatrix(fila, kColCodEmpleado);
    linea.nombresEmpleados = grid.TextMatrix(fila, kColEmpleado);
    linea.codFamilia = 0;
    GrabarLineaTemp(linea, false, FilaCorta(fila));

    MostrarLineaEnVisor(linea.nombre, grid.TextMatrix(fila, kColImporte));
    ActualizarTotalesCabecera(numero);
    if (tp == 1) RecalcularCabecera(numero);
    if (tp == 2)
        AnadirLineaRegalo(numero, codRegalo, 1, etiqueta, tipo, grid, codigoEmpleado, nombreEmpleado, invitado);

    controles.txtUltProd.SetText(grid.TextMatrix(fila, kColNombre));
    controles.txtUltCant.SetText(CStr(cantidad));
    controles.txtTArticulos.SetText(SumarArticulos(controles.txtTArticulos.Text(), cantidad));
}

void AnadirItem(std::int32_t numero, std::int32_t codigo, double cantidad, const std::string& etiqueta,
                const std::string& tipo, const std::string& codigoEmpleado, const std::string& nombreEmpleado,
                std::int32_t invitado, ControlesVenta& controles) {
    AnadirLineaVenta(numero, codigo, cantidad, etiqueta, tipo, codigoEmpleado, nombreEmpleado, invitado, controles);
    SumarTotalGrid(controles.CajaText_Pago, controles.FGCaja);
}

void SumarTotalGrid(TextBox& cajaTotal, const Grid& grid) {
    double total = 0;
    if (grid.Rows() > 1 && !grid.TextMatrix(1, kColNombre).empty()) {
        for (long f = 1; f < grid.Rows() && !grid.TextMatrix(f, kColPvp).empty(); ++f)
            total += NumeroCelda(grid, f, kColImporte);
    }
    cajaTotal.SetText(FormatNumber(total, sesion().opciones.NumDecimales));
}

}  // namespace tpv
