// The customer's delivery notes on the till: only this customer's notes,
// the blinking accept button, touches on empty rows, and back to nothing.
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
        Nota(22, 2, "20.5", "Ana");
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
                      std::to_string(numero) + ",#11/14/2026#,8," + total + ",1,'" + empleado +
                      "'," + std::to_string(albaran) + ",'CAJA1')",
                  "insert into detalle_factura_temp (num_factura,codigo,producto,unidades,precio,precio_unit,tipo_venta,"
                  "orden) values (" +
                      std::to_string(numero) + ",5,'Colonia',1," + total + "," +
                      total + ",'P',1)"});
    }

    frmAlbaranes& Lista() {
        frmCaja& c = Abrir();
        c.lblCodCliente.caption = "8";
        c.txtNomCliente.SetText("Rosa Vidal");
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

TEST_P(Albaranes, Toques_ParpadeoFilasVaciasYVueltaACero) {
    frmAlbaranes& f = Lista();
    EXPECT_EQ(Columna(f.grid_devolucion, 5), (std::vector<std::string>{"23", "22", "21"}));
    EXPECT_EQ(f.grid_devolucion.TextMatrix(2, 4), "Ana");  // a name without surname as it stands
    EXPECT_FALSE(f.tmrColorear.Enabled());
    const long antes = f.cmdAceptar.backColor;
    Toque(f.grid_devolucion, 2);
    EXPECT_EQ(f.txtTotal.Text(), "20,5");
    EXPECT_TRUE(f.tmrColorear.Enabled());
    anfitrion.Avanzar(500);
    EXPECT_NE(f.cmdAceptar.backColor, antes);
    Toque(f.grid_devolucion, 1);
    Toque(f.grid_devolucion, 1);
    // The last note leaves one empty row, which a touch ignores, as the heading.
    Toque(f.grid_devolucion, 1);
    Toque(f.gridSel, 0);
    EXPECT_EQ(Columna(f.gridSel, 5), (std::vector<std::string>{"22", "23", "21"}));
    EXPECT_EQ(f.txtTotal.Text(), "42,5");

    for (int i = 0; i < 3; ++i) Toque(f.gridSel, 1);
    EXPECT_EQ(f.txtTotal.Text(), "0");
    EXPECT_FALSE(f.cmdAceptar.visible);
    EXPECT_TRUE(f.tmrColorear.Enabled());  // nothing stops it
    EXPECT_EQ(Columna(f.gridSel, 5), (std::vector<std::string>{""}));
}

TPV_EN_CADA_MOTOR(Albaranes);

}  // namespace
}  // namespace tpv
