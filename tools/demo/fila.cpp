#include "tools/demo/fila.hpp"

#include <cmath>
#include <cstdio>

#include "core/runtime/fecha.hpp"

namespace tpv::demo {

namespace {

std::string Numero(double x) {
    // Fixed notation (no exponent, which the dialect may not read), trailing
    // zeros dropped: money and quantities here carry at most a few decimals.
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.6f", x);
    std::string s = buf;
    while (!s.empty() && s.back() == '0') s.pop_back();
    if (!s.empty() && s.back() == '.') s.pop_back();
    if (s == "-0") s = "0";
    return s;
}

std::string Texto(const std::string& t) {
    std::string s = "'";
    for (char c : t) {
        if (c == '\'') s += '\'';
        s += c;
    }
    s += '\'';
    return s;
}

std::string FechaHora(DateTime d) {
    const fecha::Partes p = fecha::Descomponer(d);
    char buf[48];
    const bool soloHora = d.serial >= 0 && d.serial < 1;
    const bool conHora = d.serial != std::floor(d.serial);
    if (soloHora)
        std::snprintf(buf, sizeof buf, "#%02d:%02d:%02d#", p.hora, p.minuto, p.segundo);
    else if (conHora)
        std::snprintf(buf, sizeof buf, "#%02d/%02d/%04d %02d:%02d:%02d#", p.mes, p.dia, p.anio, p.hora,
                      p.minuto, p.segundo);
    else
        std::snprintf(buf, sizeof buf, "#%02d/%02d/%04d#", p.mes, p.dia, p.anio);
    return buf;
}

char DigitoControl(std::string_view datos) {
    // Weights 3 and 1 from the rightmost data digit leftwards.
    int suma = 0;
    int peso = 3;
    for (auto it = datos.rbegin(); it != datos.rend(); ++it) {
        suma += (*it - '0') * peso;
        peso = 4 - peso;
    }
    return static_cast<char>('0' + (10 - suma % 10) % 10);
}

}  // namespace

std::string Literal(const Value& v) {
    switch (v.kind()) {
        case Value::Kind::Null: return "Null";
        case Value::Kind::Integer: return std::to_string(v.integer());
        case Value::Kind::Double: return Numero(v.real());
        case Value::Kind::Text: return Texto(v.text());
        case Value::Kind::Date: return FechaHora(v.date());
    }
    return "Null";
}

Value Dia(DateTime d) { return Value(DateTime{std::floor(d.serial)}); }

Value Hora(int hora, int minuto, int segundo) { return Value(fecha::DesdeHora(hora, minuto, segundo)); }

Fila::Fila(std::string_view tabla) : tabla_(tabla) {}

Fila& Fila::operator()(std::string_view columna, const Value& valor) {
    if (!columnas_.empty()) {
        columnas_ += ',';
        valores_ += ',';
    }
    columnas_ += columna;
    valores_ += Literal(valor);
    return *this;
}

std::string Fila::Sql() const {
    return "insert into " + tabla_ + " (" + columnas_ + ") values (" + valores_ + ")";
}

std::string Ean13(std::string_view doce) { return std::string(doce) + DigitoControl(doce); }

std::string Ean8(std::string_view siete) { return std::string(siete) + DigitoControl(siete); }

std::uint64_t Aleatorio::Siguiente() {
    std::uint64_t z = (estado_ += 0x9E3779B97F4A7C15ULL);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
}

int Aleatorio::Entre(int desde, int hasta) {
    const auto ancho = static_cast<std::uint64_t>(static_cast<long long>(hasta) - desde + 1);
    return desde + static_cast<int>(Siguiente() % ancho);
}

}  // namespace tpv::demo
