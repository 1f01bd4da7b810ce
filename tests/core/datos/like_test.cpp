// LIKE on the embedded engine: the same answers as the backtracking matcher
// it replaced, in time bounded by text times pattern.
#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "core/runtime/unicode.hpp"
#include "tests/support/base_prueba.hpp"

namespace tpv::prueba {
namespace {

// The plain recursive matcher: slow on many %, but obviously right.
bool Referencia(const std::vector<char32_t>& t, std::size_t ti, const std::vector<char32_t>& p, std::size_t pi) {
    using unicode::ToLower;
    while (pi < p.size()) {
        char32_t pc = p[pi];
        if (pc == '%') {
            while (pi < p.size() && p[pi] == '%') ++pi;
            if (pi == p.size()) return true;
            for (std::size_t k = ti; k <= t.size(); ++k)
                if (Referencia(t, k, p, pi)) return true;
            return false;
        }
        if (ti >= t.size()) return false;
        if (pc == '[') {
            std::size_t close = pi + 1;
            while (close < p.size() && p[close] != ']') ++close;
            if (close < p.size()) {
                std::size_t k = pi + 1;
                bool negate = k < close && p[k] == '!';
                if (negate) ++k;
                bool hit = false;
                char32_t c = ToLower(t[ti]);
                for (; k < close; ++k) {
                    if (k + 2 < close && p[k + 1] == '-') {
                        if (c >= ToLower(p[k]) && c <= ToLower(p[k + 2])) hit = true;
                        k += 2;
                    } else if (ToLower(p[k]) == c) {
                        hit = true;
                    }
                }
                if (hit == negate) return false;
                ++ti;
                pi = close + 1;
                continue;
            }
        }
        if (pc != '_' && ToLower(pc) != ToLower(t[ti])) return false;
        ++ti;
        ++pi;
    }
    return ti == t.size();
}

TEST(Like, DaLoMismoQueElEmparejadorRecursivo) {
    struct Caso {
        const char* texto;
        const char* patron;
        bool casa;
    } casos[] = {
        {"María", "mar%", true},   {"MARTA", "m_rta", true},    {"Ñu", "ñ%", true},       {"éxito", "É%", true},
        {"exito", "é%", false},    {"axb", "a[!y]b", true},     {"ayb", "a[!y]b", false}, {"b", "[a-c]", true},
        {"b", "[c-a]", false},     {"x", "[]", false},          {"x", "[!]", true},       {"[x]", "[[]x]", true},
        {"a#", "a#", true},        {"a1", "a#", false},         {"", "%", true},          {"", "_", false},
        {"abc", "%%c", true},      {"abc", "a%b%c%", true},     {"abc", "[a-", false},    {"[a-", "[a-", true},
        {"aXbXc", "%x%x%", true},  {"ab", "%a%b%c", false},
    };
    for (const Caso& c : casos) EXPECT_EQ(unicode::Like(c.texto, c.patron), c.casa) << c.texto << " like " << c.patron;

    // Random texts and patterns over the letters that matter to the rules.
    const std::vector<std::string> letrasTexto = {"a", "A", "á", "b", "ñ", "Ñ", "]", "[", "-", "!", "#"};
    const std::vector<std::string> letrasPatron = {"a", "A", "á", "b", "ñ", "%", "%", "_", "[", "]", "!", "-", "#"};
    std::mt19937 azar(7);
    auto hazTexto = [&](const std::vector<std::string>& letras, int largo) {
        std::string s;
        for (int i = 0; i < largo; ++i) s += letras[azar() % letras.size()];
        return s;
    };
    for (int i = 0; i < 20000; ++i) {
        const std::string texto = hazTexto(letrasTexto, static_cast<int>(azar() % 8));
        const std::string patron = hazTexto(letrasPatron, static_cast<int>(azar() % 7));
        ASSERT_EQ(unicode::Like(texto, patron), Referencia(unicode::Decode(texto), 0, unicode::Decode(patron), 0))
            << texto << " like " << patron;
    }
}

class LikeEnCadaMotor : public BaseDeDatosTest {};

// A search text typed at the till with many % and _ that matches nothing:
// every name is tried against it, on every keystroke.
TEST_P(LikeEnCadaMotor, PatronConMuchosComodines_NoSeDisparaElTiempo) {
    std::string patron;
    for (int i = 0; i < 14; ++i) patron += "%_";
    patron += "%#";
    const std::string nombre = "Colonia fresca 250 ml de bergamota y lavanda";
    auto inicio = std::chrono::steady_clock::now();
    for (int i = 0; i < 44; ++i) EXPECT_FALSE(unicode::Like(nombre, patron));
    EXPECT_LT(std::chrono::steady_clock::now() - inicio, std::chrono::milliseconds(500));

    for (int i = 0; i < 44; ++i)
        cn.Execute("insert into productos (codigo, nombre) values (" + std::to_string(i) + ", '" + nombre + "')");
    inicio = std::chrono::steady_clock::now();
    EXPECT_EQ(Valor("select count(*) from productos where nombre like '" + patron + "'").integer(), 0);
    EXPECT_EQ(Valor("select count(*) from productos where nombre like '%_%_%_%_%_%_%_%_%_%_%_%_%_%_%a'").integer(), 44);
    EXPECT_LT(std::chrono::steady_clock::now() - inicio, std::chrono::seconds(2));
}

TPV_EN_CADA_MOTOR(LikeEnCadaMotor);

}  // namespace
}  // namespace tpv::prueba
