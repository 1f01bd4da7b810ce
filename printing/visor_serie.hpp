#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/sesion/visor.hpp"

// The customer's pole display on a serial port at 9600 baud, 8 data bits, no
// parity, one stop bit, RTS and DTR on. Each screen goes as five writes:
// clear (12), carriage return (13), the fixed first line, cursor to row 2
// (31 36 1 2), the line of the moment; text in code page 858. A display that
// fails is never told to the cashier: its writes are dropped.
namespace tpv {

class VisorSerie : public Visor {
public:
    // `puertoVisor`: the port number as the shop stores it; `datoVisor`: the
    // fixed first line.
    VisorSerie(std::string puertoVisor, std::string datoVisor);
    ~VisorSerie() override;

    void InicializarVisor() override;
    void MostrarEnVisor(const std::string& concepto, const std::string& importe) override;
    void MostrarBienvenida() override;

    // Instead of the port, every write goes here (recording displays).
    using Salida = std::function<void(const std::vector<std::uint8_t>&)>;
    void FijarSalida(Salida salida) { salida_ = std::move(salida); }

    // The device of a port number: the suite's settings may name it
    // ("visor.3=/dev/ttyUSB0"), else COMn is /dev/ttyS(n-1).
    static std::string RutaDelPuerto(const std::string& puertoVisor);

private:
    void Pantalla(const std::string& linea);
    void Escribir(const std::vector<std::uint8_t>& bytes);

    std::string puerto_, dato_;
    int fd_ = -1;
    Salida salida_;
};

// The second row for an item: the text, "..." and blanks, the amount at the
// right edge of twenty characters.
std::string LineaVisor(const std::string& concepto, const std::string& importe);

}  // namespace tpv
