#include "core/runtime/texto.hpp"

#include <gtest/gtest.h>

#include "tests/core/runtime/error_esperado.hpp"

namespace tpv {
namespace {

using prueba::ErrorDe;

TEST(RuntimeTexto, LenMidLeftRight_CuentanCaracteres) {
    EXPECT_EQ(Len("Ñandú"), 5);
    EXPECT_EQ(Len(""), 0);
    EXPECT_EQ(Len("a\xFF" "b"), 3);  // a stray byte counts as one character
    const struct {
        long inicio, longitud;
        const char* esperado;
    } mid[] = {{1, 3, "Ñan"}, {4, 2, "dú"}, {5, 10, "ú"}, {6, 1, ""}, {2, 0, ""}, {3, 2147483647, "ndú"}};
    for (const auto& c : mid) EXPECT_EQ(Mid("Ñandú", c.inicio, c.longitud), c.esperado) << c.inicio << "," << c.longitud;
    EXPECT_EQ(Mid("Ñandú", 3), "ndú");
    EXPECT_EQ(Mid("Ñandú", 9), "");
    EXPECT_EQ(Left("Ñandú", 2), "Ña");
    EXPECT_EQ(Left("Ñandú", 9), "Ñandú");
    EXPECT_EQ(Right("Ñandú", 2), "dú");
    EXPECT_EQ(Right("Ñandú", 9), "Ñandú");
    EXPECT_EQ(Mid("a\xFF" "b", 2, 1), "\xFF");  // bytes are kept as they came
}

TEST(RuntimeTexto, PosicionOLongitudNoValidaEsError5) {
    const std::function<void()> llamadas[] = {
        [] { Mid("abc", 0); },         [] { Mid("abc", 1, -1); }, [] { Left("abc", -1); },
        [] { Right("abc", -1); },      [] { InStr(0, "abc", "a"); }, [] { InStrRev("abc", "a", 0); },
        [] { Space(-1); },             [] { String(2, ""); },     [] { Asc(""); },
        [] { Chr(256); },              [] { Chr(-1); },           [] { Replace("abc", "a", "b", 0); },
        [] { Split("a b", " ", -2); }, [] { ChrW(70000); },
    };
    for (const auto& llamada : llamadas) {
        auto e = ErrorDe(llamada);
        EXPECT_EQ(e.numero, kErrInvalidCall);
        EXPECT_EQ(e.mensaje, "Argumento o llamada a procedimiento no válida");
    }
}

TEST(RuntimeTexto, InStr_PosicionEnCaracteres) {
    EXPECT_EQ(InStr("Ñandú y ñu", "ñu"), 9);
    EXPECT_EQ(InStr("Ñandú y ñu", "ÑU"), 0);
    EXPECT_EQ(InStr("Ñandú y ñu", "ÑU", CompareMethod::Text), 9);
    EXPECT_EQ(InStr(1, "abcabc", "c"), 3);
    EXPECT_EQ(InStr(4, "abcabc", "c"), 6);
    EXPECT_EQ(InStr(7, "abcabc", "c"), 0);
    EXPECT_EQ(InStr("abc", ""), 1);
    EXPECT_EQ(InStr(3, "abc", ""), 3);
    EXPECT_EQ(InStr("", ""), 0);
    EXPECT_EQ(InStr("abc", "abcd"), 0);
    EXPECT_EQ(InStrRev("a/b/c", "/"), 4);
    EXPECT_EQ(InStrRev("a/b/c", "/", 3), 2);
    EXPECT_EQ(InStrRev("Ñandú", "ú"), 5);
    EXPECT_EQ(InStrRev("abc", "x"), 0);
}

TEST(RuntimeTexto, TrimQuitaSoloBlancos) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(LTrim("  a "), "a ");
    EXPECT_EQ(RTrim("  a "), "  a");
    EXPECT_EQ(Trim("\ta\t"), "\ta\t");
    EXPECT_EQ(Trim("   "), "");
}

TEST(RuntimeTexto, Replace_EmpiezaEnInicioYCuentaVeces) {
    const struct {
        const char* texto;
        const char* buscado;
        const char* nuevo;
        long inicio, veces;
        CompareMethod comparacion;
        const char* esperado;
    } casos[] = {
        {"12.345,6", ".", "", 1, -1, CompareMethod::Binary, "12345,6"},
        {"1,5", ",", ".", 1, -1, CompareMethod::Binary, "1.5"},
        {"aaa", "a", "b", 1, 2, CompareMethod::Binary, "bba"},
        {"abcabc", "b", "X", 3, -1, CompareMethod::Binary, "caXc"},
        {"Año año", "AÑO", "x", 1, -1, CompareMethod::Text, "x x"},
        {"Año año", "AÑO", "x", 1, -1, CompareMethod::Binary, "Año año"},
        {"abc", "", "x", 1, -1, CompareMethod::Binary, "abc"},
        {"abc", "b", "x", 4, -1, CompareMethod::Binary, ""},
        {"aaaa", "aa", "a", 1, -1, CompareMethod::Binary, "aa"},
    };
    for (const auto& c : casos)
        EXPECT_EQ(Replace(c.texto, c.buscado, c.nuevo, c.inicio, c.veces, c.comparacion), c.esperado) << c.texto;
}

TEST(RuntimeTexto, MayusculasEspaciosYRepeticiones) {
    EXPECT_EQ(UCase("ñandú"), "ÑANDÚ");
    EXPECT_EQ(LCase("ÑANDÚ"), "ñandú");
    EXPECT_EQ(Space(3), "   ");
    EXPECT_EQ(String(3, "ñx"), "ñññ");
    EXPECT_EQ(String(2, 45), "--");
    EXPECT_EQ(String(2, 128 + 256), "€€");
    EXPECT_EQ(StrReverse("Ñandú"), "údnaÑ");
}

TEST(RuntimeTexto, StrComp_BinarioYTexto) {
    EXPECT_EQ(StrComp("a", "b"), -1);
    EXPECT_EQ(StrComp("b", "a"), 1);
    EXPECT_EQ(StrComp("abc", "abc"), 0);
    EXPECT_EQ(StrComp("ab", "abc"), -1);
    EXPECT_EQ(StrComp("B", "a"), -1);
    EXPECT_EQ(StrComp("B", "a", CompareMethod::Text), 1);
    EXPECT_EQ(StrComp("MARIA", "maria", CompareMethod::Text), 0);
    EXPECT_EQ(StrComp("Nu", "Ñu", CompareMethod::Text), -1);
    EXPECT_EQ(StrComp("Ñu", "Ou", CompareMethod::Text), -1);
}

TEST(RuntimeTexto, AscYChr_PaginaDeCodigos1252) {
    const struct {
        int codigo;
        const char* caracter;
    } casos[] = {{65, "A"}, {128, "€"}, {241, "ñ"}, {209, "Ñ"}, {164, "¤"}, {150, "–"}, {159, "Ÿ"}, {129, "\xC2\x81"}};
    for (const auto& c : casos) {
        EXPECT_EQ(Chr(c.codigo), c.caracter) << c.codigo;
        EXPECT_EQ(Asc(c.caracter), c.codigo) << c.codigo;
    }
    EXPECT_EQ(Asc("ábc"), 225);
    EXPECT_EQ(Asc("Ω"), '?');
    EXPECT_EQ(AscW("€"), 0x20AC);
    EXPECT_EQ(ChrW(0x20AC), "€");
    EXPECT_EQ(ChrW(-1), "\xEF\xBF\xBF");
    EXPECT_EQ(Chr(13) + Chr(10), "\r\n");
}

TEST(RuntimeTexto, SplitYJoin) {
    using V = std::vector<std::string>;
    EXPECT_EQ(Split("1|2||3", "|"), (V{"1", "2", "", "3"}));
    EXPECT_EQ(Split("a|b|", "|"), (V{"a", "b", ""}));
    EXPECT_EQ(Split("", "|"), V{});
    EXPECT_EQ(Split("abc", ""), V{"abc"});
    EXPECT_EQ(Split("a b c"), (V{"a", "b", "c"}));
    EXPECT_EQ(Split("a|b|c", "|", 2), (V{"a", "b|c"}));
    EXPECT_EQ(Split("a|b", "|", 0), V{});
    EXPECT_EQ(Split("aXbxc", "x", -1, CompareMethod::Text), (V{"a", "b", "c"}));
    EXPECT_EQ(Split("ñ/ü", "/"), (V{"ñ", "ü"}));
    EXPECT_EQ(Join({"a", "b", ""}, "|"), "a|b|");
    EXPECT_EQ(Join({}, "|"), "");
    EXPECT_EQ(Join({"x", "y"}), "x y");
}

}  // namespace
}  // namespace tpv
