#include "closing/abono.hpp"

#include "tests/closing/cierre_prueba.hpp"
#include "tests/sale/venta_abierta_prueba.hpp"

namespace tpv {
namespace {

using Esperadas = std::vector<std::string>;

// A refund typed at the till: open sale 15, against invoice 40, with the
// refund number 3.
class Abono : public prueba::VentaAbiertaTest {
protected:
    std::vector<std::string> Filas(const std::string& sql) { return prueba::FilasDe(sql, cn); }

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

        // Units turn positive, amounts keep their sign.
        EXPECT_EQ(Filas("select num_factura,num_abono,codigo,unidades,precio,descuento,impuesto,codmenu,"
                        "nombreempleado,orden,tipo_venta from detalle_abono order by codigo"),
                  (Esperadas{"40|3|5|2|-20|-1|1,74| |Juan  P. L.||P", "40|3|9|1|-10|0|1,74|M1|Juan  P. L.||S"}));
        // Goods come in: entrada and stock up, salida untouched; the service
        // moves nothing.
        EXPECT_EQ(Filas("select codigo,entrada,stock,salida from productos order by codigo"),
                  (Esperadas{"5|5|12|7", "9|0|1|0"}));
        EXPECT_EQ(Filas("select codigo,nombre,cantidad,coste,fecha,ticket,tipo,descripciontipo from historicostock"),
                  Esperadas{"5|Producto 5|2|8|23/11/2026|3|1|11"});
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
    // Without the open sale nothing is written.
    GrabarCabeceraAbono(3, 15, "1", "", 40, Hoy());
    EXPECT_EQ(Cuenta("cabecera_abono"), 0);
    struct Caso {
        const char* formaPago;
        const char* tarjeta;
        const char* fila;
    };
    // The cash of a mixed payment is worked out from the negative total.
    for (const Caso& caso :
         {Caso{"1", "", "3|40|23/11/2026|21/11/2026|12|30|2|0,5|0|0|1||0|18:42:00|09:15:00|CAJA1|-1|DV"},
          Caso{"3", "10,00", "3|40|23/11/2026|21/11/2026|12|30|2|0,5|0|0|3|10|-40|18:42:00|09:15:00|CAJA1|-1|DV"}}) {
        SCOPED_TRACE(caso.formaPago);
        Ejecutar({"delete from cabecera_abono", "delete from cabecera_factura_temp", "delete from clientes",
                  "insert into clientes (codigo,nombre) values (12,'Ana')"});
        Cabecera(15, -30, ",mesa,comensales,zona_venta,descuento", ",NULL,NULL,NULL,NULL");
        Ejecutar({"update cabecera_factura_temp set cliente = 12, impuesto_2 = 0.5"});
        reloj::Fijar(Hoy(18, 42));
        const DateTime otroDia{Hoy().serial - 2};

        GrabarCabeceraAbono(3, 15, caso.formaPago, caso.tarjeta, 40, otroDia);

        // The total turns positive; the tax keeps its sign.
        EXPECT_EQ(Filas("select numero,num_factura,fecha,fechaventa,cliente,total,impuesto,impuesto_2,mesa,zona_venta,"
                        "pago,tarjeta,efectivo,hora,hora_inicio,terminal,impuestoincluido,caracteristicaventa "
                        "from cabecera_abono"),
                  Esperadas{caso.fila});
        EXPECT_EQ(Valor("select ultimavisita from clientes where codigo = 12"), Value(otroDia));
        // A refund on another day leaves no line of audit.
        EXPECT_EQ(Cuenta("registrocambios"), 0);
        // Nor does it touch the sales.
        EXPECT_EQ(Cuenta("cabecera_factura"), 0);
    }
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
}

TPV_EN_CADA_MOTOR(Abono);

}  // namespace
}  // namespace tpv
