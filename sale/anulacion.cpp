#include "sale/anulacion.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/servicios/field_list.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/campos_linea.hpp"
#include "sale/fecha_negocio.hpp"
#include "sale/ventas_abiertas.hpp"

namespace tpv {

namespace {

std::string Num(std::int32_t n) { return CStr(Value(n)); }

// The pieces that narrow a statement on the sale's lines to a code and its
// kind, and to a place.
std::string FiltroLineas(std::int32_t codigo, const std::string& tipo, std::int16_t orden) {
    std::string filtro;
    if (codigo > -1) filtro += " and codigo = '" + Num(codigo) + "' and tipo_venta = '" + tipo + "'";
    if (orden > -1) filtro += " and orden = " + CStr(Value(orden));
    return filtro;
}

std::string Par(const char* nombre, const Value& valor) { return FieldList::Par(nombre, valor); }
std::string Bandera(const char* nombre, const Value& valor) { return ParBandera(nombre, valor); }
std::string CeroSiNulo(const char* nombre, const Value& valor) { return ParCeroSiNulo(nombre, valor); }

std::string CamposLineaAnulada(Recordset& rs) {
    return Par("Num_Factura", rs["Num_Factura"]) + CamposLineaVenta(rs, rs["Unidades"]);
}

std::string CamposCabeceraAnulada(Recordset& rs, DateTime fechaVenta) {
    return Par("Numero", rs["Numero"]) + Par("Fecha", Format(rs["Fecha"], "dd/mm/yyyy")) +
           Par("Cliente", rs["Cliente"]) + CeroSiNulo("mesa", rs["mesa"]) +
           CeroSiNulo("comensales", rs["comensales"]) + Par("Empleado", rs["Empleado"]) +
           CeroSiNulo("Zona_Venta", rs["Zona_Venta"]) + Par("Total", rs["Total"]) +
           CeroSiNulo("descuento", rs["descuento"]) + Par("hora", Format(Time(), "hh:mm")) +
           Par("Codigo_Empleado", rs["Codigo_Empleado"]) + "pago=1|" +
           Par("hora_inicio", Format(rs["hora"], "hh:mm")) + Par("impuesto", rs["impuesto"]) +
           Par("tarjeta", rs["tarjeta"]) + Par("efectivo", rs["efectivo"]) + Par("recargo", rs["recargo"]) +
           Bandera("impuestoincluido", rs["impuestoincluido"]) + Par("fechaVenta", fechaVenta) +
           Par("terminal", rs["terminal"]) + Bandera("cierre", rs["cierre"]) + Par("repartidor", rs["repartidor"]) +
           Par("impuesto_2", rs["impuesto_2"]);
}

}  // namespace

void AnularLinea(std::int32_t numero, std::int32_t codigo, const std::string& tipo, std::int16_t orden) {
    GuardarLineasAnuladas(numero, codigo, tipo, orden);
    BorrarLineasTemp(numero, codigo, tipo, orden);
}

void AnularVenta(std::int32_t numero, DateTime fecha1) {
    GuardarLineasAnuladas(numero, -1, "", -1);
    GuardarCabeceraAnulada(numero, fecha1);
    BorrarLineasTemp(numero, -1, "", -1);
    BorrarCabeceraTemp(numero);
}

void GuardarLineasAnuladas(std::int32_t numero, std::int32_t codigo, const std::string& tipo, std::int16_t orden) {
    Sesion& s = sesion();
    Recordset rs;
    rs.Open("select * from Detalle_Factura_Temp where Num_Factura = " + Num(numero) +
                FiltroLineas(codigo, tipo, orden),
            s.Conexion);
    for (; !rs.Eof(); rs.MoveNext())
        RecordWriter::Instancia().Insertar(s.Conexion, "Detalle_Factura_Anulaciones", CamposLineaAnulada(rs),
                                           s.NombreTienda, s.Multitienda);
}

void BorrarLineasTemp(std::int32_t numero, std::int32_t codigo, const std::string& tipo, std::int16_t orden) {
    sesion().Conexion.Execute("Delete from detalle_Factura_temp where num_factura = " + Num(numero) +
                              FiltroLineas(codigo, tipo, orden));
}

void BorrarCabeceraTemp(std::int32_t numero) {
    Recordset rs;
    rs.Open("Select * from Cabecera_Factura_Temp where Numero = " + Num(numero), sesion().Conexion, adOpenKeyset,
            adLockOptimistic);
    if (rs.RecordCount() == 1) rs.Delete();
}

void GuardarCabeceraAnulada(std::int32_t numero, DateTime fecha1) {
    Sesion& s = sesion();
    const DateTime fechaVenta = FechaNegocio(fecha1);
    Recordset rs;
    rs.Open("select * from Cabecera_Factura_Temp where numero = " + Num(numero), s.Conexion);
    if (rs.RecordCount() != 1) return;

    std::string campos = CamposCabeceraAnulada(rs, fechaVenta);
    RecordWriter& escritor = RecordWriter::Instancia();
    const std::string condicion = "codEmpleado = " + Num(s.CodigoEmpleadoActual);
    if (EsVentaModificada(numero)) {
        const std::int32_t origen = FacturaOrigen(numero);
        campos += Par("NumFactOrigen", origen) + Par("FechaBorrado", Date());
        escritor.RegistrarCambio(s.Conexion, "Detalle_factura_temp", condicion, "", "", "35",
                                 "Num Factura = " + Num(origen) + " con importe de: " + Texto(rs["Total"]));
    } else {
        escritor.RegistrarCambio(s.Conexion, "Detalle_factura_temp", condicion, "", "", "32", "");
    }
    escritor.Insertar(s.Conexion, "Cabecera_Factura_Anulaciones", campos, s.NombreTienda, s.Multitienda);
}

void RenumerarOrden(std::int16_t desde, std::int32_t numero, bool sumar) {
    Recordset rs;
    rs.Open("Select orden from detalle_Factura_temp where orden >= " + CStr(Value(desde)) +
                " and num_factura= " + Num(numero) + " order by orden",
            sesion().Conexion, adOpenKeyset, adLockOptimistic);
    for (; !rs.Eof(); rs.MoveNext()) {
        rs["orden"] = Value(CDbl(rs["orden"]) + (sumar ? 1 : -1));
        rs.Update();
    }
}

double BaseVenta(const std::string& numero) {
    Recordset rs;
    rs.Open("Select * from cabecera_Factura_temp where numero = " + numero, sesion().Conexion);
    if (rs.Eof()) return 0.0;
    const Value& total = rs["total"];
    const Value& impuesto = rs["impuesto"];
    return (total.IsNull() ? 0.0 : CDbl(total)) - (impuesto.IsNull() ? 0.0 : CDbl(impuesto));
}

}  // namespace tpv
