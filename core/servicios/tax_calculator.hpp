#pragma once

namespace tpv {

// Tax of an amount (of a line, whatever its quantity). Nothing is rounded
// here: callers format the result to the decimals they need.
class TaxCalculator {
public:
    static TaxCalculator& Instancia();

    // The tax at `porcentaje` percent: with `iva` true `importe` carries the
    // tax and this is the part of it that is tax; with `iva` false `importe`
    // is net and this is the tax to add.
    double CalcularImpuesto(double importe, double porcentaje, bool iva) const;
    // The price the customer pays: `importe` with `iva` true, else `importe`
    // plus `impuesto`. The last two arguments are passed 0 and not used.
    double CalcularPvp(double importe, double impuesto, bool iva, double = 0, double = 0) const;

private:
    TaxCalculator() = default;
};

}  // namespace tpv
