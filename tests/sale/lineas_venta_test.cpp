#include "sale/lineas_venta.hpp"

#include <gtest/gtest.h>

#include "core/runtime/error.hpp"
#include "sale/descuento_venta.hpp"
#include "sale/linea_editada.hpp"
#include "tests/core/runtime/error_esperado.hpp"
#include "tests/sale/venta_prueba.hpp"

namespace tpv {
namespace {

using prueba::VentaTest;

class LineasVenta : public VentaTest {};

TEST_P(LineasVenta, AbrirVenta_CabeceraConNumeroDelContadorYEtiqueta) {
    sesion().opciones.iva = false;
    EXPECT_EQ(AbrirVenta(lblNumVenta, 12, "Juan Perez", "3"), 7);
    EXPECT_EQ(lblNumVenta.caption, "7");
    EXPECT_EQ(CLng(Valor("select daton from relaciones_fijas where indice = 'Venta'")), 8);
    Recordset rs;
    rs.Open("select cliente, empleado, codigo_empleado, impuestoincluido, terminal, fecha, hora from "
            "cabecera_factura_temp where numero = 7",
            sesion().Conexion);
    ASSERT_FALSE(rs.Eof());
    std::string fila;
    for (int i = 0; i < rs.FieldCount(); ++i) fila += CStr(rs.Fields(i).Value()) + "|";
    EXPECT_EQ(fila, "12|Juan Perez|3|0|CAJA1|15/11/2026|10:30:00|");
}

// Price, tax and second tax of one item, at every rounding point: the grid's
// cells as text and the line that reaches the table.
TEST_P(LineasVenta, Aritmetica_CeldasYLineaEnCadaPuntoDeRedondeo) {
    struct Caso {
        const char* que;
        bool iva;
        int decimales;
        bool segundo;
        const char *precio, *tipoIva, *imp2;
        double cantidad;
        bool abono;
        const char* tarifa;  // price of the tariff in force; "otro": a tariff without this product
        const char *col1, *col9, *col10, *col12, *col13;
        double precioUnit, impuesto, tipo2, impuesto2;
    } casos[] = {
        {"precio con impuesto", true, 2, false, "10", "21", "null", 3, false, nullptr, "10", "3", "30", "10", "0", 10,
         5.21, 0, 0},  // the tax of 30, not 3 times 1,74
        {"precio sin impuesto", false, 2, false, "10", "21", "null", 3, false, nullptr, "12,1", "3", "36,3", "10", "0",
         10, 6.3, 0, 0},
        {"medios del precio y del importe", true, 2, false, "0.125", "21", "null", 1.5, false, nullptr, "0,13", "1,5",
         "0,2", "0,13", "0", 0.13, 0.03, 0, 0},
        {"tres decimales", true, 3, false, "1.0005", "10", "null", 2, false, nullptr, "1,001", "2", "2,002", "1,001",
         "0", 1.001, 0.182, 0, 0},
        {"medio en el impuesto de la linea", false, 2, false, "2.5", "21", "null", 1, false, nullptr, "3,03", "1",
         "3,03", "2,5", "0", 2.5, 0.53, 0, 0},
        {"segundo impuesto sin iva", false, 2, true, "10", "21", "5.2", 2, false, nullptr, "12,62", "2", "25,24", "10",
         "5,2", 10, 4.38, 5.2, 1.08},
        {"segundo impuesto con iva", true, 2, true, "10", "21", "5", 1, false, nullptr, "10,48", "1", "10,48", "10",
         "5", 10, 1.82, 5, 0.5},
        {"segundo impuesto nulo", true, 2, true, "10", "21", "null", 1, false, nullptr, "10", "1", "10", "10", "0", 10,
         1.74, 0, 0},
        {"segundo impuesto apagado", true, 2, false, "10", "21", "5", 1, false, nullptr, "10", "1", "10", "10", "5", 10,
         1.74, 0, 0},
        {"tarifa", true, 2, false, "10", "21", "null", 2, false, "8.555", "8,56", "2", "17,12", "8,56", "0", 8.56, 2.97,
         0, 0},
        {"tarifa sin el producto", true, 2, false, "10", "21", "null", 1, false, "otro", "10", "1", "10", "10", "0", 10,
         1.74, 0, 0},
        {"abono", true, 2, false, "10", "21", "null", 2, true, nullptr, "10", "-2", "-20", "10", "0", 10, -3.47, 0, 0},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.que);
        Ejecutar({"delete from productos", "delete from detalle_precio"});
        sesion().opciones.iva = c.iva;
        Decimales(c.decimales);
        sesion().configuracionregional.segundoimpuesto = c.segundo;
        Producto(5, "Colonia", c.precio, c.tipoIva, c.imp2);
        sesion().TarifaActual = c.tarifa ? 1 : -1;
        if (c.tarifa) {
            const bool otro = std::string(c.tarifa) == "otro";
            Ejecutar({"insert into detalle_precio (identificador,producto,precio) values (1," +
                      std::string(otro ? "6,1" : "5," + std::string(c.tarifa)) + ")"});
        }
        FGCaja = NuevaGridVenta();
        txtTArticulos.SetText("");
        controles.ModoAbono = c.abono;
        Abrir();
        Anadir(5, c.cantidad);

        EXPECT_EQ(Celda(1, kColPvp), c.col1);
        EXPECT_EQ(Celda(1, kColUnidades), c.col9);
        EXPECT_EQ(Celda(1, kColImporte), c.col10);
        EXPECT_EQ(Celda(1, kColPrecio), c.col12);
        EXPECT_EQ(Celda(1, kColImpuesto2), c.col13);
        EXPECT_EQ(Celda(1, kColTipoIva), c.tipoIva);

        EXPECT_EQ(Lineas(), 1);
        EXPECT_EQ(NumLinea("unidades", 1), CDbl(c.col9));
        EXPECT_EQ(NumLinea("precio", 1), CDbl(c.col10));
        EXPECT_DOUBLE_EQ(NumLinea("precio_unit", 1), c.precioUnit);
        EXPECT_DOUBLE_EQ(NumLinea("impuesto", 1), c.impuesto);
        EXPECT_DOUBLE_EQ(NumLinea("impuesto_2", 1), c.impuesto2);
        EXPECT_DOUBLE_EQ(NumLinea("tipoimpuesto_2", 1), c.tipo2);
        CabeceraCuadra();

        EXPECT_EQ(CajaText_Pago.Text(), FormatNumber(CDbl(c.col10), c.decimales));
        EXPECT_EQ(txtUltCant.Text(), CStr(c.cantidad));  // without the refund's sign
        EXPECT_EQ(txtTArticulos.Text(), CStr(c.cantidad));
    }
}

TEST_P(LineasVenta, LineaXProducto_UneLaMismaReferenciaOAbreUnaLineaPorItem) {
    Producto(1, "Jabon", "2.5", "21");
    Producto(2, "Esponja", "1", "21");
    Abrir();
    Anadir(1, 1);
    Anadir(2, 1);
    CabeceraCuadra();
    // Another employee joins the line and takes its employee cells.
    Anadir(1, 2, "P", "5", "Ana Ruiz");
    CabeceraCuadra();
    EXPECT_EQ(FGCaja.Rows(), 3);
    EXPECT_EQ(Celda(1, kColUnidades), "3");
    EXPECT_EQ(Celda(1, kColImporte), "7,5");
    EXPECT_EQ(Celda(1, kColEmpleado), "Ana  R");
    EXPECT_EQ(Celda(1, kColCodEmpleado), "5");
    EXPECT_EQ(Celda(2, kColNombre), "Esponja");
    EXPECT_EQ(Lineas(), 2);
    EXPECT_EQ(NumLinea("unidades", 1), 3);
    EXPECT_EQ(NumLinea("precio", 1), 7.5);
    EXPECT_EQ(CLng(Linea("codempleado", 1)), 5);
    EXPECT_EQ(CStr(Linea("nombreempleado", 1)), "Ana  R");
    EXPECT_EQ(CajaText_Pago.Text(), "8,50");
    EXPECT_EQ(txtTArticulos.Text(), "4");

    // One line per item.
    sesion().LineaXProducto = true;
    FGCaja = NuevaGridVenta();
    Abrir();
    Anadir(1, 1);
    Anadir(1, 1);
    EXPECT_EQ(FGCaja.Rows(), 3);
    EXPECT_EQ(Celda(2, kColUnidades), "1");
    EXPECT_EQ(Lineas(), 2);
    EXPECT_EQ(NumLinea("precio", 2), 2.5);
    CabeceraCuadra();
    EXPECT_EQ(CajaText_Pago.Text(), "5,00");
}

TEST_P(LineasVenta, NombreCorto_SusTresFormas) {
    const std::pair<const char*, const char*> casos[] = {
        {"Juan Perez Lopez", "Juan  P. L."},        {"Juan Perez", "Juan  P"}, {"Juan", " "}, {"", " "},
        {"María Ñúñez Ábalos Gil", "María  Ñ. Á."},
    };
    for (auto [nombre, corto] : casos) EXPECT_EQ(NombreCorto(nombre), corto) << nombre;
    // The display form is what reaches the line.
    Producto(1, "Jabon", "2.5", "21");
    Abrir();
    Anadir(1, 1, "P", "4", "Pepe");
    EXPECT_EQ(CStr(Linea("nombreempleado", 1)), " ");
    // Several employees of the line editor share it: it belongs to none.
    LineaTemp l;
    l.numero = numero;
    l.tipo = "P";
    l.codigo = 1;
    l.codEmpleados = "4/5";
    l.nombresEmpleados = "Pepe/Ana";
    GrabarLineaTempSinOrden(l);
    EXPECT_EQ(CLng(Linea("codempleado", 1)), -1);
    EXPECT_EQ(CStr(Linea("nombreempleado", 1)), "");
}

TEST_P(LineasVenta, CodigoInexistenteODesbordado_NoEscribeLinea) {
    Producto(40000, "Grande", "1", "21");
    Abrir();
    txtTArticulos.SetText("5");
    Anadir(123, 1);
    EXPECT_EQ(Lineas(), 0);
    EXPECT_EQ(FGCaja.Rows(), 2);
    EXPECT_EQ(txtTArticulos.Text(), "5");
    // A code beyond 16 bits overflows before its line is written.
    EXPECT_EQ(prueba::ErrorDe([&] { Anadir(40000, 1); }).numero, kErrOverflow);
    EXPECT_EQ(Lineas(), 0);
    EXPECT_TRUE(Valor("select total from cabecera_factura_temp where numero = " + std::to_string(numero)).IsNull());
}

TEST_P(LineasVenta, Visor_MuestraNombreEImporteDeLaLinea) {
    prueba::VisorGrabado visor;
    Producto(1, "Jabon", "2.5", "21");
    Abrir();
    Anadir(1, 2);
    EXPECT_TRUE(visor.lineas.empty());
    sesion().VisorActivo = true;
    Anadir(1, 1);
    ASSERT_EQ(visor.lineas.size(), 1u);
    EXPECT_EQ(visor.lineas[0], (std::pair<std::string, std::string>{"Jabon", "7,5"}));
}

TEST_P(LineasVenta, SumarTotalGrid_HastaLaPrimeraFilaSinPrecio) {
    Grid g = NuevaGridVenta();
    TextBox total;
    SumarTotalGrid(total, g);
    EXPECT_EQ(total.Text(), "0,00");
    g.SetRows(5);
    for (long f = 1; f <= 4; ++f) {
        g.SetTextMatrix(f, kColNombre, "x");
        g.SetTextMatrix(f, kColPvp, "1");
        g.SetTextMatrix(f, kColImporte, CStr(1000.5 * f));
    }
    g.SetTextMatrix(3, kColPvp, "");
    SumarTotalGrid(total, g);
    EXPECT_EQ(total.Text(), "3.001,50");
    Decimales(3);
    SumarTotalGrid(total, g);
    EXPECT_EQ(total.Text(), "3.001,500");
}

// A line's second tax after a change from the till: the sale's discount
// reckons it at the row's second rate in any shop, the line editor only
// where the second tax is in force.
TEST_P(LineasVenta, SegundoImpuesto_DescuentoSiempreEditorSoloEnVigor) {
    struct Caso {
        const char* que;
        bool descuento;  // the sale's discount of 10 %, else the line editor
        bool segundo;    // configuracionregional.segundoimpuesto
        double impuesto2;
    } casos[] = {
        // 9 with 5 % inside it; with the second tax in force the amount was 10,48.
        {"descuento, sin segundo impuesto", true, false, 0.43},
        {"descuento, con segundo impuesto", true, true, 0.45},
        {"editor, sin segundo impuesto", false, false, 0},
        {"editor, con segundo impuesto", false, true, 0.50},
    };
    for (const Caso& k : casos) {
        SCOPED_TRACE(k.que);
        Ejecutar({"delete from detalle_factura_temp", "delete from cabecera_factura_temp", "delete from productos"});
        FGCaja = NuevaGridVenta();
        sesion().configuracionregional.segundoimpuesto = k.segundo;
        Producto(5, "Colonia", "10", "21", "5");
        Abrir();
        Anadir(5, 1);
        if (k.descuento) {
            double porcentaje = 10;
            AplicarDescuentoGrid(FGCaja, numero, porcentaje);
        } else {
            GrabarLineaEditada(FGCaja, 1, numero, "P");
        }
        EXPECT_NEAR(NumLinea("impuesto_2", 1), k.impuesto2, 1e-9);
        EXPECT_NEAR(NumLinea("tipoimpuesto_2", 1), 5, 1e-9);
    }
}

TPV_EN_CADA_MOTOR(LineasVenta);

}  // namespace
}  // namespace tpv
