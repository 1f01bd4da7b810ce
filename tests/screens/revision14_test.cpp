// The search screen's on-screen keyboard over a wholly selected name: the box
// is emptied and then takes the key, and its search runs on each change.
#include <string>
#include <vector>

#include "screens/frm_buscar.hpp"
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class Revision14Pantallas : public prueba::CajaTest {
protected:
    void TearDown() override {
        Unica<frmBuscar>().Unload();
        CajaTest::TearDown();
    }
    void Tecla(frmBuscar& b, int codigo) {
        for (std::size_t i = 0; i < kCodigosTeclado.size(); ++i)
            if (kCodigosTeclado[i] == codigo) return Clic(b.bt_letra[i]);
        FAIL() << codigo;
    }
};

TEST_P(Revision14Pantallas, TecladoSobreNombreSeleccionado_VaciaYLuegoEscribe) {
    Ejecutar({"insert into clientes (codigo,codigocliente,nombre,apellidos,borrar) values (1,'101','Ana','Gil',0)",
              "insert into clientes (codigo,codigocliente,nombre,apellidos,borrar) values (2,'102','Bea','Sanz',0)"});
    Unica<frmCaja>().ModoBusqueda = "Cl";
    frmBuscar& b = Unica<frmBuscar>();
    b.Show();
    b.txtnombre.SetFocus();
    b.txtnombre.SetText("Zo");  // nobody: its box
    b.txtnombre.selStart = 0;
    b.txtnombre.selLength = 2;
    lineas.clear();

    std::vector<std::string> busquedas;
    const std::function<void()> buscar = b.txtnombre.Change;
    b.txtnombre.Change = [&] {
        busquedas.push_back(b.txtnombre.Text());
        buscar();
    };
    Tecla(b, 'B');
    EXPECT_EQ(busquedas, (std::vector<std::string>{"", "B"}));
    EXPECT_EQ(b.txtnombre.Text(), "B");
    ASSERT_EQ(b.ListBusClie.ListCount(), 1);
    EXPECT_EQ(b.ListBusClie.List(0), "Bea Sanz");
    // The empty name finds every customer, so no box comes up.
    EXPECT_TRUE(Avisos().empty());
}

TPV_EN_CADA_MOTOR(Revision14Pantallas);

}  // namespace
}  // namespace tpv
