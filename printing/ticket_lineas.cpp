// The line builders and printers of the configurable ticket. Builders work
// on text already formatted and count characters; printers place a line on
// the page device by the measured width of the ticket's line.
#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "printing/page_device.hpp"
#include "printing/ticket_configurable.hpp"

namespace tpv {

namespace {

std::string RellenarIzquierda(std::string texto, long ancho) {
    const long largo = Len(texto);
    return largo < ancho ? Space(ancho - largo) + texto : texto;
}

std::string RellenarDerecha(std::string texto, long ancho) {
    const long largo = Len(texto);
    return largo < ancho ? texto + Space(ancho - largo) : texto;
}

}  // namespace

std::string ImprimirConfONOFF::LineaImporte(std::string importe, const std::string& etiqueta) const {
    return etiqueta + " " + RellenarIzquierda(std::move(importe), 10);
}

std::string ImprimirConfONOFF::LineaEtiquetaImporte(const std::string& etiqueta, std::string importe) const {
    return etiqueta + RellenarIzquierda(std::move(importe), numCaracteres - Len(etiqueta));
}

// No blank separates quantity and description: a two-character quantity
// touches the text, and the heading's description starts with a blank.
std::string ImprimirConfONOFF::LineaDetalle(std::string cantidad, std::string descripcion, std::string precio,
                                            std::string total, bool mostrarPrecio) const {
    total = RellenarIzquierda(std::move(total), 7);
    cantidad = RellenarDerecha(std::move(cantidad), 2);
    precio = mostrarPrecio ? RellenarIzquierda(std::move(precio), 6) : "";
    const long ancho = numCaracteres - (Len(cantidad) + Len(total) + Len(precio) + 1);
    if (Len(descripcion) < ancho)
        descripcion = RellenarDerecha(std::move(descripcion), ancho);
    else
        descripcion = Left(descripcion, ancho - 1) + " ";
    return cantidad + descripcion + precio + " " + total;
}

std::string ImprimirConfONOFF::LineaImpuesto(std::string nombre, std::string base, std::string cuota) const {
    cuota = RellenarIzquierda(std::move(cuota), 10);
    base = RellenarIzquierda(std::move(base), 9);
    const long ancho = numCaracteres - 20;
    nombre = Len(nombre) >= ancho ? Left(nombre, ancho) : RellenarDerecha(std::move(nombre), ancho);
    return nombre + base + " " + cuota;
}

// Sets the font and the position of a line and gives the text to print. The
// position is worked out on the whole text; a line too long for the paper is
// cut afterwards, so a long right-aligned line starts too far left.
std::string ImprimirConfONOFF::ColocarLinea(std::string texto, const std::string& alineacion, double tamano) {
    PageDevice& p = Printer();
    p.Font.Name = nombreFuente;
    p.Font.Size = tamano;
    p.CurrentX = 0;
    if (alineacion == "C" || InStr(texto, "#C") > 0) {
        texto = Replace(texto, "#C", "");
        p.CurrentX = anchoLinea / 2.0 - p.TextWidth(texto) / 2;
    } else if (alineacion == "D") {
        texto = Replace(texto, "#C", "");
        p.CurrentX = anchoLinea - p.TextWidth(texto);
    }
    if (Len(texto) > numCaracteres) texto = Left(texto, numCaracteres);
    return texto;
}

void ImprimirConfONOFF::ImprimirLinea(std::string texto, const std::string& alineacion, double tamano) {
    if (texto.empty()) return;
    texto = ColocarLinea(std::move(texto), alineacion, tamano);
    Printer().Print(texto);
}

// The device fonts have no bold: the line is struck twice, 10 twips apart.
void ImprimirConfONOFF::ImprimirLineaNegrita(std::string texto, const std::string& alineacion, double tamano) {
    if (texto.empty()) return;
    PageDevice& p = Printer();
    const double y = p.CurrentY;
    texto = ColocarLinea(std::move(texto), alineacion, tamano);
    const double x = p.CurrentX;
    p.Print(texto);
    p.CurrentY = y;
    p.CurrentX = x + 10;
    p.Print(texto);
}

void ImprimirConfONOFF::ImprimirFuerte(const std::string& texto, const std::string& alineacion, double tamano) {
    if (enNegrita)
        ImprimirLineaNegrita(texto, alineacion, tamano);
    else
        ImprimirLinea(texto, alineacion, tamano);
}

// Wraps by character count, with no regard for words, into as many pieces as
// the measured width asks for (rounded half to even) plus one, the last one
// possibly empty. It prints in the font the line before it left.
void ImprimirConfONOFF::ImprimirTextoLargo(std::string texto, bool centrar, bool negrita) {
    if (texto.empty()) return;
    texto = Replace(texto, "\r\n", " ");
    PageDevice& p = Printer();
    auto imprimirPieza = [&](const std::string& pieza) {
        const double y = p.CurrentY;
        p.CurrentX = 0;
        if (centrar) p.CurrentX = anchoLinea / 2.0 - p.TextWidth(pieza) / 2;
        const double x = p.CurrentX;
        p.Print(pieza);
        if (negrita) {
            p.CurrentY = y;
            p.CurrentX = x + 10;
            p.Print(pieza);
        }
    };
    const double ancho = p.TextWidth(texto);
    if (ancho <= anchoLinea) {
        imprimirPieza(texto);
        return;
    }
    const long partes = static_cast<long>(Round(ancho / anchoLinea));
    for (long k = 0; k <= partes; ++k) imprimirPieza(Mid(texto, 1 + k * numCaracteres, numCaracteres));
}

void ImprimirConfONOFF::AbrirImpuestos(Recordset& rs) {
    const std::string clave = documento_ == Documento::Abono ? ".num_abono = " : ".num_factura = ";
    rs.Open("SELECT tipoimpuesto, Sum(impuesto) as val_impuesto, sum(precio) as total, sum(recargo) as totalRecargo, "
            "sum(descuento) as totalDescuento   From " +
                tablaLineas_ + " where " + tablaLineas_ + clave + claveLineas_ + " group by tipoimpuesto" +
                " order by tipoimpuesto",
            *conexion_, adOpenStatic);
}

ImprimirConfONOFF::Impuestos ImprimirConfONOFF::ImpuestosDeFila(Recordset& rs, Documento documento) const {
    auto numero = [&](const char* columna) {
        const Value& v = rs.Get(columna);
        return v.IsNull() ? 0.0 : CDbl(v);
    };
    const double tipo = numero("tipoimpuesto");
    const double valImpuesto = numero("val_impuesto");
    const double total = numero("total");
    Impuestos fila;
    if (documento == Documento::Preticket) {
        const double bruto = total - numero("totaldescuento");
        fila.cuotaTotal = bruto - bruto / (1 + tipo / 100);
        fila.baseTotal = bruto - fila.cuotaTotal;
    } else if (documento == Documento::Abono) {
        fila.cuotaTotal = valImpuesto;
        fila.baseTotal = -(total + valImpuesto);
    } else {
        fila.cuotaTotal = valImpuesto;
        fila.baseTotal = total + numero("totalrecargo") - numero("totaldescuento") - valImpuesto;
    }
    return fila;
}

// The base and tax of the whole document, for a tip reckoned on the base.
// A refund is reckoned as a sale here.
ImprimirConfONOFF::Impuestos ImprimirConfONOFF::SumarImpuestosDocumento() {
    Impuestos suma;
    Recordset rs;
    AbrirImpuestos(rs);
    const Documento documento = documento_ == Documento::Preticket ? Documento::Preticket : Documento::Venta;
    for (; !rs.Eof(); rs.MoveNext()) {
        const Impuestos fila = ImpuestosDeFila(rs, documento);
        suma.baseTotal += fila.baseTotal;
        suma.cuotaTotal += fila.cuotaTotal;
    }
    rs.Close();
    return suma;
}

}  // namespace tpv
