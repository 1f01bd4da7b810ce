// A server connection that breaks after the server committed a write and
// before its answer arrived: the caller gets the error, and the log says
// which write may have gone through once the connection works again.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>
#include <vector>

#include "tests/support/base_prueba.hpp"

namespace tpv::prueba {
namespace {

// A relay between the till and the server that, when told, drops the
// connection on the server's answer to a write instead of passing it on.
class ReleQueCorta {
public:
    explicit ReleQueCorta(int puertoServidor) : puertoServidor_(puertoServidor) {
        escucha_ = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in dir{};
        dir.sin_family = AF_INET;
        dir.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ::bind(escucha_, reinterpret_cast<sockaddr*>(&dir), sizeof dir);
        ::listen(escucha_, 4);
        socklen_t largo = sizeof dir;
        ::getsockname(escucha_, reinterpret_cast<sockaddr*>(&dir), &largo);
        puerto_ = ntohs(dir.sin_port);
        hilo_ = std::thread([this] { Bucle(); });
    }
    ~ReleQueCorta() {
        fin_ = true;
        hilo_.join();
        for (Par& p : pares_) Cerrar(p);
        ::close(escucha_);
    }
    int Puerto() const { return puerto_; }
    void CortarEnLaProximaEscritura() { cortar_ = true; }

private:
    struct Par {
        int caja = -1, servidor = -1;
        std::string pendiente;  // the server's bytes not yet passed on
    };

    static void Cerrar(Par& p) {
        if (p.caja >= 0) ::close(p.caja);
        if (p.servidor >= 0) ::close(p.servidor);
        p.caja = p.servidor = -1;
    }

    int ConectarServidor() const {
        int s = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in dir{};
        dir.sin_family = AF_INET;
        dir.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        dir.sin_port = htons(static_cast<uint16_t>(puertoServidor_));
        if (::connect(s, reinterpret_cast<sockaddr*>(&dir), sizeof dir) != 0) {
            ::close(s);
            return -1;
        }
        return s;
    }

    // Passes on the server's whole messages (a type byte, then a length);
    // a command-complete of a write, when told to cut, ends the connection.
    bool PasarAlCliente(Par& p) {
        while (p.pendiente.size() >= 5) {
            uint32_t largo;
            std::memcpy(&largo, p.pendiente.data() + 1, 4);
            std::size_t total = 1 + ntohl(largo);
            if (p.pendiente.size() < total) break;
            const std::string mensaje = p.pendiente.substr(0, total);
            p.pendiente.erase(0, total);
            const std::string orden = mensaje.substr(5);
            if (cortar_ && mensaje[0] == 'C' &&
                (orden.rfind("UPDATE", 0) == 0 || orden.rfind("INSERT", 0) == 0 || orden.rfind("DELETE", 0) == 0)) {
                cortar_ = false;
                return false;
            }
            if (::send(p.caja, mensaje.data(), mensaje.size(), MSG_NOSIGNAL) < 0) return false;
        }
        return true;
    }

    void Bucle() {
        while (!fin_) {
            std::vector<pollfd> fds{{escucha_, POLLIN, 0}};
            for (Par& p : pares_) {
                fds.push_back({p.caja, POLLIN, 0});
                fds.push_back({p.servidor, POLLIN, 0});
            }
            if (::poll(fds.data(), fds.size(), 50) <= 0) continue;
            if (fds[0].revents & POLLIN) {
                Par p;
                p.caja = ::accept(escucha_, nullptr, nullptr);
                p.servidor = ConectarServidor();
                if (p.servidor < 0) Cerrar(p);
                else pares_.push_back(p);
                continue;
            }
            for (std::size_t i = 0; i < pares_.size(); ++i) {
                Par& p = pares_[i];
                char buf[8192];
                if (fds[1 + 2 * i].revents & (POLLIN | POLLHUP | POLLERR)) {
                    ssize_t n = ::recv(p.caja, buf, sizeof buf, 0);
                    if (n <= 0 || ::send(p.servidor, buf, static_cast<std::size_t>(n), MSG_NOSIGNAL) < 0) Cerrar(p);
                }
                if (p.caja >= 0 && (fds[2 + 2 * i].revents & (POLLIN | POLLHUP | POLLERR))) {
                    ssize_t n = ::recv(p.servidor, buf, sizeof buf, 0);
                    if (n <= 0) {
                        Cerrar(p);
                    } else {
                        p.pendiente.append(buf, static_cast<std::size_t>(n));
                        if (!PasarAlCliente(p)) Cerrar(p);
                    }
                }
            }
            std::erase_if(pares_, [](const Par& p) { return p.caja < 0; });
        }
    }

    int puertoServidor_;
    int escucha_ = -1;
    int puerto_ = 0;
    std::atomic<bool> fin_{false}, cortar_{false};
    std::vector<Par> pares_;
    std::thread hilo_;
};

class CorteDelServidor : public BaseDeDatosTest {};

TEST_P(CorteDelServidor, NumeroConfirmadoSinRespuesta_ElRegistroLoDiceAlVolverLaConexion) {
    const auto log = std::filesystem::temp_directory_path() / ("tpv-corte-" + std::to_string(::getpid()) + ".log");
    std::filesystem::remove(log);
    ::setenv("TPV_LOG", log.c_str(), 1);
    auto leerLog = [&] {
        std::ifstream f(log);
        std::stringstream s;
        s << f.rdbuf();
        return s.str();
    };

    Ejecutar({"insert into relaciones_fijas (indice, daton) values ('Factura', 41)"});
    // postgresql://user@127.0.0.1:PORT/base -> the same base through the relay
    const std::size_t dos = uri.find(':', uri.find('@'));
    const std::size_t barra = uri.find('/', dos);
    ReleQueCorta rele(std::atoi(uri.substr(dos + 1, barra - dos - 1).c_str()));
    const std::string porElRele = uri.substr(0, dos + 1) + std::to_string(rele.Puerto()) + uri.substr(barra) +
                                  "?sslmode=disable&gssencmode=disable";
    Connection caja;
    caja.Open(porElRele);

    Recordset rs;
    rs.Open("Select * from Relaciones_fijas where indice = 'Factura'", caja, adOpenKeyset, adLockOptimistic);
    const long long numero = static_cast<long long>(rs["daton"].Value().number());
    rs["daton"] = Value(numero + 1);
    rele.CortarEnLaProximaEscritura();
    try {
        rs.Update();
        ADD_FAILURE() << "la escritura no falló";
    } catch (const DbError& e) {
        EXPECT_EQ(e.Number(), kErrSinServidor) << e.what();
    }
    rs.Close();
    // The server did it: the number is spent.
    EXPECT_EQ(Valor("select daton from relaciones_fijas where indice = 'Factura'").number(), 42);
    EXPECT_EQ(leerLog().find("Vuelve la conexión"), std::string::npos);

    // The next statement reconnects, and the log names the write in doubt.
    rs.Open("Select * from Relaciones_fijas where indice = 'Factura'", caja, adOpenKeyset, adLockOptimistic);
    EXPECT_EQ(rs["daton"].Value().number(), 42);
    rs.Close();
    caja.Execute("update relaciones_fijas set datoa = 'x'");
    const std::string texto = leerLog();
    ::unsetenv("TPV_LOG");
    std::filesystem::remove(log);
    const std::size_t aviso = texto.find("Vuelve la conexión");
    ASSERT_NE(aviso, std::string::npos) << texto;
    EXPECT_NE(texto.find("SET \"daton\" = $1", aviso), std::string::npos) << texto;
    EXPECT_NE(texto.find("'41'", aviso), std::string::npos) << texto;
    EXPECT_NE(texto.find("'42'", aviso), std::string::npos) << texto;
    EXPECT_EQ(texto.find("Vuelve la conexión", aviso + 1), std::string::npos) << "dicho más de una vez";
}

INSTANTIATE_TEST_SUITE_P(Servidor, CorteDelServidor, ::testing::Values(Motor::PostgreSQL), NombreMotor);

}  // namespace
}  // namespace tpv::prueba
