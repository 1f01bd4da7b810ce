#include "core/runtime/calendario.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/runtime/conversiones.hpp"
#include "core/runtime/fecha.hpp"

namespace tpv {

namespace {

enum class Intervalo { Anio, Trimestre, Mes, DiaDelAnio, Dia, DiaSemana, Semana, Hora, Minuto, Segundo };

Intervalo LeerIntervalo(std::string_view texto) {
    std::string t;
    for (char c : texto) t.push_back(c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c);
    if (t == "yyyy") return Intervalo::Anio;
    if (t == "q") return Intervalo::Trimestre;
    if (t == "m") return Intervalo::Mes;
    if (t == "y") return Intervalo::DiaDelAnio;
    if (t == "d") return Intervalo::Dia;
    if (t == "w") return Intervalo::DiaSemana;
    if (t == "ww") return Intervalo::Semana;
    if (t == "h") return Intervalo::Hora;
    if (t == "n") return Intervalo::Minuto;
    if (t == "s") return Intervalo::Segundo;
    throw ErrorLlamadaNoValida();
}

// The day as a whole serial, whatever the sign convention of the time.
long long NumeroDia(const fecha::Partes& p) {
    return static_cast<long long>(fecha::DesdeFecha(p.anio, p.mes, p.dia).serial);
}

long long SegundosDelDia(const fecha::Partes& p) { return p.hora * 3600LL + p.minuto * 60LL + p.segundo; }

long long DividirHaciaAbajo(long long a, long long b) { return a / b - ((a % b != 0) && ((a < 0) != (b < 0))); }

DateTime Componer(int anio, int mes, int dia, const fecha::Partes& hora) {
    if (!fecha::EsFechaValida(anio, mes, dia)) throw ErrorLlamadaNoValida();
    DateTime d = fecha::DesdeFecha(anio, mes, dia);
    d.serial += fecha::DesdeHora(hora.hora, hora.minuto, hora.segundo).serial;
    return d;
}

int DiasDelMes(int anio, int mes) {
    int dias = 31;
    while (dias > 28 && !fecha::EsFechaValida(anio, mes, dias)) --dias;
    return dias;
}

DateTime ComprobarRango(double serial) {
    if (!(serial >= -657434.0 && serial < 2958466.0)) throw ErrorLlamadaNoValida();
    return DateTime{serial};
}

}  // namespace

DateTime Date() { return fecha::Hoy(); }

DateTime Time() {
    DateTime ahora = fecha::Ahora();
    return DateTime{ahora.serial - std::floor(ahora.serial)};
}

DateTime Now() { return fecha::Ahora(); }

int Day(const Value& d) { return fecha::Descomponer(CDate(d)).dia; }
int Month(const Value& d) { return fecha::Descomponer(CDate(d)).mes; }
int Year(const Value& d) { return fecha::Descomponer(CDate(d)).anio; }
int Hour(const Value& d) { return fecha::Descomponer(CDate(d)).hora; }
int Minute(const Value& d) { return fecha::Descomponer(CDate(d)).minuto; }
int Second(const Value& d) { return fecha::Descomponer(CDate(d)).segundo; }

int Weekday(const Value& d, int primerDia) {
    if (primerDia < 0 || primerDia > 7) throw ErrorLlamadaNoValida();
    if (primerDia == 0) primerDia = 2;  // the regional week starts on Monday
    // Serial 1, 31/12/1899, was a Sunday.
    const long long domingoEsUno = ((NumeroDia(fecha::Descomponer(CDate(d))) - 1) % 7 + 7) % 7 + 1;
    return static_cast<int>((domingoEsUno - primerDia + 7) % 7) + 1;
}

DateTime DateSerial(int anio, int mes, int dia) {
    if (anio >= 0 && anio < 30) anio += 2000;
    else if (anio >= 30 && anio < 100) anio += 1900;
    long long meses = anio * 12LL + (mes - 1);
    const int a = static_cast<int>(DividirHaciaAbajo(meses, 12));
    const int m = static_cast<int>(meses - a * 12LL) + 1;
    if (!fecha::EsFechaValida(a, m, 1)) throw ErrorLlamadaNoValida();
    return ComprobarRango(fecha::DesdeFecha(a, m, 1).serial + (dia - 1));
}

DateTime TimeSerial(int hora, int minuto, int segundo) {
    return ComprobarRango((hora * 3600.0 + minuto * 60.0 + segundo) / 86400.0);
}

DateTime DateValue(const Value& d) {
    fecha::Partes p = fecha::Descomponer(CDate(d));
    return fecha::DesdeFecha(p.anio, p.mes, p.dia);
}

DateTime TimeValue(const Value& d) {
    fecha::Partes p = fecha::Descomponer(CDate(d));
    return fecha::DesdeHora(p.hora, p.minuto, p.segundo);
}

DateTime DateAdd(std::string_view intervalo, double n, const Value& d) {
    const Intervalo i = LeerIntervalo(intervalo);
    const DateTime base = CDate(d);
    const long long k = static_cast<long long>(std::trunc(n));
    long long meses = 0;
    double dias = 0.0;
    switch (i) {
        case Intervalo::Anio: meses = 12 * k; break;
        case Intervalo::Trimestre: meses = 3 * k; break;
        case Intervalo::Mes: meses = k; break;
        case Intervalo::DiaDelAnio:
        case Intervalo::Dia:
        case Intervalo::DiaSemana: dias = static_cast<double>(k); break;
        case Intervalo::Semana: dias = 7.0 * static_cast<double>(k); break;
        case Intervalo::Hora: dias = static_cast<double>(k) / 24.0; break;
        case Intervalo::Minuto: dias = static_cast<double>(k) / 1440.0; break;
        case Intervalo::Segundo: dias = static_cast<double>(k) / 86400.0; break;
    }
    if (i == Intervalo::Anio || i == Intervalo::Trimestre || i == Intervalo::Mes) {
        fecha::Partes p = fecha::Descomponer(base);
        const long long total = p.anio * 12LL + (p.mes - 1) + meses;
        const long long anio = DividirHaciaAbajo(total, 12);
        if (anio < 100 || anio > 9999) throw ErrorLlamadaNoValida();
        const int mes = static_cast<int>(total - anio * 12) + 1;
        const int dia = std::min(p.dia, DiasDelMes(static_cast<int>(anio), mes));
        return Componer(static_cast<int>(anio), mes, dia, p);
    }
    return ComprobarRango(base.serial + dias);
}

long long DateDiff(std::string_view intervalo, const Value& d1, const Value& d2) {
    const Intervalo i = LeerIntervalo(intervalo);
    const fecha::Partes a = fecha::Descomponer(CDate(d1));
    const fecha::Partes b = fecha::Descomponer(CDate(d2));
    const long long diaA = NumeroDia(a), diaB = NumeroDia(b);
    const long long segA = diaA * 86400 + SegundosDelDia(a), segB = diaB * 86400 + SegundosDelDia(b);
    switch (i) {
        case Intervalo::Anio: return b.anio - a.anio;
        case Intervalo::Trimestre: return (b.anio * 4LL + (b.mes - 1) / 3) - (a.anio * 4LL + (a.mes - 1) / 3);
        case Intervalo::Mes: return (b.anio * 12LL + b.mes) - (a.anio * 12LL + a.mes);
        case Intervalo::DiaDelAnio:
        case Intervalo::Dia: return diaB - diaA;
        case Intervalo::DiaSemana: return (diaB - diaA) / 7;
        case Intervalo::Semana: return DividirHaciaAbajo(diaB - 1, 7) - DividirHaciaAbajo(diaA - 1, 7);
        case Intervalo::Hora: return DividirHaciaAbajo(segB, 3600) - DividirHaciaAbajo(segA, 3600);
        case Intervalo::Minuto: return DividirHaciaAbajo(segB, 60) - DividirHaciaAbajo(segA, 60);
        case Intervalo::Segundo: return segB - segA;
    }
    return 0;
}

}  // namespace tpv
