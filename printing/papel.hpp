#pragma once
#include <string>
#include <vector>

#include "printing/fuente_dispositivo.hpp"

// The paper of a ticket printer: the prints of one document laid out on the
// printer's character grid. Each print lands at the column of its position
// (see ColumnaDePosicion); prints at the same height share a line, and a print
// repeated at the same height a few twips to the right (the double strike
// that is the bold of a ticket) marks the first one bold instead of showing
// twice. Lines keep the order in which they were first printed.
namespace tpv {

struct CeldaPapel {
    char32_t caracter = U' ';
    FuenteDispositivo fuente;
    bool negrita = false;
};

struct RenglonPapel {
    enum class Tipo { Texto, Imagen, Cajon };
    Tipo tipo = Tipo::Texto;
    double y = 0;
    std::vector<CeldaPapel> celdas;  // Texto: one cell a column, trailing blanks included
    // Imagen: the file and its box in twips.
    std::string ruta;
    double x = 0, ancho = 0, alto = 0;

    // The prints that made a text line, to tell the second strike of a bold one.
    struct Golpe {
        double x;
        std::string texto;
        int columna;
    };
    std::vector<Golpe> golpes;

    std::string Texto() const;  // the line as it reads, trailing blanks removed
};

class Papel {
public:
    void Imprimir(double x, double y, const PrinterFont& fuente, const std::string& texto);
    void Dibujar(const std::string& ruta, double x, double y, double ancho, double alto);

    const std::vector<RenglonPapel>& Renglones() const { return renglones_; }
    // The text lines, as the paper reads.
    std::vector<std::string> Lineas() const;
    bool AbreCajon() const;
    bool Vacio() const { return renglones_.empty(); }
    // True when every print of the document was empty and made in the font
    // "FontA1x1": such a printer's driver kicks the drawer at each document,
    // and an empty document is how the till opens it.
    bool EsPatadaDelControlador() const { return impresiones_ > 0 && !hayTexto_ && fuenteA1x1_; }
    void Limpiar() { *this = Papel(); }

private:
    RenglonPapel* RenglonEnAltura(double y);

    std::vector<RenglonPapel> renglones_;
    int impresiones_ = 0;
    bool fuenteA1x1_ = true;
    bool hayTexto_ = false;
};

}  // namespace tpv
