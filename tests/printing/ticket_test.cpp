#include "printing/ticket_configurable.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "printing/ticket_service.hpp"
#include "tests/printing/ticket_prueba.hpp"

namespace tpv::prueba {
namespace {

using Lineas = std::vector<std::string>;

const char* const kConfTicket =
    "insert into confticket (EnNegrita,nomEmpresa,Direccion,poblacion,provincia,cif,web,telefono,email,nomTicket,"
    "empleado,cliente,CifCliente,telefonocliente,DirCliente,unidades,descripcion,pUnitario,total,mostrarPunit,"
    "utilizaSubTotal,cuota,totalfinal,entrega,cambio,mostrartotalletras,desgloseImpuestos,nomImpuesto,base,FormaPago,"
    "ImpuestosIncluidos,Gracias,comentariofinal) values (True,'#CPerfumería Olmo','C/ Mayor 3','28801 Alcalá',Null,"
    "'CIF: B12345678',Null,'Tlf: 918880000',Null,'Ticket:','Le atendió: ','Cliente: ','NIF: ','Tlf: ','Dir: ','Ud',"
    "'Artículo','Precio','Importe',True,0,'Cuota','TOTAL','Entregado','Cambio',False,-1,'Tipo','Base','Pago: ',"
    "'IVA incluido','Gracias por su visita',Null)";

class ConfTicketTest : public TicketTest {
protected:
    void SetUp() override {
        TicketTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({
            kConfTicket,
            "insert into clientes (codigo,nombre,apellidos,nif,telefono2,direccion) values "
            "(7,'Ana','Ruiz Gil','12345678Z','600111222','C/ Sol 1')",
            // A sale with a line at no price, and an open sale.
            "insert into cabecera_factura (numero,cliente,empleado,total,impuesto,recargo,descuento,pago,fechaVenta,"
            "hora) values (41,7,'Marta',30.25,5.25,0,0,1,#03/14/2026#,#10:31:00#)",
            "insert into detalle_factura (num_factura,unidades,producto,precio_unit,precio,impuesto,tipoimpuesto,"
            "recargo,descuento) values (41,2,'Colonia fresca',12.1,24.2,4.2,21,0,0)",
            "insert into detalle_factura (num_factura,unidades,producto,precio_unit,precio,impuesto,tipoimpuesto,"
            "recargo,descuento) values (41,1,'Jabón de glicerina y aloe vera',6.05,6.05,1.05,21,0,0)",
            "insert into detalle_factura (num_factura,unidades,producto,precio_unit,precio,impuesto,tipoimpuesto,"
            "recargo,descuento) values (41,1,'Bolsa',0,0,0,0,0,0)",
            "insert into cabecera_factura_temp (numero,fecha,hora,cliente,empleado,total,impuesto,recargo,descuento) "
            "values (12,#03/14/2026#,#10:05:00#,0,'Marta',12.1,2.1,1.5,0.5)",
            "insert into detalle_factura_temp (num_factura,unidades,producto,precio_unit,precio,impuesto,tipoimpuesto,"
            "recargo,descuento) values (12,1,'Colonia fresca',12.1,12.1,2.1,21,1.5,0.5)",
        });
    }

    // Prints a document on "TICKETS" and gives its paper.
    Lineas Imprimir(std::int32_t numero, const std::string& tabla, double entrega = 0, double cambio = 0,
                    std::int16_t comensales = 0, double propina = 0) {
        ImprimirConfONOFF ticket;
        ticket.ImprimirNuevoTicket(cn, "TICKETS", "", "", 0, 0, 0, numero, tabla, entrega, cambio, comensales,
                                   propina);
        propinaImpresa = propina;
        return Papel();
    }

    double propinaImpresa = 0;
};

// The sale scenarios pin a sale's whole paper; here the customer's block,
// a long name cut to its column and a line at no price.
TEST_P(ConfTicketTest, Venta_ClienteNombreCortadoYLineaSinPrecio) {
    const Lineas papel = Imprimir(41, "cabecera_factura", 50, 19.75);
    ASSERT_EQ(papel.size(), 31u);
    EXPECT_EQ(Lineas(papel.begin() + 7, papel.begin() + 17),
              (Lineas{"Le atendió: Marta", "Cliente: Ana Ruiz Gil", "NIF: 12345678Z  Tlf: 600111222", "Dir: C/ Sol 1",
                      "", "Ud Artículo          Precio Importe", std::string(35, '-'),
                      "2 Colonia fresca      12,10   24,20", "1 Jabón de glicerina   6,05    6,05", "1 Bolsa"}));
    EXPECT_EQ(papel[24], "21%                25,00       5,25");
    EXPECT_TRUE(otra_->Documents().empty());
    EXPECT_TRUE(cajas.mostradas.empty());
}

TEST_P(ConfTicketTest, Preticket_RecargoDescuentoSubtotalYComensales) {
    Ejecutar({"insert into relaciones_fijas (indice,datoa) values ('LineaPropinas','SI')"});
    const Lineas pre = Imprimir(12, "cabecera_factura_temp", 0, 0, 3);
    const Lineas esperado = {
        "Venta:12     14/03/2026 10:05",
        "Le atendió: Marta",
        "",
        "Ud Artículo          Precio Importe",
        "-----------------------------------",
        "1 Colonia fresca      12,10   12,10",
        "-----------------------------------",
        "Recargo                        0,00",
        "Descuento:                    -0,50",
        "Subtotal:                     12,10",
        "                   TOTAL      12,10",
        "",
        "-----------------------------------",
        "Tipo                Base      Cuota",
        "21%                 9,59       2,01",
        "-----------------------------------",
        "",
        "Propina:",
        "",
        "-----------------------------------",
        "     Comensales 3 toca a = 4,03",
    };
    EXPECT_EQ(Lineas(pre.begin() + 6, pre.end()), esperado);
}

TEST_P(ConfTicketTest, Propinas_EtiquetaSegunLaPropinaRecibida) {
    Ejecutar({"insert into relaciones_fijas (indice,datoa,daton) values ('UtilizaConceptoPropina','Servicio',10)"});
    // A sale whose tip differs from the reckoned one: plain label, no amount.
    Lineas venta = Imprimir(41, "cabecera_factura");
    EXPECT_EQ(venta[18], "Propina:");
    EXPECT_EQ(propinaImpresa, 0);
    // A pre-ticket reckons it and gives it back.
    Lineas pre = Imprimir(12, "cabecera_factura_temp");
    EXPECT_EQ(pre[16], "Servicio 10%                   1,21");
    EXPECT_EQ(pre[17], "                   TOTAL      13,31");
    EXPECT_DOUBLE_EQ(propinaImpresa, 1.21);
}

TEST_P(ConfTicketTest, SinFilaDeConfticketOImpresoraCaida_NadaNiRotura) {
    Ejecutar({"delete * from confticket"});
    EXPECT_EQ(Imprimir(41, "cabecera_factura"), Lineas{});
    Ejecutar({kConfTicket, "update confticket set comentariofinal = '" + std::string(10000, 'x') + "', Direccion = '" +
                               std::string(10000, 'y') + "'"});
    const Lineas largo = Imprimir(41, "cabecera_factura");
    EXPECT_EQ(largo[1], std::string(35, 'y'));
    // 10000 characters measure 285.7 lines: 286 pieces and an empty last one.
    EXPECT_EQ(largo[largo.size() - 2], std::string(25, 'x'));
    EXPECT_EQ(largo.back(), "");

    ImprimirConfONOFF ticket;
    double propina = 0;
    ticket.ImprimirNuevoTicket(cn, "TICKETS", "/no/existe/logo.bmp", "/no/existe/logo.bmp", 0, 0, 0, 41,
                               "cabecera_factura", 0, 0, 0, propina);
    EXPECT_EQ(tickets_->Documents().back().paper.front(), "   Perfumería Olmo");
    EXPECT_TRUE(cajas.mostradas.empty());

    tickets_->SetFailing(true);
    Imprimir(41, "cabecera_factura");
    ASSERT_EQ(cajas.mostradas.size(), 1u);
    EXPECT_EQ(cajas.mostradas[0].titulo, "Preticket");
    EXPECT_EQ(cajas.mostradas[0].texto, "Compruebe la conexion con su impresora y que esta este encendida.");
    EXPECT_EQ(cajas.mostradas[0].Icono(), vbInformation);
}

TEST_P(ConfTicketTest, Muestra_SeDetieneEnElPrimerImporte) {
    const Lineas muestra = Imprimir(-1, "");
    ASSERT_GE(muestra.size(), 4u);
    EXPECT_EQ(muestra[6], "Ticket:XXXXXX 14/03/26 10:30");
    EXPECT_EQ(muestra[muestra.size() - 2], "XXXxxxxxx Xxxxxxxx  XXXX,XX XXXX,XX");
    EXPECT_EQ(muestra.back(), "-----------------------------------");
}

TEST_P(ConfTicketTest, CuarentaYDosCaracteresConLosInterruptoresAlReves) {
    Ejecutar({
        "update impresoras set numCaracteres = 42 where impresora = 'TICKETS'",
        "update confticket set EnNegrita = False, mostrarPunit = False, utilizaSubTotal = -1, desgloseImpuestos = 0, "
        "mostrartotalletras = True, FormaPago = Null, Direccion = '#CC/ Mayor 3', totalfinal = '#CTOTAL', "
        "comentariofinal = 'Cambios y devoluciones con este ticket durante 15 días naturales'",
        "insert into cabecera_factura (numero,cliente,empleado,total,impuesto,recargo,descuento,pago,fechaVenta,hora) "
        "values (44,0,'Marta',60.5,10.5,0,0,2,#03/14/2026#,#12:05:00#)",
        "insert into detalle_factura (num_factura,unidades,producto,precio_unit,precio,impuesto,tipoimpuesto,recargo,"
        "descuento) values (44,1,'Perfume de autor edición limitada con estuche regalo',60.5,60.5,10.5,21,0,0)",
    });
    const std::string guiones(42, '-');
    const Lineas esperado = {
        "      Perfumería Olmo",
        "                C/ Mayor 3",  // "#C" centres a line the engine prints at the left
        "28801 Alcalá",
        "CIF: B12345678",
        "Tlf: 918880000",
        "",
        "Ticket:44     14/03/26 12:05",
        "Le atendió: Marta",
        "",
        "Ud Artículo                        Importe",
        guiones,
        "1 Perfume de autor edición limita    60,50",  // cut, one blank kept before the amount
        guiones,
        "                       SubTotal      50,00",
        "                          Cuota      10,50",
        "             TOTAL      60,50",  // "#C" wins over the right alignment
        "",
        "       sesenta con cincuenta  euros",
        "",
        "",
        "               IVA incluido",
        "           Gracias por su visita",
        "",
        // 64 characters measure 1.52 lines: two pieces and an empty third.
        "Cambios y devoluciones con este ticket dur",
        "ante 15 días naturales",
        "",
    };
    EXPECT_EQ(Imprimir(44, "cabecera_factura"), esperado);
    // Without bold nothing is struck twice.
    const auto& llamadas = tickets_->Calls();
    for (std::size_t i = 1; i < llamadas.size(); ++i)
        EXPECT_FALSE(llamadas[i].text == llamadas[i - 1].text && llamadas[i].y == llamadas[i - 1].y) << llamadas[i].text;
}

TEST_P(ConfTicketTest, TicketService_ConLosRotulosDeLaTiendaOLosPropios) {
    sesion().IdentificacionFiscal = "";
    TicketService servicio;
    servicio.ImprimirTicketVenta(cn, "TICKETS", 41, "19,75", "50");
    // With the shop's confticket row, its wording.
    Lineas papel = Papel();
    ASSERT_GE(papel.size(), 30u);
    EXPECT_EQ(papel[0], "   Perfumería Olmo");
    EXPECT_EQ(papel[19], "               Entregado      50,00");
    EXPECT_EQ(papel[27], "           Pago: Contado");

    Ejecutar({"delete * from confticket"});
    servicio.ImprimirTicketVenta(cn, "TICKETS", 41, "19,75", "50");
    // Without it, the till's own wording: the lines that differ from the shop's.
    papel = Papel();
    ASSERT_EQ(papel.size(), 30u);
    const std::pair<std::size_t, const char*> propias[] = {
        {1, "             C/ Mayor 3"},       {2, "         C.I.F.: B12345678"},   {5, "Ticket: 41     14/03/26 10:31"},
        {9, "C/ Sol 1"},                     {11, "Ud Descripción       Precio Importe"},
        {22, "IVA                 Base      Cuota"}, {26, "       Forma de pago: Contado"},
    };
    for (auto [i, linea] : propias) EXPECT_EQ(papel[i], linea) << i;
}

TPV_EN_CADA_MOTOR(ConfTicketTest);

}  // namespace
}  // namespace tpv::prueba
