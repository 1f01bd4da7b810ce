#include "closing/reabrir.hpp"

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

namespace tpv {

namespace {

std::string Num(std::int32_t n) { return CStr(Value(n)); }
std::string Par(const char* nombre, const Value& valor) { return FieldList::Par(nombre, valor); }
std::string Bandera(const char* nombre, const Value& valor) { return ParBandera(nombre, valor); }
std::string CeroSiNulo(const char* nombre, const Value& valor) { return ParCeroSiNulo(nombre, valor); }

// Only these columns come back: the second tax and the family are left
// behind, and a modified sale closes without them.
std::string CamposLineaDevuelta(Recordset& rs, std::int32_t numeroVenta, int orden) {
    std::string campos = Par("Num_Factura", numeroVenta);
    for (const char* c : {"codigo", "Producto", "Unidades", "Precio", "Descuento", "Recargo", "Precio_Unit"})
        campos += Par(c, rs[c]);
    for (const char* c : {"borrar", "ProductoDeMenu", "menu"}) campos += Bandera(c, rs[c]);
    const Value& menu = rs["codMenu"];
    campos += Par("codMenu", menu.IsNull() ? Value(" ") : menu);
    for (const char* c : {"impuesto", "tipoimpuesto", "codEmpleado", "NombreEmpleado", "tipo_Venta"})
        campos += Par(c, rs[c]);
    return campos + Par("orden", orden);
}

// The sold units go back: salida down, stock up, and the sale's movements of
// the product are removed rather than answered with new ones.
void DeshacerStockLinea(const Value& codigo, double unidades, std::int32_t numeroFactura) {
    Sesion& s = sesion();
    RecordWriter& escritor = RecordWriter::Instancia();
    SinErrores([&] {
        const std::int32_t cod = CLng(codigo);
        const double salida = LeerSalida(cod);
        double coste = 0.0;
        const double stock = LeerStock(cod, coste);
        escritor.Actualizar(s.Conexion, "Productos", Par("Salida", salida - unidades) + Par("Stock", stock + unidades),
                            s.NombreTienda, s.Multitienda, "codigo = " + Texto(codigo));
    });
    SinErrores([&] {
        escritor.Borrar(s.Conexion, "HistoricoStock", s.NombreTienda, s.Multitienda,
                        "codigo = " + Texto(codigo) + " and ticket = " + Num(numeroFactura));
    });
}

std::string CamposCabeceraDevuelta(Recordset& rs, std::int32_t numeroVenta) {
    return Par("Numero", numeroVenta) + Par("Fecha", Format(rs["Fecha"], "dd/mm/yyyy")) +
           Par("Cliente", rs["Cliente"]) + CeroSiNulo("mesa", rs["mesa"]) + CeroSiNulo("comensales", rs["comensales"]) +
           CeroSiNulo("Zona_Venta", rs["Zona_Venta"]) + CeroSiNulo("descuento", rs["descuento"]) +
           Par("Empleado", rs["Empleado"]) + Par("Total", rs["Total"]) + Par("hora", Format(Time(), "hh:mm")) +
           Par("Codigo_Empleado", rs["Codigo_Empleado"]) + Par("impuesto", rs["impuesto"]) +
           Par("recargo", rs["recargo"]) + Bandera("impuestoincluido", rs["impuestoincluido"]) +
           Bandera("cierre", rs["cierre"]) + Par("terminal", sesion().TerminalActual) +
           Par("repartidor", rs["repartidor"]);
}

}  // namespace

void ReabrirFactura(std::int32_t numeroFactura, std::string& numeroVentaOut) {
    const std::int32_t numeroVenta = SiguienteNumeroVenta();
    const DateTime fecha = FechaVentaFactura(numeroFactura);
    DevolverLineasATemp(numeroFactura, numeroVenta);
    DevolverCabeceraATemp(numeroFactura, numeroVenta);
    BorrarDetalleFactura(numeroFactura, -1);
    BorrarCabeceraFactura(numeroFactura);
    RegistrarVentaDevolucion(numeroFactura, numeroVenta, fecha);
    numeroVentaOut = Num(numeroVenta);
}

DateTime FechaVentaFactura(std::int32_t numeroFactura) {
    Recordset rs;
    rs.Open("Select fechaventa from cabecera_factura where numero = " + Num(numeroFactura), sesion().Conexion);
    if (rs.Eof()) return Date();
    return CDate(rs["fechaventa"]);
}

// Copying a closed sale back passes over a statement that fails and runs the
// next: the closed rows are deleted afterwards all the same.
void DevolverLineasATemp(std::int32_t numeroFactura, std::int32_t numeroVenta) {
    Sesion& s = sesion();
    Recordset rs;
    bool abierto = false;
    SinErrores([&] {
        rs.Open("select * from Detalle_Factura where Num_Factura = " + Num(numeroFactura), s.Conexion);
        abierto = true;
    });
    if (!abierto) return;
    int orden = 1;
    for (; !rs.Eof(); rs.MoveNext()) {
        std::string campos;
        SinErrores([&] { campos = CamposLineaDevuelta(rs, numeroVenta, orden); });
        ++orden;
        SinErrores([&] {
            if (Texto(rs["tipo_venta"]) == "P") DeshacerStockLinea(rs["codigo"], CDbl(rs["Unidades"]), numeroFactura);
        });
        if (campos.empty()) continue;
        SinErrores([&] {
            RecordWriter::Instancia().Insertar(s.Conexion, "Detalle_Factura_temp", campos, s.NombreTienda,
                                               s.Multitienda);
        });
    }
}

void DevolverCabeceraATemp(std::int32_t numeroFactura, std::int32_t numeroVenta) {
    Sesion& s = sesion();
    // Asked for and not used: the reopened sale keeps its own date.
    SinErrores([] { FechaNegocio(Date()); });
    SinErrores([&] {
        Recordset rs;
        rs.Open("select * from Cabecera_Factura where numero = " + Num(numeroFactura), s.Conexion);
        if (rs.Eof()) return;
        const std::string campos = CamposCabeceraDevuelta(rs, numeroVenta);
        RecordWriter::Instancia().Insertar(s.Conexion, "Cabecera_Factura_temp", campos, s.NombreTienda,
                                           s.Multitienda);
    });
}

void RegistrarVentaDevolucion(std::int32_t numeroFactura, std::int32_t numeroVenta, DateTime fecha) {
    Sesion& s = sesion();
    RecordWriter::Instancia().Insertar(s.Conexion, "VentasDevolucion",
                                       Par("NumeroFacturaReal", numeroFactura) +
                                           Par("NumeroFacturaTemporal", numeroVenta) +
                                           Par("Importe", TotalVentaTemp(numeroVenta)) + Par("fechaVenta", fecha),
                                       s.NombreTienda, s.Multitienda);
}

void BorrarDetalleFactura(std::int32_t numeroFactura, std::int32_t codigo) {
    std::string sentencia = "Select * from Detalle_Factura where Num_Factura = " + Num(numeroFactura);
    if (codigo > -1) sentencia += " and codigo = '" + Num(codigo) + "'";
    Recordset rs;
    rs.Open(sentencia, sesion().Conexion, adOpenKeyset, adLockOptimistic);
    for (; !rs.Eof(); rs.MoveNext()) rs.Delete();
}

void BorrarCabeceraFactura(std::int32_t numeroFactura) {
    Recordset rs;
    rs.Open("Select * from Cabecera_Factura where Numero = " + Num(numeroFactura), sesion().Conexion, adOpenKeyset,
            adLockOptimistic);
    if (rs.RecordCount() == 1) rs.Delete();
}

double TotalVentaTemp(std::int32_t numeroVenta) {
    Recordset rs;
    rs.Open("select total from Cabecera_Factura_temp where numero = " + Num(numeroVenta), sesion().Conexion);
    if (rs.Eof() || rs["total"].IsNull()) return 0.0;
    return CDbl(rs["total"]);
}

}  // namespace tpv
