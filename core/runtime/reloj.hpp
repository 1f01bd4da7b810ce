#pragma once
#include "core/runtime/value.hpp"

// The one clock of the till. Every today and now reads it. It follows the
// machine's local time until it is set; from then on it stands still and
// moves only when told, so that tests and scripted runs see the time they
// chose.
namespace tpv::reloj {

// Now, in local time, as a date serial with the time as the fraction.
DateTime Ahora();

// Sets the clock to `momento` and stops it there.
void Fijar(DateTime momento);
// Moves a set clock forward; on the machine's time it does nothing.
void Avanzar(double milisegundos);
// Back to the machine's time.
void Soltar();
bool Fijado();

}  // namespace tpv::reloj
