#pragma once
#include <string>

namespace tpv {

// Keeps a second till from running on the same machine, whoever starts it:
// the first holds a name in the machine's abstract socket space for as long
// as it runs. Any user may take a free name, and the kernel lets it go when
// the process ends, so a till that died leaves nothing behind.
class InstanciaUnica {
public:
    InstanciaUnica() = default;
    ~InstanciaUnica();
    InstanciaUnica(const InstanciaUnica&) = delete;
    InstanciaUnica& operator=(const InstanciaUnica&) = delete;

    // False when another process holds the name (or no socket can be made).
    bool Tomar(const std::string& nombre);
    void Soltar();
    bool Tomada() const { return fd_ >= 0; }

    // The name every till of the machine takes.
    static std::string NombrePorDefecto();

private:
    int fd_ = -1;
};

}  // namespace tpv
