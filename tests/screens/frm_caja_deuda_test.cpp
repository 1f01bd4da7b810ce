// The customer's debt on the till: the panel that goes after its time, back
// to its place for the next one, and the program of payments on account.
#include "core/servicios/suite_launcher.hpp"
#include "tests/core/servicios/entorno_prueba.hpp"
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class CajaDeuda : public prueba::CajaTest {};

TEST_P(CajaDeuda, PanelDeDeuda_SeVaTrasSeisMilTicksYVuelveASuSitio) {
    frmCaja& c = Abrir();
    const double izquierda = c.frDeuda.left, arriba = c.frDeuda.top;
    c.frDeuda.visible = true;
    c.frDeuda.left = izquierda + 500;  // moved meanwhile
    c.tmrfinDeuda.SetEnabled(true);
    anfitrion.Avanzar(5999);
    EXPECT_TRUE(c.frDeuda.visible);
    EXPECT_TRUE(c.tmrfinDeuda.enabled);
    anfitrion.Avanzar(1);
    EXPECT_FALSE(c.frDeuda.visible);
    EXPECT_FALSE(c.tmrfinDeuda.enabled);
    EXPECT_EQ(c.frDeuda.left, izquierda);
    EXPECT_EQ(c.frDeuda.top, arriba);
    // The count starts again for the next customer.
    c.frDeuda.visible = true;
    c.tmrfinDeuda.SetEnabled(true);
    anfitrion.Avanzar(5999);
    EXPECT_TRUE(c.frDeuda.visible);
}

// The program is the suite's; the settings may name another. One that
// can't be started leaves the till as it was.
TEST_P(CajaDeuda, IrAPagos_LanzaElProgramaDePagosACuenta) {
    frmCaja& c = Abrir();
    std::vector<std::string> lanzados;
    SuiteLauncher::FijarGrabador(
        [&](const std::string& programa, const std::string& titulo) { lanzados.push_back(programa + " " + titulo); });
    {
        prueba::AjustesTemporales ajustes("programa_pagos=cobros\n");
        Clic(c.cmdIrAPagos);
    }
    SuiteLauncher::FijarGrabador(nullptr);
    EXPECT_EQ(lanzados, (std::vector<std::string>{"cobros Pagos a Cuenta"}));

    prueba::AjustesTemporales ajustes("carpeta_programas=" + prueba::AjustesTemporales::CarpetaTemporal() +
                                      "\nprograma_pagos=no_existe_pagos\n");
    Clic(c.cmdIrAPagos);
    EXPECT_TRUE(Avisos().empty());
    EXPECT_TRUE(c.Cargada());
}

TPV_EN_CADA_MOTOR(CajaDeuda);

}  // namespace
}  // namespace tpv
