#include "sale/rankings.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

std::string SentenciaTop(const std::string& tipo, DateTime desde, DateTime hasta) {
    const std::string d = Format(Value(desde), "mm/dd/yyyy");
    const std::string h = Format(Value(hasta), "mm/dd/yyyy");
    const std::string& tienda = sesion().NombreTienda;
    if (tipo == "P")
        return "select top 30 sum(unidades) as Expr1, Codigo from Detalle_factura,cabecera_factura where Codigo>0 "
               "and Tipo_Venta='P' and detalle_factura.tienda='" +
               tienda +
               "' and detalle_factura.num_factura = cabecera_factura.numero and cabecera_factura.fechaventa "
               "between #" +
               d + "# and #" + h + "# group by Codigo order by sum(unidades) desc";
    return "select top 30 sum(total) as Expr1, Cliente from cabecera_factura where cliente>0 and tienda= '" +
           tienda + "' and fechaventa between #" + d + "# and #" + h +
           "# group by cliente  order by sum(total) desc";
}

namespace {

std::string NombreDe(const std::string& tipo, const Value& codigo) {
    Connection& cn = sesion().Conexion;
    Recordset rs;
    if (tipo == "P") {
        rs.Open("select * from Productos where Codigo=" + CStr(codigo), cn);
        return rs.Eof() ? "" : Texto(rs["Nombre"]);
    }
    rs.Open("select * from Clientes where Codigo=" + CStr(codigo), cn);
    return rs.Eof() ? "" : Texto(rs["Nombre"]) + " " + Texto(rs["Apellidos"]);
}

}  // namespace

TablaTop LeerTop(const std::string& tipo, DateTime desde, DateTime hasta) {
    TablaTop tabla;
    Recordset rs;
    rs.Open(SentenciaTop(tipo, desde, hasta), sesion().Conexion);
    const char* columna = tipo == "P" ? "Codigo" : "Cliente";
    for (int i = 0; i < kFilasTop && !rs.Eof(); ++i, rs.MoveNext()) {
        const Value& cifra = rs["Expr1"];
        tabla[static_cast<std::size_t>(i)] = {cifra.IsNull() ? 0.0 : CDbl(cifra), NombreDe(tipo, rs[columna])};
    }
    return tabla;
}

}  // namespace tpv
