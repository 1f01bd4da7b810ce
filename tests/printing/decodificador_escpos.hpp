#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "core/runtime/unicode.hpp"
#include "printing/pc858.hpp"

// Reads ESC/POS bytes back into the paper they print, to check what the
// ticket printer is sent.
namespace tpv::prueba {

struct PapelDecodificado {
    std::vector<std::string> lineas;
    std::vector<std::vector<std::uint8_t>> patadas;  // each ESC p ... seen
    int cortes = 0;
    int imagenes = 0;
    bool iniciada = false;
    int paginaCodigos = -1;
    std::vector<int> negritas;  // line index of every run struck twice
};

inline PapelDecodificado DecodificarEscPos(const std::vector<std::uint8_t>& b) {
    PapelDecodificado p;
    std::vector<char32_t> linea;
    std::size_t columna = 0;
    int puntos = -1;  // the position of the last ESC $, until a text places it
    int anchoLetra = 12;
    bool negrita = false;
    auto byte = [&](std::size_t i) -> int { return i < b.size() ? b[i] : 0; };
    for (std::size_t i = 0; i < b.size();) {
        const int c = b[i];
        if (c == 27) {
            const int op = byte(i + 1);
            if (op == '@') { p.iniciada = true; i += 2; }
            else if (op == 't') { p.paginaCodigos = byte(i + 2); i += 3; }
            else if (op == '$') { puntos = byte(i + 2) | byte(i + 3) << 8; i += 4; }
            else if (op == 'M') { anchoLetra = byte(i + 2) == 1 ? 9 : 12; i += 3; }
            else if (op == 'G') { negrita = byte(i + 2) != 0; i += 3; }
            else if (op == 'd' || op == 'a') { i += 3; }
            else if (op == 'p') { p.patadas.push_back({b.begin() + i, b.begin() + std::min(i + 5, b.size())}); i += 5; }
            else i += 2;
        } else if (c == 29) {
            const int op = byte(i + 1);
            if (op == '!') i += 3;
            else if (op == 'V') { ++p.cortes; i += byte(i + 2) >= 65 ? 4 : 3; }
            else if (op == 'v') {
                const std::size_t x = byte(i + 4) | byte(i + 5) << 8, y = byte(i + 6) | byte(i + 7) << 8;
                ++p.imagenes;
                i += 8 + x * y;
            } else i += 2;
        } else if (c == 10) {
            while (!linea.empty() && linea.back() == U' ') linea.pop_back();
            p.lineas.push_back(unicode::Encode(linea));
            linea.clear();
            columna = 0;
            ++i;
        } else {
            // The ESC $ before a run repositions it; ESC G reports its strike.
            if (negrita && (p.negritas.empty() || p.negritas.back() != static_cast<int>(p.lineas.size())))
                p.negritas.push_back(static_cast<int>(p.lineas.size()));
            if (puntos >= 0) columna = static_cast<std::size_t>(puntos / anchoLetra);
            puntos = -1;
            const std::string ch = DesdePc858(std::string(1, static_cast<char>(c)));
            const auto cps = unicode::Decode(ch);
            if (linea.size() <= columna) linea.resize(columna + 1, U' ');
            linea[columna++] = cps.empty() ? U'?' : cps[0];
            ++i;
        }
    }
    return p;
}

}  // namespace tpv::prueba
