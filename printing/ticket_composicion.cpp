// The configurable ticket from head to foot: shop, document line, lines,
// amounts, total in words, tax table and foot. The sections run in this order
// and the first failure ends the ticket where it stands.
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/texto.hpp"
#include "printing/en_letras.hpp"
#include "printing/ticket_configurable.hpp"

namespace tpv {

namespace {

double Numero(const Value& v) { return v.IsNull() ? 0.0 : CDbl(v); }

std::string RellenarDerecha(std::string texto, long ancho) {
    const long largo = Len(texto);
    return largo < ancho ? texto + Space(ancho - largo) : texto;
}

}  // namespace

const Value& ImprimirConfONOFF::Cabecera(const char* columna) const {
    if (!cabecera_.IsOpen())
        throw RuntimeError(3704, "No se permite realizar esta operación si el objeto está cerrado.");
    return cabecera_.Get(columna);
}

std::string ImprimirConfONOFF::Importe(double valor) const { return FormatNumber(valor, numDecimales); }

void ImprimirConfONOFF::ComponerTicket(std::int32_t numero, const std::string& tablaCabecera, double entrega,
                                       double cambio, double& propina) {
    Recordset rsConf;
    rsConf.Open("Select * from confticket", *conexion_, adOpenStatic);
    if (rsConf.RecordCount() == 1)
        conf_ = ConfTicket::Leer(rsConf);
    else if (rotulosSinTabla_)
        conf_ = *rotulosSinTabla_;
    else
        return;
    enNegrita = conf_.EnNegrita;

    struct CerrarCabecera {
        Recordset& rs;
        ~CerrarCabecera() {
            if (rs.IsOpen()) rs.Close();
        }
    } cerrar{cabecera_};

    if (!PrepararDocumento(numero, tablaCabecera)) return;
    SeccionCabecera();
    SeccionDocumento(numero);
    SeccionLineas(numero);
    SeccionImportes(entrega, cambio, propina);
    SeccionLetras();
    SeccionImpuestos();
    if (documento_ == Documento::Preticket)
        PiePreticket();
    else
        PieVenta();
}

// Chooses the tables of the document and reads its head; false when the
// document doesn't exist. A sample opens no head.
bool ImprimirConfONOFF::PrepararDocumento(std::int32_t numero, const std::string& tablaCabecera) {
    if (tablaCabecera.empty() || numero < 0) {
        documento_ = Documento::Muestra;
        return true;
    }
    const std::string tabla = LCase(tablaCabecera);
    if (tabla == "cabecera_abono") {
        documento_ = Documento::Abono;
        tablaLineas_ = "detalle_abono";
    } else if (tabla == "cabecera_factura_temp") {
        documento_ = Documento::Preticket;
        tablaLineas_ = "Detalle_Factura_Temp";
    } else {
        documento_ = Documento::Venta;
        tablaLineas_ = "Detalle_Factura";
    }
    claveLineas_ = std::to_string(numero);
    cabecera_.Open("Select * from " + tablaCabecera + " where numero = " + claveLineas_, *conexion_, adOpenStatic);
    if (cabecera_.Eof()) return false;
    pagoValeDescuento_ = tabla == "cabecera_factura" ? Numero(Cabecera("pagoValeDescuento")) : 0.0;
    total_ = Numero(Cabecera("total"));
    empleado_ = Texto(Cabecera("empleado"));
    return true;
}

void ImprimirConfONOFF::SeccionCabecera() {
    ImprimirFuerte(conf_.nomEmpresa, "I", 14);
    for (const std::string* linea : {&conf_.Direccion, &conf_.poblacion, &conf_.provincia, &conf_.cif, &conf_.web,
                                     &conf_.telefono, &conf_.email})
        ImprimirLinea(*linea, "I", 9);
    ImprimirLinea(" ", "I", 9);
}

void ImprimirConfONOFF::SeccionDocumento(std::int32_t numero) {
    std::string numeroTexto, nombre, nif, telefono, direccion;
    Value fecha, hora;
    bool conCliente = false;
    if (documento_ == Documento::Muestra) {
        numeroTexto = "XXXXXX";
        fecha = Now();
        hora = Now();
        nombre = "Xxxxx Xxxxxx Xxxxx";
        nif = "XNNNNNNNN";
        telefono = "XXXXXXXXX";
        direccion = "XXXXXXXXX XXX XX XXXXXXXXX XXX XX";
        conCliente = true;
    } else {
        numeroTexto = CStr(numero);
        fecha = Cabecera(documento_ == Documento::Preticket ? "FECHA" : "fechaVenta");
        hora = Cabecera("hora");
        const double cliente = Numero(Cabecera("cliente"));
        if (cliente > 0) {
            nombre = ObtenerNomClientexCodigo(CLng(cliente), nif, telefono, direccion);
            conCliente = true;
        }
    }
    numeroTexto = RellenarDerecha(numeroTexto, 6);

    std::string titulo;
    if (documento_ == Documento::Preticket)
        titulo = "Venta:" + numeroTexto + " " + Format(fecha, "dd/mm/yyyy");
    else if (documento_ == Documento::Abono)
        titulo = "Abono:" + numeroTexto + " " + Format(fecha, "dd/mm/yy");
    else
        titulo = conf_.nomTicket + numeroTexto + " " + Format(fecha, "dd/mm/yy");
    ImprimirLinea(titulo + " " + Format(hora, "HH:MM"), "I", 9);
    ImprimirLinea(conf_.empleado + empleado_, "I", 9);

    if (conCliente) {
        if (!nombre.empty()) ImprimirLinea(conf_.cliente + nombre, "I", 9);
        std::string linea;
        if (!nif.empty()) linea = conf_.CifCliente + nif + "  ";
        if (!telefono.empty()) linea += conf_.telefonocliente + telefono;
        ImprimirLinea(linea, "I", 9);
        if (!direccion.empty()) ImprimirLinea(conf_.DirCliente + direccion, "I", 9);
    }
    ImprimirLinea(" ", "I", 9);
}

void ImprimirConfONOFF::SeccionLineas(std::int32_t numero) {
    ImprimirFuerte(LineaDetalle(conf_.unidades, " " + conf_.descripcion, conf_.pUnitario, conf_.total,
                                conf_.mostrarPunit),
                   "I");
    ImprimirLinea(guiones, "I", 9);
    if (documento_ == Documento::Muestra) {
        ImprimirLinea(LineaDetalle("XX", "Xxxxxxx Xxxxxxxx", "XXXX,XX", "XXXX,XX", conf_.mostrarPunit), "I", 9);
    } else {
        const bool abono = documento_ == Documento::Abono;
        Recordset rs;
        rs.Open("Select unidades, producto, precio_unit, precio,recargo,orden from " + tablaLineas_ +
                    (abono ? " where num_abono = " : " where num_factura = ") + std::to_string(numero),
                *conexion_, adOpenStatic);
        for (; !rs.Eof(); rs.MoveNext()) {
            const Value& unidades = rs.Get("unidades");
            const std::string cantidad = abono ? CStr(-Numero(unidades)) : Texto(unidades);
            const double precioUnit = Numero(rs.Get("precio_unit"));
            const double precio = Numero(rs.Get("precio"));
            const std::string unitario = precioUnit == 0 ? "" : Importe(precioUnit);
            const std::string total = precioUnit == 0 ? "" : Importe(abono ? -precio : precio);
            ImprimirLinea(LineaDetalle(cantidad, Texto(rs.Get("producto")), unitario, total, conf_.mostrarPunit), "I",
                          9);
        }
        rs.Close();
    }
    ImprimirLinea(guiones, "I", 9);
}

void ImprimirConfONOFF::SeccionImportes(double entrega, double cambio, double& propina) {
    const bool abono = documento_ == Documento::Abono;
    if (conf_.utilizaSubTotal == -1) {
        const double impuesto = Numero(Cabecera("impuesto"));
        const double neto = abono ? total_ + impuesto : total_ - impuesto;
        ImprimirFuerte(LineaImporte(Importe(abono ? -neto : neto), "SubTotal"), "D");
        ImprimirFuerte(LineaImporte(Importe(impuesto), conf_.cuota), "D");
    }
    const double recargo = Numero(Cabecera("recargo"));
    // A pre-ticket leaves the surcharge's amount at zero on purpose.
    if (recargo > 0)
        ImprimirFuerte(LineaEtiquetaImporte("Recargo ", Importe(documento_ == Documento::Preticket ? 0 : recargo)),
                       "D");
    const double descuento = Numero(Cabecera("descuento"));
    if (descuento > 0) ImprimirFuerte(LineaEtiquetaImporte("Descuento:", "-" + Importe(descuento)), "D");

    std::string etiquetaPropina, baseWord;
    const Impuestos totales = CalcularPropina(propina, etiquetaPropina, baseWord);
    if (recargo > 0 || descuento > 0 || propina > 0) {
        ImprimirFuerte(LineaEtiquetaImporte("Subtotal:", Importe(totales.baseTotal)), "D");
        if (baseWord != "TOTAL") ImprimirFuerte(LineaEtiquetaImporte("Impuestos:", Importe(totales.cuotaTotal)), "D");
    }
    if (propina > 0 || !etiquetaPropina.empty())
        ImprimirFuerte(LineaEtiquetaImporte(etiquetaPropina, propina <= 0 ? "" : Importe(propina)), "D");

    totalFinal_ = total_;
    if (propina > 0) totalFinal_ += propina;
    ImprimirFuerte(LineaImporte(Importe(abono ? -totalFinal_ : totalFinal_), conf_.totalfinal), "D");
    if (entrega > 0) ImprimirFuerte(LineaImporte(Importe(entrega), conf_.entrega), "D");
    if (pagoValeDescuento_ > 0) ImprimirFuerte(LineaImporte(Importe(pagoValeDescuento_), "Vale Desc."), "D");
    if (cambio > 0) ImprimirFuerte(LineaImporte(Importe(cambio), conf_.cambio), "D");
}

// The tip of the shop's tip row: on a pre-ticket the reckoned one; on a sale
// or refund the caller's, under the plain label when the two differ.
ImprimirConfONOFF::Impuestos ImprimirConfONOFF::CalcularPropina(double& propina, std::string& etiquetaPropina,
                                                                std::string& baseWord) {
    etiquetaPropina = "Propina:";
    const ConceptoPropina concepto = ObtenerConceptoPropina();
    etiquetaPropina = concepto.etiqueta;
    baseWord = concepto.base;
    Impuestos totales{total_, 0.0};
    if (!etiquetaPropina.empty() && concepto.porcentaje > 0) {
        double calculada = 0.0;
        if (baseWord == "TOTAL") {
            calculada = concepto.porcentaje / 100 * total_;
        } else {
            totales = SumarImpuestosDocumento();
            calculada = concepto.porcentaje / 100 * totales.baseTotal;
        }
        if (documento_ == Documento::Preticket)
            propina = calculada;
        else if (calculada != propina)
            etiquetaPropina = "Propina:";
    }
    return totales;
}

void ImprimirConfONOFF::SeccionLetras() {
    if (conf_.mostrartotalletras) {
        ImprimirLinea(" ", "I", 9);
        const std::string cifras = documento_ == Documento::Muestra
                                       ? "1595.35"
                                       : Replace(Replace(Importe(totalFinal_), ".", ""), ",", ".");
        ImprimirTextoLargo(EnLetras(cifras, moneda), true, enNegrita);
    }
    ImprimirLinea(" ", "I", 9);
}

void ImprimirConfONOFF::SeccionImpuestos() {
    if (conf_.desgloseImpuestos == -1) {
        ImprimirLinea(guiones, "I", 9);
        ImprimirLinea(LineaImpuesto(conf_.nomImpuesto, conf_.base, conf_.cuota), "I", 9);
        if (documento_ == Documento::Muestra) {
            ImprimirLinea(LineaImpuesto("XX%", "XX.XXX,XX", "XXX,XX"), "I", 9);
        } else {
            Recordset rs;
            AbrirImpuestos(rs);
            for (; !rs.Eof(); rs.MoveNext()) {
                const Impuestos fila = ImpuestosDeFila(rs, documento_);
                if (fila.baseTotal == 0) continue;
                ImprimirLinea(LineaImpuesto(Texto(rs.Get("tipoimpuesto")) + "%", Importe(fila.baseTotal),
                                            Importe(fila.cuotaTotal)),
                              "I", 9);
            }
            rs.Close();
        }
        ImprimirLinea(guiones, "I", 9);
    }
    ImprimirLinea(" ", "I", 9);
}

void ImprimirConfONOFF::PiePreticket() {
    if (HayLineaPropinas()) {
        ImprimirLinea("Propina:", "I", 9);
        ImprimirLinea(" ", "I", 9);
        ImprimirLinea(guiones, "I", 9);
    }
    if (comensales >= 1)
        ImprimirFuerte("Comensales " + CStr(comensales) + " toca a = " + Importe(total_ / comensales), "C");
}

void ImprimirConfONOFF::PieVenta() {
    if (conf_.FormaPago) {
        const std::string nombre = documento_ == Documento::Muestra
                                       ? "Xxxxxx"
                                       : ObtenerNomFormaPago(static_cast<std::int32_t>(Numero(Cabecera("pago"))));
        ImprimirLinea(*conf_.FormaPago + nombre, "C", 9);
    }
    ImprimirLinea(conf_.ImpuestosIncluidos, "C", 9);
    ImprimirFuerte(conf_.Gracias, "C");
    ImprimirLinea(" ", "I", 9);
    ImprimirTextoLargo(conf_.comentariofinal, false, false);
}

}  // namespace tpv
