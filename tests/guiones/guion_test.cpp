// The scripted runner's own pieces: reading a script's lines, and what the
// recording devices write to the transcript.
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/runtime/fecha.hpp"
#include "core/sesion/sesion.hpp"
#include "core/sesion/visor.hpp"
#include "printing/cajon.hpp"
#include "printing/page_device.hpp"
#include "tests/support/base_prueba.hpp"
#include "tools/tpvguion/dispositivos.hpp"
#include "tools/tpvguion/guion.hpp"

namespace tpv::guion {
namespace {

TEST(Guion, PartirLineas_ComillasEscapesYComentarios) {
    struct Caso {
        const char* texto;
        const char* accion;
        std::vector<std::string> argumentos;
    };
    const Caso casos[] = {
        {"escribir txtcod \"8410001000138\"", "escribir", {"txtcod", "8410001000138"}},
        {"  Pulsar\tPanelVentas   #2  ", "pulsar", {"PanelVentas", "#2"}},
        {"sql \"select 'a b' as \\\"x\\\"\"", "sql", {"select 'a b' as \"x\""}},
        {"escribir txtcod \"\"", "escribir", {"txtcod", ""}},
        {"escribir txt\\\"a \"b\"", "escribir", {"txt\\\"a", "b"}},  // \" counts only inside quotes
        {"# iniciar", "", {}},
        {"   ", "", {}},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.texto);
        std::string error;
        const auto l = Partir(c.texto, error);
        ASSERT_TRUE(l.has_value());
        EXPECT_EQ(l->accion, c.accion);
        EXPECT_EQ(l->argumentos, c.argumentos);
    }
    std::string error;
    EXPECT_FALSE(Partir("escribir txtcod \"abc", error).has_value());
    EXPECT_EQ(error, "falta la comilla que cierra el texto");
    EXPECT_FALSE(Partir("escribir txtcod \"abc\\\"", error).has_value());
}

TEST(Guion, MomentosYTeclas) {
    const auto m = LeerMomento("29/02/2028 23:59:58");
    ASSERT_TRUE(m.has_value());
    const fecha::Partes p = fecha::Descomponer(*m);
    EXPECT_EQ(p.anio * 10000 + p.mes * 100 + p.dia, 20280229);
    EXPECT_EQ(p.hora * 10000 + p.minuto * 100 + p.segundo, 235958);
    EXPECT_TRUE(LeerMomento("01/03/2026").has_value());
    EXPECT_TRUE(LeerMomento("01/03/2026 9:05").has_value());
    for (const char* malo : {"29/02/2027", "32/01/2026", "1/13/2026", "01/03/2026 24:00", "01/03/2026 10:00:00 x",
                             "hoy", "", "01-03-2026", "01/03/26"}) {
        SCOPED_TRACE(malo);
        EXPECT_FALSE(LeerMomento(malo).has_value());
    }

    struct Tecla {
        const char* nombre;
        int codigo, caracter;
    };
    const Tecla teclas[] = {{"Enter", 13, 13}, {"escape", 27, 27}, {"Retroceso", 8, 8}, {"Tab", 9, 0},
                            {"F1", 112, 0},    {"f12", 123, 0},    {"a", 'A', 'a'},     {"7", '7', '7'},
                            {",", ',', ','},   {"ñ", 241, 241}};
    for (const Tecla& t : teclas) {
        SCOPED_TRACE(t.nombre);
        int codigo = -1, caracter = -1;
        ASSERT_TRUE(LeerTecla(t.nombre, codigo, caracter));
        EXPECT_EQ(codigo, t.codigo);
        EXPECT_EQ(caracter, t.caracter);
    }
    int codigo = 0, caracter = 0;
    for (const char* mala : {"F13", "F0", "Intro", "ab", ""}) EXPECT_FALSE(LeerTecla(mala, codigo, caracter)) << mala;
}

class Dispositivos_ : public prueba::BaseDeDatosTest {
protected:
    void SetUp() override {
        BaseDeDatosTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        carpeta = std::filesystem::temp_directory_path() / ("tpvguion_test_" + std::to_string(::getpid()));
        std::filesystem::remove_all(carpeta);
        Ejecutar({"insert into impresoras (terminal,tipo,impresora,puerto) values ('CAJA1','T','Ticketera','USB')",
                  "insert into impresoras (terminal,tipo,impresora,puerto) values ('CAJA2','T','Ticketera','USB')",
                  "insert into impresoras (terminal,tipo,impresora,puerto) values ('CAJA1','L','Oficina','')"});
    }
    void TearDown() override {
        std::filesystem::remove_all(carpeta);
        BaseDeDatosTest::TearDown();
    }
    std::vector<std::string> lineas;
    std::filesystem::path carpeta;
};

TEST_P(Dispositivos_, LoQueSaleDeLaMaquina_EnLaTranscripcion) {
    {
        Dispositivos d([this](const std::string& l) { lineas.push_back(l); }, carpeta.string());
        d.InstalarImpresoras(cn);
        ASSERT_EQ(Printers().Count(), 2);  // a name listed twice is one printer

        ASSERT_TRUE(BuscarImpresora("Ticketera"));
        Printer().Print("Gracias por su visita");
        Printer().CurrentX = 96 * 10;
        Printer().Print("Total 9,95");
        Printer().Print("");
        Printer().EndDoc();
        // The drawer through the printer's control font, and the driver's own kick.
        Printer().Font.Name = "control";
        Printer().Print("A");
        Printer().EndDoc();
        Printer().Font.Name = "FontA1x1";
        Printer().Print("");
        Printer().EndDoc();

        EscribirSecuenciaCajon("COM1", "27|112|0|25|250");

        ASSERT_TRUE(BuscarImpresora("Oficina"));
        Printer().Print("Factura");
        Printer().EndDoc();

        sesion().PuertoVisor = "1";
        sesion().DatoVisor = "PERFUMERIA";
        d.InstalarVisor();
        VisorDelPuesto().MostrarEnVisor("Agua micelar 400 ml", "0,95");
        VisorDelPuesto().MostrarBienvenida();
    }
    ASSERT_EQ(lineas.size(), 11u);
    const std::vector<std::string> primeras(lineas.begin(), lineas.begin() + 8);
    EXPECT_EQ(primeras, (std::vector<std::string>{"IMPRESORA Ticketera", "| Gracias por su visita",
                                                  "|           Total 9,95", "| ", "CORTE", "CAJON impresora Ticketera",
                                                  "CAJON impresora Ticketera", "CAJON COM1 27,112,0,25,250"}));
    EXPECT_EQ(lineas[8], "DOCUMENTO Oficina " + (carpeta / "0004.pdf").string());
    EXPECT_EQ(lineas[9], "VISOR PERFUMERIA | Agua micelar ...0,95");
    EXPECT_EQ(lineas[10], "VISOR PERFUMERIA |  **  Bienvenido  **");
    // Every document also lands in the folder, in order: tickets as their bytes.
    for (const char* f : {"0001.bin", "0002.bin", "0003.bin", "0004.pdf"})
        EXPECT_TRUE(std::filesystem::exists(carpeta / f)) << f;
}

TPV_EN_CADA_MOTOR(Dispositivos_);

}  // namespace
}  // namespace tpv::guion
