#include "ui/panel_botones.hpp"

#include <QFileInfo>
#include <QFontMetrics>
#include <QIcon>
#include <QPixmap>
#include <QToolButton>
#include <algorithm>
#include <cmath>
#include <memory>

#include "ui/ajuste_texto.hpp"
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

QStringList PartesDelRotulo(const ButtonRecord& b) {
    QStringList partes;
    for (const QString& l : Q(b.TextoSuperior).replace(QStringLiteral("\r\n"), QStringLiteral("\n")).split('\n'))
        if (!l.trimmed().isEmpty()) partes << l.simplified();
    const QString texto = Q(b.Texto).simplified();
    if (!texto.isEmpty() && !(partes.size() == 1 && partes.front() == texto)) partes << texto;
    return partes;
}

namespace {

// The caption of a record's button fitted into `caja`: the last part wraps,
// the lines above it keep a line each.
TextoAjustado RotuloDelBoton(const ButtonRecord& r, const QFont& f, QSize caja, int maximo, int lineas) {
    constexpr int kMinimoLegible = 11;
    QStringList partes = PartesDelRotulo(r);
    if (partes.isEmpty()) return {QString(), maximo};
    const QString ultima = partes.takeLast();
    return AjustarTexto(ultima, f, caja, maximo, kMinimoLegible, std::max(1, lineas - static_cast<int>(partes.size())),
                        partes);
}

// The width the buttons would like: the widest word of their captions at a
// comfortable size, with the button's padding. Taken over every page so that
// the buttons and page turners stay put from page to page.
int AnchoDeseado(const ButtonMatrix& c, QFont f) {
    f.setPixelSize(15);
    const QFontMetrics m(f);
    int ancho = 0;
    for (const ButtonRecord& b : c.Botones())
        for (const QString& parte : PartesDelRotulo(b))
            for (const QString& palabra : parte.split(' ', Qt::SkipEmptyParts))
                ancho = std::max(ancho, m.horizontalAdvance(palabra));
    return ancho + 20;
}

}  // namespace

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
                // On a small display a panel may have less height for its rows
                // than a finger's size (the tariffs' one-row strip): the
                // buttons take the height there is rather than be cut off.
                const int altoFila = std::max(1, std::min(lado, (w->height() - filas * hueco) / filas));
                const std::size_t primero = static_cast<std::size_t>(c.Pagina()) * static_cast<std::size_t>(porPagina);
                const std::size_t ultimo = std::min(c.Botones().size(), primero + static_cast<std::size_t>(porPagina));
                // Buttons widen, never past the panel's room for the columns a
                // page uses, when their captions would not read whole.
                const int enUso = std::clamp(std::min(porPagina, static_cast<int>(c.Botones().size())), 1, columnas);
                const int sitio = w->width() - (c.Paginas() > 1 && w->height() - (hueco + filas * (lado + hueco)) < 48
                                                    ? 2 * kPasador
                                                    : 0);
                const int anchoMaximo = (sitio - hueco) / enUso - hueco;
                const int ancho = std::max(lado, std::min(anchoMaximo, AnchoDeseado(c, w->font())));
                // One size of letter for the whole page: the largest at which
                // every caption reads whole, the pictures kept small beside it.
                const auto conFoto = [](const ButtonRecord& r) {
                    return !r.Imagen.empty() && QFileInfo(Q(r.Imagen)).isFile();
                };
                const int icono = altoFila * 2 / 5;
                const auto caja = [&](const ButtonRecord& r) {
                    return QSize(ancho - 10, altoFila - 12 - (conFoto(r) ? icono : 0));
                };
                int letra = std::clamp(altoFila / 6, 13, 18);
                QFont base = w->font();
                base.setBold(true);
                for (std::size_t i = primero; i < ultimo; ++i) {
                    const ButtonRecord& r = c.Botones()[i];
                    letra = std::min(letra, RotuloDelBoton(r, base, caja(r), letra, conFoto(r) ? 3 : 4).px);
                }
                for (std::size_t i = primero; i < ultimo; ++i) {
                    const ButtonRecord& r = c.Botones()[i];
                    const int n = static_cast<int>(i - primero);
                    QToolButton* b = NuevoBoton(w, QString(), ColorBoton(c, r), letra);
                    b->setObjectName(QStringLiteral("boton%1").arg(i));
                    b->setGeometry(hueco + (n % columnas) * (ancho + hueco), hueco + (n / columnas) * (altoFila + hueco), ancho, altoFila);
                    QPixmap foto;
                    const bool verFoto = conFoto(r) && foto.load(Q(r.Imagen));
                    const TextoAjustado rotulo = RotuloDelBoton(r, base, caja(r), letra, conFoto(r) ? 3 : 4);
                    QFont f = b->font();
                    f.setPixelSize(rotulo.px);
                    b->setFont(f);
                    b->setText(rotulo.texto);
                    if (verFoto) {
                        b->setIcon(QIcon(foto));
                        b->setIconSize(QSize(icono, icono));
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
                    const int usadoAlto = hueco + filas * (altoFila + hueco), usadoAncho = hueco + enUso * (ancho + hueco);
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
