// The customer's balance from the till: when the settlement screen offers
// it, a part of a sale paid from it, the till's panel of the balance, and
// money paid in with no employee.
#include "screens/frm_ing_dinero_deposito.hpp"
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class CobroDeposito : public prueba::CobroTest {
protected:
    void SetUp() override {
        CobroTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({"insert into servicios (codigo,nombre,precio,iva) values (2,'Deposito',0,21)",
                  "insert into clientes (codigo,nombre,apellidos,activardindep,dindep) values (8,'Rosa','Vidal',-1,30)"});
        sesion().opciones.Deposito = true;
        sesion().Clientes = {RegistroCliente{"Rosa", "Vidal", 8, {}, 0, true, 30}};
        Articulo(5, "8410005", "Colonia", "50");
    }

    void TearDown() override {
        Unica<frmIngDineroDeposito>().Unload();
        CobroTest::TearDown();
    }

    frmCobrar& CobroDeRosa() { return Cobro({"8410005"}, "8", "Rosa Vidal"); }
    std::string Saldo() { return Texto(Valor("select dindep from clientes where codigo = 8")); }
};

TEST_P(CobroDeposito, Panel_SoloConSaldoYLaOpcion) {
    struct Caso {
        const char* que;
        bool deposito;
        bool activo;
        double saldo;
        bool panel;
    } casos[] = {
        {"con saldo", true, true, 30, true},
        {"sin la opcion", false, true, 30, false},
        {"cliente sin saldo activado", true, false, 30, false},
        {"saldo 0", true, true, 0, false},
        {"saldo negativo", true, true, -5, false},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.que);
        sesion().opciones.Deposito = c.deposito;
        sesion().Clientes[0].ActivarDinDep = c.activo;
        sesion().Clientes[0].DinDep = c.saldo;
        frmCobrar& f = CobroDeRosa();
        EXPECT_EQ(f.frDinDep.visible, c.panel);
        EXPECT_EQ(f.CobroConDinDep, c.panel);
        EXPECT_EQ(f.txt_Entrega.locked, c.panel);
        EXPECT_EQ(f.txt_Entrega.Text(), c.panel ? "50,00" : "0,00");
    }
    frmCobrar& f = Unica<frmCobrar>();
    EXPECT_EQ(f.lblNomDinDep.caption, "Rosa Vidal");
}

// 30 of the balance on a sale of 50: the rest shows two decimals whatever
// the shop's decimals, and the balance spent is kept in the till's list too.
TEST_P(CobroDeposito, ParteDelSaldo_ElRestoConDosDecimalesYLaListaAlDia) {
    Decimales(0);
    frmCobrar& f = CobroDeRosa();
    Clic(f.cmdAceptarDinDep);
    EXPECT_EQ(f.CajaText_Pago.Text(), "20,00");
    EXPECT_EQ(f.txt_Entrega.Text(), "0");
    EXPECT_EQ(Saldo(), "30");  // nothing moves until the finish
    TeclaFuncion(f.txt_Entrega, 2);
    EXPECT_EQ(f.txt_Entrega.Text(), "20,00");
    Clic(f.cmd_FinVenta);
    EXPECT_EQ(Saldo(), "0");
    EXPECT_EQ(sesion().Clientes[0].DinDep, 0);
    EXPECT_EQ(Filas("select total, pago from cabecera_factura"), (std::vector<std::string>{"50|2"}));
}

TEST_P(CobroDeposito, SinEmpleado_NadaQueCobrar) {
    sesion().CodigoEmpleadoActual = -1;
    frmCaja& c = Abrir();
    ConectarCobro(c);
    c.lblCodCliente.caption = "8";
    Guion({[&] {
        Teclear(Unica<frmIngDineroDeposito>().txtDindep, "100");
        Clic(Unica<frmIngDineroDeposito>().cmdAceptar);
    }});
    Clic(c.cmdIngDeposito);
    EXPECT_TRUE(c.VentaDinDep);
    EXPECT_FALSE(Unica<frmCobrar>().Cargada());
    EXPECT_EQ(Texto(Valor("select count(*) from cabecera_factura_temp")), "0");
    EXPECT_EQ(Saldo(), "30");
    c.MostrarCobro = nullptr;
}

TEST_P(CobroDeposito, SaldoEnLaCaja_SegunLaFichaDelCliente) {
    frmCaja& c = Abrir();
    struct Caso {
        const char* que;
        bool deposito, activo;
        long cliente;
        bool panel;
    } casos[] = {
        {"con saldo", true, true, 0, true},
        {"sin saldo activado", true, false, 0, false},
        {"sin cliente: como estaba", true, true, -1, false},
        {"fuera de la lista", true, true, 7, false},
        {"sin la opcion", false, true, 0, false},
    };
    for (const Caso& k : casos) {
        SCOPED_TRACE(k.que);
        sesion().opciones.Deposito = k.deposito;
        sesion().Clientes[0].ActivarDinDep = k.activo;
        c.DineroDeposito(k.cliente);
        EXPECT_EQ(c.frDindep.visible, k.panel);
    }
    EXPECT_EQ(c.lblValorDinDep.caption, "30");
}

TPV_EN_CADA_MOTOR(CobroDeposito);

}  // namespace
}  // namespace tpv
