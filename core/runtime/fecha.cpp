#include "core/runtime/fecha.hpp"

#include "core/runtime/error.hpp"
#include "core/runtime/reloj.hpp"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>

namespace tpv::fecha {

namespace {

// Days from 1970-01-01 for a civil date (proleptic Gregorian).
long long DiasDesdeCivil(long long y, unsigned m, unsigned d) {
    y -= m <= 2;
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<long long>(doe) - 719468;
}

void CivilDesdeDias(long long z, int& y, int& m, int& d) {
    z += 719468;
    const long long era = (z >= 0 ? z : z - 146096) / 146097;
    const unsigned doe = static_cast<unsigned>(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const long long yy = static_cast<long long>(yoe) + era * 400;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    y = static_cast<int>(yy + (m <= 2));
}

const long long kDia1899 = DiasDesdeCivil(1899, 12, 30);

}  // namespace

bool EsFechaValida(int anio, int mes, int dia) {
    if (anio < 100 || anio > 9999 || mes < 1 || mes > 12 || dia < 1) return false;
    static const int kDias[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    int max = kDias[mes - 1];
    if (mes == 2 && ((anio % 4 == 0 && anio % 100 != 0) || anio % 400 == 0)) max = 29;
    return dia <= max;
}

DateTime DesdeFecha(int anio, int mes, int dia) {
    return DateTime{static_cast<double>(DiasDesdeCivil(anio, static_cast<unsigned>(mes), static_cast<unsigned>(dia)) - kDia1899)};
}

DateTime DesdeHora(int hora, int minuto, int segundo) {
    return DateTime{(hora * 3600.0 + minuto * 60.0 + segundo) / 86400.0};
}

DateTime EnRangoODesborda(DateTime d) {
    if (!EnRango(d)) throw ErrorDesbordamiento();
    return d;
}

Partes Descomponer(DateTime d) {
    EnRangoODesborda(d);
    // The runtime keeps negative serials as "days before, time after": the
    // fraction always counts forward from midnight.
    double dias = std::floor(d.serial);
    double frac = std::fabs(d.serial - dias);
    if (d.serial < 0) {
        dias = std::ceil(d.serial);
        frac = std::fabs(d.serial - dias);
    }
    long long segundos = std::llround(frac * 86400.0);
    if (segundos >= 86400) {
        segundos -= 86400;
        dias += d.serial < 0 ? -1 : 1;
    }
    Partes p;
    CivilDesdeDias(static_cast<long long>(dias) + kDia1899, p.anio, p.mes, p.dia);
    p.hora = static_cast<int>(segundos / 3600);
    p.minuto = static_cast<int>((segundos / 60) % 60);
    p.segundo = static_cast<int>(segundos % 60);
    return p;
}

DateTime Ahora() { return reloj::Ahora(); }

DateTime Hoy() { return DateTime{std::floor(Ahora().serial)}; }

std::string ATextoIso(DateTime d) {
    Partes p = Descomponer(d);
    char buf[32];
    bool sinDia = std::fabs(d.serial) < 1.0;
    bool sinHora = p.hora == 0 && p.minuto == 0 && p.segundo == 0;
    if (sinDia && !sinHora)
        std::snprintf(buf, sizeof buf, "%02d:%02d:%02d", p.hora, p.minuto, p.segundo);
    else if (sinHora)
        std::snprintf(buf, sizeof buf, "%04d-%02d-%02d", p.anio, p.mes, p.dia);
    else
        std::snprintf(buf, sizeof buf, "%04d-%02d-%02d %02d:%02d:%02d", p.anio, p.mes, p.dia, p.hora, p.minuto, p.segundo);
    return buf;
}

bool LeerDigitos(std::string_view t, std::size_t pos, std::size_t len, int& v) {
    if (pos + len > t.size()) return false;
    v = 0;
    for (std::size_t i = pos; i < pos + len; ++i) {
        if (t[i] < '0' || t[i] > '9') return false;
        v = v * 10 + (t[i] - '0');
    }
    return true;
}

bool DesdeTextoIso(std::string_view t, DateTime& out) {
    auto num = [&](std::size_t pos, std::size_t len, int& v) { return LeerDigitos(t, pos, len, v); };
    int y, m, d, h, mi, s;
    if (t.size() == 8 && t[2] == ':' && t[5] == ':') {
        if (!num(0, 2, h) || !num(3, 2, mi) || !num(6, 2, s)) return false;
        out = DesdeHora(h, mi, s);
        return true;
    }
    if (t.size() < 10 || t[4] != '-' || t[7] != '-') return false;
    if (!num(0, 4, y) || !num(5, 2, m) || !num(8, 2, d) || !EsFechaValida(y, m, d)) return false;
    out = DesdeFecha(y, m, d);
    if (t.size() == 10) return true;
    if (t.size() >= 19 && (t[10] == ' ' || t[10] == 'T') && t[13] == ':' && t[16] == ':' && num(11, 2, h) &&
        num(14, 2, mi) && num(17, 2, s)) {
        out.serial += DesdeHora(h, mi, s).serial;
        return true;
    }
    return false;
}

}  // namespace tpv::fecha
