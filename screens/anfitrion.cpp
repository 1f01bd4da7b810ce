#include "screens/anfitrion.hpp"

#include <algorithm>
#include <exception>

#include "core/datos/tipos.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/registro.hpp"
#include "core/runtime/reloj.hpp"
#include "core/runtime/texto.hpp"

namespace tpv {

namespace {

Anfitrion*& Instalado() {
    static Anfitrion* anfitrion = nullptr;
    return anfitrion;
}

struct Nombre {
    int respuesta;
    const char* nombre;
};
constexpr Nombre kRespuestas[] = {{vbYes, "Si"},       {vbNo, "No"},         {vbOK, "Aceptar"},
                                  {vbCancel, "Cancelar"}, {vbRetry, "Reintentar"}, {vbAbort, "Anular"},
                                  {vbIgnore, "Omitir"}};

}  // namespace

std::vector<Timer*> Temporizadores(const std::vector<Ventana*>& abiertas) {
    std::vector<Timer*> t;
    for (Ventana* v : abiertas)
        for (Control& c : v->controles)
            if (auto* timer = dynamic_cast<Timer*>(&c)) t.push_back(timer);
    return t;
}

Ventana::Ventana() { visible = false; }

Ventana::~Ventana() {
    if (cargada_) AnfitrionActual().Olvidar(*this);
}

void Ventana::Show(bool modal) { AnfitrionActual().Mostrar(*this, modal); }
void Ventana::Hide() { AnfitrionActual().Ocultar(*this); }
void Ventana::Unload() { AnfitrionActual().Descargar(*this); }

std::string NombreRespuesta(int respuesta) {
    for (const Nombre& n : kRespuestas)
        if (n.respuesta == respuesta) return n.nombre;
    return std::to_string(respuesta);
}

int RespuestaDeNombre(const std::string& nombre) {
    for (const Nombre& n : kRespuestas)
        if (datos::IgualesSinCaso(nombre, n.nombre)) return n.respuesta;
    return 0;
}

void Anfitrion::Cargar(Ventana& v) {
    if (v.cargada_) return;
    v.visible = false;
    v.OlvidarFoco();
    v.Disenar();
    v.cargada_ = true;
    abiertas_.push_back(&v);
    // The timers count from the load.
    for (Control& c : v.controles)
        if (auto* t = dynamic_cast<Timer*>(&c)) t->SetEnabled(t->enabled);
    v.Form_Load();
}

void Anfitrion::Mostrar(Ventana& v, bool modal) {
    Cargar(v);
    if (!v.cargada_) return;  // unloaded itself while loading
    const bool yaVisible = v.visible;
    v.visible = true;
    v.modal_ = modal;
    if (!yaVisible) AlAbrir(v);
    // The first control in tab order takes the focus, as the window shows.
    if (!v.ActiveControl())
        if (Control* c = v.SiguienteEnTabulacion(nullptr)) c->SetFocus();
    v.Form_Activate();
    if (modal && v.cargada_) BucleModal(v);
}

void Anfitrion::Ocultar(Ventana& v) { v.visible = false; }

void Anfitrion::Descargar(Ventana& v) {
    if (!v.cargada_) return;
    int cancelar = 0;
    v.Form_Unload(cancelar);
    if (cancelar) return;
    v.cargada_ = false;
    v.modal_ = false;
    const bool eraVisible = v.visible;
    v.visible = false;
    v.OlvidarFoco();
    for (Control& c : v.controles)
        if (auto* t = dynamic_cast<Timer*>(&c)) t->Desarmar();
    abiertas_.erase(std::remove(abiertas_.begin(), abiertas_.end(), &v), abiertas_.end());
    if (eraVisible) AlCerrar(v);
}

void Anfitrion::Olvidar(Ventana& v) {
    abiertas_.erase(std::remove(abiertas_.begin(), abiertas_.end(), &v), abiertas_.end());
}

Ventana* Anfitrion::Buscar(const std::string& nombre) const {
    for (Ventana* v : abiertas_)
        if (datos::IgualesSinCaso(v->nombre, nombre)) return v;
    return nullptr;
}

void Anfitrion::Accion(const std::function<void()>& accion) {
    long numero = 0;
    std::string descripcion;
    std::string sentencia;
    try {
        accion();
        return;
    } catch (const DbError& e) {
        numero = e.Number();
        descripcion = e.what();
        sentencia = e.Statement();
        const std::string cola = " [" + sentencia + "]";
        if (!sentencia.empty() && descripcion.ends_with(cola)) descripcion.resize(descripcion.size() - cola.size());
    } catch (const RuntimeError& e) {
        numero = e.Number();
        descripcion = e.what();
    } catch (const std::exception& e) {
        descripcion = e.what();
    }
    Registrar("Error " + std::to_string(numero) + ": " + descripcion + (sentencia.empty() ? "" : " [" + sentencia + "]"));
    MostrarError(numero, descripcion);
}

void Anfitrion::Avanzar(std::int64_t ms) {
    const std::int64_t fin = RelojMs() + ms;
    for (;;) {
        const std::int64_t ahora = RelojMs();
        Timer* proximo = nullptr;
        std::int64_t cuando = 0;
        for (Timer* t : Temporizadores(abiertas_)) {
            const std::int64_t v = t->Vencimiento(ahora);
            if (v >= 0 && v <= fin && (!proximo || v < cuando)) {
                proximo = t;
                cuando = v;
            }
        }
        if (!proximo) break;
        reloj::Fijar(MsAFecha(cuando));
        proximo->Disparado(cuando);
        if (proximo->Tick) Accion(proximo->Tick);
    }
    reloj::Fijar(MsAFecha(fin));
}

void Anfitrion::Tecla(Control& c, int keyCode, int keyAscii) {
    c.SetFocus();
    Formulario* f = c.formulario;
    if (keyCode == vbKeyTab && keyAscii == 0) {
        if (f)
            if (Control* siguiente = f->SiguienteEnTabulacion(&c)) siguiente->SetFocus();
        return;
    }
    if (f && f->keyPreview && f->KeyDown) f->KeyDown(keyCode, 0);
    if (keyCode != 0 && c.KeyDown) c.KeyDown(keyCode, 0);
    if (keyAscii == 0 || keyCode == 0) return;
    if (f && f->keyPreview && f->KeyPress) f->KeyPress(keyAscii);
    if (keyAscii != 0 && c.KeyPress) c.KeyPress(keyAscii);
    if (keyAscii != 0) c.RecibirCaracter(keyAscii);
}

Anfitrion& AnfitrionActual() {
    static AnfitrionSinPantalla porDefecto;
    return Instalado() ? *Instalado() : porDefecto;
}

void FijarAnfitrion(Anfitrion* anfitrion) { Instalado() = anfitrion; }

int AnfitrionSinPantalla::Mostrar(const CajaMensaje& caja) {
    int respuesta = caja.RespuestaPorDefecto();
    if (!respuestas.empty()) {
        const int r = respuestas.front();
        respuestas.pop_front();
        for (int i = 0; i < caja.NumeroDeBotones(); ++i)
            if (caja.Respuesta(i) == r) respuesta = r;
    }
    Escribir("MENSAJE [" + caja.titulo + "] " + Replace(Replace(caja.texto, "\r\n", "\\n"), "\n", "\\n") + " -> " + NombreRespuesta(respuesta));
    return respuesta;
}

void AnfitrionSinPantalla::BucleModal(Ventana& v) {
    while (v.Cargada())
        if (!siguiente || !siguiente()) throw FinDelGuion{};
}

void AnfitrionSinPantalla::MostrarError(long numero, const std::string& descripcion) {
    Escribir("ERROR " + std::to_string(numero) + ": " + descripcion);
}

void AnfitrionSinPantalla::AlAbrir(Ventana& v) { Escribir("PANTALLA ABRE " + v.nombre); }

void AnfitrionSinPantalla::AlCerrar(Ventana& v) { Escribir("PANTALLA CIERRA " + v.nombre); }

}  // namespace tpv
