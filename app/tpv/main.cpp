// tpv: the till. Starts up on the shop's database (one instance per machine,
// only under the suite's shell) and opens its first screen in a window; the
// program ends when the last screen unloads.
#include <QApplication>
#include <cstdio>
#include <exception>
#include <memory>

#include "core/runtime/error.hpp"
#include "core/sesion/arranque.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/pantalla.hpp"
#include "screens/pantallas.hpp"
#include "ui/anfitrion_qt.hpp"
#include "ui/visor_pantalla.hpp"

using namespace tpv;

int main(int argc, char** argv) {
    if (!ui::HayPantalla()) {
        std::fprintf(stderr, "tpv: no hay pantalla (ni DISPLAY ni WAYLAND_DISPLAY); no se puede abrir la ventana.\n");
        return 3;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("TPV"));
    ui::AnfitrionQt anfitrion;
    FijarAnfitrion(&anfitrion);
    FijarMensajes(&anfitrion);
    FijarPantalla(std::make_unique<ui::PantallaQt>());
    // The pole display on the screen, when the suite's settings ask for it.
    const std::unique_ptr<ui::VisorEnPantalla> visor = ui::InstalarVisorEnPantalla();

    int codigo = 0;
    try {
        PantallasDeArranque pantallas;
        const FinArranque fin = Main(pantallas);
        if (fin != FinArranque::OtraInstancia && fin != FinArranque::SinShell) {
            anfitrion.Despues();
            if (!AnfitrionActual().Abiertas().empty()) codigo = QApplication::exec();
        }
    } catch (const RuntimeError& e) {
        std::fprintf(stderr, "Error %ld en tiempo de ejecución: %s\n", e.Number(), e.what());
        codigo = 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "Error: %s\n", e.what());
        codigo = 1;
    }
    FijarMensajes(nullptr);
    FijarAnfitrion(nullptr);
    return codigo;
}
