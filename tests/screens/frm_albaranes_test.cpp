// The customer's delivery notes on the till: the two lists moving notes
// between them with the running total, the blinking accept button, leaving
// without a change, and the notes joined and settled as one sale.
#include <deque>
#include <functional>

#include "core/runtime/texto.hpp"
#include "screens/frm_albaranes.hpp"
#include "screens/frm_cobrar.hpp"
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
        Unica<frmCobrar>().Unload();
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

    // Runs `pasos` one by one while a screen waits modally.
    void Guion(std::deque<std::function<void()>> pasos) {
        guion_ = std::move(pasos);
        anfitrion.siguiente = [this] {
            if (guion_.empty()) return false;
            auto paso = guion_.front();
            guion_.pop_front();
            paso();
            return true;
        };
    }
    std::deque<std::function<void()>> guion_;
};

TEST_P(Albaranes, Apertura_LasNotasDelClienteLaMasNuevaPrimero) {
    frmAlbaranes& f = Lista();
    EXPECT_EQ(f.Label1.caption, "Albaranes de Rosa Vidal");
    ASSERT_EQ(f.grid_devolucion.Rows(), 4);
    EXPECT_EQ(f.grid_devolucion.TextMatrix(0, 0), "Albaran");
    EXPECT_EQ(f.grid_devolucion.TextMatrix(0, 5), "numFactura");
    EXPECT_EQ(f.grid_devolucion.ColWidth(5), 0);
    EXPECT_EQ(f.gridSel.ColWidth(2), 1500);
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

TEST_P(Albaranes, Salir_NadaCambia) {
    frmCaja& c = CajaConCliente("8");
    Guion({[&] { Toque(Unica<frmAlbaranes>().grid_devolucion, 1); },
           [&] { Clic(Unica<frmAlbaranes>().cmdSalir); }});
    Clic(c.cmdAlbaranes);
    EXPECT_EQ(c.VentaAlbaranes, "");
    EXPECT_EQ(c.lblNumVenta.caption, "");
    EXPECT_EQ(Texto(Valor("select count(*) from cabecera_factura_temp where num_albaran > 0")), "4");
}

TEST_P(Albaranes, SinCliente_ElBotonNoHaceNada) {
    frmCaja& c = CajaConCliente("0");
    Clic(c.cmdAlbaranes);
    EXPECT_FALSE(Unica<frmAlbaranes>().Cargada());
    // A customer with no notes: both lists empty, nothing to accept.
    c.lblCodCliente.caption = "7";
    Guion({[&] {
        frmAlbaranes& f = Unica<frmAlbaranes>();
        EXPECT_EQ(Columna(f.grid_devolucion, 0), (std::vector<std::string>{""}));
        EXPECT_EQ(Columna(f.gridSel, 0), (std::vector<std::string>{""}));
        Clic(f.cmdAceptar);
        EXPECT_TRUE(f.Cargada());
        Clic(f.cmdSalir);
    }});
    Clic(c.cmdAlbaranes);
    EXPECT_TRUE(guion_.empty());
    EXPECT_EQ(c.VentaAlbaranes, "");
}

TEST_P(Albaranes, DosNotas_UnaVentaQueSeCobraEnElActo) {
    frmCaja& c = CajaConCliente("8");
    ConectarCobro(c);
    Guion({[&] { Toque(Unica<frmAlbaranes>().grid_devolucion, 1); },
           [&] { Toque(Unica<frmAlbaranes>().grid_devolucion, 2); },
           [&] { Clic(Unica<frmAlbaranes>().cmdAceptar); },
           [&] {
               // The settlement opens on the sum of the notes.
               frmCobrar& f = Unica<frmCobrar>();
               EXPECT_EQ(f.CajaText_Pago.Text(), "22,00");
               EXPECT_EQ(f.lblNumVenta.caption, "7");
               Clic(f.cmdSalir);
           }});
    Clic(c.cmdAlbaranes);
    EXPECT_TRUE(guion_.empty());
    EXPECT_EQ(c.VentaAlbaranes, "7");
    EXPECT_EQ(c.lblNumVenta.caption, "7");
    EXPECT_EQ(Texto(Valor("select total from cabecera_factura_temp where numero = 7")), "22");
    EXPECT_EQ(Texto(Valor("select count(*) from cabecera_factura_temp where num_albaran > 0")), "2");
    EXPECT_EQ(LineasDe(7), 2);
    c.MostrarCobro = nullptr;
}

TPV_EN_CADA_MOTOR(Albaranes);

}  // namespace
}  // namespace tpv
