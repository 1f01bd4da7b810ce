#include "tests/support/procesos.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <exception>
#include <stdexcept>

namespace tpv::prueba {

namespace {

void EscribirTodo(int fd, const std::string& texto) {
    std::size_t hecho = 0;
    while (hecho < texto.size()) {
        const ssize_t w = ::write(fd, texto.data() + hecho, texto.size() - hecho);
        if (w <= 0) return;
        hecho += static_cast<std::size_t>(w);
    }
}

std::string LeerTodo(int fd) {
    std::string texto;
    char buf[512];
    for (ssize_t r; (r = ::read(fd, buf, sizeof buf)) > 0;) texto.append(buf, static_cast<std::size_t>(r));
    return texto;
}

}  // namespace

std::vector<std::string> EnProcesos(int n, const std::function<std::string()>& cuerpo) {
    int salida[2];
    if (::pipe(salida) != 0) throw std::runtime_error("pipe");
    std::vector<pid_t> hijos;
    std::vector<int> resultados;
    for (int i = 0; i < n; ++i) {
        int resultado[2];
        if (::pipe(resultado) != 0) throw std::runtime_error("pipe");
        const pid_t pid = ::fork();
        if (pid < 0) throw std::runtime_error("fork");
        if (pid == 0) {
            ::close(salida[1]);
            ::close(resultado[0]);
            // The start: the parent closes its end once all children exist.
            char c;
            while (::read(salida[0], &c, 1) > 0) {
            }
            std::string texto;
            try {
                texto = cuerpo();
            } catch (const std::exception& e) {
                texto = std::string("error: ") + e.what();
            }
            EscribirTodo(resultado[1], texto);
            ::_exit(0);
        }
        ::close(resultado[1]);
        hijos.push_back(pid);
        resultados.push_back(resultado[0]);
    }
    ::close(salida[0]);
    ::close(salida[1]);
    std::vector<std::string> textos;
    for (std::size_t i = 0; i < hijos.size(); ++i) {
        textos.push_back(LeerTodo(resultados[i]));
        ::close(resultados[i]);
        int estado = 0;
        ::waitpid(hijos[i], &estado, 0);
        if (!WIFEXITED(estado) || WEXITSTATUS(estado) != 0) textos.back() = "error: el proceso terminó mal";
    }
    return textos;
}

void ConexionPropia(Connection& conexion, const std::string& uri) {
    // Moved out and never released: the child ends with _exit.
    new Connection(std::move(conexion));
    conexion.Open(uri);
}

}  // namespace tpv::prueba
