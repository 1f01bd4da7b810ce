#include <gtest/gtest.h>

#include "printing/recording_printer.hpp"
#include "tests/printing/golpe_doble.hpp"

namespace tpv {
namespace {

std::vector<std::string> Papel(const RecordingPrinter& p) { return p.Documents().back().paper; }

TEST(RecordingPrinter, MideEnCaracteresDeLaFuente) {
    RecordingPrinter p("T");
    struct Caso {
        const char* fuente;
        double tamano;
        double ancho;  // of "8888"
        double alto;
    } casos[] = {
        {"FontA11", 9, 4 * 96, 240},  {"fonta1x1", 9, 4 * 96, 240}, {"FontB11", 9, 4 * 72, 192},
        {"FontA11", 14, 4 * 192, 480}, {"FontA22", 9, 4 * 192, 480}, {"Arial", 12, 4 * 96, 240},
        {"FontB21", 9, 4 * 144, 192},
    };
    for (const auto& c : casos) {
        p.Font.Name = c.fuente;
        p.Font.Size = c.tamano;
        EXPECT_EQ(p.TextWidth("8888"), c.ancho) << c.fuente << " " << c.tamano;
        EXPECT_EQ(p.TextHeight("8888"), c.alto) << c.fuente << " " << c.tamano;
    }
    p.Font.Name = "FontA11";
    p.Font.Size = 9;
    EXPECT_EQ(p.TextWidth("Ñandú"), 5 * 96);
}

TEST(RecordingPrinter, ColocaCadaImpresionEnSuColumna) {
    RecordingPrinter p("T");
    p.Print("izquierda   ");
    p.CurrentX = 96 * 10 + 48;  // 10.5 columns: rounds up
    p.Print("once");
    p.CurrentX = 96 * 3 + 47;  // 3.49 columns: rounds down
    p.Print("tres");
    p.CurrentX = -500;
    p.Print("negativo");
    p.Print("");
    p.Print(" ");
    p.Font.Name = "FontB11";
    p.CurrentX = 72 * 2;
    p.Print("b");
    p.EndDoc();
    EXPECT_EQ(Papel(p), (std::vector<std::string>{"izquierda", "           once", "   tres", "negativo", "", "",
                                                  "  b"}));
    EXPECT_FALSE(p.Documents().back().opensDrawer);
}

TEST(RecordingPrinter, DobleGolpeSeVeUnaVezYTamanoGrandeCentrado) {
    RecordingPrinter p("T");
    prueba::ImprimirCabeceraEnNegrita(p, "ACME");
    p.Print("siguiente");
    // Two texts at one height: both show, the later one over the earlier.
    const double y2 = p.CurrentY;
    p.Print("abcdef");
    p.CurrentY = y2;
    p.CurrentX = 96 * 3;
    p.Print("XY");
    p.EndDoc();
    EXPECT_EQ(Papel(p), (std::vector<std::string>{"              ACME", "siguiente", "abcXYf"}));
    const auto& r = p.Documents().back().layout.Renglones();
    EXPECT_TRUE(r[0].celdas[14].negrita);
    EXPECT_EQ(r[0].celdas[14].fuente.multAncho, 2);
    EXPECT_FALSE(r[1].celdas[0].negrita);
    // A print after a document starts a fresh one at the top.
    EXPECT_EQ(p.CurrentY, 0);
}

TEST(RecordingPrinter, CajonPorLaFuenteDeControlYPorElControlador) {
    RecordingPrinter p("T");
    p.Font.Name = "control";
    p.Print("A");
    p.EndDoc();
    EXPECT_TRUE(p.Documents().back().opensDrawer);
    EXPECT_TRUE(p.Documents().back().paper.empty());

    p.Font.Name = "FontA1x1";
    p.Print("");
    p.EndDoc();
    EXPECT_TRUE(p.Documents().back().opensDrawer);

    p.Font.Name = "FontA11";
    p.Print("");
    p.EndDoc();
    EXPECT_FALSE(p.Documents().back().opensDrawer);
}

TEST(RecordingPrinter, ImpresoraCaidaDaError482) {
    RecordingPrinter p("T");
    p.SetFailing(true);
    try {
        p.Print("x");
        FAIL();
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.Number(), kErrImpresora);
    }
}

TEST(Printers, BuscarImpresoraCambiaLaActualSoloSiLaEncuentra) {
    std::vector<std::unique_ptr<PageDevice>> lista;
    lista.push_back(std::make_unique<RecordingPrinter>("Tickets"));
    lista.push_back(std::make_unique<RecordingPrinter>("Listados", "PDF"));
    InstallPrinters(std::move(lista));
    EXPECT_EQ(Printer().DeviceName(), "Tickets");
    EXPECT_TRUE(BuscarImpresora("Listados"));
    EXPECT_EQ(Printer().DeviceName(), "Listados");
    EXPECT_FALSE(BuscarImpresora("listados "));
    EXPECT_EQ(Printer().DeviceName(), "Listados");
    EXPECT_EQ(Printers().Count(), 2);
    EXPECT_EQ(Printers()(1).DriverName(), "PDF");

    InstallPrinters({});
    try {
        Printer().Print("x");
        FAIL();
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.Number(), kErrImpresora);
    }
    ResetPrinters();
}

}  // namespace
}  // namespace tpv
