#include "printing/fuente_dispositivo.hpp"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "core/runtime/unicode.hpp"

namespace tpv {

namespace {

// The multipliers after the letter: "11", "1x1", "22", "2x2", "21"...
void LeerMultiplicadores(const std::string& resto, FuenteDispositivo& f) {
    std::string cifras;
    for (char c : resto)
        if (std::isdigit(static_cast<unsigned char>(c))) cifras += c;
    if (cifras.size() != 2) return;
    f.multAncho = std::clamp(cifras[0] - '0', 1, 8);
    f.multAlto = std::clamp(cifras[1] - '0', 1, 8);
}

}  // namespace

FuenteDispositivo FuenteDeDispositivo(const PrinterFont& fuente) {
    FuenteDispositivo f;
    const std::string nombre = unicode::Lower(fuente.Name);
    if (nombre == "control") {
        f.control = true;
    } else if (nombre.rfind("fontb", 0) == 0) {
        f.letra = 'B';
        f.anchoPuntos = 9;
        f.altoLineaPuntos = 24;
        LeerMultiplicadores(nombre.substr(5), f);
    } else if (nombre.rfind("fonta", 0) == 0) {
        LeerMultiplicadores(nombre.substr(5), f);
    }
    if (fuente.Size >= 14) {
        f.multAncho = std::min(8, f.multAncho * 2);
        f.multAlto = std::min(8, f.multAlto * 2);
    }
    return f;
}

int ColumnaDePosicion(double x, const FuenteDispositivo& fuente) {
    if (!(x > 0)) return 0;
    const double columna = std::floor(x / fuente.AnchoNormal() + 0.5);
    return columna > 100000 ? 100000 : static_cast<int>(columna);
}

}  // namespace tpv
