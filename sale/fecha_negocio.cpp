#include "sale/fecha_negocio.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/texto.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

namespace {

// The hour of a time as its first two characters read as a number: a NULL,
// or an hour written with one figure ("9:00:00"), does not read.
int HoraDe(const Value& v, std::string_view patron = {}) { return CInt(Value(Left(Format(v, patron), 2))); }

}  // namespace

DateTime FechaNegocio(DateTime fecha1) {
    const DateTime hoy = Date();
    if (!(hoy == fecha1)) return fecha1;

    const int hora = HoraDe(Value(Time()), "hh:mm:ss");
    int apertura = 0;
    int cierre = 0;
    Recordset rs;
    rs.Open("Select Horaapertura,HoraCierre from entradas where identificador = '" + sesion().IdentificadorTerminal +
                "'",
            sesion().Conexion);
    if (!rs.Eof()) {
        try {
            apertura = HoraDe(rs["Horaapertura"]);
            cierre = HoraDe(rs["HoraCierre"]);
        } catch (const RuntimeError&) {
            apertura = 4;
            cierre = 3;
        }
    }
    if (apertura > cierre && hora < cierre) return DateTime{hoy.serial - 1};
    return hoy;
}

}  // namespace tpv
