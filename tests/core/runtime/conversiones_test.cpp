#include "core/runtime/conversiones.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "core/runtime/fecha.hpp"
#include "tests/core/runtime/error_esperado.hpp"

namespace tpv {
namespace {

using prueba::ErrorDe;

TEST(RuntimeConversiones, Val_LeeElNumeroInicialConPunto) {
    const struct {
        const char* texto;
        double esperado;
    } casos[] = {
        {"40,50", 40},       {"  12.5abc", 12.5}, {"", 0},         {"abc", 0},       {"1 2 3", 123},
        {"\t-3.25", -3.25},  {"- 5", -5},         {".5", 0.5},     {"1.2.3", 1.2},   {"1e3", 1000},
        {"2D2", 200},        {"1e", 1},           {"&H1F", 31},    {"&HFFFF", -1},   {"&O17", 15},
        {"+7", 7},           {"--5", 0},          {"12,5E3", 12},  {"0.1", 0.1},
    };
    for (const auto& c : casos) EXPECT_EQ(Val(c.texto), c.esperado) << c.texto;
    EXPECT_EQ(ErrorDe([] { Val("1e999"); }).numero, kErrOverflow);
}

TEST(RuntimeConversiones, CDbl_LeeLaFormaRegional) {
    const struct {
        const char* texto;
        double esperado;
    } casos[] = {
        {"12,5", 12.5},       {"1.234,5", 1234.5}, {"  -3,25 ", -3.25}, {"1.2.3", 123},  {"12.5", 125},
        {"1,5E3", 1500},      {"1,5e-2", 0.015},   {"+7", 7},           {"7-", -7},      {"(3,5)", -3.5},
        {"12,50 €", 12.5},    {"€12", 12},         {"&HFF", 255},       {"0,1", 0.1},    {"1,", 1},
    };
    for (const auto& c : casos) EXPECT_EQ(CDbl(c.texto), c.esperado) << c.texto;
    EXPECT_EQ(CDbl(Value(7)), 7.0);
    EXPECT_EQ(CDbl(Value(true)), -1.0);
    EXPECT_EQ(CDbl(Value(DateTime{2.5})), 2.5);
}

TEST(RuntimeConversiones, CDbl_TextoQueNoEsNumeroEsErrorDeTipos) {
    for (const char* texto : {"", "  ", "abc", "12,5,3", "12,5.3", "1,5E", "--3", ".5", "12 34", "15/11/2026", "&Hxyz"}) {
        auto e = ErrorDe([&] { CDbl(texto); });
        EXPECT_EQ(e.numero, kErrTypeMismatch) << texto;
        EXPECT_EQ(e.mensaje, "No coinciden los tipos") << texto;
        EXPECT_FALSE(IsNumeric(texto)) << texto;
    }
    auto nulo = ErrorDe([] { CDbl(Value()); });
    EXPECT_EQ(nulo.numero, kErrInvalidUse);
    EXPECT_EQ(nulo.mensaje, "Uso no válido de Null");
    auto grande = ErrorDe([] { CDbl("1E400"); });
    EXPECT_EQ(grande.numero, kErrOverflow);
    EXPECT_EQ(grande.mensaje, "Desbordamiento");
}

TEST(RuntimeConversiones, IsNumeric_SigueLaFormaRegional) {
    EXPECT_TRUE(IsNumeric("1.234,50"));
    EXPECT_TRUE(IsNumeric(" -0,5 "));
    EXPECT_TRUE(IsNumeric(Value(3.5)));
    EXPECT_FALSE(IsNumeric(Value()));
    EXPECT_FALSE(IsNumeric(Value(DateTime{45000})));
    EXPECT_FALSE(IsNumeric("1E400"));
}

TEST(RuntimeConversiones, CIntYCLng_RedondeanMitadesAlPar) {
    const struct {
        double x;
        int esperado;
    } casos[] = {{2.5, 2}, {3.5, 4}, {-2.5, -2}, {-3.5, -4}, {0.5, 0}, {1.5, 2}, {2.5000001, 3}, {-0.4, 0}, {32767.4, 32767}};
    for (const auto& c : casos) {
        EXPECT_EQ(CInt(c.x), c.esperado) << c.x;
        EXPECT_EQ(CLng(c.x), c.esperado) << c.x;
    }
    EXPECT_EQ(CInt("2,5"), 2);
    EXPECT_EQ(CLng("1.234,5"), 1234);
    EXPECT_EQ(CInt(Value(true)), -1);
}

TEST(RuntimeConversiones, CIntYCLng_FueraDeRangoEsDesbordamiento) {
    EXPECT_EQ(CInt(-32768.5), -32768);
    EXPECT_EQ(CLng(2147483647.4), 2147483647);
    for (double x : {32767.5, -32768.6, 40000.0}) EXPECT_EQ(ErrorDe([&] { CInt(x); }).numero, kErrOverflow) << x;
    for (double x : {2147483647.5, -2147483649.0, 1e12}) EXPECT_EQ(ErrorDe([&] { CLng(x); }).numero, kErrOverflow) << x;
    EXPECT_EQ(ErrorDe([] { CLng(Value(static_cast<long long>(3000000000))); }).numero, kErrOverflow);
    EXPECT_EQ(ErrorDe([] { CInt("32768"); }).numero, kErrOverflow);
    EXPECT_EQ(ErrorDe([] { CInt(""); }).numero, kErrTypeMismatch);
    EXPECT_EQ(ErrorDe([] { CLng(Value()); }).numero, kErrInvalidUse);
}

TEST(RuntimeConversiones, CBool_NumerosYPalabras) {
    EXPECT_TRUE(CBool(Value(-1)));
    EXPECT_TRUE(CBool(Value(0.1)));
    EXPECT_FALSE(CBool(Value(0)));
    EXPECT_TRUE(CBool("Verdadero"));
    EXPECT_TRUE(CBool(" true "));
    EXPECT_FALSE(CBool("FALSO"));
    EXPECT_TRUE(CBool("2,5"));
    EXPECT_FALSE(CBool("0,0"));
    EXPECT_EQ(ErrorDe([] { CBool("SI"); }).numero, kErrTypeMismatch);
    EXPECT_EQ(ErrorDe([] { CBool(Value()); }).numero, kErrInvalidUse);
}

TEST(RuntimeConversiones, CStr_EscribeElDoubleComoElRuntime) {
    const struct {
        double x;
        const char* esperado;
    } casos[] = {
        {12.1, "12,1"},
        {1.0 / 3, "0,333333333333333"},
        {2.0 / 3, "0,666666666666667"},
        {-0.5, "-0,5"},
        {0.1 + 0.2, "0,3"},
        {100, "100"},
        {0, "0"},
        {-0.0, "0"},
        {1e15, "1E+15"},
        {123456789012345.0, "123456789012345"},
        {1234567890123456.0, "1,23456789012346E+15"},
        {999999999999999.9, "1E+15"},
        {0.0001, "0,0001"},
        {0.00001, "1E-05"},
        {-1.5e-7, "-1,5E-07"},
        {1e100, "1E+100"},
        {36.3, "36,3"},
    };
    for (const auto& c : casos) EXPECT_EQ(CStr(c.x), c.esperado) << c.x;
    EXPECT_EQ(CStr(Value(42)), "42");
    EXPECT_EQ(CStr(Value(true)), "-1");
    EXPECT_EQ(CStr("texto"), "texto");
    EXPECT_EQ(ErrorDe([] { CStr(Value()); }).numero, kErrInvalidUse);
}

TEST(RuntimeConversiones, CStr_FechaSegunTengaDiaYHora) {
    DateTime dia = fecha::DesdeFecha(2026, 11, 15);
    DateTime conHora{dia.serial + fecha::DesdeHora(8, 12, 40).serial};
    EXPECT_EQ(CStr(Value(dia)), "15/11/2026");
    EXPECT_EQ(CStr(Value(conHora)), "15/11/2026 08:12:40");
    EXPECT_EQ(CStr(Value(fecha::DesdeHora(8, 12, 40))), "08:12:40");
    EXPECT_EQ(CStr(Value(DateTime{0})), "00:00:00");
    // Texto is what joining to a text gives: CStr, with Null as "".
    EXPECT_EQ(Texto(Value(dia)), "15/11/2026");
    EXPECT_EQ(Texto(Value()), "");
    EXPECT_EQ(Texto(12.5), "12,5");
    EXPECT_EQ(Texto(Value(-3)), "-3");
    EXPECT_EQ(Texto("abc"), "abc");
}

TEST(RuntimeConversiones, Str_LlevaPuntoYBlancoDelante) {
    EXPECT_EQ(Str(12.5), " 12.5");
    EXPECT_EQ(Str(0.5), " .5");
    EXPECT_EQ(Str(-0.5), "-.5");
    EXPECT_EQ(Str(-3), "-3");
    EXPECT_EQ(Str(0), " 0");
    EXPECT_EQ(Str(1e16), " 1E+16");
}

TEST(RuntimeConversiones, CDate_LeeElDiaPrimero) {
    const struct {
        const char* texto;
        int anio, mes, dia, hora, minuto, segundo;
    } casos[] = {
        {"15/11/2026", 2026, 11, 15, 0, 0, 0},
        {"01/02/2026", 2026, 2, 1, 0, 0, 0},
        {"1/2/26", 2026, 2, 1, 0, 0, 0},
        {"1-2-1999", 1999, 2, 1, 0, 0, 0},
        {"31/12/45", 1945, 12, 31, 0, 0, 0},
        {" 15/11/2026 08:12:40 ", 2026, 11, 15, 8, 12, 40},
        {"15/11/2026 8:05", 2026, 11, 15, 8, 5, 0},
        {"12/25/2020", 2020, 12, 25, 0, 0, 0},  // only month first makes a date
        {"2026-11-15", 2026, 11, 15, 0, 0, 0},
        {"29/02/2024", 2024, 2, 29, 0, 0, 0},
        {"11/2026", 2026, 11, 1, 0, 0, 0},
    };
    for (const auto& c : casos) {
        fecha::Partes p = fecha::Descomponer(CDate(c.texto));
        EXPECT_EQ((std::array{p.anio, p.mes, p.dia, p.hora, p.minuto, p.segundo}),
                  (std::array{c.anio, c.mes, c.dia, c.hora, c.minuto, c.segundo}))
            << c.texto;
        EXPECT_TRUE(IsDate(c.texto)) << c.texto;
    }
    EXPECT_EQ(CDate("08:12:40"), fecha::DesdeHora(8, 12, 40));
    EXPECT_EQ(CDate("2:30 PM"), fecha::DesdeHora(14, 30, 0));
    EXPECT_EQ(CDate(Value(45000.5)).serial, 45000.5);
}

TEST(RuntimeConversiones, CDate_TextoQueNoEsFechaEsErrorDeTipos) {
    for (const char* texto : {"", "abc", "30/02/2026", "13/13/2026", "25:00", "12:60", "15/11/2026 x", "15/11-2026", "12,5"}) {
        EXPECT_EQ(ErrorDe([&] { CDate(texto); }).numero, kErrTypeMismatch) << texto;
        EXPECT_FALSE(IsDate(texto)) << texto;
    }
    EXPECT_EQ(ErrorDe([] { CDate(Value()); }).numero, kErrInvalidUse);
    EXPECT_EQ(ErrorDe([] { CDate(Value(1e9)); }).numero, kErrOverflow);
    EXPECT_FALSE(IsDate(Value(45000)));
    EXPECT_TRUE(IsDate(Value(DateTime{45000})));
}

TEST(RuntimeConversiones, FormatNumber_AgrupaYRedondeaMitadesHaciaFuera) {
    const struct {
        double x;
        int decimales;
        const char* esperado;
    } casos[] = {
        {1234.5, 2, "1.234,50"},
        {-1234.5, 2, "-1.234,50"},
        {0.5, 2, "0,50"},
        {0, 2, "0,00"},
        {2.675, 2, "2,68"},   // the decimal text, not the binary value just below
        {1.005, 2, "1,01"},
        {-2.5, 0, "-3"},
        {0.5, 0, "1"},
        {999.995, 2, "1.000,00"},
        {1234567.891, 1, "1.234.567,9"},
        {12.345, -1, "12,35"},  // the regional two decimals
        {0.145 * 3, 2, "0,44"}, // 0,43499999999999994 written with 15 digits is 0,435
        {-0.001, 2, "-0,00"},
        {123, 3, "123,000"},
    };
    for (const auto& c : casos) EXPECT_EQ(FormatNumber(c.x, c.decimales), c.esperado) << c.x << " " << c.decimales;
    EXPECT_EQ(FormatNumber("0,00", 2), "0,00");
    EXPECT_EQ(FormatNumber("1.234,5"), "1.234,50");
    EXPECT_EQ(ErrorDe([] { FormatNumber("abc", 2); }).numero, kErrTypeMismatch);
    EXPECT_EQ(ErrorDe([] { FormatNumber(Value(), 2); }).numero, kErrInvalidUse);
    EXPECT_EQ(ErrorDe([] { FormatNumber(1.0, -2); }).numero, kErrInvalidCall);
}

TEST(RuntimeConversiones, Fmt_RedondeaElTextoDecimalMitadesHaciaFuera) {
    const struct {
        double x;
        int decimales;
        double esperado;
    } casos[] = {
        {2.675, 2, 2.68},  {1.005, 2, 1.01},   {-2.675, 2, -2.68}, {2.5, 0, 3},        {-2.5, 0, -3},
        {36.3, 2, 36.3},   {10.0 * 1.21, 2, 12.1}, {0.125, 2, 0.13}, {1.23456, 3, 1.235}, {-0.001, 2, 0},
        {30.0 / 1.21, 2, 24.79}, {0.3335, 3, 0.334},
    };
    for (const auto& c : casos) EXPECT_EQ(Fmt(c.x, c.decimales), c.esperado) << c.x << " " << c.decimales;
    EXPECT_FALSE(std::signbit(Fmt(-0.001, 2)));

    const int antes = NumDecimales();
    FijarNumDecimales(3);
    EXPECT_EQ(Fmt(1.23456), 1.235);
    FijarNumDecimales(antes);
}

TEST(RuntimeConversiones, Round_MitadesAlParSobreElValorBinario) {
    const struct {
        double x;
        int decimales;
        double esperado;
    } casos[] = {
        {2.5, 0, 2},    {3.5, 0, 4},     {-2.5, 0, -2},     {0.125, 2, 0.12}, {0.375, 2, 0.38},
        {2.675, 2, 2.67}, {1.005, 2, 1}, {2.4, 0, 2},       {12.3456, 3, 12.346},
    };
    for (const auto& c : casos) EXPECT_EQ(Round(c.x, c.decimales), c.esperado) << c.x << " " << c.decimales;
    EXPECT_EQ(ErrorDe([] { Round(1.0, -1); }).numero, kErrInvalidCall);
}

TEST(RuntimeConversiones, IntBajaYFixTrunca) {
    EXPECT_EQ(Int(-2.5), -3);
    EXPECT_EQ(Fix(-2.5), -2);
    EXPECT_EQ(Int(2.5), 2);
}

}  // namespace
}  // namespace tpv
