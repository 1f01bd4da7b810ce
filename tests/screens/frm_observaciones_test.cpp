// Shift notes: only today's notes of this terminal, and none saved without a text.
#include "tests/screens/escritorio_prueba.hpp"

namespace tpv {
namespace {

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

}  // namespace
}  // namespace tpv
