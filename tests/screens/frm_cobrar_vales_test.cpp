// A voucher spent on the settlement screen: every number that can't be
// spent meeting the same panel, the minimum measured on whole units, the
// discount staying when the operator goes back to the sale, and two tills
// spending the same voucher.
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

using Esperadas = std::vector<std::string>;

class CobroVale : public prueba::CobroTest {
protected:
    void SetUp() override {
        CobroTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Articulo(5, "8410001", "Colonia", "40");
        Articulo(6, "8410002", "Jabon", "12.1");
        // 40 in force, 42 used up, 43 expired yesterday, 44 for purchases over 41.
        for (const char* vale : {"40,0,10,#11/15/2026#,#12/15/2026#,0,0", "42,0,10,#11/01/2026#,#12/15/2026#,0,-1",
                                 "43,0,10,#10/01/2026#,#11/14/2026#,0,0", "44,0,10,#11/01/2026#,#12/15/2026#,41,0"})
            Ejecutar({std::string("insert into vales_descuento (num_factura,importe,descuento,desde,hasta,"
                                  "impMinProxCompra,estado) values (") + vale + ")"});
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

// The voucher's share is measured on the whole units of the total (10 of
// 10,80), but what is left afterwards counts with its cents: 0,54 still has
// to be paid, and only a rest of nothing finishes the sale by itself.
TEST_P(CobroVale, ValeQueCasiPaga_ElRestoConCentimosNoTermina) {
    const struct {
        const char* valor;
        const char* resto;
        bool terminada;
    } casos[] = {{"9.5", "0,54", false}, {"10", "0,00", true}};
    Articulo(7, "8410003", "Perfume", "10.8");
    for (const auto& c : casos) {
        SCOPED_TRACE(c.valor);
        Ejecutar({"delete * from vales_descuento", "delete * from cabecera_factura",
                  std::string("insert into vales_descuento (num_factura,importe,descuento,desde,hasta,"
                              "impMinProxCompra,estado) values (40,0,") +
                      c.valor + ",#01/01/2020#,#01/01/1900#,0,0)"});
        frmCobrar& f = Cobro({"8410003"}, "4");
        AplicarVale(f, "40");
        EXPECT_EQ(f.NumeroVale, 40);
        EXPECT_EQ(f.CajaText_Pago.Text(), c.resto);
        EXPECT_EQ(!f.Cargada(), c.terminada);
        EXPECT_EQ(Filas("select count(*) from cabecera_factura"), Esperadas{c.terminada ? "1" : "0"});
        EXPECT_EQ(Filas("select count(*) from cabecera_pago"), Esperadas{"0"});
    }
}

TPV_EN_CADA_MOTOR(CobroVale);

}  // namespace
}  // namespace tpv
