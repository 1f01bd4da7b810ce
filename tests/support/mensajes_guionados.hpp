#pragma once
#include <deque>
#include <vector>

#include "core/sesion/mensajes.hpp"

// Message boxes for tests: each box shown is kept, and answered with the next
// queued answer, or with its default button when none is queued. Installed
// while the object lives.
namespace tpv::prueba {

class MensajesGuionados : public Mensajes {
public:
    MensajesGuionados() { FijarMensajes(this); }
    ~MensajesGuionados() override { FijarMensajes(nullptr); }
    MensajesGuionados(const MensajesGuionados&) = delete;
    MensajesGuionados& operator=(const MensajesGuionados&) = delete;

    int Mostrar(const CajaMensaje& caja) override {
        mostradas.push_back(caja);
        if (respuestas.empty()) return caja.RespuestaPorDefecto();
        int r = respuestas.front();
        respuestas.pop_front();
        return r;
    }

    std::deque<int> respuestas;
    std::vector<CajaMensaje> mostradas;
};

}  // namespace tpv::prueba
