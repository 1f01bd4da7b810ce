#include "closing/abono.hpp"

#include "closing/grabar_factura.hpp"
#include "closing/sin_errores.hpp"
#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/servicios/field_list.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/campos_linea.hpp"
#include "sale/fecha_negocio.hpp"
#include "sale/stock.hpp"

namespace tpv {

namespace {

constexpr int kDescripcionAbono = 11;

std::string Num(std::int32_t n) { return CStr(Value(n)); }
std::string Par(const char* nombre, const Value& valor) { return FieldList::Par(nombre, valor); }
Value Negado(const Value& v) { return v.IsNull() ? Value() : Value(-CDbl(v)); }

void Insertar(const char* tabla, const std::string& campos) {
    Sesion& s = sesion();
    RecordWriter::Instancia().Insertar(s.Conexion, tabla, campos, s.NombreTienda, s.Multitienda);
}

std::string CamposLineaAbono(Recordset& rs, std::int32_t numeroAbono, std::int32_t numeroFactura) {
    return Par("Num_Factura", numeroFactura) + Par("Num_abono", numeroAbono) +
           CamposLineaVenta(rs, Negado(rs["Unidades"]));
}

// A refunded product is goods coming in: entrada and stock go up by the
// quantity, salida stays, and one movement of kind 11 is left.
void EntradaStockAbono(std::int32_t codigo, const Value& producto, double cantidad, std::int32_t numeroAbono) {
    Sesion& s = sesion();
    double coste = 0.0;
    SinErrores([&] {
        const double entrada = LeerEntrada(codigo);
        const double stock = LeerStock(codigo, coste);
        RecordWriter::Instancia().Actualizar(s.Conexion, "Productos",
                                             Par("Entrada", entrada + cantidad) + Par("Stock", stock + cantidad),
                                             s.NombreTienda, s.Multitienda, "codigo = " + Num(codigo));
    });
    SinErrores([&] {
        Insertar("HistoricoStock", Par("Codigo", codigo) + Par("Nombre", producto) + Par("Cantidad", cantidad) +
                                       Par("fecha", Date()) + Par("coste", cantidad * coste) +
                                       Par("ticket", numeroAbono) + "Tipo=1|" +
                                       Par("DescripcionTipo", kDescripcionAbono));
    });
}

std::string Efectivo(const std::string& formaPago, const Value& total, const std::string& tarjeta) {
    if (Val(formaPago) != 3) return "efectivo=0|";
    return Par("efectivo", FormatNumber(Value(CDbl(total) - CDbl(Value(tarjeta))), sesion().opciones.NumDecimales));
}

std::string CamposCabeceraAbono(Recordset& rs, std::int32_t numeroAbono, std::int32_t numeroFactura,
                                const std::string& formaPago, const std::string& tarjeta, DateTime fecha) {
    std::string campos = Par("Numero", numeroAbono) + Par("num_factura", numeroFactura) +
                         Par("Fecha", Format(rs["Fecha"], "dd/mm/yyyy")) + Par("Cliente", rs["Cliente"]) +
                         ParCeroSiNulo("mesa", rs["mesa"]) + ParCeroSiNulo("comensales", rs["comensales"]) +
                         Par("Empleado", rs["Empleado"]) + ParCeroSiNulo("Zona_Venta", rs["Zona_Venta"]) +
                         Par("Total", Negado(rs["Total"])) + ParCeroSiNulo("descuento", rs["descuento"]) +
                         Par("hora", Format(Time(), "hh:mm")) + Par("Codigo_Empleado", rs["Codigo_Empleado"]) +
                         Par("pago", formaPago) + Par("hora_inicio", Format(rs["hora"], "hh:mm")) +
                         Par("impuesto", rs["impuesto"]) + Par("tarjeta", tarjeta);
    // A card part that isn't a number loses the cash pair, not the header.
    SinErrores([&] { campos += Efectivo(formaPago, rs["Total"], tarjeta); });
    return campos + Par("recargo", rs["recargo"]) + ParBandera("impuestoincluido", rs["impuestoincluido"]) +
           Par("fechaVenta", fecha) + Par("terminal", rs["terminal"]) + ParBandera("cierre", rs["cierre"]) +
           Par("repartidor", rs["repartidor"]) + Par("impuesto_2", rs["impuesto_2"]) + "CaracteristicaVenta=DV|";
}

bool HayFila(const std::string& sentencia) {
    Recordset rs;
    rs.Open(sentencia, sesion().Conexion);
    return !rs.Eof();
}

}  // namespace

// The refund document is written with failures passed over one statement at
// a time: a row that can't be written is lost and the next one runs.
void GrabarDetalleAbono(std::int32_t numeroAbono, std::int32_t numeroVenta, std::int32_t numeroFactura) {
    Recordset rs;
    bool abierto = false;
    SinErrores([&] {
        rs.Open("select * from Detalle_Factura_Temp where Num_Factura = " + Num(numeroVenta), sesion().Conexion);
        abierto = true;
    });
    if (!abierto) return;
    for (; !rs.Eof(); rs.MoveNext()) {
        std::string campos;
        SinErrores([&] { campos = CamposLineaAbono(rs, numeroAbono, numeroFactura); });
        SinErrores([&] {
            if (Texto(rs["tipo_venta"]) != "P") return;
            EntradaStockAbono(CLng(rs["codigo"]), rs["Producto"], Abs(CDbl(rs["Unidades"])), numeroAbono);
        });
        if (!campos.empty()) SinErrores([&] { Insertar("Detalle_abono", campos); });
    }
}

void GrabarCabeceraAbono(std::int32_t numeroAbono, std::int32_t numeroVenta, const std::string& formaPago,
                         const std::string& tarjeta, std::int32_t numeroFactura, DateTime fecha1) {
    const DateTime fecha = FechaNegocio(fecha1);
    Sesion& s = sesion();
    SinErrores([&] {
        Recordset rs;
        rs.Open("select * from Cabecera_Factura_Temp where numero = " + Num(numeroVenta), s.Conexion);
        if (rs.RecordCount() != 1) return;
        std::string campos;
        SinErrores([&] { campos = CamposCabeceraAbono(rs, numeroAbono, numeroFactura, formaPago, tarjeta, fecha); });
        // The customer's last visit moves even for a refund.
        SinErrores([&] { ActualizarUltimaVisita(rs["Cliente"], fecha); });
        if (!campos.empty()) SinErrores([&] { Insertar("Cabecera_Abono", campos); });
    });
}

std::string ClienteAbono(const std::string& numeroFactura) {
    // No invoice named yet: no customer, rather than a statement cut short.
    if (numeroFactura.empty()) return "";
    Recordset rs;
    rs.Open("select cliente from cabecera_Factura where numero = " + numeroFactura, sesion().Conexion);
    if (rs.Eof()) return "";
    return Texto(rs["cliente"]);
}

bool existeNumFactura(std::int32_t numero) {
    return HayFila("Select * from cabecera_factura where numero = " + Num(numero));
}

bool existeNumFacturaHoy(std::int32_t numero) {
    return HayFila("Select * from cabecera_factura where numero = " + Num(numero) + " and fechaventa=#" +
                   Format(Date(), "mm/dd/yyyy") + "#");
}

bool EsAbono(std::int32_t numero) {
    Recordset rs;
    rs.Open("Select * from cabecera_factura where numero = " + Num(numero), sesion().Conexion);
    if (rs.Eof()) return false;
    const Value& total = rs["total"];
    return !total.IsNull() && CDbl(total) < 0;
}

bool TieneDeuda(std::int32_t numero) {
    return HayFila("Select * from cabecera_pago where num_factura = " + Num(numero) + " and estado = 0");
}

std::string NombreCliente(const Value& cliente) {
    if (cliente.IsNull()) return "Cliente Generico";
    Recordset rs;
    rs.Open("Select nombre,apellidos from clientes where codigo = " + Texto(cliente), sesion().Conexion);
    if (rs.Eof()) return "Cliente Generico";
    return Texto(rs["nombre"]) + " " + Texto(rs["apellidos"]);
}

}  // namespace tpv
