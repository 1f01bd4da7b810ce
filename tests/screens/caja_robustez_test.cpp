// Any key on any control of the till screen, any text in the code entry and
// any press in any state: the screen's own behaviour or nothing, a run-time
// error at most (shown and logged by the host), and the till goes on selling.
#include <cstdlib>
#include <functional>

#include "core/servicios/suite_launcher.hpp"
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class CajaRobustez : public prueba::CajaTest {
protected:
    frmCaja& Caja() {
        frmCaja& c = Unica<frmCaja>();
        if (!c.Cargada()) c.Show();
        return c;
    }
    // The history tool's button closes the connection, starts the tool and
    // opens the connection again: here it starts nothing, and the database
    // to open again is this test's own.
    void SetUp() override {
        prueba::CajaTest::SetUp();
        ::setenv("TPV_DATABASE", uri.c_str(), 1);
        SuiteLauncher::FijarGrabador([](const std::string&, const std::string&) {});
    }
    void TearDown() override {
        SuiteLauncher::FijarGrabador(nullptr);
        ::unsetenv("TPV_DATABASE");
        prueba::CajaTest::TearDown();
    }
};

TEST_P(CajaRobustez, CualquierTeclaEnCualquierControlYEstado) {
    Articulo(5, "8410001", "Colonia", "10");
    Articulo(9, "2000009", "Queso", "12", 1, 1, true);
    struct Estado {
        const char* que;
        std::function<void(frmCaja&)> preparar;
    } estados[] = {
        {"codigo, sin venta", [](frmCaja&) {}},
        {"cantidad pendiente",
         [this](frmCaja&) {
             sesion().PedirCantidad = true;
             Escanear("8410001");
         }},
        {"peso pendiente", [this](frmCaja&) { Escanear("2000009"); }},
        {"ventas abiertas", [this](frmCaja& c) {
             Escanear("8410001");
             Clic(c.cmd_VentasActivas);
         }},
        {"tactil con opciones", [this](frmCaja& c) {
             Clic(c.cmdCambioTactil);
             Clic(c.cmdObservaciones);
         }},
    };
    // Key code and character: function keys, Enter, Tab, Escape, backspace,
    // letters, digits, separators, control characters and bytes above 127.
    const std::pair<int, int> teclas[] = {
        {vbKeyF1, 0},     {vbKeyF1 + 1, 0}, {vbKeyF1 + 2, 0}, {vbKeyF1 + 3, 0}, {vbKeyF1 + 4, 0},
        {vbKeyF1 + 5, 0}, {vbKeyF1 + 8, 0}, {vbKeyF1 + 11, 0}, {vbKeyReturn, vbKeyReturn}, {vbKeyTab, 0},
        {vbKeyEscape, vbKeyEscape}, {vbKeyBack, vbKeyBack}, {'A', 'a'}, {'7', '7'}, {188, ','}, {190, '.'},
        {'\'', '\''}, {1, 1}, {0, 0}, {255, 255}};
    // A button that opens a screen over the till finds it closed at once.
    anfitrion.siguiente = [this] {
        anfitrion.Abiertas().back()->Unload();
        return true;
    };
    for (const Estado& e : estados) {
        SCOPED_TRACE(e.que);
        sesion().opciones.modopantallacaja = 1;
        sesion().PedirCantidad = false;
        Unica<frmCaja>().Unload();
        frmCaja& c = Caja();
        e.preparar(c);
        for (std::size_t i = 0; i < c.controles.size(); ++i) {
            for (auto [codigo, caracter] : teclas) {
                frmCaja& ahora = Caja();  // F2 and the exit leave; the till comes back
                Control& k = ahora.controles[i];
                anfitrion.Accion([&] { anfitrion.Tecla(k, codigo, caracter); });
                ASSERT_GE(ahora.FGCaja.Rows(), 2) << k.nombre;
            }
        }
        // Every button pressed and every panel button touched.
        frmCaja& c2 = Caja();
        for (std::size_t i = 0; i < c2.controles.size(); ++i) {
            frmCaja& ahora = Caja();
            Control& k = ahora.controles[i];
            anfitrion.Accion([&] { k.Clic(); });
            if (auto* panel = dynamic_cast<ButtonMatrix*>(&k))
                for (std::size_t b = 0; b < panel->Botones().size() && b < 3; ++b) {
                    anfitrion.Accion([&] { panel->Pulsar(b); });
                    anfitrion.Accion([&] { panel->Pulsar(b); });  // twice, quickly
                }
        }
    }

    // Texts a scanner or a keyboard can send into the code entry.
    const std::string textos[] = {std::string(500, '9'), "abc'; drop table productos", "\x01\x02\x1f", "   ",
                                  "8410001\t8410001", "ñandú€", ""};
    for (const std::string& t : textos) {
        frmCaja& c = Caja();
        anfitrion.Accion([&] { c.txtcod.SetFocus(); });
        c.txtcod.SetText(t);
        Intro(c.txtcod);
    }

    // The till still sells.
    sesion().opciones.modopantallacaja = 1;
    sesion().PedirCantidad = false;
    Unica<frmCaja>().Unload();
    frmCaja& c = Caja();
    Escanear("8410001");
    EXPECT_EQ(c.FGCaja.TextMatrix(1, 0), "Colonia");
    EXPECT_GE(CLng(Valor("select count(*) from productos")), 2);
}

TPV_EN_CADA_MOTOR(CajaRobustez);

}  // namespace
}  // namespace tpv
