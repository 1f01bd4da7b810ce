#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>
#include <unistd.h>

#include <algorithm>

#include "tests/ui/ventana_prueba.hpp"

namespace tpv {
namespace {

using prueba::VentanaTest;

// A screen with a combo of concepts, as an expense is entered, and an entry
// to move the focus to; the combo's events are written down.
class Conceptos : public Ventana {
public:
    ComboBox cmb;
    TextBox txt;
    std::vector<std::string> eventos;

protected:
    void Disenar() override {
        nombre = "frmConceptos";
        caption = "Conceptos";
        width = 9000;
        height = 4000;
        Poner(cmb, "cmb", 240, 240, 5000, 600);
        cmb.tabIndex = 0;
        Poner(txt, "txt", 240, 1200, 3000, 480);
        txt.tabIndex = 1;
        for (const char* c : {"Luz", "Agua", "Alquiler"}) cmb.AddItem(c);
        cmb.Change = [this] { eventos.push_back("Change " + cmb.Text()); };
        cmb.Click = [this] { eventos.push_back("Click " + cmb.Text()); };
    }
};

// Typed text and a choice from the list both reach the model as its Text,
// with its own events; what the model writes is shown back.
TEST_F(VentanaTest, ElComboAdmiteTextoTecleadoYElegidoDeLaLista) {
    Conceptos f;
    f.Show();
    auto* combo = Widget<QComboBox>("frmConceptos", "cmb");
    ASSERT_TRUE(combo);
    ASSERT_TRUE(combo->isEditable());
    ASSERT_EQ(combo->count(), 3);
    EXPECT_GE(combo->height(), 36);

    // A touch on the entry gives the combo the focus; each key is a Change.
    QTest::mouseClick(combo->lineEdit(), Qt::LeftButton);
    EXPECT_TRUE(f.cmb.TieneFoco());
    QTest::keyClicks(combo->lineEdit(), QStringLiteral("Gas"));
    EXPECT_EQ(f.cmb.Text(), "Gas");
    EXPECT_EQ(f.cmb.ListIndex(), -1);
    EXPECT_EQ(f.eventos, (std::vector<std::string>{"Change G", "Change Ga", "Change Gas"}));
    EXPECT_EQ(combo->currentText(), "Gas");
    EXPECT_EQ(combo->count(), 3);  // typed text is no new item

    // A backspace takes the last character; accents get in whole.
    QTest::keyClick(combo->lineEdit(), Qt::Key_Backspace);
    QKeyEvent enie(QEvent::KeyPress, Qt::Key_Ntilde, Qt::NoModifier, QStringLiteral("ñ"));
    QApplication::sendEvent(combo->lineEdit(), &enie);
    EXPECT_EQ(f.cmb.Text(), "Gañ");

    // An item chosen from the list: Click, and its text in the entry.
    f.eventos.clear();
    emit combo->activated(1);
    EXPECT_EQ(f.cmb.ListIndex(), 1);
    EXPECT_EQ(f.cmb.Text(), "Agua");
    EXPECT_EQ(f.eventos, std::vector<std::string>{"Click Agua"});
    EXPECT_EQ(combo->currentText(), "Agua");
    // Typing after a choice writes at the end: no item is chosen any more.
    QTest::keyClicks(combo->lineEdit(), QStringLiteral("s"));
    EXPECT_EQ(f.cmb.Text(), "Aguas");
    EXPECT_EQ(f.cmb.ListIndex(), -1);
    EXPECT_EQ(combo->lineEdit()->cursorPosition(), 5);

    // Text pasted with the mouse reaches the model too.
    f.eventos.clear();
    combo->lineEdit()->selectAll();
    combo->lineEdit()->insert(QStringLiteral("Alquiler"));
    EXPECT_EQ(f.cmb.Text(), "Alquiler");
    EXPECT_EQ(f.cmb.ListIndex(), 2);
    EXPECT_EQ(f.eventos, std::vector<std::string>{"Change Alquiler"});

    // What the model writes is shown, whether of an item or not.
    anfitrion->Ejecutar([&] { f.cmb.SetText("Luz"); });
    EXPECT_EQ(combo->currentIndex(), 0);
    EXPECT_EQ(combo->currentText(), "Luz");
    anfitrion->Ejecutar([&] {
        f.cmb.SetText("Teléfono");
        f.cmb.AddItem("Limpieza");
    });
    EXPECT_EQ(combo->count(), 4);
    EXPECT_EQ(combo->currentText(), "Teléfono");
    Captura(Vista("frmConceptos"), "combo_editable");
    f.Unload();
}

// A screen with one picture, for what may be wrong with its file.
class Retrato : public Ventana {
public:
    PictureBox img;

protected:
    void Disenar() override {
        nombre = "frmRetrato";
        width = 6000;
        height = 4000;
        Poner(img, "img", 240, 240, 3000, 3000);
        img.picture = "/no/existe/foto.png";
    }
};

// A missing, unreadable or removed picture leaves the box empty; a good
// one fills it, and follows the box when the window is resized.
TEST_F(VentanaTest, UnaFotoQueFaltaDejaLaCajaVacia) {
    const QString carpeta = QDir::temp().filePath(QStringLiteral("tpv_retrato_%1").arg(::getpid()));
    QDir().mkpath(carpeta);
    const QString buena = carpeta + "/buena.png", rota = carpeta + "/rota.png";
    QImage imagen(64, 64, QImage::Format_RGB32);
    imagen.fill(Qt::darkCyan);
    ASSERT_TRUE(imagen.save(buena));
    {
        QFile f(rota);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("no es una imagen");
    }
    Retrato r;
    r.Show();
    auto* img = Widget<QLabel>("frmRetrato", "img");
    ASSERT_TRUE(img);
    const auto conFoto = [&] { return !img->pixmap().isNull(); };
    EXPECT_FALSE(conFoto());
    anfitrion->Ejecutar([&] { r.img.picture = rota.toStdString(); });
    EXPECT_FALSE(conFoto());
    anfitrion->Ejecutar([&] { r.img.picture = buena.toStdString(); });
    ASSERT_TRUE(conFoto());
    EXPECT_EQ(img->pixmap().width(), std::min(img->width(), img->height()));
    // Gone from the disk: the next drawing of another size finds nothing.
    QFile::remove(buena);
    Vista("frmRetrato").resize(300, 200);
    EXPECT_FALSE(conFoto());
    r.Unload();
    QDir(carpeta).removeRecursively();
}

}  // namespace
}  // namespace tpv
