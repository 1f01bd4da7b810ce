#pragma once
#include <string>

#include "printing/dispositivo_ticket.hpp"
#include "printing/escpos.hpp"

// A real ticket printer: each document is laid out on the character grid and
// sent as ESC/POS bytes to the printer's device URI (see destino.hpp).
namespace tpv {

class EscPosPrinter : public DispositivoTicket {
public:
    EscPosPrinter(std::string nombre, std::string uri, OpcionesEscPos opciones = {})
        : DispositivoTicket(std::move(nombre), uri), uri_(std::move(uri)), opciones_(std::move(opciones)) {}

protected:
    void Entregar(Papel papel) override;

private:
    std::string uri_;
    OpcionesEscPos opciones_;
};

}  // namespace tpv
