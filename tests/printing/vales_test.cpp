#include "printing/vales.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "printing/albaran_ticket.hpp"
#include "tests/printing/ticket_prueba.hpp"

namespace tpv::prueba {
namespace {

using Lineas = std::vector<std::string>;
namespace Albaran = ImprimirAlbaran;

class PlantillaTest : public TicketTest {
protected:
    void SetUp() override {
        TicketTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        const char* const lineas[] = {
            "Perfumería Olmo", "C/ Mayor 3 - Alcalá", "CIF B12345678", "Tlf 918880000", nullptr,
            "Nro. Ticket: <Nro Venta> <fecha>", "Atiende: <Empleado que le atendio>",
            "Cliente: <Nombre del Cliente>", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
            "Gracias por su compra", "Pago: <Forma de Pago> <Desconocido> total <TOTAL>", "2",
        };
        for (int i = 0; i < 17; ++i)
            cn.Execute("insert into DatosImpresion (numlinea,contenido) values (" + std::to_string(i + 1) + "," +
                       (lineas[i] ? "'" + std::string(lineas[i]) + "'" : "Null") + ")");
        Ejecutar({
            "insert into clientes (codigo,nombre,apellidos,nif,telefono1,telefono2) values "
            "(7,'Ana','Ruiz Gil','12345678Z','','911111111')",
            "insert into cabecera_factura_temp (numero,num_albaran,cliente,empleado,total,impuesto,recargo) values "
            "(12,3,7,'Marta',36.3,6.3,0)",
            "insert into detalle_factura_temp (num_factura,producto,unidades,precio_unit,precio,impuesto,tipoimpuesto,"
            "descuento,borrar) values (12,'Colonia fresca',2,12.1,24.2,4.2,21,0,0)",
            "insert into detalle_factura_temp (num_factura,producto,unidades,precio_unit,precio,impuesto,tipoimpuesto,"
            "descuento,borrar) values (12,'Champú de camomila para cabello rubio',1,12.1,12.1,2.1,21,0,0)",
            // A deleted line: not on the list, yet its tax stays in the table.
            "insert into detalle_factura_temp (num_factura,producto,unidades,precio_unit,precio,impuesto,tipoimpuesto,"
            "descuento,borrar) values (12,'Anulada',1,5.5,5.5,0.5,10,0,-1)",
            "insert into cabecera_factura (numero,empleado,fechaVenta,total) values (41,'Marta',#03/14/2026#,30.25)",
        });
    }
};

TEST_P(PlantillaTest, ImprimirAlbaranTicket_MarcadoresEntregaEImpuestos) {
    Albaran::ImprimirAlbaranTicket(cn, "TICKETS", 12, "13,70", "50,00");
    // The delivery-note scenarios pin the rest: here the template's markers,
    // the money handed over, and the deleted line's tax left in the table.
    const Lineas papel = Papel();
    ASSERT_EQ(papel.size(), 31u);
    EXPECT_EQ(Lineas(papel.begin() + 4, papel.begin() + 10),
              (Lineas{"Albaran: 3 14/03/2026 10:30", "Atiende:   Marta", "Cliente:   Ana Ruiz", "",
                      "Telefono: 911111111", "CIF: 12345678Z"}));
    EXPECT_EQ(Lineas(papel.begin() + 14, papel.begin() + 23),
              (Lineas{"1 Champú de camomila  12,10   12,10", std::string(35, '-'),
                      "                  TOTAL:      36,30", "                  Entrega     50,00",
                      "                  Cambio      13,70", std::string(35, '-'), "Tipo IVA          Base      Cuota",
                      "10 %              5,00       0,50", "21 %             30,00       6,30"}));
    EXPECT_EQ(Albaran::Estado().lineas[16], "Pago: Albaran  total 36,3");
}

TEST_P(PlantillaTest, ImprimirAlbaranTicket_SinDineroNiLinea8NiUnitario) {
    Ejecutar({"update DatosImpresion set contenido = Null where numlinea = 8",
              "update DatosImpresion set contenido = '0' where numlinea = 17",
              "update opciones set QuitarPUnitarioTicket = True", "delete * from detalle_factura_temp"});
    Albaran::ImprimirAlbaranTicket(cn, "TICKETS", 12, "", "50,00");
    const Lineas esperado = {
        "Perfumería Olmo",     "C/ Mayor 3 - Alcalá", "CIF B12345678",
        "Tlf 918880000",       "Albaran: 3 14/03/2026 10:30", "Atiende:   Marta",
        "",                    "Telefono: 911111111", "CIF: 12345678Z",
        "",                    " Producto                    Precio", "-----------------------------------",
        "-----------------------------------", "                  TOTAL:      36,30", "",
        "",                    "Firma",               "-----------------------------------",
        "14/03/2026                    10:30",
    };
    EXPECT_EQ(Papel(), esperado);
}

TEST(ExpandirMarcadores, MarcadoresDeVariasPalabrasYDesconocidos) {
    Albaran::Modulo& m = Albaran::Estado();
    m = Albaran::Modulo{};
    m.numAlbaran = "3";
    m.empleado = "Marta";
    m.clienteNombre = "Ana";
    m.clienteApellidos = "Ruiz Gil";
    m.total = "36,3";
    m.entregaTexto = "50";
    m.cambioTexto = "13,7";
    const struct {
        const char* texto;
        const char* esperado;
    } casos[] = {
        {"Nro. Ticket: <Nro Venta>", "Ticket: 3"},
        {"Nro. Venta: <nro venta>", "Nro. Venta: 3"},
        {"Cliente: <Nombre del Cliente> fin", "Cliente: Ana Ruiz fin"},
        {"<Entregado> y <Cambio>", "50 y 13,7"},
        {"<Nada>", ""},
        {"a <Fecha de Venta> b", "a  b"},
        {"sin cerrar <TOTAL", "sin cerrar"},
        {"<Forma de Pago>", "Albaran"},
        {"dos  blancos", "dos  blancos"},
        {"", ""},
    };
    for (const auto& c : casos) EXPECT_EQ(Albaran::ExpandirMarcadores(c.texto), c.esperado) << c.texto;
    m.clienteNombre = "";
    EXPECT_EQ(Albaran::ExpandirMarcadores("<Nombre del Cliente>"), "");
}

TEST(LineaTresColumnas, AnchoDeTresDecimosYRecorteDelBlanco) {
    Albaran::Modulo& m = Albaran::Estado();
    m = Albaran::Modulo{};
    m.numCaracteres = 35;
    EXPECT_EQ(Albaran::LineaTresColumnas("Tipo IVA", "Base", "Cuota"), "Tipo IVA          Base      Cuota");
    m.numCaracteres = 20;  // columns of 6: 18 fit
    EXPECT_EQ(Albaran::LineaTresColumnas("a", "b", "c"), "a          b     c");
    // Too long: the second column loses one leading blank, and no more.
    EXPECT_EQ(Albaran::LineaTresColumnas("Impuesto", "  1,00", "123456789"), "Impuesto 1,00123456789");
}

TEST_P(PlantillaTest, ImprimirValeDescuento_ImporteImparYSinCaducidad) {
    Albaran::ImprimirValeDescuento(cn, "TICKETS", "41", "10,00", "01/01/1900", "0");
    // The whole voucher is on the paper of the sale scenarios; here the
    // shop's template lines at its head and the odd cases.
    const Lineas papel = Papel();
    ASSERT_EQ(papel.size(), 24u);
    EXPECT_EQ(Lineas(papel.begin(), papel.begin() + 6),
              (Lineas{"Perfumería Olmo", "C/ Mayor 3 - Alcalá", "CIF B12345678", "Tlf 918880000", "Fecha: 14/03/2026",
                      "           VALE DESCUENTO"}));
    EXPECT_EQ(papel[9], "     *         10,00        *");  // one short on the right
    EXPECT_EQ(papel[23], "sera de caracter indefinido.");
}

TEST_P(PlantillaTest, ImprimirTicketRegalo_PapelExacto) {
    sesion().ComentarioTicketRegalo = "Cambios y devoluciones en un plazo de quince dias presentando este ticket";
    Albaran::ImprimirTicketRegalo(cn, "TICKETS", 41, "Colonia fresca#Jabón de glicerina y aloe vera");
    const Lineas esperado = {
        "    ***** Ticket Regalo *****",
        "",
        "Perfumería Olmo",
        "C/ Mayor 3",
        "Tlf: 918880000",
        "",
        "Nro. Venta: 41 Fecha: 14/03/2026",
        "Empleado: Marta",
        "",
        "",
        "Productos",
        "-----------------------------------",
        "Colonia fresca",
        "Jabón de glicerina y",
        "-----------------------------------",
        "",
        "Cambios y devoluciones en un plazo",
        "de quince dias presentando este tic",
        "ket",
        "Gracias por su compra",
        "Pago: Albaran  total 0",
        "",
        "",
    };
    EXPECT_EQ(Papel(), esperado);
}

TPV_EN_CADA_MOTOR(PlantillaTest);

}  // namespace
}  // namespace tpv::prueba
