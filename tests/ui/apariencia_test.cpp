#include <gtest/gtest.h>

#include <QApplication>
#include <QFontMetrics>
#include <filesystem>

#include "core/servicios/suite_settings.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/visor_serie.hpp"
#include "tests/ui/ventana_prueba.hpp"
#include "ui/ajuste_texto.hpp"
#include "ui/panel_botones.hpp"
#include "ui/visor_pantalla.hpp"

namespace tpv {
namespace {

using prueba::VentanaTest;

QFont Negrita() {
    QFont f = QApplication::font();
    f.setBold(true);
    return f;
}

// Whatever the box, every line fits its width, the lines fit its height, the
// size stays within the bounds, and a caption that is not cut reads whole
// (hyphens of split words aside).
TEST_F(VentanaTest, LosRotulosCabenEnterosAntesDeCortarse) {
    struct Caso {
        const char* texto;
        QSize caja;
        int lineas;
        bool entero;  // expected to read whole
    };
    const Caso casos[] = {
        {"Bolsa de organza", {90, 80}, 4, true},
        {"Saquito de sales aromáticas", {90, 80}, 4, true},
        {"Complementos", {54, 40}, 2, true},       // one long word: smaller, then split
        {"General", {40, 36}, 2, true},
        {"Ventas en modo Codigo", {100, 40}, 2, true},
        {"Observaciones", {104, 40}, 2, true},
        {"Desodorante roll-on antitranspirante sin alcohol de larga duración", {60, 30}, 2, false},
        {"", {60, 30}, 2, true},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.texto);
        const ui::TextoAjustado a = ui::AjustarTexto(QString::fromUtf8(c.texto), Negrita(), c.caja, 18, 11, c.lineas);
        EXPECT_GE(a.px, 11);
        EXPECT_LE(a.px, 18);
        QFont f = Negrita();
        f.setPixelSize(a.px);
        const QFontMetrics m(f);
        const QStringList lineas = a.texto.isEmpty() ? QStringList() : a.texto.split('\n');
        EXPECT_LE(lineas.size(), c.lineas);
        EXPECT_LE(lineas.size() * m.lineSpacing(), c.caja.height());
        for (const QString& l : lineas) EXPECT_LE(m.horizontalAdvance(l), c.caja.width()) << l.toStdString();
        const bool cortado = a.texto.contains(QChar(0x2026));
        EXPECT_EQ(!cortado, c.entero) << a.texto.toStdString();
        if (!cortado) {
            QString junto;
            for (const QString& l : lineas) junto += l.endsWith('-') ? l.chopped(1) : l + ' ';
            EXPECT_EQ(junto.simplified().toStdString(), QString::fromUtf8(c.texto).simplified().toStdString());
        }
    }
    // Words that fit whole are not split even when a bigger, split size would.
    const ui::TextoAjustado bolsa = ui::AjustarTexto("Bolsa de organza", Negrita(), {90, 80}, 18, 11, 4);
    EXPECT_FALSE(bolsa.texto.contains('-')) << bolsa.texto.toStdString();
}

TEST(PartesDelRotulo, ElMismoTextoSeLeeUnaSolaVez) {
    struct Caso {
        const char* superior;
        const char* texto;
        QStringList partes;
    };
    const Caso casos[] = {
        {"Bolsa de organza", "Bolsa de organza", {"Bolsa de organza"}},  // a product: name above and below
        {"General", "", {"General"}},                                     // a tariff
        {"", "Laura Gómez", {"Laura Gómez"}},                             // an employee
        {"\r\n-12-\r\nAna  López", "Laura", {"-12-", "Ana López", "Laura"}},  // an open sale
        {"Modificando \r\n-7-\r\nAna", "Ana", {"Modificando", "-7-", "Ana", "Ana"}},
        {"", "", {}},
    };
    for (const Caso& c : casos) {
        ButtonRecord b;
        b.TextoSuperior = c.superior;
        b.Texto = c.texto;
        EXPECT_EQ(ui::PartesDelRotulo(b), c.partes) << c.superior << " / " << c.texto;
    }
}

// The strip shows what the display's port would get, byte for byte.
TEST_F(VentanaTest, LaTiraMuestraLoQueRecibiriaElVisor) {
    ui::TiraVisor tira;
    VisorSerie visor("1", "Perfumería La Plaza");
    visor.FijarSalida([&](const std::vector<std::uint8_t>& bytes) { tira.Recibir(bytes); });
    const auto fila = [&](int n) { return tira.Fila(n).toStdString(); };

    visor.MostrarEnVisor("Agua micelar 400 ml", "0,95");
    EXPECT_EQ(fila(0), "Perfumería La Plaza ");
    EXPECT_EQ(fila(1), "Agua micelar ...0,95");
    visor.MostrarBienvenida();
    EXPECT_EQ(fila(1), " **  Bienvenido  ** ");
    // A clear blanks both rows; text past the twentieth column is lost; the
    // cursor command moves to the column and row given.
    tira.Recibir({12, 'A', 'B', 31, 36, 5, 2, 'x'});
    EXPECT_EQ(fila(0), "AB                  ");
    EXPECT_EQ(fila(1), "    x               ");
    std::vector<std::uint8_t> largo(25, 'z');
    tira.Recibir(largo);
    EXPECT_EQ(fila(1), "    xzzzzzzzzzzzzzzz");
    tira.Recibir({13, 'Y', 0xD5});  // 0xD5 is the euro in code page 858
    EXPECT_EQ(fila(1), "Y€  xzzzzzzzzzzzzzzz");
}

TEST_F(VentanaTest, ElVisorEnPantallaSoloSiLoPidenLosAjustes) {
    const auto carpeta = std::filesystem::temp_directory_path() / ("tpv_visor_" + std::to_string(::getpid()));
    std::filesystem::create_directories(carpeta);
    ::setenv("TPV_SUITE_CONF", (carpeta / "suite.conf").c_str(), 1);
    for (const char* valor : {"", "NO", "SI", "si"}) {
        SuiteSettings::Instancia().Recargar();
        SuiteSettings::Instancia().Escribir("visor_en_pantalla", valor);
        const auto visor = ui::InstalarVisorEnPantalla();
        const bool pedido = std::string(valor) == "SI" || std::string(valor) == "si";
        EXPECT_EQ(visor != nullptr, pedido) << valor;
        if (visor) {
            EXPECT_EQ(&VisorDelPuesto(), visor.get());
        }
    }
    ::unsetenv("TPV_SUITE_CONF");
    SuiteSettings::Instancia().Recargar();
    std::filesystem::remove_all(carpeta);
}

}  // namespace
}  // namespace tpv
