// A customer's debt left on the settlement screen: the panel with what the
// customer owes already, going back from it, and the finish that writes the
// debt, with a short payment and with none at all.
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

using Esperadas = std::vector<std::string>;

class CobroDeuda : public prueba::CobroTest {
protected:
    void SetUp() override {
        CobroTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Articulo(6, "8410002", "Jabon", "12.1");
    }
};

// What the customer owes already: sale 1 owes 25, of which 10 were paid;
// sale 2, paid off, doesn't count.
TEST_P(CobroDeuda, Panel_DeudaActualDelClienteYCancelar) {
    Ejecutar({"insert into cabecera_pago (num_pago,num_factura,cliente,importe,estado) values (1,1,4,25,0)",
              "insert into cabecera_pago (num_pago,num_factura,cliente,importe,estado) values (2,2,4,8,1)",
              "insert into detalle_pago (num_pago,importe) values (1,10)"});
    frmCobrar& f = Cobro({"8410002"}, "4");
    Teclear(f.txt_Entrega, "5");
    Clic(f.cmdDeuda);
    EXPECT_TRUE(f.Frame6.visible);
    EXPECT_EQ(f.lblDeudaCliente.caption, "15,00");
    EXPECT_EQ(f.lblInfoDeuda.caption, "El cliente Ana Ruiz nos va a deber 7,10");
    Clic(f.cmdCancelarDeuda);
    EXPECT_FALSE(f.cmdDeuda.visible);  // until the amount handed over changes
    f.txt_Entrega.SetText("6");
    EXPECT_TRUE(f.cmdDeuda.visible);
    EXPECT_EQ(Filas("select count(*) from cabecera_pago"), Esperadas{"2"});
}

// Whatever is not handed over becomes the debt of the invoice; with no
// method chosen the sale is stored as cash.
TEST_P(CobroDeuda, Aceptar_CortoOSinPago_LaDeudaDeLaFactura) {
    struct Caso {
        const char* entrega;
        bool conMetodo;
        const char* deuda;  // num_pago|num_factura|cliente|importe|fecha|estado|empleado
        const char* pago;
    };
    const Caso casos[] = {{"5", true, "3|100|4|7,1|15/11/2026|0|3", "1"},
                          {"", false, "4|101|4|12,1|15/11/2026|0|3", "1"}};
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.entrega);
        // A customer who doesn't pay from a balance chooses the method himself.
        sesion().opciones.Deposito = !c.conMetodo;
        frmCobrar& f = Cobro({"8410002"}, "4");
        EXPECT_EQ(f.FormaPago, c.conMetodo ? "1" : "0");
        f.txt_Entrega.SetText("");
        Teclear(f.txt_Entrega, c.entrega);
        Clic(f.cmdDeuda);
        Clic(f.cmdAceptarDeuda);
        EXPECT_FALSE(f.Cargada());
        const std::string factura = c.conMetodo ? "100" : "101";
        EXPECT_EQ(Filas("select num_pago,num_factura,cliente,importe,fecha,estado,empleado from cabecera_pago "
                        "where num_factura = " + factura),
                  Esperadas{c.deuda});
        EXPECT_EQ(Filas("select pago,cliente from cabecera_factura where numero = " + factura),
                  Esperadas{std::string(c.pago) + "|4"});
    }
}

TPV_EN_CADA_MOTOR(CobroDeuda);

}  // namespace
}  // namespace tpv
