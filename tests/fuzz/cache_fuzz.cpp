// Two statements, the second prepared after the first: what the second
// becomes must not depend on the first. The session keeps what it made of
// earlier statements (by exact text and by shape), and a statement taken for
// an earlier one runs as that one: a syntax error, or a statement on another
// column, could run as a delete of other rows. The input is the first byte
// (its two lowest bits: each statement prepared for writing), then the two
// statements separated by the first line break.
#include <cmath>
#include <cstdlib>
#include <cstdio>
#include <optional>

#include "core/runtime/error.hpp"
#include "tests/fuzz/tienda_en_memoria.hpp"

namespace {

struct Hecho {
    bool error = false;
    std::string sql;
    std::vector<tpv::Value> params;
    bool foldRows = false;
};

Hecho Preparar(tpv::datos::Session& s, const std::string& sql, bool writable) {
    Hecho h;
    try {
        auto p = s.Prepare(sql, writable);
        h.sql = p->sql;
        h.params = p->params;
        h.foldRows = p->foldRows;
    } catch (const tpv::RuntimeError& e) {
        h.error = true;
        h.sql = e.what();
    }
    return h;
}

bool Igual(const tpv::Value& a, const tpv::Value& b) {
    if (a.kind() == tpv::Value::Kind::Double && b.kind() == tpv::Value::Kind::Double && std::isnan(a.real()))
        return std::isnan(b.real());
    return a == b;
}

bool Igual(const Hecho& a, const Hecho& b) {
    if (a.error != b.error || a.sql != b.sql || a.foldRows != b.foldRows || a.params.size() != b.params.size())
        return false;
    for (std::size_t i = 0; i < a.params.size(); ++i)
        if (!Igual(a.params[i], b.params[i])) return false;
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::unique_ptr<tpv::datos::Session> tienda = tpvfuzz::NuevaTienda();
    const tpvfuzz::Entrada e = tpvfuzz::Leer(data, size);
    const std::size_t salto = e.texto.find('\n');
    const std::string primera = e.texto.substr(0, salto);
    const std::string segunda = salto == std::string::npos ? primera : e.texto.substr(salto + 1);
    const bool w1 = e.banderas & 1, w2 = e.banderas & 2;

    tienda->ReloadCatalog();  // forgets every statement made
    const Hecho sola = Preparar(*tienda, segunda, w2);
    tienda->ReloadCatalog();
    Preparar(*tienda, primera, w1);
    const Hecho tras = Preparar(*tienda, segunda, w2);
    const Hecho otra_vez = Preparar(*tienda, segunda, w2);
    if (!Igual(sola, tras) || !Igual(sola, otra_vez)) {
        std::fprintf(stderr, "'%s' tras '%s':\n  sola:     %s\n  tras:     %s\n  otra vez: %s\n", segunda.c_str(),
                     primera.c_str(), sola.sql.c_str(), tras.sql.c_str(), otra_vez.sql.c_str());
        std::abort();
    }
    return 0;
}
