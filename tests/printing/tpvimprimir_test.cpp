#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "printing/recording_printer.hpp"
#include "printing/ticket_configurable.hpp"
#include "printing/ticket_service.hpp"
#include "tests/printing/decodificador_escpos.hpp"
#include "tests/printing/ticket_prueba.hpp"

namespace tpv::prueba {
namespace {

using Lineas = std::vector<std::string>;

struct Salida {
    int estado = -1;
    std::string texto;
};

// Runs the technician's tool on the test's database with one ticket printer
// "Caja" declared on a file.
class TpvImprimirTest : public TicketTest {
protected:
    void SetUp() override {
        TicketTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        const std::string base = ::testing::TempDir() + "tpvimprimir_" + std::to_string(::getpid());
        fichero = base + ".bin";
        ajustes = base + ".conf";
        std::remove(fichero.c_str());
        std::ofstream(ajustes) << "impresoras=Caja\nimpresora.Caja=file:" << fichero << "\n";
        Ejecutar({
            "insert into impresoras (terminal,tipo,impresora,fuente,numCaracteres) values "
            "('CAJA1','T','Caja','FontA11',42)",
            "insert into clientes (codigo,nombre,apellidos,nif) values (7,'Ana','Ruiz Gil','12345678Z')",
            "insert into cabecera_factura (numero,cliente,empleado,total,impuesto,recargo,descuento,pago,fechaVenta,"
            "hora) values (41,7,'Marta',30.25,5.25,0,0,2,#03/14/2026#,#10:31:00#)",
            "insert into detalle_factura (num_factura,unidades,producto,precio_unit,precio,impuesto,tipoimpuesto,"
            "recargo,descuento) values (41,2,'Colonia fresca',12.1,24.2,4.2,21,0,0)",
            "insert into detalle_factura (num_factura,unidades,producto,precio_unit,precio,impuesto,tipoimpuesto,"
            "recargo,descuento) values (41,1,'Jabón de glicerina y aloe vera con ñ',6.05,6.05,1.05,21,0,0)",
        });
    }
    void TearDown() override {
        std::remove(fichero.c_str());
        std::remove(ajustes.c_str());
        TicketTest::TearDown();
    }

    Salida Tpvimprimir(const std::string& argumentos) {
        const std::string orden = "TPV_SUITE_CONF='" + ajustes + "' TPV_DATABASE='" + uri + "' CUPS_SERVER=/nada " +
                                  std::string(TPV_TOOLS_DIR) + "/tpvimprimir " + argumentos + " 2>&1";
        Salida s;
        FILE* p = popen(orden.c_str(), "r");
        char buf[512];
        while (p && fgets(buf, sizeof buf, p)) s.texto += buf;
        s.estado = p ? WEXITSTATUS(pclose(p)) : -1;
        return s;
    }

    PapelDecodificado Papel() const {
        std::ifstream f(fichero, std::ios::binary);
        const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>()};
        return DecodificarEscPos(bytes);
    }

    // The same ticket laid out in this process on the recording printer.
    Lineas PapelGrabado(std::int32_t numero) {
        auto grabadora = std::make_unique<RecordingPrinter>("Caja");
        RecordingPrinter* caja = grabadora.get();
        std::vector<std::unique_ptr<PageDevice>> lista;
        lista.push_back(std::move(grabadora));
        InstallPrinters(std::move(lista));
        double propina = 0;
        ImprimirConfONOFF ticket(RotulosDelServicio(cn));
        ticket.ImprimirNuevoTicket(cn, "Caja", "", "", 0, 0, 0, numero, numero < 0 ? "" : "cabecera_factura", 0, 0,
                                   0, propina);
        return caja->Documents().empty() ? Lineas{} : caja->Documents().back().paper;
    }

    std::string fichero, ajustes;
};

// A closed sale's ticket and the sample ticket, in bytes that read as the
// paper laid out in this process; wrong arguments are told plainly.
TEST_P(TpvImprimirTest, TicketDeUnaVentaYDeEjemploEnBytesQueSeLeenComoElPapel) {
    Salida s = Tpvimprimir("ticket Caja 41");
    ASSERT_EQ(s.estado, 0) << s.texto;
    EXPECT_EQ(s.texto, "Ticket de la venta 41 enviado a Caja.\n");
    const PapelDecodificado papel = Papel();
    EXPECT_TRUE(papel.iniciada);
    EXPECT_EQ(papel.paginaCodigos, 19);
    EXPECT_EQ(papel.cortes, 1);
    // No confticket row: the till's own wording, 42 characters wide, the
    // shop's name in big letters (two columns each), as laid out in process.
    ASSERT_GE(papel.lineas.size(), 11u);
    EXPECT_EQ(papel.lineas[0], "      Perfumería Olmo");
    EXPECT_EQ(papel.lineas[10], "Ud Descripción              Precio Importe");
    EXPECT_EQ(papel.lineas, PapelGrabado(41));

    std::remove(fichero.c_str());
    s = Tpvimprimir("ticket Caja");
    ASSERT_EQ(s.estado, 0) << s.texto;
    EXPECT_EQ(s.texto, "Ticket de ejemplo enviado a Caja.\n");
    const Lineas muestra = Papel().lineas;
    ASSERT_FALSE(muestra.empty());
    EXPECT_EQ(muestra.back(), std::string(42, '-'));
    const Lineas grabado = PapelGrabado(-1);
    ASSERT_EQ(muestra.size(), grabado.size());
    for (std::size_t i = 0; i < muestra.size(); ++i) {
        // The sample's date line is the time of printing.
        if (muestra[i].find("Ticket:") != std::string::npos) continue;
        EXPECT_EQ(muestra[i], grabado[i]) << i;
    }

    struct Caso {
        const char* argumentos;
        const char* mensaje;
    } casos[] = {
        {"ticket Otra 41", "tpvimprimir: error 482: no existe la impresora \"Otra\"\n"},
        {"ticket Caja 99", "tpvimprimir: error 5: no existe la venta 99\n"},
        {"ticket Caja 4x", "tpvimprimir: error 5: el número de venta \"4x\" no es válido\n"},
    };
    for (const Caso& c : casos) {
        s = Tpvimprimir(c.argumentos);
        EXPECT_EQ(s.estado, 1) << c.argumentos;
        EXPECT_EQ(s.texto, c.mensaje) << c.argumentos;
    }
}

TPV_EN_CADA_MOTOR(TpvImprimirTest);

}  // namespace
}  // namespace tpv::prueba
