#include "printing/escpos.hpp"

#include <algorithm>
#include <cmath>

#include "core/runtime/unicode.hpp"
#include "printing/imagen.hpp"
#include "printing/pc858.hpp"

namespace tpv {

namespace {

constexpr std::uint8_t ESC = 27, GS = 29, LF = 10;

bool MismoAspecto(const CeldaPapel& a, const CeldaPapel& b) {
    return a.fuente.letra == b.fuente.letra && a.fuente.multAncho == b.fuente.multAncho &&
           a.fuente.multAlto == b.fuente.multAlto && a.negrita == b.negrita;
}

void Anadir(Bytes& b, std::initializer_list<int> valores) {
    for (int v : valores) b.push_back(static_cast<std::uint8_t>(v));
}

void Texto(Bytes& b, const RenglonPapel& r) {
    std::size_t fin = r.celdas.size();
    while (fin > 0 && r.celdas[fin - 1].caracter == U' ') --fin;
    std::size_t i = 0;
    while (i < fin) {
        std::size_t j = i + 1;
        while (j < fin && MismoAspecto(r.celdas[i], r.celdas[j])) ++j;
        const CeldaPapel& c = r.celdas[i];
        const int puntos = static_cast<int>(i) * c.fuente.anchoPuntos;
        Anadir(b, {ESC, '$', puntos & 255, (puntos >> 8) & 255});
        Anadir(b, {ESC, 'M', c.fuente.letra == 'B' ? 1 : 0});
        Anadir(b, {GS, '!', ((c.fuente.multAncho - 1) << 4) | (c.fuente.multAlto - 1)});
        Anadir(b, {ESC, 'G', c.negrita ? 1 : 0});
        std::vector<char32_t> trozo;
        for (std::size_t k = i; k < j; ++k) trozo.push_back(r.celdas[k].caracter);
        for (char ch : APc858(unicode::Encode(trozo))) b.push_back(static_cast<std::uint8_t>(ch));
        i = j;
    }
    b.push_back(LF);
}

void Imagen(Bytes& b, const RenglonPapel& r, const OpcionesEscPos& o) {
    const int izquierda = std::clamp(static_cast<int>(std::lround(r.x / kTwipsPorPunto)), 0, o.anchoPapelPuntos);
    const int ancho = static_cast<int>(std::lround(r.ancho / kTwipsPorPunto));
    const int alto = static_cast<int>(std::lround(r.alto / kTwipsPorPunto));
    ImagenMono im;
    if (ancho <= 0 || alto <= 0 || !CargarImagenMono(r.ruta, ancho, alto, im)) return;
    const int total = std::min(izquierda + ancho, o.anchoPapelPuntos);
    const int bytesFila = (total + 7) / 8;
    if (bytesFila == 0) return;
    Anadir(b, {ESC, 'a', 0});
    Anadir(b, {GS, 'v', '0', 0, bytesFila & 255, bytesFila >> 8, alto & 255, alto >> 8});
    for (int y = 0; y < alto; ++y) {
        for (int bx = 0; bx < bytesFila; ++bx) {
            std::uint8_t byte = 0;
            for (int k = 0; k < 8; ++k) {
                const int x = bx * 8 + k - izquierda;
                if (x >= 0 && x < ancho && bx * 8 + k < total && im.Negro(x, y)) byte |= static_cast<std::uint8_t>(0x80 >> k);
            }
            b.push_back(byte);
        }
    }
}

}  // namespace

Bytes CodificarEscPos(const Papel& papel, const OpcionesEscPos& o) {
    Bytes b;
    Anadir(b, {ESC, '@', ESC, 't', 19});
    if (papel.EsPatadaDelControlador()) {
        b.insert(b.end(), o.secuenciaCajon.begin(), o.secuenciaCajon.end());
        return b;
    }
    bool hayPapel = false;
    for (const auto& r : papel.Renglones()) {
        switch (r.tipo) {
            case RenglonPapel::Tipo::Texto:
                Texto(b, r);
                hayPapel = true;
                break;
            case RenglonPapel::Tipo::Imagen:
                Imagen(b, r, o);
                hayPapel = true;
                break;
            case RenglonPapel::Tipo::Cajon:
                b.insert(b.end(), o.secuenciaCajon.begin(), o.secuenciaCajon.end());
                break;
        }
    }
    if (hayPapel) {
        Anadir(b, {ESC, 'd', o.lineasAntesDelCorte});
        Anadir(b, {GS, 'V', 1});
    }
    return b;
}

}  // namespace tpv
