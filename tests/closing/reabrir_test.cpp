#include "closing/reabrir.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/formato.hpp"
#include "tests/sale/venta_abierta_prueba.hpp"

namespace tpv {
namespace {

// Invoice 40, closed on 20/11/2026 on another till: two units of product 5,
// one of product 6 and a service, with their stock already moved. The sale
// counter hands out 7 next.
class Reabrir : public prueba::VentaAbiertaTest {
protected:
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
    EXPECT_EQ(Cuenta("cabecera_factura"), 0);
    EXPECT_EQ(Cuenta("detalle_factura"), 0);

    Recordset l;
    l.Open("select * from detalle_factura_temp order by orden", cn);
    ASSERT_EQ(l.RecordCount(), 3);
    for (int orden = 1; !l.Eof(); ++orden, l.MoveNext()) {
        SCOPED_TRACE(orden);
        EXPECT_EQ(l["num_factura"].Value(), Value(7));
        EXPECT_EQ(l["orden"].Value(), Value(orden));
        EXPECT_EQ(l["productodemenu"].Value(), Value(-1));
        EXPECT_DOUBLE_EQ(CDbl(l["descuento"]), 0.5);
        EXPECT_EQ(l["nombreempleado"].Value(), Value("Juan P. L."));
        // The second tax and the family stay behind.
        EXPECT_TRUE(l["impuesto_2"].IsNull());
        EXPECT_TRUE(l["tipoimpuesto_2"].IsNull());
    }
    l.MoveFirst();
    EXPECT_EQ(l["codigo"].Value(), Value(5));
    EXPECT_DOUBLE_EQ(CDbl(l["unidades"]), 2);
    EXPECT_EQ(l["codmenu"].Value(), Value(" "));
    l.MoveNext();
    EXPECT_EQ(l["codmenu"].Value(), Value("M1"));
    l.MoveNext();
    EXPECT_EQ(l["tipo_venta"].Value(), Value("S"));

    Recordset c;
    c.Open("select * from cabecera_factura_temp", cn);
    ASSERT_EQ(c.RecordCount(), 1);
    EXPECT_EQ(c["numero"].Value(), Value(7));
    EXPECT_EQ(c["fecha"].Value(), Value(DateTime{Hoy().serial - 4}));
    EXPECT_EQ(c["cliente"].Value(), Value(12));
    EXPECT_EQ(c["mesa"].Value(), Value(0));
    EXPECT_EQ(c["comensales"].Value(), Value(2));
    EXPECT_EQ(c["zona_venta"].Value(), Value(0));
    EXPECT_DOUBLE_EQ(CDbl(c["descuento"]), 0);
    EXPECT_DOUBLE_EQ(CDbl(c["total"]), 33.5);
    EXPECT_DOUBLE_EQ(CDbl(c["impuesto"]), 5.8);
    EXPECT_EQ(Format(c["hora"], "hh:mm"), "12:34");  // the sale starts again now
    EXPECT_EQ(c["terminal"].Value(), Value("CAJA1"));  // and on this till
    EXPECT_EQ(c["impuestoincluido"].Value(), Value(-1));
    EXPECT_EQ(c["repartidor"].Value(), Value(4));
    EXPECT_TRUE(c["tarjeta"].IsNull());
    EXPECT_TRUE(c["impuesto_2"].IsNull());

    // Stock as before the sale, and the sale's movements gone; another
    // ticket's movement of the same product stays.
    EXPECT_DOUBLE_EQ(CDbl(Valor("select stock from productos where codigo = 5")), 10);
    EXPECT_DOUBLE_EQ(CDbl(Valor("select salida from productos where codigo = 5")), 0);
    EXPECT_DOUBLE_EQ(CDbl(Valor("select stock from productos where codigo = 6")), 5);
    EXPECT_DOUBLE_EQ(CDbl(Valor("select salida from productos where codigo = 6")), 0);
    EXPECT_EQ(Cuenta("historicostock", "ticket = 40"), 0);
    EXPECT_EQ(Cuenta("historicostock", "ticket = 41"), 1);

    Recordset v;
    v.Open("select * from ventasdevolucion", cn);
    ASSERT_EQ(v.RecordCount(), 1);
    EXPECT_EQ(v["numerofacturareal"].Value(), Value(40));
    EXPECT_EQ(v["numerofacturatemporal"].Value(), Value(7));
    EXPECT_DOUBLE_EQ(CDbl(v["importe"]), 33.5);
    EXPECT_EQ(v["fechaventa"].Value(), Value(DateTime{Hoy().serial - 3}));
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
