#pragma once
#include <string>

namespace tpv {

// Keeps a second till from running on the same machine: the first holds an
// exclusive lock on a file for as long as it runs; the lock goes with the
// process, so a till that died leaves nothing behind.
class InstanciaUnica {
public:
    InstanciaUnica() = default;
    ~InstanciaUnica();
    InstanciaUnica(const InstanciaUnica&) = delete;
    InstanciaUnica& operator=(const InstanciaUnica&) = delete;

    // False when another holder has the lock (or the file cannot be made).
    bool Tomar(const std::string& ruta);
    void Soltar();
    bool Tomada() const { return fd_ >= 0; }

    // "tpv.lock" in the user's runtime folder, or in /tmp.
    static std::string RutaPorDefecto();

private:
    int fd_ = -1;
};

}  // namespace tpv
