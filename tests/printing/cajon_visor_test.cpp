#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cstdlib>

#include "core/sesion/sesion.hpp"
#include "printing/cajon.hpp"
#include "printing/recording_printer.hpp"
#include "printing/visor_serie.hpp"
#include "tests/support/mensajes_guionados.hpp"

namespace tpv {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(Cajon, BytesDeLaSecuencia) {
    struct Caso {
        const char* secuencia;
        Bytes bytes;
    } casos[] = {
        {"27|112|0|25|250", {27, 112, 0, 25, 250}}, {"27|112", {27, 112, 0, 0, 0}},
        {"27|112|0|25|250|7", {27, 112, 0, 25, 250}}, {"", {0, 0, 0, 0, 0}},
        {"abc|| 7|x9|", {0, 0, 7, 0, 0}},           {"27||112", {27, 0, 112, 0, 0}},
    };
    for (const auto& c : casos) EXPECT_EQ(BytesDeSecuencia(c.secuencia), c.bytes) << c.secuencia;
    for (const char* fuera : {"300", "-1", "27|1e300"}) EXPECT_THROW(BytesDeSecuencia(fuera), RuntimeError) << fuera;
}

TEST(Cajon, EscribeEnElFicheroDelPuertoConFinDeLinea) {
    const std::string ruta = ::testing::TempDir() + "cajon_puerto";
    ::unlink(ruta.c_str());
    EscribirSecuenciaCajon(ruta, "27|112");
    char buf[16];
    int fd = ::open(ruta.c_str(), O_RDONLY);
    ASSERT_GE(fd, 0);
    const auto n = ::read(fd, buf, sizeof buf);
    ::close(fd);
    EXPECT_EQ(Bytes(buf, buf + n), (Bytes{27, 112, 0, 0, 0, 13, 10}));
    ::unlink(ruta.c_str());
    EXPECT_THROW(EscribirSecuenciaCajon("/dev/no-existe-este-puerto", "27"), RuntimeError);
}

TEST(Cajon, AbrirCajonPorCadaCamino) {
    std::vector<std::pair<std::string, Bytes>> escritos;
    FijarEscritorPuerto([&](const std::string& p, const Bytes& b) { escritos.emplace_back(p, b); });
    std::vector<std::unique_ptr<PageDevice>> lista;
    lista.push_back(std::make_unique<RecordingPrinter>("Otra"));
    lista.push_back(std::make_unique<RecordingPrinter>("Tickets"));
    auto* tickets = static_cast<RecordingPrinter*>(lista[1].get());
    InstallPrinters(std::move(lista));
    prueba::MensajesGuionados mensajes;
    Sesion& s = sesion();

    s.PuertoImpresora = "";
    AbrirCajon();
    ASSERT_EQ(mensajes.mostradas.size(), 1u);
    EXPECT_EQ(mensajes.mostradas[0].titulo, "Apertura cajon");

    s.PuertoImpresora = "COM1";
    s.SecuenciaApertura = "27|112|0|25|250";
    AbrirCajon();
    ASSERT_EQ(escritos.size(), 1u);
    EXPECT_EQ(escritos[0].first, "COM1");
    EXPECT_EQ(escritos[0].second, (Bytes{27, 112, 0, 25, 250, 13, 10}));

    s.SecuenciaApertura = "";
    AbrirCajon();  // neither a sequence nor USB: nothing
    EXPECT_EQ(escritos.size(), 1u);
    EXPECT_TRUE(tickets->Documents().empty());

    s.PuertoImpresora = "usb";
    s.ImpresoraTickets = "Tickets";
    s.FuenteImpresora = "FontA11";
    AbrirCajon();
    ASSERT_EQ(tickets->Documents().size(), 1u);
    EXPECT_TRUE(tickets->Documents()[0].opensDrawer);
    EXPECT_EQ(tickets->Calls()[0].font.Name, "control");

    s.FuenteImpresora = "FontA1x1";
    tickets->Font.Name = "FontA1x1";
    AbrirCajon();
    EXPECT_TRUE(tickets->Documents().back().opensDrawer);

    FijarEscritorPuerto(nullptr);
    ResetPrinters();
    s = Sesion();
}

TEST(Visor, LineaConElImporteALaDerecha) {
    EXPECT_EQ(LineaVisor("Pan", "1,50"), "Pan...          1,50");
    EXPECT_EQ(LineaVisor("ABCDEFGHIJKLMNOPQRST", "1,50"), "ABCDEFGHIJKLM...1,50");
    EXPECT_EQ(LineaVisor("Pan", "12345678901234567890"), "...12345678901234567890");
}

TEST(Visor, CincoEscriturasPorElPuertoSerie) {
    int maestro = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(maestro, 0);
    ASSERT_EQ(grantpt(maestro), 0);
    ASSERT_EQ(unlockpt(maestro), 0);
    const std::string esclavo = ptsname(maestro);

    VisorSerie visor(esclavo, "PERFUMERIA");
    visor.InicializarVisor();
    visor.MostrarEnVisor("Colonia Ñ", "9,95");
    visor.MostrarBienvenida();

    Bytes leido;
    pollfd p{maestro, POLLIN, 0};
    while (::poll(&p, 1, 500) == 1) {
        unsigned char buf[256];
        const auto n = ::read(maestro, buf, sizeof buf);
        if (n <= 0) break;
        leido.insert(leido.end(), buf, buf + n);
    }
    ::close(maestro);
    // Clear and home, the first row, the cursor to row 2, the line in code page 858.
    const std::string esperado = "\x0c\rPERFUMERIA\x1f$\x01\x02"
                                 "Colonia \xA5...    9,95"
                                 "\x0c\rPERFUMERIA\x1f$\x01\x02"
                                 " **  Bienvenido  ** ";
    EXPECT_EQ(std::string(leido.begin(), leido.end()), esperado);
}

TEST(Visor, PuertoQueNoExisteNoMolesta) {
    VisorSerie visor("99", "X");
    visor.InicializarVisor();
    visor.MostrarBienvenida();
    EXPECT_EQ(VisorSerie::RutaDelPuerto("1"), "/dev/ttyS0");
}

}  // namespace
}  // namespace tpv
