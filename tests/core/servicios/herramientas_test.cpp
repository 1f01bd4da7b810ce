// The SQL tool and the benchmark, run as a user runs them.
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace tpv {
namespace {

namespace fs = std::filesystem;

struct Salida {
    int estado = -1;
    std::string texto;  // standard output, then standard error
};

Salida CorrerPrograma(const std::string& programa, const std::string& argumentos, const std::string& entrada) {
    // printf %b reads "\\n" in the input as a line break.
    const std::string orden =
        "printf '%b' '" + entrada + "' | " + TPV_TOOLS_DIR + "/" + programa + " " + argumentos + " 2>&1";
    Salida s;
    std::FILE* p = ::popen(orden.c_str(), "r");
    if (!p) return s;
    std::array<char, 512> buf;
    for (std::size_t n; (n = std::fread(buf.data(), 1, buf.size(), p)) > 0;) s.texto.append(buf.data(), n);
    const int st = ::pclose(p);
    s.estado = WIFEXITED(st) ? WEXITSTATUS(st) : -1;
    return s;
}

Salida Correr(const std::string& argumentos, const std::string& entrada = "") {
    return CorrerPrograma("tpvsql", argumentos, entrada);
}

std::string Leer(const fs::path& f) {
    std::ifstream in(f, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

class TpvSql : public ::testing::Test {
protected:
    void SetUp() override {
        carpeta = fs::temp_directory_path() / ("tpv_tpvsql_" + std::to_string(::getpid()));
        fs::create_directories(carpeta);
        base = (carpeta / "TIENDA.db").string();
        ASSERT_EQ(Correr("--create " + base).estado, 0);
        ASSERT_EQ(Correr(base + " -e \"insert into productos (codigo,nombre) values (1,'Colonia')\"").estado, 0);
    }
    void TearDown() override { fs::remove_all(carpeta); }

    long Productos() {
        const Salida s = Correr(base + " -e \"select count(*) as n from productos\"");
        return s.estado == 0 ? std::stol(s.texto.substr(2)) : -1;
    }

    fs::path carpeta;
    std::string base;
};

TEST_F(TpvSql, Crear_NuncaDestruyeDatosNiOtrosArchivos) {
    const std::string informes = (fs::path(TPV_SCHEMA_DIR) / "informes.schema").string();
    const struct {
        std::string argumentos;
        int estado;
        std::string mensaje;
    } casos[] = {
        {"--create " + base, 1, "tpvsql: " + base + " ya existe (use --force para sustituirla)\n"},
        {"--create " + base + " " + informes, 1, "tpvsql: " + base + " ya existe (use --force para sustituirla)\n"},
    };
    for (const auto& c : casos) {
        const Salida s = Correr(c.argumentos);
        EXPECT_EQ(s.estado, c.estado) << c.argumentos;
        EXPECT_EQ(s.texto, c.mensaje);
        EXPECT_EQ(Productos(), 1) << c.argumentos;
    }

    // A file that is not a database stays as it is, --force or not.
    const fs::path nota = carpeta / "notas.txt";
    std::ofstream(nota) << "la lista de la compra\n";
    for (const std::string opcion : {"", "--force "}) {
        const Salida s = Correr("--create " + opcion + nota.string());
        EXPECT_EQ(s.estado, 1);
        EXPECT_EQ(s.texto, "tpvsql: " + nota.string() + " existe y no es una base de datos: no se sustituye\n");
        EXPECT_EQ(Leer(nota), "la lista de la compra\n");
    }

    // With --force a database is made anew, empty.
    EXPECT_EQ(Correr("--create --force " + base).estado, 0);
    EXPECT_EQ(Productos(), 0);
}

TEST_F(TpvSql, Entrada_ComentariosSalirYColumnasSinNombre) {
    const Salida s = Correr(base,
                            "-- los productos\\n"
                            "select count(*), max(codigo) from productos;\\n"
                            "\\n"
                            "select nombre from productos\\n"
                            "salir\\n"
                            "delete * from productos\\n");
    EXPECT_EQ(s.estado, 0);
    EXPECT_EQ(s.texto, "Expr1000\tExpr1001\n1\t1\nnombre\nColonia\n");
    EXPECT_EQ(Productos(), 1);  // nothing after "salir" ran
}

// On a terminal: a prompt, and a statement over several lines up to ";".
TEST_F(TpvSql, Terminal_IndicadorYSentenciaEnVariasLineas) {
    int maestro = -1;
    const pid_t pid = ::forkpty(&maestro, nullptr, nullptr, nullptr);
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        const std::string programa = std::string(TPV_TOOLS_DIR) + "/tpvsql";
        ::execl(programa.c_str(), programa.c_str(), base.c_str(), static_cast<char*>(nullptr));
        ::_exit(127);
    }
    const std::string entrada = "select nombre\nfrom productos\nwhere codigo = 1;\nexit\n";
    ASSERT_EQ(::write(maestro, entrada.data(), entrada.size()), static_cast<ssize_t>(entrada.size()));
    std::string texto;
    const auto limite = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (std::chrono::steady_clock::now() < limite) {
        pollfd p{maestro, POLLIN, 0};
        if (::poll(&p, 1, 200) <= 0) continue;
        char buf[256];
        const ssize_t n = ::read(maestro, buf, sizeof buf);
        if (n <= 0) break;  // the tool ended
        texto.append(buf, static_cast<std::size_t>(n));
    }
    ::close(maestro);
    int estado = 0;
    ::waitpid(pid, &estado, 0);
    EXPECT_TRUE(WIFEXITED(estado) && WEXITSTATUS(estado) == 0);
    // The terminal echoes the input; what the tool wrote comes in between.
    EXPECT_NE(texto.find("tpvsql> "), std::string::npos) << texto;
    EXPECT_NE(texto.find("     -> "), std::string::npos) << texto;
    EXPECT_NE(texto.find("nombre\r\nColonia\r\n"), std::string::npos) << texto;
}

TEST(TpvBench, SinBase_TerminaConUnMensajeClaro) {
    const fs::path programa = fs::path(TPV_TOOLS_DIR) / "tpvbench";
    if (!fs::exists(programa)) GTEST_SKIP() << "tpvbench no está compilado";
    const std::string falta = (fs::temp_directory_path() / ("tpv_no_hay_" + std::to_string(::getpid()) + ".db")).string();
    const Salida s = CorrerPrograma("tpvbench", "--base=" + falta, "");
    EXPECT_EQ(s.estado, 1) << s.texto;
    EXPECT_NE(s.texto.find("tpvbench: no existe la base de datos '" + falta + "' (hágala con tpvdemo --size large)\n"),
              std::string::npos)
        << s.texto;
    EXPECT_FALSE(fs::exists(falta));
}

}  // namespace
}  // namespace tpv
