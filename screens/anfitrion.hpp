#pragma once
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "core/sesion/mensajes.hpp"
#include "screens/controles.hpp"

// The screens and whoever shows them. A screen class derives from Ventana,
// keeps its controls as members and registers them in Disenar; the host
// (a window system, or the headless one of tests and scripted runs) loads,
// shows and unloads screens, runs the modal wait, shows message boxes, fires
// timers by the till's clock and catches run-time errors at the top of each
// user action.
namespace tpv {

class Anfitrion;

class Ventana : public Formulario {
public:
    Ventana();
    // A screen that goes while loaded leaves the host's list, without events.
    ~Ventana() override;
    Ventana(const Ventana&) = delete;
    Ventana& operator=(const Ventana&) = delete;

    bool Cargada() const { return cargada_; }
    bool Modal() const { return modal_; }

    // Show: loads it first if needed; modal waits until it unloads.
    void Show(bool modal = false);
    void Hide();
    void Unload();

    // Puts a control on the screen with its name and geometry (twips).
    template <class C>
    C& Poner(C& control, const std::string& nombre_, double left_, double top_, double width_, double height_,
             const std::string& caption_ = "", Control* marco = nullptr) {
        control = C();
        control.nombre = nombre_;
        control.left = left_;
        control.top = top_;
        control.width = width_;
        control.height = height_;
        control.caption = caption_;
        Registrar(control, marco);
        return control;
    }

protected:
    // Sets every control to its design state; runs before each load.
    virtual void Disenar() = 0;
    virtual void Form_Load() {}
    virtual void Form_Activate() {}
    // Setting `cancelar` keeps the screen loaded.
    virtual void Form_Unload(int& /*cancelar*/) {}

private:
    friend class Anfitrion;
    bool cargada_ = false;
    bool modal_ = false;
};

// The single instance of a screen class, made on first use.
template <class T>
T& Unica() {
    static T pantalla;
    return pantalla;
}

// Names of the answers of message boxes, as a script or a transcript writes
// them: "Si", "No", "Aceptar", "Cancelar", "Reintentar", "Anular", "Omitir".
std::string NombreRespuesta(int respuesta);
int RespuestaDeNombre(const std::string& nombre);  // 0 when unknown

class Anfitrion : public Mensajes {
public:
    ~Anfitrion() override = default;

    // Loads (Disenar, then Form_Load) if not loaded.
    void Cargar(Ventana& v);
    void Mostrar(Ventana& v, bool modal);
    void Ocultar(Ventana& v);
    void Descargar(Ventana& v);

    // The screens loaded, bottom to top.
    const std::vector<Ventana*>& Abiertas() const { return abiertas_; }
    Ventana* Buscar(const std::string& nombre) const;

    // Runs one user action: a run-time error that reaches here is shown in
    // a box, written to the log with its statement, and the till goes on.
    void Accion(const std::function<void()>& accion);

    // Moves the clock forward; each enabled timer of a loaded screen fires
    // each time its interval elapses, in order of time, with the clock at
    // the moment it fell due.
    void Avanzar(std::int64_t ms);

    // A key on a control that takes the focus first: the screen's preview,
    // then the control's KeyDown; characters (keyAscii > 0) then KeyPress
    // and the control writes what is let through. Tab moves the focus.
    void Tecla(Control& c, int keyCode, int keyAscii);

    // Drops a screen from the list without events (it is being destroyed).
    void Olvidar(Ventana& v);

    // Lets events pending run (DoEvents).
    virtual void HacerEventos() {}

protected:
    // Waits until `v` unloads, running the events that come meanwhile.
    virtual void BucleModal(Ventana& v) = 0;
    // Shows the box of a run-time error.
    virtual void MostrarError(long numero, const std::string& descripcion) = 0;
    virtual void AlAbrir(Ventana&) {}
    virtual void AlCerrar(Ventana&) {}

private:
    std::vector<Ventana*> abiertas_;
};

// The timers of the screens loaded, as every host fires them.
std::vector<Timer*> Temporizadores(const std::vector<Ventana*>& abiertas);

// The host in force; without one installed, a headless host with nothing to
// run while a modal screen waits.
Anfitrion& AnfitrionActual();
void FijarAnfitrion(Anfitrion* anfitrion);

// A host with no display: tests and the scripted runner. Lines of what a
// user would have seen go to `salida`; a modal wait runs `siguiente` (the
// next scripted action) until the screen unloads.
class AnfitrionSinPantalla : public Anfitrion {
public:
    // Thrown through a modal wait when there is nothing more to run.
    struct FinDelGuion {};

    std::function<void(const std::string&)> salida;
    std::function<bool()> siguiente;   // false: nothing left
    std::deque<int> respuestas;        // answers of the next boxes

    int Mostrar(const CajaMensaje& caja) override;

protected:
    void BucleModal(Ventana& v) override;
    void MostrarError(long numero, const std::string& descripcion) override;
    void AlAbrir(Ventana& v) override;
    void AlCerrar(Ventana& v) override;

private:
    void Escribir(const std::string& linea) {
        if (salida) salida(linea);
    }
};

}  // namespace tpv
