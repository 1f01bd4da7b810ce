#include "core/servicios/connection_opener.hpp"

#include <cstdlib>

#include "core/runtime/error.hpp"
#include "core/servicios/suite_settings.hpp"

namespace tpv {

ConnectionOpener& ConnectionOpener::Instancia() {
    static ConnectionOpener instancia;
    return instancia;
}

std::string ConnectionOpener::Resolver(const std::string& nombre) const {
    SuiteSettings& ajustes = SuiteSettings::Instancia();
    if (nombre.empty()) {
        const char* env = std::getenv("TPV_DATABASE");
        if (env && *env) return env;
        std::string uri = ajustes.Leer("base_de_datos");
        if (uri.empty())
            throw DbError("conexion",
                          "No se ha indicado la base de datos de la suite: falta la clave \"base_de_datos\" en " +
                              ajustes.Donde() + " (o la variable TPV_DATABASE).",
                          "");
        return uri;
    }
    std::string uri = ajustes.Leer("base_de_datos." + nombre);
    return uri.empty() ? nombre : uri;
}

void ConnectionOpener::Abrir(const std::string& nombre, Connection& conexion) {
    std::string uri = Resolver(nombre);
    if (conexion.IsOpen()) conexion.Close();
    conexion.Open(uri);
}

}  // namespace tpv
