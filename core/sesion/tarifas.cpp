#include "core/sesion/tarifas.hpp"

#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

namespace {

// A date in a statement is always month first, whatever the regional settings.
std::string FechaSql(DateTime d) { return Format(Value(d), "mm/dd/yyyy"); }

// The second part of "a|b": the colour of the tariff "General".
std::string ColorGeneral() {
    Sesion& s = sesion();
    ColourScheme colores;
    const auto partes = Split(colores.ColoresTarifaGeneral(s.Conexion, s.EsquemaColores), "|");
    if (partes.size() < 2) throw RuntimeError(9, "Subíndice fuera del intervalo");
    return partes[1];
}

}  // namespace

std::int32_t LeerTarifaAplicada() {
    std::int32_t tarifa = -1;
    Recordset rs;
    lectura::Abrir(rs, "Select daton from relaciones_fijas where indice = 'TarifaAplicada' and datoa= '" +
                           sesion().ClaveTerminal + "'");
    if (rs.RecordCount() > 0) tarifa = CLng(rs["daton"].Value());
    rs.Close();
    if (tarifa == -1) return tarifa;

    lectura::Abrir(rs, "select preciovalidodesde,preciovalidohasta from cabecera_precio where identificador = " +
                           std::to_string(tarifa));
    if (rs.RecordCount() > 0) {
        // A tariff that has gone out of date falls back to none, silently.
        const double hoy = Date().serial;
        if (hoy < CDate(rs["preciovalidodesde"].Value()).serial || hoy > CDate(rs["preciovalidohasta"].Value()).serial)
            tarifa = -1;
    }
    rs.Close();
    return tarifa;
}

void CargarTarifas() {
    Sesion& s = sesion();
    s.ColoresTarifas = {std::to_string(0xC0C0FF), std::to_string(0xFFFFC0), std::to_string(0xC0FFFF),
                        std::to_string(0xFFC0C0)};
    const std::string hoy = FechaSql(Date());
    Recordset rs;
    lectura::Abrir(rs, "select descripcion,identificador from cabecera_precio where preciovalidodesde <= #" + hoy +
                           "# and preciovalidohasta >= #" + hoy + "#");
    if (rs.RecordCount() > 0) {
        ButtonRecord general;
        general.TextoSuperior = "General";
        general.Codigo = "-1";
        general.Color = ColorGeneral();
        if (s.TarifaActual == -1) s.ColorTarifaActual = general.Color;
        s.Tarifas.push_back(general);

        std::size_t turno = 0;
        for (; !rs.Eof(); rs.MoveNext()) {
            ButtonRecord b;
            b.TextoSuperior = CStr(rs["descripcion"].Value());
            b.Codigo = CStr(rs["identificador"].Value());
            b.Color = s.ColoresTarifas[turno];
            turno = (turno + 1) % s.ColoresTarifas.size();
            if (CLng(rs["identificador"].Value()) == s.TarifaActual) s.ColorTarifaActual = b.Color;
            s.Tarifas.push_back(b);
        }
    }
    rs.Close();
}

std::string NombreTarifa(std::int32_t identificador) {
    Recordset rs;
    lectura::Abrir(rs,
                   "Select descripcion from cabecera_precio where identificador = " + std::to_string(identificador));
    std::string nombre;
    if (rs.RecordCount() > 0) nombre = Texto(rs["descripcion"].Value());
    rs.Close();
    return nombre;
}

}  // namespace tpv
