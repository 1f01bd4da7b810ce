#include "ui/anfitrion_qt.hpp"

#include <QApplication>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <algorithm>
#include <cstdlib>

#include "core/runtime/reloj.hpp"
#include "ui/teclas.hpp"
#include "ui/vista_pantalla.hpp"

namespace tpv::ui {

namespace {

QString TextoBoton(int respuesta) {
    switch (respuesta) {
        case vbYes: return QStringLiteral("Sí");
        case vbNo: return QStringLiteral("No");
        case vbOK: return QStringLiteral("Aceptar");
        case vbCancel: return QStringLiteral("Cancelar");
        case vbRetry: return QStringLiteral("Reintentar");
        case vbAbort: return QStringLiteral("Anular");
        case vbIgnore: return QStringLiteral("Omitir");
        default: return QString::number(respuesta);
    }
}

QMessageBox::ButtonRole Papel(int respuesta) {
    switch (respuesta) {
        case vbYes: return QMessageBox::YesRole;
        case vbNo: return QMessageBox::NoRole;
        case vbCancel: return QMessageBox::RejectRole;
        default: return QMessageBox::AcceptRole;
    }
}

QMessageBox::Icon Icono(int icono) {
    switch (icono) {
        case vbCritical: return QMessageBox::Critical;
        case vbQuestion: return QMessageBox::Question;
        case vbExclamation: return QMessageBox::Warning;
        case vbInformation: return QMessageBox::Information;
        default: return QMessageBox::NoIcon;
    }
}

bool Definida(const char* variable) {
    const char* v = std::getenv(variable);
    return v && *v;
}

}  // namespace

AnfitrionQt::AnfitrionQt() {
    temporizador_.setSingleShot(true);
    temporizador_.setTimerType(Qt::PreciseTimer);
    connect(&temporizador_, &QTimer::timeout, this, [this] { Pulso(); });
    qApp->installEventFilter(this);
}

AnfitrionQt::~AnfitrionQt() {
    qApp->removeEventFilter(this);
    for (auto& [v, vista] : vistas_) delete vista.data();
}

int AnfitrionQt::Mostrar(const CajaMensaje& caja) {
    QWidget* padre = QApplication::activeWindow();
    QMessageBox box(Icono(caja.Icono()), QString::fromStdString(caja.titulo), QString::fromStdString(caja.texto),
                    QMessageBox::NoButton, padre);
    box.setObjectName(QStringLiteral("MsgBox"));
    box.setStyleSheet(QStringLiteral("QLabel{font-size:18px;}QPushButton{font-size:17px;min-width:130px;min-height:52px;}"));
    std::vector<std::pair<QAbstractButton*, int>> botones;
    QAbstractButton* cancelar = nullptr;
    for (int i = 0; i < caja.NumeroDeBotones(); ++i) {
        const int r = caja.Respuesta(i);
        QPushButton* b = box.addButton(TextoBoton(r), Papel(r));
        botones.emplace_back(b, r);
        if (r == caja.RespuestaPorDefecto()) box.setDefaultButton(b);
        if (r == vbCancel || (r == vbOK && caja.NumeroDeBotones() == 1)) cancelar = b;
    }
    // Escape answers Cancel, or the only button; a box without either
    // can't be closed but by its buttons.
    if (cancelar) box.setEscapeButton(cancelar);
    for (;;) {
        box.exec();
        for (auto& [b, r] : botones)
            if (box.clickedButton() == b) return r;
        if (cancelar) return botones.size() == 1 ? botones.front().second : vbCancel;
    }
}

void AnfitrionQt::HacerEventos() { QCoreApplication::processEvents(); }

void AnfitrionQt::Ejecutar(const std::function<void()>& accion) {
    Accion(accion);
    Despues();
}

void AnfitrionQt::Despues() {
    const std::vector<Ventana*>& abiertas = Abiertas();
    for (auto i = vistas_.begin(); i != vistas_.end();) {
        // A screen destroyed while loaded left the list without a word.
        const bool sigue = std::find(abiertas.begin(), abiertas.end(), i->first) != abiertas.end();
        if (!sigue || !i->second) {
            if (i->second) {
                i->second->hide();
                i->second->deleteLater();
            }
            i = vistas_.erase(i);
            continue;
        }
        VistaPantalla* vista = i->second;
        if (vista->isVisible() != i->first->visible) vista->setVisible(i->first->visible);
        vista->Refrescar();
        ++i;
    }
    for (Espera& e : esperas_)
        if (std::find(abiertas.begin(), abiertas.end(), e.ventana) == abiertas.end() || !e.ventana->Cargada())
            e.bucle->quit();
    ProgramarTemporizadores();
    if (salirAlCerrarTodo && abiertas.empty()) QCoreApplication::quit();
}

VistaPantalla* AnfitrionQt::Vista(const Ventana& v) const {
    auto i = vistas_.find(&v);
    return i == vistas_.end() ? nullptr : i->second.data();
}

VistaPantalla* AnfitrionQt::Vista(const std::string& nombre) const {
    Ventana* v = Buscar(nombre);
    return v ? Vista(*v) : nullptr;
}

void AnfitrionQt::BucleModal(Ventana& v) {
    QEventLoop bucle;
    esperas_.push_back({&v, &bucle});
    Despues();
    while (v.Cargada() && std::find(Abiertas().begin(), Abiertas().end(), &v) != Abiertas().end()) {
        bucle.exec();
        // The application is ending: the wait ends with it.
        if (QCoreApplication::closingDown()) break;
    }
    esperas_.erase(std::remove_if(esperas_.begin(), esperas_.end(), [&](const Espera& e) { return e.bucle == &bucle; }),
                   esperas_.end());
}

void AnfitrionQt::MostrarError(long numero, const std::string& descripcion) {
    Mostrar(CajaMensaje{"Se ha producido el error " + std::to_string(numero) + ":\n" + descripcion, kTituloPrograma,
                        vbCritical});
}

void AnfitrionQt::AlAbrir(Ventana& v) {
    QPointer<VistaPantalla>& vista = vistas_[&v];
    if (vista) {
        // The window of an earlier load that is still going away.
        vista->hide();
        vista->deleteLater();
    }
    vista = new VistaPantalla(*this, v);
    if (v.Modal()) vista->setWindowModality(Qt::ApplicationModal);
    vista->Refrescar();
    vista->show();
}

void AnfitrionQt::AlCerrar(Ventana& v) {
    auto i = vistas_.find(&v);
    if (i != vistas_.end()) {
        if (i->second) {
            i->second->hide();
            i->second->deleteLater();
        }
        vistas_.erase(i);
    }
    for (Espera& e : esperas_)
        if (e.ventana == &v) e.bucle->quit();
}

VistaPantalla* AnfitrionQt::VistaDe(QObject* objeto) const {
    auto* w = qobject_cast<QWidget*>(objeto);
    if (!w) return nullptr;
    QWidget* ventana = w->window();
    for (const auto& [v, vista] : vistas_)
        if (vista.data() == ventana) return vista.data();
    return nullptr;
}

bool AnfitrionQt::eventFilter(QObject* objeto, QEvent* evento) {
    switch (evento->type()) {
        case QEvent::KeyPress: {
            VistaPantalla* vista = VistaDe(objeto);
            if (!vista) return false;
            const auto* k = static_cast<QKeyEvent*>(evento);
            const TeclaVB t = TraducirTecla(k->key(), k->modifiers(), k->text());
            if (t.keyCode == 0 && t.keyAscii == 0) return true;
            // Keys go where the model has its focus, whatever Qt thinks.
            Control* destino = vista->ventana().ActiveControl();
            if (!destino) destino = vista->ControlDe(objeto);
            if (!destino || !destino->TomaFoco() || !destino->Alcanzable()) return true;
            Ejecutar([this, destino, t] { Tecla(*destino, t.keyCode, t.keyAscii); });
            return true;
        }
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride: return VistaDe(objeto) != nullptr;
        case QEvent::MouseButtonPress: {
            // A press gives the control the focus first, as the platform did.
            VistaPantalla* vista = VistaDe(objeto);
            if (!vista) return false;
            Control* c = vista->ControlDe(objeto);
            if (c && c->TomaFoco() && c->Alcanzable() && !c->TieneFoco()) Ejecutar([c] { c->SetFocus(); });
            return false;
        }
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick: {
            // Labels, frames and pictures have a Click of their own.
            VistaPantalla* vista = VistaDe(objeto);
            if (!vista) return false;
            Control* c = vista->ControlDe(objeto);
            if (!c || vista->WidgetDe(*c) != objeto) return false;
            if (!dynamic_cast<Label*>(c) && !dynamic_cast<Frame*>(c) && !dynamic_cast<PictureBox*>(c)) return false;
            if (!c->Alcanzable()) return false;
            if (evento->type() == QEvent::MouseButtonRelease) Ejecutar([c] { c->Clic(); });
            else if (c->DblClick) Ejecutar([c] { c->DblClick(); });
            return false;
        }
        default: return false;
    }
}

void AnfitrionQt::ProgramarTemporizadores() {
    const std::int64_t ahora = RelojMs();
    std::int64_t proximo = -1;
    for (Timer* t : Temporizadores(Abiertas())) {
        const std::int64_t v = t->Vencimiento(ahora);
        if (v >= 0 && (proximo < 0 || v < proximo)) proximo = v;
    }
    if (proximo < 0) {
        temporizador_.stop();
        return;
    }
    espera_ = std::max<std::int64_t>(0, proximo - ahora);
    temporizador_.start(static_cast<int>(std::min<std::int64_t>(espera_, 24 * 3600 * 1000)));
}

void AnfitrionQt::Pulso() {
    if (reloj::Fijado()) {
        // A clock set by hand moves by what the timer waited.
        Avanzar(espera_);
    } else {
        const std::int64_t ahora = RelojMs();
        for (Timer* t : Temporizadores(Abiertas())) {
            const std::int64_t v = t->Vencimiento(ahora);
            if (v < 0 || v > ahora) continue;
            t->Disparado(ahora);
            if (t->Tick) Accion(t->Tick);
        }
    }
    Despues();
}

double PantallaQt::AnchoTwips() const {
    const QScreen* s = QGuiApplication::primaryScreen();
    return (s ? s->geometry().width() : 1024) * kTwipsPorPixel;
}

double PantallaQt::AltoTwips() const {
    const QScreen* s = QGuiApplication::primaryScreen();
    return (s ? s->geometry().height() : 768) * kTwipsPorPixel;
}

bool HayPantalla() { return Definida("DISPLAY") || Definida("WAYLAND_DISPLAY") || Definida("QT_QPA_PLATFORM"); }

}  // namespace tpv::ui
