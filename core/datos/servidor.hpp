#pragma once
// The databases of a PostgreSQL server, for the tools and the tests that make
// and drop them. The commands here are the server's own SQL, not the till's
// dialect; the till itself never uses them.
#include <string>

#include "core/datos/esquema.hpp"

namespace tpv::datos::servidor {

// "postgresql://..." or "postgres://...".
bool EsUri(const std::string& uri);

// The URI as it may be shown or logged: its password, written either as
// "user:password@" or as a "password=" option, replaced by "***". Anything
// that is no server URI comes back as it is.
std::string SinClave(const std::string& uri);

// The database an URI names, as written there (percent-escapes decoded);
// "" when the URI names none.
std::string Base(const std::string& uri);

// The same server, user and options, another database.
std::string ConBase(const std::string& uri, const std::string& base);

// A name as the server's SQL takes it, case kept: "SUPERMERCADO" stays so.
std::string Identificador(const std::string& name);

// The script that gives an empty database the tables of a schema.
std::string Ddl(const SchemaDef& schema);

// The requests this process has sent to PostgreSQL servers so far, each a
// round trip: statements, preparations and commands. The benchmarks count
// the trips of one action with it.
long long Idas();

// Runs one command outside any transaction on the database the URI names.
void Ejecutar(const std::string& uri, const std::string& sql);

// uri names any database of the server the caller may connect to.
bool ExisteBase(const std::string& uri, const std::string& base);
// A new UTF8 database: a copy of `plantilla`, or empty when none is given.
void CrearBase(const std::string& uri, const std::string& base, const std::string& plantilla = "");
// Drops a database, closing the connections still open to it.
void BorrarBase(const std::string& uri, const std::string& base);

}  // namespace tpv::datos::servidor
