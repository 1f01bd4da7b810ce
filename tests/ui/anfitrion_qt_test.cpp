#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <algorithm>

#include "core/runtime/error.hpp"
#include "core/runtime/reloj.hpp"
#include "tests/ui/ventana_prueba.hpp"
#include "ui/teclas.hpp"

namespace tpv {
namespace {

using prueba::VentanaTest;

// A small screen with one control of each kind the tests drive; every event
// is written down.
class Mostrador : public Ventana {
public:
    Label lbl;
    TextBox txt, txt2;
    CommandButton cmdCerrar, cmdFallar;
    CheckBox chk;
    Grid rejilla;
    ButtonMatrix panel;
    Timer tmr;
    std::vector<std::string> eventos;
    std::vector<std::string> leidos;  // what txt held at each Enter
    int ticks = 0;
    int ticksParaCerrar = 0;

protected:
    void Disenar() override {
        nombre = "frmMostrador";
        caption = "Mostrador";
        width = 12000;
        height = 9000;
        Poner(lbl, "lbl", 240, 240, 4000, 360, "Hola");
        Poner(txt, "txt", 240, 720, 3000, 480);
        txt.tabIndex = 0;
        Poner(txt2, "txt2", 3480, 720, 3000, 480);
        txt2.tabIndex = 1;
        Poner(chk, "chk", 6720, 720, 2400, 480, "Regalo");
        chk.tabIndex = 2;
        Poner(rejilla, "rejilla", 240, 1440, 6000, 2400);
        rejilla.tabIndex = 3;
        Poner(panel, "panel", 6480, 1440, 5280, 6240);
        panel.tabIndex = 4;
        panel.TamanoBoton = 1200;
        panel.Separacion = 120;
        Poner(cmdCerrar, "cmdCerrar", 240, 8040, 2000, 720, "Cerrar");
        cmdCerrar.tabIndex = 5;
        Poner(cmdFallar, "cmdFallar", 2400, 8040, 2000, 720, "Fallar");
        cmdFallar.tabIndex = 6;
        Poner(tmr, "tmr", 0, 0, 0, 0);
        tmr.enabled = false;

        auto anota = [this](std::string e) { return [this, e] { eventos.push_back(e); }; };
        txt.GotFocus = anota("txt.GotFocus");
        txt.LostFocus = anota("txt.LostFocus");
        txt2.GotFocus = anota("txt2.GotFocus");
        txt.Change = [this] { eventos.push_back("txt.Change " + txt.Text()); };
        txt.KeyDown = [this](int& k, int) {
            eventos.push_back("txt.KeyDown " + std::to_string(k));
            if (k == vbKeyReturn) {
                // As a sale would: take the code, empty the entry, move on.
                leidos.push_back(txt.Text());
                txt.SetText("");
                txt2.SetFocus();
            }
        };
        txt.KeyPress = [this](int& k) { eventos.push_back("txt.KeyPress " + std::to_string(k)); };
        txt2.KeyDown = [this](int& k, int) {
            if (k != vbKeyReturn) return;
            leidos.push_back("txt2:" + txt2.Text());
            txt2.SetText("");
        };
        cmdCerrar.Click = [this] { Unload(); };
        cmdFallar.Click = [] { throw RuntimeError(13, "No coinciden los tipos"); };
        panel.Pulsado = [this] { eventos.push_back("Pulsado " + panel.CodigoPulsado); };
        tmr.Tick = [this] {
            ++ticks;
            if (ticks == ticksParaCerrar) Unload();
        };
    }
};

std::vector<std::string> Textos(const QList<QToolButton*>& botones) {
    std::vector<std::string> t;
    for (QToolButton* b : botones)
        if (b->isVisible() && b->objectName().startsWith("boton")) t.push_back(b->text().replace('\n', ' ').toStdString());
    return t;
}

TEST(Teclas, SeTraducenALosCodigosDeLaPlataforma) {
    struct Caso {
        int tecla;
        Qt::KeyboardModifiers mod;
        QString texto;
        int keyCode, keyAscii;
    } casos[] = {
        {Qt::Key_A, Qt::NoModifier, "a", 65, 97},
        {Qt::Key_A, Qt::ShiftModifier, "A", 65, 65},
        {Qt::Key_5, Qt::NoModifier, "5", 53, 53},
        {Qt::Key_5, Qt::KeypadModifier, "5", 101, 53},
        {Qt::Key_Period, Qt::KeypadModifier, ",", 110, 44},
        {Qt::Key_F9, Qt::NoModifier, "", 120, 0},
        {Qt::Key_Return, Qt::NoModifier, "\r", 13, 13},
        {Qt::Key_Enter, Qt::KeypadModifier, "\r", 13, 13},
        {Qt::Key_Escape, Qt::NoModifier, "\x1b", 27, 27},
        {Qt::Key_Backspace, Qt::NoModifier, "\b", 8, 8},
        {Qt::Key_Left, Qt::NoModifier, "", 37, 0},
        {Qt::Key_Delete, Qt::NoModifier, "", 46, 0},
        {Qt::Key_Ntilde, Qt::NoModifier, QString::fromUtf8("ñ"), 255, 241},
        {Qt::Key_Comma, Qt::NoModifier, ",", 188, 44},
        {0x20ac, Qt::NoModifier, QString::fromUtf8("€"), 255, 128},
        {Qt::Key_Shift, Qt::ShiftModifier, "", 16, 0},
    };
    for (const Caso& c : casos) {
        const ui::TeclaVB t = ui::TraducirTecla(c.tecla, c.mod, c.texto);
        EXPECT_EQ(t.keyCode, c.keyCode) << c.texto.toStdString() << " " << c.tecla;
        EXPECT_EQ(t.keyAscii, c.keyAscii) << c.texto.toStdString() << " " << c.tecla;
    }
}

TEST_F(VentanaTest, CajasDeMensajeConBotonesEnEspanolYSuIcono) {
    struct Caso {
        int estilo;
        QStringList botones;
        QMessageBox::Icon icono;
        QString pulsar;
        int respuesta;
    } casos[] = {
        {vbYesNo + vbQuestion, {"Sí", "No"}, QMessageBox::Question, "No", vbNo},
        {vbYesNo + vbQuestion + vbDefaultButton2, {"Sí", "No"}, QMessageBox::Question, "Sí", vbYes},
        {vbOKCancel + vbCritical, {"Aceptar", "Cancelar"}, QMessageBox::Critical, "Aceptar", vbOK},
        {vbOKOnly + vbInformation, {"Aceptar"}, QMessageBox::Information, "Aceptar", vbOK},
        {vbYesNoCancel + vbExclamation, {"Sí", "No", "Cancelar"}, QMessageBox::Warning, "Cancelar", vbCancel},
        {vbAbortRetryIgnore, {"Anular", "Reintentar", "Omitir"}, QMessageBox::NoIcon, "Omitir", vbIgnore},
    };
    for (const Caso& c : casos) {
        cajas.clear();
        Responder({c.pulsar});
        EXPECT_EQ(MsgBox("¿Cobrar la venta?", c.estilo), c.respuesta) << c.estilo;
        ASSERT_EQ(cajas.size(), 1u);
        QStringList vistos = cajas[0].botones, esperados = c.botones;
        vistos.sort();
        esperados.sort();
        EXPECT_EQ(vistos, esperados) << c.estilo;
        EXPECT_EQ(cajas[0].icono, c.icono) << c.estilo;
        EXPECT_EQ(cajas[0].titulo, "TPV");
        EXPECT_EQ(cajas[0].texto, "¿Cobrar la venta?");
    }
    // The default button answers Enter.
    QTimer::singleShot(50, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    EXPECT_EQ(MsgBox("Borrar", vbYesNo + vbDefaultButton2, "Aviso"), vbNo);
}

TEST_F(VentanaTest, ModeloYVentanaVanAlPasoEnLosDosSentidos) {
    Mostrador m;
    m.Show();
    ui::VistaPantalla& vista = Vista("frmMostrador");
    EXPECT_TRUE(vista.isVisible());
    EXPECT_EQ(vista.windowTitle(), "Mostrador");
    auto* lbl = Widget<QLabel>("frmMostrador", "lbl");
    auto* txt2 = Widget<QLineEdit>("frmMostrador", "txt2");
    auto* cerrar = Widget<QPushButton>("frmMostrador", "cmdCerrar");
    auto* rejilla = Widget<QTableWidget>("frmMostrador", "rejilla");
    ASSERT_TRUE(lbl && txt2 && cerrar && rejilla);
    EXPECT_EQ(lbl->text(), "Hola");
    // Twips to pixels at 15 a pixel: the design and the display are one size.
    EXPECT_EQ(cerrar->geometry(), QRect(16, 536, 133, 48));

    PanelRegistros registros;
    for (int i = 0; i < 30; ++i) registros.push_back({"", "255", "/no/existe.png", "Colonia " + std::to_string(i), "", std::to_string(100 + i)});
    anfitrion->Ejecutar([&] {
        m.lbl.caption = "Adiós";
        m.txt2.SetText("7 uds.");
        m.cmdCerrar.enabled = false;
        m.chk.SetValue(1);
        m.rejilla.SetRows(3);
        m.rejilla.SetCols(3);
        m.rejilla.SetTextMatrix(0, 1, "Artículo");
        m.rejilla.SetTextMatrix(2, 1, "Jabón de rosa");
        m.panel.Recibo_Datos_De_Matriz(registros);
        m.panel.Cargar_Contenido_Boton();
    });
    EXPECT_EQ(lbl->text(), "Adiós");
    EXPECT_EQ(txt2->text(), "7 uds.");
    EXPECT_FALSE(cerrar->isEnabled());
    EXPECT_TRUE(Widget<QCheckBox>("frmMostrador", "chk")->isChecked());
    ASSERT_EQ(rejilla->rowCount(), 3);
    EXPECT_EQ(rejilla->item(2, 1)->text(), "Jabón de rosa");
    EXPECT_EQ(rejilla->item(0, 1)->text(), "Artículo");

    // The panel pages: 4 x 4 buttons of 1200 twips fit; a missing picture
    // leaves the caption alone.
    QWidget* panel = vista.WidgetDe("panel");
    const int porPagina = m.panel.BotonesPorPagina();
    ASSERT_LT(porPagina, 30);
    std::vector<std::string> pagina = Textos(panel->findChildren<QToolButton*>());
    ASSERT_EQ(pagina.size(), static_cast<std::size_t>(porPagina));
    EXPECT_EQ(pagina[0], "Colonia 0");
    auto* siguiente = panel->findChild<QToolButton*>("paginaSiguiente");
    ASSERT_TRUE(siguiente);
    QTest::mouseClick(siguiente, Qt::LeftButton);
    EXPECT_EQ(m.panel.Pagina(), 1);
    pagina = Textos(panel->findChildren<QToolButton*>());
    EXPECT_EQ(pagina[0], "Colonia " + std::to_string(porPagina));
    auto* boton = panel->findChild<QToolButton*>("boton" + QString::number(porPagina + 1));
    ASSERT_TRUE(boton);
    EXPECT_GE(boton->height(), 48);
    QTest::mouseClick(boton, Qt::LeftButton);
    EXPECT_EQ(m.eventos.back(), "Pulsado " + std::to_string(101 + porPagina));

    // A smaller window scales every control; a button keeps 48 pixels.
    vista.resize(400, 300);
    EXPECT_EQ(cerrar->geometry().bottom(), 299);  // grown upwards, where there is room, not out of the window
    EXPECT_EQ(cerrar->geometry().height(), 48);
    EXPECT_EQ(rejilla->geometry(), QRect(8, 48, 200, 80));

    // A hidden control hides its widget; clicking the box goes to the model.
    anfitrion->Ejecutar([&] { m.txt2.visible = false; });
    EXPECT_FALSE(txt2->isVisible());
    QTest::mouseClick(Widget<QCheckBox>("frmMostrador", "chk"), Qt::LeftButton);
    EXPECT_EQ(m.chk.Value(), 0);
}

TEST_F(VentanaTest, TeclasYClicsSonLosEventosDelModeloEnSuOrden) {
    Mostrador m;
    m.Show();
    auto* txt = Widget<QLineEdit>("frmMostrador", "txt");
    ASSERT_TRUE(txt);
    EXPECT_EQ(m.ActiveControl(), &m.txt);
    m.eventos.clear();
    QTest::keyClicks(txt, "ab");
    EXPECT_EQ(m.eventos, (std::vector<std::string>{"txt.KeyDown 65", "txt.KeyPress 97", "txt.Change a", "txt.KeyDown 66",
                                                   "txt.KeyPress 98", "txt.Change ab"}));
    EXPECT_EQ(txt->text(), "ab");
    EXPECT_EQ(txt->cursorPosition(), 2);
    QTest::keyClick(txt, Qt::Key_Backspace);
    EXPECT_EQ(m.txt.Text(), "a");
    EXPECT_EQ(txt->text(), "a");

    // A press on another entry moves the model's focus first.
    m.eventos.clear();
    QTest::mouseClick(Widget<QLineEdit>("frmMostrador", "txt2"), Qt::LeftButton);
    EXPECT_EQ(m.eventos, (std::vector<std::string>{"txt.LostFocus", "txt2.GotFocus"}));
    EXPECT_EQ(m.ActiveControl(), &m.txt2);
    // Keys go to the model's focus, wherever Qt's is.
    QTest::keyClicks(txt, "9");
    EXPECT_EQ(m.txt2.Text(), "9");
    EXPECT_EQ(m.txt.Text(), "a");

    // A run-time error of a click ends in a box, and the screen goes on.
    Responder({"Aceptar"});
    QTest::mouseClick(Widget<QPushButton>("frmMostrador", "cmdFallar"), Qt::LeftButton);
    ASSERT_EQ(cajas.size(), 1u);
    EXPECT_EQ(cajas[0].texto, "Se ha producido el error 13:\nNo coinciden los tipos");
    EXPECT_EQ(cajas[0].icono, QMessageBox::Critical);
    QTest::mouseClick(Widget<QPushButton>("frmMostrador", "cmdCerrar"), Qt::LeftButton);
    EXPECT_FALSE(m.Cargada());
    EXPECT_EQ(anfitrion->Vista("frmMostrador"), nullptr);

    // Closing the window unloads the screen.
    m.Show();
    Vista("frmMostrador").close();
    EXPECT_FALSE(m.Cargada());
}

TEST_F(VentanaTest, PantallaModalEsperaHastaQueSeDescarga) {
    // Closed by a click of the user.
    Mostrador m;
    QTimer::singleShot(100, [this] {
        if (auto* b = Widget<QPushButton>("frmMostrador", "cmdCerrar")) QTest::mouseClick(b, Qt::LeftButton);
    });
    m.Show(true);
    EXPECT_FALSE(m.Cargada());

    // Closed by its own timer, which runs on the clock set by hand: the
    // clock moves by the timer's intervals only.
    reloj::Fijar(DateTime{46000.5});
    const std::int64_t antes = RelojMs();
    m.ticksParaCerrar = 3;
    m.Show(false);
    EXPECT_TRUE(Vista("frmMostrador").isVisible());
    m.Unload();
    m.ticks = 0;
    m.Show(false);
    anfitrion->Ejecutar([&] {
        m.tmr.SetInterval(40);
        m.tmr.SetEnabled(true);
    });
    anfitrion->Ejecutar([&] { m.Hide(); });
    m.Show(true);
    EXPECT_EQ(m.ticks, 3);
    EXPECT_EQ(RelojMs() - antes, 120);
    EXPECT_EQ(anfitrion->Vista("frmMostrador"), nullptr);
}

// A bar-code reader types the code and Enter faster than a hand: the keys
// pile up in the queue before any is handled, and none may be lost, even
// when Enter moves the focus to another entry.
TEST_F(VentanaTest, LectorDeCodigosNoPierdeTeclas) {
    Mostrador m;
    m.Show();
    QWidget* receptor = Widget<QLineEdit>("frmMostrador", "txt");
    ASSERT_TRUE(receptor);
    const QString codigos[] = {"8410000012345", "8480000765432", "2000000000015"};
    for (const QString& codigo : codigos) {
        for (QChar ch : codigo + '\r') {
            const int tecla = ch == '\r' ? Qt::Key_Return : Qt::Key_0 + (ch.unicode() - '0');
            QCoreApplication::postEvent(receptor, new QKeyEvent(QEvent::KeyPress, tecla, Qt::NoModifier, QString(ch)));
            QCoreApplication::postEvent(receptor, new QKeyEvent(QEvent::KeyRelease, tecla, Qt::NoModifier, QString(ch)));
        }
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(m.leidos, (std::vector<std::string>{"8410000012345", "txt2:8480000765432", "txt2:2000000000015"}));
}

}  // namespace
}  // namespace tpv
