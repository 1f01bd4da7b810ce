#include "closing/grabar_factura.hpp"

#include "closing/sin_errores.hpp"
#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/servicios/field_list.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/contadores.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/campos_linea.hpp"
#include "sale/fecha_negocio.hpp"
#include "sale/stock.hpp"
#include "sale/ventas_abiertas.hpp"

namespace tpv {

namespace {

std::string Par(const char* nombre, const Value& valor) { return FieldList::Par(nombre, valor); }

std::string Num(std::int32_t n) { return CStr(Value(n)); }

std::string Bandera(const char* nombre, const Value& v) { return ParBandera(nombre, v); }
std::string CeroSiNulo(const char* nombre, const Value& v) { return ParCeroSiNulo(nombre, v); }

void Insertar(const char* tabla, const std::string& campos) {
    Sesion& s = sesion();
    RecordWriter::Instancia().Insertar(s.Conexion, tabla, campos, s.NombreTienda, s.Multitienda);
}

std::string CamposLinea(Recordset& rs, std::int32_t numeroFactura) {
    return Par("Num_Factura", numeroFactura) + CamposLineaVenta(rs, rs["Unidades"]);
}

// Salida goes up inside the statement; the new stock is worked out here
// from the figure just read. Each statement stands on its own.
void SalidaDeProducto(const Value& codigo, const Value& producto, double unidades, std::int32_t numeroFactura) {
    double stock = 0.0;
    double coste = 0.0;
    SinErrores([&] { stock = LeerStock(CLng(codigo), coste); });
    SinErrores([&] {
        Sesion& s = sesion();
        RecordWriter::Instancia().Actualizar(s.Conexion, "Productos",
                                             "Salida=Salida+" + Texto(Value(unidades)) + "|" +
                                                 Par("Stock", stock - unidades),
                                             s.NombreTienda, s.Multitienda, "codigo = " + Texto(codigo));
    });
    SinErrores([&] {
        Insertar("HistoricoStock", Par("Codigo", codigo) + Par("Nombre", producto) + Par("Cantidad", Abs(unidades)) +
                                       Par("fecha", Date()) + Par("coste", unidades * coste) +
                                       Par("ticket", numeroFactura) + "Tipo=1|DescripcionTipo=2|");
    });
}

void CopiarLineas(Recordset& rs, std::int32_t numeroFactura) {
    const bool panaderia = sesion().Sector == "PANADERIA";
    std::int16_t indice = 0;
    if (panaderia) SinErrores([&] { indice = SiguienteIndiceHistorico(); });
    SinErrores([&] { rs.MoveFirst(); });
    for (; !rs.Eof(); rs.MoveNext()) {
        std::string campos;
        SinErrores([&] { campos = CamposLinea(rs, numeroFactura); });
        const Value codigo = rs["codigo"];
        const Value producto = rs["Producto"];
        double unidades = 0.0;
        SinErrores([&] { unidades = CDbl(rs["Unidades"]); });
        if (!panaderia && Texto(rs["tipo_venta"]) == "P") {
            SalidaDeProducto(codigo, producto, unidades, numeroFactura);
        } else if (panaderia) {
            SinErrores([&] { GrabarHistoricoVenta(CLng(codigo), Texto(producto), unidades, numeroFactura, false); });
            SinErrores([&] { DescontarElaborado(CLng(codigo), unidades, numeroFactura, indice); });
        }
        SinErrores([&] { Insertar("Detalle_Factura", campos); });
    }
}

std::string CamposCabecera(Recordset& rs, std::int32_t numeroFactura, const std::string& formaPago,
                           const std::string& tarjeta, DateTime fecha) {
    // Cash is stored only for a mixed payment, and then from the total:
    // what was handed over is not kept.
    std::string efectivo;
    SinErrores([&] {
        efectivo = Val(formaPago) == 3
                       ? FormatNumber(Value(CDbl(rs["Total"]) - CDbl(Value(tarjeta))), sesion().opciones.NumDecimales)
                       : "0";
    });
    return Par("Numero", numeroFactura) + Par("Fecha", Format(rs["Fecha"], "dd/mm/yyyy")) +
           Par("Cliente", rs["Cliente"]) + CeroSiNulo("mesa", rs["mesa"]) +
           CeroSiNulo("comensales", rs["comensales"]) + Par("Empleado", rs["Empleado"]) +
           CeroSiNulo("Zona_Venta", rs["Zona_Venta"]) + Par("Total", rs["Total"]) +
           CeroSiNulo("descuento", rs["descuento"]) + Par("hora", Format(Now(), "hh:mm")) +
           Par("Codigo_Empleado", rs["Codigo_Empleado"]) + "pago=" + formaPago + "|" +
           Par("hora_inicio", Format(rs["hora"], "hh:mm")) + Par("impuesto", rs["impuesto"]) + "tarjeta=" + tarjeta +
           "|efectivo=" + efectivo + "|" + Par("recargo", rs["recargo"]) +
           Bandera("impuestoincluido", rs["impuestoincluido"]) + Par("fechaVenta", fecha) +
           Par("terminal", rs["terminal"]) + Bandera("cierre", rs["cierre"]) + Par("repartidor", rs["repartidor"]) +
           Par("impuesto_2", rs["impuesto_2"]);
}

}  // namespace

void GrabarLineasFactura(std::int32_t numeroFactura, std::int32_t numeroVenta) {
    TomarSemaforo(kSemaforoSalidaProd);
    SinErrores([&] {
        Recordset rs;
        if (!SinErrores([&] {
                rs.Open("select * from Detalle_Factura_Temp where Num_Factura = " + Num(numeroVenta),
                        sesion().Conexion, adOpenKeyset, adLockOptimistic);
            }))
            return;
        if (rs.RecordCount() > 0) CopiarLineas(rs, numeroFactura);
    });
    SinErrores([] { SoltarSemaforo(kSemaforoSalidaProd); });
}

void GrabarCabeceraFactura(std::int32_t numeroFactura, std::int32_t numeroVenta, const std::string& formaPago,
                           const std::string& tarjeta, DateTime fecha1) {
    const DateTime fecha = EsVentaModificada(numeroVenta) ? FechaVentaModificada(numeroFactura) : FechaNegocio(fecha1);
    Sesion& s = sesion();
    Recordset rs;
    if (!SinErrores([&] { rs.Open("select * from Cabecera_Factura_Temp where numero = " + Num(numeroVenta), s.Conexion); }))
        return;
    if (rs.RecordCount() != 1) return;
    std::string campos;
    SinErrores([&] { campos = CamposCabecera(rs, numeroFactura, formaPago, tarjeta, fecha); });
    SinErrores([&] { ActualizarUltimaVisita(rs["Cliente"], fecha); });
    SinErrores([&] { Insertar("Cabecera_Factura", campos); });
    if (Date() == fecha1) return;
    SinErrores([&] {
        RecordWriter::Instancia().RegistrarCambio(s.Conexion, "Cabecera_Factura", "numero = " + Num(numeroFactura), "",
                                                  "", "40",
                                                  "Num Factura = " + Num(numeroFactura) + " a cambiado a la fecha: " +
                                                      Texto(Value(fecha1)) + " Empleado = " + Texto(rs["Empleado"]));
    });
}

DateTime FechaVentaModificada(std::int32_t numeroFactura) {
    Recordset rs;
    rs.Open("Select fechaVenta from ventasdevolucion where numerofacturareal = " + Num(numeroFactura),
            sesion().Conexion);
    if (!rs.Eof() && !rs["fechaVenta"].IsNull()) return CDate(rs["fechaVenta"]);
    return Date();
}

void ActualizarUltimaVisita(const Value& cliente, DateTime fecha) {
    Sesion& s = sesion();
    RecordWriter::Instancia().Actualizar(s.Conexion, "clientes", Par("ultimavisita", fecha), s.NombreTienda,
                                         s.Multitienda, "codigo=" + Texto(cliente));
}

}  // namespace tpv
