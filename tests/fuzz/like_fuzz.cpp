// A LIKE run by the database finds exactly the rows whose text the
// runtime's own LIKE matches, whatever the text and the pattern: the
// translator's shortcuts (a pattern without wildcards compared as text, the
// function the engine calls) must not change what is found. The input is a
// text and a pattern separated by the first line break; the text is written
// as the name of one product, beside the names already there.
#include <set>

#include "core/runtime/error.hpp"
#include "core/runtime/unicode.hpp"
#include "tests/fuzz/tienda_en_memoria.hpp"

namespace {

std::string Literal(const std::string& s) {
    std::string out = "'";
    for (char c : s) {
        out += c;
        if (c == '\'') out += '\'';
    }
    return out + "'";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::unique_ptr<tpv::datos::Session> tienda = tpvfuzz::NuevaTienda();
    const tpvfuzz::Entrada e = tpvfuzz::Leer(data, size);
    const std::size_t salto = e.texto.find('\n');
    if (salto == std::string::npos || e.texto.find('\0') != std::string::npos) return 0;
    const std::string texto = e.texto.substr(0, salto), patron = e.texto.substr(salto + 1);
    tienda->engine().Begin();
    try {
        tienda->Run("update productos set nombre = " + Literal(texto) + " where codigo = 1", false);
        std::set<long long> esperados, hallados;
        for (const auto& fila : tienda->Run("select codigo, nombre from productos", false).rows)
            if (!fila[1].IsNull() && tpv::unicode::Like(fila[1].text(), patron)) esperados.insert(fila[0].integer());
        for (const auto& fila : tienda->Run("select codigo from productos where nombre like " + Literal(patron), false).rows)
            hallados.insert(fila[0].integer());
        if (esperados != hallados) {
            std::fprintf(stderr, "'%s' like '%s': %zu filas esperadas, %zu halladas\n", texto.c_str(), patron.c_str(),
                         esperados.size(), hallados.size());
            std::abort();
        }
    } catch (const tpv::RuntimeError&) {
        // A text the statement can't hold is the data layer's error.
    }
    tienda->engine().Rollback();
    return 0;
}
