#include "closing/reabrir.hpp"

#include "core/runtime/formato.hpp"
#include "tests/closing/cierre_prueba.hpp"
#include "tests/sale/venta_abierta_prueba.hpp"

namespace tpv {
namespace {

using Esperadas = std::vector<std::string>;

// Invoice 40, closed on 20/11/2026 on another till: two units of product 5,
// one of product 6 and a service, with their stock already moved. The sale
// counter hands out 7 next.
class Reabrir : public prueba::VentaAbiertaTest {
protected:
    std::vector<std::string> Filas(const std::string& sql) { return prueba::FilasDe(sql, cn); }

    void SetUp() override {
        VentaAbiertaTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({"insert into relaciones_fijas (indice,daton) values ('Venta',7)",
                  "insert into productos (codigo,nombre,stock,salida,entrada,coste) values (5,'Colonia',8,2,0,4)",
                  "insert into productos (codigo,nombre,stock,salida,entrada,coste) values (6,'Jabon',4,1,0,1)",
                  "insert into cabecera_factura (numero,fecha,cliente,mesa,comensales,empleado,zona_venta,total,"
                  "descuento,hora,codigo_empleado,pago,hora_inicio,impuesto,tarjeta,efectivo,recargo,"
                  "impuestoincluido,fechaventa,terminal,cierre,repartidor,impuesto_2) values (40,#11/19/2026#,12,"
                  "NULL,2,'Juan Perez Lopez',NULL,33.5,NULL,#19:05:00#,3,3,#19:00:00#,5.8,10,23.5,0,-1,#11/20/2026#,"
                  "'CAJA2',0,4,0.3)"});
        LineaCerrada(5, "P", 2, 20, "NULL");
        LineaCerrada(6, "P", 1, 8.5, "'M1'");
        LineaCerrada(9, "S", 1, 5, "NULL");
        for (const char* fila : {"5,2,40", "6,1,40", "5,1,41"})
            Ejecutar({std::string("insert into historicostock (codigo,cantidad,ticket,tipo,descripciontipo) "
                                  "values (") +
                      fila + ",1,2)"});
    }

    void LineaCerrada(int codigo, const char* tipo, double unidades, double precio, const char* codMenu) {
        Ejecutar({"insert into detalle_factura (num_factura,codigo,producto,unidades,precio,descuento,recargo,"
                  "precio_unit,borrar,productodemenu,menu,codmenu,impuesto,tipoimpuesto,codempleado,nombreempleado,"
                  "tipo_venta,impuesto_2,tipoimpuesto_2,codfamilia,orden) values (40," +
                  std::to_string(codigo) + ",'Producto " + std::to_string(codigo) + "'," + Str(unidades) + "," +
                  Str(precio) + ",0.5,0," + Str(precio) + ",0,-1,0," + codMenu + ",1.74,21,3,'Juan P. L.','" + tipo +
                  "',0.1,1.4,8,9)"});
    }
};

TEST_P(Reabrir, ReabrirFactura_DevuelveLaVentaAbiertaDeshaceElStockYBorraLaCerrada) {
    reloj::Fijar(Hoy(12, 34));
    std::string numeroVenta = "0";

    ReabrirFactura(40, numeroVenta);

    EXPECT_EQ(numeroVenta, "7");
    EXPECT_EQ(Cuenta("cabecera_factura") + Cuenta("detalle_factura"), 0);
    // The second tax and the family stay behind.
    EXPECT_EQ(Filas("select num_factura,orden,codigo,unidades,productodemenu,descuento,nombreempleado,codmenu,"
                    "tipo_venta,impuesto_2,tipoimpuesto_2 from detalle_factura_temp order by orden"),
              (Esperadas{"7|1|5|2|-1|0,5|Juan P. L.| |P||", "7|2|6|1|-1|0,5|Juan P. L.|M1|P||",
                         "7|3|9|1|-1|0,5|Juan P. L.| |S||"}));
    // The sale starts again now and on this till, dated the day it was made.
    EXPECT_EQ(Filas("select numero,fecha,cliente,mesa,comensales,zona_venta,descuento,total,impuesto,hora,terminal,"
                    "impuestoincluido,repartidor,tarjeta,impuesto_2 from cabecera_factura_temp"),
              Esperadas{"7|19/11/2026|12|0|2|0|0|33,5|5,8|12:34:00|CAJA1|-1|4||"});

    // Stock as before the sale, and the sale's movements gone; another
    // ticket's movement of the same product stays.
    EXPECT_EQ(Filas("select codigo,stock,salida from productos order by codigo"), (Esperadas{"5|10|0", "6|5|0"}));
    EXPECT_EQ(Cuenta("historicostock", "ticket = 40"), 0);
    EXPECT_EQ(Cuenta("historicostock", "ticket = 41"), 1);

    EXPECT_EQ(Filas("select numerofacturareal,numerofacturatemporal,importe,fechaventa from ventasdevolucion"),
              Esperadas{"40|7|33,5|20/11/2026"});
}

TEST_P(Reabrir, ReabrirFactura_UnaLineaQueNoSeCopiaSePierdeYLaCerradaSeBorraIgual) {
    // A product name holding the list's separator breaks that line's copy.
    Ejecutar({"update detalle_factura set producto = 'Col|onia' where codigo = 6"});
    std::string numeroVenta;

    ReabrirFactura(40, numeroVenta);

    EXPECT_EQ(Cuenta("detalle_factura_temp"), 2);
    EXPECT_EQ(Cuenta("detalle_factura"), 0);
    EXPECT_EQ(Cuenta("cabecera_factura_temp"), 1);
}

TEST_P(Reabrir, BorrarDetalleFactura_PorCodigoOTodas) {
    BorrarDetalleFactura(40, 6);
    EXPECT_EQ(Cuenta("detalle_factura", "num_factura = 40"), 2);
    EXPECT_EQ(Cuenta("detalle_factura", "codigo = 6"), 0);
    BorrarDetalleFactura(40, -1);
    EXPECT_EQ(Cuenta("detalle_factura"), 0);
}

TPV_EN_CADA_MOTOR(Reabrir);

}  // namespace
}  // namespace tpv
