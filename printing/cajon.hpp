#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// The cash drawer and the printer choice of the report control.
namespace tpv {

// Opens the drawer of this terminal: by the shop's byte sequence written to
// the printer's port, or through the ticket printer when the port is "USB".
void AbrirCajon();

// Writes the five bytes of the sequence ("27|112|0|25|250") and a line end to
// the port. Items past the fifth are ignored, missing ones count 0.
void EscribirSecuenciaCajon(const std::string& puerto, const std::string& secuencia);

// The five bytes of a sequence. An item that is not a number counts 0; one
// outside 0 to 255 is an invalid call (error 5).
std::vector<std::uint8_t> BytesDeSecuencia(const std::string& secuencia);

// Where the drawer's bytes go: by default the port's file (see RutaDePuerto);
// the scripted runner and the tests install their own.
using EscritorPuerto = std::function<void(const std::string& puerto, const std::vector<std::uint8_t>& bytes)>;
void FijarEscritorPuerto(EscritorPuerto escritor);

// The printer settings of the report control.
struct ImpresoraInforme {
    std::string PrinterName, PrinterDriver, PrinterPort;
    void Reiniciar() { *this = ImpresoraInforme(); }
};

// Finds the printer by its exact name and hands it to the control; when none
// matches the control keeps its default printer.
void DarImpresora(const std::string& nombre, ImpresoraInforme& control);

}  // namespace tpv
