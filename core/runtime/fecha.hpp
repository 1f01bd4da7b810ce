#pragma once
#include <string>
#include <string_view>

#include "core/runtime/value.hpp"

// Calendar arithmetic on the runtime's date serials (days since 30/12/1899).
namespace tpv::fecha {

struct Partes {
    int anio = 1899, mes = 12, dia = 30;
    int hora = 0, minuto = 0, segundo = 0;
};

// The range of dates the runtime can hold: 01/01/100 to 31/12/9999.
inline constexpr double kSerialMinimo = -657434.0;
inline constexpr double kSerialMaximo = 2958466.0;  // the first serial beyond it
inline bool EnRango(DateTime d) { return d.serial >= kSerialMinimo && d.serial < kSerialMaximo; }
// The date itself; a value outside the range (or not a number) is the
// runtime's overflow error.
DateTime EnRangoODesborda(DateTime d);

bool EsFechaValida(int anio, int mes, int dia);
DateTime DesdeFecha(int anio, int mes, int dia);             // no check: the caller validates
DateTime DesdeHora(int hora, int minuto, int segundo);
Partes Descomponer(DateTime d);  // rounds to the second; overflow error outside the range

// The till's clock (reloj.hpp), in local time.
DateTime Ahora();
DateTime Hoy();

// Invariant forms used by the data layer: "yyyy-mm-dd", "hh:mm:ss",
// "yyyy-mm-dd hh:mm:ss"; a day-0 value prints as a time alone, a value
// without time as a date alone.
std::string ATextoIso(DateTime d);
// Reads len digits at pos of t into v; false when they aren't all digits.
bool LeerDigitos(std::string_view t, std::size_t pos, std::size_t len, int& v);
// Reads those forms back; false when the text is not one of them.
bool DesdeTextoIso(std::string_view text, DateTime& out);

}  // namespace tpv::fecha
