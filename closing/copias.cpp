#include "closing/copias.hpp"

#include <exception>

#include "core/sesion/mensajes.hpp"

namespace tpv {

void ImprimirCopiasConAviso(int copias, const std::function<void()>& imprimirCopia) {
    bool hayError = false;
    for (int copia = 1; copia <= copias; ++copia) {
        try {
            imprimirCopia();
        } catch (const std::exception&) {
            hayError = true;
        }
        if (hayError)
            MsgBox(
                "Compruebe la conexion con su impresora, si la impresora esta conectada a otro equipo compruebe el "
                "estado de la conexion.",
                vbCritical, "Impresion");
    }
}

}  // namespace tpv
