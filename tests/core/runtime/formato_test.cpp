#include "core/runtime/formato.hpp"

#include <gtest/gtest.h>

#include "core/runtime/fecha.hpp"

namespace tpv {
namespace {

DateTime Momento(int anio, int mes, int dia, int hora = 0, int minuto = 0, int segundo = 0) {
    return DateTime{fecha::DesdeFecha(anio, mes, dia).serial + fecha::DesdeHora(hora, minuto, segundo).serial};
}

TEST(RuntimeFormato, Format_FechasYHoras) {
    const DateTime d = Momento(2026, 3, 5, 8, 7, 9);  // a Thursday
    const struct {
        const char* patron;
        const char* esperado;
    } casos[] = {
        {"dd/mm/yyyy", "05/03/2026"},
        {"mm/dd/yyyy", "03/05/2026"},
        {"d/m/yyyy", "5/3/2026"},
        {"hh:mm", "08:07"},
        {"hh:mm:ss", "08:07:09"},
        {"h:m:s", "8:7:9"},
        {"hh:nn", "08:07"},
        {"yyyy", "2026"},
        {"yy", "26"},
        {"dd", "05"},
        {"mm", "03"},
        {"mmm", "mar"},
        {"mmmm", "marzo"},
        {"dddd", "jueves"},
        {"ddd d \\de mmmm", "jue 5 de marzo"},
        {"\"Día\" dd", "Día 05"},
        {"yyyymmdd", "20260305"},
        {"q", "1"},
        {"w", "5"},
        {"y", "64"},
        {"hh:mm AM/PM", "08:07 AM"},
        {"Short Date", "05/03/2026"},
        {"Long Date", "jueves, 5 de marzo de 2026"},
        {"Short Time", "08:07"},
        {"Long Time", "08:07:09"},
        {"General Date", "05/03/2026 08:07:09"},
    };
    for (const auto& c : casos) EXPECT_EQ(Format(Value(d), c.patron), c.esperado) << c.patron;
    EXPECT_EQ(Format(Value(Momento(2026, 3, 5, 15, 30)), "h:mm am/pm"), "3:30 pm");
    EXPECT_EQ(Format(Value(Momento(2026, 1, 1)), "ww"), "1");
    EXPECT_EQ(Format(Value(Momento(2026, 1, 4)), "ww"), "2");  // 04/01/2026 is a Sunday
}

TEST(RuntimeFormato, Format_FechaDesdeTextoONumero) {
    EXPECT_EQ(Format("15/11/2026", "mm/dd/yyyy"), "11/15/2026");
    EXPECT_EQ(Format(Value(46000.5), "dd/mm/yyyy hh:mm"), "09/12/2025 12:00");
    EXPECT_EQ(Format("no es fecha", "dd/mm/yyyy"), "no es fecha");
}

TEST(RuntimeFormato, Format_PatronesNumericosConComaRegional) {
    const struct {
        double x;
        const char* patron;
        const char* esperado;
    } casos[] = {
        {1234.5, "#,##0.00", "1.234,50"},
        {1234567.891, "#,##0.00", "1.234.567,89"},
        {0.5, "#,##0.00", "0,50"},
        {-1234.5, "#,##0.00", "-1.234,50"},
        {2.675, "0.00", "2,68"},
        {12, "0.00", "12,00"},
        {-5, "0.00", "-5,00"},
        {-0.001, "0.00", "-0,00"},
        {2.5, "0", "3"},
        {42, "00000", "00042"},
        {123456, "00000", "123456"},
        {0, "#", ""},
        {0.5, "#.00", ",50"},
        {1, "0.##", "1,"},
        {1.5, "0.##", "1,5"},
        {1.256, "0.0#", "1,26"},
        {0.125, "0%", "13%"},
        {0.5, "0.00%", "50,00%"},
        {1234567, "#,##0,", "1.235"},
        {12345, "0.00E+00", "1,23E+04"},
        {0.00012, "0.0E-00", "1,2E-04"},
        {9.999, "0.00E+00", "1,00E+01"},
        {5, "\"Total: \"0.00", "Total: 5,00"},
        {1234, "00-00", "12-34"},
        {-3, "0;(0)", "(3)"},
        {0, "0.00;-0.00;\"cero\"", "cero"},
        {7, "0.00;;\"cero\"", "7,00"},
        {1234.5, "Standard", "1.234,50"},
        {1234.5, "Fixed", "1234,50"},
        {1234.5, "Currency", "1.234,50 €"},
        {0.25, "Percent", "25,00%"},
        {12.5, "General Number", "12,5"},
    };
    for (const auto& c : casos) EXPECT_EQ(Format(Value(c.x), c.patron), c.esperado) << c.x << " " << c.patron;
}

TEST(RuntimeFormato, Format_SinPatronYTextos) {
    EXPECT_EQ(Format(Value()), "");
    EXPECT_EQ(Format(Value(), "0.00"), "");
    EXPECT_EQ(Format(Value(12.5)), "12,5");
    EXPECT_EQ(Format("12,5", "0.00"), "12,50");
    EXPECT_EQ(Format("abc", "0.00"), "abc");
    EXPECT_EQ(Format(Value(7), "00"), "07");
}

}  // namespace
}  // namespace tpv
