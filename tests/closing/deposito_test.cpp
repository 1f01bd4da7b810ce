// The customer's balance: money paid in as a sale of the deposit service,
// the balance raised and lowered in the table and in the session's list
// together, and a deposit closed as any sale.
#include "closing/deposito.hpp"
#include "sale/grid_venta.hpp"
#include "tests/closing/cierre_prueba.hpp"

namespace tpv {
namespace {

class Deposito : public prueba::CierreTest {
protected:
    void SetUp() override {
        CierreTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Sesion& s = sesion();
        s.NombreEmpleadoActual = "Juan Perez Lopez";
        s.CodigoEmpleadoActual = 5;
        s.opciones.iva = true;
        Ejecutar({"insert into relaciones_fijas (indice,daton) values ('Venta',40)",
                  "insert into servicios (codigo,nombre,precio,iva) values (2,'Deposito',0,21)",
                  "insert into clientes (codigo,nombre,activardindep,dindep) values (8,'Rosa',-1,30)",
                  "insert into clientes (codigo,nombre,activardindep,dindep) values (9,'Luis',-1,5)"});
        s.Clientes = {RegistroCliente{"Luis", "", 9, {}, 0, true, 5}, RegistroCliente{"Rosa", "", 8, {}, 0, true, 30}};
    }

    std::string Saldo(int cliente) {
        return Texto(Valor("select dindep from clientes where codigo = " + std::to_string(cliente)));
    }

    Grid grid = NuevaGridVenta();
    TextBox total, ultProd, ultCant, articulos;
    ControlesVenta controles{grid, total, ultProd, ultCant, articulos};
    Label numero;
};

TEST_P(Deposito, CienSobreTreinta_ServicioDosACienYSaldoCientoTreinta) {
    IngresoDeposito(numero, 8, 100, controles);
    ASSERT_EQ(numero.caption, "40");
    EXPECT_EQ(Filas("select codigo, tipo_venta, unidades, precio, impuesto from detalle_factura_temp"),
              (std::vector<std::string>{"2|S|1|100|0"}));
    EXPECT_EQ(Filas("select cliente, total from cabecera_factura_temp"), (std::vector<std::string>{"8|100"}));
    EXPECT_EQ(grid.TextMatrix(1, kColImporte), "100");
    EXPECT_EQ(total.Text(), "100,00");

    // At the finish the balance goes up by what the till shows, read as Val.
    EXPECT_EQ(AumentarDinDep(1, "8", Val(total.Text())), 30);
    EXPECT_EQ(Saldo(8), "130");
    EXPECT_EQ(sesion().Clientes[1].DinDep, 130);
    EXPECT_EQ(Saldo(9), "5");
    DatosCierre d = Datos(40);
    d.entrega = "100,00";
    Cerrar(d);
    EXPECT_EQ(Filas("select codigo, tipo_venta, precio from detalle_factura"), (std::vector<std::string>{"2|S|100"}));
    EXPECT_EQ(Filas("select total, pago from cabecera_factura"), (std::vector<std::string>{"100|1"}));
}

TEST_P(Deposito, SinEmpleado_NadaSeAbre) {
    sesion().CodigoEmpleadoActual = -1;
    IngresoDeposito(numero, 8, 100, controles);
    EXPECT_EQ(numero.caption, "");
    EXPECT_EQ(Cuenta("cabecera_factura_temp"), 0);
}

TEST_P(Deposito, SaldoGrabado_TablaYListaALaVez) {
    struct Caso {
        std::int32_t indice;
        std::int32_t cliente;
        double valor;
        const char* tabla;
        double lista;
    } casos[] = {
        {1, 8, 0, "0", 0},          // the whole balance spent
        {1, 8, 12.5, "12,5", 12.5},  // what was left of it
        {-1, 9, 2, "2", 5},         // a customer not in the list: the table alone
    };
    for (const Caso& c : casos) {
        GrabarDinDep(c.indice, c.cliente, c.valor);
        EXPECT_EQ(Saldo(c.cliente), c.tabla);
    }
    EXPECT_EQ(sesion().Clientes[1].DinDep, 12.5);
    EXPECT_EQ(sesion().Clientes[0].DinDep, 5);
    // Raising the balance of a customer not in the list changes nothing.
    EXPECT_EQ(AumentarDinDep(-1, "9", 50), 0);
    EXPECT_EQ(Saldo(9), "2");
}

TEST_P(Deposito, OtraCajaConLaListaVieja_PisaElSaldo) {
    // The first till raises the balance; the second, whose list still says
    // 30, writes its own sum over it.
    AumentarDinDep(1, "8", 100);
    sesion().Clientes[1].DinDep = 30;
    AumentarDinDep(1, "8", 20);
    EXPECT_EQ(Saldo(8), "50");
}

TPV_EN_CADA_MOTOR(Deposito);

}  // namespace
}  // namespace tpv
