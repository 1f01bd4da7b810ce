// Discounts on the whole sale, from the till and from the settlement
// screen: by amount and by percentage, with and without tax in the prices,
// the entry's cap, and the closing of a discounted sale.
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class Descuentos : public prueba::CobroTest {
protected:
    void SetUp() override {
        CobroTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Articulo(5, "8410001", "Colonia", "10");
        Articulo(6, "8410002", "Jabon", "5");
    }

    // Two lines of 10 each (a product at 10 and two of one at 5), both at 21 %.
    frmCaja& VentaDeVeinte() {
        Unica<frmCobrar>().Unload();
        Unica<frmCaja>().Unload();
        Ejecutar({"delete from detalle_factura_temp", "delete from cabecera_factura_temp"});
        frmCaja& c = Abrir();
        for (const char* codigo : {"8410001", "8410002", "8410002"}) Escanear(codigo);
        return c;
    }
    frmCobrar& CobroDeVeinte() {
        VentaDeVeinte();
        frmCobrar& f = Unica<frmCobrar>();
        anfitrion.Accion([&] { f.Show(); });
        return f;
    }

    template <class Pantalla>
    void Descuento(Pantalla& p, CommandButton& boton, const std::string& valor) {
        Clic(boton);
        Teclear(p.txtImporte, valor);
        Intro(p.txtImporte);
    }
    double Campo(const std::string& campo, int codigo) {
        return CDbl(Valor("select " + campo + " from detalle_factura_temp where codigo = " + std::to_string(codigo)));
    }
    double Cabecera(const std::string& campo) { return CDbl(Valor("select " + campo + " from cabecera_factura_temp")); }
};

TEST_P(Descuentos, Caja_PorImporteYPorcentaje_ConImpuestoIncluido) {
    struct Caso {
        const char* que;
        bool porImporte;
        const char* valor;
        const char* col5;   // the percentage on every line
        const char* col10;  // each line's new amount
        const char* col16;  // each line's discount
        double impuesto;    // each line's tax
        const char* total;  // CajaText_Pago
        double descuento;   // the header's
    } casos[] = {
        {"importe igual a la venta", true, "20", "100,00", "0,00", "10", 0, "0,00", 20},
        {"importe con centimos", true, "3,3", "16,50", "8,35", "1,65", 1.45, "16,70", 3.3},
        // The entry takes three characters: a decimal fits only under 10.
        {"porcentaje con decimales", false, "7,5", "7,50", "9,25", "0,75", 1.61, "18,50", 1.5},
        {"porcentaje cortado", false, "12,5", "12,00", "8,80", "1,2", 1.53, "17,60", 2.4},
    };
    for (const Caso& k : casos) {
        SCOPED_TRACE(k.que);
        frmCaja& c = VentaDeVeinte();
        Descuento(c, k.porImporte ? c.cmd_DescImporte : c.cmd_DescPorcentaje, k.valor);
        EXPECT_EQ(c.ModoDescuento, k.porImporte ? 0 : 1);
        for (long fila : {1L, 2L}) {
            EXPECT_EQ(c.FGCaja.TextMatrix(fila, 5), k.col5);
            EXPECT_EQ(c.FGCaja.TextMatrix(fila, 10), k.col10);
            EXPECT_EQ(c.FGCaja.TextMatrix(fila, 16), k.col16);
        }
        for (int codigo : {5, 6}) {
            EXPECT_DOUBLE_EQ(Campo("precio", codigo), CDbl(Value(k.col10)));
            EXPECT_DOUBLE_EQ(Campo("descuento", codigo), CDbl(Value(k.col16)));
            EXPECT_DOUBLE_EQ(Campo("impuesto", codigo), k.impuesto);
        }
        EXPECT_DOUBLE_EQ(Campo("precio_unit", 6), 5);
        EXPECT_EQ(c.CajaText_Pago.Text(), k.total);
        EXPECT_DOUBLE_EQ(Cabecera("total"), CDbl(Value(k.total)));
        EXPECT_DOUBLE_EQ(Cabecera("descuento"), k.descuento);
        EXPECT_DOUBLE_EQ(Cabecera("impuesto"), 2 * k.impuesto);
    }
    EXPECT_TRUE(Avisos().empty());
}

// Without tax in the prices the net unit price is reduced and the amount
// and its tax rebuilt from it; the amount is taken on the sale's base.
TEST_P(Descuentos, Caja_SinImpuestoIncluido_RebajaElPrecioNeto) {
    sesion().opciones.iva = false;
    frmCaja& c = VentaDeVeinte();
    EXPECT_EQ(c.CajaText_Pago.Text(), "24,20");
    Descuento(c, c.cmd_DescImporte, "5");  // 25 % of the base of 20
    EXPECT_EQ(c.FGCaja.TextMatrix(1, 12), "7,50");
    EXPECT_EQ(c.FGCaja.TextMatrix(1, 10), "9,08");  // 7,50 + 1,58 of tax
    EXPECT_EQ(c.FGCaja.TextMatrix(2, 12), "3,75");
    EXPECT_EQ(c.FGCaja.TextMatrix(2, 10), "9,08");  // 2 * 3,75 + 1,58
    EXPECT_EQ(c.FGCaja.TextMatrix(2, 16), "1,25");  // the discount of one unit
    EXPECT_DOUBLE_EQ(Campo("precio_unit", 6), 3.75);
    EXPECT_EQ(c.CajaText_Pago.Text(), "18,16");
    EXPECT_DOUBLE_EQ(Cabecera("total"), 18.16);
    // Over the base, though under the total with tax: refused.
    Clic(c.cmdCancelar);
    Descuento(c, c.cmd_DescImporte, "18");
    EXPECT_EQ(Avisos().size(), 1u);
}

TEST_P(Descuentos, Caja_EntradaLetrasCancelarVaciaYSinVenta) {
    frmCaja& c = VentaDeVeinte();
    Clic(c.cmd_DescPorcentaje);
    EXPECT_EQ(c.ActiveControl(), &c.txtImporte);
    Teclear(c.txtImporte, "150");
    EXPECT_EQ(c.txtImporte.selStart, 2);
    c.txtImporte.SetText("10");
    c.txtImporte.selStart = 2;
    Teclear(c.txtImporte, "a0");
    EXPECT_EQ(c.txtImporte.Text(), "100");
    Clic(c.cmdCancelar);
    EXPECT_EQ(c.ActiveControl(), &c.txtcod);
    EXPECT_EQ(c.FGCaja.TextMatrix(1, 5), "0");

    // By amount there's no cap; an empty entry applies nothing.
    Clic(c.cmd_DescImporte);
    Teclear(c.txtImporte, "1500");
    EXPECT_EQ(c.txtImporte.Text(), "1500");
    c.txtImporte.SetText("");
    Intro(c.txtImporte);
    EXPECT_EQ(c.CajaText_Pago.Text(), "20,00");
    EXPECT_TRUE(Avisos().empty());

    // Without a sale the buttons are away and do nothing.
    c.cmdNuevaVenta_Click();
    EXPECT_FALSE(c.cmd_DescImporte.visible);
    c.frDescuentoImporte.visible = false;
    c.cmd_DescImporte_Click();
    EXPECT_FALSE(c.frDescuentoImporte.visible);
}

TEST_P(Descuentos, Cobro_SeAplicaALaVentaDeLaCaja) {
    struct Caso {
        const char* que;
        bool iva;
        bool porImporte;
        const char* valor;
        const char* col10;  // each line's new amount on the till
        const char* pago;   // CajaText_Pago of the settlement screen
    } casos[] = {
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
        for (long fila : {1L, 2L}) EXPECT_EQ(Unica<frmCaja>().FGCaja.TextMatrix(fila, 10), k.col10);
        EXPECT_EQ(f.CajaText_Pago.Text(), k.pago);
        EXPECT_DOUBLE_EQ(Cabecera("total"), CDbl(Value(k.pago)));
        EXPECT_TRUE(f.frDescuentoImporte.visible);
    }
    EXPECT_TRUE(Avisos().empty());
}

// The amount is checked against what this screen has to collect, or against
// the base when the prices carry no tax.
TEST_P(Descuentos, Cobro_ImporteMayorQueLoQueSeCobra_AvisaYNoCambiaNada) {
    frmCobrar& f = CobroDeVeinte();
    Descuento(f, f.cmd_DescImporte, "20,01");
    ASSERT_EQ(Avisos().size(), 1u);
    EXPECT_EQ(Avisos()[0],
              "MENSAJE [Descuentos] No se pueden hacer descuentos por importe mayor al de la compra -> Aceptar");
    EXPECT_EQ(f.CajaText_Pago.Text(), "20,00");
    EXPECT_EQ(Unica<frmCaja>().FGCaja.TextMatrix(1, 10), "10");
    EXPECT_TRUE(Valor("select descuento from cabecera_factura_temp").IsNull());

    sesion().opciones.iva = false;
    frmCobrar& g = CobroDeVeinte();
    Descuento(g, g.cmd_DescImporte, "20,01");
    EXPECT_EQ(Avisos().size(), 2u);
    EXPECT_EQ(g.CajaText_Pago.Text(), "24,20");
}

TEST_P(Descuentos, Cobro_TopeCancelarVaciaYFilaVacia) {
    frmCobrar& f = CobroDeVeinte();
    Clic(f.cmd_DescPorcentaje);
    EXPECT_EQ(f.ActiveControl(), &f.txtImporte);
    Teclear(f.txtImporte, "150");
    EXPECT_EQ(f.txtImporte.Text(), "15");
    Clic(f.cmdCancelarDesc);
    EXPECT_FALSE(f.frDescuentoImporte.visible);
    EXPECT_EQ(f.txtImporte.Text(), "");
    EXPECT_EQ(f.ActiveControl(), &f.txt_Entrega);

    Clic(f.cmd_DescImporte);
    Intro(f.txtImporte);
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

// Leaving without closing keeps the discount; opened again, the screen
// collects the discounted sale and closes it so.
TEST_P(Descuentos, Cobro_SalidaYCierreConservanElDescuento) {
    frmCobrar& f = CobroDeVeinte();
    Descuento(f, f.cmd_DescImporte, "5");
    Clic(f.cmdCancelarDesc);
    Clic(f.cmdSalir);
    EXPECT_EQ(Unica<frmCaja>().CajaText_Pago.Text(), "15,00");
    EXPECT_DOUBLE_EQ(Cabecera("total"), 15);
    EXPECT_DOUBLE_EQ(Cabecera("descuento"), 5);

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

TPV_EN_CADA_MOTOR(Descuentos);

}  // namespace
}  // namespace tpv
