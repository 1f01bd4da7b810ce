// Expenses: the password first, then concept and amount; the concepts are
// the motives already used; one minus sign in the amount.
#include "tests/screens/escritorio_prueba.hpp"

namespace tpv {
namespace {

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

TEST_P(Gastos, DosPasos_ConceptosDeLosUsados) {
    Ejecutar({"insert into gastos (motivo,importe) values ('Limpieza',5)",
              "insert into gastos (motivo,importe) values ('Limpieza',7)",
              "insert into gastos (motivo,importe) values ('Correos',2)"});
    frmGastos& f = Mostrar<frmGastos>();
    EXPECT_FALSE(f.frConcepto.visible);
    ASSERT_EQ(f.cmbConcepto.ListCount(), 2);  // each motive once
    Pulsar(f.PanelEmpleados, 0);
    Teclear(f.txtPW, "1234");
    Clic(f.cmdAceptarEmp);
    ASSERT_TRUE(f.frConcepto.visible);
    EXPECT_EQ(f.ActiveControl(), &f.cmbConcepto);
    EXPECT_EQ(Filas(), 3);

    // A new motive typed in the list's entry is stored as it stands.
    Teclear(f.cmbConcepto, "Cafe y leche");
    Teclear(f.txtImporte, "3,2");
    Clic(f.cmdAceptarEmp);
    EXPECT_FALSE(f.Cargada());
    EXPECT_EQ(Texto(Valor("select motivo from gastos where importe = 3.2")), "Cafe y leche");
    EXPECT_EQ(CLng(Valor("select empleado from gastos where importe = 3.2")), 1);
    EXPECT_EQ(Valor("select fecha from gastos where importe = 3.2").date(), DateSerial(2026, 11, 15));

    // ...and is offered the next time; choosing one moves on to the amount.
    frmGastos& g = Entrar();
    EXPECT_EQ(g.cmbConcepto.ListCount(), 3);
    const long i = g.cmbConcepto.Indice("Cafe y leche");
    ASSERT_GE(i, 0);
    anfitrion.Accion([&] { g.cmbConcepto.SetListIndex(i); });
    EXPECT_EQ(g.ActiveControl(), &g.txtImporte);
}

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

TEST_P(Gastos, TercerAClaveErroneaCierraSinMensaje) {
    frmGastos& f = Mostrar<frmGastos>();
    Pulsar(f.PanelEmpleados, 0);
    for (int i = 0; i < 3; ++i) {
        f.txtPW.SetText("4321");
        Clic(f.cmdAceptarEmp);
    }
    EXPECT_FALSE(f.Cargada());
    EXPECT_FALSE(f.frConcepto.visible);
    EXPECT_EQ(Cajas().size(), 2u);
    EXPECT_EQ(Filas(), 0);
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
    // A negative expense corrects an earlier one.
    frmGastos& f = Entrar();
    Teclear(f.cmbConcepto, "Correccion");
    Teclear(f.txtImporte, "-4,5");
    Clic(f.cmdAceptarEmp);
    EXPECT_DOUBLE_EQ(CDbl(Valor("select importe from gastos")), -4.5);
}

TPV_EN_CADA_MOTOR(Gastos);

}  // namespace
}  // namespace tpv
