#include "core/sesion/mensajes.hpp"

namespace tpv {

namespace {

Mensajes*& Instalados() {
    static Mensajes* mensajes = nullptr;
    return mensajes;
}

// The answers of each set of buttons, in the order they stand.
struct Juego {
    int n;
    int respuestas[3];
};

const Juego& JuegoDe(int botones) {
    static const Juego juegos[] = {
        {1, {vbOK}},                      {2, {vbOK, vbCancel}},  {3, {vbAbort, vbRetry, vbIgnore}},
        {3, {vbYes, vbNo, vbCancel}},     {2, {vbYes, vbNo}},     {2, {vbRetry, vbCancel}},
    };
    return juegos[botones >= 0 && botones <= 5 ? botones : 0];
}

}  // namespace

int CajaMensaje::NumeroDeBotones() const { return JuegoDe(Botones()).n; }

int CajaMensaje::Respuesta(int boton) const {
    const Juego& j = JuegoDe(Botones());
    return j.respuestas[boton >= 0 && boton < j.n ? boton : 0];
}

int CajaMensaje::RespuestaPorDefecto() const { return Respuesta((estilo >> 8) & 3); }

void FijarMensajes(Mensajes* mensajes) { Instalados() = mensajes; }

Mensajes* MensajesInstalados() { return Instalados(); }

int MsgBox(const std::string& texto, int estilo, const std::string& titulo) {
    CajaMensaje caja{texto, titulo.empty() ? kTituloPrograma : titulo, estilo};
    if (Mensajes* m = Instalados()) return m->Mostrar(caja);
    return caja.RespuestaPorDefecto();
}

}  // namespace tpv
