// Compiled twice from this one source: into the till, against SQLite's own
// interface, and into the loadable extension (TPV_EXTENSION_SQLITE), where
// every call goes through the table of routines the loading program hands in.
#ifdef TPV_EXTENSION_SQLITE
#include <sqlite3ext.h>
SQLITE_EXTENSION_INIT3
#else
#include <sqlite3.h>
#endif

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/datos/sqlite_jet.hpp"
#include "core/runtime/unicode.hpp"

namespace tpv::datos {

namespace {

// Text of a number as the runtime joins it to text: decimal comma.
std::string TextoNumero(double v) {
    if (v == std::floor(v) && std::fabs(v) < 1e15) {
        char buf[32];
        std::snprintf(buf, sizeof buf, "%.0f", v);
        return buf;
    }
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.15g", v);
    std::string s = buf;
    for (char& c : s)
        if (c == '.') c = ',';
    return s;
}

int CollateJet(void*, int na, const void* a, int nb, const void* b) {
    return unicode::CompareText(std::string_view(static_cast<const char*>(a), static_cast<std::size_t>(na)),
                                std::string_view(static_cast<const char*>(b), static_cast<std::size_t>(nb)));
}

std::string_view ArgText(sqlite3_value* v) {
    const unsigned char* t = sqlite3_value_text(v);
    return t ? std::string_view(reinterpret_cast<const char*>(t), static_cast<std::size_t>(sqlite3_value_bytes(v)))
             : std::string_view();
}

void FuncLike(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
        sqlite3_result_null(ctx);
        return;
    }
    std::string_view text = ArgText(argv[0]);
    std::string_view pattern = ArgText(argv[1]);
    sqlite3_result_int(ctx, unicode::Like(text, pattern) ? 1 : 0);
}

void FuncText(sqlite3_context* ctx, int, sqlite3_value** argv) {
    switch (sqlite3_value_type(argv[0])) {
        case SQLITE_NULL: sqlite3_result_text(ctx, "", 0, SQLITE_STATIC); return;
        case SQLITE_INTEGER:
        case SQLITE_FLOAT: {
            std::string s = TextoNumero(sqlite3_value_double(argv[0]));
            sqlite3_result_text(ctx, s.c_str(), static_cast<int>(s.size()), SQLITE_TRANSIENT);
            return;
        }
        default: sqlite3_result_value(ctx, argv[0]);
    }
}

// ------------------------------------------------ sets of keys of a join
//
// jet_claves(k), an aggregate, gathers the keys of the rows it sees into a
// set kept by the connection and answers a number that names it;
// jet_en_claves(x, n) says whether x is in set n, as "x = k" would find it:
// numbers by value (5 and 5,0 alike), text and blobs byte for byte, NULL in
// no set. The translator writes them for a join on a unique key that
// became "x in (select k ...)": the statement runs the aggregate once, then
// tests every row against the set.

// Text and blobs, apart from numbers: a first byte says which.
std::string ClaveDeTexto(sqlite3_value* v) {
    const bool blob = sqlite3_value_type(v) == SQLITE_BLOB;
    const void* p = blob ? sqlite3_value_blob(v) : static_cast<const void*>(sqlite3_value_text(v));
    const int n = sqlite3_value_bytes(v);
    std::string k(1, blob ? 'b' : 't');
    if (p) k.append(static_cast<const char*>(p), static_cast<std::size_t>(n));
    return k;
}

// A real that is a whole number within reach of the integers counts as one.
bool EsEntero(double d, long long& out) {
    if (!(d == std::floor(d)) || d < -9.2e18 || d > 9.2e18) return false;
    out = static_cast<long long>(d);
    return true;
}

struct Recogida {
    std::vector<long long> enteros;
    std::set<double> reales;
    std::set<std::string> textos;

    void Anadir(sqlite3_value* v) {
        long long e;
        switch (sqlite3_value_type(v)) {
            case SQLITE_NULL: return;
            case SQLITE_INTEGER: enteros.push_back(sqlite3_value_int64(v)); return;
            case SQLITE_FLOAT:
                if (EsEntero(sqlite3_value_double(v), e)) enteros.push_back(e);
                else reales.insert(sqlite3_value_double(v));
                return;
            default: textos.insert(ClaveDeTexto(v));
        }
    }
};

class ConjuntoClaves {
public:
    explicit ConjuntoClaves(Recogida r) : reales_(std::move(r.reales)), textos_(std::move(r.textos)) {
        std::vector<long long>& v = r.enteros;
        std::sort(v.begin(), v.end());
        v.erase(std::unique(v.begin(), v.end()), v.end());
        if (v.empty()) return;
        // Invoice and line numbers run close together: one bit per number
        // from the least, unless that takes much more room than the list.
        const auto rango = static_cast<unsigned long long>(v.back()) - static_cast<unsigned long long>(v.front());
        if (rango / 64 <= v.size() + 1024) {
            minimo_ = v.front();
            bits_.assign(static_cast<std::size_t>(rango / 64 + 1), 0);
            for (long long e : v) {
                const auto i = static_cast<unsigned long long>(e) - static_cast<unsigned long long>(minimo_);
                bits_[i / 64] |= std::uint64_t{1} << (i % 64);
            }
        } else {
            enteros_ = std::move(v);
        }
    }

    bool Contiene(sqlite3_value* v) const {
        long long e;
        switch (sqlite3_value_type(v)) {
            case SQLITE_INTEGER: return ContieneEntero(sqlite3_value_int64(v));
            case SQLITE_FLOAT:
                if (EsEntero(sqlite3_value_double(v), e)) return ContieneEntero(e);
                return reales_.count(sqlite3_value_double(v)) > 0;
            default: return !textos_.empty() && textos_.count(ClaveDeTexto(v)) > 0;
        }
    }

private:
    bool ContieneEntero(long long e) const {
        if (!bits_.empty()) {
            if (e < minimo_) return false;
            const auto i = static_cast<unsigned long long>(e) - static_cast<unsigned long long>(minimo_);
            return i / 64 < bits_.size() && ((bits_[i / 64] >> (i % 64)) & 1) != 0;
        }
        return std::binary_search(enteros_.begin(), enteros_.end(), e);
    }

    long long minimo_ = 0;
    std::vector<std::uint64_t> bits_;
    std::vector<long long> enteros_;
    std::set<double> reales_;
    std::set<std::string> textos_;
};

// The sets of one connection. A statement holds its set only while it runs
// and the till runs one statement at a time, so the last few are kept.
struct AlmacenClaves {
    static constexpr std::size_t kGuardados = 8;
    int usuarios = 2;  // the two functions; the last to go frees it
    long long siguiente = 0;
    std::deque<std::pair<long long, std::unique_ptr<ConjuntoClaves>>> guardados;

    long long Guardar(std::unique_ptr<ConjuntoClaves> c) {
        if (guardados.size() >= kGuardados) guardados.pop_front();
        guardados.emplace_back(++siguiente, std::move(c));
        return siguiente;
    }
    const ConjuntoClaves* Buscar(long long n) const {
        for (auto it = guardados.rbegin(); it != guardados.rend(); ++it)
            if (it->first == n) return it->second.get();
        return nullptr;
    }
};

void SoltarAlmacen(void* p) {
    auto* a = static_cast<AlmacenClaves*>(p);
    if (--a->usuarios == 0) delete a;
}

void ClavesPaso(sqlite3_context* ctx, int, sqlite3_value** argv) {
    auto** r = static_cast<Recogida**>(sqlite3_aggregate_context(ctx, sizeof(Recogida*)));
    if (!r) {
        sqlite3_result_error_nomem(ctx);
        return;
    }
    if (!*r) *r = new Recogida;
    (*r)->Anadir(argv[0]);
}

void ClavesFinal(sqlite3_context* ctx) {
    auto** r = static_cast<Recogida**>(sqlite3_aggregate_context(ctx, 0));
    std::unique_ptr<Recogida> recogida(r && *r ? *r : new Recogida);
    auto* almacen = static_cast<AlmacenClaves*>(sqlite3_user_data(ctx));
    sqlite3_result_int64(ctx, almacen->Guardar(std::make_unique<ConjuntoClaves>(std::move(*recogida))));
}

void EnClaves(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) {
        sqlite3_result_null(ctx);
        return;
    }
    const auto* almacen = static_cast<const AlmacenClaves*>(sqlite3_user_data(ctx));
    const ConjuntoClaves* c = almacen->Buscar(sqlite3_value_int64(argv[1]));
    if (!c) {
        sqlite3_result_error(ctx, "jet_en_claves: el conjunto de claves ya no existe", -1);
        return;
    }
    sqlite3_result_int(ctx, c->Contiene(argv[0]) ? 1 : 0);
}

}  // namespace

int RegistrarFuncionesJet(sqlite3* db) {
    int rc = sqlite3_create_collation(db, "JET", SQLITE_UTF8, nullptr, CollateJet);
    if (rc == SQLITE_OK)
        rc = sqlite3_create_function(db, "jet_like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, FuncLike, nullptr,
                                     nullptr);
    if (rc == SQLITE_OK)
        rc = sqlite3_create_function(db, "jet_text", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, FuncText, nullptr,
                                     nullptr);
    if (rc == SQLITE_OK) {
        auto* almacen = new AlmacenClaves;
        // Neither belongs in a view, trigger or index: they only make sense
        // as the translator pairs them in one statement.
        rc = sqlite3_create_function_v2(db, "jet_claves", 1, SQLITE_UTF8 | SQLITE_DIRECTONLY, almacen, nullptr,
                                        ClavesPaso, ClavesFinal, SoltarAlmacen);
        if (rc != SQLITE_OK) {
            // The failed call let its share go; the other function's share never came.
            SoltarAlmacen(almacen);
            return rc;
        }
        // A failure here lets this share go; the aggregate keeps the other.
        rc = sqlite3_create_function_v2(db, "jet_en_claves", 2, SQLITE_UTF8 | SQLITE_DIRECTONLY, almacen, EnClaves,
                                        nullptr, nullptr, SoltarAlmacen);
    }
    return rc;
}

}  // namespace tpv::datos
