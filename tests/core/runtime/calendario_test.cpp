#include "core/runtime/calendario.hpp"

#include <gtest/gtest.h>

#include "core/runtime/conversiones.hpp"
#include "core/runtime/fecha.hpp"
#include "tests/core/runtime/error_esperado.hpp"

namespace tpv {
namespace {

using prueba::ErrorDe;

TEST(RuntimeCalendario, PartesDeUnaFecha) {
    const Value d = "05/03/2026 08:07:09";
    EXPECT_EQ(Day(d), 5);
    EXPECT_EQ(Month(d), 3);
    EXPECT_EQ(Year(d), 2026);
    EXPECT_EQ(Hour(d), 8);
    EXPECT_EQ(Minute(d), 7);
    EXPECT_EQ(Second(d), 9);
    EXPECT_EQ(Weekday(d), 5);     // Thursday, the week from Sunday
    EXPECT_EQ(Weekday(d, 2), 4);  // from Monday
    EXPECT_EQ(Weekday(Value(DateTime{0})), 7);  // 30/12/1899, a Saturday
    EXPECT_EQ(ErrorDe([] { Day(Value()); }).numero, kErrInvalidUse);
    EXPECT_EQ(DateValue(d), fecha::DesdeFecha(2026, 3, 5));
    EXPECT_EQ(TimeValue(d), fecha::DesdeHora(8, 7, 9));
}

TEST(RuntimeCalendario, DateSerial_LlevaMesesYDiasFueraDeRango) {
    const struct {
        int anio, mes, dia;
        const char* esperado;
    } casos[] = {
        {2026, 11, 15, "15/11/2026"}, {2026, 13, 1, "01/01/2027"}, {2026, 3, 0, "28/02/2026"},
        {2026, 0, 1, "01/12/2025"},   {2024, 2, 30, "01/03/2024"}, {26, 1, 1, "01/01/2026"},
        {45, 1, 1, "01/01/1945"},     {2026, -11, 1, "01/01/2025"}, {2026, 1, 32, "01/02/2026"},
    };
    for (const auto& c : casos) EXPECT_EQ(CStr(Value(DateSerial(c.anio, c.mes, c.dia))), c.esperado);
    EXPECT_EQ(ErrorDe([] { DateSerial(10000, 1, 1); }).numero, kErrInvalidCall);
    EXPECT_EQ(CStr(Value(TimeSerial(8, 90, 0))), "09:30:00");
}

TEST(RuntimeCalendario, DateAdd_PorIntervalo) {
    const struct {
        const char* intervalo;
        double n;
        const char* desde;
        const char* esperado;
    } casos[] = {
        {"d", 1, "31/12/2025", "01/01/2026"},
        {"d", -1, "01/03/2024", "29/02/2024"},
        {"d", 1.9, "01/01/2026", "02/01/2026"},
        {"m", 1, "31/01/2026", "28/02/2026"},
        {"m", 1, "31/01/2024", "29/02/2024"},
        {"M", -2, "15/01/2026 10:00:00", "15/11/2025 10:00:00"},
        {"yyyy", 1, "29/02/2024", "28/02/2025"},
        {"q", 1, "30/11/2026", "28/02/2027"},
        {"ww", 2, "01/01/2026", "15/01/2026"},
        {"h", 3, "01/01/2026 22:00:00", "02/01/2026 01:00:00"},
        {"n", 90, "01/01/2026", "01/01/2026 01:30:00"},
        {"s", -1, "01/01/2026", "31/12/2025 23:59:59"},
    };
    for (const auto& c : casos) EXPECT_EQ(CStr(Value(DateAdd(c.intervalo, c.n, c.desde))), c.esperado) << c.intervalo << c.desde;
    EXPECT_EQ(ErrorDe([] { DateAdd("x", 1, "01/01/2026"); }).numero, kErrInvalidCall);
}

TEST(RuntimeCalendario, DateDiff_CuentaLimitesCruzados) {
    const struct {
        const char* intervalo;
        const char* desde;
        const char* hasta;
        long long esperado;
    } casos[] = {
        {"d", "31/12/2025 23:59:00", "01/01/2026 00:01:00", 1},
        {"d", "01/01/2026 00:00:00", "01/01/2026 23:59:00", 0},
        {"d", "10/01/2026", "01/01/2026", -9},
        {"m", "31/01/2026", "01/02/2026", 1},
        {"yyyy", "31/12/2025", "01/01/2026", 1},
        {"q", "31/03/2026", "01/04/2026", 1},
        {"ww", "03/01/2026", "04/01/2026", 1},  // Saturday to Sunday
        {"w", "01/01/2026", "14/01/2026", 1},
        {"h", "01/01/2026 10:59:00", "01/01/2026 11:00:00", 1},
        {"n", "01/01/2026 10:00:59", "01/01/2026 10:01:00", 1},
        {"s", "01/01/2026", "01/01/2026 00:01:01", 61},
    };
    for (const auto& c : casos) EXPECT_EQ(DateDiff(c.intervalo, c.desde, c.hasta), c.esperado) << c.intervalo << c.desde;
}

}  // namespace
}  // namespace tpv
