#include "printing/ticket_consultas.hpp"

#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"

namespace tpv {

namespace {

std::string Numero(std::int32_t codigo) { return std::to_string(codigo); }

}  // namespace

std::string ObtenerNomEmpleado(Connection& cn, std::int32_t codigo) {
    std::string nombre = "Xxxxx X";
    Recordset rs;
    rs.Open("Select nombre,apellidos from empleados where codigo = " + Numero(codigo), cn, adOpenStatic);
    if (!rs.Eof()) {
        nombre = Texto(rs.Get("nombre"));
        if (Len(nombre) > 5) nombre = Left(nombre, 5);
        const Value& apellidos = rs.Get("apellidos");
        if (!apellidos.IsNull()) nombre += " " + Left(Texto(apellidos), 1);
    }
    rs.Close();
    return nombre;
}

std::string obtenerNomPedido_x_Mesa(Connection& cn, const std::string& codigo) {
    std::string nombre;
    if (Val(codigo) > 0) {
        Recordset rs;
        rs.Open("Select nombre from mesas where codigo = " + codigo, cn, adOpenStatic);
        if (!rs.Eof()) nombre = Texto(rs.Get("nombre"));
        rs.Close();
    }
    return nombre;
}

std::string ObtenerNomClientexCodigo(Connection& cn, std::int32_t codigo, std::string& nif, std::string& telefono,
                                     std::string& direccion) {
    std::string nombre = "Cliente Generico";
    nif.clear();
    telefono.clear();
    direccion.clear();
    if (codigo > 0) {
        Recordset rs;
        rs.Open("Select nombre, apellidos,nif,telefono2, direccion from clientes where codigo = " + Numero(codigo), cn,
                adOpenStatic);
        if (!rs.Eof()) {
            nombre = Texto(rs.Get("nombre")) + " " + Texto(rs.Get("apellidos"));
            nif = Texto(rs.Get("nif"));
            telefono = Texto(rs.Get("telefono2"));
            direccion = Texto(rs.Get("direccion"));
        }
        rs.Close();
    }
    return nombre;
}

std::string ObtenerNomFormaPago(Connection& cn, std::int32_t codigo) {
    std::string nombre;
    if (codigo > 0) {
        Recordset rs;
        rs.Open("Select nombre from formapago where codigo = " + Numero(codigo), cn, adOpenStatic);
        if (!rs.Eof()) nombre = Texto(rs.Get("nombre"));
        rs.Close();
    }
    return nombre;
}

std::string NumeroMesaDeVenta(Connection& cn, std::int32_t codigo, Recordset* venta) {
    std::string mesa = "Barra";
    if (codigo > -1) {
        Recordset rs;
        rs.Open("Select mesas.nummesa from mesas where mesas.codigo = " + Numero(codigo), cn, adOpenStatic);
        if (!rs.Eof())
            mesa = Texto(rs.Get("nummesa"));
        else if (venta != nullptr)
            mesa = Texto(venta->Get("numpedido"));
        rs.Close();
    }
    return mesa;
}

ConceptoPropina ObtenerConceptoPropina(Connection& cn) {
    ConceptoPropina concepto;
    Recordset rs;
    rs.Open("Select * from relaciones_fijas where indice = 'UtilizaConceptoPropina'", cn, adOpenStatic);
    if (!rs.Eof()) {
        std::string nombre = Texto(rs.Get("datoa"));
        if (nombre.empty()) nombre = "Propina";
        const Value& daton = rs.Get("daton");
        concepto.porcentaje = daton.IsNull() ? 0.0 : CDbl(daton);
        const Value& otros = rs.Get("otros");
        concepto.base = otros.IsNull() ? "TOTAL" : Texto(otros);
        concepto.etiqueta = nombre + " " + CStr(concepto.porcentaje) + "%";
    }
    rs.Close();
    return concepto;
}

bool HayLineaPropinas(Connection& cn) {
    Recordset rs;
    rs.Open("select datoa from relaciones_fijas where indice ='LineaPropinas'", cn, adOpenStatic);
    const bool hay = rs.RecordCount() == 1 && Texto(rs.Get("datoa")) == "SI";
    rs.Close();
    return hay;
}

}  // namespace tpv
