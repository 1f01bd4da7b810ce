// The opening float: the employee's password with its three tries, and one
// row per day and terminal written with both date forms.
#include "tests/screens/escritorio_prueba.hpp"

namespace tpv {
namespace {

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

}  // namespace
}  // namespace tpv
