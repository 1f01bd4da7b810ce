#include "core/servicios/formulario.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/runtime/conversiones.hpp"
#include "tests/core/runtime/error_esperado.hpp"

namespace tpv {
namespace {

std::vector<std::string> Columna(const Grid& g, long c) {
    std::vector<std::string> v;
    for (long r = 0; r < g.Rows(); ++r) v.push_back(g.TextMatrix(r, c));
    return v;
}

TEST(Grid, FilasColumnasYCeldasComoElControl) {
    Grid g;
    EXPECT_EQ(g.Rows(), 2);
    EXPECT_EQ(g.Cols(), 2);
    EXPECT_EQ(g.FixedRows(), 1);
    EXPECT_EQ(g.Row(), 1);
    g.SetCols(17);
    g.SetRows(4);
    // Numbers live as the runtime's text and come back as it reads them.
    g.SetTextMatrix(3, 10, CStr(12.1));
    g.SetTextMatrix(2, 9, CStr(1.0 / 3));
    EXPECT_EQ(g.TextMatrix(3, 10), "12,1");
    EXPECT_EQ(g.TextMatrix(2, 9), "0,333333333333333");
    EXPECT_EQ(CDbl(g.TextMatrix(3, 10)), 12.1);
    EXPECT_EQ(g.TextMatrix(1, 16), "");

    // Shrinking loses cells; growing again gives empty ones, the colour too.
    g.SetCellBackColor(3, 0, 0x00FFFF);
    g.SetRow(3);
    g.SetRows(3);
    EXPECT_EQ(g.Row(), 2);
    g.SetRows(4);
    EXPECT_EQ(g.TextMatrix(3, 10), "");
    EXPECT_EQ(g.CellBackColor(3, 0), 0);

    // The current cell.
    g.SetRow(2);
    g.SetCol(9);
    EXPECT_EQ(g.Text(), "0,333333333333333");
    g.SetCellBackColor(0xABCDEF);
    EXPECT_EQ(g.CellBackColor(2, 9), 0xABCDEF);
    g.SetTopRow(3);
    EXPECT_EQ(g.TopRow(), 3);

    struct {
        std::function<void()> f;
        long numero;
    } fuera[] = {
        {[&] { (void)g.TextMatrix(4, 0); }, kErrFilaNoValida},
        {[&] { (void)g.TextMatrix(-1, 0); }, kErrFilaNoValida},
        {[&] { g.SetTextMatrix(0, 17, "x"); }, kErrColumnaNoValida},
        {[&] { g.SetRow(4); }, kErrFilaNoValida},
        {[&] { g.SetCol(-1); }, kErrColumnaNoValida},
        {[&] { g.SetRows(0); }, kErrFilaNoValida},
        {[&] { g.RemoveItem(0); }, kErrFilaNoValida},
    };
    for (auto& caso : fuera) EXPECT_EQ(prueba::ErrorDe(caso.f).numero, caso.numero);
}

TEST(Grid, AddItemYRemoveItemMuevenTextosYColores) {
    Grid g(2, 3);
    g.SetTextMatrix(1, 0, "uno");
    g.AddItem("dos\tD\t2");
    g.AddItem("cero\tC", 1);
    g.AddItem("sobra\t\t\t\tmás allá de las columnas");
    EXPECT_EQ(Columna(g, 0), (std::vector<std::string>{"", "cero", "uno", "dos", "sobra"}));
    EXPECT_EQ(Columna(g, 2), (std::vector<std::string>{"", "", "", "2", ""}));
    g.SetCellBackColor(3, 1, 0xFF);
    g.RemoveItem(2);
    EXPECT_EQ(Columna(g, 0), (std::vector<std::string>{"", "cero", "dos", "sobra"}));
    EXPECT_EQ(g.CellBackColor(2, 1), 0xFF);
    g.RemoveItem(1);
    g.RemoveItem(2);
    EXPECT_EQ(g.Rows(), 2);
    // The last data row stays: the control refuses to take it.
    EXPECT_EQ(prueba::ErrorDe([&] { g.RemoveItem(1); }).numero, kErrQuitarUltimaFila);
    EXPECT_EQ(prueba::ErrorDe([&] { g.AddItem("x", 5); }).numero, kErrFilaNoValida);
    g.Clear();
    EXPECT_EQ(g.TextMatrix(1, 0), "");
    EXPECT_EQ(g.CellBackColor(1, 1), 0xFF);
}

TEST(TextBox, CadaAsignacionLanzaChangeEnElActo) {
    TextBox caja("inicial", 2, 1);
    std::vector<std::string> vistos;
    caja.Change = [&] { vistos.push_back(caja.Text()); };
    caja.SetText("12,5");
    caja.SetText("12,5");  // the same text raises it again
    caja.SetText("");
    EXPECT_EQ(vistos, (std::vector<std::string>{"12,5", "12,5", ""}));
    EXPECT_EQ(caja.selStart, 2);

    // A handler that assigns its own box ends in the runtime's stack error, not a crash.
    TextBox eco;
    eco.Change = [&] { eco.SetText(eco.Text() + "x"); };
    EXPECT_EQ(prueba::ErrorDe([&] { eco.SetText(""); }).numero, kErrPilaInsuficiente);
    eco.Change = nullptr;
    eco.SetText("ok");
    EXPECT_EQ(eco.Text(), "ok");
}

}  // namespace
}  // namespace tpv
