#include <gtest/gtest.h>

#include "core/servicios/grid_formatter.hpp"
#include "core/servicios/key_filter.hpp"
#include "core/servicios/tax_calculator.hpp"
#include "tests/core/runtime/error_esperado.hpp"

namespace tpv {
namespace {

TEST(TaxCalculator, ImpuestoDentroOFueraDelImporte) {
    const TaxCalculator& tc = TaxCalculator::Instancia();
    // Prices with tax: the part of 121 that is 21 % tax; net prices: the tax to add.
    EXPECT_NEAR(tc.CalcularImpuesto(121, 21, true), 21.0, 1e-12);
    EXPECT_NEAR(tc.CalcularImpuesto(100, 21, false), 21.0, 1e-12);
    EXPECT_NEAR(tc.CalcularImpuesto(-12.1, 10, true), -1.1, 1e-12);  // refunds keep the sign
    EXPECT_EQ(tc.CalcularImpuesto(50, 0, true), 0.0);
    // Not rounded: the callers format.
    EXPECT_NEAR(tc.CalcularImpuesto(1, 21, true), 1.0 - 1.0 / 1.21, 1e-15);
    EXPECT_EQ(tc.CalcularPvp(121, 21, true, 0, 0), 121.0);
    EXPECT_EQ(tc.CalcularPvp(100, 21, false, 0, 0), 121.0);
}

int Filtrar(int tecla, const std::string& texto, long selStart, long selLength, int decimales) {
    return KeyFilter::Instancia().FiltrarTecla(tecla, TextBox{texto, selStart, selLength}, decimales);
}

TEST(KeyFilter, DigitosUnSeparadorYLosDecimalesPermitidos) {
    EXPECT_EQ(KeyFilter::Instancia().SeparadorDecimal(), ",");
    struct Caso {
        int tecla;
        const char* texto;
        long selStart, selLength;
        int decimales, esperado;
    } casos[] = {
        {'5', "", 0, 0, 2, '5'},      {'a', "12", 2, 0, 2, 0},        {'-', "12", 2, 0, 2, 0},
        {13, "12", 2, 0, 2, 0},       {8, "12,50", 5, 0, 2, 8},        // backspace always passes
        {',', "12", 2, 0, 2, ','},    {'.', "12", 2, 0, 2, ','},       // the pad's "." is the separator
        {',', "12,5", 4, 0, 2, 0},                                     // only one
        {',', "12", 2, 0, 0, 0},                                       // whole numbers only
        {',', "12345", 1, 0, 2, 0},                                    // would leave four decimals
        {',', "12345", 3, 0, 2, ','}, {',', "12,5", 2, 2, 2, ','},     // the selection with its comma goes
        {',', "", 0, 0, 2, 0},        {'.', "12,5", 0, 4, 2, 0},       // no figure before it: the entry stays empty
        {',', "12", 0, 0, 2, 0},                                       // nor a leading separator
        {'7', "12,50", 5, 0, 2, 0},                                    // two decimals already
        {'7', "12,5", 4, 0, 2, '7'},  {'7', "12,50", 1, 0, 2, '7'},    // before the comma there is room
        {'7', "12,50", 4, 1, 2, '7'},                                  // replaces a decimal
        {'7', "12,500", 6, 0, 3, 0},  {'7', "1.234,5", 7, 0, 2, '7'},  // the dot of thousands is no separator
        {'7', "12,5", 99, 0, 2, '7'},                                  // a caret past the end is at the end
    };
    for (const Caso& c : casos)
        EXPECT_EQ(Filtrar(c.tecla, c.texto, c.selStart, c.selLength, c.decimales), c.esperado)
            << "tecla " << c.tecla << " en '" << c.texto << "' @" << c.selStart << "+" << c.selLength;
}

TEST(KeyFilter, TecladoEnPantalla_BorraSiTodoEstaSeleccionadoYAnadeAlFinal) {
    const KeyFilter& kf = KeyFilter::Instancia();
    TextBox caja{"25,00", 0, 5};
    kf.PulsarTeclaPad(caja, '7', 2);
    EXPECT_EQ(caja.Text(), "7");
    for (int t : {'.', '5', '0', '9', ','}) kf.PulsarTeclaPad(caja, t, 2);
    EXPECT_EQ(caja.Text(), "7,50");
    EXPECT_EQ(caja.selStart, 4);
    // The caret at the start doesn't matter: the pad writes at the end.
    caja.selStart = 0;
    kf.PulsarTeclaPad(caja, '1', 2);
    EXPECT_EQ(caja.Text(), "7,50");
    kf.PulsarTeclaPad(caja, 8, 2);
    EXPECT_EQ(caja.Text(), "7,5");
    // All selected: the separator clears the entry and is swallowed.
    caja.selStart = 0;
    caja.selLength = 3;
    kf.PulsarTeclaPad(caja, ',', 2);
    EXPECT_EQ(caja.Text(), "");
}

TEST(GridFormatter, TitulosAnchosYAlineaciones) {
    Grid g(3, 1);
    g.SetTextMatrix(2, 0, "b");
    GridFormatter().Formatear(g, "Detalle de Venta;Precio;;Cod.",
                              "2600/izquierda;800/Centrado;0/Izquierda;1723,5/DERECHA;");
    ASSERT_EQ(g.Cols(), 4);
    EXPECT_EQ(g.TextMatrix(0, 0), "Detalle de Venta");
    EXPECT_EQ(g.ColWidth(0), 2600);
    EXPECT_EQ(g.ColAlignment(0), Alineacion::Izquierda);
    EXPECT_EQ(g.ColAlignment(1), Alineacion::Centro);
    EXPECT_EQ(g.TextMatrix(0, 2), "");
    EXPECT_EQ(g.ColWidth(2), 0);  // hidden
    EXPECT_EQ(g.ColWidth(3), 1723.5);
    EXPECT_EQ(g.ColAlignment(3), Alineacion::Derecha);
    EXPECT_EQ(g.Rows(), 3);
    EXPECT_EQ(g.TextMatrix(2, 0), "b");
    EXPECT_EQ(g.TextMatrix(2, 3), "");

    // More titles than formats: the extra columns are there, with a title.
    Grid h;
    GridFormatter::Instancia().Formatear(h, "A;B;C", "100/derecha");
    ASSERT_EQ(h.Cols(), 3);
    EXPECT_EQ(h.TextMatrix(0, 2), "C");
    EXPECT_EQ(prueba::ErrorDe([&] { GridFormatter().Formatear(h, "A", "ancho/derecha"); }).numero, kErrTypeMismatch);
}

}  // namespace
}  // namespace tpv
