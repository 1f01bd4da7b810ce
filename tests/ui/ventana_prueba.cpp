#include "tests/ui/ventana_prueba.hpp"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "core/runtime/reloj.hpp"
#include "core/servicios/suite_launcher.hpp"
#include "core/servicios/suite_settings.hpp"
#include "core/sesion/pantalla.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/pantallas.hpp"
#include "tests/support/mensajes_guionados.hpp"

extern char** environ;

namespace tpv::prueba {

namespace {

namespace fs = std::filesystem;

QApplication& Aplicacion() {
    static QApplication* app = [] {
        const auto definida = [](const char* v) { return std::getenv(v) && *std::getenv(v); };
        if (!definida("DISPLAY") && !definida("WAYLAND_DISPLAY") && !definida("QT_QPA_PLATFORM"))
            ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
        static int argc = 1;
        static char nombre[] = "ui_tests";
        static char* argv[] = {nombre, nullptr};
        return new QApplication(argc, argv);
    }();
    return *app;
}

// Watches for boxes: answers the queued ones, and fails the test on a box
// nobody expected (clicking its escape button so that the test goes on).
class Vigilante : public QTimer {
public:
    Vigilante(std::vector<QString>& pendientes, std::vector<CajaVista>& cajas) : pendientes_(pendientes), cajas_(cajas) {
        setInterval(10);
        connect(this, &QTimer::timeout, this, [this] { Mirar(); });
        start();
    }

private:
    void Mirar() {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || !box->isVisible()) {
            abierta_ = nullptr;
            return;
        }
        if (abierta_ != box) {
            abierta_ = box;
            reloj_.start();
        }
        CajaVista vista{box->windowTitle(), box->text(), box->icon(), {}};
        for (QAbstractButton* b : box->buttons()) vista.botones << b->text();
        if (!pendientes_.empty()) {
            const QString boton = pendientes_.front();
            pendientes_.erase(pendientes_.begin());
            cajas_.push_back(vista);
            for (QAbstractButton* b : box->buttons())
                if (b->text() == boton) {
                    b->click();
                    return;
                }
            ADD_FAILURE() << "la caja no tiene el botón " << boton.toStdString();
            box->buttons().front()->click();
        } else if (reloj_.elapsed() > 2000) {
            ADD_FAILURE() << "caja no esperada: " << box->text().toStdString();
            cajas_.push_back(vista);
            box->buttons().front()->click();
        }
    }
    std::vector<QString>& pendientes_;
    std::vector<CajaVista>& cajas_;
    QPointer<QMessageBox> abierta_;
    QElapsedTimer reloj_;
};

}  // namespace

void VentanaTest::SetUp() {
    Aplicacion();
    FijarPantalla(std::make_unique<PantallaFija>(1024, 768));
    anfitrion = std::make_unique<ui::AnfitrionQt>();
    anfitrion->salirAlCerrarTodo = false;
    FijarAnfitrion(anfitrion.get());
    FijarMensajes(anfitrion.get());
    vigilante_ = std::make_unique<Vigilante>(pendientes_, cajas);
}

void VentanaTest::TearDown() {
    {
        // Whatever the screens ask while they unload is answered at once.
        MensajesGuionados respuestas;
        const std::vector<Ventana*> abiertas = anfitrion->Abiertas();
        for (auto i = abiertas.rbegin(); i != abiertas.rend(); ++i) {
            try {
                anfitrion->Descargar(**i);
            } catch (...) {
            }
        }
    }
    FijarAnfitrion(nullptr);
    FijarMensajes(nullptr);
    anfitrion.reset();
    vigilante_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    FijarPantalla(nullptr);
    reloj::Soltar();
}

ui::VistaPantalla& VentanaTest::Vista(const std::string& pantalla) {
    ui::VistaPantalla* v = anfitrion->Vista(pantalla);
    if (!v) throw std::runtime_error("no se ve la pantalla " + pantalla);
    return *v;
}

void VentanaTest::Responder(std::vector<QString> botones) {
    pendientes_.insert(pendientes_.end(), botones.begin(), botones.end());
}

bool VentanaTest::Esperar(const std::function<bool()>& hecho, int ms) {
    QElapsedTimer t;
    t.start();
    while (!hecho()) {
        if (t.elapsed() > ms) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

void VentanaTest::BotonesTactiles(QWidget& ventana) {
    for (QAbstractButton* b : ventana.findChildren<QAbstractButton*>()) {
        if (!b->isVisible()) continue;
        EXPECT_GE(b->height(), 48) << b->objectName().toStdString();
        EXPECT_GE(b->width(), 48) << b->objectName().toStdString();
    }
}

std::string VentanaTest::Captura(QWidget& w, const std::string& nombre) {
    fs::create_directories(TPV_CAPTURAS_DIR);
    const std::string ruta = std::string(TPV_CAPTURAS_DIR) + "/" + nombre + ".png";
    QCoreApplication::processEvents();
    EXPECT_TRUE(w.grab().save(QString::fromStdString(ruta), "PNG")) << ruta;
    return ruta;
}

void TiendaEnVentanaTest::SetUp() {
    VentanaTest::SetUp();
    static int contador = 0;
    carpeta = (fs::temp_directory_path() / ("tpv_ui_" + std::to_string(::getpid()) + "_" + std::to_string(contador++)))
                  .string();
    fs::create_directories(carpeta);
    const std::string base = carpeta + "/PERFUMERIA.db", informes = carpeta + "/informes.db";
    const std::string orden = std::string(TPV_TOOLS_DIR) + "/tpvdemo --force --fotos '" + carpeta + "/fotos' '" + base + "' '" +
                             informes + "' >/dev/null";
    ASSERT_EQ(std::system(orden.c_str()), 0) << orden;
    ::setenv("TPV_DATABASE", base.c_str(), 1);
    ::setenv("TPV_DSN_VELMORA", informes.c_str(), 1);
    ::setenv("TPV_SUITE_CONF", (carpeta + "/suite.conf").c_str(), 1);
    ::setenv("TPV_LOG", (carpeta + "/tpv.log").c_str(), 1);
    SuiteSettings::Instancia().Recargar();

    // The suite's shell: a process of a name of its own for this test.
    std::string nombreShell = "tpv_shell_ui_" + std::to_string(::getpid()), segundos = "120";
    char* argv[] = {nombreShell.data(), segundos.data(), nullptr};
    if (posix_spawn(&shell, "/bin/sleep", nullptr, nullptr, argv, environ) != 0) shell = -1;
    SuiteLauncher lanzador;
    for (int i = 0; i < 200 && shell > 0 && !lanzador.EstaEjecutandose(nombreShell); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    SuiteSettings::Instancia().Escribir(kClaveProgramaShell, nombreShell);
    SuiteSettings::Instancia().Escribir("carpeta_programas", carpeta);
    // The shop's printers and its drawer's port save what they get in a
    // folder of the test.
    SuiteSettings& ajustes = SuiteSettings::Instancia();
    fs::create_directories(carpeta + "/papel");
    ajustes.Escribir("impresoras", "Ticketera|Oficina");
    ajustes.Escribir("impresora.Ticketera", "carpeta:" + carpeta + "/papel");
    ajustes.Escribir("impresora.Oficina", "carpeta:" + carpeta + "/papel");
    ajustes.Escribir("impresora.Oficina.driver", "PDF");
    ajustes.Escribir("puerto./dev/usb/lp0", carpeta + "/papel/cajon");
    sesion().Reiniciar();
}

void TiendaEnVentanaTest::TearDown() {
    VentanaTest::TearDown();
    InstanciaDelPrograma().Soltar();
    if (shell > 0) {
        ::kill(shell, SIGTERM);
        ::waitpid(shell, nullptr, 0);
    }
    sesion().Reiniciar();
    for (const char* v : {"TPV_DATABASE", "TPV_DSN_VELMORA", "TPV_SUITE_CONF", "TPV_LOG"}) ::unsetenv(v);
    SuiteSettings::Instancia().Recargar();
    std::error_code ec;
    fs::remove_all(carpeta, ec);
}

FinArranque TiendaEnVentanaTest::Arrancar() {
    OpcionesArranque opciones;
    opciones.nombreBloqueo = "tpv-ui-prueba-" + std::to_string(::getpid());
    opciones.carpetaPrograma = carpeta;
    PantallasDeArranque pantallas;
    const FinArranque fin = Main(pantallas, opciones);
    anfitrion->Despues();
    return fin;
}

}  // namespace tpv::prueba
