#include "closing/albaranes.hpp"

#include "closing/copias.hpp"
#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/contadores.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/albaran_ticket.hpp"
#include "sale/anulacion.hpp"
#include "sale/lineas_venta.hpp"

namespace tpv {

namespace {

std::string Numero(std::int32_t n) { return std::to_string(n); }

double CeroSiNulo(const Value& v) { return v.IsNull() ? 0.0 : CDbl(v); }

// "Juan Perez Lopez" is listed as "J.Perez"; a name of one word as it is.
std::string EmpleadoAbreviado(const std::string& nombre) {
    if (InStr(nombre, " ") == 0) return nombre;
    const std::vector<std::string> palabras = Split(nombre, " ");
    return Left(nombre, 1) + "." + (palabras.size() > 1 ? palabras[1] : std::string());
}

}  // namespace

void GrabarAlbaran(std::int32_t numeroVenta, int copias) {
    Sesion& s = sesion();
    const std::int32_t numero = SiguienteNumeroAlbaran();
    RecordWriter::Instancia().Actualizar(s.Conexion, "Cabecera_factura_temp", "num_albaran=" + Numero(numero) + "|",
                                         s.NombreTienda, s.Multitienda, "numero = " + Numero(numeroVenta));
    ImprimirCopiasConAviso(copias, [&] {
        ImprimirAlbaran::ImprimirAlbaranTicket(s.Conexion, s.ImpresoraTickets, numeroVenta, "", "");
    });
}

void PasoDetallesANuevaVenta(std::int32_t origen, std::int32_t destino) {
    Sesion& s = sesion();
    RecordWriter::Instancia().Actualizar(s.Conexion, "Detalle_factura_temp", "num_factura=" + Numero(destino) + "|",
                                         s.NombreTienda, s.Multitienda, "num_factura=" + Numero(origen));
}

void AumentoTotalCabecera(std::int32_t origen, std::int32_t destino) {
    double total = 0, recargo = 0, descuento = 0, impuesto = 0;
    Recordset rs;
    lectura::Abrir(rs, "select total,recargo,descuento,impuesto from cabecera_factura_temp where numero = " +
                           Numero(origen));
    if (rs.Eof()) return;
    total = CeroSiNulo(rs["total"]);
    recargo = CeroSiNulo(rs["recargo"]);
    descuento = CeroSiNulo(rs["descuento"]);
    impuesto = CeroSiNulo(rs["impuesto"]);
    rs.Close();

    Recordset venta;
    lectura::AbrirParaCambiar(venta, "select * from cabecera_factura_temp where numero = " + Numero(destino));
    if (venta.Eof()) return;
    venta["total"] = Value(CeroSiNulo(venta["total"]) + total);
    venta["recargo"] = Value(CeroSiNulo(venta["recargo"]) + recargo);
    venta["descuento"] = Value(CeroSiNulo(venta["descuento"]) + descuento);
    venta["impuesto"] = Value(CeroSiNulo(venta["impuesto"]) + impuesto);
    venta.Update();
    venta.Close();
}

std::int32_t JuntarAlbaranes(Label& lblNumVenta, std::int32_t cliente, const std::vector<std::int32_t>& notas) {
    const Sesion& s = sesion();
    const std::int32_t nueva =
        AbrirVenta(lblNumVenta, cliente, s.NombreEmpleadoActual, std::to_string(s.CodigoEmpleadoActual));
    for (std::int32_t nota : notas) {
        PasoDetallesANuevaVenta(nota, nueva);
        AumentoTotalCabecera(nota, nueva);
        BorrarCabeceraTemp(nota);
    }
    return nueva;
}

std::vector<AlbaranPendiente> AlbaranesPendientes(std::int32_t cliente) {
    std::vector<AlbaranPendiente> notas;
    Recordset rs;
    lectura::Abrir(rs,
                   "SELECT num_albaran, cliente, Fecha, Total,empleado,numero FROM Cabecera_factura_temp where "
                   "num_albaran >0 and cliente = " +
                       Numero(cliente) + " ORDER BY Numero DESC");
    for (; !rs.Eof(); rs.MoveNext()) {
        notas.push_back({Texto(rs["num_albaran"]), NombreCliente(Texto(rs["cliente"])), Texto(rs["Fecha"]),
                         Texto(rs["Total"]), EmpleadoAbreviado(Texto(rs["empleado"])), Texto(rs["numero"])});
    }
    return notas;
}

std::string NombreCliente(const std::string& cliente) {
    Recordset rs;
    lectura::Abrir(rs, "Select nombre,apellidos from clientes where codigo = " + cliente);
    if (rs.Eof()) return "Cliente Generico";
    return Texto(rs["nombre"]) + " " + Texto(rs["apellidos"]);
}

}  // namespace tpv
