#pragma once
#include "core/datos/connection.hpp"
#include "core/servicios/formulario.hpp"

namespace tpv {

// What the employee pinned to a terminal may see and use on a screen: the
// rows of `permisos_pantalla` for the screen and that employee set each
// named control's visibility (`visible`) and enabling (`habilitado`); a NULL
// leaves that property as it is. A terminal without a pinned employee has
// the number -1, which rows may name as well. Without the table, nothing
// changes.
class ScreenRights {
public:
    static ScreenRights& Instancia();

    void Aplicar(Connection& conexion, Formulario& pantalla, long empleadoTerminal);

private:
    ScreenRights() = default;
};

}  // namespace tpv
