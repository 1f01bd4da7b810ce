#include "core/sesion/instancia_unica.hpp"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>

namespace tpv {

InstanciaUnica::~InstanciaUnica() { Soltar(); }

bool InstanciaUnica::Tomar(const std::string& nombre) {
    if (fd_ >= 0) return true;
    sockaddr_un dir{};
    dir.sun_family = AF_UNIX;
    // An abstract name: a leading zero byte, then the name; no file is made.
    if (nombre.empty() || nombre.size() + 1 > sizeof dir.sun_path) return false;
    std::memcpy(dir.sun_path + 1, nombre.data(), nombre.size());
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd < 0) return false;
    const auto largo = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + nombre.size());
    if (::bind(fd, reinterpret_cast<const sockaddr*>(&dir), largo) != 0) {
        ::close(fd);
        return false;
    }
    fd_ = fd;
    return true;
}

void InstanciaUnica::Soltar() {
    if (fd_ < 0) return;
    ::close(fd_);
    fd_ = -1;
}

std::string InstanciaUnica::NombrePorDefecto() { return "tpv-caja"; }

}  // namespace tpv
