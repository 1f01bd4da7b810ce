#include "closing/abono.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/formato.hpp"
#include "tests/sale/venta_abierta_prueba.hpp"

namespace tpv {
namespace {

// A refund typed at the till: open sale 15, against invoice 40, with the
// refund number 3.
class Abono : public prueba::VentaAbiertaTest {
protected:
    void Productos() {
        Ejecutar({"insert into productos (codigo,nombre,stock,entrada,salida,coste) values (5,'Colonia',10,3,7,4)",
                  "insert into productos (codigo,nombre,stock,entrada,salida,coste) values (9,'Envoltorio',1,0,0,1)"});
    }
};

TEST_P(Abono, GrabarDetalleAbono_LineasEnPositivoYElStockEntraEnCadaSector) {
    for (const char* sector : {"PERFUMERIA", "PANADERIA", "SUPERMERCADO"}) {
        SCOPED_TRACE(sector);
        Ejecutar({"delete from productos", "delete from detalle_abono", "delete from historicostock",
                  "delete from detalle_factura_temp", "delete from cabecera_factura_temp"});
        sesion().Sector = sector;
        Productos();
        Cabecera(15, -30);
        Linea(15, 1, 5, "P", -20, -1);
        Linea(15, 2, 9, "S", -10);
        Ejecutar({"update detalle_factura_temp set unidades = -2 where orden = 1",
                  "update detalle_factura_temp set unidades = -1, codmenu = 'M1' where orden = 2"});

        GrabarDetalleAbono(3, 15, 40);

        Recordset l;
        l.Open("select * from detalle_abono order by codigo", cn);
        ASSERT_EQ(l.RecordCount(), 2);
        EXPECT_EQ(l["num_factura"].Value(), Value(40));
        EXPECT_EQ(l["num_abono"].Value(), Value(3));
        EXPECT_DOUBLE_EQ(CDbl(l["unidades"]), 2);
        EXPECT_DOUBLE_EQ(CDbl(l["precio"]), -20);  // amounts keep their sign
        EXPECT_DOUBLE_EQ(CDbl(l["descuento"]), -1);
        EXPECT_DOUBLE_EQ(CDbl(l["impuesto"]), 1.74);
        EXPECT_EQ(l["codmenu"].Value(), Value(" "));
        EXPECT_EQ(l["nombreempleado"].Value(), Value("Juan  P. L."));
        EXPECT_TRUE(l["orden"].IsNull());
        l.MoveNext();
        EXPECT_DOUBLE_EQ(CDbl(l["unidades"]), 1);
        EXPECT_EQ(l["codmenu"].Value(), Value("M1"));
        EXPECT_EQ(l["tipo_venta"].Value(), Value("S"));

        // Goods come in: entrada and stock up, salida untouched; the service
        // moves nothing.
        EXPECT_DOUBLE_EQ(CDbl(Valor("select entrada from productos where codigo = 5")), 5);
        EXPECT_DOUBLE_EQ(CDbl(Valor("select stock from productos where codigo = 5")), 12);
        EXPECT_DOUBLE_EQ(CDbl(Valor("select salida from productos where codigo = 5")), 7);
        EXPECT_DOUBLE_EQ(CDbl(Valor("select stock from productos where codigo = 9")), 1);

        Recordset h;
        h.Open("select * from historicostock", cn);
        ASSERT_EQ(h.RecordCount(), 1);
        EXPECT_EQ(h["codigo"].Value(), Value(5));
        EXPECT_EQ(h["nombre"].Value(), Value("Producto 5"));
        EXPECT_DOUBLE_EQ(CDbl(h["cantidad"]), 2);
        EXPECT_DOUBLE_EQ(CDbl(h["coste"]), 8);
        EXPECT_EQ(h["fecha"].Value(), Value(Hoy()));
        EXPECT_EQ(h["ticket"].Value(), Value(3));
        EXPECT_EQ(h["tipo"].Value(), Value(1));
        EXPECT_EQ(h["descripciontipo"].Value(), Value(11));
        // The open sale is left for the closing to delete.
        EXPECT_EQ(Cuenta("detalle_factura_temp", "num_factura = 15"), 2);
    }
}

TEST_P(Abono, GrabarDetalleAbono_LoQueNoSeEscribeSePierdeYElStockYaEntro) {
    Productos();
    Cabecera(15, -30);
    Linea(15, 1, 5, "P", -20);
    Linea(15, 2, 9, "P", -10);
    // A name holding the list's separator can't be written: its line and
    // its movement are lost, the next line goes on.
    Ejecutar({"update detalle_factura_temp set unidades = -2", "update detalle_factura_temp set producto = "
                                                               "'Col|onia' where codigo = 5"});

    EXPECT_NO_THROW(GrabarDetalleAbono(3, 15, 40));
    EXPECT_DOUBLE_EQ(CDbl(Valor("select stock from productos where codigo = 5")), 12);
    EXPECT_EQ(Cuenta("historicostock", "codigo = 5"), 0);
    EXPECT_EQ(Cuenta("detalle_abono", "codigo = 5"), 0);
    EXPECT_EQ(Cuenta("detalle_abono", "codigo = 9"), 1);
    EXPECT_EQ(Cuenta("historicostock", "codigo = 9"), 1);
}

TEST_P(Abono, GrabarCabeceraAbono_FilaExactaConTotalEnPositivoPorFormaDePago) {
    struct Caso {
        const char* formaPago;
        const char* tarjeta;
        double efectivo;
        Value tarjetaGuardada;
    };
    // The cash of a mixed payment is worked out from the negative total.
    for (const Caso& caso : {Caso{"1", "", 0, Value()}, Caso{"3", "10,00", -40, Value(10.0)}}) {
        SCOPED_TRACE(caso.formaPago);
        Ejecutar({"delete from cabecera_abono", "delete from cabecera_factura_temp", "delete from clientes",
                  "insert into clientes (codigo,nombre) values (12,'Ana')"});
        Cabecera(15, -30, ",mesa,comensales,zona_venta,descuento", ",NULL,NULL,NULL,NULL");
        Ejecutar({"update cabecera_factura_temp set cliente = 12, impuesto_2 = 0.5"});
        reloj::Fijar(Hoy(18, 42));
        const DateTime otroDia{Hoy().serial - 2};

        GrabarCabeceraAbono(3, 15, caso.formaPago, caso.tarjeta, 40, otroDia);

        Recordset c;
        c.Open("select * from cabecera_abono", cn);
        ASSERT_EQ(c.RecordCount(), 1);
        EXPECT_EQ(c["numero"].Value(), Value(3));
        EXPECT_EQ(c["num_factura"].Value(), Value(40));
        EXPECT_EQ(c["fecha"].Value(), Value(Hoy()));
        EXPECT_EQ(c["fechaventa"].Value(), Value(otroDia));
        EXPECT_EQ(c["cliente"].Value(), Value(12));
        EXPECT_DOUBLE_EQ(CDbl(c["total"]), 30);
        EXPECT_DOUBLE_EQ(CDbl(c["impuesto"]), 2);  // tax keeps its sign
        EXPECT_DOUBLE_EQ(CDbl(c["impuesto_2"]), 0.5);
        EXPECT_EQ(c["mesa"].Value(), Value(0));
        EXPECT_EQ(c["zona_venta"].Value(), Value(0));
        EXPECT_EQ(c["pago"].Value(), Value(CLng(Value(caso.formaPago))));
        EXPECT_EQ(c["tarjeta"].Value(), caso.tarjetaGuardada);
        EXPECT_DOUBLE_EQ(CDbl(c["efectivo"]), caso.efectivo);
        EXPECT_EQ(Format(c["hora"], "hh:mm"), "18:42");
        EXPECT_EQ(Format(c["hora_inicio"], "hh:mm"), "09:15");
        EXPECT_EQ(c["terminal"].Value(), Value("CAJA1"));
        EXPECT_EQ(c["impuestoincluido"].Value(), Value(-1));
        EXPECT_EQ(c["caracteristicaventa"].Value(), Value("DV"));
        EXPECT_EQ(Valor("select ultimavisita from clientes where codigo = 12"), Value(otroDia));
        // A refund on another day leaves no line of audit.
        EXPECT_EQ(Cuenta("registrocambios"), 0);
        // Nor does it touch the sales.
        EXPECT_EQ(Cuenta("cabecera_factura"), 0);
    }
}

TEST_P(Abono, GrabarCabeceraAbono_SinLaVentaAbiertaNoEscribeNada) {
    GrabarCabeceraAbono(3, 15, "1", "", 40, Hoy());
    EXPECT_EQ(Cuenta("cabecera_abono"), 0);
}

TEST_P(Abono, ComprobacionesDeLaFacturaAntesDeDevolver) {
    Ejecutar({"insert into cabecera_factura (numero,cliente,total,fechaventa) values (40,12,30,#11/23/2026#)",
              "insert into cabecera_factura (numero,cliente,total,fechaventa) values (41,NULL,-5,#11/20/2026#)",
              "insert into cabecera_abono (numero,total) values (42,5)",
              "insert into cabecera_pago (num_factura,estado) values (40,-1)",
              "insert into cabecera_pago (num_factura,estado) values (41,0)",
              "insert into clientes (codigo,nombre,apellidos) values (12,'Ana','Ruiz')"});
    struct Caso {
        std::int32_t numero;
        bool existe, existeHoy, abono, deuda;
        const char* cliente;
    };
    // A refund's own number is another series: only the sales are looked at.
    for (const Caso& c : {Caso{40, true, true, false, false, "12"}, Caso{41, true, false, true, true, ""},
                          Caso{42, false, false, false, false, ""}}) {
        SCOPED_TRACE(c.numero);
        EXPECT_EQ(existeNumFactura(c.numero), c.existe);
        EXPECT_EQ(existeNumFacturaHoy(c.numero), c.existeHoy);
        EXPECT_EQ(EsAbono(c.numero), c.abono);
        EXPECT_EQ(TieneDeuda(c.numero), c.deuda);
        EXPECT_EQ(ClienteAbono(std::to_string(c.numero)), c.cliente);
    }
    EXPECT_EQ(NombreCliente(Value(12)), "Ana Ruiz");
    EXPECT_EQ(NombreCliente(Value(99)), "Cliente Generico");
    EXPECT_EQ(NombreCliente(Value()), "Cliente Generico");
}

TPV_EN_CADA_MOTOR(Abono);

}  // namespace
}  // namespace tpv
