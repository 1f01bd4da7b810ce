#include "printing/escpos_printer.hpp"

#include "printing/destino.hpp"

namespace tpv {

void EscPosPrinter::Entregar(Papel papel) {
    if (papel.Vacio() && !papel.EsPatadaDelControlador()) return;
    DestinoDeUri(uri_)->Enviar(CodificarEscPos(papel, opciones_), false);
}

}  // namespace tpv
