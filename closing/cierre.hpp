#pragma once
#include <cstdint>
#include <functional>
#include <string>

#include "core/runtime/value.hpp"

namespace tpv {

// What the closing reads from the till screen and leaves on it. The till
// hands its own state over; the closing never sees the screen itself.
struct CajaEnCierre {
    bool& ModoAbono;                   // a refund is being taken; cleared by the closing
    std::string NumeroFacturaAbonada;  // the refunded invoice, in refund mode
    DateTime Fecha1;                   // the date on the till screen
    std::string CajaText_Pago;         // the amount to pay, as shown on the till
    std::function<void(const std::string&)> lblUltFactura;  // shows the last invoice number
};

// What the settlement screen hands to the closing.
struct DatosCierre {
    std::int32_t numeroVenta = 0;
    bool imprimir = false;
    bool abrirCajon = false;
    std::string entrega;
    std::string devolucion;  // may be changed: a sale left wholly on credit prints its debt here
    std::string formaPago;
    std::string tarjeta;
    double deuda = 0.0;
    bool factura = false;
    std::int32_t numeroVale = -1;
    std::string listaRegalo;
    bool imprimirValeAbono = false;
    std::string imagenLogo;  // the ticket logo picture loaded on the settlement screen ("" for none)
};

// Turns the open sale `datos.numeroVenta` into a closed sale (or refund),
// moves the stock, clears the temporary rows, prints and opens the drawer.
void CerrarVenta(DatosCierre& datos, CajaEnCierre& caja);

}  // namespace tpv
