#include "printing/puerto_serie.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>

#include "core/runtime/unicode.hpp"
#include "core/servicios/suite_settings.hpp"

namespace tpv {

namespace {

speed_t Velocidad(int baudios) {
    switch (baudios) {
        case 1200: return B1200;
        case 2400: return B2400;
        case 4800: return B4800;
        case 19200: return B19200;
        case 38400: return B38400;
        case 57600: return B57600;
        case 115200: return B115200;
        default: return B9600;
    }
}

// "COM3" -> 3; 0 when the name is not of that form.
int NumeroTrasPrefijo(const std::string& nombre, const std::string& prefijo) {
    if (nombre.size() <= prefijo.size() || unicode::Upper(nombre.substr(0, prefijo.size())) != prefijo) return 0;
    int n = 0;
    for (std::size_t i = prefijo.size(); i < nombre.size(); ++i) {
        const char c = nombre[i];
        if (c == ':' && i + 1 == nombre.size()) break;
        if (c < '0' || c > '9' || n > 999) return 0;
        n = n * 10 + (c - '0');
    }
    return n;
}

}  // namespace

std::string RutaDePuerto(const std::string& nombre) {
    const auto& ajustes = SuiteSettings::Instancia();
    if (ajustes.Existe("puerto." + nombre)) return ajustes.Leer("puerto." + nombre);
    if (int n = NumeroTrasPrefijo(nombre, "COM"); n > 0) return "/dev/ttyS" + std::to_string(n - 1);
    if (int n = NumeroTrasPrefijo(nombre, "LPT"); n > 0) return "/dev/lp" + std::to_string(n - 1);
    return nombre;
}

int AbrirPuertoSerie(const std::string& ruta, int baudios, std::string& error) {
    int fd = ::open(ruta.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        error = ruta + ": " + std::strerror(errno);
        return -1;
    }
    termios t{};
    if (tcgetattr(fd, &t) == 0) {
        cfmakeraw(&t);
        t.c_cflag &= ~static_cast<tcflag_t>(PARENB | CSTOPB | CSIZE | CRTSCTS);
        t.c_cflag |= CS8 | CLOCAL | CREAD;
        t.c_iflag &= ~static_cast<tcflag_t>(IXON | IXOFF | IXANY);
        cfsetispeed(&t, Velocidad(baudios));
        cfsetospeed(&t, Velocidad(baudios));
        tcsetattr(fd, TCSANOW, &t);
        int lineas = TIOCM_RTS | TIOCM_DTR;
        ioctl(fd, TIOCMBIS, &lineas);  // a pseudo-terminal has no modem lines: ignored
    }
    return fd;
}

int AbrirParaEscribir(const std::string& ruta, std::string& error) {
    const bool dispositivo = ruta.rfind("/dev/", 0) == 0;
    int flags = O_WRONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC;
    if (!dispositivo) flags |= O_CREAT | O_APPEND;
    int fd = ::open(ruta.c_str(), flags, 0644);
    if (fd < 0) error = ruta + ": " + std::strerror(errno);
    return fd;
}

bool EscribirTodo(int fd, const std::uint8_t* datos, std::size_t n, int esperaMs, std::string& error) {
    using Reloj = std::chrono::steady_clock;
    const auto limite = Reloj::now() + std::chrono::milliseconds(esperaMs);
    std::size_t hecho = 0;
    while (hecho < n) {
        const ssize_t w = ::write(fd, datos + hecho, n - hecho);
        if (w > 0) {
            hecho += static_cast<std::size_t>(w);
            continue;
        }
        if (w < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR) {
            error = std::strerror(errno);
            return false;
        }
        const auto queda = std::chrono::duration_cast<std::chrono::milliseconds>(limite - Reloj::now()).count();
        if (queda <= 0) {
            error = "el dispositivo no acepta los datos";
            return false;
        }
        pollfd p{fd, POLLOUT, 0};
        ::poll(&p, 1, static_cast<int>(queda));
    }
    return true;
}

void Cerrar(int& fd) {
    if (fd >= 0) ::close(fd);
    fd = -1;
}

}  // namespace tpv
