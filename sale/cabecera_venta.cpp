// The header of a sale in progress: its opening and its totals.
#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/field_list.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/contadores.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/lineas_venta.hpp"

namespace tpv {

std::int32_t AbrirVenta(Label& etiquetaNumero, std::int32_t cliente, const std::string& nombreEmpleado,
                        const std::string& codigoEmpleado) {
    Sesion& s = sesion();
    const std::int32_t numero = SiguienteNumeroVenta();
    const std::string campos =
        "Numero=" + CStr(numero) + "|" + "fecha=" + Texto(Date()) + "|" + "cliente=" + CStr(cliente) + "|" +
        "Empleado=" + nombreEmpleado + "|" + "Hora=" + Texto(Time()) + "|" + "Codigo_Empleado=" + codigoEmpleado + "|" +
        "ImpuestoIncluido=" + (s.opciones.iva ? "-1" : "0") + "|" + "terminal=" + s.TerminalActual + "|";
    RecordWriter::Instancia().Insertar(s.Conexion, "Cabecera_factura_Temp", campos, s.NombreTienda, s.Multitienda, "");
    etiquetaNumero.caption = CStr(numero);
    return numero;
}

void ActualizarTotalesCabecera(std::int32_t numero) {
    const std::string n = std::to_string(numero);
    Recordset rs;
    lectura::Abrir(rs,
                   "Select sum(precio) as total,sum(impuesto) as totalimpuesto,sum(impuesto_2) as "
                   "totalImpuesto_2 from detalle_factura_temp where num_factura = " +
                       n);
    double total = 0, impuesto = 0, impuesto2 = 0;
    if (rs.RecordCount() > 0) {
        auto suma = [&](const char* campo) {
            const Value& v = rs[campo].Value();
            return v.IsNull() ? 0.0 : CDbl(v);
        };
        total = suma("total");
        impuesto = suma("totalimpuesto");
        impuesto2 = suma("totalImpuesto_2");
    }
    rs.Close();
    // The sums go in as their regional text between apostrophes.
    sesion().Conexion.Execute("update cabecera_factura_temp set total='" + CStr(total) + "',impuesto='" +
                              CStr(impuesto) + "', impuesto_2='" + CStr(impuesto2) + "' where numero = " + n);
}

void RecalcularCabecera(std::int32_t numero) {
    const std::string n = std::to_string(numero);
    Recordset cabecera;
    lectura::AbrirParaCambiar(cabecera,
                              "Select total,impuesto,descuento,recargo from cabecera_factura_temp where numero = " + n);
    if (cabecera.RecordCount() > 0) {
        Recordset sumas;
        lectura::Abrir(sumas,
                       "Select sum(precio) as totalPrecio, sum(Impuesto) as totalimpuesto, sum(descuento) as "
                       "totaldescuento, sum(recargo) as totalRecargo from detalle_factura_temp where "
                       "num_factura = " +
                           n);
        auto suma = [&](const char* campo) {
            const Value& v = sumas[campo].Value();
            return v.IsNull() ? 0.0 : CDbl(v);
        };
        cabecera["total"] = suma("totalPrecio");
        cabecera["impuesto"] = suma("totalimpuesto");
        cabecera["descuento"] = suma("totaldescuento");
        cabecera["recargo"] = suma("totalRecargo");
        sumas.Close();
        cabecera.Update();
    }
    cabecera.Close();
}

}  // namespace tpv
