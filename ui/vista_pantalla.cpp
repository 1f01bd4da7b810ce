#include "ui/vista_pantalla.hpp"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QPalette>
#include <algorithm>
#include <cmath>

#include "core/sesion/pantalla.hpp"
#include "ui/anfitrion_qt.hpp"

namespace tpv::ui {

namespace {
constexpr int kLadoTactil = 48;
}  // namespace

QColor ColorDeModelo(long color) {
    if (color < 0 || color > 0xFFFFFF) return {};
    return QColor(static_cast<int>(color & 0xFF), static_cast<int>((color >> 8) & 0xFF),
                  static_cast<int>((color >> 16) & 0xFF));
}

QColor TextoSobre(const QColor& fondo) {
    if (!fondo.isValid()) return QColor(Qt::black);
    const double luz = 0.299 * fondo.red() + 0.587 * fondo.green() + 0.114 * fondo.blue();
    return luz < 140 ? QColor(Qt::white) : QColor(Qt::black);
}

void FijarEstilo(QWidget* w, const QString& estilo) {
    if (w->property("tpvEstilo").toString() == estilo && !estilo.isEmpty()) return;
    w->setProperty("tpvEstilo", estilo);
    w->setStyleSheet(estilo);
}

VistaPantalla::VistaPantalla(AnfitrionQt& anfitrion, Ventana& ventana)
    : QWidget(nullptr), anfitrion_(anfitrion), ventana_(ventana) {
    setObjectName(QString::fromStdString(ventana.nombre));
    setAttribute(Qt::WA_DeleteOnClose, false);
    setAutoFillBackground(true);
    // The model's size is already fitted to the display, in twips.
    const int ancho = std::max(1, static_cast<int>(std::lround(ventana.width / kTwipsPorPixel)));
    const int alto = std::max(1, static_cast<int>(std::lround(ventana.height / kTwipsPorPixel)));
    resize(ancho, alto);
    move(static_cast<int>(ventana.left / kTwipsPorPixel), static_cast<int>(ventana.top / kTwipsPorPixel));
    Construir();
}

void VistaPantalla::Construir() {
    std::unordered_map<const Control*, QWidget*> hechos;
    std::function<QWidget*(Control&)> crear = [&](Control& c) -> QWidget* {
        if (auto i = hechos.find(&c); i != hechos.end()) return i->second;
        QWidget* padre = this;
        if (c.contenedor)
            if (QWidget* marco = crear(*c.contenedor)) padre = marco;
        WidgetDeControl w = CrearWidget(c, padre, *this);
        hechos[&c] = w.widget;
        if (!w.widget) return nullptr;
        w.widget->setObjectName(QString::fromStdString(c.nombre));
        controlDe_[w.widget] = &c;
        enlaces_.push_back({&c, w.widget, std::move(w.refrescar)});
        return w.widget;
    };
    for (Control& c : ventana_.controles) crear(c);
    // Later controls stand above earlier ones, as they were drawn.
    for (Enlace& e : enlaces_) e.widget->raise();
}

double VistaPantalla::PixelesPorTwipX() const {
    return ventana_.width > 0 ? width() / ventana_.width : 1.0 / kTwipsPorPixel;
}

double VistaPantalla::PixelesPorTwipY() const {
    return ventana_.height > 0 ? height() / ventana_.height : 1.0 / kTwipsPorPixel;
}

QRect VistaPantalla::Rectangulo(const Control& c) const {
    const double fx = PixelesPorTwipX(), fy = PixelesPorTwipY();
    const int x = static_cast<int>(std::lround(c.left * fx));
    const int y = static_cast<int>(std::lround(c.top * fy));
    const int x2 = static_cast<int>(std::lround((c.left + c.width) * fx));
    const int y2 = static_cast<int>(std::lround((c.top + c.height) * fy));
    return QRect(x, y, std::max(0, x2 - x), std::max(0, y2 - y));
}

// A finger needs 48 pixels: a smaller button grows about its centre, within
// its frame, into the room the buttons about it leave (half of each gap, as
// they may grow into it too). Where there is no room left (a small display)
// it stays smaller rather than cover another button.
QRect VistaPantalla::RectanguloTactil(const Control& c, QRect r) const {
    const QSize marco = c.contenedor ? Rectangulo(*c.contenedor).size() : size();
    int arriba = r.top(), abajo = marco.height() - 1 - r.bottom();
    int izquierda = r.left(), derecha = marco.width() - 1 - r.right();
    for (const Enlace& e : enlaces_) {
        const Control& otro = *e.control;
        if (&otro == &c || otro.contenedor != c.contenedor || !otro.visible) continue;
        if (!qobject_cast<QAbstractButton*>(e.widget)) continue;
        const QRect o = Rectangulo(otro);
        if (o.isEmpty() || o.intersects(r)) continue;  // an overlay, not a neighbour
        if (o.left() <= r.right() && o.right() >= r.left()) {
            if (o.bottom() < r.top()) arriba = std::min(arriba, (r.top() - o.bottom() - 1) / 2);
            else abajo = std::min(abajo, (o.top() - r.bottom() - 1) / 2);
        } else if (o.top() <= r.bottom() && o.bottom() >= r.top()) {
            if (o.right() < r.left()) izquierda = std::min(izquierda, (r.left() - o.right() - 1) / 2);
            else derecha = std::min(derecha, (o.left() - r.right() - 1) / 2);
        }
    }
    // Half the need to each side, the rest to the other side if it has room.
    const auto crecer = [](int falta, int antes, int despues) {
        antes = std::max(antes, 0);
        despues = std::max(despues, 0);
        int a = std::min(falta / 2, antes);
        const int d = std::min(falta - a, despues);
        a = std::min(falta - d, antes);
        return std::pair{a, d};
    };
    if (r.height() < kLadoTactil) {
        const auto [a, d] = crecer(kLadoTactil - r.height(), arriba, abajo);
        r.adjust(0, -a, 0, d);
    }
    if (r.width() < kLadoTactil) {
        const auto [a, d] = crecer(kLadoTactil - r.width(), izquierda, derecha);
        r.adjust(-a, 0, d, 0);
    }
    return r;
}

void VistaPantalla::Refrescar() {
    actualizando_ = true;
    const QString titulo = QString::fromStdString(ventana_.caption);
    if (windowTitle() != titulo) setWindowTitle(titulo.isEmpty() ? QStringLiteral("TPV") : titulo);
    const QColor fondo = ColorDeModelo(ventana_.backColor);
    if (fondo.isValid() && palette().color(QPalette::Window) != fondo) {
        QPalette p = palette();
        p.setColor(QPalette::Window, fondo);
        p.setColor(QPalette::WindowText, ColorDeModelo(ventana_.foreColor));
        setPalette(p);
    }
    setEnabled(ventana_.enabled);
    for (Enlace& e : enlaces_) {
        const Control& c = *e.control;
        QRect r = Rectangulo(c);
        if (qobject_cast<QAbstractButton*>(e.widget) && r.width() > 0 && r.height() > 0 &&
            (r.width() < kLadoTactil || r.height() < kLadoTactil))
            r = RectanguloTactil(c, r);
        if (e.widget->geometry() != r) e.widget->setGeometry(r);
        e.refrescar();
        if (e.widget->isVisibleTo(e.widget->parentWidget()) != c.visible) e.widget->setVisible(c.visible);
        if (e.widget->isEnabled() != c.enabled) e.widget->setEnabled(c.enabled);
        const QString ayuda = QString::fromStdString(c.toolTipText);
        if (e.widget->toolTip() != ayuda) e.widget->setToolTip(ayuda);
    }
    // The control with the model's focus has Qt's, so its caret shows.
    if (Control* activo = ventana_.ActiveControl())
        if (QWidget* w = WidgetDe(*activo); w && w->isVisible() && focusWidget() != w) w->setFocus(Qt::OtherFocusReason);
    actualizando_ = false;
}

QWidget* VistaPantalla::WidgetDe(const Control& c) const {
    for (const Enlace& e : enlaces_)
        if (e.control == &c) return e.widget;
    return nullptr;
}

QWidget* VistaPantalla::WidgetDe(const std::string& nombreControl) const {
    const Control* c = ventana_.Buscar(nombreControl);
    return c ? WidgetDe(*c) : nullptr;
}

Control* VistaPantalla::ControlDe(const QObject* objeto) const {
    for (const QObject* o = objeto; o && o != this; o = o->parent())
        if (auto i = controlDe_.find(o); i != controlDe_.end()) return i->second;
    return nullptr;
}

void VistaPantalla::closeEvent(QCloseEvent* evento) {
    // Closing the window is unloading the screen, which may refuse.
    evento->ignore();
    Ventana& v = ventana_;
    anfitrion_.Ejecutar([&v] { v.Unload(); });
}

void VistaPantalla::resizeEvent(QResizeEvent* evento) {
    QWidget::resizeEvent(evento);
    Refrescar();
}

}  // namespace tpv::ui
