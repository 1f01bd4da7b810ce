#pragma once
// What a connection to a shop's SQLite file needs besides SQLite itself: the
// collation JET of every text column (without regard to case, Spanish
// letters included) and the functions jet_like and jet_text that translated
// statements call. The till registers them on each connection it opens; the
// loadable extension tpvjet registers the very same ones for any other
// program (the sqlite3 shell, the back office, a script).
struct sqlite3;

namespace tpv::datos {

// Returns an SQLite result code: SQLITE_OK (0) when all are in place.
int RegistrarFuncionesJet(sqlite3* db);

}  // namespace tpv::datos
