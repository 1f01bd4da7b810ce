#include "core/servicios/field_list.hpp"

#include <gtest/gtest.h>

#include "core/runtime/fecha.hpp"
#include "core/servicios/valor_columna.hpp"
#include "tests/core/runtime/error_esperado.hpp"

namespace tpv {
namespace {

using datos::ColType;
using prueba::ErrorDe;

TEST(FieldList, LeePares_ElValorSeCortaEnElPrimerIgual) {
    auto pares =
        FieldList::Leer("Num_Factura=1203|codigo= 44 |unidades=1,5||Observacion=a=b|codMenu= |vacio=|ultimo=7");
    ASSERT_EQ(pares.size(), 7u);
    EXPECT_EQ(pares[0].nombre, "Num_Factura");
    EXPECT_EQ(pares[0].valor, "1203");
    EXPECT_EQ(pares[1].valor, " 44 ");  // values keep their blanks
    EXPECT_EQ(pares[3].nombre, "Observacion");
    EXPECT_EQ(pares[3].valor, "a=b");
    EXPECT_EQ(pares[4].valor, " ");
    EXPECT_EQ(pares[5].valor, "");
    EXPECT_EQ(pares[6].nombre, "ultimo");  // a last pair without "|" counts
    EXPECT_TRUE(FieldList::Leer("").empty());
}

TEST(FieldList, UnTextoConBarraRompeLaLista) {
    // "Observacion=a|b|": the "b" left over has no name and no value.
    auto e = ErrorDe([] { FieldList::Leer("Observacion=a|b|terminal=T1|"); });
    EXPECT_NE(e.mensaje.find("Lista de campos mal formada: 'b'"), std::string::npos) << e.mensaje;
    EXPECT_NE(ErrorDe([] { FieldList::Leer("=5|"); }).numero, 0);
}

TEST(FieldList, ParEscribeElValorComoAlUnirloAUnTexto) {
    EXPECT_EQ(FieldList::Par("unidades", Value(1.5)), "unidades=1,5|");
    EXPECT_EQ(FieldList::Par("cliente", Value()), "cliente=|");
    EXPECT_EQ(FieldList::Par("fecha", Value(fecha::DesdeFecha(2026, 2, 3))), "fecha=03/02/2026|");
}

class LiteralDeCampoTest : public ::testing::Test {
protected:
    LiteralDeCampoTest() {
        tabla.name = "productos";
        tabla.columns = {{"Codigo", ColType::Integer}, {"salida", ColType::Double}, {"Stock", ColType::Double},
                         {"nombre", ColType::Text},    {"borrar", ColType::Flag},   {"Fecha", ColType::Date},
                         {"Hora", ColType::Time}};
    }
    std::string Literal(const char* columna, const std::string& valor, bool admiteColumnas = true) {
        return LiteralDeCampo(tabla, *tabla.Find(columna), valor, admiteColumnas);
    }
    datos::TableInfo tabla;
};

TEST_F(LiteralDeCampoTest, NumerosRegionalesConComaDecimal) {
    const std::pair<const char*, const char*> casos[] = {
        {"1,5", "1.5"},
        {"-3", "-3"},
        {"1.234,5", "1234.5"},
        {"1.500", "1500"},
        {",5", "0.5"},
        {" 12 ", "12"},
        {"-0,00", "0"},
        {"1,5E-05", "1.5e-05"},
        {"", "NULL"},
        {"  ", "NULL"},
        // Not a regional number: a dot taken as decimal by the expression road.
        {"1.5", "1.5"},
        {"12.75", "12.75"},
    };
    for (auto [valor, esperado] : casos) EXPECT_EQ(Literal("Stock", valor), esperado) << valor;
    // Whole-number columns round halves to even, as the runtime's conversion.
    EXPECT_EQ(Literal("Codigo", "1203"), "1203");
    EXPECT_EQ(Literal("Codigo", "2,5"), "2");
    EXPECT_EQ(Literal("Codigo", "3,5"), "4");
    EXPECT_EQ(ErrorDe([&] { Literal("Codigo", "3000000000"); }).numero, kErrOverflow);
}

TEST_F(LiteralDeCampoTest, ExpresionesSobreColumnasPasanConPuntoDecimal) {
    EXPECT_EQ(Literal("salida", "Salida+2,5"), "[salida] + 2.5");
    EXPECT_EQ(Literal("salida", "Salida+-1,5"), "[salida] + - 1.5");
    EXPECT_EQ(Literal("salida", "salida--1"), "[salida] - - 1");  // never a "--" comment
    EXPECT_EQ(Literal("Stock", "(STOCK - salida) * 2 / 3"), "( [Stock] - [salida] ) * 2 / 3");
    EXPECT_EQ(Literal("Stock", "2*1,5", false), "2 * 1.5");
}

TEST_F(LiteralDeCampoTest, LoQueNoEsNumeroNiExpresionNoLlegaAlSql) {
    const char* malos[] = {"abc",         "Salida+",      "Salida;drop table productos",
                           "1,5,5",       "nombre+1",     "Salida+'x'",
                           "Salida+2,5)", "(Salida",      "1 234",
                           "Salida 2",    "borrar+1",     "2,5abc",
                           "1.234,5+1",   "Salida/*x*/+1"};
    for (const char* v : malos) EXPECT_EQ(ErrorDe([&] { Literal("Stock", v); }).numero, kErrTypeMismatch) << v;
    // A new row has no columns to compute with.
    EXPECT_EQ(ErrorDe([&] { Literal("Stock", "Salida+2,5", false); }).numero, kErrTypeMismatch);
    // Nesting is bounded.
    std::string hondo = std::string(200, '(') + "1" + std::string(200, ')');
    EXPECT_EQ(ErrorDe([&] { Literal("Stock", hondo); }).numero, kErrTypeMismatch);
    auto e = ErrorDe([&] { Literal("Stock", "abc"); });
    EXPECT_EQ(e.mensaje, "No coinciden los tipos: productos.Stock = 'abc'");
}

TEST_F(LiteralDeCampoTest, IndicadoresFechasHorasYTextos) {
    const std::tuple<const char*, const char*, const char*> casos[] = {
        {"borrar", "-1", "-1"},
        {"borrar", "0", "0"},
        {"borrar", "1", "-1"},
        {"borrar", "Verdadero", "-1"},
        {"borrar", "false", "0"},
        {"borrar", "", "NULL"},
        // Day first in the list, month first in the statement.
        {"Fecha", "03/02/2026", "#02/03/2026#"},
        {"Fecha", "1/1/2000", "#01/01/2000#"},
        {"Fecha", "15/11/2026 08:12:40", "#11/15/2026 08:12:40#"},
        {"Fecha", "08:12:40", "#08:12:40#"},
        {"Fecha", "", "NULL"},
        {"Hora", "08:12:40", "#08:12:40#"},
        {"Hora", "8:05", "#08:05:00#"},
        {"Hora", "15/11/2026 08:12:40", "#08:12:40#"},
        {"nombre", "O'Brien", "'O''Brien'"},
        {"nombre", "", "''"},
        {"nombre", "1,5", "'1,5'"},
    };
    for (auto [columna, valor, esperado] : casos)
        EXPECT_EQ(Literal(columna, valor), esperado) << columna << "=" << valor;
    for (auto [columna, valor] :
         {std::pair{"borrar", "SI"}, {"Fecha", "31/02/2026"}, {"Hora", "25:00"}, {"Fecha", "ayer"}})
        EXPECT_EQ(ErrorDe([&] { Literal(columna, valor); }).numero, kErrTypeMismatch) << columna << "=" << valor;
}

}  // namespace
}  // namespace tpv
