// A discount on the whole sale given at the settlement screen: it lands on
// the till's lines and the open sale, the amount to pay follows, the closing
// takes the discounted sale, and leaving without closing keeps it.
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class CobrarDescuentos : public prueba::CobroTest {
protected:
    void SetUp() override {
        CobroTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Articulo(5, "8410001", "Colonia", "10");
        Articulo(6, "8410002", "Jabon", "5");
    }

    // A sale of 20 on the till (10, and two of 5), and the settlement screen over it.
    frmCobrar& CobroDeVeinte() {
        Unica<frmCobrar>().Unload();
        Unica<frmCaja>().Unload();
        Ejecutar({"delete from detalle_factura_temp", "delete from cabecera_factura_temp"});
        return Cobro({"8410001", "8410002", "8410002"});
    }

    void Descuento(frmCobrar& f, CommandButton& boton, const std::string& valor) {
        Clic(boton);
        Teclear(f.txtImporte, valor);
        Intro(f.txtImporte);
    }

    double Cabecera(const std::string& campo) { return CDbl(Valor("select " + campo + " from cabecera_factura_temp")); }
};

TEST_P(CobrarDescuentos, SeAplicaALaVentaDeLaCaja_PorImportePorcentajeYSinImpuesto) {
    struct Caso {
        const char* que;
        bool iva;
        bool porImporte;
        const char* valor;
        const char* col10;  // each line's new amount on the till
        const char* pago;   // CajaText_Pago of the settlement screen
    } casos[] = {
        {"importe 5 de 20", true, true, "5", "7,50", "15,00"},
        {"importe igual al total", true, true, "20", "0,00", "0,00"},
        {"porcentaje", true, false, "10", "9,00", "18,00"},
        // Without tax in the prices the amount is a part of the base (20 of 24,20).
        {"importe sin impuesto", false, true, "5", "9,08", "18,16"},
    };
    for (const Caso& k : casos) {
        SCOPED_TRACE(k.que);
        sesion().opciones.iva = k.iva;
        frmCobrar& f = CobroDeVeinte();
        Descuento(f, k.porImporte ? f.cmd_DescImporte : f.cmd_DescPorcentaje, k.valor);
        const frmCaja& c = Unica<frmCaja>();
        for (long fila : {1L, 2L}) EXPECT_EQ(c.FGCaja.TextMatrix(fila, 10), k.col10);
        EXPECT_EQ(f.CajaText_Pago.Text(), k.pago);
        EXPECT_DOUBLE_EQ(Cabecera("total"), CDbl(Value(k.pago)));
        EXPECT_TRUE(f.frDescuentoImporte.visible);
        EXPECT_TRUE(Avisos().empty());
    }
}

// The amount is checked against what this screen has to collect.
TEST_P(CobrarDescuentos, ImporteMayorQueLoQueSeCobra_AvisaYNoCambiaNada) {
    frmCobrar& f = CobroDeVeinte();
    Descuento(f, f.cmd_DescImporte, "20,01");
    ASSERT_EQ(Avisos().size(), 1u);
    EXPECT_EQ(Avisos()[0],
              "MENSAJE [Descuentos] No se pueden hacer descuentos por importe mayor al de la compra -> Aceptar");
    EXPECT_EQ(f.CajaText_Pago.Text(), "20,00");
    EXPECT_EQ(Unica<frmCaja>().FGCaja.TextMatrix(1, 10), "10");
    EXPECT_TRUE(Valor("select descuento from cabecera_factura_temp").IsNull());

    // Without tax in the prices: under the 24,20 to pay, but over the base of 20.
    sesion().opciones.iva = false;
    frmCobrar& g = CobroDeVeinte();
    Descuento(g, g.cmd_DescImporte, "20,01");
    EXPECT_EQ(Avisos().size(), 2u);
    EXPECT_EQ(g.CajaText_Pago.Text(), "24,20");
}

TEST_P(CobrarDescuentos, Panel_TopeDelPorcentajeCancelarYSinLineas) {
    frmCobrar& f = CobroDeVeinte();
    Clic(f.cmd_DescPorcentaje);
    EXPECT_TRUE(f.frDescuentoImporte.visible);
    EXPECT_EQ(f.ActiveControl(), &f.txtImporte);
    Teclear(f.txtImporte, "150");
    EXPECT_EQ(f.txtImporte.Text(), "15");
    EXPECT_EQ(f.txtImporte.selStart, 2);
    Clic(f.cmdCancelarDesc);
    EXPECT_FALSE(f.frDescuentoImporte.visible);
    EXPECT_EQ(f.txtImporte.Text(), "");
    EXPECT_EQ(f.ActiveControl(), &f.txt_Entrega);

    Clic(f.cmd_DescImporte);
    EXPECT_EQ(f.txtImporte.maxLength, 0);
    Teclear(f.txtImporte, "150");
    EXPECT_EQ(f.txtImporte.Text(), "150");
    f.txtImporte.SetText("");
    Intro(f.txtImporte);  // nothing typed: nothing applied
    EXPECT_EQ(f.CajaText_Pago.Text(), "20,00");
    Clic(f.cmdCancelarDesc);

    // With an empty row selected on the till the panel doesn't open.
    Grid& grid = Unica<frmCaja>().FGCaja;
    grid.SetRows(grid.Rows() + 1);
    grid.SetRow(grid.Rows() - 1);
    Clic(f.cmd_DescImporte);
    EXPECT_FALSE(f.frDescuentoImporte.visible);
    EXPECT_TRUE(Avisos().empty());
}

TEST_P(CobrarDescuentos, CierreYSalida_ConservanElDescuento) {
    frmCobrar& f = CobroDeVeinte();
    Descuento(f, f.cmd_DescImporte, "5");
    Clic(f.cmdCancelarDesc);
    Clic(f.cmdSalir);
    EXPECT_FALSE(f.Cargada());
    EXPECT_EQ(Unica<frmCaja>().CajaText_Pago.Text(), "15,00");
    EXPECT_DOUBLE_EQ(Cabecera("total"), 15);
    EXPECT_DOUBLE_EQ(Cabecera("descuento"), 5);

    // Opened again, the screen collects the discounted sale and closes it so.
    const std::string venta = Unica<frmCaja>().lblNumVenta.caption;
    anfitrion.Accion([&] { f.Show(); });
    EXPECT_EQ(f.CajaText_Pago.Text(), "15,00");
    Descuento(f, f.cmd_DescPorcentaje, "10");
    EXPECT_EQ(f.CajaText_Pago.Text(), "13,50");
    Clic(f.cmdCancelarDesc);
    Intro(f.txt_Entrega);  // no customer, nothing typed: exact cash payment
    EXPECT_FALSE(f.Cargada());
    EXPECT_DOUBLE_EQ(CDbl(Valor("select total from cabecera_factura")), 13.5);
    EXPECT_DOUBLE_EQ(CDbl(Valor("select descuento from cabecera_factura")), 6.5);
    EXPECT_DOUBLE_EQ(CDbl(Valor("select sum(precio) from detalle_factura")), 13.5);
    EXPECT_EQ(CLng(Valor("select count(*) from cabecera_factura_temp where numero = " + venta)), 0);
}

TPV_EN_CADA_MOTOR(CobrarDescuentos);

}  // namespace
}  // namespace tpv
