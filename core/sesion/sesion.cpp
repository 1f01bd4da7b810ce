#include "core/sesion/sesion.hpp"

namespace tpv {

void Sesion::Reiniciar() {
    Conexion.Close();
    *this = Sesion();
}

Sesion& sesion() {
    static Sesion instancia;
    return instancia;
}

}  // namespace tpv
