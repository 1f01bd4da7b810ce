#pragma once
#include <exception>

// The stretches of the closing that carry on after a failed statement: each
// step runs on its own, and a step that fails is skipped in silence.
namespace tpv {

template <class Paso>
bool SinErrores(Paso&& paso) {
    try {
        paso();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace tpv
