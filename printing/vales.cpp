#include "printing/vales.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/texto.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/albaran_ticket.hpp"
#include "printing/page_device.hpp"

namespace tpv::ImprimirAlbaran {

namespace {

void Centrado(const std::string& texto) {
    ImprimirEn(Estado().anchoLinea / 2 - Printer().TextWidth(texto) / 2, texto);
}

// The voucher takes the first five rows only; lines 6 to 8 are left blank.
void LeerLineasVale(Connection& cn) {
    Modulo& m = Estado();
    Recordset rs;
    rs.Open("Select * from DatosImpresion", cn, adOpenStatic);
    for (int i = 1; i <= 5 && !rs.Eof(); ++i, rs.MoveNext()) m.lineas[i] = Texto(rs.Get("contenido"));
    rs.Close();
    for (int i = 6; i <= 8; ++i) m.lineas[i].clear();
}

// The amount inside the box: an amount of odd length leaves the right edge
// of the box one character short.
std::string LineaImporteVale(const std::string& importe) {
    const long relleno = static_cast<long>(Round(25.0 / 2 - Len(importe) / 2.0 - 1));
    return "*" + Space(relleno) + importe + Space(relleno - 1) + "*";
}

}  // namespace

void ImprimirValeDescuento(Connection& conexion, const std::string& impresora, const std::string& codigo,
                           const std::string& importe, const std::string& fechaHasta, const std::string& minimo) {
    Modulo& m = Estado();
    m = Modulo{};
    LeerLineasVale(conexion);
    LeerImpresora(conexion, impresora);
    PrepararImpresora(impresora);
    PageDevice& p = Printer();

    ImprimirLineasTienda(4);
    const std::string fecha = "Fecha: " + Format(Date(), "dd/mm/yyyy");
    ImprimirSinSalto(0, fecha);
    ImprimirEn(p.TextWidth(fecha), " ");
    Centrado("VALE DESCUENTO");
    ImprimirEn(0, "");

    const std::string estrellas = "*************************";
    const std::string hueco = "*                       *";
    const double x = m.anchoLinea / 2 - p.TextWidth(estrellas) / 2;
    for (const std::string& linea : {estrellas, hueco, LineaImporteVale(importe), hueco, estrellas})
        ImprimirEn(x, linea);
    ImprimirEn(0, " ");
    ImprimirEn(0, "");
    ImprimirEn(0, "Codigo: " + codigo);
    ImprimirEn(0, "");
    ImprimirEn(0, "-Este cupon solo podra ser utilizado ");
    ImprimirEn(0, "como parte de compras realizadas en ");
    ImprimirEn(0, "establecimientos " + m.lineas[1]);
    ImprimirEn(0, "-Solo se podra utilizar un vale en ");
    ImprimirEn(0, "compras superiores a " + minimo);
    ImprimirEn(0, "-Este cupon no es canjeable en metalico");
    ImprimirEn(0, "-La utilizacion de este vale descuento ");
    if (fechaHasta == "01/01/1900")
        ImprimirEn(0, "sera de caracter indefinido.");
    else
        ImprimirEn(0, "sera del " + Format(Date(), "dd/mm/yyyy") + " al " + fechaHasta + ".");
    p.EndDoc();
}

void ImprimirTicketRegalo(Connection& conexion, const std::string& impresora, std::int32_t numero,
                          const std::string& productos, const std::string&, const std::string&) {
    Modulo& m = Estado();
    m = Modulo{};
    LeerImpresora(conexion, impresora);
    PrepararImpresora(impresora);
    PageDevice& p = Printer();

    std::string fechaVenta, empleado;
    Recordset rs;
    rs.Open("Select * from cabecera_factura where numero = " + std::to_string(numero), conexion, adOpenStatic);
    if (!rs.Eof()) {
        fechaVenta = Texto(rs.Get("fechaVenta"));
        empleado = Texto(rs.Get("empleado"));
    }
    rs.Close();
    rs.Open("Select * from detalle_factura where num_factura = " + std::to_string(numero) + " and borrar = 0",
            conexion, adOpenStatic);
    rs.Close();
    std::string nombre, direccion, telefono;
    rs.Open("Select nombre,direccion,telefono from opciones", conexion, adOpenStatic);
    if (!rs.Eof()) {
        nombre = Texto(rs.Get("nombre"));
        direccion = Texto(rs.Get("direccion"));
        telefono = Texto(rs.Get("telefono"));
    }
    rs.Close();
    LeerLineasPie(conexion);
    for (int i = 8; i <= 16; ++i) m.lineas[i] = ExpandirMarcadores(m.lineas[i]);

    // Centred by the longer title of the pick-up note, so it stands a little
    // to the left.
    ImprimirEn(m.anchoLinea / 2 - p.TextWidth("***** Nota de Recogida *****") / 2, "***** Ticket Regalo *****");
    ImprimirEn(0, "");
    ImprimirEn(0, nombre);
    ImprimirEn(0, direccion);
    ImprimirEn(0, "Tlf: " + telefono);
    ImprimirEn(0, "");
    ImprimirEn(0, "Nro. Venta: " + std::to_string(numero) + " Fecha: " + fechaVenta);
    ImprimirEn(0, "Empleado: " + empleado);
    ImprimirEn(0, "");
    ImprimirEn(0, "");
    ImprimirEn(0, "Productos");
    ImprimirEn(0, m.guiones);
    for (const std::string& producto : Split(productos, "#")) ImprimirEn(0, Left(producto, 21));
    ImprimirEn(0, m.guiones);
    ImprimirEn(0, "");
    const std::string& comentario = sesion().ComentarioTicketRegalo;
    if (!comentario.empty()) ImprimirEnPiezas(comentario);
    for (int i = 15; i <= 16; ++i)
        if (!m.lineas[i].empty()) ImprimirEnPiezas(m.lineas[i]);
    for (std::int32_t i = 0; i < m.lineasFinales; ++i) ImprimirEn(0, "  ");
    p.EndDoc();
}

}  // namespace tpv::ImprimirAlbaran
