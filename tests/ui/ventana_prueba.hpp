#pragma once
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QMessageBox>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/sesion/arranque.hpp"
#include "ui/anfitrion_qt.hpp"
#include "ui/vista_pantalla.hpp"

// Tests of the windows: a Qt application (on the display of the run, or
// offscreen without one), the Qt host installed on a 1024 x 768 display, and
// boxes answered by clicking their buttons.
namespace tpv::prueba {

// What a box showed and which button was clicked.
struct CajaVista {
    QString titulo, texto;
    QMessageBox::Icon icono = QMessageBox::NoIcon;
    QStringList botones;
};

class VentanaTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // The window of a screen, or a failure.
    ui::VistaPantalla& Vista(const std::string& pantalla);
    template <class W>
    W* Widget(const std::string& pantalla, const std::string& control) {
        return dynamic_cast<W*>(Vista(pantalla).WidgetDe(control));
    }

    // Answers the next boxes, in order, by clicking the button with that
    // caption; each box seen is written to `cajas`.
    void Responder(std::vector<QString> botones);
    // Runs the events until `hecho` or `ms` pass; false on time out.
    bool Esperar(const std::function<bool()>& hecho, int ms = 3000);
    // Every visible button a finger presses is at least 48 pixels a side.
    static void BotonesTactiles(QWidget& ventana);
    // Saves the window as PNG under the build folder; returns its path.
    std::string Captura(QWidget& w, const std::string& nombre);

    std::unique_ptr<ui::AnfitrionQt> anfitrion;
    std::vector<CajaVista> cajas;

private:
    std::vector<QString> pendientes_;
    std::unique_ptr<QObject> vigilante_;
};

// The demo shop of the demo tool, started as the till starts: the suite's
// shell played by a process of that name, one instance, the first screen.
class TiendaEnVentanaTest : public VentanaTest {
protected:
    void SetUp() override;
    void TearDown() override;
    FinArranque Arrancar();

    std::string carpeta;
    pid_t shell = -1;
};

}  // namespace tpv::prueba
