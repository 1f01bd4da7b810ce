#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

#include "printing/escpos.hpp"
#include "printing/pc858.hpp"
#include "printing/recording_printer.hpp"
#include "tests/printing/decodificador_escpos.hpp"

namespace tpv {
namespace {

// A ticket with everything a ticket prints: a head at 14 points centred on
// 35 characters and struck twice a little apart to look bold, accents, the
// euro, a right-aligned amount, blank lines, a second font.
void ImprimirTicketDePrueba(PageDevice& p) {
    const double ancho = p.TextWidth(std::string(35, '8'));
    p.Font.Size = 14;
    const double x = ancho / 2 - p.TextWidth("Perfumería Ñandú") / 2, y = p.CurrentY;
    p.CurrentX = x;
    p.Print("Perfumería Ñandú");
    p.CurrentY = y;
    p.CurrentX = x + 10;
    p.Print("Perfumería Ñandú");
    p.Font.Size = 9;
    p.Print("C/ Mayor, 1");
    p.Print(" ");
    p.CurrentX = ancho - p.TextWidth("TOTAL      12,50 €");
    p.Print("TOTAL      12,50 €");
    p.Print("");
    p.Font.Name = "FontB11";
    p.CurrentX = 72 * 4;
    p.Print("Gracias por su visita");
    p.EndDoc();
}

TEST(EscPos, LosBytesSeLeenComoElPapelGrabado) {
    RecordingPrinter p("T");
    ImprimirTicketDePrueba(p);
    const auto& doc = p.Documents().back();
    ASSERT_EQ(doc.paper, (std::vector<std::string>{"  Perfumería Ñandú", "C/ Mayor, 1", "",
                                                   "                 TOTAL      12,50 €", "", "    Gracias por su visita"}));
    const Bytes bytes = CodificarEscPos(doc.layout);
    const auto leido = prueba::DecodificarEscPos(bytes);
    EXPECT_EQ(leido.lineas, doc.paper);
    EXPECT_TRUE(leido.iniciada);
    EXPECT_EQ(leido.paginaCodigos, 19);
    EXPECT_EQ(leido.cortes, 1);
    EXPECT_EQ(leido.negritas, std::vector<int>{0});
    EXPECT_TRUE(leido.patadas.empty());
    // Double width and height for the big head.
    const std::vector<std::uint8_t> dobles{29, '!', 0x11};
    EXPECT_NE(std::search(bytes.begin(), bytes.end(), dobles.begin(), dobles.end()), bytes.end());
}

TEST(EscPos, CajonSinPapelNiCorte) {
    RecordingPrinter p("T");
    p.Font.Name = "control";
    p.Print("A");
    p.EndDoc();
    OpcionesEscPos o;
    o.secuenciaCajon = {27, 112, 0, 25, 250};
    const auto leido = prueba::DecodificarEscPos(CodificarEscPos(p.Documents().back().layout, o));
    EXPECT_EQ(leido.patadas, (std::vector<std::vector<std::uint8_t>>{{27, 112, 0, 25, 250}}));
    EXPECT_EQ(leido.cortes, 0);
    EXPECT_TRUE(leido.lineas.empty());
}

TEST(EscPos, TextoSinCaracteresDeControl) {
    RecordingPrinter p("T");
    p.Print("a\x1b@\x1dV\x01z");
    p.EndDoc();
    const auto leido = prueba::DecodificarEscPos(CodificarEscPos(p.Documents().back().layout));
    EXPECT_EQ(leido.lineas, std::vector<std::string>{"a @ V z"});
    EXPECT_EQ(leido.cortes, 1);
}

TEST(EscPos, LogoBmpComoImagenYFicheroQueFaltaNoImprimeNada) {
    // A 2x2 BMP of 24 bits: black, white / white, black.
    std::string bmp = "BM";
    auto u32 = [&](std::uint32_t v) { for (int i = 0; i < 4; ++i) bmp += static_cast<char>((v >> (8 * i)) & 255); };
    auto u16 = [&](std::uint16_t v) { bmp += static_cast<char>(v & 255); bmp += static_cast<char>(v >> 8); };
    u32(54 + 16); u32(0); u32(54); u32(40); u32(2); u32(2); u16(1); u16(24); u32(0); u32(16);
    u32(0); u32(0); u32(0); u32(0);
    bmp += std::string("\xff\xff\xff\x00\x00\x00\x00\x00", 8) + std::string("\x00\x00\x00\xff\xff\xff\x00\x00", 8);
    const std::string ruta = ::testing::TempDir() + "logo_prueba.bmp";
    std::ofstream(ruta, std::ios::binary) << bmp;

    RecordingPrinter p("T");
    p.PaintPicture(ruta, 0, 0, 800, 800);
    p.PaintPicture(ruta + ".no", 0, 0, 800, 800);
    p.Print("x");
    p.EndDoc();
    const Bytes bytes = CodificarEscPos(p.Documents().back().layout);
    const auto leido = prueba::DecodificarEscPos(bytes);
    EXPECT_EQ(leido.imagenes, 1);
    EXPECT_EQ(leido.lineas, std::vector<std::string>{"x"});
    // 100 x 100 dots: 13 bytes a row; the first row starts black.
    const std::vector<std::uint8_t> cabecera{29, 'v', '0', 0, 13, 0, 100, 0};
    auto it = std::search(bytes.begin(), bytes.end(), cabecera.begin(), cabecera.end());
    ASSERT_NE(it, bytes.end());
    EXPECT_EQ(*(it + 8), 0xFF);
    std::remove(ruta.c_str());
}

TEST(Pc858, LetrasEspanolasYEuro) {
    struct Caso {
        const char* texto;
        std::string bytes;
    } casos[] = {
        {"ñ", "\xA4"}, {"Ñ", "\xA5"}, {"á", "\xA0"}, {"é", "\x82"}, {"í", "\xA1"}, {"ó", "\xA2"}, {"ú", "\xA3"},
        {"ü", "\x81"}, {"€", "\xD5"}, {"¿", "\xA8"}, {"¡", "\xAD"}, {"º", "\xA7"}, {"abc", "abc"}, {"→", "?"},
    };
    for (const auto& c : casos) {
        EXPECT_EQ(APc858(c.texto), c.bytes) << c.texto;
        if (c.bytes != "?") {
            EXPECT_EQ(DesdePc858(c.bytes), c.texto);
        }
    }
}

}  // namespace
}  // namespace tpv
