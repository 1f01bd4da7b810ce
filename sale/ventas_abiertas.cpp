#include "sale/ventas_abiertas.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

namespace {

std::string Num(std::int32_t n) { return CStr(Value(n)); }

double CeroSiNulo(const Value& v) { return v.IsNull() ? 0.0 : CDbl(v); }

// The first row of the modification of an open sale, if it has one.
void AbrirModificacion(Recordset& rs, std::int32_t numero) {
    rs.Open("Select * from ventasdevolucion where numerofacturatemporal=" + Num(numero), sesion().Conexion);
}

}  // namespace

bool EsVentaModificada(std::int32_t numero) {
    Recordset rs;
    AbrirModificacion(rs, numero);
    return !rs.Eof();
}

std::int32_t FacturaOrigen(std::int32_t numero) {
    Recordset rs;
    AbrirModificacion(rs, numero);
    if (rs.Eof() || rs["NumeroFacturaReal"].IsNull()) return 0;
    return CLng(rs["NumeroFacturaReal"]);
}

void LeerDatosVenta(std::int32_t numero, std::string& codigoEmpleado, std::string& empleado, std::string& cliente,
                    std::string& nombreCliente) {
    Recordset rs;
    rs.Open("SELECT cabecera_factura_temp.codigo_empleado, cabecera_factura_temp.empleado, "
            "cabecera_factura_temp.cliente,clientes.nombre & ' ' & clientes.apellidos as nomCli"
            "  FROM cabecera_factura_temp LEFT JOIN clientes ON cabecera_factura_temp.Cliente = clientes.Codigo "
            "where cabecera_factura_temp.numero = " +
                Num(numero),
            sesion().Conexion);
    if (rs.Eof()) return;
    codigoEmpleado = Texto(rs["codigo_empleado"]);
    empleado = Texto(rs["empleado"]);
    cliente = Texto(rs["cliente"]);
    nombreCliente = Texto(rs["nomCli"]);
}

bool DeudaCliente(const std::string& cliente, double& deuda) {
    Connection& cn = sesion().Conexion;
    Recordset rs;
    rs.Open("Select sum(importe) as importeTotal from cabecera_pago where cliente = " + cliente + " and estado = 0",
            cn);
    deuda = rs.Eof() ? 0.0 : CeroSiNulo(rs["importeTotal"]);
    if (deuda > 0) {
        Recordset pagos;
        pagos.Open("Select sum(detalle_pago.importe) as importetotal from detalle_pago INNER JOIN cabecera_pago on "
                   "detalle_pago.num_pago=cabecera_pago.num_pago where cabecera_pago.cliente = " +
                       cliente + " and cabecera_pago.estado =0",
                   cn);
        deuda -= pagos.Eof() ? 0.0 : CeroSiNulo(pagos["importetotal"]);
    }
    deuda = Fmt(deuda, sesion().opciones.NumDecimales);
    return deuda > 0;
}

}  // namespace tpv
