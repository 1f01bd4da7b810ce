#include <gtest/gtest.h>

#include "core/servicios/caption_translator.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/screen_fitter.hpp"
#include "core/servicios/screen_rights.hpp"
#include "core/servicios/zoom_panel.hpp"
#include "tests/core/servicios/entorno_prueba.hpp"
#include "tests/support/base_prueba.hpp"

namespace tpv {
namespace {

Control Nuevo(const char* nombre, const char* tipo, const char* caption = "") {
    Control c;
    c.nombre = nombre;
    c.tipo = tipo;
    c.caption = caption;
    return c;
}

Formulario Caja() {
    Formulario f;
    f.nombre = "frmCaja";
    f.caption = "Caja";
    f.width = 15360;
    f.height = 11520;
    Control& txt = f.Anadir(Nuevo("txtcod", "TextBox"));
    txt.left = 100;
    txt.top = 200;
    txt.width = 1000;
    txt.height = 300;
    txt.fontSize = 10;
    f.Anadir(Nuevo("cmdTerminarVenta", "CommandButton", "Terminar Venta")).fontSize = 12;
    f.Anadir(Nuevo("lblHora", "Label", "Hora"));
    f.Anadir(Nuevo("PanelVentas", "ButtonMatrix")).backColor = 123;
    return f;
}

TEST(ColourScheme, ColoresComoTextoDecimalYPantallaPintadaPorTipo) {
    Connection cn;
    ColourScheme cs;
    for (int esquema = 0; esquema < ColourScheme::kNumEsquemas; ++esquema) {
        std::string tarifa = cs.ColoresTarifaGeneral(cn, esquema);
        ASSERT_NE(tarifa.find('|'), std::string::npos);
        for (const std::string& color : {cs.Color1(cn, esquema), cs.Color4(cn, esquema), cs.ColorFoco(cn, esquema),
                                         tarifa.substr(tarifa.find('|') + 1)}) {
            long n = std::stol(color);
            EXPECT_EQ(std::to_string(n), color);
            EXPECT_TRUE(n >= 0 && n <= 0xFFFFFF) << color;
        }
    }
    EXPECT_EQ(cs.Color2(cn, 7), cs.Color2(cn, 0));  // an unknown scheme is the first

    Formulario f = Caja();
    cs.Colorear(f, 3, cn);
    EXPECT_EQ(f.Buscar("lblhora")->backColor, f.backColor);
    EXPECT_NE(f.Buscar("txtcod")->backColor, f.backColor);
    EXPECT_EQ(f.Buscar("PanelVentas")->backColor, 123);  // panels keep their own
}

TEST(ScreenFitter, EscalaCadaEjeYLasLetrasPorElMenor) {
    Connection cn;
    Formulario f = Caja();
    ScreenFitter& sf = ScreenFitter::Instancia();
    sf.Ajustar(cn, f, 19200, 10800, 15360, 11520);
    EXPECT_DOUBLE_EQ(sf.FactorAncho(), 1.25);
    EXPECT_DOUBLE_EQ(sf.FactorAlto(), 0.9375);
    const Control& t = *f.Buscar("txtcod");
    EXPECT_DOUBLE_EQ(t.left, 125);
    EXPECT_DOUBLE_EQ(t.width, 1250);
    EXPECT_DOUBLE_EQ(t.top, 187.5);
    EXPECT_DOUBLE_EQ(t.fontSize, 9.375);
    EXPECT_DOUBLE_EQ(f.width, 19200);
    sf.Ajustar(cn, f, 19200, 10800, 0, 0);
    EXPECT_EQ(sf.FactorAncho(), 1.0);
}

TEST(ZoomPanel, AgrandaLasLetrasUnaSolaVezYLasDevuelve) {
    Connection cn;
    Formulario f = Caja();
    ZoomPanel& zp = ZoomPanel::Instancia();
    zp.Aplicar(cn, f, true);
    zp.Aplicar(cn, f, true);
    EXPECT_DOUBLE_EQ(f.Buscar("cmdTerminarVenta")->fontSize, 15);
    zp.Aplicar(cn, f, false);
    EXPECT_DOUBLE_EQ(f.Buscar("cmdTerminarVenta")->fontSize, 12);
}

class PantallaBaseTest : public prueba::BaseDeDatosTest {};

TEST_P(PantallaBaseTest, CaptionsGeneradosYTraducidos) {
    prueba::AjustesTemporales ajustes("idioma=ca\n");
    Formulario f = Caja();
    f.Buscar("lblHora")->caption = "Hora d'inici";
    CaptionTranslator& ct = CaptionTranslator::Instancia();
    ct.GenerarCaptions(cn, f);
    ct.GenerarCaptions(cn, f);  // written again, not twice
    EXPECT_EQ(Valor("select count(*) from traducciones where idioma = 'es' and pantalla = 'frmCaja'"), Value(3));
    EXPECT_EQ(Valor("select texto from traducciones where control = 'lblHora'"), Value("Hora d'inici"));

    Ejecutar({"insert into traducciones values ('frmCaja', 'cmdTerminarVenta', 'ca', 'Acabar venda')",
              "insert into traducciones values ('frmCaja', 'frmCaja', 'ca', 'Caixa')",
              "insert into traducciones values ('frmCaja', 'noExiste', 'ca', 'x')",
              "insert into traducciones values ('frmOtra', 'lblHora', 'ca', 'Hora')"});
    ct.Traducir(cn, f);
    EXPECT_EQ(f.caption, "Caixa");
    EXPECT_EQ(f.Buscar("cmdTerminarVenta")->caption, "Acabar venda");
    EXPECT_EQ(f.Buscar("lblHora")->caption, "Hora d'inici");

    prueba::AjustesTemporales espanol("idioma=es\n");
    Formulario g = Caja();
    ct.Traducir(cn, g);
    EXPECT_EQ(g.caption, "Caja");
}

TEST_P(PantallaBaseTest, PermisosDelEmpleadoDelTerminal) {
    Ejecutar({"insert into permisos_pantalla values ('frmCaja', 'cmdTerminarVenta', 4, 0, Null)",
              "insert into permisos_pantalla values ('frmCaja', 'txtCod', 4, Null, 0)",
              "insert into permisos_pantalla values ('frmCaja', 'lblHora', -1, 0, 0)"});
    Formulario f = Caja();
    ScreenRights::Instancia().Aplicar(cn, f, 4);
    EXPECT_FALSE(f.Buscar("cmdTerminarVenta")->visible);
    EXPECT_TRUE(f.Buscar("cmdTerminarVenta")->enabled);
    EXPECT_TRUE(f.Buscar("txtcod")->visible);
    EXPECT_FALSE(f.Buscar("txtcod")->enabled);
    EXPECT_TRUE(f.Buscar("lblHora")->visible);
    Formulario g = Caja();
    ScreenRights::Instancia().Aplicar(cn, g, -1);
    EXPECT_FALSE(g.Buscar("lblHora")->visible);
    EXPECT_TRUE(g.Buscar("cmdTerminarVenta")->visible);
}

TPV_EN_CADA_MOTOR(PantallaBaseTest);

}  // namespace
}  // namespace tpv
