#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <memory>

#include "printing/impresoras_sistema.hpp"
#include "printing/pdf_printer.hpp"

namespace tpv {
namespace {

std::string Ejecutar(const std::string& orden) {
    std::string salida;
    std::unique_ptr<FILE, int (*)(FILE*)> p(popen(orden.c_str(), "r"), pclose);
    char buf[512];
    while (p && fgets(buf, sizeof buf, p.get())) salida += buf;
    return salida;
}

TEST(PdfPrinter, TextoConFuentesRealesEnElFicheroGuardado) {
    const std::string carpeta = ::testing::TempDir() + "pdf_prueba";
    std::filesystem::remove_all(carpeta);
    auto impresora = CrearImpresora("Listados", "PDF", "carpeta:" + carpeta);
    auto& p = static_cast<PdfPrinter&>(*impresora);
    EXPECT_EQ(p.DriverName(), "PDF");
    p.Font.Name = "Sans";
    p.Font.Size = 12;
    const double corto = p.TextWidth("iii"), largo = p.TextWidth("MMM");
    EXPECT_GT(largo, corto);  // real measures, not a fixed pitch
    EXPECT_GT(p.TextHeight("M"), 200);
    p.Print("Factura número 25");
    p.CurrentX = 2000;
    p.Print("Total: 12,50 €");
    p.EndDoc();
    ASSERT_FALSE(p.LastFile().empty());
    const std::string texto = Ejecutar("pdftotext -layout '" + p.LastFile() + "' -");
    EXPECT_NE(texto.find("Factura número 25"), std::string::npos) << texto;
    EXPECT_NE(texto.find("Total: 12,50 €"), std::string::npos) << texto;
    std::filesystem::remove_all(carpeta);
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
