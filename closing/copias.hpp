#pragma once
#include <functional>

namespace tpv {

// Prints `copias` copies, each by `imprimirCopia`. A copy that fails never
// stops the caller: the "Impresion" box tells the operator to check the
// printer, and as the failure is not forgotten between copies, every copy
// after it warns again even when it printed.
void ImprimirCopiasConAviso(int copias, const std::function<void()>& imprimirCopia);

}  // namespace tpv
