// The small screens round the day's cash: the opening float, expenses,
// shift notes and reprints.
#include "tests/screens/escritorio_prueba.hpp"

namespace tpv {
namespace {

// The opening float: the employee's password with its three tries, and one
// row per day and terminal written with both date forms.
const char* const kClaveIncorrecta =
    "MENSAJE [Restauracion] Clave Incorrecta, por favor verifique su clave. -> Aceptar";

class CajaInicial : public prueba::EscritorioTest {
protected:
    // Picks the employee, types the password and the amount, and accepts.
    void Intentar(frmCajaInicial& f, std::size_t boton, const std::string& clave, const std::string& importe) {
        Pulsar(f.PanelEmpleados, boton);
        Teclear(f.txtPW, clave);
        if (!importe.empty()) Teclear(f.txtImporte, importe);
        Clic(f.cmdAceptarEmp);
    }
    long Filas() { return CLng(Valor("select count(*) from caja_inicial")); }
};

TEST_P(CajaInicial, ClaveExacta_TresIntentos) {
    frmCajaInicial& f = Mostrar<frmCajaInicial>();
    ASSERT_TRUE(f.Cargada());
    Pulsar(f.PanelEmpleados, 0);
    EXPECT_EQ(f.lblEmpInfo.caption, "Ana Lopez");
    EXPECT_EQ(f.ActiveControl(), &f.txtPW);

    // Near misses are wrong: the compare is exact.
    const char* claves[] = {"1234 ", "123", "12345"};
    for (int i = 0; i < 3; ++i) {
        f.txtPW.SetText(claves[i]);
        Clic(f.cmdAceptarEmp);
        // The third wrong one closes the screen, without a box.
        EXPECT_EQ(f.Cargada(), i < 2) << claves[i];
    }
    EXPECT_EQ(Cajas(), (std::vector<std::string>{kClaveIncorrecta, kClaveIncorrecta}));
    EXPECT_EQ(Filas(), 0);

    // The count starts again with the screen.
    frmCajaInicial& g = Mostrar<frmCajaInicial>();
    EXPECT_EQ(g.intentos, 0);
    Intentar(g, 0, "1234", "50");
    EXPECT_FALSE(g.Cargada());
    EXPECT_EQ(Filas(), 1);

    // An employee without a password gets in with an empty one.
    frmCajaInicial& h = Mostrar<frmCajaInicial>();
    Intentar(h, 1, "", "7");
    EXPECT_FALSE(h.Cargada());
    EXPECT_EQ(CLng(Valor("select empleado from caja_inicial")), 2);
}

TEST_P(CajaInicial, UnaFilaPorDiaYTerminal) {
    // 5 November: the day and the month differ, so a swapped form shows.
    Reloj(5, 8, 0);
    Intentar(Mostrar<frmCajaInicial>(), 0, "1234", "120,5");
    ASSERT_EQ(Filas(), 1);
    EXPECT_EQ(Valor("select fecha from caja_inicial").date(), DateSerial(2026, 11, 5));
    EXPECT_DOUBLE_EQ(CDbl(Valor("select importe from caja_inicial")), 120.5);

    // Another terminal on that day, and this one the next day, have their own.
    sesion().TerminalActual = "CAJA2";
    Intentar(Mostrar<frmCajaInicial>(), 0, "1234", "10");
    sesion().TerminalActual = "CAJA1";
    Reloj(6, 8, 0);
    Intentar(Mostrar<frmCajaInicial>(), 0, "1234", "30");
    EXPECT_EQ(Filas(), 3);
    EXPECT_DOUBLE_EQ(CDbl(Valor("select sum(importe) from caja_inicial where terminal = 'CAJA1'")), 150.5);
}

TPV_EN_CADA_MOTOR(CajaInicial);

// Expenses: nothing saved without amount or concept, and one minus sign
// anywhere in the amount.
class Gastos : public prueba::EscritorioTest {
protected:
    frmGastos& Entrar() {
        frmGastos& f = Mostrar<frmGastos>();
        Pulsar(f.PanelEmpleados, 0);
        Teclear(f.txtPW, "1234");
        Clic(f.cmdAceptarEmp);
        return f;
    }
    long Filas() { return CLng(Valor("select count(*) from gastos")); }
};

TEST_P(Gastos, SinImporteOSinConcepto_NoGuardaYCierra) {
    struct Caso {
        const char *concepto, *importe;
    } casos[] = {{"Limpieza", ""}, {"", "5"}};
    for (const Caso& c : casos) {
        frmGastos& f = Entrar();
        Teclear(f.cmbConcepto, c.concepto);
        Teclear(f.txtImporte, c.importe);
        Clic(f.cmdAceptarEmp);
        EXPECT_FALSE(f.Cargada()) << c.concepto;
    }
    EXPECT_EQ(Filas(), 0);
    EXPECT_TRUE(Cajas().empty());
}

TEST_P(Gastos, UnSoloSignoMenosEnCualquierSitio) {
    struct Caso {
        const char *teclas, *texto;
    } casos[] = {{"-12,5", "-12,5"}, {"--12", "-12"}, {"12-3-", "12-3"}, {"1x2", "12"}};
    for (const Caso& c : casos) {
        frmGastos& f = Entrar();
        f.txtImporte.SetText("");
        Teclear(f.txtImporte, c.teclas);
        EXPECT_EQ(f.txtImporte.Text(), c.texto) << c.teclas;
        Clic(f.cmdCancelar);
    }
}

TPV_EN_CADA_MOTOR(Gastos);

// Shift notes: only today's notes of this terminal, and none saved without a text.
using Observaciones = prueba::EscritorioTest;

TEST_P(Observaciones, SoloLasDeHoyYDeEsteTerminal) {
    Ejecutar({"insert into ObservacionCaja (fecha,empleado,Observacion,terminal) values "
              "(#11/15/2026#,1,'Falta cambio','CAJA1')",
              "insert into ObservacionCaja (fecha,empleado,Observacion,terminal) values "
              "(#11/15/2026#,2,'Revisar cajon','CAJA1')",
              "insert into ObservacionCaja (fecha,empleado,Observacion,terminal) values "
              "(#11/14/2026#,1,'Ayer','CAJA1')",
              "insert into ObservacionCaja (fecha,empleado,Observacion,terminal) values "
              "(#11/15/2026#,1,'Otra caja','CAJA2')",
              // an employee whose row is gone
              "insert into ObservacionCaja (fecha,empleado,Observacion,terminal) values "
              "(#11/15/2026#,9,'Sin empleado','CAJA1')"});
    frmObservaciones& f = Mostrar<frmObservaciones>();
    std::vector<std::string> items;
    for (long i = 0; i < f.lbObservaciones.ListCount(); ++i) items.push_back(f.lbObservaciones.List(i));
    std::sort(items.begin(), items.end());
    EXPECT_EQ(items, (std::vector<std::string>{"Ana L: Falta cambio", "Luis : Revisar cajon"}));

    anfitrion.Accion([&] { f.lbObservaciones.SetListIndex(f.lbObservaciones.Indice("Ana L: Falta cambio")); });
    EXPECT_EQ(f.lbLObservacion.caption, "Ana L: Falta cambio");
}

TEST_P(Observaciones, Nueva_SinTextoNoSeGuarda) {
    frmObservaciones& f = Mostrar<frmObservaciones>();
    Clic(f.cmdNuevo);
    ASSERT_TRUE(f.frNuevo.visible);

    Pulsar(f.PanelEmpleados, 1);
    EXPECT_EQ(f.ActiveControl(), &f.txtobservacion);
    Clic(f.cmdAceptarEmp);
    EXPECT_TRUE(f.Cargada());
    EXPECT_EQ(CLng(Valor("select count(*) from ObservacionCaja")), 0);
}

TPV_EN_CADA_MOTOR(Observaciones);

// Reprint: the twenty latest sales, newest first, and an unplugged printer
// told once.
class ReImprimir : public prueba::EscritorioTest {
protected:
    void TearDown() override {
        ResetPrinters();
        EscritorioTest::TearDown();
    }
    void Venta(int numero, int cliente, const std::string& total) {
        Ejecutar({"insert into cabecera_factura (numero,cliente,fechaventa,total,empleado) values (" +
                  std::to_string(numero) + "," + std::to_string(cliente) + ",#11/14/2026#," + total + ",'Ana')"});
    }
};

TEST_P(ReImprimir, VeinteUltimas_LaMasNuevaPrimero) {
    Ejecutar({"insert into clientes (codigo,nombre,apellidos) values (4,'Marta','Gil')"});
    for (int n = 1; n <= 22; ++n) Venta(n, n == 22 ? 4 : (n == 21 ? 7 : 0), "12.5");
    frmReImprimir& f = Mostrar<frmReImprimir>();
    const Grid& g = f.grid_Reimprimir;
    ASSERT_EQ(g.Rows(), 21);
    EXPECT_EQ(g.Cols(), 4);
    struct Fila {
        long fila;
        const char *numero, *cliente;
    } filas[] = {{1, "22", "Marta Gil"}, {2, "21", "Cliente Generico"}, {3, "20", "Cliente Generico"},
                 {20, "3", "Cliente Generico"}};
    for (const Fila& e : filas) {
        EXPECT_EQ(g.TextMatrix(e.fila, 0), e.numero);
        EXPECT_EQ(g.TextMatrix(e.fila, 1), e.cliente);
    }
    EXPECT_EQ(g.TextMatrix(1, 2), "14/11/2026");
    EXPECT_EQ(g.TextMatrix(1, 3), "12,5");
}

TEST_P(ReImprimir, FalloDeImpresion_CajaYCierra) {
    RecordingPrinter* tickets = prueba::InstalarTickets();
    sesion().ImpresoraTickets = "TICKETS";
    Venta(1, 0, "3");

    // An unplugged printer is told by the ticket engine itself, which then
    // returns normally: no second box.
    tickets->SetFailing(true);
    frmReImprimir& g = Mostrar<frmReImprimir>();
    Teclear(g.txtnumFactura, "1");
    Clic(g.Command1);
    EXPECT_FALSE(g.Cargada());
    ASSERT_EQ(Cajas().size(), 1u);
    EXPECT_TRUE(Cajas().back().starts_with("MENSAJE [Preticket]")) << Cajas().back();
    EXPECT_TRUE(tickets->Documents().empty());

    // Plugged in again, the sale prints.
    tickets->SetFailing(false);
    frmReImprimir& h = Mostrar<frmReImprimir>();
    Teclear(h.txtnumFactura, "1");
    Clic(h.Command1);
    EXPECT_EQ(tickets->Documents().size(), 1u);
    EXPECT_EQ(Cajas().size(), 1u);
}

TPV_EN_CADA_MOTOR(ReImprimir);

}  // namespace
}  // namespace tpv
