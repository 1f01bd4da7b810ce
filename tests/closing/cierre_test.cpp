#include <gtest/gtest.h>

#include "closing/grabar_factura.hpp"
#include "tests/closing/cierre_prueba.hpp"

namespace tpv {
namespace {

using Esperadas = std::vector<std::string>;

class Cierre : public prueba::CierreTest {};

TEST_P(Cierre, VentaAlContado_CopiaFilasMueveStockYLimpiaLaVentaAbierta) {
    Producto(1, "Colonia", 10, 4);
    Ejecutar({"insert into clientes (codigo,nombre) values (9,'Eva')"});
    Venta(30, "12,5", 9, "mesa=2|");
    Linea(30, 1, "Colonia", "2", "10");
    Linea(30, 2, "Envoltorio", "1", "2,5", "S");
    DatosCierre d = Datos(30);
    d.abrirCajon = true;
    Cerrar(d);

    EXPECT_EQ(Filas("select Numero,Fecha,Cliente,mesa,comensales,Empleado,Zona_Venta,Total,descuento,hora,"
                    "Codigo_Empleado,pago,hora_inicio,impuesto,tarjeta,efectivo,recargo,impuestoincluido,fechaVenta,"
                    "terminal,cierre,repartidor,impuesto_2 from cabecera_factura"),
              Esperadas{"100|15/11/2026|9|2|0|Ana|0|12,5|0|10:30:00|3|1|09:05:00|1,5||0|0|-1|15/11/2026|CAJA1|0||0"});
    EXPECT_EQ(Filas("select Num_Factura,codigo,Producto,Unidades,Precio,tipo_Venta,codMenu,borrar,codfamilia "
                    "from detalle_factura order by codigo"),
              (Esperadas{"100|1|Colonia|2|10|P| |0|4", "100|2|Envoltorio|1|2,5|S| |0|4"}));
    // Only the product moves stock; the service line has no movement.
    EXPECT_EQ(Filas("select codigo,nombre,cantidad,fecha,coste,ticket,tipo,descripciontipo from historicostock"),
              Esperadas{"1|Colonia|2|15/11/2026|8|100|1|2"});
    EXPECT_EQ(Filas("select stock,salida from productos"), Esperadas{"8|2"});
    EXPECT_EQ(Filas("select ultimavisita from clientes"), Esperadas{"15/11/2026"});
    EXPECT_EQ(Cuenta("detalle_factura_temp") + Cuenta("cabecera_factura_temp"), 0);
    EXPECT_EQ(tickets_->Documents().size(), 1u);
    EXPECT_EQ(cajones, 1);
    EXPECT_EQ(ultFactura, "100");
}

TEST_P(Cierre, FormasDePago_SoloElMixtoGuardaEfectivoSacadoDelTotal) {
    const struct {
        const char* total;
        const char* formaPago;
        const char* tarjeta;
        const char* esperado;  // pago|tarjeta|efectivo
    } casos[] = {
        {"30", "1", "", "1||0"},
        {"30", "2", "", "2||0"},
        {"30", "3", "10,00", "3|10|20"},
        {"0", "1", "", "1||0"},
    };
    int numero = 40;
    for (const auto& c : casos) {
        Venta(numero, c.total);
        Linea(numero, 1, "Colonia", "1", c.total);
        DatosCierre d = Datos(numero, c.formaPago);
        d.tarjeta = c.tarjeta;
        Cerrar(d);
        EXPECT_EQ(Filas("select pago,tarjeta,efectivo from cabecera_factura where numero = " +
                        std::to_string(numero + 60)),
                  Esperadas{c.esperado})
            << c.formaPago << " " << c.total;
        ++numero;
    }
    EXPECT_EQ(Cuenta("detalle_factura"), 4);
}

TEST_P(Cierre, FechaDeNegocio_CierreDespuesDeMedianoche) {
    // A shop open from 10:00 to 03:00 counts the small hours as yesterday;
    // hours it can't read count as 04:00 to 03:00.
    const struct {
        int hora;
        const char* apertura;
        const char* cierre;
        const char* fechaVenta;
    } casos[] = {
        {2, "#10:00:00#", "#03:00:00#", "14/11/2026"},
        {3, "#10:00:00#", "#03:00:00#", "15/11/2026"},
        {2, "null", "#03:00:00#", "14/11/2026"},
        {2, "#10:00:00#", "null", "14/11/2026"},
        {4, "null", "null", "15/11/2026"},
    };
    int numero = 50;
    for (const auto& c : casos) {
        Ejecutar({"delete from entradas", std::string("insert into entradas (identificador,Horaapertura,HoraCierre) "
                                                      "values ('CAJA1',") +
                                              c.apertura + "," + c.cierre + ")"});
        Reloj(c.hora, 0);
        Venta(numero, "10");
        DatosCierre v = Datos(numero);
        Cerrar(v);
        EXPECT_EQ(Texto(Valor("select fechaVenta from cabecera_factura where numero = " +
                              std::to_string(CLng(Valor("select max(numero) from cabecera_factura"))))),
                  c.fechaVenta)
            << c.hora << " " << c.apertura << " " << c.cierre;
        ++numero;
    }
}

TEST_P(Cierre, Panaderia_ElStockVaPorLaElaboracionEnCadaLinea) {
    sesion().Sector = "PANADERIA";
    Producto(1, "Barra", 50, 0.2);
    Venta(33, "3");
    Linea(33, 1, "Barra", "3", "3");
    Linea(33, 8, "Encargo", "1", "0", "S");
    DatosCierre d = Datos(33);
    Cerrar(d);
    // Every line, of any kind, leaves its sold unit in the history.
    EXPECT_EQ(CLng(Valor("select count(*) from historicostock where descripciontipo = 2")), 2);
    EXPECT_EQ(Filas("select stock,salida from productos"), Esperadas{"47|3"});
    EXPECT_EQ(Cuenta("detalle_factura"), 2);
}

// As many copies as the options ask for, each with the same paper; none
// unticked or at 0 copies. The drawer opens whatever is printed.
TEST_P(Cierre, Impresion_CopiasSinTicketYCajon) {
    const struct {
        int copias;
        bool imprimir;
        std::size_t papeles;
    } casos[] = {{3, false, 0}, {2, true, 2}, {0, true, 0}};
    int numero = 34;
    for (const auto& c : casos) {
        SCOPED_TRACE(c.copias);
        tickets_->Clear();
        sesion().opciones.NumCopiasFactura = c.copias;
        Venta(numero, "10");
        Linea(numero, 1, "Colonia", "1", "10");
        DatosCierre d = Datos(numero++);
        d.imprimir = c.imprimir;
        d.abrirCajon = true;
        Cerrar(d);
        ASSERT_EQ(tickets_->Documents().size(), c.papeles);
        for (const auto& documento : tickets_->Documents()) EXPECT_EQ(documento.paper, tickets_->Documents()[0].paper);
    }
    EXPECT_EQ(cajones, 3);
}

// Answers every box, and puts the ticket printer's name right at the first
// "Impresion" box: the copies after it print, and still warn.
class MensajesQueReparan : public prueba::MensajesGuionados {
public:
    int Mostrar(const CajaMensaje& caja) override {
        if (caja.titulo == "Impresion") sesion().ImpresoraTickets = "TICKETS";
        return MensajesGuionados::Mostrar(caja);
    }
};

TEST_P(Cierre, CopiaQueFalla_ElAvisoSeRepiteYElCierreSigue) {
    MensajesQueReparan cajas;
    sesion().opciones.NumCopiasFactura = 3;
    sesion().ImpresoraTickets = "TICK'ETS";  // breaks the ticket's first query
    Venta(37, "10");
    Linea(37, 1, "Colonia", "1", "10");
    DatosCierre d = Datos(37);
    d.abrirCajon = true;
    Cerrar(d);
    prueba::AvisosDeImpresora(cajas.mostradas, 3);
    EXPECT_EQ(tickets_->Documents().size(), 2u);
    EXPECT_EQ(cajones, 1);
    EXPECT_EQ(Cuenta("cabecera_factura"), 1);

    // An unplugged printer is told by the ticket itself, once per copy.
    cajas.mostradas.clear();
    tickets_->SetFailing(true);
    Venta(38, "10");
    d = Datos(38);
    Cerrar(d);
    ASSERT_EQ(cajas.mostradas.size(), 3u);
    EXPECT_EQ(cajas.mostradas[0].titulo, "Preticket");
    EXPECT_EQ(ultFactura, "101");
}

TEST_P(Cierre, LineaQueNoSeEscribe_SePierdeEnSilencioConSuStockMovido) {
    // A "|" in a name breaks the line's field list and its movement's.
    Producto(1, "Colonia", 10, 4);
    Ejecutar({"insert into productos (codigo,nombre,stock,salida,coste) values (2,'Jabón|Lavanda',10,0,1)"});
    Venta(39, "12");
    Linea(39, 1, "Colonia", "1", "10");
    Ejecutar({"insert into detalle_factura_temp (Num_Factura,Codigo,Producto,Unidades,Precio,tipo_Venta) "
              "values (39,2,'Jabón|Lavanda',2,2,'P')"});
    DatosCierre d = Datos(39);
    Cerrar(d);
    EXPECT_EQ(Filas("select codigo from detalle_factura"), Esperadas{"1"});
    EXPECT_EQ(Filas("select codigo from historicostock"), Esperadas{"1"});
    EXPECT_EQ(Filas("select stock from productos order by codigo"), (Esperadas{"9", "8"}));
    EXPECT_EQ(Cuenta("cabecera_factura"), 1);
    EXPECT_EQ(Cuenta("detalle_factura_temp"), 0);
}

TEST_P(Cierre, FalloSinTrampa_DejaLasLineasCerradasJuntoALaVentaAbierta) {
    // The business date's query breaks on the terminal's name, after the
    // lines were written and before the header.
    Venta(40, "10");
    Linea(40, 1, "Colonia", "1", "10");
    sesion().IdentificadorTerminal = "CAJA'1";
    DatosCierre d = Datos(40);
    EXPECT_THROW(Cerrar(d), RuntimeError);
    EXPECT_EQ(Filas("select num_factura from detalle_factura"), Esperadas{"100"});
    EXPECT_EQ(Cuenta("cabecera_factura"), 0);
    EXPECT_EQ(Cuenta("detalle_factura_temp") + Cuenta("cabecera_factura_temp"), 2);

    // Closing it again writes its lines a second time, under a new number.
    sesion().IdentificadorTerminal = "CAJA1";
    Cerrar(d);
    EXPECT_EQ(Filas("select num_factura from detalle_factura order by num_factura"), (Esperadas{"100", "101"}));
    EXPECT_EQ(Filas("select numero from cabecera_factura"), Esperadas{"101"});
}

TEST_P(Cierre, DeudaYVales_SeGuardanYElTicketMuestraLaDeuda) {
    Ejecutar({"insert into vales_descuento (num_factura,descuento,estado) values (12,5,0)",
              "insert into datosimpresion (numlinea,contenido) values (9,'')",
              "insert into descuentos (tipo,precio,descuento,numdias,impMinProxCompra) values (3,20,2,30,15)",
              "insert into descuentos (tipo,precio,descuento,numdias,impMinProxCompra) values (3,100,9,-1,0)"});
    Venta(41, "25", 6);
    Linea(41, 1, "Colonia", "1", "25");
    DatosCierre d = Datos(41);
    d.entrega = d.devolucion = "0,00";
    d.deuda = 25;
    d.numeroVale = 12;
    Cerrar(d);
    EXPECT_EQ(d.devolucion, "25,00");
    EXPECT_EQ(Filas("select num_pago,num_factura,cliente,importe,fecha,estado,empleado from cabecera_pago"),
              Esperadas{"3|100|6|25|15/11/2026|0|3"});
    EXPECT_EQ(Filas("select num_factura,num_factura_aplicado from vales_descuento where num_factura = 12"),
              Esperadas{"12|100"});
    EXPECT_EQ(Filas("select contenido from datosimpresion"), Esperadas{""});
    // The sale earned the step of 20: a voucher under its own number.
    EXPECT_EQ(Filas("select importe,descuento,desde,hasta,impMinProxCompra,estado from vales_descuento "
                    "where num_factura = 100"),
              Esperadas{"25|2|15/11/2026|15/12/2026|15|0"});
}

TPV_EN_CADA_MOTOR(Cierre);

}  // namespace
}  // namespace tpv
