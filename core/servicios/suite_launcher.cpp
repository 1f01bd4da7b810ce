#include "core/servicios/suite_launcher.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

#include "core/datos/tipos.hpp"
#include "core/runtime/error.hpp"
#include "core/servicios/suite_settings.hpp"

extern char** environ;

namespace tpv {

namespace {

constexpr long kErrArchivoNoEncontrado = 53;

std::string BaseName(std::string_view ruta) {
    std::size_t barra = ruta.find_last_of('/');
    return std::string(barra == std::string_view::npos ? ruta : ruta.substr(barra + 1));
}

std::string SinExtension(const std::string& nombre) {
    std::size_t punto = nombre.rfind('.');
    return punto == std::string::npos || punto == 0 ? nombre : nombre.substr(0, punto);
}

// Whether the executable name of a process is the program asked for.
bool MismoPrograma(const std::string& ejecutable, const std::string& buscado, bool truncado) {
    std::string e = datos::Minusculas(ejecutable);
    if (e.empty()) return false;
    for (const std::string& b : {buscado, SinExtension(buscado)}) {
        if (e == b || SinExtension(e) == b) return true;
        // The kernel keeps 15 characters of the name in "comm".
        if (truncado && b.size() > e.size() && b.compare(0, e.size(), e) == 0) return true;
    }
    return false;
}

// Reads a /proc file with plain reads: a process may end while we read it, and the
// stream library would throw on that error (ESRCH) instead of giving what it got.
std::string LeerArchivo(const std::string& ruta) {
    std::string texto;
    int fd = open(ruta.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return texto;
    char buf[4096];
    for (;;) {
        ssize_t n = read(fd, buf, sizeof buf);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        texto.append(buf, static_cast<std::size_t>(n));
    }
    close(fd);
    return texto;
}

bool EsZombi(const std::string& dirProceso) {
    // "pid (comm) S ...": the state follows the last ")".
    std::string stat = LeerArchivo(dirProceso + "/stat");
    std::size_t cierre = stat.rfind(')');
    return cierre != std::string::npos && cierre + 2 < stat.size() && stat[cierre + 2] == 'Z';
}

[[noreturn]] void ErrorLanzar(const std::string& ruta, int error) {
    if (error == ENOENT) throw RuntimeError(kErrArchivoNoEncontrado, "No se ha encontrado el archivo: " + ruta);
    throw RuntimeError(kErrArchivoNoEncontrado,
                       "No se puede ejecutar el programa: " + ruta + " (" + std::strerror(error) + ")");
}

}  // namespace

namespace {
SuiteLauncher::Grabador& GrabadorInstalado() {
    static SuiteLauncher::Grabador grabador;
    return grabador;
}
}  // namespace

SuiteLauncher::SuiteLauncher() = default;

void SuiteLauncher::FijarGrabador(Grabador grabador) { GrabadorInstalado() = std::move(grabador); }

std::string SuiteLauncher::CarpetaProgramas() {
    std::string carpeta = SuiteSettings::Instancia().Leer("carpeta_programas");
    if (carpeta.empty()) {
        char buf[4096];
        ssize_t n = readlink("/proc/self/exe", buf, sizeof buf - 1);
        if (n > 0) {
            carpeta.assign(buf, static_cast<std::size_t>(n));
            std::size_t barra = carpeta.find_last_of('/');
            carpeta = barra == std::string::npos ? "." : carpeta.substr(0, barra);
        } else {
            carpeta = ".";
        }
    }
    while (carpeta.size() > 1 && carpeta.back() == '/') carpeta.pop_back();
    return carpeta;
}

void SuiteLauncher::Lanzar(const std::string& programa, const std::string& titulo, Connection& conexion) {
    if (GrabadorInstalado()) {
        GrabadorInstalado()(programa, titulo);
        return;
    }
    if (programa.empty()) ErrorLanzar("", ENOENT);
    const std::string ruta = programa.find('/') != std::string::npos ? programa : CarpetaProgramas() + "/" + programa;
    if (access(ruta.c_str(), X_OK) != 0) ErrorLanzar(ruta, errno);
    struct stat st {};
    if (stat(ruta.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) ErrorLanzar(ruta, EACCES);

    // Everything the child needs is made before the fork: after it, only
    // calls that are safe in a forked child are made.
    std::vector<std::string> entorno;
    for (char** e = environ; e && *e; ++e) {
        std::string_view v(*e);
        if (v.rfind("TPV_DATABASE=", 0) == 0 || v.rfind("TPV_TITULO=", 0) == 0) continue;
        entorno.emplace_back(v);
    }
    if (conexion.IsOpen()) entorno.push_back("TPV_DATABASE=" + conexion.ConnectionString());
    entorno.push_back("TPV_TITULO=" + titulo);
    std::vector<char*> envp;
    for (std::string& v : entorno) envp.push_back(v.data());
    envp.push_back(nullptr);
    std::string arg0 = BaseName(ruta);
    char* argv[] = {arg0.data(), nullptr};

    int tubo[2];
    if (pipe2(tubo, O_CLOEXEC) != 0) ErrorLanzar(ruta, errno);
    const int nulo = open("/dev/null", O_RDWR | O_CLOEXEC);
    const long maxFd = sysconf(_SC_OPEN_MAX);

    pid_t hijo = fork();
    if (hijo < 0) {
        int e = errno;
        close(tubo[0]);
        close(tubo[1]);
        if (nulo >= 0) close(nulo);
        ErrorLanzar(ruta, e);
    }
    if (hijo == 0) {
        // A session of its own, and a grandchild that init adopts: the
        // program outlives the till and leaves no zombie behind.
        setsid();
        pid_t nieto = fork();
        if (nieto != 0) _exit(nieto < 0 ? 1 : 0);
        if (nulo >= 0) dup2(nulo, STDIN_FILENO);
        for (long fd = 3; fd < (maxFd > 0 && maxFd < 65536 ? maxFd : 1024); ++fd)
            if (fd != tubo[1]) close(static_cast<int>(fd));
        execve(ruta.c_str(), argv, envp.data());
        int e = errno;
        ssize_t escrito = write(tubo[1], &e, sizeof e);
        (void)escrito;
        _exit(127);
    }
    close(tubo[1]);
    if (nulo >= 0) close(nulo);
    int estado = 0;
    while (waitpid(hijo, &estado, 0) < 0 && errno == EINTR) {
    }
    // The pipe closes on a successful exec; otherwise it carries the error.
    int error = 0;
    ssize_t n;
    while ((n = read(tubo[0], &error, sizeof error)) < 0 && errno == EINTR) {
    }
    close(tubo[0]);
    if (n == static_cast<ssize_t>(sizeof error)) ErrorLanzar(ruta, error);
    if (!WIFEXITED(estado) || WEXITSTATUS(estado) != 0) ErrorLanzar(ruta, EAGAIN);
}

bool SuiteLauncher::EstaEjecutandose(const std::string& programa) {
    const std::string buscado = datos::Minusculas(BaseName(programa));
    if (buscado.empty()) return false;
    const std::string propio = std::to_string(getpid());
    DIR* dir = opendir("/proc");
    if (!dir) return false;
    bool encontrado = false;
    while (dirent* e = readdir(dir)) {
        const char* nombre = e->d_name;
        if (*nombre < '0' || *nombre > '9' || propio == nombre) continue;
        const std::string base = std::string("/proc/") + nombre;
        std::string comm = LeerArchivo(base + "/comm");
        while (!comm.empty() && comm.back() == '\n') comm.pop_back();
        std::string cmdline = LeerArchivo(base + "/cmdline");
        std::string arg0 = BaseName(cmdline.substr(0, cmdline.find('\0')));
        if ((MismoPrograma(comm, buscado, comm.size() == 15) || MismoPrograma(arg0, buscado, false)) &&
            !EsZombi(base)) {
            encontrado = true;
            break;
        }
    }
    closedir(dir);
    return encontrado;
}

}  // namespace tpv
