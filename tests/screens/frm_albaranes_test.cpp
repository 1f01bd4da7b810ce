// The customer's delivery notes on the till: the notes listed newest first,
// the two lists moving notes between them with the running total and the
// blinking accept button, and the button without a customer.
#include "core/runtime/texto.hpp"
#include "screens/frm_albaranes.hpp"
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class Albaranes : public prueba::CajaTest {
protected:
    void SetUp() override {
        CajaTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({"insert into clientes (codigo,nombre,apellidos) values (8,'Rosa','Vidal')",
                  "insert into formapago (codigo,nombre,posicion,borrar) values (1,'Contado',1,0)"});
        sesion().Clientes.push_back(RegistroCliente{"Rosa", "Vidal", 8, {}, 0, false, 0});
        // Three notes of Rosa's and one of another customer's.
        Nota(21, 1, "10", "Juan Perez Lopez");
        Nota(22, 2, "20,5", "Ana");
        Nota(23, 3, "12", "Juan Perez Lopez");
        Ejecutar({"insert into cabecera_factura_temp (numero,fecha,cliente,total,empleado,num_albaran,terminal) "
                  "values (24,#11/14/2026#,9,99,'Ana',4,'CAJA1')"});
    }

    void TearDown() override {
        Unica<frmAlbaranes>().Unload();
        CajaTest::TearDown();
    }

    void Nota(int numero, int albaran, const std::string& total, const std::string& empleado) {
        Ejecutar({"insert into cabecera_factura_temp (numero,fecha,cliente,total,impuesto,empleado,num_albaran,"
                  "terminal) values (" +
                      std::to_string(numero) + ",#11/14/2026#,8," + Replace(total, ",", ".") + ",1,'" + empleado +
                      "'," + std::to_string(albaran) + ",'CAJA1')",
                  "insert into detalle_factura_temp (num_factura,codigo,producto,unidades,precio,precio_unit,tipo_venta,"
                  "orden) values (" +
                      std::to_string(numero) + ",5,'Colonia',1," + Replace(total, ",", ".") + "," +
                      Replace(total, ",", ".") + ",'P',1)"});
    }

    frmCaja& CajaConCliente(const std::string& cliente) {
        frmCaja& c = Abrir();
        c.lblCodCliente.caption = cliente;
        c.txtNomCliente.SetText("Rosa Vidal");
        return c;
    }

    frmAlbaranes& Lista() {
        CajaConCliente("8");
        frmAlbaranes& f = Unica<frmAlbaranes>();
        anfitrion.Accion([&] { f.Show(); });
        return f;
    }

    void Toque(Grid& g, long fila) {
        anfitrion.Accion([&] { g.ClicEnCelda(fila, 1, false); });
    }

    static std::vector<std::string> Columna(const Grid& g, long col) {
        std::vector<std::string> r;
        for (long f = 1; f < g.Rows(); ++f) r.push_back(g.TextMatrix(f, col));
        return r;
    }
};

TEST_P(Albaranes, Apertura_LasNotasDelClienteLaMasNuevaPrimero) {
    frmAlbaranes& f = Lista();
    EXPECT_EQ(f.Label1.caption, "Albaranes de Rosa Vidal");
    ASSERT_EQ(f.grid_devolucion.Rows(), 4);
    const std::vector<std::string> primera = {"3", "Rosa Vidal", "14/11/2026", "12", "J.Perez", "23"};
    for (long c = 0; c < 6; ++c) EXPECT_EQ(f.grid_devolucion.TextMatrix(1, c), primera[c]);
    EXPECT_EQ(f.grid_devolucion.TextMatrix(2, 4), "Ana");
    EXPECT_EQ(f.gridSel.Rows(), 2);
    EXPECT_EQ(f.gridSel.TextMatrix(1, 0), "");
    EXPECT_FALSE(f.cmdAceptar.visible);
    EXPECT_FALSE(f.tmrColorear.Enabled());
}

TEST_P(Albaranes, Toques_MuevenNotasYLlevanElTotal) {
    frmAlbaranes& f = Lista();
    const long antes = f.cmdAceptar.backColor;
    Toque(f.grid_devolucion, 2);  // 20,5
    EXPECT_EQ(f.txtTotal.Text(), "20,5");
    EXPECT_TRUE(f.cmdAceptar.visible);
    EXPECT_TRUE(f.tmrColorear.Enabled());
    EXPECT_EQ(Columna(f.grid_devolucion, 5), (std::vector<std::string>{"23", "21"}));
    EXPECT_EQ(Columna(f.gridSel, 5), (std::vector<std::string>{"22"}));
    Toque(f.grid_devolucion, 1);
    Toque(f.grid_devolucion, 1);
    EXPECT_EQ(f.txtTotal.Text(), "42,5");
    // The last note leaves one empty row, which a touch ignores.
    EXPECT_EQ(Columna(f.grid_devolucion, 5), (std::vector<std::string>{""}));
    Toque(f.grid_devolucion, 1);
    Toque(f.gridSel, 0);  // the heading
    EXPECT_EQ(Columna(f.gridSel, 5), (std::vector<std::string>{"22", "23", "21"}));
    anfitrion.Avanzar(500);
    EXPECT_NE(f.cmdAceptar.backColor, antes);

    Toque(f.gridSel, 1);
    EXPECT_EQ(f.txtTotal.Text(), "22");
    EXPECT_EQ(Columna(f.grid_devolucion, 5), (std::vector<std::string>{"22"}));
    Toque(f.gridSel, 1);
    Toque(f.gridSel, 1);
    EXPECT_EQ(f.txtTotal.Text(), "0");
    EXPECT_FALSE(f.cmdAceptar.visible);
    EXPECT_TRUE(f.tmrColorear.Enabled());  // nothing stops it
    EXPECT_EQ(Columna(f.gridSel, 5), (std::vector<std::string>{""}));
}

TEST_P(Albaranes, SinCliente_ElBotonNoHaceNada) {
    frmCaja& c = CajaConCliente("0");
    Clic(c.cmdAlbaranes);
    EXPECT_FALSE(Unica<frmAlbaranes>().Cargada());
    EXPECT_EQ(c.VentaAlbaranes, "");
}

TPV_EN_CADA_MOTOR(Albaranes);

}  // namespace
}  // namespace tpv
