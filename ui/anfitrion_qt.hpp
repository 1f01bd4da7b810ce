#pragma once
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <map>
#include <vector>

#include "core/sesion/pantalla.hpp"
#include "screens/anfitrion.hpp"

class QEventLoop;

// The screens' host on a real display: each screen shown is a window drawn
// from its model, message boxes are Qt's with Spanish buttons, a modal screen
// waits in a nested event loop, the screens' timers run on a QTimer and keys
// and clicks become the model's events. It holds no rule of the till: after
// each event it only redraws what the model holds.
namespace tpv::ui {

class VistaPantalla;

class AnfitrionQt : public QObject, public Anfitrion {
public:
    // Needs a QApplication already made.
    AnfitrionQt();
    ~AnfitrionQt() override;

    int Mostrar(const CajaMensaje& caja) override;
    void HacerEventos() override;

    // Runs one user action (errors to a box), then brings every window in
    // step with the model.
    void Ejecutar(const std::function<void()>& accion);
    // Redraws every screen shown, follows the modal waits and the timers, and
    // ends the event loop when no screen is left loaded.
    void Despues();

    // The window of a screen shown, or nullptr.
    VistaPantalla* Vista(const Ventana& v) const;
    VistaPantalla* Vista(const std::string& nombre) const;

    // Ends the application's loop when the last screen unloads (on by default).
    bool salirAlCerrarTodo = true;

protected:
    void BucleModal(Ventana& v) override;
    void MostrarError(long numero, const std::string& descripcion) override;
    void AlAbrir(Ventana& v) override;
    void AlCerrar(Ventana& v) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Pulso();
    void ProgramarTemporizadores();
    VistaPantalla* VistaDe(QObject* objeto) const;

    std::map<const Ventana*, QPointer<VistaPantalla>> vistas_;
    struct Espera {
        Ventana* ventana;
        QEventLoop* bucle;
    };
    std::vector<Espera> esperas_;
    QTimer temporizador_;
    std::int64_t espera_ = 0;  // ms the timer was set to wait
};

// The display the window system reports, for the session's screen size.
class PantallaQt : public Pantalla {
public:
    double AnchoTwips() const override;
    double AltoTwips() const override;
};

// Whether a window system is there to draw on ($DISPLAY, $WAYLAND_DISPLAY,
// or a platform named in $QT_QPA_PLATFORM).
bool HayPantalla();

}  // namespace tpv::ui
