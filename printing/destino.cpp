#include "printing/destino.hpp"

#include <cups/cups.h>
#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "printing/page_device.hpp"
#include "printing/puerto_serie.hpp"

namespace tpv {

namespace {

using Bytes = std::vector<std::uint8_t>;

// Sends the whole job down a descriptor just opened and closes it. `fd` is -1
// when it could not be opened, with the reason in `error`; a failed write
// names `destino`.
void EnviarYCerrar(int fd, std::string& error, const std::string& destino, const Bytes& datos) {
    if (fd < 0) throw ErrorImpresora(error);
    const bool bien = EscribirTodo(fd, datos.data(), datos.size(), kEsperaEscrituraMs, error);
    Cerrar(fd);
    if (!bien) throw ErrorImpresora(destino + ": " + error);
}

class DestinoFichero : public Destino {
public:
    explicit DestinoFichero(std::string ruta) : ruta_(std::move(ruta)) {}
    void Enviar(const Bytes& datos, bool) override {
        std::string error;
        const int fd = AbrirParaEscribir(ruta_, error);
        EnviarYCerrar(fd, error, ruta_, datos);
    }

private:
    std::string ruta_;
};

class DestinoSerie : public Destino {
public:
    DestinoSerie(std::string ruta, int baudios) : ruta_(std::move(ruta)), baudios_(baudios) {}
    void Enviar(const Bytes& datos, bool) override {
        std::string error;
        const int fd = AbrirPuertoSerie(ruta_, baudios_, error);
        EnviarYCerrar(fd, error, ruta_, datos);
    }

private:
    std::string ruta_;
    int baudios_;
};

// Connects with a bounded wait; -1 with the reason when it can't.
int Conectar(const std::string& host, const std::string& puerto, std::string& error) {
    addrinfo pista{};
    pista.ai_socktype = SOCK_STREAM;
    addrinfo* lista = nullptr;
    if (int r = getaddrinfo(host.c_str(), puerto.c_str(), &pista, &lista); r != 0) {
        error = host + ": " + gai_strerror(r);
        return -1;
    }
    int fd = -1;
    error = host + ":" + puerto + ": no responde";
    for (addrinfo* a = lista; a && fd < 0; a = a->ai_next) {
        fd = ::socket(a->ai_family, a->ai_socktype | SOCK_NONBLOCK | SOCK_CLOEXEC, a->ai_protocol);
        if (fd < 0) continue;
        if (::connect(fd, a->ai_addr, a->ai_addrlen) == 0) break;
        if (errno == EINPROGRESS) {
            pollfd p{fd, POLLOUT, 0};
            int soError = 0;
            socklen_t largo = sizeof soError;
            if (::poll(&p, 1, kEsperaConexionMs) == 1 && getsockopt(fd, SOL_SOCKET, SO_ERROR, &soError, &largo) == 0 &&
                soError == 0)
                break;
            if (soError != 0) error = host + ":" + puerto + ": " + std::strerror(soError);
        } else {
            error = host + ":" + puerto + ": " + std::strerror(errno);
        }
        Cerrar(fd);
    }
    freeaddrinfo(lista);
    return fd;
}

class DestinoRed : public Destino {
public:
    DestinoRed(std::string host, std::string puerto) : host_(std::move(host)), puerto_(std::move(puerto)) {}
    void Enviar(const Bytes& datos, bool) override {
        std::string error;
        const int fd = Conectar(host_, puerto_, error);
        EnviarYCerrar(fd, error, host_, datos);
    }

private:
    std::string host_, puerto_;
};

class DestinoCups : public Destino {
public:
    explicit DestinoCups(std::string cola) : cola_(std::move(cola)) {}
    void Enviar(const Bytes& datos, bool pdf) override {
        char plantilla[] = "/tmp/tpv-trabajo-XXXXXX";
        int fd = mkstemp(plantilla);
        if (fd < 0) throw ErrorImpresora(std::strerror(errno));
        std::string error;
        const bool escrito = EscribirTodo(fd, datos.data(), datos.size(), kEsperaEscrituraMs, error);
        Cerrar(fd);
        int trabajo = 0;
        if (escrito) {
            http_t* http = httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1,
                                        kEsperaConexionMs, nullptr);
            if (http) {
                cups_option_t* opciones = nullptr;
                int n = 0;
                if (!pdf) n = cupsAddOption("raw", "true", n, &opciones);
                trabajo = cupsPrintFile2(http, cola_.c_str(), plantilla, "tpv", n, opciones);
                if (trabajo == 0) error = cupsLastErrorString();
                cupsFreeOptions(n, opciones);
                httpClose(http);
            } else {
                error = "no se puede conectar con el sistema de impresión";
            }
        }
        std::remove(plantilla);
        if (trabajo == 0) throw ErrorImpresora(cola_ + ": " + error);
    }

private:
    std::string cola_;
};

class DestinoCarpeta : public Destino {
public:
    explicit DestinoCarpeta(std::string carpeta) : carpeta_(std::move(carpeta)) {}
    void Enviar(const Bytes& datos, bool pdf) override {
        std::error_code ec;
        std::filesystem::create_directories(carpeta_, ec);
        for (int n = 1;; ++n) {
            char nombre[32];
            std::snprintf(nombre, sizeof nombre, "%04d.%s", n, pdf ? "pdf" : "bin");
            const auto ruta = std::filesystem::path(carpeta_) / nombre;
            if (std::filesystem::exists(ruta, ec)) continue;
            std::ofstream f(ruta, std::ios::binary);
            f.write(reinterpret_cast<const char*>(datos.data()), static_cast<std::streamsize>(datos.size()));
            if (!f) throw ErrorImpresora(ruta.string() + ": no se puede escribir");
            ultimo_ = ruta.string();
            return;
        }
    }
    std::string UltimoFichero() const override { return ultimo_; }

private:
    std::string carpeta_, ultimo_;
};

bool Quitar(std::string& s, const std::string& prefijo) {
    if (s.rfind(prefijo, 0) != 0) return false;
    s.erase(0, prefijo.size());
    return true;
}

}  // namespace

std::unique_ptr<Destino> DestinoDeUri(const std::string& uri) {
    std::string resto = uri;
    if (Quitar(resto, "socket://")) {
        const auto dosPuntos = resto.rfind(':');
        std::string host = resto.substr(0, dosPuntos), puerto = "9100";
        if (dosPuntos != std::string::npos) puerto = resto.substr(dosPuntos + 1);
        while (!puerto.empty() && puerto.back() == '/') puerto.pop_back();
        return std::make_unique<DestinoRed>(host, puerto);
    }
    if (Quitar(resto, "serial:")) {
        int baudios = 9600;
        if (auto q = resto.find("?baud="); q != std::string::npos) {
            baudios = std::atoi(resto.c_str() + q + 6);
            resto.erase(q);
        }
        return std::make_unique<DestinoSerie>(resto, baudios);
    }
    if (Quitar(resto, "cups://") || Quitar(resto, "cups:")) return std::make_unique<DestinoCups>(resto);
    if (Quitar(resto, "carpeta:")) return std::make_unique<DestinoCarpeta>(resto);
    if (Quitar(resto, "file://") || Quitar(resto, "file:")) return std::make_unique<DestinoFichero>(resto);
    if (resto.empty()) throw ErrorImpresora("la impresora no tiene destino");
    return std::make_unique<DestinoFichero>(RutaDePuerto(resto));
}

}  // namespace tpv
