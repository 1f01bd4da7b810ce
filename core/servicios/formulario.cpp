#include "core/servicios/formulario.hpp"

#include <utility>

#include "core/datos/tipos.hpp"

namespace tpv {

Control* Formulario::Buscar(std::string_view nombreControl) {
    for (Control& c : controles)
        if (datos::IgualesSinCaso(c.nombre, nombreControl)) return &c;
    return nullptr;
}

const Control* Formulario::Buscar(std::string_view nombreControl) const {
    return const_cast<Formulario*>(this)->Buscar(nombreControl);
}

Control& Formulario::Anadir(Control control) {
    controles.push_back(std::move(control));
    return controles.back();
}

}  // namespace tpv
