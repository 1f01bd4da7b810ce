#pragma once
#include <functional>
#include <memory>
#include <string>

#include "core/datos/connection.hpp"

// What comes out of the machine during a scripted run, as transcript lines:
// every printer of the shop's `impresoras` as a recording printer (ticket
// printers by their paper, list printers as PDF files), the drawer's port,
// the pole display and the sibling programs started.
namespace tpv::guion {

using Salida = std::function<void(const std::string& linea)>;

class Dispositivos {
public:
    // `carpetaPapel`: where each document is also written ("" for none; list
    // printers then write their PDFs to a temporary folder).
    Dispositivos(Salida salida, std::string carpetaPapel);
    ~Dispositivos();
    Dispositivos(const Dispositivos&) = delete;
    Dispositivos& operator=(const Dispositivos&) = delete;

    // The printers named in the shop's `impresoras`, all terminals.
    void InstalarImpresoras(Connection& cn);
    // The pole display of this terminal, with the session's port and first line.
    void InstalarVisor();

private:
    struct Estado;
    std::unique_ptr<Estado> estado_;
};

}  // namespace tpv::guion
