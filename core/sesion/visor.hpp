#pragma once
#include <string>

// The customer's pole display as the till's routines see it. The printing
// layer installs the real one (a serial port); until then, and on a terminal
// without a display, nothing is sent. Callers check VisorActivo themselves.
namespace tpv {

class Visor {
public:
    virtual ~Visor() = default;
    // Opens the port of the display; called once when the till screen loads.
    virtual void InicializarVisor() {}
    // A line of the sale: its text and its amount, already formatted.
    virtual void MostrarEnVisor(const std::string& concepto, const std::string& importe) = 0;
    // The welcome screen, when the till is cleared for the next sale.
    virtual void MostrarBienvenida() = 0;
};

// Installs the display of this terminal; nullptr goes back to sending nothing.
void FijarVisor(Visor* visor);
Visor& VisorDelPuesto();

}  // namespace tpv
