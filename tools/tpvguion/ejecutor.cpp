#include "tools/tpvguion/ejecutor.hpp"

#include <sstream>

#include "core/datos/tipos.hpp"
#include "core/runtime/reloj.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/connection_opener.hpp"
#include "core/sesion/arranque.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/pantallas.hpp"
#include "tools/tpvsql/resultado.hpp"

namespace tpv::guion {

namespace {

// The host of the run. It outlives every screen (they are single instances
// that go at the program's end), so it is never freed.
AnfitrionSinPantalla& AnfitrionDelGuion() {
    static auto* anfitrion = new AnfitrionSinPantalla;
    return *anfitrion;
}

// The first screen of the run, with the machine's devices made ready as the
// session knows its printers and display.
class PrimeraDelGuion : public PrimeraPantalla {
public:
    explicit PrimeraDelGuion(Dispositivos& d) : dispositivos_(d) {}
    void MostrarSeleccionEmpleado() override {
        Preparar();
        pantallas_.MostrarSeleccionEmpleado();
    }
    void MostrarCaja() override {
        Preparar();
        pantallas_.MostrarCaja();
    }

private:
    void Preparar() {
        dispositivos_.InstalarImpresoras(sesion().Conexion);
        dispositivos_.InstalarVisor();
    }
    Dispositivos& dispositivos_;
    PantallasDeArranque pantallas_;
};

// The characters of a UTF-8 text, one text each.
std::vector<std::string> Caracteres(const std::string& texto) {
    std::vector<std::string> c;
    for (std::size_t i = 0; i < texto.size();) {
        const auto b = static_cast<unsigned char>(texto[i]);
        const std::size_t n = b < 0x80 ? 1 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
        c.push_back(texto.substr(i, n));
        i += n;
    }
    return c;
}

}  // namespace

void ExigirArgumentos(const Linea& l, std::size_t minimo, std::size_t maximo, const char* forma) {
    if (l.argumentos.size() < minimo || l.argumentos.size() > maximo)
        throw NoSePuede(std::string("se escribe: ") + forma);
}

Ejecutor::Ejecutor(std::istream& entrada, Salida salida, Dispositivos& dispositivos)
    : entrada_(entrada), salida_(std::move(salida)), dispositivos_(dispositivos), anfitrion_(AnfitrionDelGuion()) {
    anfitrion_.salida = salida_;
    anfitrion_.siguiente = [this] { return Siguiente(); };
    FijarAnfitrion(&anfitrion_);
    FijarMensajes(&anfitrion_);
}

bool Ejecutor::Correr() {
    try {
        while (Siguiente()) {
        }
    } catch (const AnfitrionSinPantalla::FinDelGuion&) {
        // The script ended while a modal screen waited: the run ends there.
    }
    return !fallo_;
}

bool Ejecutor::Siguiente() {
    std::string texto;
    for (;;) {
        if (!std::getline(entrada_, texto)) return false;
        if (!texto.empty() && texto.back() == '\r') texto.pop_back();
        std::string error;
        const std::optional<Linea> linea = Partir(texto, error);
        if (linea && linea->accion.empty()) continue;
        salida_("> " + texto);
        try {
            if (!linea) throw NoSePuede(error);
            Ejecutar(*linea);
        } catch (const NoSePuede& e) {
            fallo_ = true;
            salida_(std::string("NO SE PUEDE: ") + e.what());
        }
        return true;
    }
}

void Ejecutor::Ejecutar(const Linea& l) {
    const std::string& a = l.accion;
    static const char* const kAcciones[] = {"iniciar", "reloj",     "avanzar", "escribir", "tecla",
                                            "pulsar",  "clic",      "dobleclic", "elegir", "fijar",
                                            "responder", "ver",     "sql"};
    bool conocida = false;
    for (const char* k : kAcciones) conocida = conocida || a == k;
    if (!conocida) throw NoSePuede("acción desconocida \"" + l.accion + "\"");
    const bool sinPantalla = a == "iniciar" || a == "reloj" || a == "responder" || a == "sql" || a == "avanzar";
    if (!sinPantalla && !iniciado_) throw NoSePuede("la caja no se ha iniciado: falta \"iniciar\"");
    if (a == "iniciar") return Iniciar();
    if (a == "reloj") return Reloj(l);
    if (a == "avanzar") return Avanzar(l);
    if (a == "escribir") return Escribir(l);
    if (a == "tecla") return Tecla(l);
    if (a == "pulsar") return Pulsar(l);
    if (a == "clic") return Clic(l, false);
    if (a == "dobleclic") {
        if (l.argumentos.size() == 2) return Elegir(l, true);
        return Clic(l, true);
    }
    if (a == "elegir") return Elegir(l, false);
    if (a == "fijar") return Fijar(l);
    if (a == "responder") return Responder(l);
    if (a == "ver") return Ver(l);
    Sql(l);
}

void Ejecutor::Iniciar() {
    if (iniciado_) throw NoSePuede("la caja ya está iniciada");
    iniciado_ = true;
    conexionPrevia_.reset();
    OpcionesArranque opciones;
    opciones.sinGuardas = true;
    PrimeraDelGuion primera(dispositivos_);
    Accion([&] { Main(primera, opciones); });
}

void Ejecutor::Reloj(const Linea& l) {
    if (l.argumentos.empty()) throw NoSePuede("se escribe: reloj dd/mm/yyyy hh:mm:ss");
    std::string texto;
    for (const std::string& a : l.argumentos) texto += (texto.empty() ? "" : " ") + a;
    const std::optional<DateTime> momento = LeerMomento(texto);
    if (!momento) throw NoSePuede("fecha y hora no válidas: " + texto);
    reloj::Fijar(*momento);
}

void Ejecutor::Avanzar(const Linea& l) {
    ExigirArgumentos(l, 1, 1, "avanzar MILISEGUNDOS");
    const std::optional<long long> ms = LeerEntero(l.argumentos[0]);
    if (!ms || *ms < 0) throw NoSePuede("milisegundos no válidos: " + l.argumentos[0]);
    anfitrion_.Avanzar(*ms);
}

void Ejecutor::Escribir(const Linea& l) {
    ExigirArgumentos(l, 2, 2, "escribir CONTROL \"texto\"");
    Control& c = ControlAlcanzable(l.argumentos[0]);
    if (!c.TomaFoco()) throw NoSePuede(l.argumentos[0] + " no admite teclas");
    Accion([&] { Enfocar(c); });
    for (const std::string& caracter : Caracteres(l.argumentos[1])) {
        if (!c.Alcanzable()) throw NoSePuede(l.argumentos[0] + " ya no admite teclas");
        int keyCode = 0, keyAscii = 0;
        TeclaDeCaracter(caracter, keyCode, keyAscii);
        Accion([&] { anfitrion_.Tecla(c, keyCode, keyAscii); });
    }
}

void Ejecutor::Tecla(const Linea& l) {
    ExigirArgumentos(l, 2, 2, "tecla CONTROL TECLA");
    int keyCode = 0, keyAscii = 0;
    if (!LeerTecla(l.argumentos[1], keyCode, keyAscii)) throw NoSePuede("tecla desconocida: " + l.argumentos[1]);
    Control& c = ControlAlcanzable(l.argumentos[0]);
    if (!c.TomaFoco()) throw NoSePuede(l.argumentos[0] + " no admite teclas");
    Accion([&] { anfitrion_.Tecla(c, keyCode, keyAscii); });
}

void Ejecutor::Pulsar(const Linea& l) {
    ExigirArgumentos(l, 1, 2, "pulsar CONTROL, o pulsar PANEL CODIGO");
    Control& c = ControlAlcanzable(l.argumentos[0]);
    if (l.argumentos.size() == 1) {
        Accion([&] {
            Enfocar(c);
            c.Clic();
        });
        return;
    }
    auto* panel = dynamic_cast<ButtonMatrix*>(&c);
    if (!panel) throw NoSePuede(l.argumentos[0] + " no es un panel de botones");
    const std::string& boton = l.argumentos[1];
    long indice = -1;
    if (boton.size() > 1 && boton[0] == '#') {
        const std::optional<long long> n = LeerEntero(boton.substr(1));
        if (n && *n >= 1 && *n <= static_cast<long long>(panel->Botones().size())) indice = static_cast<long>(*n - 1);
    } else {
        indice = panel->BuscarCodigo(boton);
    }
    if (indice < 0) throw NoSePuede(l.argumentos[0] + " no tiene el botón " + boton);
    Accion([&] {
        Enfocar(c);
        panel->Pulsar(static_cast<std::size_t>(indice));
    });
}

void Ejecutor::Clic(const Linea& l, bool doble) {
    ExigirArgumentos(l, 3, 3, doble ? "dobleclic GRID FILA COLUMNA" : "clic GRID FILA COLUMNA");
    Control& c = ControlAlcanzable(l.argumentos[0]);
    auto* grid = dynamic_cast<Grid*>(&c);
    if (!grid) throw NoSePuede(l.argumentos[0] + " no es una rejilla");
    const std::optional<long long> f = LeerEntero(l.argumentos[1]), col = LeerEntero(l.argumentos[2]);
    if (!f || !col || *f < 0 || *f >= grid->Rows() || *col < 0 || *col >= grid->Cols())
        throw NoSePuede(l.argumentos[0] + " no tiene la celda " + l.argumentos[1] + "," + l.argumentos[2]);
    Accion([&] {
        Enfocar(c);
        grid->ClicEnCelda(static_cast<long>(*f), static_cast<long>(*col), doble);
    });
}

void Ejecutor::Elegir(const Linea& l, bool doble) {
    ExigirArgumentos(l, 2, 2, doble ? "dobleclic LISTA \"texto\"" : "elegir LISTA \"texto\"");
    Control& c = ControlAlcanzable(l.argumentos[0]);
    auto* lista = dynamic_cast<ListBox*>(&c);
    if (!lista) throw NoSePuede(l.argumentos[0] + " no es una lista");
    const long indice = lista->Indice(l.argumentos[1]);
    if (indice < 0) throw NoSePuede(l.argumentos[0] + " no tiene \"" + l.argumentos[1] + "\"");
    Accion([&] {
        Enfocar(c);
        lista->SetListIndex(indice);
        if (doble && lista->DblClick) lista->DblClick();
    });
}

void Ejecutor::Fijar(const Linea& l) {
    ExigirArgumentos(l, 2, 2, "fijar CONTROL VALOR");
    Control& c = ControlAlcanzable(l.argumentos[0]);
    const std::string& valor = l.argumentos[1];
    if (auto* fecha = dynamic_cast<DTPicker*>(&c)) {
        const std::optional<DateTime> d = LeerMomento(valor);
        if (!d || valor.find(' ') != std::string::npos) throw NoSePuede("fecha no válida: " + valor);
        Accion([&] {
            Enfocar(c);
            fecha->SetValue(*d);
        });
    } else if (auto* slider = dynamic_cast<Slider*>(&c)) {
        const std::optional<long long> n = LeerEntero(valor);
        if (!n) throw NoSePuede("número no válido: " + valor);
        Accion([&] {
            Enfocar(c);
            slider->SetValue(static_cast<long>(*n));
        });
    } else {
        throw NoSePuede(l.argumentos[0] + " no es un selector de fecha ni un deslizador");
    }
}

void Ejecutor::Responder(const Linea& l) {
    ExigirArgumentos(l, 1, 1, "responder Si|No|Aceptar|Cancelar|Reintentar");
    const int respuesta = RespuestaDeNombre(l.argumentos[0]);
    if (!respuesta) throw NoSePuede("respuesta desconocida: " + l.argumentos[0]);
    anfitrion_.respuestas.push_back(respuesta);
}

void Ejecutor::Sql(const Linea& l) {
    ExigirArgumentos(l, 1, 1, "sql \"sentencia\"");
    std::ostringstream texto;
    try {
        herramientas::EscribirResultado(ConexionSql(), l.argumentos[0], texto);
    } catch (const NoSePuede&) {
        throw;
    } catch (const std::exception& e) {
        throw NoSePuede(e.what());
    }
    for (const std::string& linea : Split(texto.str(), "\n"))
        if (!linea.empty()) salida_(linea);
}

Connection& Ejecutor::ConexionSql() {
    Connection& sesionActual = sesion().Conexion;
    if (sesionActual.IsOpen()) return sesionActual;
    // Before the start: the database the till will open.
    if (!conexionPrevia_) {
        auto cn = std::make_unique<Connection>();
        try {
            ConnectionOpener::Instancia().Abrir("", *cn);
        } catch (const std::exception& e) {
            throw NoSePuede(e.what());
        }
        conexionPrevia_ = std::move(cn);
    }
    return *conexionPrevia_;
}

Ventana& Ejecutor::PantallaActiva() const {
    const std::vector<Ventana*>& abiertas = anfitrion_.Abiertas();
    for (auto it = abiertas.rbegin(); it != abiertas.rend(); ++it)
        if ((*it)->Modal()) return **it;
    if (Ventana* caja = anfitrion_.Buscar("frmCaja")) return *caja;
    if (abiertas.empty()) throw NoSePuede("no hay ninguna pantalla abierta");
    return *abiertas.front();
}

Control& Ejecutor::BuscarControl(const std::string& nombre) const {
    const std::size_t punto = nombre.find('.');
    Ventana* pantalla = nullptr;
    std::string control = nombre;
    if (punto != std::string::npos) {
        const std::string nombrePantalla = nombre.substr(0, punto);
        pantalla = anfitrion_.Buscar(nombrePantalla);
        if (!pantalla) throw NoSePuede("la pantalla " + nombrePantalla + " no está abierta");
        control = nombre.substr(punto + 1);
    } else {
        pantalla = &PantallaActiva();
    }
    Control* c = pantalla->Buscar(control);
    if (!c) throw NoSePuede(pantalla->nombre + " no tiene el control " + control);
    return *c;
}

Control& Ejecutor::ControlAlcanzable(const std::string& nombre) const {
    Control& c = BuscarControl(nombre);
    const std::string donde = (c.formulario ? c.formulario->nombre + "." : std::string()) + c.nombre;
    if (!c.VisibleEnPantalla()) throw NoSePuede(donde + " está oculto");
    if (!c.HabilitadoEnPantalla()) throw NoSePuede(donde + " está deshabilitado");
    return c;
}

void Ejecutor::Accion(const std::function<void()>& accion) { anfitrion_.Accion(accion); }

void Ejecutor::Enfocar(Control& c) {
    if (c.TomaFoco() && c.Alcanzable()) c.SetFocus();
}

}  // namespace tpv::guion
