#include "core/sesion/clientes.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

void CargarClientes() {
    ListaClientes& clientes = sesion().Clientes;
    clientes.clear();
    // Some tens of thousands of rows: each goes into the list as it is read,
    // without a recordset holding them all first.
    ForwardReader filas(sesion().Conexion,
                        "Select codigo,nombre,apellidos,nacimiento,descuento,activardindep,dindep from clientes where "
                        "borrar=false and codigo >= 0 order by Nombre");
    const int codigo = filas.IndexOf("codigo"), nombre = filas.IndexOf("nombre"), apellidos = filas.IndexOf("apellidos"),
              nacimiento = filas.IndexOf("nacimiento"), descuento = filas.IndexOf("descuento"),
              activar = filas.IndexOf("activardindep"), dinDep = filas.IndexOf("dindep");
    filas.ForEach([&](const std::vector<Value>& fila) {
        RegistroCliente c;
        c.Nombre = CStr(fila[nombre]);
        c.Apellidos = CStr(fila[apellidos]);
        c.Codigo = CLng(fila[codigo]);
        const Value& n = fila[nacimiento];
        c.Nacimiento = n.IsNull() ? DateSerial(2000, 1, 1) : CDate(n);
        const Value& d = fila[descuento];
        c.Descuento = d.IsNull() ? 0.0 : CDbl(d);
        const Value& a = fila[activar];
        c.ActivarDinDep = !a.IsNull() && CBool(a);
        const Value& dd = fila[dinDep];
        c.DinDep = dd.IsNull() ? 0.0 : CDbl(dd);
        clientes.push_back(std::move(c));
    });
}

}  // namespace tpv
