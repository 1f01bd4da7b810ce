#include "tools/demo/fotos.hpp"

#include <cairo.h>
#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cmath>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "tools/demo/fila.hpp"
#include "tools/demo/tienda_demo.hpp"

namespace tpv::demo {

namespace {

namespace fs = std::filesystem;

constexpr int kLado = 256;

// Bytes of the UTF-8 character that starts at `i`.
std::size_t LargoCaracter(unsigned char c) {
    if (c >= 0xF0) return 4;
    if (c >= 0xE0) return 3;
    if (c >= 0xC0) return 2;
    return 1;
}

bool EmpiezaPorLetra(const std::string& palabra) {
    const auto c = static_cast<unsigned char>(palabra[0]);
    return std::isalpha(c) || c >= 0xC0;
}

struct Rgb {
    double r, g, b;
};

// Calm, saturated colours that white letters read well on.
constexpr std::array<Rgb, 10> kPaleta{{{0.80, 0.26, 0.33},
                                       {0.16, 0.50, 0.73},
                                       {0.15, 0.60, 0.47},
                                       {0.56, 0.27, 0.68},
                                       {0.85, 0.46, 0.13},
                                       {0.20, 0.40, 0.55},
                                       {0.62, 0.42, 0.25},
                                       {0.10, 0.55, 0.60},
                                       {0.70, 0.25, 0.55},
                                       {0.35, 0.50, 0.20}}};

// The same name always gets the same colour.
Rgb ColorDe(const std::string& nombre) {
    std::uint32_t h = 2166136261u;
    for (unsigned char c : nombre) h = (h ^ c) * 16777619u;
    return kPaleta[h % kPaleta.size()];
}

void Tesela(const std::string& nombre, const fs::path& fichero) {
    cairo_surface_t* s = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kLado, kLado);
    cairo_t* cr = cairo_create(s);
    const Rgb c = ColorDe(nombre);

    // A rounded tile, lighter at the top, on a transparent ground.
    const double radio = kLado * 0.14, m = 4;
    cairo_new_sub_path(cr);
    cairo_arc(cr, kLado - m - radio, m + radio, radio, -M_PI / 2, 0);
    cairo_arc(cr, kLado - m - radio, kLado - m - radio, radio, 0, M_PI / 2);
    cairo_arc(cr, m + radio, kLado - m - radio, radio, M_PI / 2, M_PI);
    cairo_arc(cr, m + radio, m + radio, radio, M_PI, 3 * M_PI / 2);
    cairo_close_path(cr);
    cairo_pattern_t* degradado = cairo_pattern_create_linear(0, 0, 0, kLado);
    cairo_pattern_add_color_stop_rgb(degradado, 0, std::min(1.0, c.r + 0.18), std::min(1.0, c.g + 0.18),
                                     std::min(1.0, c.b + 0.18));
    cairo_pattern_add_color_stop_rgb(degradado, 1, c.r, c.g, c.b);
    cairo_set_source(cr, degradado);
    cairo_fill(cr);
    cairo_pattern_destroy(degradado);

    // The initials, white and centred.
    const std::string letras = Iniciales(nombre);
    cairo_select_font_face(cr, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_BOLD);
    cairo_set_font_size(cr, letras.size() > 2 ? kLado * 0.40 : kLado * 0.50);
    cairo_text_extents_t e;
    cairo_text_extents(cr, letras.c_str(), &e);
    cairo_move_to(cr, (kLado - e.width) / 2 - e.x_bearing, (kLado - e.height) / 2 - e.y_bearing);
    cairo_set_source_rgb(cr, 1, 1, 1);
    cairo_show_text(cr, letras.c_str());

    cairo_destroy(cr);
    const cairo_status_t estado = cairo_surface_write_to_png(s, fichero.c_str());
    cairo_surface_destroy(s);
    if (estado != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error("no se pudo escribir " + fichero.string() + ": " + cairo_status_to_string(estado));
}

struct Foto {
    std::string tabla, codigo, nombre;
};

}  // namespace

std::string Iniciales(const std::string& nombre) {
    std::string letras;
    int cuantas = 0;
    for (const std::string& palabra : Split(nombre, " ")) {
        if (palabra.empty() || !EmpiezaPorLetra(palabra)) continue;
        letras += palabra.substr(0, LargoCaracter(static_cast<unsigned char>(palabra[0])));
        if (++cuantas == 2) break;
    }
    return UCase(letras);
}

int EscribirFotos(Connection& tienda, const std::string& carpeta) {
    fs::create_directories(carpeta);
    std::vector<Foto> fotos;
    Recordset rs;
    rs.Open("select codigo, nombre from productos where codigo < " + std::to_string(kPrimerProductoMasivo) +
                " order by codigo",
            tienda, adOpenStatic);
    for (; !rs.Eof(); rs.MoveNext()) fotos.push_back({"productos", CStr(rs.Get("codigo")), CStr(rs.Get("nombre"))});
    rs.Close();
    rs.Open("select codigo, nombre, apellidos from empleados order by codigo", tienda, adOpenStatic);
    for (; !rs.Eof(); rs.MoveNext())
        fotos.push_back({"empleados", CStr(rs.Get("codigo")), CStr(rs.Get("nombre")) + " " + CStr(rs.Get("apellidos"))});
    rs.Close();

    for (const Foto& f : fotos) {
        const std::string fichero = (f.tabla == "productos" ? "producto_" : "empleado_") + f.codigo + ".png";
        Tesela(f.nombre, fs::path(carpeta) / fichero);
        tienda.Execute("update " + f.tabla + " set imagen = " + Literal(Value(fichero)) + " where codigo = " + f.codigo);
    }
    // The font caches of cairo and fontconfig live until the end of the
    // program otherwise, which leak checkers report.
    cairo_debug_reset_static_data();
    FcFini();
    return static_cast<int>(fotos.size());
}

}  // namespace tpv::demo
