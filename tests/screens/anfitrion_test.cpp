#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/runtime/error.hpp"
#include "core/runtime/reloj.hpp"
#include "screens/anfitrion.hpp"
#include "tests/core/runtime/error_esperado.hpp"

namespace tpv {
namespace {

// A small screen: an entry and a button in a frame, a second entry outside,
// and a timer; every event is written down.
class Prueba : public Ventana {
public:
    explicit Prueba(std::string n) { nombre_ = std::move(n); }
    Frame fr;
    TextBox txtA, txtB;
    CommandButton cmd;
    Timer tmr;
    std::vector<std::string> eventos;
    std::function<void()> alCargar;

protected:
    void Disenar() override {
        nombre = nombre_;
        Poner(fr, "fr", 0, 0, 1000, 1000);
        Poner(txtA, "txtA", 0, 0, 100, 100, "", &fr);
        Poner(cmd, "cmd", 0, 0, 100, 100, "", &fr);
        Poner(txtB, "txtB", 0, 0, 100, 100);
        txtB.tabIndex = 5;
        Poner(tmr, "tmr", 0, 0, 0, 0);
        tmr.enabled = false;
        auto anota = [this](std::string e) { return [this, e] { eventos.push_back(e); }; };
        txtA.Change = anota("A.Change");
        txtA.GotFocus = anota("A.GotFocus");
        txtA.LostFocus = anota("A.LostFocus");
        txtB.GotFocus = anota("B.GotFocus");
        txtB.LostFocus = anota("B.LostFocus");
        txtB.Change = anota("B.Change");
        txtB.KeyPress = [this](int& k) {
            eventos.push_back("B.KeyPress " + std::to_string(k));
            if (k == 'x') k = 0;
            if (k == 'a') k = 'A';
        };
        tmr.Tick = [this] { eventos.push_back("tick " + std::to_string(RelojMs() % 100000)); };
    }
    void Form_Load() override {
        if (alCargar) alCargar();
    }

private:
    std::string nombre_;
};

class AnfitrionTest : public ::testing::Test {
protected:
    void SetUp() override {
        anfitrion.salida = [this](const std::string& l) { lineas.push_back(l); };
        FijarAnfitrion(&anfitrion);
        FijarMensajes(&anfitrion);
        reloj::Fijar(DateTime{46000.0});
    }
    void TearDown() override {
        FijarAnfitrion(nullptr);
        FijarMensajes(nullptr);
        reloj::Soltar();
    }
    AnfitrionSinPantalla anfitrion;
    std::vector<std::string> lineas;
};

TEST_F(AnfitrionTest, CambioAlAsignarFocoYErrorCincoEnControlOculto) {
    Prueba p("frmP");
    p.Show();
    EXPECT_EQ(p.ActiveControl(), &p.txtA);  // first in tab order
    p.eventos.clear();
    p.txtA.SetText("hola");
    p.txtA.SetText("hola");  // the same text raises Change again
    p.txtB.SetFocus();
    p.txtB.SetFocus();  // already there: nothing
    EXPECT_EQ(p.eventos, (std::vector<std::string>{"A.Change", "A.Change", "A.LostFocus", "B.GotFocus"}));

    // A hidden frame hides what it holds; the focus can't go there.
    p.fr.visible = false;
    EXPECT_FALSE(p.txtA.VisibleEnPantalla());
    EXPECT_TRUE(p.txtA.visible);
    EXPECT_EQ(prueba::ErrorDe([&] { p.txtA.SetFocus(); }).numero, 5);
    p.fr.visible = true;
    p.fr.enabled = false;
    EXPECT_THROW(p.cmd.SetFocus(), RuntimeError);
    EXPECT_EQ(p.ActiveControl(), &p.txtB);
    EXPECT_EQ(lineas, (std::vector<std::string>{"PANTALLA ABRE frmP"}));
}

TEST_F(AnfitrionTest, TeclasPasanPorKeyPressYRespetanBloqueoYLongitud) {
    Prueba p("frmP");
    p.Show();
    for (char c : std::string("xab")) anfitrion.Tecla(p.txtB, c, c);
    EXPECT_EQ(p.txtB.Text(), "Ab");
    anfitrion.Tecla(p.txtB, vbKeyBack, vbKeyBack);
    EXPECT_EQ(p.txtB.Text(), "A");
    p.txtB.maxLength = 2;
    for (char c : std::string("bcd")) anfitrion.Tecla(p.txtB, c, c);
    EXPECT_EQ(p.txtB.Text(), "Ab");
    p.txtB.locked = true;
    anfitrion.Tecla(p.txtB, vbKeyBack, vbKeyBack);
    EXPECT_EQ(p.txtB.Text(), "Ab");
    // Tab moves on in tab order, skipping what can't take the focus.
    p.cmd.visible = false;
    anfitrion.Tecla(p.txtB, vbKeyTab, 0);
    EXPECT_EQ(p.ActiveControl(), &p.txtA);
    anfitrion.Tecla(p.txtA, vbKeyTab, 0);
    EXPECT_EQ(p.ActiveControl(), &p.txtB);
}

TEST_F(AnfitrionTest, ModalEsperaYCorreLasAccionesSiguientesDentro) {
    Prueba a("frmA"), b("frmB");
    std::vector<std::function<void()>> guion = {
        [&] { anfitrion.Accion([&] { b.txtA.SetText("dentro"); }); },
        [&] { anfitrion.Accion([&] { b.Unload(); }); },
    };
    std::size_t paso = 0;
    anfitrion.siguiente = [&] {
        if (paso >= guion.size()) return false;
        guion[paso++]();
        return true;
    };
    a.Show();
    std::string tras;
    anfitrion.Accion([&] {
        b.Show(true);
        tras = "volvio con " + b.txtA.Text();
    });
    EXPECT_EQ(tras, "volvio con dentro");
    EXPECT_EQ(lineas, (std::vector<std::string>{"PANTALLA ABRE frmA", "PANTALLA ABRE frmB", "PANTALLA CIERRA frmB"}));
    // With nothing left to run, the wait ends the run.
    EXPECT_THROW(b.Show(true), AnfitrionSinPantalla::FinDelGuion);
}

TEST_F(AnfitrionTest, TemporizadoresPorElRelojEnOrdenDeTiempo) {
    Prueba a("frmA"), b("frmB");
    a.Show();
    b.Show();
    const std::int64_t t0 = RelojMs();
    a.tmr.SetInterval(300);
    a.tmr.SetEnabled(true);
    b.tmr.SetInterval(500);
    b.tmr.SetEnabled(true);
    std::vector<std::int64_t> disparos;
    a.tmr.Tick = [&] { disparos.push_back(RelojMs() - t0); };
    b.tmr.Tick = [&] {
        disparos.push_back(-(RelojMs() - t0));
        b.Unload();  // its timer stops with it
    };
    anfitrion.Avanzar(1000);
    EXPECT_EQ(disparos, (std::vector<std::int64_t>{300, -500, 600, 900}));
    EXPECT_EQ(RelojMs() - t0, 1000);
    // Enabling again restarts the count.
    a.tmr.SetEnabled(true);
    anfitrion.Avanzar(250);
    EXPECT_EQ(disparos.size(), 4u);
    anfitrion.Avanzar(50);
    EXPECT_EQ(disparos.back(), 1300);
}

TEST_F(AnfitrionTest, MensajesYErroresAlFinalDeUnaAccion) {
    anfitrion.respuestas = {vbNo, vbRetry};
    EXPECT_EQ(MsgBox("¿Seguro?\nDe verdad", vbYesNo + vbQuestion, "Borrar"), vbNo);
    EXPECT_EQ(MsgBox("Hecho"), vbOK);  // Reintentar is no button of it: the default
    anfitrion.Accion([] { throw ErrorTiposNoCoinciden(); });
    EXPECT_EQ(lineas, (std::vector<std::string>{"MENSAJE [Borrar] ¿Seguro?\\nDe verdad -> No",
                                                "MENSAJE [TPV] Hecho -> Aceptar", "ERROR 13: No coinciden los tipos"}));
}

TEST(Controles, CasillasOpcionesYPanelDeBotones) {
    Formulario f;
    CheckBox chk;
    OptionButton o1, o2;
    int clics = 0;
    chk.Click = [&] { ++clics; };
    f.Registrar(chk);
    f.Registrar(o1);
    f.Registrar(o2);
    chk.Clic();
    chk.SetValue(1);  // unchanged: no Click
    EXPECT_EQ(chk.Value(), 1);
    EXPECT_EQ(clics, 1);
    o1.SetValue(true);
    o2.Clic();
    EXPECT_FALSE(o1.Value());
    EXPECT_TRUE(o2.Value());

    ButtonMatrix panel;
    panel.width = 3000;
    panel.height = 1500;
    panel.Recibo_Datos_De_Matriz({{"", "255", "", "Ana", "", "3"}, {"", "11", "", "Luis", "", "7"}});
    EXPECT_TRUE(panel.Botones().empty());
    panel.Cargar_Contenido_Boton();
    std::string pulsado;
    panel.Pulsado = [&] { pulsado = panel.CodigoPulsado + "/" + panel.ColorPulsado + "/" + panel.TextoPulsado; };
    panel.Pulsar(static_cast<std::size_t>(panel.BuscarCodigo("7")));
    EXPECT_EQ(pulsado, "7/11/Luis");
    EXPECT_THROW(panel.Pulsar(2), RuntimeError);
}

}  // namespace
}  // namespace tpv
