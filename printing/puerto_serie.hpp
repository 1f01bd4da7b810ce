#pragma once
#include <cstdint>
#include <string>
#include <vector>

// Serial ports and device files, opened so that nothing the till does on
// them can hang it: opening never waits for a carrier, and every write gives
// up after a few seconds.
namespace tpv {

inline constexpr int kEsperaEscrituraMs = 3000;

// A port of the system by the name a shop types: the suite's settings may
// name its device ("puerto.COM1=/dev/ttyUSB0"); else COMn is /dev/ttyS(n-1)
// and LPTn is /dev/lp(n-1); any other name is a path as it stands.
std::string RutaDePuerto(const std::string& nombre);

// Opens a serial port raw at the speed, 8 data bits, no parity, one stop
// bit, no flow control, with RTS and DTR on. Returns the descriptor, or -1
// with the reason in `error`.
int AbrirPuertoSerie(const std::string& ruta, int baudios, std::string& error);

// Opens a file or device for writing: device files (under /dev) must exist,
// other files are created and written at their end.
int AbrirParaEscribir(const std::string& ruta, std::string& error);

// Writes all the bytes, waiting at most `esperaMs` for the device to take
// them. False with the reason in `error` when it can't.
bool EscribirTodo(int fd, const std::uint8_t* datos, std::size_t n, int esperaMs, std::string& error);

// Closes the descriptor and forgets it.
void Cerrar(int& fd);

}  // namespace tpv
