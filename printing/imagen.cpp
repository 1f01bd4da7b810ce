#include "printing/imagen.hpp"

#include <cairo.h>

#include <fstream>
#include <iterator>

namespace tpv {

namespace {

constexpr int kLadoMaximo = 8000;

// A picture as grey levels, 0 black to 255 white.
struct ImagenGris {
    int ancho = 0, alto = 0;
    std::vector<std::uint8_t> gris;
};

std::uint32_t U16(const std::string& d, std::size_t p) {
    return static_cast<std::uint8_t>(d[p]) | static_cast<std::uint8_t>(d[p + 1]) << 8;
}
std::uint32_t U32(const std::string& d, std::size_t p) { return U16(d, p) | U16(d, p + 2) << 16; }

std::uint8_t Gris(int r, int g, int b) { return static_cast<std::uint8_t>((r * 299 + g * 587 + b * 114) / 1000); }

bool LeerBmp(const std::string& d, ImagenGris& im) {
    if (d.size() < 54 || d[0] != 'B' || d[1] != 'M') return false;
    const std::size_t inicio = U32(d, 10);
    const std::size_t cabecera = U32(d, 14);
    const auto ancho = static_cast<std::int32_t>(U32(d, 18));
    const auto altoConSigno = static_cast<std::int32_t>(U32(d, 22));
    const int bits = static_cast<int>(U16(d, 28));
    const std::uint32_t compresion = U32(d, 30);
    if (cabecera < 40 || ancho <= 0 || ancho > kLadoMaximo || altoConSigno == 0) return false;
    if (altoConSigno < -kLadoMaximo || altoConSigno > kLadoMaximo) return false;
    if (!(compresion == 0 || (compresion == 3 && bits == 32))) return false;
    if (bits != 1 && bits != 4 && bits != 8 && bits != 24 && bits != 32) return false;
    const int alto = altoConSigno < 0 ? -altoConSigno : altoConSigno;
    const bool deArribaAbajo = altoConSigno < 0;

    std::vector<std::uint8_t> paleta;
    if (bits <= 8) {
        std::size_t colores = U32(d, 46);
        if (colores == 0 || colores > (1u << bits)) colores = 1u << bits;
        const std::size_t p = 14 + cabecera;
        if (p + colores * 4 > d.size()) return false;
        for (std::size_t i = 0; i < colores; ++i)
            paleta.push_back(Gris(static_cast<std::uint8_t>(d[p + i * 4 + 2]), static_cast<std::uint8_t>(d[p + i * 4 + 1]),
                                  static_cast<std::uint8_t>(d[p + i * 4])));
    }
    const std::size_t fila = ((static_cast<std::size_t>(ancho) * bits + 31) / 32) * 4;
    if (inicio > d.size() || fila * alto > d.size() - inicio) return false;

    im.ancho = ancho;
    im.alto = alto;
    im.gris.assign(static_cast<std::size_t>(ancho) * alto, 255);
    for (int y = 0; y < alto; ++y) {
        const std::size_t base = inicio + fila * static_cast<std::size_t>(deArribaAbajo ? y : alto - 1 - y);
        for (int x = 0; x < ancho; ++x) {
            std::uint8_t g = 255;
            if (bits <= 8) {
                const std::size_t bit = static_cast<std::size_t>(x) * bits;
                const auto byte = static_cast<std::uint8_t>(d[base + bit / 8]);
                const unsigned indice = (byte >> (8 - bits - bit % 8)) & ((1u << bits) - 1);
                g = indice < paleta.size() ? paleta[indice] : 255;
            } else {
                const std::size_t p = base + static_cast<std::size_t>(x) * (bits / 8);
                g = Gris(static_cast<std::uint8_t>(d[p + 2]), static_cast<std::uint8_t>(d[p + 1]),
                         static_cast<std::uint8_t>(d[p]));
            }
            im.gris[static_cast<std::size_t>(y) * ancho + x] = g;
        }
    }
    return true;
}

bool LeerPng(const std::string& ruta, ImagenGris& im) {
    cairo_surface_t* png = cairo_image_surface_create_from_png(ruta.c_str());
    bool bien = cairo_surface_status(png) == CAIRO_STATUS_SUCCESS;
    const int ancho = bien ? cairo_image_surface_get_width(png) : 0;
    const int alto = bien ? cairo_image_surface_get_height(png) : 0;
    bien = bien && ancho > 0 && alto > 0 && ancho <= kLadoMaximo && alto <= kLadoMaximo;
    if (bien) {
        // Onto white, so that transparent parts come out white.
        cairo_surface_t* lienzo = cairo_image_surface_create(CAIRO_FORMAT_RGB24, ancho, alto);
        cairo_t* cr = cairo_create(lienzo);
        cairo_set_source_rgb(cr, 1, 1, 1);
        cairo_paint(cr);
        cairo_set_source_surface(cr, png, 0, 0);
        cairo_paint(cr);
        cairo_destroy(cr);
        cairo_surface_flush(lienzo);
        const unsigned char* datos = cairo_image_surface_get_data(lienzo);
        const int paso = cairo_image_surface_get_stride(lienzo);
        im.ancho = ancho;
        im.alto = alto;
        im.gris.resize(static_cast<std::size_t>(ancho) * alto);
        for (int y = 0; y < alto; ++y)
            for (int x = 0; x < ancho; ++x) {
                std::uint32_t px;
                __builtin_memcpy(&px, datos + static_cast<std::size_t>(y) * paso + x * 4, 4);
                im.gris[static_cast<std::size_t>(y) * ancho + x] = Gris((px >> 16) & 255, (px >> 8) & 255, px & 255);
            }
        cairo_surface_destroy(lienzo);
    }
    cairo_surface_destroy(png);
    return bien;
}

}  // namespace

bool CargarImagenMono(const std::string& ruta, int anchoPuntos, int altoPuntos, ImagenMono& imagen) {
    if (anchoPuntos <= 0 || altoPuntos <= 0 || anchoPuntos > kLadoMaximo || altoPuntos > kLadoMaximo) return false;
    std::ifstream f(ruta, std::ios::binary);
    if (!f) return false;
    std::string cabeza(8, '\0');
    f.read(cabeza.data(), 8);
    ImagenGris gris;
    if (cabeza.rfind("\x89PNG", 0) == 0) {
        if (!LeerPng(ruta, gris)) return false;
    } else {
        f.seekg(0);
        const std::string datos((std::istreambuf_iterator<char>(f)), std::istreambuf_iterator<char>());
        if (!LeerBmp(datos, gris)) return false;
    }
    imagen.ancho = anchoPuntos;
    imagen.alto = altoPuntos;
    imagen.negro.assign(static_cast<std::size_t>(anchoPuntos) * altoPuntos, 0);
    for (int y = 0; y < altoPuntos; ++y) {
        const int ys = static_cast<int>(static_cast<long long>(y) * gris.alto / altoPuntos);
        for (int x = 0; x < anchoPuntos; ++x) {
            const int xs = static_cast<int>(static_cast<long long>(x) * gris.ancho / anchoPuntos);
            imagen.negro[static_cast<std::size_t>(y) * anchoPuntos + x] =
                gris.gris[static_cast<std::size_t>(ys) * gris.ancho + xs] < 128 ? 1 : 0;
        }
    }
    return true;
}

}  // namespace tpv
