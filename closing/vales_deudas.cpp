#include "closing/vales_deudas.hpp"

#include <string>

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/field_list.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/contadores.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/vales.hpp"

namespace tpv {

namespace {

constexpr const char* kNotaVale = "  Aplicamos vale desc. Nro.=";

std::string Par(const char* nombre, const Value& valor) { return FieldList::Par(nombre, valor); }

std::string Num(std::int32_t n) { return CStr(Value(n)); }

// A number for SQL text, with the dot.
std::string NumeroSql(double x) { return Replace(CStr(Value(x)), ",", "."); }

// The last day of a voucher valid `dias` days from today; -1 days is a
// voucher that never expires.
DateTime Caducidad(std::int32_t dias) {
    return dias == -1 ? DateSerial(1900, 1, 1) : DateTime{Date().serial + dias};
}

void ImprimirVale(std::int32_t numeroFactura, double importe, DateTime hasta, const Value& minimo) {
    Sesion& s = sesion();
    ImprimirAlbaran::ImprimirValeDescuento(s.Conexion, s.ImpresoraTickets, Num(numeroFactura),
                                           FormatNumber(Value(importe), s.opciones.NumDecimales),
                                           Texto(Value(hasta)), Texto(minimo));
}

}  // namespace

void GrabarDeuda(std::int32_t numeroFactura, double deuda) {
    Sesion& s = sesion();
    bool existe = false;
    std::int32_t numeroPago = 0;
    Recordset rs;
    rs.Open("Select * from cabecera_pago where num_factura = " + Num(numeroFactura), s.Conexion);
    if (!rs.Eof()) {
        existe = true;
        numeroPago = CLng(rs["num_pago"]);
    }
    rs.Close();
    rs.Open("Select * from cabecera_factura where numero = " + Num(numeroFactura), s.Conexion);
    if (rs.Eof()) return;
    if (!existe) numeroPago = SiguienteNumeroPagoCuenta();
    const std::string campos = Par("Num_pago", numeroPago) + Par("Num_factura", numeroFactura) +
                               Par("cliente", rs["cliente"]) + Par("importe", deuda) + Par("fecha", rs["fechaVenta"]) +
                               "estado=0|" + Par("empleado", rs["codigo_empleado"]) + "observaciones=|";
    RecordWriter& escritor = RecordWriter::Instancia();
    if (existe)
        escritor.Actualizar(s.Conexion, "Cabecera_Pago", campos, s.NombreTienda, s.Multitienda,
                            "num_pago=" + Num(numeroPago));
    else
        escritor.Insertar(s.Conexion, "Cabecera_Pago", campos, s.NombreTienda, s.Multitienda);
}

void MarcarValeAplicado(std::int32_t numeroVale, std::int32_t numeroFactura) {
    Sesion& s = sesion();
    RecordWriter::Instancia().Actualizar(s.Conexion, "Vales_descuento", Par("num_factura_aplicado", numeroFactura),
                                         s.NombreTienda, s.Multitienda, "num_factura=" + Num(numeroVale));
}

void AnotarValeEnTicket(std::int32_t numeroVale) {
    Recordset rs;
    rs.Open("Select * from datosimpresion where contenido = null or contenido like '' order by numlinea desc",
            sesion().Conexion, adOpenKeyset, adLockOptimistic);
    if (rs.Eof()) return;
    rs["contenido"] = Value(kNotaVale + Num(numeroVale));
    rs.Update();
}

void QuitarValeDeTicket() {
    Recordset rs;
    rs.Open("Select * from datosimpresion where contenido like '  Aplicamos vale desc. Nro.=%'", sesion().Conexion,
            adOpenKeyset, adLockOptimistic);
    if (rs.Eof()) return;
    rs["contenido"] = Value("");
    rs.Update();
}

void EmitirValeVenta(std::int32_t numeroFactura) {
    const double total = TotalFactura(numeroFactura);
    double descuento = 0.0;
    std::int32_t numdias = 0;
    Value minimo;
    if (!BuscarDescuentoVale(total, descuento, numdias, minimo)) return;
    const DateTime hasta = Caducidad(numdias);
    ImprimirVale(numeroFactura, descuento, hasta, minimo);
    GrabarVale(numeroFactura, total, descuento, Date(), hasta, minimo);
}

void EmitirValeAbono(std::int32_t numeroFactura, double importe) {
    const DateTime hasta = Caducidad(CInt(Value(sesion().DiasCaducidadValeDescuento)));
    try {
        ImprimirVale(numeroFactura, importe, hasta, Value(0));
    } catch (const std::exception&) {
        // The voucher is stored all the same; it can be printed again.
    }
    GrabarVale(numeroFactura, 0, importe, Date(), hasta, Value(0));
}

void GrabarVale(std::int32_t numeroFactura, double importe, double descuento, DateTime desde, DateTime hasta,
                const Value& impMinimo) {
    Sesion& s = sesion();
    RecordWriter& escritor = RecordWriter::Instancia();
    escritor.Borrar(s.Conexion, "vales_descuento", s.NombreTienda, s.Multitienda, "num_factura=" + Num(numeroFactura));
    escritor.Insertar(s.Conexion, "vales_descuento",
                      Par("num_factura", numeroFactura) + Par("importe", importe) + Par("descuento", descuento) +
                          Par("desde", desde) + Par("hasta", hasta) + Par("impMinProxCompra", impMinimo) + "estado=0|",
                      s.NombreTienda, s.Multitienda);
}

bool BuscarDescuentoVale(double total, double& descuento, std::int32_t& numdias, Value& impMinimo) {
    Recordset rs;
    rs.Open("Select * from descuentos where tipo = 3 and precio <= " + NumeroSql(total) + " order by precio desc",
            sesion().Conexion);
    if (rs.Eof()) return false;
    descuento = CDbl(rs["descuento"]);
    numdias = CLng(rs["numdias"]);
    impMinimo = rs["impMinProxCompra"];
    return true;
}

double TotalFactura(std::int32_t numeroFactura) {
    Recordset rs;
    rs.Open("Select total from cabecera_factura where numero = " + Num(numeroFactura), sesion().Conexion);
    if (rs.Eof()) return 0.0;
    return CDbl(rs["total"]);
}

}  // namespace tpv
