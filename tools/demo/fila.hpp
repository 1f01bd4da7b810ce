#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "core/runtime/value.hpp"

// Statement text for the demo shop, written in the dialect the till uses:
// text between apostrophes, decimals with a dot, dates as #mm/dd/yyyy#.
namespace tpv::demo {

// A value as it stands in a statement. A date without time of day gives
// #mm/dd/yyyy#, a time of day alone (day 0) gives #hh:mm:ss#.
std::string Literal(const Value& v);

// A day and a time of day as values for a row.
Value Dia(DateTime d);
Value Hora(int hora, int minuto, int segundo = 0);

// One row to insert, built column by column:
//   Fila("productos")("Codigo", 1)("nombre", "Leche").Sql()
class Fila {
public:
    explicit Fila(std::string_view tabla);
    Fila& operator()(std::string_view columna, const Value& valor);
    std::string Sql() const;

private:
    std::string tabla_;
    std::string columnas_;
    std::string valores_;
};

// EAN-13 from its first twelve digits: the check digit is appended.
std::string Ean13(std::string_view doce);
// EAN-8 from its first seven digits.
std::string Ean8(std::string_view siete);

// A small deterministic generator (splitmix64): the same starting value gives the same
// shop on every machine, which the standard distributions don't promise.
class Aleatorio {
public:
    explicit Aleatorio(std::uint64_t semilla) : estado_(semilla) {}
    std::uint64_t Siguiente();
    // Whole number in [desde, hasta].
    int Entre(int desde, int hasta);
    // True with probability porcentaje / 100.
    bool Probable(int porcentaje) { return Entre(1, 100) <= porcentaje; }
    template <class T, std::size_t N>
    const T& De(const T (&lista)[N]) { return lista[Entre(0, static_cast<int>(N) - 1)]; }

private:
    std::uint64_t estado_;
};

}  // namespace tpv::demo
