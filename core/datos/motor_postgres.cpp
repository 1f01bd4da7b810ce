#include "core/datos/motor.hpp"
#include "core/runtime/error.hpp"

#if 1  // replaced when the server engine lands
namespace tpv::datos {
std::unique_ptr<Engine> OpenPostgres(const std::string& uri, bool) {
    throw DbError("pg", "Este programa se construyó sin PostgreSQL: no puede abrir '" + uri + "'.", "");
}
}  // namespace tpv::datos
#endif
