#include "core/servicios/tax_calculator.hpp"

namespace tpv {

TaxCalculator& TaxCalculator::Instancia() {
    static TaxCalculator instancia;
    return instancia;
}

double TaxCalculator::CalcularImpuesto(double importe, double porcentaje, bool iva) const {
    if (iva) return importe - importe / (1.0 + porcentaje / 100.0);
    return importe * porcentaje / 100.0;
}

double TaxCalculator::CalcularPvp(double importe, double impuesto, bool iva, double, double) const {
    return iva ? importe : importe + impuesto;
}

}  // namespace tpv
