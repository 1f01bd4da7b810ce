#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFontMetrics>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QProgressBar>
#include <QRegularExpression>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTableWidget>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "ui/ajuste_texto.hpp"
#include "ui/anfitrion_qt.hpp"
#include "ui/panel_botones.hpp"
#include "ui/vista_pantalla.hpp"

// One widget per kind of control. Each reads its model on refresh and turns
// the user's doing into the model's own entry points, inside an action of
// the host so that a run-time error ends in a box and everything is redrawn.
namespace tpv::ui {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

QString Css(const QColor& c) { return c.isValid() ? c.name() : QStringLiteral("palette(base)"); }

// The smallest letter a text shrinks to before it is cut.
constexpr int kMinimoLegible = 11;

// A font whose size follows the control's height, the model's own size as a
// floor, and shrinks (down to a legible size) until the text fits the width.
QFont Fuente(const QWidget* w, const Control& c, const QString& texto, double proporcion, int minimo, int maximo,
             bool negrita = false) {
    QFont f = w->font();
    const int alto = w->height() > 0 ? w->height() : 24;
    int px = std::clamp(static_cast<int>(alto * proporcion), minimo, maximo);
    px = std::max(px, std::min(maximo, static_cast<int>(std::lround(c.fontSize * 4.0 / 3.0))));
    f.setBold(negrita);
    f.setPixelSize(px);
    if (!texto.isEmpty() && w->width() > 0) {
        while (px > kMinimoLegible && QFontMetrics(f).horizontalAdvance(texto) > w->width() - 12) f.setPixelSize(--px);
    }
    return f;
}

// The longest word of a text that wraps: the one that must fit a line.
QString PalabraMasLarga(const QString& texto, const QFont& f) {
    QString larga;
    const QFontMetrics m(f);
    for (const QString& p : texto.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts))
        if (m.horizontalAdvance(p) > m.horizontalAdvance(larga)) larga = p;
    return larga;
}

void FijarFuente(QWidget* w, const QFont& f) {
    if (w->font() != f) w->setFont(f);
}

// A button's caption: '&' is a plain character, not a mnemonic.
QString SinMnemonico(const std::string& s) { return Q(s).replace('&', QStringLiteral("&&")); }

QDate FechaQt(DateTime f) { return QDate(1899, 12, 30).addDays(static_cast<qint64>(std::floor(f.serial))); }
DateTime FechaModelo(const QDate& d) { return DateTime{static_cast<double>(QDate(1899, 12, 30).daysTo(d))}; }

WidgetDeControl Etiqueta(Label& c, QWidget* padre) {
    auto* w = new QLabel(padre);
    w->setTextFormat(Qt::PlainText);
    w->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return {w, [w, &c] {
                const QString texto = Q(c.caption);
                if (w->text() != texto) w->setText(texto);
                // A tall label wraps its words; none of them may be cut. A
                // low one too when its text doesn't fit one line even at the
                // smallest letter but two lines of it fit its height.
                const bool negrita = w->height() >= 36;
                QFont f;
                bool partir = w->height() > 48;
                if (partir) {
                    f = Fuente(w, c, PalabraMasLarga(texto, Fuente(w, c, QString(), 0.6, 14, 34, negrita)), 0.6, 14,
                               34, negrita);
                } else {
                    f = Fuente(w, c, texto, 0.6, 14, 34, negrita);
                    const QFontMetrics m(f);
                    partir = m.horizontalAdvance(texto) > w->width() - 12 && 2 * m.lineSpacing() <= w->height();
                }
                w->setWordWrap(partir);
                FijarFuente(w, f);
                const QColor fondo = ColorDeModelo(c.backColor);
                FijarEstilo(w, QStringLiteral("QLabel{background:%1;color:%2;padding:0 2px;}")
                                   .arg(Css(fondo), ColorDeModelo(c.foreColor).name()));
            }};
}

// An entry the user can't type in, with a font the design made large: a
// figure meant to be seen from the other side of the counter.
bool EsCifraDestacada(const TextBox& c) { return c.locked && c.fontSize >= 18; }

// An entry whose typing goes through the model: keys never reach the widget
// (the host routes them), and what the model writes is shown back.
WidgetDeControl Entrada(TextBox& c, QWidget* padre, VistaPantalla& vista) {
    auto* w = new QLineEdit(padre);
    w->setContextMenuPolicy(Qt::NoContextMenu);
    w->setFocusPolicy(Qt::ClickFocus);
    QObject::connect(w, &QLineEdit::textEdited, w, [w, &c, &vista](const QString& texto) {
        // Text that came without keys (a paste with the mouse).
        if (vista.Actualizando()) return;
        const std::string nuevo = texto.toStdString();
        vista.anfitrion().Ejecutar([&c, nuevo, w] {
            if (c.locked) return;
            c.selStart = w->cursorPosition();
            c.selLength = 0;
            c.SetText(nuevo);
        });
    });
    QObject::connect(w, &QLineEdit::selectionChanged, w, [w, &c, &vista] {
        if (vista.Actualizando() || !w->hasSelectedText()) return;
        c.selStart = w->selectionStart();
        c.selLength = static_cast<long>(w->selectedText().size());
    });
    QObject::connect(w, &QLineEdit::cursorPositionChanged, w, [w, &c, &vista](int, int nueva) {
        if (vista.Actualizando() || w->hasSelectedText()) return;
        c.selStart = nueva;
        c.selLength = 0;
    });
    return {w, [w, &c] {
                const QString texto = Q(c.Text());
                if (w->text() != texto) w->setText(texto);
                const int n = static_cast<int>(texto.size());
                const int inicio = std::clamp(static_cast<int>(c.selStart), 0, n);
                const int largo = std::clamp(static_cast<int>(c.selLength), 0, n - inicio);
                if (largo > 0) w->setSelection(inicio, largo);
                else if (w->cursorPosition() != inicio || w->hasSelectedText()) w->setCursorPosition(inicio);
                const QColor fondo = ColorDeModelo(c.backColor);
                if (EsCifraDestacada(c)) {
                    // A figure the screen shows big (a total): as big as its box
                    // allows, bold, at the right edge, readable from afar.
                    QFont f = w->font();
                    f.setBold(true);
                    f.setPixelSize(std::clamp(w->height() * 7 / 10, 14, 72));
                    FijarFuente(w, f);
                    if (w->alignment() != (Qt::AlignRight | Qt::AlignVCenter)) w->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
                    FijarEstilo(w, QStringLiteral("QLineEdit{background:%1;color:%2;border:2px solid #4a4a4a;"
                                                  "border-radius:6px;padding:0 10px;}")
                                       .arg(Css(fondo), ColorDeModelo(c.foreColor).name()));
                    return;
                }
                FijarFuente(w, Fuente(w, c, texto, 0.55, 14, 30, w->height() >= 44));
                FijarEstilo(w, QStringLiteral("QLineEdit{background:%1;color:%2;border:1px solid #8c8c8c;"
                                              "border-radius:4px;padding:0 6px;}"
                                              "QLineEdit:focus{border:2px solid #2f6fd0;}")
                                   .arg(Css(fondo), ColorDeModelo(c.foreColor).name()));
            }};
}

WidgetDeControl Boton(CommandButton& c, QWidget* padre, VistaPantalla& vista) {
    auto* w = new QPushButton(padre);
    w->setAutoDefault(false);
    w->setFocusPolicy(Qt::ClickFocus);
    QObject::connect(w, &QPushButton::clicked, w, [&c, &vista] { vista.anfitrion().Ejecutar([&c] { c.Clic(); }); });
    return {w, [w, &c] {
                // A caption too long for one line at a legible size takes two
                // (three when the button is tall enough for them), then a
                // smaller size, before anything is cut.
                const QFont base = Fuente(w, c, QString(), 0.32, 14, 20, true);
                const TextoAjustado ajuste =
                    AjustarTexto(Q(c.caption), base, QSize(w->width() - 12, w->height() - 4), base.pixelSize(), 11, 3);
                QFont f = base;
                f.setPixelSize(ajuste.px);
                FijarFuente(w, f);
                QString texto = ajuste.texto;
                texto.replace('&', QStringLiteral("&&"));
                if (w->text() != texto) w->setText(texto);
                QColor fondo = ColorDeModelo(c.backColor);
                if (!fondo.isValid()) fondo = QColor(0xd4, 0xd0, 0xc8);
                FijarEstilo(w, QStringLiteral("QPushButton{background:qlineargradient(x1:0,y1:0,x2:0,y2:1,stop:0 %1,"
                                              "stop:1 %2);color:%3;border:1px solid %4;border-radius:8px;padding:2px 6px;}"
                                              "QPushButton:pressed{background:%4;}"
                                              "QPushButton:disabled{color:#8c8c8c;}")
                                   .arg(fondo.lighter(112).name(), fondo.name(), ColorDeModelo(c.foreColor).name(),
                                        fondo.darker(135).name()));
            }};
}

// A frame with a caption. The strip of the title, above the border, is the
// frame's too: what lies under the frame doesn't show through it.
class MarcoConTitulo : public QGroupBox {
public:
    using QGroupBox::QGroupBox;
    QColor fondo;

protected:
    void paintEvent(QPaintEvent* evento) override {
        {
            QPainter p(this);
            p.fillRect(rect(), fondo.isValid() ? QBrush(fondo) : palette().base());
        }
        QGroupBox::paintEvent(evento);
    }
};

WidgetDeControl Marco(Frame& c, QWidget* padre) {
    if (c.caption.empty()) {
        auto* w = new QFrame(padre);
        return {w, [w, &c] {
                    FijarEstilo(w, QStringLiteral("QFrame#%1{background:%2;}").arg(Q(c.nombre), Css(ColorDeModelo(c.backColor))));
                }};
    }
    auto* w = new MarcoConTitulo(padre);
    return {w, [w, &c] {
                w->fondo = ColorDeModelo(c.backColor);
                if (w->title() != Q(c.caption)) w->setTitle(Q(c.caption));
                FijarEstilo(w, QStringLiteral("QGroupBox#%1{background:%2;color:%3;font-weight:bold;font-size:15px;"
                                              "border:1px solid #9a9a9a;border-radius:6px;margin-top:12px;}"
                                              "QGroupBox#%1::title{subcontrol-origin:margin;left:8px;padding:0 4px;}")
                                   .arg(Q(c.nombre), Css(ColorDeModelo(c.backColor)), ColorDeModelo(c.foreColor).name()));
            }};
}

template <class Casilla, class Modelo>
WidgetDeControl Casillas(Modelo& c, QWidget* padre, VistaPantalla& vista) {
    auto* w = new Casilla(padre);
    w->setFocusPolicy(Qt::ClickFocus);
    if constexpr (std::is_same_v<Casilla, QRadioButton>) w->setAutoExclusive(false);
    QObject::connect(w, &QAbstractButton::clicked, w, [&c, &vista] { vista.anfitrion().Ejecutar([&c] { c.Clic(); }); });
    return {w, [w, &c] {
                if (w->text() != SinMnemonico(c.caption)) w->setText(SinMnemonico(c.caption));
                if constexpr (std::is_same_v<Casilla, QCheckBox>) {
                    w->setTristate(c.Value() == 2);
                    const Qt::CheckState estado =
                        c.Value() == 1 ? Qt::Checked : (c.Value() == 2 ? Qt::PartiallyChecked : Qt::Unchecked);
                    if (w->checkState() != estado) w->setCheckState(estado);
                } else {
                    if (w->isChecked() != c.Value()) w->setChecked(c.Value());
                }
                FijarFuente(w, Fuente(w, c, QString(), 0.5, 14, 24));
                const QString indicador = std::is_same_v<Casilla, QCheckBox> ? QStringLiteral("QCheckBox")
                                                                             : QStringLiteral("QRadioButton");
                FijarEstilo(w, QStringLiteral("%1{background:%2;color:%3;spacing:8px;}%1::indicator{width:26px;height:26px;}")
                                   .arg(indicador, Css(ColorDeModelo(c.backColor)), ColorDeModelo(c.foreColor).name()));
            }};
}

WidgetDeControl Rejilla(Grid& c, QWidget* padre, VistaPantalla& vista) {
    auto* w = new QTableWidget(padre);
    w->horizontalHeader()->hide();
    w->verticalHeader()->hide();
    w->setEditTriggers(QAbstractItemView::NoEditTriggers);
    w->setSelectionMode(QAbstractItemView::SingleSelection);
    w->setSelectionBehavior(QAbstractItemView::SelectRows);
    w->setFocusPolicy(Qt::ClickFocus);
    w->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    w->setWordWrap(false);
    QObject::connect(w, &QTableWidget::cellClicked, w, [&c, &vista](int fila, int columna) {
        vista.anfitrion().Ejecutar([&c, fila, columna] { c.ClicEnCelda(fila, columna, false); });
    });
    QObject::connect(w, &QTableWidget::cellDoubleClicked, w, [&c, &vista](int fila, int columna) {
        // The first click of the two has raised Click already.
        vista.anfitrion().Ejecutar([&c, fila, columna] {
            c.SetRow(fila);
            c.SetCol(columna);
            if (c.DblClick) c.DblClick();
        });
    });
    return {w, [w, &c, &vista] {
                const int filas = static_cast<int>(c.Rows()), cols = static_cast<int>(c.Cols());
                if (w->rowCount() != filas) w->setRowCount(filas);
                if (w->columnCount() != cols) w->setColumnCount(cols);
                const int altoFila = std::max(30, static_cast<int>(std::lround(28 * vista.PixelesPorTwipY() * 15)));
                QFont letra = w->font();
                letra.setPixelSize(std::max(15, altoFila / 2));
                FijarFuente(w, letra);
                QFont cabecera = letra;
                cabecera.setBold(true);
                const QColor fondo = ColorDeModelo(c.backColor);
                const QColor fondoFijo(0xd9, 0xdd, 0xe4);
                for (int col = 0; col < cols; ++col) {
                    const int ancho = static_cast<int>(std::lround(c.ColWidth(col) * vista.PixelesPorTwipX()));
                    w->setColumnHidden(col, ancho <= 0);
                    if (ancho > 0 && w->columnWidth(col) != ancho) w->setColumnWidth(col, ancho);
                }
                for (int f = 0; f < filas; ++f) {
                    if (w->rowHeight(f) != altoFila) w->setRowHeight(f, altoFila);
                    const bool fija = f < c.FixedRows();
                    for (int col = 0; col < cols; ++col) {
                        QTableWidgetItem* item = w->item(f, col);
                        if (!item) {
                            item = new QTableWidgetItem;
                            w->setItem(f, col, item);
                        }
                        const QString texto = Q(c.TextMatrix(f, col));
                        if (item->text() != texto) item->setText(texto);
                        const Alineacion a = c.ColAlignment(col);
                        const Qt::Alignment al = (fija || a == Alineacion::Centro) ? Qt::AlignCenter
                                                 : a == Alineacion::Derecha ? (Qt::AlignRight | Qt::AlignVCenter)
                                                                            : (Qt::AlignLeft | Qt::AlignVCenter);
                        if (item->textAlignment() != static_cast<int>(al)) item->setTextAlignment(al);
                        const long propio = c.CellBackColor(f, col);
                        const QColor color = fija ? fondoFijo : (propio != 0 ? ColorDeModelo(propio) : QColor());
                        if (item->background().color() != color || (color.isValid() != (item->background().style() != Qt::NoBrush)))
                            item->setBackground(color.isValid() ? QBrush(color) : QBrush());
                        // A heading narrower than its column's caption gets a
                        // smaller letter, down to a legible size, before Qt cuts it.
                        QFont propia = fija ? cabecera : letra;
                        if (fija) {
                            const int ancho = w->columnWidth(col) - 8;
                            while (propia.pixelSize() > 11 && QFontMetrics(propia).horizontalAdvance(texto) > ancho)
                                propia.setPixelSize(propia.pixelSize() - 1);
                        }
                        if (item->font() != propia) item->setFont(propia);
                        item->setFlags(fija ? Qt::ItemIsEnabled : (Qt::ItemIsEnabled | Qt::ItemIsSelectable));
                    }
                }
                if (c.Row() >= c.FixedRows() && (w->currentRow() != c.Row() || w->currentColumn() != c.Col()))
                    w->setCurrentCell(static_cast<int>(c.Row()), static_cast<int>(c.Col()));
                if (c.TopRow() < filas) {
                    const int primera = static_cast<int>(c.TopRow());
                    if (w->rowAt(0) != primera && w->item(primera, 0))
                        w->scrollToItem(w->item(primera, 0), QAbstractItemView::PositionAtTop);
                }
                FijarEstilo(w, QStringLiteral("QTableWidget{background:%1;color:%2;gridline-color:#c8c8c8;"
                                              "border:1px solid #8c8c8c;selection-background-color:#cfe0fa;"
                                              "selection-color:black;}"
                                              "QScrollBar:vertical{width:36px;}")
                                   .arg(Css(fondo), ColorDeModelo(c.foreColor).name()));
            }};
}

WidgetDeControl Lista(ListBox& c, QWidget* padre, VistaPantalla& vista) {
    auto* w = new QListWidget(padre);
    w->setFocusPolicy(Qt::ClickFocus);
    QObject::connect(w, &QListWidget::itemClicked, w, [w, &c, &vista](QListWidgetItem* item) {
        const int fila = w->row(item);
        vista.anfitrion().Ejecutar([&c, fila] { c.SetListIndex(fila); });
    });
    return {w, [w, &c] {
                QStringList textos;
                for (long i = 0; i < c.ListCount(); ++i) textos << Q(c.List(i));
                QStringList actuales;
                for (int i = 0; i < w->count(); ++i) actuales << w->item(i)->text();
                if (actuales != textos) {
                    w->clear();
                    w->addItems(textos);
                }
                if (w->currentRow() != c.ListIndex()) w->setCurrentRow(static_cast<int>(c.ListIndex()));
                FijarFuente(w, Fuente(w, c, QString(), 0, 17, 17));
                FijarEstilo(w, QStringLiteral("QListWidget{background:%1;color:%2;}QListWidget::item{min-height:40px;}")
                                   .arg(Css(ColorDeModelo(c.backColor)), ColorDeModelo(c.foreColor).name()));
            }};
}

// The model's combo takes typed text as well as a choice from its list, so
// the widget is an editable one. Its keys go through the model like an
// entry's (each character a Change); what the model holds is shown back,
// with the caret at the end where the model writes.
WidgetDeControl Combo(ComboBox& c, QWidget* padre, VistaPantalla& vista) {
    auto* w = new QComboBox(padre);
    w->setFocusPolicy(Qt::ClickFocus);
    w->setEditable(true);
    w->setInsertPolicy(QComboBox::NoInsert);
    w->setCompleter(nullptr);
    w->lineEdit()->setContextMenuPolicy(Qt::NoContextMenu);
    QObject::connect(w, &QComboBox::activated, w, [&c, &vista](int indice) {
        if (vista.Actualizando()) return;
        vista.anfitrion().Ejecutar([&c, indice] { c.SetListIndex(indice); });
    });
    QObject::connect(w->lineEdit(), &QLineEdit::textEdited, w, [&c, &vista](const QString& texto) {
        // Text that came without keys (a paste with the mouse).
        if (vista.Actualizando()) return;
        const std::string nuevo = texto.toStdString();
        vista.anfitrion().Ejecutar([&c, nuevo] {
            if (nuevo != c.Text()) c.SetText(nuevo);
        });
    });
    return {w, [w, &c] {
                QStringList textos;
                for (long i = 0; i < c.ListCount(); ++i) textos << Q(c.List(i));
                QStringList actuales;
                for (int i = 0; i < w->count(); ++i) actuales << w->itemText(i);
                if (actuales != textos) {
                    w->clear();
                    w->addItems(textos);
                }
                // Choosing an item writes its text in the entry: the index
                // first, then the model's text, which may be of no item.
                const int indice = static_cast<int>(c.ListIndex());
                if (w->currentIndex() != indice) w->setCurrentIndex(indice);
                const QString texto = Q(c.Text());
                QLineEdit* entrada = w->lineEdit();
                if (entrada->text() != texto) {
                    entrada->setText(texto);
                    entrada->setCursorPosition(static_cast<int>(texto.size()));
                }
                FijarFuente(w, Fuente(w, c, QString(), 0.5, 15, 24));
                // A wide arrow, for a finger, in the look of the entries.
                FijarEstilo(w, QStringLiteral("QComboBox{background:%1;color:%2;border:1px solid #8c8c8c;"
                                              "border-radius:4px;padding:0 6px;}"
                                              "QComboBox:focus{border:2px solid #2f6fd0;}"
                                              "QComboBox::drop-down{width:44px;border-left:1px solid #8c8c8c;}"
                                              "QComboBox::down-arrow{image:url(:/qt-project.org/styles/commonstyle/"
                                              "images/down-16.png);width:16px;height:16px;}"
                                              "QComboBox QAbstractItemView::item{min-height:40px;}")
                                   .arg(Css(ColorDeModelo(c.backColor)), ColorDeModelo(c.foreColor).name()));
            }};
}

// Pictures named "tpv:NAME" are drawn by the window itself, so the till needs
// no picture files for its own icons.
QPixmap IconoDibujado(const QString& nombre, const QSize& tamano) {
    const int lado = std::min(tamano.width(), tamano.height());
    if (nombre != QStringLiteral("lupa") || lado < 8) return {};
    QPixmap p(lado, lado);
    p.fill(Qt::transparent);
    QPainter pintor(&p);
    pintor.setRenderHint(QPainter::Antialiasing);
    // A magnifying glass: a ring with a light lens and a thick handle to the lower right.
    const double r = lado * 0.27, cx = lado * 0.42, cy = lado * 0.42, grosor = std::max(2.0, lado * 0.08);
    pintor.setPen(QPen(QColor(0x3a, 0x3a, 0x3a), grosor * 1.6, Qt::SolidLine, Qt::RoundCap));
    const double d = r / std::sqrt(2.0);
    pintor.drawLine(QPointF(cx + d, cy + d), QPointF(lado * 0.86, lado * 0.86));
    pintor.setPen(QPen(QColor(0x3a, 0x3a, 0x3a), grosor));
    pintor.setBrush(QColor(0xd8, 0xea, 0xfa));
    pintor.drawEllipse(QPointF(cx, cy), r, r);
    return p;
}

WidgetDeControl Imagen(PictureBox& c, QWidget* padre) {
    auto* w = new QLabel(padre);
    w->setAlignment(Qt::AlignCenter);
    return {w, [w, &c] {
                const QString ruta = Q(c.picture);
                const QString clave = ruta + QStringLiteral("|%1x%2").arg(w->width()).arg(w->height());
                if (w->property("tpvImagen").toString() == clave) return;
                w->setProperty("tpvImagen", clave);
                // A missing or unreadable picture leaves the box empty.
                QPixmap p;
                if (ruta.startsWith(QStringLiteral("tpv:")))
                    p = IconoDibujado(ruta.mid(4), w->size());
                else if (!ruta.isEmpty())
                    p.load(ruta);
                if (!p.isNull())
                    w->setPixmap(p.scaled(w->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
                else
                    w->clear();
                FijarEstilo(w, QStringLiteral("QLabel{background:%1;}").arg(Css(ColorDeModelo(c.backColor))));
            }};
}

WidgetDeControl Fecha(DTPicker& c, QWidget* padre, VistaPantalla& vista) {
    auto* w = new QDateEdit(padre);
    w->setCalendarPopup(true);
    w->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    w->setFocusPolicy(Qt::ClickFocus);
    QObject::connect(w, &QDateEdit::dateChanged, w, [&c, &vista](const QDate& d) {
        if (vista.Actualizando()) return;
        vista.anfitrion().Ejecutar([&c, d] { c.SetValue(FechaModelo(d)); });
    });
    return {w, [w, &c] {
                const QDate d = FechaQt(c.Value());
                if (w->date() != d) w->setDate(d);
                FijarFuente(w, Fuente(w, c, QString(), 0.5, 14, 24));
            }};
}

WidgetDeControl Deslizador(Slider& c, QWidget* padre, VistaPantalla& vista) {
    auto* w = new QSlider(Qt::Horizontal, padre);
    w->setFocusPolicy(Qt::ClickFocus);
    QObject::connect(w, &QSlider::valueChanged, w, [&c, &vista](int valor) {
        if (vista.Actualizando()) return;
        vista.anfitrion().Ejecutar([&c, valor] { c.SetValue(valor); });
    });
    return {w, [w, &c] {
                if (w->minimum() != c.min || w->maximum() != c.max) w->setRange(static_cast<int>(c.min), static_cast<int>(c.max));
                if (w->value() != c.Value()) w->setValue(static_cast<int>(c.Value()));
                FijarEstilo(w, QStringLiteral("QSlider::handle:horizontal{width:40px;margin:-14px 0;background:#2f6fd0;"
                                              "border-radius:6px;}QSlider::groove:horizontal{height:10px;background:#bbb;}"));
            }};
}

WidgetDeControl Barra(ProgressBar& c, QWidget* padre) {
    auto* w = new QProgressBar(padre);
    w->setRange(0, 1000);
    w->setTextVisible(false);
    return {w, [w, &c] {
                const double rango = c.max - c.min;
                const int valor = rango > 0 ? static_cast<int>(std::lround((c.Value() - c.min) / rango * 1000)) : 0;
                if (w->value() != valor) w->setValue(valor);
                QColor color = ColorDeModelo(c.foreColor);
                if (!color.isValid() || color == QColor(Qt::black)) color = QColor(0x2f, 0x6f, 0xd0);
                FijarEstilo(w, QStringLiteral("QProgressBar{border:1px solid #8c8c8c;border-radius:4px;background:white;}"
                                              "QProgressBar::chunk{background:%1;}")
                                   .arg(color.name()));
            }};
}

// The help page, with a button that closes it.
WidgetDeControl Pagina(PageOpener& c, QWidget* padre, VistaPantalla& vista) {
    auto* w = new QWidget(padre);
    auto* caja = new QVBoxLayout(w);
    caja->setContentsMargins(0, 0, 0, 0);
    auto* navegador = new QTextBrowser(w);
    auto* cerrar = new QPushButton(QStringLiteral("Cerrar"), w);
    cerrar->setMinimumHeight(48);
    caja->addWidget(navegador);
    caja->addWidget(cerrar);
    QObject::connect(cerrar, &QPushButton::clicked, w, [&c, &vista] { vista.anfitrion().Ejecutar([&c] { c.Cerrar(); }); });
    return {w, [navegador, cerrar, &c] {
                const bool abierta = !c.pagina.empty();
                navegador->setVisible(abierta);
                cerrar->setVisible(abierta);
                const QUrl url = QUrl::fromLocalFile(Q(c.pagina));
                if (abierta && navegador->source() != url) navegador->setSource(url);
            }};
}

WidgetDeControl Generico(Control& c, QWidget* padre) {
    auto* w = new QLabel(padre);
    w->setTextFormat(Qt::PlainText);
    return {w, [w, &c] {
                if (w->text() != Q(c.caption)) w->setText(Q(c.caption));
            }};
}

}  // namespace

WidgetDeControl CrearWidget(Control& c, QWidget* padre, VistaPantalla& vista) {
    if (dynamic_cast<Timer*>(&c)) return {};
    if (auto* x = dynamic_cast<TextBox*>(&c)) return Entrada(*x, padre, vista);
    if (auto* x = dynamic_cast<Label*>(&c)) return Etiqueta(*x, padre);
    if (auto* x = dynamic_cast<CommandButton*>(&c)) return Boton(*x, padre, vista);
    if (auto* x = dynamic_cast<Frame*>(&c)) return Marco(*x, padre);
    if (auto* x = dynamic_cast<CheckBox*>(&c)) return Casillas<QCheckBox>(*x, padre, vista);
    if (auto* x = dynamic_cast<OptionButton*>(&c)) return Casillas<QRadioButton>(*x, padre, vista);
    if (auto* x = dynamic_cast<Grid*>(&c)) return Rejilla(*x, padre, vista);
    if (auto* x = dynamic_cast<ComboBox*>(&c)) return Combo(*x, padre, vista);
    if (auto* x = dynamic_cast<ListBox*>(&c)) return Lista(*x, padre, vista);
    if (auto* x = dynamic_cast<PictureBox*>(&c)) return Imagen(*x, padre);
    if (auto* x = dynamic_cast<DTPicker*>(&c)) return Fecha(*x, padre, vista);
    if (auto* x = dynamic_cast<Slider*>(&c)) return Deslizador(*x, padre, vista);
    if (auto* x = dynamic_cast<ProgressBar*>(&c)) return Barra(*x, padre);
    if (auto* x = dynamic_cast<PageOpener*>(&c)) return Pagina(*x, padre, vista);
    if (auto* x = dynamic_cast<ButtonMatrix*>(&c)) return PanelBotones(*x, padre, vista);
    return Generico(c, padre);
}

}  // namespace tpv::ui
