#pragma once
#include <istream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/datos/connection.hpp"
#include "screens/anfitrion.hpp"
#include "tools/tpvguion/dispositivos.hpp"
#include "tools/tpvguion/guion.hpp"

// Runs a script's actions on the real screens through the headless host,
// one line at a time. A modal screen's wait takes the next lines, so that
// the actions inside it run while it is up, as a person's would.
namespace tpv::guion {

// A line that can't act: its reason goes to the transcript as "NO SE PUEDE".
struct NoSePuede : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Ejecutor {
public:
    Ejecutor(std::istream& entrada, Salida salida, Dispositivos& dispositivos);

    // Runs every line; true when all of them could act.
    bool Correr();

private:
    bool Siguiente();
    void Ejecutar(const Linea& linea);

    void Iniciar();
    void Reloj(const Linea& l);
    void Avanzar(const Linea& l);
    void Escribir(const Linea& l);
    void Tecla(const Linea& l);
    void Pulsar(const Linea& l);
    void Clic(const Linea& l, bool doble);
    void Elegir(const Linea& l, bool doble);
    void Fijar(const Linea& l);
    void Responder(const Linea& l);
    void Ver(const Linea& l);
    void Sql(const Linea& l);

    // The screen that an action without a screen's name acts on.
    Ventana& PantallaActiva() const;
    // A control by "nombre" or "pantalla.nombre".
    Control& BuscarControl(const std::string& nombre) const;
    // The same, and a user must be able to reach it.
    Control& ControlAlcanzable(const std::string& nombre) const;
    // A user's action: its run-time errors end at the host, as on screen.
    void Accion(const std::function<void()>& accion);
    // Gives the focus as a click would, to controls that take it.
    void Enfocar(Control& c);
    Connection& ConexionSql();

    // ver: a control's value, a property, a cell.
    void VerControl(const std::string& nombre, const Control& c);
    std::string Propiedad(const Control& c, const std::string& propiedad) const;

    std::istream& entrada_;
    Salida salida_;
    Dispositivos& dispositivos_;
    AnfitrionSinPantalla& anfitrion_;
    bool iniciado_ = false;
    bool fallo_ = false;
    std::unique_ptr<Connection> conexionPrevia_;
};

// Checks the arguments' count of an action.
void ExigirArgumentos(const Linea& l, std::size_t minimo, std::size_t maximo, const char* forma);

}  // namespace tpv::guion
