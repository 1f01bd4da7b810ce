#pragma once
#include <string>

#include "core/datos/connection.hpp"

namespace tpv {

// Opens the suite's shared database.
//
// The default database ("" as nombre) is the URI in the environment variable
// TPV_DATABASE, else the settings key "base_de_datos". A named one is the
// settings key "base_de_datos." + nombre, else nombre itself taken as a URI.
class ConnectionOpener {
public:
    static ConnectionOpener& Instancia();

    // Closes `conexion` if it is open, then opens it on the database named.
    void Abrir(const std::string& nombre, Connection& conexion);

    // The URI that Abrir would open; a run-time error when the default
    // database is named nowhere.
    std::string Resolver(const std::string& nombre) const;

private:
    ConnectionOpener() = default;
};

}  // namespace tpv
