#include "sale/busqueda.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/unicode.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

namespace {

const char* const kSelectProducto =
    "productos.nombre,productos.stock,productos.UbicacionPrincipal,productos.imagen,productos.modoventa,"
    "productos.precio ";

double NumeroONulo(const Value& v, double siNulo) { return v.IsNull() ? siNulo : CDbl(v); }

// Fills the product's fields from the current row, and its pending order.
void LeerProducto(Recordset& rs, std::int32_t codigo, ProductoEncontrado& p) {
    p.nombre = CStr(rs["nombre"].Value());
    p.stock = NumeroONulo(rs["stock"].Value(), 0);
    const Value& ubicacion = rs["UbicacionPrincipal"].Value();
    p.UbicacionPrincipal = ubicacion.IsNull() ? "P01 - C01 - F01" : CStr(ubicacion);
    p.imagen = Texto(rs["imagen"].Value());
    const Value& modo = rs["modoventa"].Value();
    p.modoventa = !modo.IsNull() && CBool(modo);
    p.precio = NumeroONulo(rs["precio"].Value(), 0);
    p.pedido = LeerPedidoPendiente(codigo, p.entrega);
}

// A scanner or a keyboard can send bytes that are no text: they are read as
// the Western code page, as the till always took them. A NUL can't stand in
// any code of the catalogue.
bool CodigoLegible(std::string& codigo) {
    if (codigo.find('\0') != std::string::npos) return false;
    codigo = unicode::Encode(unicode::Decode(codigo));
    return true;
}

}  // namespace

std::int16_t BuscarPorCodigoBarras(const std::string& codigoLeido, ProductoEncontrado& producto) {
    producto = {};
    std::string c = codigoLeido;
    if (!CodigoLegible(c)) return -1;
    const std::string sql = std::string("SELECT distinct(Productos.Codigo) as codigoInt, ") + kSelectProducto +
                            "  FROM Productos LEFT JOIN Productos_CodigosExtra ON Productos.Codigo = "
                            "Productos_CodigosExtra.Codigo " +
                            " WHERE (((Productos_CodigosExtra.Codigo_Extra) like '" + c + "') or codigocliente = '" +
                            c + "') AND BORRAR =FALSE and mostrarencaja = -1";
    // The code stands unescaped between apostrophes: one of its own ends the
    // literal early. That statement is refused whole rather than run as
    // whatever the rest of the code happens to say.
    if (c.find('\'') != std::string::npos)
        throw DbError("sintaxis", "Error de sintaxis (falta operador) en la expresión de consulta.", sql);

    Recordset rs;
    lectura::Abrir(rs, sql);
    std::int16_t resultado = -1;
    if (rs.RecordCount() == 1) {
        const std::int32_t codigo = CLng(rs["codigoInt"].Value());
        LeerProducto(rs, codigo, producto);
        resultado = CInt(rs["codigoInt"].Value());
    } else if (rs.RecordCount() > 1) {
        std::string nombres;
        for (; !rs.Eof(); rs.MoveNext()) nombres += "\r\n" + Texto(rs["nombre"].Value());
        rs.Close();
        MsgBox(
            "El codigo de barras introducido pertenece a más de un producto diferente. Los productos con este "
            "codigo de barras son: \r\n" +
                nombres + "\r\n\r\nCambie el codigo de barras para continuar con la venta.",
            vbCritical, "Codigos Duplicados");
        return kCodigoDuplicado;
    }
    rs.Close();
    return resultado;
}

std::int32_t BuscarPorCodigo(std::int32_t codigo, ProductoEncontrado& producto) {
    producto = {};
    Recordset rs;
    lectura::Abrir(rs, std::string("SELECT Productos.Codigo as codigoInt, ") + kSelectProducto + "  FROM Productos " +
                           " WHERE codigo = " + std::to_string(codigo) + " AND BORRAR =FALSE");
    std::int32_t resultado = -1;
    if (rs.RecordCount() > 0) {
        resultado = CLng(rs["codigoInt"].Value());
        LeerProducto(rs, resultado, producto);
    }
    rs.Close();
    return resultado;
}

std::int32_t BuscarParaLupa(std::int32_t codigo, ProductoEncontrado& producto, std::string& codigocliente) {
    producto = {};
    codigocliente.clear();
    Recordset rs;
    lectura::Abrir(rs, std::string("SELECT Productos.Codigo as codigoInt, ") + kSelectProducto +
                           ",productos.codigocliente " +
                           "  FROM Productos LEFT JOIN Productos_CodigosExtra ON Productos.Codigo = "
                           "Productos_CodigosExtra.Codigo " +
                           " WHERE Productos.Codigo= " + std::to_string(codigo));
    std::int32_t resultado = -1;
    if (rs.RecordCount() > 0) {
        resultado = CLng(rs["codigoInt"].Value());
        LeerProducto(rs, resultado, producto);
        codigocliente = Texto(rs["codigocliente"].Value());
    }
    rs.Close();
    return resultado;
}

double LeerPedidoPendiente(std::int32_t codigo, std::string& entrega) {
    entrega.clear();
    Recordset rs;
    lectura::Abrir(rs,
                   "Select pedidosdet.unidades,pedidosdet.pedido,pedidos.entrega from pedidosdet,pedidos where "
                   "pedidosdet.producto = " +
                       std::to_string(codigo) + " and pedidosdet.pedido = pedidos.cod order by pedido desc");
    double unidades = 0;
    if (rs.RecordCount() > 0) {
        // Only the newest order counts; a NULL date is no date to deliver on.
        const Value& fecha = rs["entrega"].Value();
        if (!fecha.IsNull() && CDate(fecha).serial >= Date().serial) {
            unidades = CDbl(rs["unidades"].Value());
            entrega = CStr(fecha);
        }
    }
    rs.Close();
    return unidades;
}

double PrecioTarifa(std::int32_t codigo) {
    Recordset rs;
    lectura::Abrir(rs, "select precio from detalle_precio where identificador = " +
                           std::to_string(sesion().TarifaActual) + " and producto = " + std::to_string(codigo));
    const double precio = rs.RecordCount() > 0 ? CDbl(rs["precio"].Value()) : -1;
    rs.Close();
    return precio;
}

std::string QuitarCerosIzquierda(const std::string& codigo) {
    // A "0" is one byte and no other character starts with it, so bytes serve.
    std::size_t i = 0;
    while (i + 1 < codigo.size() && codigo[i] == '0') ++i;
    return codigo.substr(i);
}

bool ProductoEnFactura(std::int32_t factura, const std::string& codigo) {
    Recordset rs;
    lectura::Abrir(rs, "Select codigo from detalle_Factura where num_factura = " + std::to_string(factura) +
                           " and codigo = " + codigo + " and tipo_venta in (" + "'P'" + ")");
    const bool vendido = rs.RecordCount() > 0;
    rs.Close();
    return vendido;
}

}  // namespace tpv
