#include "sale/clientes.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

long BuscarClienteEnLista(std::int32_t codigo, const ListaClientes& lista) {
    for (std::size_t i = 0; i < lista.size(); ++i)
        if (lista[i].Codigo == codigo) return static_cast<long>(i);
    return -1;
}

std::int32_t BuscarCodigoCliente(const std::string& texto) {
    Recordset rs;
    rs.Open("Select codigo from clientes where codigocliente ='" + texto + "' and borrar=0", sesion().Conexion,
            adOpenStatic);
    std::int32_t codigo = -1;
    if (!rs.Eof() && !rs.Get("codigo").IsNull()) codigo = CLng(rs.Get("codigo"));
    rs.Close();
    return codigo;
}

void AnadirClienteVentaAbierta(const std::string& codigo, const std::string& numero) {
    const std::string campos = "cliente=" + codigo + "|";
    if (numero.empty()) return;
    Sesion& s = sesion();
    RecordWriter::Instancia().Actualizar(s.Conexion, "cabecera_factura_temp", campos, s.NombreTienda, s.Multitienda,
                                         "numero = " + numero);
}

void LlamadaHistorico(const std::string& indice, const std::string& terminal, const std::string& codigoCliente) {
    Recordset rs;
    rs.Open("Select * from pasardatos where terminal = '" + terminal + "' order by indice", sesion().Conexion,
            adOpenKeyset, adLockOptimistic);
    while (!rs.Eof()) {
        rs.Delete();
        rs.MoveNext();
    }
    rs.AddNew();
    rs.Set("indice", indice);
    rs.Set("terminal", terminal);
    rs.Set("texto2", codigoCliente);
    rs.Update();
    rs.Close();
}

}  // namespace tpv
