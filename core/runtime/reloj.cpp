#include "core/runtime/reloj.hpp"

#include <ctime>
#include <optional>

#include "core/runtime/fecha.hpp"

namespace tpv::reloj {

namespace {

// The one screen thread reads it; no lock needed.
std::optional<DateTime>& Fijo() {
    static std::optional<DateTime> fijo;
    return fijo;
}

DateTime HoraDeLaMaquina() {
    std::time_t t = std::time(nullptr);
    std::tm tm{};
    localtime_r(&t, &tm);
    DateTime d = fecha::DesdeFecha(tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday);
    d.serial += fecha::DesdeHora(tm.tm_hour, tm.tm_min, tm.tm_sec).serial;
    return d;
}

}  // namespace

DateTime Ahora() { return Fijo() ? *Fijo() : HoraDeLaMaquina(); }

void Fijar(DateTime momento) { Fijo() = momento; }

void Avanzar(double milisegundos) {
    if (Fijo()) Fijo()->serial += milisegundos / 86400000.0;
}

void Soltar() { Fijo().reset(); }

bool Fijado() { return Fijo().has_value(); }

}  // namespace tpv::reloj
