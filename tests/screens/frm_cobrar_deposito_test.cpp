// The customer's balance from the till: paying a sale from it, whole or in
// part, refusing it, and money paid into it from the till's button, each
// with the rows it leaves.
#include <deque>
#include <functional>

#include "screens/frm_cobrar.hpp"
#include "screens/frm_ing_dinero_deposito.hpp"
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class CobroDeposito : public prueba::CajaTest {
protected:
    void SetUp() override {
        CajaTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({"insert into formapago (codigo,nombre,posicion,borrar) values (1,'Contado',1,0)",
                  "insert into formapago (codigo,nombre,posicion,borrar) values (2,'Tarjeta',2,0)",
                  "insert into relaciones_fijas (indice,daton) values ('Factura',100)",
                  "insert into servicios (codigo,nombre,precio,iva) values (2,'Deposito',0,21)",
                  "insert into clientes (codigo,nombre,apellidos,activardindep,dindep) values (8,'Rosa','Vidal',-1,30)"});
        CargarPanelFormasPago();
        Sesion& s = sesion();
        s.opciones.Deposito = true;
        s.opciones.imprimirticket = false;
        s.opciones.abrircajetin = false;
        s.Clientes.push_back(RegistroCliente{"Rosa", "Vidal", 8, {}, 0, true, 30});
        Articulo(5, "8410005", "Colonia", "50");
        Articulo(6, "8410006", "Jabon", "30");
    }

    void TearDown() override {
        Unica<frmCobrar>().Unload();
        Unica<frmIngDineroDeposito>().Unload();
        CajaTest::TearDown();
    }

    frmCobrar& Cobro(const char* codigo = "8410005") {
        frmCaja& c = Abrir();
        c.lblCodCliente.caption = "8";
        c.txtNomCliente.SetText("Rosa Vidal");
        Escanear(codigo);
        frmCobrar& f = Unica<frmCobrar>();
        anfitrion.Accion([&] { f.Show(); });
        return f;
    }

    std::string Saldo() { return Texto(Valor("select dindep from clientes where codigo = 8")); }
    std::vector<std::string> Cerrada() {
        std::vector<std::string> r;
        Recordset rs;
        rs.Open("select total, pago from cabecera_factura", sesion().Conexion);
        for (; !rs.Eof(); rs.MoveNext()) r.push_back(Texto(rs["total"]) + "|" + Texto(rs["pago"]));
        return r;
    }

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
        Unica<frmCobrar>().Unload();
        Unica<frmCaja>().Unload();
        frmCobrar& f = Cobro();
        EXPECT_EQ(f.frDinDep.visible, c.panel);
        EXPECT_EQ(f.CobroConDinDep, c.panel);
        EXPECT_EQ(f.txt_Entrega.locked, c.panel);
        EXPECT_EQ(f.txt_Entrega.Text(), c.panel ? "50,00" : "0,00");
    }
    frmCobrar& f = Unica<frmCobrar>();
    EXPECT_EQ(f.lblNomDinDep.caption, "Rosa Vidal");
}

TEST_P(CobroDeposito, SaldoIgualAlTotal_PagaConElSaldoYLoDejaACero) {
    sesion().Clientes[0].DinDep = 50;
    Ejecutar({"update clientes set dindep = 50 where codigo = 8"});
    frmCobrar& f = Cobro();
    ASSERT_TRUE(f.frDinDep.visible);
    Clic(f.cmdAceptarDinDep);
    EXPECT_FALSE(f.Cargada());
    EXPECT_EQ(Saldo(), "0");
    EXPECT_EQ(sesion().Clientes[0].DinDep, 0);
    EXPECT_EQ(Cerrada(), (std::vector<std::string>{"50|4"}));
    EXPECT_EQ(Unica<frmCaja>().lblForma_U_V.caption, "Forma Pago = Dinero en Deposito");
}

TEST_P(CobroDeposito, TreintaSobreCincuenta_ElRestoPorOtroMetodoYElTotalEntero) {
    Decimales(0);  // the rest shows two decimals all the same
    frmCobrar& f = Cobro();
    Clic(f.cmdAceptarDinDep);
    EXPECT_EQ(f.CajaText_Pago.Text(), "20,00");
    EXPECT_EQ(f.txt_Entrega.Text(), "0");
    EXPECT_FALSE(f.frDinDep.visible);
    EXPECT_TRUE(f.txt_Entrega.locked);
    EXPECT_TRUE(f.CobroConDinDep);
    EXPECT_EQ(Saldo(), "30");  // nothing moves until the finish
    // The card takes the rest.
    TeclaFuncion(f.txt_Entrega, 2);
    EXPECT_EQ(f.txt_Entrega.Text(), "20,00");
    ASSERT_TRUE(f.cmd_FinVenta.visible);
    Clic(f.cmd_FinVenta);
    EXPECT_EQ(Saldo(), "0");
    EXPECT_EQ(sesion().Clientes[0].DinDep, 0);
    EXPECT_EQ(Cerrada(), (std::vector<std::string>{"50|2"}));
    EXPECT_EQ(Texto(Valor("select count(*) from cabecera_pago")), "0");  // no debt
}

TEST_P(CobroDeposito, Cancelar_SePagaComoSiempreYElSaldoQueda) {
    frmCobrar& f = Cobro();
    Clic(f.cmdCancelar);
    EXPECT_FALSE(f.frDinDep.visible);
    EXPECT_FALSE(f.CobroConDinDep);
    EXPECT_FALSE(f.txt_Entrega.locked);
    EXPECT_EQ(f.txt_Entrega.Text(), "0,00");
    EXPECT_TRUE(f.txt_Entrega.TieneFoco());
    Teclear(f.txt_Entrega, "60");
    EXPECT_EQ(f.txt_Devolucion.Text(), "10,00");
    Clic(f.cmd_FinVenta);
    EXPECT_EQ(Saldo(), "30");
    EXPECT_EQ(Cerrada(), (std::vector<std::string>{"50|1"}));
}

TEST_P(CobroDeposito, IngresoDesdeLaCaja_CienSobreTreinta) {
    frmCaja& c = Abrir();
    ConectarCobro(c);
    c.lblCodCliente.caption = "8";
    c.txtNomCliente.SetText("Rosa Vidal");
    Guion({[&] {
               frmIngDineroDeposito& d = Unica<frmIngDineroDeposito>();
               EXPECT_EQ(d.caption, "Ingresar Dinero en Deposito");
               EXPECT_EQ(d.Label2.caption, "o saldo a favor de Rosa Vidal");
               for (int tecla : {1, 0, 10, 0, 0}) Clic(d.btnNumerico_Cobro[static_cast<std::size_t>(tecla)]);
               EXPECT_EQ(d.txtDindep.Text(), "10,00");
               Clic(d.cmd_nuevoCobro);
               Teclear(d.txtDindep, "1a00");
               Clic(d.cmdAceptar);
           },
           [&] {
               // Money paid in can't be paid with the same money.
               frmCobrar& f = Unica<frmCobrar>();
               EXPECT_FALSE(f.frDinDep.visible);
               EXPECT_EQ(f.CajaText_Pago.Text(), "100,00");
               Teclear(f.txt_Entrega, "100");
               Clic(f.cmd_FinVenta);
           }});
    Clic(c.cmdIngDeposito);
    EXPECT_TRUE(guion_.empty());
    EXPECT_EQ(Saldo(), "130");
    EXPECT_EQ(sesion().Clientes[0].DinDep, 130);
    EXPECT_EQ(Cerrada(), (std::vector<std::string>{"100|1"}));
    EXPECT_EQ(Texto(Valor("select codigo from detalle_factura where tipo_venta = 'S' and precio = 100")), "2");
    EXPECT_FALSE(c.VentaDinDep);  // the till cleared itself
    c.MostrarCobro = nullptr;
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
    c.DineroDeposito(0);
    EXPECT_TRUE(c.frDindep.visible);
    EXPECT_EQ(c.lblValorDinDep.caption, "30");
    sesion().Clientes[0].ActivarDinDep = false;
    c.DineroDeposito(0);
    EXPECT_FALSE(c.frDindep.visible);
    c.DineroDeposito(-1);  // no customer: as it was
    c.DineroDeposito(7);
    EXPECT_FALSE(c.frDindep.visible);
    sesion().Clientes[0].ActivarDinDep = true;
    sesion().opciones.Deposito = false;
    c.DineroDeposito(0);
    EXPECT_FALSE(c.frDindep.visible);
    // The customer's card read on the till shows the balance.
    sesion().opciones.Deposito = true;
    Ejecutar({"update clientes set codigocliente = '8' where codigo = 8"});
    Teclear(c.txtNomCliente, "8");
    Intro(c.txtNomCliente);
    EXPECT_TRUE(c.frDindep.visible);
    EXPECT_EQ(c.lblValorDinDep.caption, "30");
}

TPV_EN_CADA_MOTOR(CobroDeposito);

}  // namespace
}  // namespace tpv
