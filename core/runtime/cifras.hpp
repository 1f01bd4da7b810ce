#pragma once
#include <string>

// The decimal digits of a double as the original runtime saw them whenever it
// wrote a number or rounded one by formatting: at most 15 significant digits.
// So 2.675, held in binary just below, is the text "2.675" here, and rounding
// it to two decimals gives 2.68.
namespace tpv::cifras {

struct Cifras {
    bool negativo = false;
    std::string digitos;  // significant digits, without leading or trailing zeros; empty for zero
    int exponente = 0;    // digits before the decimal point: value = 0.digitos x 10^exponente

    bool EsCero() const { return digitos.empty(); }
};

// A zero keeps no sign; a value that rounds to zero later keeps its own.
// Only finite values.
Cifras Descomponer(double x);

// Rounds to `decimales` places (may be negative), halves away from zero.
void RedondearMitadArriba(Cifras& c, int decimales);

// Digits before the decimal point, without leading zeros ("" when none).
std::string ParteEntera(const Cifras& c);
// Exactly `n` digits after the decimal point, padded with zeros.
std::string ParteDecimal(const Cifras& c, int n);
// All the digits after the decimal point, without trailing zeros.
std::string ParteDecimal(const Cifras& c);

double ADouble(const Cifras& c);

// "1.234.567" from "1234567": the thousands mark of the regional settings.
std::string Agrupar(const std::string& entero, char separador = '.');

}  // namespace tpv::cifras
