#include "printing/papel.hpp"

#include <cmath>

#include "core/runtime/unicode.hpp"

namespace tpv {

namespace {

// Two prints closer than this (in twips, at the same height) with the same
// text are one print struck twice.
constexpr double kDobleGolpe = 20.0;

bool MismaAltura(double a, double b) { return std::fabs(a - b) < 1.0; }

RenglonPapel NuevoRenglon(RenglonPapel::Tipo tipo, double y) {
    RenglonPapel r;
    r.tipo = tipo;
    r.y = y;
    return r;
}

}  // namespace

std::string RenglonPapel::Texto() const {
    std::vector<char32_t> cps;
    for (const auto& c : celdas) cps.push_back(c.caracter);
    while (!cps.empty() && cps.back() == U' ') cps.pop_back();
    return unicode::Encode(cps);
}

RenglonPapel* Papel::RenglonEnAltura(double y) {
    for (auto it = renglones_.rbegin(); it != renglones_.rend(); ++it)
        if (it->tipo == RenglonPapel::Tipo::Texto && MismaAltura(it->y, y)) return &*it;
    return nullptr;
}

void Papel::Imprimir(double x, double y, const PrinterFont& fuente, const std::string& texto) {
    const FuenteDispositivo f = FuenteDeDispositivo(fuente);
    if (texto.empty()) {
        ++impresiones_;
        if (unicode::Lower(fuente.Name) != "fonta1x1") fuenteA1x1_ = false;
        if (!RenglonEnAltura(y)) renglones_.push_back(NuevoRenglon(RenglonPapel::Tipo::Texto, y));
        return;
    }
    ++impresiones_;
    hayTexto_ = true;
    if (f.control) {
        // The control font prints nothing; its "A" is the drawer's kick.
        if (texto.find('A') != std::string::npos)
            renglones_.push_back(NuevoRenglon(RenglonPapel::Tipo::Cajon, y));
        return;
    }
    // Control characters never reach the printer: a text can't smuggle commands.
    std::vector<char32_t> cps = unicode::Decode(texto);
    for (auto& c : cps)
        if (c < 32 || c == 127) c = U' ';

    RenglonPapel* renglon = RenglonEnAltura(y);
    if (!renglon) {
        renglones_.push_back(NuevoRenglon(RenglonPapel::Tipo::Texto, y));
        renglon = &renglones_.back();
    }
    const int columna = ColumnaDePosicion(x, f);

    // The second strike of a bold print: same text, same height, a few twips on.
    auto& golpes = renglon->golpes;
    for (const auto& g : golpes) {
        if (g.texto == texto && std::fabs(g.x - x) <= kDobleGolpe) {
            for (int k = 0; k < static_cast<int>(cps.size()); ++k)
                if (g.columna + k < static_cast<int>(renglon->celdas.size()))
                    renglon->celdas[g.columna + k].negrita = true;
            return;
        }
    }
    golpes.push_back({x, texto, columna});
    if (renglon->celdas.size() < columna + cps.size()) renglon->celdas.resize(columna + cps.size());
    for (std::size_t k = 0; k < cps.size(); ++k) {
        auto& celda = renglon->celdas[columna + k];
        celda.caracter = cps[k];
        celda.fuente = f;
        celda.negrita = false;
    }
}

void Papel::Dibujar(const std::string& ruta, double x, double y, double ancho, double alto) {
    hayTexto_ = true;
    RenglonPapel r = NuevoRenglon(RenglonPapel::Tipo::Imagen, y);
    r.ruta = ruta;
    r.x = x;
    r.ancho = ancho;
    r.alto = alto;
    renglones_.push_back(std::move(r));
}

std::vector<std::string> Papel::Lineas() const {
    std::vector<std::string> lineas;
    for (const auto& r : renglones_)
        if (r.tipo == RenglonPapel::Tipo::Texto) lineas.push_back(r.Texto());
    return lineas;
}

bool Papel::AbreCajon() const {
    if (EsPatadaDelControlador()) return true;
    for (const auto& r : renglones_)
        if (r.tipo == RenglonPapel::Tipo::Cajon) return true;
    return false;
}

}  // namespace tpv
