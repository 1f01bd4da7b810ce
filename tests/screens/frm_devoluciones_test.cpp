// The screen that asks for a closed sale in the till's three modes: the
// latest sales with the debts in red, and the refusals with their texts.
#include <functional>

#include "core/datos/recordset.hpp"
#include "screens/frm_devoluciones.hpp"
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class Devoluciones : public prueba::CajaTest {
protected:
    void SetUp() override {
        CajaTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Articulo(5, "8400005", "Colonia", "10");
        Articulo(6, "8400006", "Jabon", "2");
        Ejecutar({"insert into clientes (codigo,nombre,apellidos) values (12,'Ana','Ruiz')"});
        sesion().Clientes.push_back(RegistroCliente{});
        sesion().Clientes.back().Codigo = 12;
        sesion().Clientes.back().Nombre = "Ana";
        sesion().Clientes.back().Apellidos = "Ruiz";
    }
    void TearDown() override {
        Unica<frmDevoluciones>().Unload();
        CajaTest::TearDown();
    }

    // A closed sale of `unidades` of product 5, its stock already moved.
    void Cerrada(int numero, double total, int cliente = 0, const std::string& empleado = "Juan Perez Lopez") {
        const std::string n = std::to_string(numero);
        Ejecutar({"insert into cabecera_factura (numero,fecha,cliente,empleado,codigo_empleado,total,impuesto,"
                  "hora,hora_inicio,pago,fechaventa,terminal,impuestoincluido) values (" +
                      n + ",#11/14/2026#," + std::to_string(cliente) + ",'" + empleado + "',3," + Str(total) +
                      ",1.74,#18:00:00#,#17:55:00#,1,#11/14/2026#,'CAJA2',-1)",
                  "insert into detalle_factura (num_factura,codigo,producto,unidades,precio,descuento,recargo,"
                  "precio_unit,impuesto,tipoimpuesto,codempleado,nombreempleado,tipo_venta) values (" +
                      n + ",5,'Colonia',1," + Str(total) + ",0,0,10,1.74,21,3,'J.Perez','P')",
                  "insert into historicostock (codigo,cantidad,ticket,tipo,descripciontipo) values (5,1," + n +
                      ",1,2)"});
    }

    // Runs `accion` on the till; while the screen of closed sales waits,
    // the steps run in it, one after another.
    void ConPantalla(const std::function<void()>& accion, std::vector<std::function<void()>> pasos) {
        std::size_t paso = 0;
        anfitrion.siguiente = [&] {
            if (paso >= pasos.size()) return false;
            anfitrion.Accion(pasos[paso++]);
            return true;
        };
        anfitrion.Accion(accion);
        anfitrion.siguiente = nullptr;
    }
    std::function<void()> Numero(const std::string& numero) {
        return [numero] {
            Unica<frmDevoluciones>().txtNumFac.SetText(numero);
            Unica<frmDevoluciones>().cmdAceptar.Clic();
        };
    }
    static std::function<void()> Salir() {
        return [] { Unica<frmDevoluciones>().cmdSalir.Clic(); };
    }
    long Cuenta(const std::string& tabla, const std::string& donde = "1=1") {
        return CLng(Valor("select count(*) from " + tabla + " where " + donde));
    }
};

// Only the 30 latest sales, newest first, with the customer's name, the
// employee's short name and the debts in red; a touch takes the number.
TEST_P(Devoluciones, Pantalla_Ultimas30VentasConLasDeudasEnRojo) {
    for (int n = 1; n <= 32; ++n) Cerrada(n, n, n == 32 ? 12 : 0, n == 31 ? "Ana" : "Juan Perez Lopez");
    Ejecutar({"insert into cabecera_pago (num_factura,estado) values (31,0)",
              "insert into cabecera_pago (num_factura,estado) values (30,-1)"});
    frmCaja& c = Abrir();
    frmDevoluciones& d = Unica<frmDevoluciones>();
    std::vector<std::string> filas;
    ConPantalla([&] { c.cmdAbonoVenta_Click(); },
                {[&] {
                     ASSERT_EQ(d.grid_devolucion.Rows(), 31);
                     for (long f = 0; f <= 3; ++f) {
                         std::string fila;
                         for (long col = 0; col < 5; ++col) fila += d.grid_devolucion.TextMatrix(f, col) + "|";
                         filas.push_back(fila);
                     }
                     for (long col = 0; col < 5; ++col) {
                         EXPECT_EQ(d.grid_devolucion.CellBackColor(2, col), 255);
                         EXPECT_NE(d.grid_devolucion.CellBackColor(3, col), 255);
                     }
                     EXPECT_EQ(d.grid_devolucion.TextMatrix(30, 0), "3");
                     d.grid_devolucion.ClicEnCelda(2, 3, false);
                     EXPECT_EQ(d.txtNumFac.Text(), "31");
                 },
                 Salir()});
    EXPECT_EQ(filas, (std::vector<std::string>{"Factura|Cliente|Fecha|Importe|Empleado|",
                                               "32|Ana Ruiz|14/11/2026|32|J.Perez|",
                                               "31|Cliente Generico|14/11/2026|31|Ana|",
                                               "30|Cliente Generico|14/11/2026|30|J.Perez|"}));
    EXPECT_FALSE(c.ModoAbono);  // leaving the refund's screen ends the refund
    EXPECT_EQ(c.VentaReabierta, 0);
    EXPECT_TRUE(Avisos().empty());
}

TEST_P(Devoluciones, Aceptar_RechazosConSusTextosYNadaEscrito) {
    Cerrada(40, 30);
    Cerrada(41, -5);
    Cerrada(42, 12);
    Ejecutar({"insert into cabecera_pago (num_factura,estado) values (42,0)",
              "insert into cabecera_abono (numero,total) values (43,5)"});
    frmCaja& c = Abrir();
    const std::string abono =
        "MENSAJE [Devolucion de Venta] El numero de ticket / factura es un abono, no se puede borrar. -> Aceptar";
    const std::string deuda =
        "MENSAJE [Borrado de Venta] Esta venta tiene una deuda, para poder borrarla antes tiene que cancelar o "
        "eliminar la deuda. -> Aceptar";
    const std::string ninguna =
        "MENSAJE [Devolucion de Venta] El numero de ticket / factura no coincide con ninguna venta. -> Aceptar";
    struct Caso {
        int modo;  // 0 refund, 1 modification, 2 deletion
        const char* numero;
        std::string aviso;  // "" for none
    };
    const Caso casos[] = {{0, "", ""},      {0, "41", abono},   {2, "41", abono},  {0, "42", deuda},
                          {1, "42", deuda}, {2, "42", deuda},   {0, "43", ninguna}, {1, "99", ninguna},
                          {2, "4x", ninguna}, {0, "40 or 1=1", ninguna}};
    for (const Caso& caso : casos) {
        SCOPED_TRACE(std::to_string(caso.modo) + " " + caso.numero);
        lineas.clear();
        std::function<void()> boton[] = {[&] { c.cmdAbonoVenta_Click(); }, [&] { c.cmdDevoluciones_Click(); },
                                          [&] { c.cmdBorrarVentas_Click(); }};
        bool sigueAbierta = false;
        ConPantalla(boton[caso.modo],
                    {Numero(caso.numero), [&] { sigueAbierta = Unica<frmDevoluciones>().Cargada(); }, Salir()});
        EXPECT_TRUE(sigueAbierta);
        if (caso.aviso.empty())
            EXPECT_TRUE(Avisos().empty());
        else
            EXPECT_EQ(Avisos(), std::vector<std::string>{caso.aviso});
    }
    EXPECT_EQ(Cuenta("cabecera_factura"), 3);
    EXPECT_EQ(Cuenta("cabecera_factura_temp"), 0);
    EXPECT_EQ(Cuenta("ventasdevolucion"), 0);
    EXPECT_FALSE(c.ModoAbono);
}

TPV_EN_CADA_MOTOR(Devoluciones);

}  // namespace
}  // namespace tpv
