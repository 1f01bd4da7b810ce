#include "core/runtime/calendario.hpp"
#include "printing/hoja_pdf.hpp"
#include "printing/informe.hpp"

// The privacy contract a new customer signs: the shop as the one who keeps
// the data, the customer, the clause (the shop's own text, or a standard one
// naming the shop), the date and two places to sign.
namespace tpv {

namespace {

std::string ClausulaGenerica(const std::string& tienda, const std::string& direccion) {
    const std::string responsable = tienda.empty() ? "el establecimiento" : tienda;
    const std::string domicilio = direccion.empty() ? "" : ", con domicilio en " + direccion;
    return "En cumplimiento del Reglamento (UE) 2016/679 del Parlamento Europeo y del Consejo, de 27 de abril de "
           "2016, relativo a la protección de las personas físicas en lo que respecta al tratamiento de datos "
           "personales y a la libre circulación de estos datos, y de la Ley Orgánica 3/2018, de 5 de diciembre, de "
           "Protección de Datos Personales y garantía de los derechos digitales, le informamos de lo siguiente:\n\n"
           "Responsable del tratamiento: " +
           responsable + domicilio +
           ".\n\n"
           "Finalidad: gestionar su ficha de cliente, sus compras, facturas y garantías y, si usted lo desea, "
           "informarle de nuestros productos y ofertas.\n\n"
           "Legitimación: la relación comercial que nos une y el consentimiento que usted presta al firmar este "
           "documento.\n\n"
           "Conservación: sus datos se conservarán mientras dure la relación comercial y, después, durante los "
           "plazos que exijan las leyes fiscales y mercantiles.\n\n"
           "Destinatarios: sus datos no se cederán a terceros, salvo por obligación legal.\n\n"
           "Derechos: puede ejercer sus derechos de acceso, rectificación, supresión, oposición, limitación del "
           "tratamiento y portabilidad dirigiéndose por escrito a " +
           responsable +
           " en la dirección indicada, y presentar una reclamación ante la Agencia Española de Protección de Datos "
           "(www.aepd.es).\n\n"
           "El firmante declara haber sido informado de todo lo anterior y consiente el tratamiento de sus datos "
           "personales en los términos expuestos.";
}

}  // namespace

void MaquetarProteccionDatos(PdfPrinter& p, const FilaInforme& fila, bool textoDeLaTienda) {
    using A = HojaPdf::Alinear;
    constexpr double L = HojaPdf::kIzquierda, R = HojaPdf::kDerecha, W = HojaPdf::kAncho;
    HojaPdf h(p);
    const std::string cliente = fila.Texto("texto1"), tienda = fila.Texto("texto2"),
                      direccion = fila.Texto("texto3");
    const std::string clausula = textoDeLaTienda ? fila.Texto("memo2") : ClausulaGenerica(tienda, direccion);

    double y = HojaPdf::kArriba;
    h.Fuente(14, true);
    h.Texto(L, y, h.Ajustar(tienda, W));
    y += 380;
    h.Fuente(9);
    h.Texto(L, y, h.Ajustar(direccion, W));
    y += 700;
    h.Fuente(13, true);
    h.Texto(L + W / 2, y, "PROTECCIÓN DE DATOS PERSONALES", A::Centro);
    y += 330;
    h.Fuente(10);
    h.Texto(L + W / 2, y, "Información y consentimiento del cliente", A::Centro);
    y += 500;
    h.Raya(L, y, R, y, 15, 0.3);
    y += 250;
    h.Fuente(10);
    h.Texto(L, y, "Cliente:");
    h.Fuente(10, true);
    h.Texto(L + 900, y, h.Ajustar(cliente, W - 900));
    y += 550;

    h.Fuente(10);
    const double alto = h.AltoLinea();
    const double limite = HojaPdf::kPie - 300;
    for (const std::string& linea : h.Partir(clausula, W)) {
        if (y + alto > limite) {
            h.NuevaPagina();
            y = HojaPdf::kArriba;
            h.Fuente(10);
        }
        h.Texto(L, y, linea);
        y += linea.empty() ? alto * 0.6 : alto * 1.15;
    }

    // The date and the two signatures keep together.
    if (y + 2600 > limite) {
        h.NuevaPagina();
        y = HojaPdf::kArriba;
    }
    y += 500;
    h.Fuente(10);
    h.Texto(L, y, "Fecha: " + FechaLarga(Date()));
    y += 600;
    const double anchoFirma = W * 0.42;
    for (const double x : {L, R - anchoFirma}) h.Marco(x, y, anchoFirma, 1400, 0.6);
    h.Fuente(8.5, true);
    h.Texto(L + 120, y + 100, "Firma del cliente");
    h.Texto(R - anchoFirma + 120, y + 100, "Por el establecimiento");
    h.Fuente(9);
    h.Texto(L + anchoFirma / 2, y + 1500, h.Ajustar(cliente, anchoFirma), A::Centro);
    h.Texto(R - anchoFirma / 2, y + 1500, h.Ajustar(tienda, anchoFirma), A::Centro);
}

}  // namespace tpv
