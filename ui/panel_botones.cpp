#include "ui/panel_botones.hpp"

#include <QFileInfo>
#include <QFontMetrics>
#include <QIcon>
#include <QPixmap>
#include <QToolButton>
#include <algorithm>
#include <cmath>
#include <memory>

#include "ui/anfitrion_qt.hpp"

namespace tpv::ui {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

// The colour of a record's button: its own with UsaColores, else a shade of
// the screen's background so that the panel still reads as buttons.
QColor ColorBoton(const ButtonMatrix& c, const ButtonRecord& b) {
    if (c.UsaColores) {
        bool ok = false;
        const long valor = Q(b.Color).trimmed().toLong(&ok);
        if (ok && ColorDeModelo(valor).isValid()) return ColorDeModelo(valor);
    }
    QColor fondo = c.formulario ? ColorDeModelo(c.formulario->backColor) : QColor();
    if (!fondo.isValid()) fondo = QColor(0xec, 0xe9, 0xd8);
    return fondo.lightness() < 100 ? fondo.lighter(170) : QColor(0xfb, 0xfb, 0xf8);
}

// What decides the buttons drawn: when it is the same, nothing is rebuilt.
QString Firma(const ButtonMatrix& c, const QSize& tamano, int porPagina) {
    QString f = QStringLiteral("%1|%2|%3x%4|%5|%6|%7|%8")
                    .arg(c.Pagina())
                    .arg(porPagina)
                    .arg(tamano.width())
                    .arg(tamano.height())
                    .arg(c.UsaColores)
                    .arg(c.TamanoBoton)
                    .arg(c.Separacion)
                    .arg(c.Botones().size());
    for (const ButtonRecord& b : c.Botones())
        f += QStringLiteral("|%1/%2/%3/%4/%5").arg(Q(b.Codigo), Q(b.Texto), Q(b.TextoSuperior), Q(b.Color), Q(b.Imagen));
    return f;
}

QToolButton* NuevoBoton(QWidget* padre, const QString& texto, const QColor& fondo, int px) {
    auto* b = new QToolButton(padre);
    b->setFocusPolicy(Qt::NoFocus);
    b->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    b->setText(texto);
    QFont f = b->font();
    f.setPixelSize(px);
    f.setBold(true);
    b->setFont(f);
    b->setStyleSheet(QStringLiteral("QToolButton{background:qlineargradient(x1:0,y1:0,x2:0,y2:1,stop:0 %1,stop:1 %2);"
                                    "color:%3;border:1px solid %4;border-radius:10px;padding:4px;}"
                                    "QToolButton:pressed{background:%4;}")
                         .arg(fondo.lighter(110).name(), fondo.name(), TextoSobre(fondo).name(), fondo.darker(140).name()));
    return b;
}

}  // namespace

QString PartirEnLineas(const QString& texto, const QFont& f, int ancho, int lineas) {
    const QFontMetrics m(f);
    QStringList hechas;
    QString actual;
    const QStringList palabras = texto.simplified().split(' ', Qt::SkipEmptyParts);
    for (int i = 0; i < palabras.size(); ++i) {
        const QString prueba = actual.isEmpty() ? palabras[i] : actual + ' ' + palabras[i];
        if (actual.isEmpty() || m.horizontalAdvance(prueba) <= ancho) {
            actual = prueba;
            continue;
        }
        hechas << actual;
        actual = palabras[i];
        if (hechas.size() == lineas - 1) {
            actual = palabras.mid(i).join(' ');
            break;
        }
    }
    if (!actual.isEmpty()) hechas << actual;
    for (QString& l : hechas) l = m.elidedText(l, Qt::ElideRight, ancho);
    return hechas.join('\n');
}

WidgetDeControl PanelBotones(ButtonMatrix& c, QWidget* padre, VistaPantalla& vista) {
    auto* w = new QWidget(padre);
    w->setFocusPolicy(Qt::ClickFocus);
    auto botones = std::make_shared<std::vector<QWidget*>>();
    return {w, [w, &c, &vista, botones] {
                const int porPagina = c.BotonesPorPagina();
                const QString firma = Firma(c, w->size(), porPagina);
                if (w->property("tpvFirma").toString() == firma) return;
                w->setProperty("tpvFirma", firma);
                // A button may be the one being pressed: it goes later.
                for (QWidget* b : *botones) {
                    b->hide();
                    b->deleteLater();
                }
                botones->clear();

                const double fx = vista.PixelesPorTwipX(), fy = vista.PixelesPorTwipY();
                const double paso = c.TamanoBoton + c.Separacion;
                const int columnas = paso > 0 ? std::max(1, static_cast<int>((c.width - c.Separacion) / paso)) : 1;
                const int filas = std::max(1, porPagina / columnas);
                int lado = std::max(48, static_cast<int>(std::lround(c.TamanoBoton * std::min(fx, fy))));
                const int hueco = static_cast<int>(std::lround(c.Separacion * std::min(fx, fy)));
                // With more than one page and no room for the page turners
                // below or beside the grid, the buttons narrow to make it.
                constexpr int kPasador = 56;
                if (c.Paginas() > 1 && w->height() - (hueco + filas * (lado + hueco)) < 48 &&
                    w->width() - (hueco + columnas * (lado + hueco)) < 2 * kPasador)
                    lado = std::max(48, (w->width() - 2 * kPasador - hueco) / columnas - hueco);
                const int letra = std::clamp(lado / 6, 11, 20);
                const std::size_t primero = static_cast<std::size_t>(c.Pagina()) * static_cast<std::size_t>(porPagina);
                for (std::size_t i = primero; i < c.Botones().size() && i < primero + static_cast<std::size_t>(porPagina); ++i) {
                    const ButtonRecord& r = c.Botones()[i];
                    const int n = static_cast<int>(i - primero);
                    QToolButton* b = NuevoBoton(w, QString(), ColorBoton(c, r), letra);
                    b->setObjectName(QStringLiteral("boton%1").arg(i));
                    b->setGeometry(hueco + (n % columnas) * (lado + hueco), hueco + (n / columnas) * (lado + hueco), lado, lado);
                    QPixmap foto;
                    const bool conFoto = !r.Imagen.empty() && QFileInfo(Q(r.Imagen)).isFile() && foto.load(Q(r.Imagen));
                    const int lineas = conFoto ? 2 : 4;
                    QString texto = PartirEnLineas(Q(r.Texto), b->font(), lado - 12, lineas);
                    if (!r.TextoSuperior.empty())
                        texto = QFontMetrics(b->font()).elidedText(Q(r.TextoSuperior), Qt::ElideRight, lado - 12) + '\n' + texto;
                    b->setText(texto);
                    if (conFoto) {
                        b->setIcon(QIcon(foto));
                        b->setIconSize(QSize(lado * 11 / 20, lado * 11 / 20));
                    } else {
                        b->setToolButtonStyle(Qt::ToolButtonTextOnly);
                    }
                    QObject::connect(b, &QToolButton::clicked, b, [&c, &vista, i] {
                        vista.anfitrion().Ejecutar([&c, i] { c.Pulsar(i); });
                    });
                    b->show();
                    botones->push_back(b);
                }
                if (c.Paginas() > 1) {
                    // Page turners in the room left below or beside the grid.
                    const int usadoAlto = hueco + filas * (lado + hueco), usadoAncho = hueco + columnas * (lado + hueco);
                    const int libreAbajo = w->height() - usadoAlto, libreDerecha = w->width() - usadoAncho;
                    QRect zona;
                    if (libreAbajo >= 48) zona = QRect(0, usadoAlto, w->width(), libreAbajo);
                    else zona = QRect(usadoAncho, 0, std::max(libreDerecha, 2 * kPasador), std::min(w->height(), lado + 2 * hueco));
                    const bool horizontal = zona.width() >= zona.height() || zona.height() < 2 * kPasador;
                    const bool estrechos = (horizontal ? zona.width() / 2 : zona.width()) < 150;
                    const QColor gris(0xc9, 0xd3, 0xe0);
                    struct Pasador {
                        QString texto, corto, nombre;
                        bool activo;
                        bool siguiente;
                    };
                    const Pasador pasadores[] = {
                        {QStringLiteral("◀ Anterior"), QStringLiteral("◀"), QStringLiteral("paginaAnterior"), c.Pagina() > 0, false},
                        {QStringLiteral("Siguiente ▶"), QStringLiteral("▶"), QStringLiteral("paginaSiguiente"), c.Pagina() + 1 < c.Paginas(), true}};
                    int k = 0;
                    for (const Pasador& p : pasadores) {
                        QToolButton* b = NuevoBoton(w, estrechos ? p.corto : p.texto, gris, 16);
                        b->setObjectName(p.nombre);
                        b->setToolButtonStyle(Qt::ToolButtonTextOnly);
                        b->setEnabled(p.activo);
                        if (horizontal) {
                            const int ancho = std::max(48, std::min(180, zona.width() / 2 - 8));
                            b->setGeometry(zona.right() - (2 - k) * (ancho + 8), zona.top() + 4, ancho, std::max(48, zona.height() - 8));
                        } else {
                            const int alto = std::min(120, zona.height() / 2 - 8);
                            b->setGeometry(zona.left() + 4, zona.bottom() - (2 - k) * (alto + 8), std::max(64, zona.width() - 8), alto);
                        }
                        const bool siguiente = p.siguiente;
                        QObject::connect(b, &QToolButton::clicked, b, [&c, &vista, siguiente] {
                            vista.anfitrion().Ejecutar([&c, siguiente] {
                                if (siguiente) c.PaginaSiguiente();
                                else c.PaginaAnterior();
                            });
                        });
                        b->show();
                        botones->push_back(b);
                        ++k;
                    }
                }
            }};
}

}  // namespace tpv::ui
