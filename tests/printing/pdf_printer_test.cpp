#include <gtest/gtest.h>

#include <memory>

#include "printing/impresoras_sistema.hpp"
#include "printing/pdf_printer.hpp"

namespace tpv {
namespace {

TEST(PdfPrinter, MideConFuentesReales) {
    auto impresora = CrearImpresora("Listados", "PDF", "carpeta:" + ::testing::TempDir());
    auto& p = static_cast<PdfPrinter&>(*impresora);
    EXPECT_EQ(p.DriverName(), "PDF");
    p.Font.Name = "Sans";
    p.Font.Size = 12;
    const double corto = p.TextWidth("iii"), largo = p.TextWidth("MMM");
    EXPECT_GT(largo, corto);  // real measures, not a fixed pitch
    EXPECT_GT(p.TextHeight("M"), 200);
}

TEST(Destinos, ImpresoraQueNoRespondeDaError482Pronto) {
    // 192.0.2.0/24 is reserved for documentation: nothing answers there.
    for (const char* uri : {"socket://192.0.2.1:9100", "file:/dev/no-existe/lp0", "serial:/dev/no-existe", ""}) {
        auto impresora = CrearImpresora("T", "ESC/POS", uri);
        impresora->Print("hola");
        try {
            impresora->EndDoc();
            ADD_FAILURE() << uri;
        } catch (const RuntimeError& e) {
            EXPECT_EQ(e.Number(), kErrImpresora) << uri;
        }
    }
}

}  // namespace
}  // namespace tpv
