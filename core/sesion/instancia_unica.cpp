#include "core/sesion/instancia_unica.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdlib>

namespace tpv {

InstanciaUnica::~InstanciaUnica() { Soltar(); }

bool InstanciaUnica::Tomar(const std::string& ruta) {
    if (fd_ >= 0) return true;
    const int fd = ::open(ruta.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0) return false;
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        return false;
    }
    fd_ = fd;
    return true;
}

void InstanciaUnica::Soltar() {
    if (fd_ < 0) return;
    ::flock(fd_, LOCK_UN);
    ::close(fd_);
    fd_ = -1;
}

std::string InstanciaUnica::RutaPorDefecto() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    return std::string(runtime && *runtime ? runtime : "/tmp") + "/tpv.lock";
}

}  // namespace tpv
