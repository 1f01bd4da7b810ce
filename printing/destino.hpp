#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// Where a printer's documents go, by the device URI the suite's settings give
// the printer:
//
//   file:/dev/usb/lp0  (or a bare path)    a device or plain file
//   serial:/dev/ttyUSB0?baud=38400         a serial port (9600 when not given)
//   socket://HOST:9100                     a network printer's raw port
//   cups:QUEUE                             a queue of the print system
//   carpeta:/DIR                           each document saved as a numbered file
//
// A destination that fails or doesn't answer within a few seconds raises the
// printer's error (482).
namespace tpv {

class Destino {
public:
    virtual ~Destino() = default;
    // `pdf` tells a PDF document from the printer's own raw bytes.
    virtual void Enviar(const std::vector<std::uint8_t>& datos, bool pdf) = 0;
    // The file the last document was saved in, for destinations that save.
    virtual std::string UltimoFichero() const { return ""; }
};

std::unique_ptr<Destino> DestinoDeUri(const std::string& uri);

inline constexpr int kEsperaConexionMs = 3000;

}  // namespace tpv
