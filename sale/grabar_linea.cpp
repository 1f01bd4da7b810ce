// Writing a line of a sale in progress to detalle_factura_temp, in place.
#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/lineas_venta.hpp"

namespace tpv {

namespace {

std::string PorCodigo(const LineaTemp& l) {
    return "select * from detalle_factura_temp where codigo = '" + std::to_string(l.codigo) +
           "' and num_factura = " + std::to_string(l.numero) + " and tipo_venta = '" + l.tipo + "' and borrar =0";
}

// The fields in the order the line was always written; `orden` only when
// the line has a row of the grid.
void Rellenar(Recordset& rs, const LineaTemp& l, const std::int16_t* fila) {
    const std::vector<std::string> codigos = Split(l.codEmpleados, "/");
    const std::vector<std::string> nombres = Split(l.nombresEmpleados, "/");
    rs["Num_Factura"] = l.numero;
    rs["Codigo"] = static_cast<int>(l.codigo);
    rs["Producto"] = l.nombre;
    rs["Unidades"] = l.unidades;
    rs["recargo"] = 0;
    rs["Precio"] = l.precio;
    rs["Descuento"] = Round(l.descuento, 3);
    rs["Precio_Unit"] = l.precioUnit;
    rs["Impuesto"] = l.impuesto;
    rs["TipoImpuesto"] = l.tipoImpuesto;
    rs["Servido"] = 0;
    // A line shared by several employees belongs to none of them.
    if (codigos.size() == 1)
        rs["codEmpleado"] = codigos[0];
    else
        rs["codEmpleado"] = -1;
    rs["NombreEmpleado"] = nombres.size() == 1 ? nombres[0] : std::string();
    rs["Tienda"] = sesion().NombreTienda;
    rs["tipo_Venta"] = l.tipo;
    rs["impuesto_2"] = l.impuesto2;
    rs["tipoimpuesto_2"] = l.tipoImpuesto2;
    rs["CodFamilia"] = l.codFamilia;
    if (fila) rs["orden"] = static_cast<int>(*fila);
}

}  // namespace

void GrabarLineaTemp(const LineaTemp& linea, bool forzarNueva, std::int16_t fila) {
    Recordset rs;
    bool nueva;
    if (sesion().LineaXProducto) {
        lectura::AbrirParaCambiar(rs, "select * from detalle_factura_temp where num_factura = " +
                                          std::to_string(linea.numero) + " and orden = " + std::to_string(fila));
        nueva = rs.RecordCount() == 0;
    } else {
        lectura::AbrirParaCambiar(rs, PorCodigo(linea) + " and orden = " + std::to_string(fila));
        nueva = rs.RecordCount() == 0 || forzarNueva;
    }
    if (nueva) rs.AddNew();
    Rellenar(rs, linea, &fila);
    rs.Update();
    rs.Close();
}

void GrabarLineaTempSinOrden(const LineaTemp& linea) {
    Recordset rs;
    lectura::AbrirParaCambiar(rs, PorCodigo(linea));
    if (rs.RecordCount() == 0) rs.AddNew();
    Rellenar(rs, linea, nullptr);
    rs.Update();
    rs.Close();
}

}  // namespace tpv
