#include <gtest/gtest.h>

#include "printing/recording_printer.hpp"

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
    // Two texts at one height: both show, the later one over the earlier.
    p.Font.Name = "FontA11";
    const double y = p.CurrentY;
    p.Print("abcdef");
    p.CurrentY = y;
    p.CurrentX = 96 * 3;
    p.Print("XY");
    p.EndDoc();
    EXPECT_EQ(Papel(p), (std::vector<std::string>{"izquierda", "           once", "   tres", "negativo", "", "",
                                                  "  b", "abcXYf"}));
    EXPECT_FALSE(p.Documents().back().opensDrawer);
    // A print after a document starts a fresh one at the top.
    EXPECT_EQ(p.CurrentY, 0);
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
