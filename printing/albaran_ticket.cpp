#include "printing/albaran_ticket.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/texto.hpp"
#include "printing/page_device.hpp"

namespace tpv::ImprimirAlbaran {

namespace {

// A separator or a cut counted in characters never runs past this, whatever
// a printer measures.
constexpr long kTopeCaracteres = 4096;

double Numero(const Value& v) { return v.IsNull() ? 0.0 : CDbl(v); }

std::string Formato(const std::string& numero) { return FormatNumber(Value(numero), Estado().numDecimales); }

void LeerAjustes(Connection& cn) {
    Modulo& m = Estado();
    Recordset rs;
    rs.Open("Select NumDecimales,QuitarPUnitarioTicket from opciones", cn, adOpenStatic);
    if (!rs.Eof()) {
        m.numDecimales = rs.Get("NumDecimales").IsNull() ? 2 : CInt(rs.Get("NumDecimales"));
        m.quitarPUnitario = Numero(rs.Get("QuitarPUnitarioTicket")) != 0;
    }
    rs.Close();
    rs.Open("Select nombreimpuesto1 from configuracionregional", cn, adOpenStatic);
    m.nombreImpuesto = "IVA";
    if (!rs.Eof() && !rs.Get("nombreimpuesto1").IsNull()) m.nombreImpuesto = Texto(rs.Get("nombreimpuesto1"));
    rs.Close();
}

void LeerCabecera(Connection& cn, std::int32_t numero) {
    Modulo& m = Estado();
    Recordset rs;
    rs.Open("Select * from cabecera_factura_temp where numero = " + std::to_string(numero), cn, adOpenStatic);
    double cliente = 0;
    if (!rs.Eof()) {
        m.numAlbaran = Texto(rs.Get("num_albaran"));
        m.empleado = Texto(rs.Get("empleado"));
        m.total = rs.Get("total").IsNull() ? "0" : Texto(rs.Get("total"));
        m.recargo = Numero(rs.Get("recargo")) > 0 ? Texto(rs.Get("recargo")) : "0";
        if (rs.HasField("pago")) m.pago = Texto(rs.Get("pago"));
        m.descuento = rs.Get("descuento").IsNull() ? "" : FormatNumber(rs.Get("descuento"), m.numDecimales);
        m.impuesto = FormatNumber(Numero(rs.Get("impuesto")), m.numDecimales);
        cliente = Numero(rs.Get("cliente"));
    }
    rs.Close();
    rs.Open("Select * from clientes where codigo = " + CStr(cliente), cn, adOpenStatic);
    if (!rs.Eof()) {
        m.clienteNombre = Texto(rs.Get("nombre"));
        m.clienteApellidos = Texto(rs.Get("Apellidos"));
        m.clienteNif = Texto(rs.Get("nif"));
        m.clienteTelefono = Texto(rs.Get("telefono1"));
        if (m.clienteTelefono.empty()) m.clienteTelefono = Texto(rs.Get("telefono2"));
    }
    rs.Close();
}

void LeerLineas(Connection& cn, std::int32_t numero) {
    Modulo& m = Estado();
    Recordset rs;
    rs.Open("Select * from detalle_factura_temp where num_factura = " + std::to_string(numero) + " and borrar = 0",
            cn, adOpenStatic);
    for (; !rs.Eof(); rs.MoveNext()) {
        LineaAlbaran l;
        l.producto = Texto(rs.Get("producto"));
        l.unidades = Texto(rs.Get("unidades"));
        l.Precio_Unit = rs.Get("Precio_Unit").IsNull() ? "0" : Texto(rs.Get("Precio_Unit"));
        l.precio = Texto(rs.Get("precio"));
        l.descuento = CStr(Abs(Numero(rs.Get("descuento"))));
        l.impuesto = Texto(rs.Get("impuesto"));
        m.detalle.push_back(std::move(l));
    }
    rs.Close();
    rs.Open(std::string("SELECT tipoimpuesto, Sum(impuesto) as val_impuesto, sum(precio) as total") +
                "  From Detalle_Factura_temp" + " where detalle_Factura_temp.num_factura = " + std::to_string(numero) +
                " group by tipoimpuesto" + " order by tipoimpuesto",
            cn, adOpenStatic);
    for (; !rs.Eof(); rs.MoveNext()) {
        ImpuestoAlbaran i;
        i.tipoimpuesto = Texto(rs.Get("tipoimpuesto"));
        i.val_impuesto = Numero(rs.Get("val_impuesto"));
        i.base = Numero(rs.Get("total")) - i.val_impuesto;
        m.impuestos.push_back(i);
    }
    rs.Close();
}

// Lines 1 to 8 are the first eight rows in table order.
void LeerLineasCabecera(Connection& cn) {
    Modulo& m = Estado();
    Recordset rs;
    rs.Open("Select * from DatosImpresion", cn, adOpenStatic);
    for (int i = 1; i <= 8 && !rs.Eof(); ++i, rs.MoveNext()) m.lineas[i] = Texto(rs.Get("contenido"));
    rs.Close();
}

std::string ValorMarcador(const std::string& marcador) {
    const Modulo& m = Estado();
    const std::string clave = LCase(marcador);
    if (clave == "<nro venta>") return m.numAlbaran;
    if (clave == "<fecha>") return Format(Date(), "dd/mm/yyyy") + " " + Format(Now(), "HH:MM");
    if (clave == "<empleado que le atendio>") return m.empleado;
    if (clave == "<nombre del cliente>") {
        if (m.clienteNombre.empty()) return "";
        const auto apellidos = Split(m.clienteApellidos, " ");
        return m.clienteNombre + " " + (apellidos.empty() ? "" : apellidos.front());
    }
    if (clave == "<impuesto>") return m.impuesto;
    if (clave == "<total>") return m.total;
    if (clave == "<entregado>") return m.entregaTexto;
    if (clave == "<cambio>") return m.cambioTexto;
    if (clave == "<forma de pago>") return "Albaran";
    return "";
}

// Prints at x, keeping the line, so that the next print shares its height.
double Derecha(const std::string& texto, double borde) { return borde - Printer().TextWidth(texto); }

// Line 6 names the document; lines 7 and 8 put what follows their ":" under
// the date of line 6.
void ImprimirLineasDocumento() {
    Modulo& m = Estado();
    PageDevice& p = Printer();
    double medida = 0;
    std::string linea6 = m.lineas[6];
    if (InStr(linea6, "Ticket") > 0) {
        const long barra = InStr(linea6, "/");
        if (barra > 3) medida = p.TextWidth(Left(linea6, barra - 3));
        linea6 = Replace(linea6, "Ticket", "Albaran");
    }
    ImprimirEn(0, linea6);
    for (int i = 7; i <= 8; ++i) {
        const std::string& linea = m.lineas[i];
        if (linea.empty()) continue;
        if (medida > 0 && InStr(linea, ":") > 0) {
            const auto partes = Split(linea, ":");
            ImprimirSinSalto(0, partes[0] + ":");
            ImprimirEn(medida, partes.size() > 1 ? partes[1] : "");
        } else {
            ImprimirEn(0, linea);
        }
    }
}

void ImprimirTablaLineas() {
    Modulo& m = Estado();
    PageDevice& p = Printer();
    p.Font.Size = 9;
    const std::string columna = m.quitarPUnitario ? "   Precio" : "   Total";
    const double xColumna = Derecha(columna, m.anchoLinea);
    ImprimirSinSalto(xColumna, columna);
    if (!m.quitarPUnitario) ImprimirSinSalto(Derecha("    P. Unit.", xColumna), "    P. Unit.");
    ImprimirEn(0, " Producto ");
    ImprimirEn(0, m.guiones);

    // The columns are placed by template amounts, not by the values.
    const double derecha = m.anchoLinea - p.TextWidth(" XXXX,XX");
    const double izquierda = m.quitarPUnitario ? derecha : derecha - p.TextWidth(" XXX,XX");
    for (const LineaAlbaran& l : m.detalle) {
        const std::string precio = Formato(l.precio);
        ImprimirSinSalto(Derecha(precio, m.anchoLinea), precio);
        if (!m.quitarPUnitario) {
            const std::string unitario = Formato(l.Precio_Unit);
            ImprimirSinSalto(Derecha(unitario, derecha), unitario);
        }
        std::string texto = l.unidades + " " + Left(l.producto, 21);
        if (p.TextWidth(texto) > izquierda) {
            std::string regla;
            while (p.TextWidth(regla) < izquierda && Len(regla) < kTopeCaracteres) regla += "8";
            texto = Left(texto, Len(regla));
        }
        ImprimirEn(0, texto);
    }
    ImprimirEn(0, m.guiones);
}

void ImprimirImportes() {
    Modulo& m = Estado();
    auto etiquetaImporte = [&](double x, const std::string& etiqueta, const std::string& importe) {
        ImprimirSinSalto(x, etiqueta);
        ImprimirEn(Derecha(importe, m.anchoLinea), importe);
    };
    if (CDbl(m.recargo) > 0) etiquetaImporte(0, " Recargo: ", Formato(m.recargo));
    if (!m.descuento.empty() && CDbl(m.descuento) > 0) etiquetaImporte(0, " Descuento: ", Formato(m.descuento));
    etiquetaImporte(m.anchoLinea / 2, "TOTAL: ", Formato(m.total));
    if (!m.entregaTexto.empty() && !m.cambioTexto.empty()) {
        etiquetaImporte(m.anchoLinea / 2, "Entrega", Formato(m.entregaTexto.empty() ? "0" : m.entregaTexto));
        etiquetaImporte(m.anchoLinea / 2, "Cambio", Formato(m.cambioTexto.empty() ? "0" : m.cambioTexto));
    }
}

void ImprimirTablaImpuestos() {
    Modulo& m = Estado();
    if (m.lineas[8].empty()) return;
    ImprimirEn(0, m.guiones);
    ImprimirEn(0, LineaTresColumnas("Tipo " + m.nombreImpuesto, "Base", "Cuota"));
    for (const ImpuestoAlbaran& i : m.impuestos) {
        std::string tipo = i.tipoimpuesto;
        if (Len(tipo) == 1) tipo = " " + tipo;
        ImprimirEn(0, LineaTresColumnas(tipo + " %", FormatNumber(i.base, m.numDecimales),
                                        FormatNumber(i.val_impuesto, m.numDecimales)));
    }
    ImprimirEn(0, m.guiones);
}

void ImprimirPie() {
    Modulo& m = Estado();
    ImprimirEn(0, "");
    ImprimirEn(0, "");
    ImprimirEn(0, "Firma");
    ImprimirEn(0, m.guiones);
    const std::string hora = Format(Now(), "HH:MM");
    ImprimirSinSalto(0, Format(Date(), "dd/mm/yyyy"));
    ImprimirEn(Derecha(hora, m.anchoLinea), hora);
    for (std::int32_t i = 0; i < m.lineasFinales; ++i) ImprimirEn(0, "  ");
}

}  // namespace

void ImprimirLineasTienda(int ultima) {
    Modulo& m = Estado();
    PageDevice& p = Printer();
    p.Font.Name = m.nombreFuente;
    if (!m.lineas[1].empty()) {
        p.Font.Size = 18;
        ImprimirEn(0, m.lineas[1]);
    }
    p.Font.Size = 9;
    for (int i = 2; i <= ultima; ++i)
        if (!m.lineas[i].empty()) ImprimirEn(0, m.lineas[i]);
}

Modulo& Estado() {
    static Modulo m;
    return m;
}

void LeerImpresora(Connection& cn, const std::string& impresora) {
    Modulo& m = Estado();
    m.nombreFuente.clear();
    m.numCaracteres = 35;
    Recordset rs;
    rs.Open("Select fuente,numcaracteres from impresoras where impresora = '" + impresora + "'", cn, adOpenStatic);
    if (!rs.Eof()) {
        m.nombreFuente = Texto(rs.Get("fuente"));
        const Value& caracteres = rs.Get("numcaracteres");
        if (!caracteres.IsNull() && Texto(caracteres) != "") m.numCaracteres = CInt(caracteres);
    }
    rs.Close();
    rs.Open("Select Modelo from impresoras where impresora = '" + impresora + "'", cn, adOpenStatic);
    m.modelo = rs.Eof() ? 0 : static_cast<std::int32_t>(Numero(rs.Get("Modelo")));
    rs.Close();
}

void PrepararImpresora(const std::string& impresora) {
    Modulo& m = Estado();
    BuscarImpresora(Trim(impresora));
    PageDevice& p = Printer();
    m.anchoLinea = p.TextWidth(String(m.numCaracteres < 0 ? 0 : m.numCaracteres, "8"));
    p.Font.Name = m.nombreFuente;
    p.Font.Size = 8.5;
    m.guiones.clear();
    while (p.TextWidth(m.guiones) < m.anchoLinea && Len(m.guiones) < kTopeCaracteres) m.guiones += "-";
}

void LeerLineasPie(Connection& cn) {
    Modulo& m = Estado();
    Recordset rs;
    rs.Open("Select * from DatosImpresion where numlinea >7", cn, adOpenStatic);
    for (int i = 8; i <= 17 && !rs.Eof(); ++i, rs.MoveNext()) m.lineas[i] = Texto(rs.Get("contenido"));
    rs.Close();
    rs.Open("Select contenido from datosimpresion where numlinea=17", cn, adOpenStatic);
    m.lineasFinales = 0;
    if (!rs.Eof() && !rs.Get("contenido").IsNull()) m.lineasFinales = CLng(Val(Texto(rs.Get("contenido"))));
    rs.Close();
}

void ImprimirEn(double x, const std::string& texto) {
    PageDevice& p = Printer();
    p.CurrentX = x;
    p.Print(texto);
}

void ImprimirSinSalto(double x, const std::string& texto) {
    PageDevice& p = Printer();
    const double y = p.CurrentY;
    p.CurrentX = x;
    p.Print(texto);
    p.CurrentY = y;
}

void ImprimirEnPiezas(const std::string& texto) {
    const Modulo& m = Estado();
    const double ancho = Printer().TextWidth(texto);
    if (ancho <= m.anchoLinea || m.anchoLinea <= 0) {
        ImprimirEn(0, texto);
        return;
    }
    const long partes = static_cast<long>(Round(ancho / m.anchoLinea));
    for (long k = 0; k <= partes; ++k) ImprimirEn(0, Mid(texto, 1 + k * m.numCaracteres, m.numCaracteres));
}

std::string ExpandirMarcadores(const std::string& textoOriginal) {
    std::string texto = textoOriginal;
    if (InStr(texto, "Nro. Ticket:") > 0) texto = Replace(texto, "Nro. ", "");
    std::string salida, marcador;
    bool enMarcador = false;
    for (const std::string& palabra : Split(texto, " ")) {
        if (Left(palabra, 1) == "<") {
            enMarcador = true;
            marcador = palabra;
        } else if (enMarcador) {
            marcador += " " + palabra;
        } else {
            salida += " " + palabra;
        }
        if (enMarcador && Right(palabra, 1) == ">") {
            salida += " " + ValorMarcador(marcador);
            enMarcador = false;
        }
    }
    return Mid(salida, 2);
}

std::string LineaTresColumnas(std::string primera, std::string segunda, std::string tercera) {
    const Modulo& m = Estado();
    const double ancho = m.numCaracteres * 0.3;
    while (Len(primera) < ancho) primera += " ";
    while (Len(segunda) < ancho) segunda = " " + segunda;
    while (Len(tercera) < ancho) tercera = " " + tercera;
    std::string linea = primera + segunda + tercera;
    if (Len(linea) > m.numCaracteres && Left(segunda, 1) == " ") {
        segunda = Mid(segunda, 2);
        linea = primera + segunda + tercera;
    }
    return linea;
}

void ImprimirAlbaranTicket(Connection& conexion, const std::string& impresora, std::int32_t numero,
                           const std::string& cambio, const std::string& entrega) {
    Modulo& m = Estado();
    m = Modulo{};
    LeerAjustes(conexion);
    m.entregaTexto = entrega;
    m.cambioTexto = cambio;
    LeerImpresora(conexion, impresora);
    LeerCabecera(conexion, numero);
    LeerLineas(conexion, numero);
    LeerLineasCabecera(conexion);
    LeerLineasPie(conexion);
    for (int i = 6; i <= 16; ++i) m.lineas[i] = ExpandirMarcadores(m.lineas[i]);

    PrepararImpresora(impresora);
    ImprimirLineasTienda(5);
    ImprimirLineasDocumento();
    ImprimirEn(0, "");
    ImprimirEn(0, "Telefono: " + m.clienteTelefono);
    ImprimirEn(0, "CIF: " + m.clienteNif);
    ImprimirEn(0, "");
    ImprimirTablaLineas();
    ImprimirImportes();
    ImprimirTablaImpuestos();
    ImprimirPie();
    Printer().EndDoc();
}

}  // namespace tpv::ImprimirAlbaran
