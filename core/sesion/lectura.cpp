#include "core/sesion/lectura.hpp"

#include "core/sesion/sesion.hpp"

namespace tpv::lectura {

void Abrir(Recordset& rs, const std::string& sql) {
    rs.Open(sql, sesion().Conexion, adOpenStatic, adLockOptimistic, adCmdUnspecified);
}

void AbrirParaCambiar(Recordset& rs, const std::string& sql) {
    rs.Open(sql, sesion().Conexion, adOpenKeyset, adLockOptimistic, adCmdUnspecified);
}

Clave LeerClave(const std::string& indice) {
    Recordset rs;
    Abrir(rs, "Select indice,datoa,daton,otros from relaciones_fijas where indice = '" + indice + "'");
    Clave c;
    if (rs.RecordCount() > 0) {
        c.existe = true;
        c.datoa = rs["datoa"].Value();
        c.daton = rs["daton"].Value();
        c.otros = rs["otros"].Value();
    }
    rs.Close();
    return c;
}

}  // namespace tpv::lectura
