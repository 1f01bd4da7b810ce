// The settlement screen laid out on the design size of every screen. The
// left half holds the amounts in big figures (to pay, handed over, change)
// and the payment methods under them; the right half the keypad, the ticks
// of the document and, along the bottom, the big buttons to finish or go
// back. The panels of the balance, the debt, the voucher, the refund, the
// mixed payment and the gift ticket open over the middle.
#include "screens/frm_cobrar.hpp"
#include "screens/pantallas.hpp"

namespace tpv {

namespace {

constexpr double kMargen = 240;
constexpr double kDerecha = 7920;            // left edge of the right half
constexpr double kAnchoIzquierda = 7440;     // width of the left half
constexpr double kAltoImporte = 1080;
constexpr double kFuenteImporte = 26;
constexpr double kFuenteGrande = 14;
constexpr double kAltoBoton = 960;
constexpr double kFilaAcciones = 10200;      // top of the bottom row of buttons

}  // namespace

void frmCobrar::Disenar() {
    nombre = "frmCobrar";
    caption = "Cobro de la Venta";
    width = kAnchoDiseno;
    height = kAltoDiseno;
    keyPreview = false;
    DisenarImportes();
    DisenarFormasPago();
    DisenarTeclado();
    DisenarDocumento();
    DisenarMixto();
    DisenarPaneles();
    DisenarRegalo();
    DisenarDescuentos();
    Poner(tmrResalto, "tmrResalto", 0, 0, 0, 0);
    tmrResalto.SetInterval(200);
    tmrResalto.enabled = false;
    Poner(tmrColorear, "tmrColorear", 0, 0, 0, 0);
    tmrColorear.SetInterval(800);
    tmrColorear.enabled = true;
    // The entry of the amount first; the rest as laid out.
    int orden = 0;
    for (TextBox* t : {&txt_Entrega, &txtPagoTarjeta, &txtPagoEfectivo}) t->tabIndex = orden++;
    for (Control& c : controles)
        if (c.tabIndex == 0 && &c != &txt_Entrega) c.tabIndex = orden++;
    Conectar();
}

void frmCobrar::DisenarImportes() {
    const double x = kMargen;
    Poner(lblNumVenta, "lblNumVenta", x, 120, 1800, 480);
    lblNumVenta.fontSize = kFuenteGrande;
    Poner(lbl_Empleado, "lbl_Empleado", x + 1920, 120, 3600, 480);
    Poner(lbl_codEmpleado, "lbl_codEmpleado", x + 5640, 120, 600, 480);
    lbl_codEmpleado.visible = false;
    Poner(lblCodCliente, "lblCodCliente", x + 6360, 120, 1080, 480, "0");
    // A caption and its amount in big figures; the amounts only shown are read-only.
    const auto importe = [&](Label& etiqueta, const char* nombreEtiqueta, double altoEtiqueta, const char* texto,
                             TextBox& caja, const char* nombreCaja, double y, bool soloLectura) {
        Poner(etiqueta, nombreEtiqueta, x, y, 2400, altoEtiqueta, texto);
        etiqueta.fontSize = kFuenteGrande;
        Poner(caja, nombreCaja, x + 2520, y, 4920, kAltoImporte);
        caja.fontSize = kFuenteImporte;
        caja.locked = soloLectura;
        caja.tabStop = !soloLectura;
    };
    importe(Label1, "Label1", kAltoImporte, "Total", CajaText_Pago, "CajaText_Pago", 720, true);
    importe(Label3, "Label3", 600, "Entrega", txt_Entrega, "txt_Entrega", 1920, false);
    Poner(lblEnter, "lblEnter", x, 2520, 2400, 480, "<ENTER>");
    importe(Label2, "Label2", kAltoImporte, "Devolucion", txt_Devolucion, "txt_Devolucion", 3120, true);
    Poner(lblFormaPago, "lblFormaPago", x, 4320, kAnchoIzquierda, 600);
    lblFormaPago.fontSize = kFuenteGrande;
}

void frmCobrar::DisenarFormasPago() {
    Poner(Frame5, "Frame5", kMargen, 5040, kAnchoIzquierda, 4080, "Formas de Pago");
    Poner(Frame1, "Frame1", 120, 240, kAnchoIzquierda - 240, 3720, "", &Frame5);
    Poner(PanelFormasPago, "PanelFormasPago", 60, 60, kAnchoIzquierda - 360, 3600, "", &Frame1);
    PanelFormasPago.Separacion = 120;
    PanelFormasPago.TamanoBoton = 1560;
    Poner(frTipo, "frTipo", kMargen, 9240, kAnchoIzquierda, 840, "Documento");
    Poner(optFactura, "optFactura", 120, 240, 2400, 480, "Factura", &frTipo);
    Poner(optAlbaran, "optAlbaran", 2640, 240, 2400, 480, "Albaran", &frTipo);
    Poner(frNumCopias, "frNumCopias", kMargen, 5040, kAnchoIzquierda, 1560, "Copias del Albaran");
    frNumCopias.visible = false;
    for (int i = 0; i < 3; ++i) {
        CommandButton& b = i == 0 ? cmdCopias1 : i == 1 ? cmdCopias2 : cmdCopias3;
        Poner(b, "cmdCopias" + std::to_string(i + 1), 120 + i * 2400, 360, 2280, kAltoBoton,
              std::to_string(i + 1) + (i == 0 ? " Copia" : " Copias"), &frNumCopias);
        b.fontSize = kFuenteGrande;
    }
}

void frmCobrar::DisenarTeclado() {
    PonerTecladoCobro(*this, frmNumerico, btnNumerico_Cobro, cmd_nuevoCobro, kDerecha, 720);
}

void frmCobrar::DisenarDocumento() {
    const double x = kDerecha + 3840;
    Poner(chk_Imprimir, "chk_Imprimir", x, 720, 3240, 600, "Imprimir Ticket");
    Poner(chk_Cajetin, "chk_Cajetin", x, 1440, 3240, 600, "Abrir Cajon");
    Poner(chk_Factura, "chk_Factura", x, 2160, 3240, 600, "Factura");
    Poner(imgTicket, "imgTicket", x, 2880, 3240, 1200);
    imgTicket.visible = false;
    const double y = 9000;
    Poner(cmdTicketRegalo, "cmdTicketRegalo", kDerecha, y, 1680, kAltoBoton, "Ticket Regalo");
    Poner(cmd_ObsTRegalo, "cmd_ObsTRegalo", kDerecha + 1800, y, 1680, kAltoBoton, "Comentario Ticket Regalo");
    Poner(cmdapliVale, "cmdapliVale", kDerecha + 3600, y, 1680, kAltoBoton, "Aplicar Vale Descuento");
    Poner(cmd_Observaciones, "cmd_Observaciones", kDerecha + 5400, y, 1800, kAltoBoton, "Observaciones de Venta");
    Poner(cmd_FinVenta, "cmd_FinVenta", kDerecha, kFilaAcciones, 3480, kAltoBoton, "Terminar Venta <F12>");
    Poner(cmdDeuda, "cmdDeuda", kDerecha, kFilaAcciones, 3480, kAltoBoton, "Generar Deuda");
    Poner(cmdSalir, "cmdSalir", kDerecha + 3720, kFilaAcciones, 3480, kAltoBoton, "Volver a la Venta");
    for (CommandButton* b : {&cmd_FinVenta, &cmdDeuda, &cmdSalir}) b->fontSize = kFuenteGrande;
    cmd_FinVenta.visible = false;
    cmdDeuda.visible = false;
}

// Over the amounts: what goes by card and what in cash.
void frmCobrar::DisenarMixto() {
    Poner(fr_totalesMixto, "fr_totalesMixto", kMargen, 1920, kAnchoIzquierda, 3000, "Pago Mixto");
    fr_totalesMixto.visible = false;
    struct Fila {
        Label* etiqueta;
        const char* nombreEtiqueta;
        const char* texto;
        TextBox* caja;
        const char* nombreCaja;
    };
    const Fila filas[] = {{&lblTotalMixto, "lblTotalMixto", "Total", &txtTotalMixto, "txtTotalMixto"},
                          {&lblPagoTarjeta, "lblPagoTarjeta", "Tarjeta", &txtPagoTarjeta, "txtPagoTarjeta"},
                          {&lblPagoEfectivo, "lblPagoEfectivo", "Efectivo", &txtPagoEfectivo, "txtPagoEfectivo"},
                          {&lblCambioMixto, "lblCambioMixto", "Cambio", &txtCambioMixto, "txtCambioMixto"}};
    for (int i = 0; i < 4; ++i) {
        const double y = 240 + i * 660;
        Poner(*filas[i].etiqueta, filas[i].nombreEtiqueta, 120, y, 1560, 600, filas[i].texto, &fr_totalesMixto);
        Poner(*filas[i].caja, filas[i].nombreCaja, 1800, y, 2880, 600, "", &fr_totalesMixto);
        filas[i].caja->fontSize = kFuenteGrande;
    }
    txtTotalMixto.locked = true;
    txtCambioMixto.locked = true;
    Poner(chkTicketMixto, "chkTicketMixto", 4920, 240, 2400, 480, "Imprimir Ticket", &fr_totalesMixto);
    Poner(chkCajetinMixto, "chkCajetinMixto", 4920, 840, 2400, 480, "Abrir Cajon", &fr_totalesMixto);
    Poner(chkFacturaMixto, "chkFacturaMixto", 4920, 1440, 2400, 480, "Factura", &fr_totalesMixto);
    Poner(Option2, "Option2", 4920, 2040, 2400, 360, "Factura", &fr_totalesMixto);
    Option2.visible = false;
    Poner(cmdObsMixto, "cmdObsMixto", 4920, 2400, 2400, 480, "Observaciones", &fr_totalesMixto);
}

void frmCobrar::DisenarPaneles() {
    const double x = 2400, y = 2400, ancho = 10560, alto = 4200;
    Poner(frDinDep, "frDinDep", x, y, ancho, alto, "Dinero en Deposito");
    frDinDep.visible = false;
    Poner(lblNomDinDep, "lblNomDinDep", 240, 360, 10080, 600, "", &frDinDep);
    Poner(lblDinDepInfo, "lblDinDepInfo", 240, 1080, 6000, 600, "Este cliente tiene un saldo a favor con valor de",
          &frDinDep);
    Poner(lblValorDinDep, "lblValorDinDep", 6360, 1080, 3960, 600, "", &frDinDep);
    lblValorDinDep.fontSize = kFuenteGrande;
    Poner(lblDinDepPregunta, "lblDinDepPregunta", 240, 1920, 10080, 600,
          "Desea cobrar la venta con el Saldo a Favor del cliente", &frDinDep);
    Poner(cmdAceptarDinDep, "cmdAceptarDinDep", 240, 2880, 4920, kAltoBoton, "Pagar con el Saldo", &frDinDep);
    Poner(cmdCancelar, "cmdCancelar", 5400, 2880, 4920, kAltoBoton, "Otra Forma de Pago", &frDinDep);

    Poner(frInfoDeuda, "frInfoDeuda", x, y, ancho, alto, "Deuda");
    frInfoDeuda.visible = false;
    Poner(lblDeudaTexto, "lblDeudaTexto", 240, 360, 10080, 480,
          "El cliente no esta pagando el total del servicio / producto.", &frInfoDeuda);
    Poner(lblInfoDeuda, "lblInfoDeuda", 240, 960, 10080, 600, "", &frInfoDeuda);
    lblInfoDeuda.fontSize = 12;
    Poner(Frame6, "Frame6", 240, 1680, 10080, 960, "Este cliente tiene una deuda con valor de", &frInfoDeuda);
    Frame6.visible = false;
    Poner(lblDeudaCliente, "lblDeudaCliente", 240, 300, 4800, 540, "", &Frame6);
    Poner(cmdAceptarDeuda, "cmdAceptarDeuda", 240, 2880, 4920, kAltoBoton, "Aceptar", &frInfoDeuda);
    Poner(cmdCancelarDeuda, "cmdCancelarDeuda", 5400, 2880, 4920, kAltoBoton, "Cancelar", &frInfoDeuda);

    Poner(frPideVale, "frPideVale", x, y, ancho, alto, "Vale Descuento");
    frPideVale.visible = false;
    Poner(lblPideVale, "lblPideVale", 240, 360, 4800, 600, "Numero del vale", &frPideVale);
    Poner(txtnumVale, "txtnumVale", 5160, 360, 5160, 720, "", &frPideVale);
    txtnumVale.fontSize = kFuenteGrande;
    Poner(frNoExisteVale, "frNoExisteVale", 240, 1200, 10080, 1440, "", &frPideVale);
    frNoExisteVale.visible = false;
    Poner(lblNoExisteVale, "lblNoExisteVale", 120, 120, 9840, 1200,
          "El numero introducido ya ha sido utilizado o no pertenece a ningun vale en vigor compruebe la fecha de "
          "caducidad",
          &frNoExisteVale);
    Poner(cmdAplicaVale, "cmdAplicaVale", 240, 2880, 4920, kAltoBoton, "Aplicar", &frPideVale);
    Poner(cmdCancelaVale, "cmdCancelaVale", 5400, 2880, 4920, kAltoBoton, "Cancelar", &frPideVale);

    Poner(frAbono, "frAbono", kDerecha, 5640, 7200, 3240, "Abono de Venta");
    frAbono.visible = false;
    Poner(lblAbono, "lblAbono", 120, 240, 6960, 1680,
          "Esta operacion se ha realizado como un Abono de Venta recuerde en devolver el importe que marca la "
          "casilla de arriba o haga un click en Imprimir Vale Descuento",
          &frAbono);
    Poner(cmdImprimirValeDescuento, "cmdImprimirValeDescuento", 120, 2040, 6960, kAltoBoton,
          "Imprimir Vale Descuento", &frAbono);
}

void frmCobrar::DisenarRegalo() {
    Poner(frTicketRegalo, "frTicketRegalo", kMargen, 720, kAnchoDiseno - 2 * kMargen, 9240,
          "Seleccione los articulos del Ticket Regalo");
    frTicketRegalo.visible = false;
    Poner(FGCaja, "FGCaja", 120, 240, kAnchoDiseno - 2 * kMargen - 240, 7560, "", &frTicketRegalo);
    Poner(cmdImpTicketRegalo, "cmdImpTicketRegalo", 120, 8040, 4800, kAltoBoton, "Continuar", &frTicketRegalo);
    Poner(cmdSalirTicketRegalo, "cmdSalirTicketRegalo", 5040, 8040, 4800, kAltoBoton, "Volver a la Venta",
          &frTicketRegalo);

    Poner(fr_TRegalo, "fr_TRegalo", 2400, 2400, 10560, 3600, "Comentario del Ticket Regalo");
    fr_TRegalo.visible = false;
    Poner(txtObsTRegalo, "txtObsTRegalo", 240, 360, 10080, 1680, "", &fr_TRegalo);
    txtObsTRegalo.maxLength = 100;
    Poner(cmd_AceptarTRegalo, "cmd_AceptarTRegalo", 240, 2280, 4920, kAltoBoton, "Aceptar", &fr_TRegalo);
    Poner(cmd_CancelarTRegalo, "cmd_CancelarTRegalo", 5400, 2280, 4920, kAltoBoton, "Cancelar", &fr_TRegalo);
}

}  // namespace tpv
