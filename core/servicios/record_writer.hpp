#pragma once
#include <string>
#include <utility>
#include <vector>

#include "core/datos/connection.hpp"
#include "core/runtime/value.hpp"

namespace tpv {

// The one writer of document, stock and customer rows. It takes the row's
// values as a FieldList ("name=value|...", see field_list.hpp), converts each
// to its column's type and writes the statement with safely quoted literals.
//
// With `multitienda` true, a table that has a `Tienda` column gets
// `nombreTienda` there on every insert and update.
class RecordWriter {
public:
    static RecordWriter& Instancia();

    // The terminal and employee that audit lines carry; the session fills
    // them at start and when the employee changes.
    static void FijarPuesto(const std::string& terminal, const std::string& empleado);

    void Insertar(Connection& conexion, const std::string& tabla, const std::string& campos,
                  const std::string& nombreTienda, bool multitienda, const std::string& extra = "");
    // `condicion` is a where text without "where"; "" changes every row.
    void Actualizar(Connection& conexion, const std::string& tabla, const std::string& campos,
                    const std::string& nombreTienda, bool multitienda, const std::string& condicion);
    // `condicion` as for Actualizar; "" deletes every row.
    void Borrar(Connection& conexion, const std::string& tabla, const std::string& nombreTienda, bool multitienda,
                const std::string& condicion);
    // One line of `registrocambios` about a change to a closed document: the
    // table, condition, code and description given, today's date and time,
    // and the terminal and employee of FijarPuesto. `a` and `b` are kept for
    // the callers' sake and not stored.
    void RegistrarCambio(Connection& conexion, const std::string& tabla, const std::string& condicion,
                         const std::string& a, const std::string& b, const std::string& codigo,
                         const std::string& descripcion);

    // Inserts one row of values already typed, for the suite's own tables;
    // each value is converted to its column's type as a FieldList value would
    // be, but a text may hold any character.
    void InsertarValores(Connection& conexion, const std::string& tabla,
                         const std::vector<std::pair<std::string, Value>>& valores);

private:
    RecordWriter() = default;
};

}  // namespace tpv
