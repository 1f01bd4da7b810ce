#include "core/servicios/screen_rights.hpp"

#include <string>

#include "core/datos/recordset.hpp"
#include "core/datos/session.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/valor_columna.hpp"

namespace tpv {

ScreenRights& ScreenRights::Instancia() {
    static ScreenRights instancia;
    return instancia;
}

void ScreenRights::Aplicar(Connection& conexion, Formulario& pantalla, long empleadoTerminal) {
    if (!conexion.session().catalog().Find("permisos_pantalla")) return;
    Recordset rs;
    rs.Open("select control, visible, habilitado from permisos_pantalla where pantalla = " + TextoJet(pantalla.nombre) +
                " and empleado = " + std::to_string(empleadoTerminal),
            conexion, adOpenStatic, adLockOptimistic);
    while (!rs.Eof()) {
        const Value& nombre = rs.Fields("control").Value();
        if (Control* c = nombre.IsNull() ? nullptr : pantalla.Buscar(CStr(nombre))) {
            const Value& visible = rs.Fields("visible").Value();
            const Value& habilitado = rs.Fields("habilitado").Value();
            if (!visible.IsNull()) c->visible = CBool(visible);
            if (!habilitado.IsNull()) c->enabled = CBool(habilitado);
        }
        rs.MoveNext();
    }
    rs.Close();
}

}  // namespace tpv
