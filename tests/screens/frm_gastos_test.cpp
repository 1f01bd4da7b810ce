// Expenses: nothing saved without amount or concept, and one minus sign
// anywhere in the amount.
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

}  // namespace
}  // namespace tpv
