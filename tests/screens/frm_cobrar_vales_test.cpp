// A voucher spent on the settlement screen: in part, leaving the rest on it
// and the sale finishing by itself; in whole; every number that can't be
// spent meeting the same panel; the discount staying when the operator goes
// back to the sale; and two tills spending the same voucher.
#include "tests/screens/frm_cobrar_vales_prueba.hpp"

namespace tpv {
namespace {

using Esperadas = std::vector<std::string>;

class CobroVale : public prueba::CobroTest {
protected:
    void SetUp() override {
        CobroTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({"insert into vales_descuento (num_factura,importe,descuento,desde,hasta,impMinProxCompra,estado) "
                  "values (40,0,10,#11/15/2026#,#12/15/2026#,0,0)",
                  "insert into vales_descuento (num_factura,importe,descuento,desde,hasta,impMinProxCompra,estado) "
                  "values (41,80,50,#11/01/2026#,#01/01/1900#,25,0)",
                  "insert into vales_descuento (num_factura,importe,descuento,desde,hasta,impMinProxCompra,estado) "
                  "values (42,0,10,#11/01/2026#,#12/15/2026#,0,-1)",
                  "insert into vales_descuento (num_factura,importe,descuento,desde,hasta,impMinProxCompra,estado) "
                  "values (43,0,10,#10/01/2026#,#11/14/2026#,0,0)",
                  "insert into vales_descuento (num_factura,importe,descuento,desde,hasta,impMinProxCompra,estado) "
                  "values (44,0,10,#11/01/2026#,#12/15/2026#,41,0)"});
    }

    void AplicarVale(frmCobrar& f, const std::string& numero) {
        Clic(f.cmdapliVale);
        f.txtnumVale.SetText("");
        Teclear(f.txtnumVale, numero);
        Intro(f.txtnumVale);
    }

    std::string Vale(int numero) {
        const Esperadas f = Filas("select descuento,estado,num_factura_aplicado from vales_descuento "
                                  "where num_factura = " + std::to_string(numero));
        return f.empty() ? "" : f[0];
    }
};

TEST_P(CobroVale, DiezSobreCuarenta_UnCuartoDeCadaLineaYElValeAgotado) {
    frmCobrar& f = Cobro({"8410001"});
    ASSERT_TRUE(f.cmdapliVale.visible);
    Clic(f.cmdapliVale);
    EXPECT_TRUE(f.frPideVale.visible);
    EXPECT_TRUE(f.txtnumVale.TieneFoco());
    EXPECT_FALSE(f.cmdSalir.enabled);
    Teclear(f.txtnumVale, "40");
    Intro(f.txtnumVale);
    EXPECT_FALSE(f.frPideVale.visible);
    EXPECT_TRUE(f.cmdSalir.enabled);
    EXPECT_EQ(f.CajaText_Pago.Text(), "30,00");
    EXPECT_EQ(f.NumeroVale, 40);
    EXPECT_EQ(f.ImporteVale, 10);
    EXPECT_EQ(f.RestoVale, 0);
    const Grid& g = Unica<frmCaja>().FGCaja;
    EXPECT_EQ(g.TextMatrix(1, kColPorcentaje), "25");
    EXPECT_EQ(g.TextMatrix(1, kColImporte), "30,00");
    EXPECT_EQ(Filas("select precio,descuento,impuesto from detalle_factura_temp"), Esperadas{"30|10|5,21"});
    EXPECT_EQ(Filas("select total,descuento from cabecera_factura_temp"), Esperadas{"30|10"});

    Teclear(f.txt_Entrega, "30");
    Intro(f.txt_Entrega);
    EXPECT_FALSE(f.Cargada());
    EXPECT_EQ(Filas("select numero,total,pago from cabecera_factura"), Esperadas{"100|30|1"});
    EXPECT_EQ(Vale(40), "0|-1|100");
    EXPECT_TRUE(tickets_->Documents().empty());  // nothing left to print again
}

// Worth more than the sale: all of it is paid, the sale closes by itself
// with the first method, and the rest stays on the voucher with a new slip.
TEST_P(CobroVale, CincuentaSobreCuarenta_LaVentaTerminaSolaYQuedaElResto) {
    frmCobrar& f = Cobro({"8410001"});
    AplicarVale(f, "41");
    EXPECT_FALSE(f.Cargada());
    EXPECT_TRUE(Unica<frmCaja>().VentaCobrada);
    EXPECT_EQ(Filas("select numero,total,pago from cabecera_factura"), Esperadas{"100|0|1"});
    EXPECT_EQ(Filas("select precio,descuento,impuesto from detalle_factura"), Esperadas{"0|40|0"});
    EXPECT_EQ(Vale(41), "10|0|100");
    EXPECT_EQ(Filas("select desde,hasta,impMinProxCompra from vales_descuento where num_factura = 41"),
              Esperadas{"01/11/2026|01/01/1900|25"});
    ASSERT_EQ(tickets_->Documents().size(), 1u);
    EXPECT_TRUE(EnPapel(0, "*         10,00        *"));
    EXPECT_TRUE(EnPapel(0, "Codigo: 41"));
    EXPECT_TRUE(EnPapel(0, "compras superiores a 25,00"));
    EXPECT_TRUE(EnPapel(0, "sera de caracter indefinido."));
}

// Used up, expired, below its minimum, no such voucher, not a number: the
// one panel, with no word of why, and the sale untouched.
TEST_P(CobroVale, NumerosQueNoSirven_ElMismoPanelYLaVentaIgual) {
    frmCobrar& f = Cobro({"8410001"});
    for (const char* numero : {"42", "43", "44", "45", "", "4,5", "4a"}) {
        SCOPED_TRACE(numero);
        f.frNoExisteVale.visible = false;
        AplicarVale(f, numero);
        EXPECT_TRUE(f.frPideVale.visible);
        EXPECT_TRUE(f.frNoExisteVale.visible);
        EXPECT_TRUE(f.txtnumVale.TieneFoco());
        EXPECT_FALSE(f.cmdSalir.enabled);
        EXPECT_EQ(f.NumeroVale, -1);
        EXPECT_EQ(f.CajaText_Pago.Text(), "40,00");
    }
    EXPECT_EQ(f.lblNoExisteVale.caption,
              "El numero introducido ya ha sido utilizado o no pertenece a ningun vale en vigor compruebe la fecha de "
              "caducidad");
    EXPECT_EQ(f.txtnumVale.Text(), "4");  // letters never get in
    EXPECT_TRUE(Avisos().empty());
    Clic(f.cmdCancelaVale);
    EXPECT_FALSE(f.frPideVale.visible);
    EXPECT_TRUE(f.cmdSalir.enabled);
    EXPECT_TRUE(f.cmd_FinVenta.enabled);
    EXPECT_EQ(Filas("select precio,descuento from detalle_factura_temp"), Esperadas{"40|0"});
}

// The voucher's minimum and its share are measured on the whole part of the
// total: 3,00 on a sale of 52,10 counts as 3 of 52.
TEST_P(CobroVale, ElTotalSinCentimos_MideMinimoYPorcentaje) {
    Ejecutar({"delete * from vales_descuento where num_factura <> 40",
              "update vales_descuento set descuento = 3, impMinProxCompra = 52.1 where num_factura = 40"});
    EXPECT_FALSE(Cobro({"8410001", "8410002"}).cmdapliVale.visible);
    Ejecutar({"update vales_descuento set impMinProxCompra = 52 where num_factura = 40"});
    frmCobrar& f = Cobro({"8410001", "8410002"});
    ASSERT_TRUE(f.cmdapliVale.visible);
    AplicarVale(f, "40");
    EXPECT_EQ(f.NumeroVale, 40);
    // 40 - 40 * 3/52 = 37,69 and 12,10 - 12,10 * 3/52 = 11,40.
    EXPECT_EQ(f.CajaText_Pago.Text(), "49,09");
}

// Going back to the sale keeps the discount in the open sale, and the
// voucher is not spent.
TEST_P(CobroVale, VolverALaVenta_ElDescuentoQuedaYElValeNoSeGasta) {
    frmCobrar& f = Cobro({"8410001"});
    AplicarVale(f, "40");
    Clic(f.cmdSalir);
    EXPECT_FALSE(Unica<frmCaja>().VentaCobrada);
    EXPECT_EQ(Filas("select precio,descuento from detalle_factura_temp"), Esperadas{"30|10"});
    EXPECT_EQ(Vale(40), "10|0|");
}

// Another till spent the voucher between its application here and the
// finish: nothing of it changes, and this sale keeps its discount.
TEST_P(CobroVale, DosCajas_LaSegundaNoCambiaElValeYConservaElDescuento) {
    frmCobrar& f = Cobro({"8410001"});
    AplicarVale(f, "40");
    Ejecutar({"update vales_descuento set descuento = 0, estado = -1, num_factura_aplicado = 77 "
              "where num_factura = 40"});
    Teclear(f.txt_Entrega, "30");
    Intro(f.txt_Entrega);
    EXPECT_FALSE(f.Cargada());
    EXPECT_EQ(Filas("select total from cabecera_factura"), Esperadas{"30"});
    EXPECT_EQ(Filas("select descuento,estado from vales_descuento where num_factura = 40"), Esperadas{"0|-1"});
}

TPV_EN_CADA_MOTOR(CobroVale);

}  // namespace
}  // namespace tpv
