// Discounts on the whole sale from the till: by amount and by percentage,
// with and without tax in the prices, and the percentage entry's cap.
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class CajaDescuentos : public prueba::CajaTest {
protected:
    // Two lines of 10 each (a product at 10 and two of one at 5), both at 21 %.
    frmCaja& VentaDeVeinte() {
        Articulo(5, "8410001", "Colonia", "10");
        Articulo(6, "8410002", "Jabon", "5");
        frmCaja& c = Abrir();
        Escanear("8410001");
        Escanear("8410002");
        Escanear("8410002");
        return c;
    }
    void Descuento(frmCaja& c, CommandButton& boton, const std::string& valor) {
        Clic(boton);
        Teclear(c.txtImporte, valor);
        Intro(c.txtImporte);
    }
    double Campo(const std::string& campo, int codigo) {
        return CDbl(Valor("select " + campo + " from detalle_factura_temp where codigo = " + std::to_string(codigo)));
    }
    double Cabecera(const std::string& campo) { return CDbl(Valor("select " + campo + " from cabecera_factura_temp")); }
};

TEST_P(CajaDescuentos, PorImporteYPorcentaje_ConImpuestoIncluido) {
    struct Caso {
        const char* que;
        bool porImporte;
        const char* valor;
        const char* col5;      // the percentage on every line
        const char* col10;     // each line's new amount
        const char* col16;     // each line's discount
        double impuesto;       // each line's tax
        const char* total;     // CajaText_Pago
        double descuento;      // the header's
    } casos[] = {
        {"importe 5 de 20 es el 25 %", true, "5", "25,00", "7,50", "2,5", 1.30, "15,00", 5},
        {"importe igual a la venta", true, "20", "100,00", "0,00", "10", 0, "0,00", 20},
        {"importe con centimos", true, "3,3", "16,50", "8,35", "1,65", 1.45, "16,70", 3.3},
        {"porcentaje", false, "10", "10,00", "9,00", "1", 1.56, "18,00", 2},
        // The entry takes three characters: a decimal fits only under 10.
        {"porcentaje con decimales", false, "7,5", "7,50", "9,25", "0,75", 1.61, "18,50", 1.5},
        {"porcentaje cortado", false, "12,5", "12,00", "8,80", "1,2", 1.53, "17,60", 2.4},
    };
    for (const Caso& k : casos) {
        SCOPED_TRACE(k.que);
        lineas.clear();
        Ejecutar({"delete from detalle_factura_temp", "delete from cabecera_factura_temp", "delete from productos"});
        frmCaja& c = VentaDeVeinte();
        ASSERT_TRUE(c.cmd_DescImporte.visible);
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
        EXPECT_DOUBLE_EQ(Campo("unidades", 6), 2);
        EXPECT_EQ(c.CajaText_Pago.Text(), k.total);
        EXPECT_DOUBLE_EQ(Cabecera("total"), CDbl(Value(k.total)));
        EXPECT_DOUBLE_EQ(Cabecera("descuento"), k.descuento);
        EXPECT_DOUBLE_EQ(Cabecera("impuesto"), 2 * k.impuesto);
        EXPECT_EQ(CLng(Valor("select count(*) from detalle_factura_temp")), 2);
        EXPECT_TRUE(Avisos().empty());
        c.Unload();
    }
}

// Without tax in the prices the net unit price is reduced and the amount
// and its tax rebuilt from it; the amount is taken on the sale's base.
TEST_P(CajaDescuentos, SinImpuestoIncluido_RebajaElPrecioNeto) {
    sesion().opciones.iva = false;
    frmCaja& c = VentaDeVeinte();
    EXPECT_EQ(c.CajaText_Pago.Text(), "24,20");
    Descuento(c, c.cmd_DescImporte, "5");  // 25 % of the base of 20
    EXPECT_EQ(c.FGCaja.TextMatrix(1, 12), "7,50");
    EXPECT_EQ(c.FGCaja.TextMatrix(1, 10), "9,08");  // 7,50 + 1,58 of tax
    EXPECT_EQ(c.FGCaja.TextMatrix(1, 16), "2,5");
    EXPECT_EQ(c.FGCaja.TextMatrix(2, 12), "3,75");
    EXPECT_EQ(c.FGCaja.TextMatrix(2, 10), "9,08");  // 2 * 3,75 + 1,58
    EXPECT_EQ(c.FGCaja.TextMatrix(2, 16), "1,25");  // the discount of one unit
    EXPECT_DOUBLE_EQ(Campo("precio_unit", 6), 3.75);
    EXPECT_DOUBLE_EQ(Campo("precio", 6), 9.08);
    EXPECT_DOUBLE_EQ(Campo("impuesto", 6), 1.58);
    EXPECT_EQ(c.CajaText_Pago.Text(), "18,16");
    EXPECT_DOUBLE_EQ(Cabecera("total"), 18.16);
    // Over the base, though under the total with tax: refused.
    Clic(c.cmdCancelar);
    Descuento(c, c.cmd_DescImporte, "18");
    EXPECT_EQ(Avisos().size(), 1u);
}

TEST_P(CajaDescuentos, Entrada_TopeDelPorcentajeYCancelar) {
    frmCaja& c = VentaDeVeinte();
    Clic(c.cmd_DescPorcentaje);
    EXPECT_TRUE(c.frDescuentoImporte.visible);
    EXPECT_EQ(c.txtImporte.maxLength, 3);
    EXPECT_EQ(c.ActiveControl(), &c.txtImporte);
    Teclear(c.txtImporte, "150");
    EXPECT_EQ(c.txtImporte.Text(), "15");
    EXPECT_EQ(c.txtImporte.selStart, 2);
    Teclear(c.txtImporte, "0");
    EXPECT_EQ(c.txtImporte.Text(), "15");
    c.txtImporte.SetText("10");
    c.txtImporte.selStart = 2;
    Teclear(c.txtImporte, "a0");
    EXPECT_EQ(c.txtImporte.Text(), "100");
    Clic(c.cmdCancelar);
    EXPECT_EQ(c.ActiveControl(), &c.txtcod);
    EXPECT_EQ(c.FGCaja.TextMatrix(1, 5), "0");

    // By amount there's no cap; an empty entry applies nothing.
    Clic(c.cmd_DescImporte);
    EXPECT_EQ(c.txtImporte.maxLength, 0);
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

TPV_EN_CADA_MOTOR(CajaDescuentos);

}  // namespace
}  // namespace tpv
