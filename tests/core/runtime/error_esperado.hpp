#pragma once
#include <functional>
#include <string>

#include "core/runtime/error.hpp"

namespace tpv::prueba {

// The number and message of the run-time error that `f` raises; 0 and ""
// when it raises none.
struct ErrorVisto {
    long numero = 0;
    std::string mensaje;
};

inline ErrorVisto ErrorDe(const std::function<void()>& f) {
    try {
        f();
    } catch (const RuntimeError& e) {
        return {e.Number(), e.what()};
    }
    return {};
}

}  // namespace tpv::prueba
