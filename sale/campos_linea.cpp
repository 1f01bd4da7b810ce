#include "sale/campos_linea.hpp"

#include "core/runtime/conversiones.hpp"
#include "core/servicios/field_list.hpp"

namespace tpv {

std::string ParBandera(const char* nombre, const Value& valor) {
    return FieldList::Par(nombre, !valor.IsNull() && CBool(valor) ? -1 : 0);
}

std::string ParCeroSiNulo(const char* nombre, const Value& valor) {
    return FieldList::Par(nombre, valor.IsNull() ? Value(0) : valor);
}

std::string CamposLineaVenta(Recordset& rs, const Value& unidades) {
    std::string campos = FieldList::Par("codigo", rs["codigo"]) + FieldList::Par("Producto", rs["Producto"]) +
                         FieldList::Par("Unidades", unidades);
    for (const char* c : {"Precio", "Descuento", "Recargo", "Precio_Unit"}) campos += FieldList::Par(c, rs[c]);
    for (const char* c : {"borrar", "ProductoDeMenu", "menu"}) campos += ParBandera(c, rs[c]);
    const Value& menu = rs["codMenu"];
    campos += FieldList::Par("codMenu", menu.IsNull() ? Value(" ") : menu);
    for (const char* c : {"impuesto", "tipoimpuesto", "codEmpleado", "NombreEmpleado", "tipo_Venta", "impuesto_2",
                          "tipoimpuesto_2", "codfamilia"})
        campos += FieldList::Par(c, rs[c]);
    return campos;
}

}  // namespace tpv
