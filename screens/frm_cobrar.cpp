// The settlement screen's opening and the payment itself: the method, the
// amount handed over, the mixed payment, the document ticks, the keypad,
// the function keys and the finish that closes the sale.
#include "screens/frm_cobrar.hpp"

#include "closing/albaranes.hpp"
#include "closing/cierre.hpp"
#include "closing/deposito.hpp"
#include "closing/vales.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/caption_translator.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/key_filter.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/servicios/screen_fitter.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"
#include "core/sesion/visor.hpp"
#include "screens/colores.hpp"
#include "screens/frm_caja.hpp"

namespace tpv {

namespace {

constexpr long kBlanco = 0xFFFFFF;

// An amount typed or shown on the screen; an empty entry counts as 0.
double Importe(const TextBox& caja) { return caja.Text().empty() ? 0.0 : CDbl(Value(caja.Text())); }

std::string Formatear(double x) { return FormatNumber(x, sesion().opciones.NumDecimales); }

void Foco(Control& c) { frmCaja::FocoSeguro(c); }

void SeleccionarTodo(TextBox& caja) {
    caja.selStart = 0;
    caja.selLength = Len(caja.Text());
}

}  // namespace

void ConectarCobro(frmCaja& caja) {
    caja.MostrarCobro = [] { Unica<frmCobrar>().Show(true); };
    Unica<frmCobrar>().GrabarAlbaran = [](std::int32_t numeroVenta, int copias) { GrabarAlbaran(numeroVenta, copias); };
}

bool frmCobrar::ClienteEnVenta() const { return Val(lblCodCliente.caption) > 0; }

void frmCobrar::Form_Load() {
    Sesion& s = sesion();
    FormaPago = "0";
    IndiceCliente = -1;
    SaldoDinDep = 0;
    CobroConDinDep = false;
    DescontarDinDep = false;
    SaldoRestante = 0;
    ActualizandoMixto = false;
    ContadorResalto = 0;
    NumeroVale = -1;
    ImporteVale = -1;
    RestoVale = 0;
    ImprimirValeAbono = false;
    CopiasAlbaran = 1;
    EntradaActiva = nullptr;
    CaptionTranslator::Instancia().Traducir(s.Conexion, *this);
    colorearme();
    ModificarTamano();
    PanelFormasPago.Vaciar();
    PanelFormasPago.UsaColores = s.opciones.UtilizaColores_FPago;
    PanelFormasPago.Recibo_Datos_De_Matriz(s.PanelFormasPago);
    PanelFormasPago.Cargar_Contenido_Boton();
    imgTicket.picture = s.LogoTicket;
    pantallaInicial();
}

void frmCobrar::colorearme() {
    Sesion& s = sesion();
    ColourScheme colores;
    colores.Colorear(*this, s.EsquemaColores, s.Conexion);
    colorResalte_ = NumeroDeColor(colores.ColorResalte(s.Conexion, s.EsquemaColores));
    colorFoco_ = NumeroDeColor(colores.ColorFoco(s.Conexion, s.EsquemaColores));
}

void frmCobrar::ModificarTamano() {
    Sesion& s = sesion();
    ScreenFitter& ajuste = ScreenFitter::Instancia();
    ajuste.Ajustar(s.Conexion, *this, s.AnchoPantalla, s.AltoPantalla, s.AnchoDiseno, s.AltoDiseno);
    PanelFormasPago.Redimensionar(ajuste.FactorAncho(), ajuste.FactorAlto(), PanelFormasPago.width,
                                  PanelFormasPago.height);
}

void frmCobrar::CargarDatosVenta() {
    const frmCaja& caja = Unica<frmCaja>();
    lblNumVenta.caption = caja.lblNumVenta.caption;
    CajaText_Pago.SetText(caja.CajaText_Pago.Text());
}

void frmCobrar::pantallaInicial() {
    Sesion& s = sesion();
    const frmCaja& caja = Unica<frmCaja>();
    CargarDatosVenta();
    lbl_Empleado.caption = caja.lbl_Empleado.caption;
    lbl_codEmpleado.caption = CStr(Value(static_cast<long>(s.CodigoEmpleadoActual)));

    lblCodCliente.caption = caja.lblCodCliente.caption;
    if (lblCodCliente.caption != "0") {
        for (std::size_t i = 0; i < s.Clientes.size(); ++i)
            if (CStr(Value(static_cast<long>(s.Clientes[i].Codigo))) == lblCodCliente.caption) {
                IndiceCliente = static_cast<std::int32_t>(i);
                lblValorDinDep.caption = CStr(Value(s.Clientes[i].DinDep));
                break;
            }
    }
    lblNomDinDep.caption = caja.txtNomCliente.Text();
    // Without a customer there is neither invoice nor delivery note.
    if (lblCodCliente.caption == "0") {
        frTipo.visible = false;
        chk_Factura.visible = false;
        chkFacturaMixto.visible = false;
    }
    lblInfoDeuda.caption = "El cliente " + caja.txtNomCliente.Text() + " nos va a deber " +
                           Formatear(Importe(CajaText_Pago) - Importe(txt_Entrega));
    if (lblCodCliente.caption != "0" && !caja.VentaDinDep) DineroDeposito();

    FormaPago = "0";
    if (Importe(CajaText_Pago) == 0) {
        // A sale of nothing needs no payment.
        for (Control* c : std::initializer_list<Control*>{&Frame1, &PanelFormasPago, &frmNumerico, &cmdDeuda})
            c->visible = false;
        cmd_FinVenta.visible = true;
        FormaPago = "1";
    }
    txtTotalMixto.SetText(CajaText_Pago.Text());
    fr_totalesMixto.visible = false;
    if (Val(lblCodCliente.caption) <= 0) cmdDeuda.visible = false;
    cmd_ObsTRegalo.visible = true;
    cmdTicketRegalo.visible = true;
    cmdapliVale.visible = true;
    if (!caja.ModoAbono) {
        frAbono.visible = false;
        cmdapliVale.visible = HayValesAplicables(Val(CajaText_Pago.Text()));
    } else {
        frAbono.visible = true;
        cmd_ObsTRegalo.visible = false;
        cmdTicketRegalo.visible = false;
        cmdapliVale.visible = false;
    }
    chk_Imprimir.SetValue(s.opciones.imprimirticket ? 1 : 0);
    chkTicketMixto.SetValue(s.opciones.imprimirticket ? 1 : 0);
    chk_Cajetin.SetValue(s.opciones.abrircajetin ? 1 : 0);
    chkCajetinMixto.SetValue(s.opciones.abrircajetin ? 1 : 0);
    optFactura.SetValue(s.opciones.facturas);
    Option2.SetValue(s.opciones.facturas);
    if (ClienteEnVenta()) {
        cmdDeuda.visible = true;
        cmd_FinVenta.visible = false;
    }
    if (!CobroConDinDep) {
        txt_Entrega.SetText(Formatear(0));
        txt_Devolucion.SetText(Formatear(0));
    }
    // "<ENTER>" shows only for a sale without customer.
    if (lblCodCliente.caption != "0") lblEnter.visible = false;
}

void frmCobrar::Form_Activate() {
    const Sesion& s = sesion();
    bool elegirContado = !s.opciones.Deposito || IndiceCliente == -1;
    if (!elegirContado && s.Clientes[static_cast<std::size_t>(IndiceCliente)].ActivarDinDep) elegirContado = true;
    if (elegirContado) {
        SeleccionarTodo(txt_Entrega);
        Foco(txt_Entrega);
        SeleccionFPago("1", "Contado");
    } else if (Importe(CajaText_Pago) > 0) {
        // The operator chooses the method; the panel flashes when the amount is reached.
        SeleccionarTodo(txt_Entrega);
        Foco(txt_Entrega);
    }
}

void frmCobrar::SeleccionFPago(const std::string& codigo, const std::string& descripcion) {
    FormaPago = codigo;
    const long marca = InStr(descripcion, ">");
    lblFormaPago.caption = marca > 0 ? Mid(descripcion, marca + 1) : descripcion;
    if (Val(FormaPago) == 3) {
        fr_totalesMixto.visible = true;
        Foco(txtPagoTarjeta);
        return;
    }
    if (Val(FormaPago) == 2 && !Unica<frmCaja>().ModoAbono) {
        // The card pays the exact amount unless a part was typed.
        if (txt_Entrega.Text().empty() || Importe(txt_Entrega) == 0) txt_Entrega.SetText(CajaText_Pago.Text());
    }
    fr_totalesMixto.visible = false;
    Foco(txt_Entrega);
    if (!txt_Entrega.Text().empty() && Importe(CajaText_Pago) <= Importe(txt_Entrega) && Val(FormaPago) > 0) {
        cmd_FinVenta.visible = true;
        cmdDeuda.visible = false;
    }
}

void frmCobrar::PagoExacto() {
    txt_Entrega.SetText(CajaText_Pago.Text());
    SeleccionFPago("1", "Contado");
    cmd_FinVenta_Click();
}

void frmCobrar::txt_Entrega_Change() {
    if (lblCodCliente.caption == "0") lblEnter.visible = true;
    if (CobroConDinDep) return;
    if (txt_Entrega.Text().empty()) {
        Label2.caption = "A pagar";
        txt_Devolucion.SetText(Formatear(Importe(CajaText_Pago)));
        cmd_FinVenta.visible = false;
        if (ClienteEnVenta()) cmdDeuda.visible = true;
        return;
    }
    lblEnter.visible = false;
    const double entrega = Importe(txt_Entrega), pago = Importe(CajaText_Pago);
    if (entrega >= pago) {
        cmdDeuda.visible = false;
        if (Val(FormaPago) <= 0) {
            ContadorResalto = 0;
            ResaltarFormasPago();
        } else {
            cmd_FinVenta.visible = true;
        }
        Label2.caption = "Devolucion";
        txt_Devolucion.SetText(Formatear(entrega - pago));
    } else {
        if (ClienteEnVenta()) cmdDeuda.visible = true;
        cmd_FinVenta.visible = false;
        Label2.caption = "A pagar";
        txt_Devolucion.SetText(Formatear(pago - entrega));
    }
}

// Any key but Enter: a wholly selected entry is cleared first, then the
// filter decides what goes in.
void frmCobrar::FiltrarEntrada(TextBox& caja, int& tecla) {
    if (caja.selLength > 0 && caja.selLength == Len(caja.Text())) caja.SetText("");
    tecla = KeyFilter::Instancia().FiltrarTecla(tecla, caja, sesion().opciones.NumDecimales);
}

void frmCobrar::txt_Entrega_KeyPress(int& tecla) {
    if (tecla != vbKeyReturn) {
        FiltrarEntrada(txt_Entrega, tecla);
        return;
    }
    tecla = 0;
    if (cmd_FinVenta.visible) {
        cmd_FinVenta_Click();
    } else if (lblCodCliente.caption != "0") {
        // A customer's sale is never finished blind.
        ResaltarFormasPago();
    } else if (txt_Entrega.Text().empty() || Importe(txt_Entrega) == 0) {
        PagoExacto();
    } else if (Importe(txt_Entrega) > Importe(CajaText_Pago)) {
        SeleccionFPago("1", "Contado");
        cmd_FinVenta_Click();
    }
}

void frmCobrar::ResaltarFormasPago() { tmrResalto.SetEnabled(true); }

void frmCobrar::tmrResalto_Timer() {
    if (ContadorResalto >= 8) {
        tmrResalto.SetEnabled(false);
        ContadorResalto = 0;
        return;
    }
    Frame1.backColor = Frame1.backColor != colorResalte_ ? colorResalte_ : kBlanco;
    Frame5.backColor = Frame1.backColor;
    ++ContadorResalto;
}

void frmCobrar::tmrColorear_Timer() {
    cmd_FinVenta.backColor = cmd_FinVenta.backColor == cmdSalir.backColor ? colorResalte_ : cmdSalir.backColor;
}

// A card amount proposes the cash rest; a cash amount proposes nothing for
// the card. Both hand the sum to txt_Entrega, whose logic then follows.
void frmCobrar::txtPagoTarjeta_Change() {
    const double total = Importe(txtTotalMixto);
    if (!ActualizandoMixto) {
        ActualizandoMixto = true;
        const double tarjeta = Importe(txtPagoTarjeta);
        if (tarjeta < total) {
            txtPagoEfectivo.SetText(Formatear(total - tarjeta));
        } else {
            txtCambioMixto.SetText(Formatear(tarjeta - total));
            txtPagoEfectivo.SetText(Formatear(0));
        }
        ActualizandoMixto = false;
    }
    txt_Entrega.SetText(Formatear(Importe(txtPagoTarjeta) + Importe(txtPagoEfectivo)));
}

void frmCobrar::txtPagoEfectivo_Change() {
    if (!ActualizandoMixto) {
        ActualizandoMixto = true;
        const double suma = Importe(txtPagoTarjeta) + Importe(txtPagoEfectivo), total = Importe(txtTotalMixto);
        if (suma >= total) txtCambioMixto.SetText(Formatear(suma - total));
        ActualizandoMixto = false;
    }
    txt_Entrega.SetText(Formatear(Importe(txtPagoTarjeta) + Importe(txtPagoEfectivo)));
}

// The ticks are settings of the whole shop, kept at once.
void frmCobrar::GuardarOpcion(CheckBox& casilla, CheckBox& gemela, const std::string& campo, bool& opcion) {
    Sesion& s = sesion();
    gemela.SetValue(casilla.Value());
    opcion = casilla.Value() == 1;
    RecordWriter::Instancia().Actualizar(s.Conexion, "opciones", campo + "=" + (opcion ? "-1" : "0") + "|",
                                         s.NombreTienda, s.Multitienda, "");
}

void frmCobrar::optAlbaran_Click() {
    Frame5.visible = false;
    cmd_FinVenta.visible = true;
    cmdDeuda.visible = false;
    if (optAlbaran.Value()) {
        frNumCopias.visible = true;
        CopiasAlbaran = 1;
    }
}

void frmCobrar::optFactura_Click() {
    Option2.SetValue(optFactura.Value());
    Frame5.visible = true;
    frNumCopias.visible = false;
}

void frmCobrar::Copias(std::int16_t copias) {
    CopiasAlbaran = copias;
    cmd_FinVenta_Click();
}

void frmCobrar::cmd_FinVenta_Click() {
    frmCaja& caja = Unica<frmCaja>();
    if (optAlbaran.Value()) {
        if (GrabarAlbaran) GrabarAlbaran(CLng(Value(lblNumVenta.caption)), CopiasAlbaran);
        caja.VentaCobrada = true;
        Unload();
        return;
    }
    double deuda = Importe(CajaText_Pago) - Importe(txt_Entrega);
    if (deuda < 0) deuda = 0;
    if (deuda > 0 && Val(lblCodCliente.caption) == 0) {
        MsgBox("Tiene que introducir en la casilla de entrega cliente una cantidad mayor o igual al importe de la "
               "venta",
               vbInformation);
        return;
    }
    DatosCierre datos;
    datos.numeroVenta = CLng(Value(lblNumVenta.caption));
    datos.imprimir = chk_Imprimir.Value() == 1;
    datos.abrirCajon = chk_Cajetin.Value() == 1;
    // Money paid in: the customer's balance goes up by the sale.
    if (caja.VentaDinDep) SaldoDinDep = AumentarDinDep(IndiceCliente, lblCodCliente.caption, Val(CajaText_Pago.Text()));
    datos.factura = optFactura.Value() && lblCodCliente.caption != "0";
    if (DescontarDinDep) {
        DisminuyoDinDepACliente(SaldoRestante, static_cast<std::int32_t>(Val(lblCodCliente.caption)));
        DescontarDinDep = false;
    }
    datos.listaRegalo = ObtenerListaProdTicketRegalo();
    if (NumeroVale > -1) ActualizarValeUsado(RestoVale, ImporteVale, NumeroVale);
    datos.entrega = txt_Entrega.Text();
    datos.devolucion = txt_Devolucion.Text();
    datos.formaPago = FormaPago;
    datos.tarjeta = txtPagoTarjeta.Text();
    datos.deuda = deuda;
    datos.numeroVale = NumeroVale;
    datos.imprimirValeAbono = ImprimirValeAbono;
    datos.imagenLogo = imgTicket.picture;
    CajaEnCierre enCaja{caja.ModoAbono, caja.NumeroFacturaAbonada, caja.Fecha1.Value(), caja.CajaText_Pago.Text(),
                        [&caja](const std::string& numero) { caja.lblUltFactura.caption = numero; }};
    CerrarVenta(datos, enCaja);

    caja.VentaCobrada = true;
    caja.ImprimirFacturaAlCerrar = datos.factura;
    caja.txtTotal_U_V.SetText(CajaText_Pago.Text());
    caja.txt_Entrega_U_V.SetText(txt_Entrega.Text());
    caja.txt_Devolucion_U_V.SetText(txt_Devolucion.Text());
    caja.lblForma_U_V.caption = "Forma Pago = " + lblFormaPago.caption;
    caja.lblNumProductos.caption = caja.txtTArticulos.Text();
    Unload();
}

void frmCobrar::cmdSalir_Click() {
    Unica<frmCaja>().VentaCobrada = false;
    Unload();
}

void frmCobrar::BotonFuncion(int tecla) {
    if (tecla >= vbKeyF1 && tecla <= vbKeyF1 + 10) {
        const auto lugar = static_cast<std::size_t>(tecla - vbKeyF1);
        const PanelRegistros& botones = PanelFormasPago.Botones();
        if (lugar < botones.size()) SeleccionFPago(botones[lugar].Codigo, botones[lugar].Texto);
    } else if (tecla == vbKeyF1 + 11) {
        if (cmd_FinVenta.visible) {
            cmd_FinVenta_Click();
        } else {
            int copia = tecla;
            txt_Entrega_KeyPress(copia);
        }
    }
}

// The pad types into the entry that last took the focus; with none, every
// key but the 7 fails as a call on nothing.
void frmCobrar::PulsarTecla(int indice) {
    const int tecla = indice == 10 ? static_cast<unsigned char>(KeyFilter::Instancia().SeparadorDecimal()[0])
                                   : '0' + indice;
    auto escribir = [&] {
        if (!EntradaActiva) throw RuntimeError(91, "Variable de objeto o bloque With no establecido");
        KeyFilter::Instancia().PulsarTeclaPad(*EntradaActiva, tecla, sesion().opciones.NumDecimales);
    };
    if (indice != 7) {
        escribir();
        return;
    }
    try {
        escribir();
    } catch (const RuntimeError&) {
        Foco(txt_Entrega);
        escribir();
    }
}

void frmCobrar::cmd_nuevoCobro_Click() {
    if (EntradaActiva) EntradaActiva->SetText("");
    txt_Devolucion.SetText("");
}

void frmCobrar::EntradaConFoco(TextBox& caja) {
    EntradaActiva = &caja;
    SeleccionarTodo(caja);
    caja.backColor = colorFoco_;
}

void frmCobrar::ConectarEntradas() {
    Sesion& s = sesion();
    CajaText_Pago.Change = [this] {
        if (sesion().VisorActivo) VisorDelPuesto().MostrarEnVisor("Total", CajaText_Pago.Text());
    };
    txt_Entrega.Change = [this] { txt_Entrega_Change(); };
    txt_Entrega.KeyPress = [this](int& t) { txt_Entrega_KeyPress(t); };
    lblEnter.Click = [this] {
        int enter = vbKeyReturn;
        txt_Entrega_KeyPress(enter);
    };
    txtPagoTarjeta.Change = [this] { txtPagoTarjeta_Change(); };
    txtPagoEfectivo.Change = [this] { txtPagoEfectivo_Change(); };
    for (TextBox* t : {&txtPagoTarjeta, &txtPagoEfectivo}) {
        // Enter finishes whether or not the finish button shows.
        t->KeyPress = [this, t](int& tecla) {
            if (tecla == vbKeyReturn) {
                tecla = 0;
                cmd_FinVenta_Click();
            } else {
                FiltrarEntrada(*t, tecla);
            }
        };
        t->LostFocus = [this, t] { t->backColor = txtTotalMixto.backColor; };
    }
    for (TextBox* t : {&txt_Entrega, &txtPagoTarjeta, &txtPagoEfectivo, &txtnumVale})
        t->GotFocus = [this, t] { EntradaConFoco(*t); };
    chkFacturaMixto.Click = [this] { chk_Factura.SetValue(chkFacturaMixto.Value()); };
    chkTicketMixto.Click = [this] { chk_Imprimir.SetValue(chkTicketMixto.Value()); };
    chkCajetinMixto.Click = [this] { chk_Cajetin.SetValue(chkCajetinMixto.Value()); };
    chk_Cajetin.Click = [this, &s] { GuardarOpcion(chk_Cajetin, chkCajetinMixto, "abrircajetin", s.opciones.abrircajetin); };
    chk_Imprimir.Click = [this, &s] {
        GuardarOpcion(chk_Imprimir, chkTicketMixto, "imprimirticket", s.opciones.imprimirticket);
    };
    chk_Factura.Click = [this, &s] { GuardarOpcion(chk_Factura, chkFacturaMixto, "facturas", s.opciones.facturas); };
    optAlbaran.Click = [this] { optAlbaran_Click(); };
    optFactura.Click = [this] { optFactura_Click(); };
    cmdCopias1.Click = [this] { Copias(1); };
    cmdCopias2.Click = [this] { Copias(2); };
    cmdCopias3.Click = [this] { Copias(3); };
    cmd_FinVenta.Click = [this] { cmd_FinVenta_Click(); };
    cmdSalir.Click = [this] { cmdSalir_Click(); };
    PanelFormasPago.Pulsado = [this] { SeleccionFPago(PanelFormasPago.CodigoPulsado, PanelFormasPago.TextoPulsado); };
    for (int i = 0; i < 11; ++i) btnNumerico_Cobro[static_cast<std::size_t>(i)].Click = [this, i] { PulsarTecla(i); };
    cmd_nuevoCobro.Click = [this] { cmd_nuevoCobro_Click(); };
    tmrResalto.Tick = [this] { tmrResalto_Timer(); };
    tmrColorear.Tick = [this] { tmrColorear_Timer(); };
}

void frmCobrar::Conectar() {
    ConectarEntradas();
    ConectarPaneles();
    ConectarDescuentos();
    ConectarDeposito();
    ConectarVales();
    ConectarDeuda();
    // Every control hands its key to the function keys.
    for (Control& c : controles) {
        auto anterior = c.KeyDown;
        c.KeyDown = [this, anterior](int& tecla, int shift) {
            if (anterior) anterior(tecla, shift);
            BotonFuncion(tecla);
        };
    }
}

}  // namespace tpv
