#pragma once
#include <string>
#include <utility>
#include <vector>

#include "core/datos/tipos.hpp"

namespace tpv {
class Connection;
}

namespace tpv::datos {

struct ColumnDef {
    ColumnInfo info;
    std::string defaultValue;  // as written in the schema file; "" when none
};

struct TableDef {
    std::string name;
    std::vector<ColumnDef> columns;
};

struct IndexDef {
    std::string name, table;
    std::vector<std::string> columns;
    bool unique = false;
    std::string where;  // a partial index's condition, as SQL both engines read; "" for none
};

struct SchemaDef {
    std::vector<TableDef> tables;
    std::vector<IndexDef> indexes;
};

// Reads a schema file (see core/schema/README.txt). Throws RuntimeError with
// the file and line of a mistake.
SchemaDef LeerEsquema(const std::string& path);
SchemaDef LeerEsquemaTexto(const std::string& text, const std::string& origin = "esquema");

// The folder that holds the schema files.
std::string CarpetaEsquemas();

// Makes a new database at the URI with the tables of the schema file: a new
// SQLite file, or the tables in an empty PostgreSQL database, which is made
// on the server first when it isn't there (its name as the URI writes it).
void CrearBaseDeDatos(const std::string& uri, const std::string& schemaFile);

// What CompletarIndices did: the indexes it made, and those it could not
// make with the engine's reason.
struct IndicesCompletados {
    std::vector<std::string> creados;
    std::vector<std::pair<std::string, std::string>> fallidos;  // name, reason
};

// Makes every index of the schema file that the open database lacks (a
// database made before the index joined the schema). With all of them in
// place it costs one look at the database's list of indexes. An index that
// can't be made (its table missing, repeated values under a unique one) is
// left out and the others are still made.
IndicesCompletados CompletarIndices(Connection& cn, const std::string& schemaFile);

}  // namespace tpv::datos
