#include "sale/promociones.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/sesion/lectura.hpp"
#include "sale/grid_venta.hpp"
#include "sale/linea_comun.hpp"
#include "sale/lineas_venta.hpp"

namespace tpv {

std::int16_t BuscarPromocion(std::int32_t codigo, double& dto, std::int32_t& codRegalo, double& precioPromo) {
    dto = 0;
    codRegalo = -1;
    precioPromo = 0;
    const std::string hoy = Format(Date(), "mm/dd/yyyy");
    Recordset rs;
    lectura::Abrir(
        rs, "Select tipo,descuento,codRegalo,precio from descuentos where (codproducto = " + std::to_string(codigo) +
                " or codproducto = -1) and desde<=#" + hoy + "# and hasta>=#" + hoy + "#");
    std::int16_t tipo = -1;
    if (rs.RecordCount() > 0) {
        tipo = CInt(rs["tipo"].Value());
        if (tipo == 1) dto = CDbl(rs["descuento"].Value());
        if (tipo == 2) {
            codRegalo = CLng(rs["codRegalo"].Value());
            precioPromo = CDbl(rs["precio"].Value());
        }
    }
    rs.Close();
    return tipo;
}

long FilaLibreGrid(Grid& grid) {
    for (long f = 1; f < grid.Rows(); ++f)
        if (grid.TextMatrix(f, kColNombre).empty()) return f;
    grid.SetRows(grid.Rows() + 1);
    return grid.Rows() - 1;
}

void ColorearFilaRegalo(std::int16_t fila, Grid& grid) {
    const long color = ColorFocoActual();
    for (long c = 0; c < grid.Cols(); ++c) PintarCelda(grid, fila, c, color);
}

void PonerCeldasDeLinea(Grid& grid, long fila, const std::string& nombreCorto, const std::string& tipo,
                        std::int32_t invitado, const std::string& codigoEmpleado, std::int32_t codigo,
                        const Value& iva) {
    grid.SetTextMatrix(fila, kColEmpleado, nombreCorto);
    grid.SetTextMatrix(fila, kColTipo, tipo);
    grid.SetTextMatrix(fila, kColInvitado, CStr(invitado));
    grid.SetTextMatrix(fila, kColPorcentaje, "0");
    grid.SetTextMatrix(fila, kColCodEmpleado, codigoEmpleado);
    grid.SetTextMatrix(fila, kColCodigo, CStr(codigo));
    grid.SetTextMatrix(fila, kColTipoIva, CStr(iva));
}

void AnadirLineaRegalo(std::int32_t numero, std::int32_t codRegalo, std::int16_t unidades, const std::string& etiqueta,
                       const std::string& tipo, Grid& grid, const std::string& codigoEmpleado,
                       const std::string& nombreEmpleado, std::int32_t invitado) {
    // A gift is always a product, whatever the item that brought it.
    ArticuloVenta a;
    if (!LeerArticulo("Productos", codRegalo, a)) return;
    const long fila = FilaLibreGrid(grid);
    const std::string nombreCorto = NombreCorto(nombreEmpleado);

    auto poner = [&](long columna, std::string texto) { grid.SetTextMatrix(fila, columna, std::move(texto)); };
    const std::string nombre = CStr(a.nombre);
    poner(kColNombre, "  REGALO " + nombre);
    poner(kColPvp, "0");
    PonerCeldasDeLinea(grid, fila, nombreCorto, tipo, invitado, codigoEmpleado, codRegalo, a.iva);
    poner(kColUnidades, CStr(unidades + NumeroCelda(grid, fila, kColUnidades)));
    poner(kColImporte, "0");
    poner(kColRecargo, "0");
    poner(kColPrecio, "0");
    poner(kColImpuesto2, CStr(Fmt(CeroSiNulo(a.impuesto_2))));
    poner(kColCodFamilia, "0");
    poner(kColEtiqueta, etiqueta);

    // Known afterwards only by its price and discount of 0.
    LineaTemp linea;
    linea.numero = numero;
    linea.tipo = tipo;
    linea.codigo = CInt(codRegalo);
    linea.nombre = nombre;
    linea.unidades = NumeroCelda(grid, fila, kColUnidades);
    linea.precio = NumeroCelda(grid, fila, kColImporte);
    linea.descuento = NumeroCelda(grid, fila, kColPorcentaje);
    linea.codEmpleados = grid.TextMatrix(fila, kColCodEmpleado);
    linea.nombresEmpleados = grid.TextMatrix(fila, kColEmpleado);
    GrabarLineaTemp(linea, false, FilaCorta(fila));

    MostrarLineaEnVisor(nombre, grid.TextMatrix(fila, kColImporte));
    ActualizarTotalesCabecera(numero);
    ColorearFilaRegalo(FilaCorta(fila), grid);
}

}  // namespace tpv
