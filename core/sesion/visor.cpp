#include "core/sesion/visor.hpp"

namespace tpv {

namespace {

class VisorMudo : public Visor {
public:
    void MostrarEnVisor(const std::string&, const std::string&) override {}
    void MostrarBienvenida() override {}
};

Visor*& Instalado() {
    static Visor* visor = nullptr;
    return visor;
}

}  // namespace

void FijarVisor(Visor* visor) { Instalado() = visor; }

Visor& VisorDelPuesto() {
    static VisorMudo mudo;
    return Instalado() ? *Instalado() : mudo;
}

}  // namespace tpv
