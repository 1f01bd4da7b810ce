// The loadable SQLite extension "tpvjet": gives any program that opens a
// shop's database file what the till's own connections have (the collation
// JET, jet_like, jet_text), so that it can compare, search and write text
// columns as the till does:
//
//   sqlite3 PERFUMERIA.db
//   sqlite> .load /usr/local/lib/tpv/tpvjet
#include <sqlite3ext.h>
SQLITE_EXTENSION_INIT1

#include "core/datos/sqlite_jet.hpp"

// SQLite finds the entry point by the file's name: tpvjet.so -> sqlite3_tpvjet_init.
extern "C" int sqlite3_tpvjet_init(sqlite3* db, char** error, const sqlite3_api_routines* api) {
    SQLITE_EXTENSION_INIT2(api);
    int rc = tpv::datos::RegistrarFuncionesJet(db);
    if (rc != SQLITE_OK && error) *error = sqlite3_mprintf("tpvjet: no se pudieron registrar las funciones del TPV");
    return rc;
}
