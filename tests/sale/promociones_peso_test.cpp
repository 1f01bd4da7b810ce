#include <gtest/gtest.h>

#include "core/servicios/colour_scheme.hpp"
#include "sale/peso.hpp"
#include "sale/promociones.hpp"
#include "tests/sale/venta_prueba.hpp"
#include "tests/support/mensajes_guionados.hpp"

namespace tpv {
namespace {

class Promociones : public prueba::VentaTest {
protected:
    void Promocion(int producto, int tipo, const std::string& descuento, int codRegalo, const std::string& precio,
                   const std::string& desde = "#11/15/2026#", const std::string& hasta = "#11/15/2026#") {
        Ejecutar({"insert into descuentos (codproducto,tipo,descuento,codregalo,precio,desde,hasta) values (" +
                  std::to_string(producto) + "," + std::to_string(tipo) + "," + descuento + "," +
                  std::to_string(codRegalo) + "," + precio + "," + desde + "," + hasta + ")"});
    }
    long Foco() { return CLng(ColourScheme().ColorFoco(sesion().Conexion, sesion().EsquemaColores)); }
    void FilaPintada(long fila, long color) {
        for (long c = 0; c < kColumnasVenta; ++c) EXPECT_EQ(FGCaja.CellBackColor(fila, c), color) << fila << "," << c;
    }
};

TEST_P(Promociones, BuscarPromocion_EnVigorSoloEntreSusFechas) {
    double dto = 9, precio = 9;
    std::int32_t regalo = 9;
    EXPECT_EQ(BuscarPromocion(1, dto, regalo, precio), -1);
    EXPECT_EQ(regalo, -1);
    Promocion(1, 1, "15", 0, "0", "#11/01/2026#", "#11/14/2026#");  // ended yesterday
    Promocion(2, 2, "0", 7, "4.5");
    Promocion(3, 3, "10", 0, "20");  // a voucher rule: its type and nothing more
    EXPECT_EQ(BuscarPromocion(1, dto, regalo, precio), -1);
    EXPECT_EQ(BuscarPromocion(2, dto, regalo, precio), 2);
    EXPECT_EQ(regalo, 7);
    EXPECT_EQ(precio, 4.5);
    EXPECT_EQ(dto, 0);
    EXPECT_EQ(BuscarPromocion(3, dto, regalo, precio), 3);
    EXPECT_EQ(regalo, -1);
    Promocion(-1, 1, "12", 0, "0", "#11/15/2026#", "#12/31/2026#");  // every product
    EXPECT_EQ(BuscarPromocion(1, dto, regalo, precio), 1);
    EXPECT_EQ(dto, 12);
}

TEST_P(Promociones, Porcentaje_SobreTodasLasUnidadesDeLaLineaYDescuentoEnCabecera) {
    Producto(1, "Crema", "3.33", "21");
    Promocion(1, 1, "15", 0, "0");
    Abrir();
    Anadir(1, 1);
    EXPECT_EQ(Celda(1, kColPorcentaje), "15");
    EXPECT_EQ(FGCaja.CellBackColor(1, kColPorcentaje), Foco());
    EXPECT_EQ(FGCaja.CellBackColor(1, kColNombre), 0);
    EXPECT_EQ(Celda(1, kColPvp), "3,33");
    EXPECT_EQ(Celda(1, kColImporte), "2,83");               // 0,85 * 3,33 = 2,8305
    EXPECT_EQ(Celda(1, kColDescuento), CStr(3.33 - 2.83));  // not rounded in the grid
    EXPECT_EQ(NumLinea("descuento", 1), 0.5);               // rounded to 3 decimals when stored
    EXPECT_DOUBLE_EQ(NumLinea("impuesto", 1), 0.49);        // from the line's amount
    CabeceraCuadra();
    // A second item joins the line, and the percentage is laid on all units afresh.
    Anadir(1, 2);
    EXPECT_EQ(Celda(1, kColUnidades), "3");
    EXPECT_EQ(Celda(1, kColImporte), "8,49");  // 0,85 * 9,99 = 8,4915
    EXPECT_EQ(NumLinea("descuento", 1), 1.5);
    CabeceraCuadra();
    EXPECT_DOUBLE_EQ(CDbl(Valor("select descuento from cabecera_factura_temp where numero = 7")), 1.5);
    EXPECT_EQ(CajaText_Pago.Text(), "8,49");
}

TEST_P(Promociones, PrecioFijo_ConRegaloYSinSegundoImpuestoEnElPrecio) {
    prueba::MensajesGuionados cajas;
    sesion().opciones.iva = false;
    sesion().configuracionregional.segundoimpuesto = true;
    Producto(1, "Perfume", "10", "21", "5");
    Producto(99, "Muestra", "1", "21", "5");
    Promocion(1, 2, "0", 99, "5");
    Abrir();
    Anadir(1, 1);
    // The price charged is worked out from the promotion's price alone: the
    // second tax is dropped from it, while the line keeps its amount.
    EXPECT_EQ(Celda(1, kColPvp), "6,05");
    EXPECT_EQ(Celda(1, kColImporte), "5");
    EXPECT_EQ(Celda(1, kColPrecio), "5");
    EXPECT_DOUBLE_EQ(NumLinea("impuesto", 1), 0.87);
    EXPECT_DOUBLE_EQ(NumLinea("impuesto_2", 1), 0.21);
    // The gift: a line of its own, at no price, painted.
    EXPECT_EQ(Celda(2, kColNombre), "  REGALO Muestra");
    EXPECT_EQ(Celda(2, kColUnidades), "1");
    EXPECT_EQ(Celda(2, kColImporte), "0");
    EXPECT_EQ(Celda(2, kColCodigo), "99");
    EXPECT_EQ(Celda(2, kColImpuesto2), "5");
    FilaPintada(2, Foco());
    EXPECT_EQ(FGCaja.Row(), 2);
    EXPECT_EQ(CStr(Linea("producto", 2)), "Muestra");
    EXPECT_EQ(NumLinea("precio", 2), 0);
    EXPECT_EQ(NumLinea("descuento", 2), 0);
    EXPECT_EQ(NumLinea("unidades", 2), 1);
    EXPECT_EQ(NumLinea("impuesto_2", 2), 0);
    CabeceraCuadra();
    EXPECT_EQ(txtUltProd.Text(), "Perfume");

    // One at a time: the item joins its line, each brings a gift line.
    Anadir(1, 2);
    EXPECT_EQ(Celda(1, kColUnidades), "3");
    EXPECT_EQ(Celda(1, kColImporte), "15");
    EXPECT_EQ(Celda(3, kColNombre), "  REGALO Muestra");
    EXPECT_EQ(Celda(3, kColUnidades), "1");
    EXPECT_EQ(Lineas(), 3);
    CabeceraCuadra();

    // In refund mode the gift keeps its units positive.
    controles.ModoAbono = true;
    Anadir(1, 1);
    EXPECT_EQ(Celda(1, kColUnidades), "2");
    EXPECT_EQ(NumLinea("unidades", 4), 1);
    CabeceraCuadra();
    EXPECT_TRUE(cajas.mostradas.empty());
}

TEST_P(Promociones, RegaloInexistente_SeVendeAlPrecioSinRegaloNiAviso) {
    prueba::MensajesGuionados cajas;
    Producto(1, "Perfume", "10", "21");
    Producto(99, "Muestra", "1", "21");
    Promocion(1, 2, "0", 555, "4");
    Abrir();
    Anadir(1, 2);
    EXPECT_EQ(Celda(1, kColImporte), "8");
    EXPECT_EQ(FGCaja.Rows(), 2);
    EXPECT_EQ(Lineas(), 1);
    EXPECT_TRUE(cajas.mostradas.empty());
    // The gift's own code sold later joins a gift line, were there one.
    Ejecutar({"update descuentos set codregalo = 99"});
    Anadir(1, 1);
    ASSERT_EQ(Celda(2, kColNombre), "  REGALO Muestra");
    Anadir(99, 1);
    EXPECT_EQ(Celda(2, kColNombre), "Muestra");
    EXPECT_EQ(Celda(2, kColUnidades), "2");
    EXPECT_EQ(Celda(2, kColImporte), "1");
    EXPECT_EQ(NumLinea("precio", 2), 1);
    CabeceraCuadra();
}

TEST_P(Promociones, Peso_CadaPesadaUnaLineaConSuImporte) {
    struct Caso {
        const char* que;
        bool abono, iva, segundo;
        double peso, importe;
        const char *col1, *col9, *col10;
        double impuesto, impuesto2, importeDespues;
    } casos[] = {
        {"venta", false, true, false, 0.75, 3, "4", "0,75", "3", 0.27, 0, 3},
        {"abono", true, true, false, 0.75, 3, "-4", "-0,75", "-3", -0.27, 0, -3},
        {"sin peso", false, true, false, 0, 2, "0", "0", "2", 0.18, 0, 2},
        {"segundo impuesto sobre el pvp", false, false, true, 1, 3, "3", "1", "3,43", 0.3, 0.13, 3},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.que);
        Ejecutar({"delete from productos"});
        Producto(8, "Queso", "99", "10", "4");
        Promocion(8, 1, "50", 0, "0");  // asked for, and left
        sesion().opciones.iva = c.iva;
        sesion().configuracionregional.segundoimpuesto = c.segundo;
        controles.ModoAbono = c.abono;
        FGCaja = NuevaGridVenta();
        txtTArticulos.SetText("");
        Abrir();
        double importe = c.importe;
        AnadirItemPeso(numero, 8, c.peso, importe, "", "P", "3", "Juan Perez", 0, controles);
        EXPECT_EQ(importe, c.importeDespues);
        EXPECT_EQ(Celda(1, kColPvp), c.col1);
        EXPECT_EQ(Celda(1, kColPrecio), c.col1);
        EXPECT_EQ(Celda(1, kColUnidades), c.col9);
        EXPECT_EQ(Celda(1, kColImporte), c.col10);
        EXPECT_EQ(Celda(1, kColPorcentaje), "0");
        EXPECT_EQ(Celda(1, kColImpuesto2), "4");
        EXPECT_EQ(NumLinea("precio_unit", 1), CDbl(c.col1));
        EXPECT_EQ(NumLinea("precio", 1), CDbl(c.col10));
        EXPECT_DOUBLE_EQ(NumLinea("impuesto", 1), c.impuesto);
        EXPECT_DOUBLE_EQ(NumLinea("impuesto_2", 1), c.impuesto2);
        EXPECT_EQ(txtUltCant.Text(), CStr(Round(c.peso, 1)));
        EXPECT_EQ(txtTArticulos.Text(), "1");
        CabeceraCuadra();
    }
    // Two weighings of one product are two lines, lines joining or not;
    // each counts as one article, and the weight shows with one decimal.
    controles.ModoAbono = false;
    sesion().opciones.iva = true;
    sesion().configuracionregional.segundoimpuesto = false;
    FGCaja = NuevaGridVenta();
    txtTArticulos.SetText("");
    Abrir();
    for (double peso : {0.75, 1.25}) {
        double importe = 2;
        AnadirItemPeso(numero, 8, peso, importe, "", "P", "3", "Juan Perez", 0, controles);
    }
    EXPECT_EQ(Lineas(), 2);
    EXPECT_EQ(Celda(2, kColUnidades), "1,25");
    EXPECT_EQ(txtUltCant.Text(), "1,2");
    EXPECT_EQ(txtTArticulos.Text(), "2");
    CabeceraCuadra();
    EXPECT_EQ(CajaText_Pago.Text(), "4,00");
}

TPV_EN_CADA_MOTOR(Promociones);

}  // namespace
}  // namespace tpv
