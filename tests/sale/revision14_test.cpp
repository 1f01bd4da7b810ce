// A line's second tax after a change from the till: the sale's discount
// reckons it at the row's second rate in any shop, the line editor only
// where the second tax is in force.
#include "sale/descuento_venta.hpp"
#include "sale/linea_editada.hpp"
#include "tests/sale/venta_prueba.hpp"

namespace tpv {
namespace {

class Revision14Venta : public prueba::VentaTest {};

TEST_P(Revision14Venta, SegundoImpuesto_DescuentoSiempreEditorSoloEnVigor) {
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

TPV_EN_CADA_MOTOR(Revision14Venta);

}  // namespace
}  // namespace tpv
