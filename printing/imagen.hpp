#pragma once
#include <cstdint>
#include <string>
#include <vector>

// A picture for the ticket printer: black and white dots. Reads BMP files
// (uncompressed, 1, 4, 8, 24 or 32 bits a pixel) and PNG files; any other
// file, or one that can't be read, gives no picture.
namespace tpv {

struct ImagenMono {
    int ancho = 0;
    int alto = 0;
    std::vector<std::uint8_t> negro;  // ancho * alto, row by row; 1 is a black dot

    bool Negro(int x, int y) const { return negro[static_cast<std::size_t>(y) * ancho + x] != 0; }
};

// The picture scaled to the given size in dots; false when it can't be read.
bool CargarImagenMono(const std::string& ruta, int anchoPuntos, int altoPuntos, ImagenMono& imagen);

}  // namespace tpv
