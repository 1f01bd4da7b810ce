#include "core/sesion/clientes.hpp"

#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

void CargarClientes() {
    ListaClientes& clientes = sesion().Clientes;
    clientes.clear();
    Recordset rs;
    lectura::Abrir(rs,
                   "Select codigo,nombre,apellidos,nacimiento,descuento,activardindep,dindep from clientes where "
                   "borrar=false and codigo >= 0 order by Nombre");
    clientes.reserve(static_cast<std::size_t>(rs.RecordCount()));
    for (; !rs.Eof(); rs.MoveNext()) {
        RegistroCliente c;
        c.Nombre = CStr(rs["nombre"]);
        c.Apellidos = CStr(rs["apellidos"]);
        c.Codigo = CLng(rs["codigo"]);
        const Value& nacimiento = rs["nacimiento"];
        c.Nacimiento = nacimiento.IsNull() ? DateSerial(2000, 1, 1) : CDate(nacimiento);
        const Value& descuento = rs["descuento"];
        c.Descuento = descuento.IsNull() ? 0.0 : CDbl(descuento);
        const Value& activar = rs["activardindep"];
        c.ActivarDinDep = !activar.IsNull() && CBool(activar);
        const Value& dinDep = rs["dindep"];
        c.DinDep = dinDep.IsNull() ? 0.0 : CDbl(dinDep);
        clientes.push_back(std::move(c));
    }
    rs.Close();
}

}  // namespace tpv
