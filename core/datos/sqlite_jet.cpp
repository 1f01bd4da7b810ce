// Compiled twice from this one source: into the till, against SQLite's own
// interface, and into the loadable extension (TPV_EXTENSION_SQLITE), where
// every call goes through the table of routines the loading program hands in.
#ifdef TPV_EXTENSION_SQLITE
#include <sqlite3ext.h>
SQLITE_EXTENSION_INIT3
#else
#include <sqlite3.h>
#endif

#include <cmath>
#include <cstdio>
#include <string>
#include <string_view>

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

}  // namespace

int RegistrarFuncionesJet(sqlite3* db) {
    int rc = sqlite3_create_collation(db, "JET", SQLITE_UTF8, nullptr, CollateJet);
    if (rc == SQLITE_OK)
        rc = sqlite3_create_function(db, "jet_like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, FuncLike, nullptr,
                                     nullptr);
    if (rc == SQLITE_OK)
        rc = sqlite3_create_function(db, "jet_text", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, FuncText, nullptr,
                                     nullptr);
    return rc;
}

}  // namespace tpv::datos
