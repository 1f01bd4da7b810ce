// The settlement screen over a sale of the till: what the scenarios don't
// show of its entry, methods, keys, keypad, ticks, gift ticket and debt.
#include "core/runtime/texto.hpp"
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class Cobrar : public prueba::CobroTest {
protected:
    void SetUp() override {
        CobroTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({"insert into formapago (codigo,nombre,posicion,borrar) values (3,'Mixto',3,0)",
                  "insert into formapago (codigo,nombre,posicion,borrar) values (4,'Dinero en Deposito',4,0)",
                  "insert into formapago (codigo,nombre,posicion,borrar) values (7,'Cheque',5,0)",
                  "update opciones set abrircajetin = -1, imprimirticket = -1"});
        CargarPanelFormasPago();
        sesion().opciones.abrircajetin = true;
        sesion().opciones.imprimirticket = true;
        Articulo(5, "8410001", "Colonia", "12.1");
        Articulo(6, "8410002", "Jabon", "2");
        Articulo(7, "8410003", "Gel", "0");
    }

    void Entrega(frmCobrar& f, const std::string& texto) { Teclear(f.txt_Entrega, texto); }
};

TEST_P(Cobrar, Apertura_SinClienteYConCliente) {
    {
        frmCobrar& f = Cobro();
        EXPECT_EQ(f.txt_Entrega.Text(), "0,00");
        EXPECT_EQ(f.txt_Devolucion.Text(), "0,00");  // set after the entry's own change
        EXPECT_FALSE(f.cmd_FinVenta.visible);
        EXPECT_FALSE(f.cmdDeuda.visible);
        EXPECT_FALSE(f.frTipo.visible);
        EXPECT_FALSE(f.lblEnter.visible);
        EXPECT_TRUE(f.txt_Entrega.TieneFoco());
        EXPECT_EQ(f.PanelFormasPago.Botones().size(), 4u);  // the balance is never a button
    }
    frmCobrar& f = Cobro({"8410001"}, "4");
    EXPECT_EQ(f.IndiceCliente, 0);
    EXPECT_TRUE(f.frTipo.visible);
    EXPECT_TRUE(f.cmdDeuda.visible);
    EXPECT_EQ(f.lblInfoDeuda.caption, "El cliente Ana Ruiz nos va a deber 12,10");
}

TEST_P(Cobrar, Entrega_DevolucionOLoQueFalta) {
    const struct Caso {
        const char *tecleado, *etiqueta, *devolucion;
        bool terminar;
    } casos[] = {
        {"12,1", "Devolucion", "0,00", true},
        {"1000", "Devolucion", "987,90", true},
        {"", "A pagar", "12,10", false},  // emptied: "<ENTER>" shows again
    };
    frmCobrar& f = Cobro();
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.tecleado);
        f.txt_Entrega.SetText("");
        Entrega(f, c.tecleado);
        EXPECT_EQ(f.txt_Entrega.Text(), c.tecleado);
        EXPECT_EQ(f.Label2.caption, c.etiqueta);
        EXPECT_EQ(f.txt_Devolucion.Text(), c.devolucion);
        EXPECT_EQ(f.cmd_FinVenta.visible, c.terminar);
        EXPECT_EQ(f.lblEnter.visible, *c.tecleado == '\0');
    }
    // Letters never get in.
    Entrega(f, "a-");
    EXPECT_EQ(f.txt_Entrega.Text(), "");
}

TEST_P(Cobrar, SinMetodo_ElImporteHaceParpadearElPanel) {
    frmCobrar& f = Cobro({"8410001"}, "4");
    f.FormaPago = "0";
    const long antes = f.Frame1.backColor;
    Entrega(f, "12,10");
    EXPECT_FALSE(f.cmd_FinVenta.visible);
    EXPECT_FALSE(f.cmdDeuda.visible);
    EXPECT_TRUE(f.tmrResalto.Enabled());
    anfitrion.Avanzar(200);
    EXPECT_NE(f.Frame1.backColor, antes);
    EXPECT_EQ(f.Frame5.backColor, f.Frame1.backColor);
    anfitrion.Avanzar(200 * 8);
    EXPECT_FALSE(f.tmrResalto.Enabled());
    EXPECT_EQ(f.ContadorResalto, 0);
    // The method chosen then shows the finish.
    Pulsar(f.PanelFormasPago, 0);
    EXPECT_EQ(f.lblFormaPago.caption, " Contado");
    EXPECT_TRUE(f.cmd_FinVenta.visible);
}

TEST_P(Cobrar, Tarjeta_PagaElTotalSalvoUnaParteTecleada) {
    frmCobrar& f = Cobro();
    TeclaFuncion(f.txt_Entrega, 2);  // F2: the card, with 0,00 typed
    EXPECT_EQ(f.FormaPago, "2");
    EXPECT_EQ(f.lblFormaPago.caption, " Tarjeta");
    EXPECT_EQ(f.txt_Entrega.Text(), "12,10");
    EXPECT_TRUE(f.cmd_FinVenta.visible);

    f.txt_Entrega.selLength = Len(f.txt_Entrega.Text());
    Entrega(f, "5");
    TeclaFuncion(f.txt_Entrega, 2);
    EXPECT_EQ(f.txt_Entrega.Text(), "5");
    EXPECT_FALSE(f.cmd_FinVenta.visible);

    TeclaFuncion(f.txt_Entrega, 5);  // F5 with four methods: nothing
    EXPECT_EQ(f.FormaPago, "2");
    TeclaFuncion(f.txt_Entrega, 4);
    EXPECT_EQ(f.FormaPago, "7");
    EXPECT_EQ(f.lblFormaPago.caption, " Cheque");
}

TEST_P(Cobrar, Mixto_LaTarjetaProponeElEfectivoYNoAlReves) {
    frmCobrar& f = Cobro();
    TeclaFuncion(f.txt_Entrega, 3);
    ASSERT_TRUE(f.fr_totalesMixto.visible);
    EXPECT_TRUE(f.txtPagoTarjeta.TieneFoco());
    EXPECT_EQ(f.txtTotalMixto.Text(), "12,10");
    struct Paso {
        TextBox* caja;
        const char* texto;
        const char* tarjeta;
        const char* efectivo;
        const char* cambio;
        const char* entrega;
    };
    const Paso pasos[] = {
        {&f.txtPagoTarjeta, "20", "20", "0,00", "7,90", "20,00"},
        {&f.txtPagoTarjeta, "2", "2", "10,10", "7,90", "12,10"},  // the change stays as it stood
        {&f.txtPagoEfectivo, "15", "2", "15", "4,90", "17,00"},
        {&f.txtPagoEfectivo, "1", "2", "1", "4,90", "3,00"},  // short: nothing proposed for the card
    };
    for (const Paso& p : pasos) {
        SCOPED_TRACE(p.texto);
        p.caja->SetText(p.texto);
        EXPECT_EQ(f.txtPagoTarjeta.Text(), p.tarjeta);
        EXPECT_EQ(f.txtPagoEfectivo.Text(), p.efectivo);
        EXPECT_EQ(f.txtCambioMixto.Text(), p.cambio);
        EXPECT_EQ(f.txt_Entrega.Text(), p.entrega);
    }
    EXPECT_FALSE(f.cmd_FinVenta.visible);
}

TEST_P(Cobrar, Intro_CeroEsPagoExactoYConClienteSoloParpadea) {
    {
        frmCobrar& f = Cobro();
        Entrega(f, "0");
        Intro(f.txt_Entrega);
        EXPECT_FALSE(f.Cargada());
        const frmCaja& caja = Unica<frmCaja>();
        EXPECT_TRUE(caja.VentaCobrada);
        EXPECT_EQ(caja.txt_Entrega_U_V.Text(), "12,10");
        EXPECT_EQ(caja.txt_Devolucion_U_V.Text(), "0,00");
        EXPECT_EQ(caja.lblForma_U_V.caption, "Forma Pago = Contado");
    }
    frmCobrar& f = Cobro({"8410001"}, "4");
    Unica<frmCaja>().VentaCobrada = false;
    lineas.clear();
    f.txt_Entrega.SetText("");
    Intro(f.txt_Entrega);
    EXPECT_TRUE(f.Cargada());
    EXPECT_TRUE(f.tmrResalto.Enabled());
    EXPECT_FALSE(Unica<frmCaja>().VentaCobrada);
    EXPECT_EQ(f.txt_Devolucion.Text(), "12,10");
    EXPECT_TRUE(Avisos().empty());
}

TEST_P(Cobrar, F12_TerminaOPasaAlFiltroDeLaEntrega) {
    frmCobrar& f = Cobro();
    // Hidden finish: F12 is an ordinary key of the entry, which clears a
    // wholly selected text and lets nothing in.
    f.txt_Entrega.selLength = Len(f.txt_Entrega.Text());
    TeclaFuncion(f.txt_Entrega, 12);
    EXPECT_EQ(f.txt_Entrega.Text(), "");
    EXPECT_TRUE(f.Cargada());
    Entrega(f, "13");
    TeclaFuncion(f.txt_Entrega, 12);
    EXPECT_FALSE(f.Cargada());
    EXPECT_TRUE(Unica<frmCaja>().VentaCobrada);
    EXPECT_EQ(Unica<frmCaja>().txt_Devolucion_U_V.Text(), "0,90");
}

TEST_P(Cobrar, Teclado_EntradaActivaComaYElSieteQueAtrapaErrores) {
    frmCobrar& f = Cobro();
    ASSERT_EQ(f.EntradaActiva, &f.txt_Entrega);
    for (int tecla : {1, 10, 5, 10, 0, 7, 9}) Clic(f.btnNumerico_Cobro[static_cast<std::size_t>(tecla)]);
    EXPECT_EQ(f.txt_Entrega.Text(), "1,50");  // one comma, two decimals
    Clic(f.cmd_nuevoCobro);
    EXPECT_EQ(f.txt_Entrega.Text(), "");
    EXPECT_EQ(f.txt_Devolucion.Text(), "");
    Clic(f.btnNumerico_Cobro[10]);  // a comma on an empty entry leaves it empty
    EXPECT_EQ(f.txt_Entrega.Text(), "");

    // No entry: every digit fails but the 7, which goes to txt_Entrega.
    f.EntradaActiva = nullptr;
    Clic(f.btnNumerico_Cobro[3]);
    ASSERT_EQ(Avisos().size(), 1u);
    EXPECT_EQ(Avisos()[0], "ERROR 91: Variable de objeto o bloque With no establecido");
    f.EntradaActiva = nullptr;
    anfitrion.Accion([&] { f.cmdSalir.SetFocus(); });  // the pad's button took the focus
    Clic(f.btnNumerico_Cobro[7]);
    EXPECT_EQ(Avisos().size(), 1u);
    EXPECT_EQ(f.txt_Entrega.Text(), "7");
}

TEST_P(Cobrar, Casillas_SonAjustesDeLaTiendaYSeGuardan) {
    frmCobrar& f = Cobro();
    struct Caso {
        CheckBox* casilla;
        CheckBox* gemela;
        const char* columna;
        bool* opcion;
    };
    Sesion& s = sesion();
    const Caso casos[] = {{&f.chk_Cajetin, &f.chkCajetinMixto, "abrircajetin", &s.opciones.abrircajetin},
                          {&f.chk_Imprimir, &f.chkTicketMixto, "imprimirticket", &s.opciones.imprimirticket},
                          {&f.chk_Factura, &f.chkFacturaMixto, "facturas", &s.opciones.facturas}};
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.columna);
        const int antes = c.casilla->Value();
        Clic(*c.casilla);
        EXPECT_EQ(c.casilla->Value(), 1 - antes);
        EXPECT_EQ(c.gemela->Value(), 1 - antes);
        EXPECT_EQ(*c.opcion, antes == 0);
        EXPECT_EQ(CBool(Valor(std::string("select ") + c.columna + " from opciones")), antes == 0);
    }
    // The mixed twin ticks the main one, which keeps it too.
    f.chkCajetinMixto.SetValue(1);
    EXPECT_EQ(f.chk_Cajetin.Value(), 1);
    EXPECT_TRUE(CBool(Valor("select abrircajetin from opciones")));
}

TEST_P(Cobrar, TicketRegalo_FilasAmarillasYComentario) {
    frmCobrar& f = Cobro({"8410001", "8410002", "8410003"});
    Clic(f.cmdTicketRegalo);
    ASSERT_TRUE(f.frTicketRegalo.visible);
    const Grid& venta = Unica<frmCaja>().FGCaja;
    ASSERT_EQ(f.FGCaja.Rows(), venta.Rows());
    EXPECT_EQ(f.FGCaja.TextMatrix(2, 0), "Jabon");
    EXPECT_EQ(f.FGCaja.ColWidth(0), venta.ColWidth(0) - 175);
    EXPECT_EQ(f.FGCaja.ColWidth(2), 0);  // a hidden column stays hidden
    EXPECT_EQ(f.ObtenerListaProdTicketRegalo(), "");
    auto clic = [&](long fila) { anfitrion.Accion([&] { f.FGCaja.ClicEnCelda(fila, 1, false); }); };
    clic(1);
    clic(3);
    clic(2);
    clic(3);  // again: back to white
    clic(0);  // the heading never
    EXPECT_EQ(f.FGCaja.CellBackColor(1, 5), 65535);
    EXPECT_EQ(f.FGCaja.CellBackColor(3, 0), 0xFFFFFF);
    EXPECT_EQ(f.ObtenerListaProdTicketRegalo(), "Colonia#Jabon");
    Clic(f.cmdImpTicketRegalo);
    EXPECT_FALSE(f.frTicketRegalo.visible);
    EXPECT_EQ(f.ObtenerListaProdTicketRegalo(), "Colonia#Jabon");  // the choice stays
    // A single one-character name keeps its mark.
    f.FGCaja.SetTextMatrix(1, 0, "5");
    clic(2);
    EXPECT_EQ(f.ObtenerListaProdTicketRegalo(), "#5");

    const std::string largo = std::string(48, 'a') + "ñú" + std::string(30, 'b');
    Clic(f.cmd_ObsTRegalo);
    ASSERT_TRUE(f.fr_TRegalo.visible);
    f.txtObsTRegalo.SetText(largo);
    Clic(f.cmd_AceptarTRegalo);
    EXPECT_FALSE(f.fr_TRegalo.visible);
    EXPECT_EQ(sesion().ComentarioTicketRegalo, largo);
    EXPECT_EQ(Texto(Valor("select datoa from relaciones_fijas where indice = 'ComentarioTicketRegalo'")),
              std::string(48, 'a') + "ñú");
    EXPECT_EQ(Texto(Valor("select otros from relaciones_fijas where indice = 'ComentarioTicketRegalo'")),
              std::string(30, 'b'));
    f.GuardarComentarioTRegalo("corto");
    EXPECT_EQ(CLng(Valor("select count(*) from relaciones_fijas where indice = 'ComentarioTicketRegalo'")), 1);
    EXPECT_EQ(Texto(Valor("select otros from relaciones_fijas where indice = 'ComentarioTicketRegalo'")), "");
}

// What the customer owes already: sale 1 owes 25, of which 10 were paid;
// sale 2, paid off, doesn't count.
TEST_P(Cobrar, Deuda_LoQueYaDebeYSinMetodoQuedaComoContado) {
    Ejecutar({"insert into cabecera_pago (num_pago,num_factura,cliente,importe,estado) values (1,1,4,25,0)",
              "insert into cabecera_pago (num_pago,num_factura,cliente,importe,estado) values (2,2,4,8,1)",
              "insert into detalle_pago (num_pago,importe) values (1,10)"});
    {
        frmCobrar& f = Cobro({"8410001"}, "4");
        Entrega(f, "5");
        Clic(f.cmdDeuda);
        EXPECT_EQ(f.lblDeudaCliente.caption, "15,00");
        Clic(f.cmdCancelarDeuda);
        EXPECT_FALSE(f.cmdDeuda.visible);  // until the amount handed over changes
        f.txt_Entrega.SetText("6");
        EXPECT_TRUE(f.cmdDeuda.visible);
    }
    // A customer who may pay from a balance chooses the method himself; left
    // unchosen, the sale is stored as cash and the whole of it is owed.
    sesion().opciones.Deposito = true;
    frmCobrar& f = Cobro({"8410001"}, "4");
    EXPECT_EQ(f.FormaPago, "0");
    f.txt_Entrega.SetText("");
    Clic(f.cmdDeuda);
    Clic(f.cmdAceptarDeuda);
    EXPECT_FALSE(f.Cargada());
    EXPECT_EQ(Filas("select num_pago,num_factura,cliente,importe,fecha,estado,empleado from cabecera_pago "
                    "where num_factura = 100"),
              std::vector<std::string>{"3|100|4|12,1|15/11/2026|0|3"});
    EXPECT_EQ(Filas("select pago,cliente from cabecera_factura where numero = 100"), std::vector<std::string>{"1|4"});
}

TPV_EN_CADA_MOTOR(Cobrar);

}  // namespace
}  // namespace tpv
