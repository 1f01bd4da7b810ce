#include <QLabel>
#include <QLineEdit>
#include <functional>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "core/datos/connection.hpp"
#include "core/datos/recordset.hpp"
#include "core/servicios/suite_settings.hpp"
#include "core/sesion/pantalla.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/frm_cobrar.hpp"
#include "screens/pantallas.hpp"
#include "tests/ui/ventana_prueba.hpp"
#include "ui/visor_pantalla.hpp"

namespace tpv {
namespace {

using prueba::TiendaEnVentanaTest;

// The demo shop's till in bar-code mode, with helpers to sell by typing.
class VentaEnVentanaTest : public TiendaEnVentanaTest {
protected:
    struct Producto {
        std::string codigo, nombre;
    };

    // The first employee of the panel picked, as the assistant starts.
    frmCaja& AbrirCaja() {
        EXPECT_EQ(Arrancar(), FinArranque::SeleccionEmpleado);
        QWidget* panel = Vista("frmPrincipalCantarel").WidgetDe("PanelEmpleados");
        auto* boton = panel ? panel->findChild<QToolButton*>("boton0") : nullptr;
        EXPECT_TRUE(boton);
        if (boton) QTest::mouseClick(boton, Qt::LeftButton);
        EXPECT_TRUE(anfitrion->Vista("frmCaja"));
        return Unica<frmCaja>();
    }

    // A product sold by its own code, at a price under twenty.
    Producto Barato() {
        Recordset rs;
        rs.Open("select codigocliente, nombre from productos where codigocliente is not null and modoventa = false "
                "and borrar = false and precio > 0 and precio < 20 order by codigo",
                sesion().Conexion, adOpenStatic);
        EXPECT_FALSE(rs.Eof());
        if (rs.Eof()) return {};
        return {rs.Get("codigocliente").text(), rs.Get("nombre").text()};
    }

    // Types the code into txtcod with real keys, as the reader does.
    void Teclear(const std::string& codigo) {
        anfitrion->Ejecutar([] { Unica<frmCaja>().txtcod.SetFocus(); });
        QWidget* txtcod = Vista("frmCaja").WidgetDe("txtcod");
        QTest::keyClicks(txtcod, QString::fromStdString(codigo));
        QTest::keyClick(txtcod, Qt::Key_Return);
    }

    // Opens a modal screen with `abrir` and runs `dentro` on it from the loop
    // it waits in; then the screen leaves by its exit button. False when the
    // screen never showed.
    bool EnPantallaModal(const std::string& pantalla, const std::function<void()>& abrir,
                         const std::function<void(ui::VistaPantalla&)>& dentro) {
        bool vista = false;
        QObject esta;  // the wait ends with the call, whatever happens
        QTimer::singleShot(200, &esta, [&] {
            ui::VistaPantalla* v = anfitrion->Vista(pantalla);
            if (!v) return;
            vista = true;
            EXPECT_TRUE(v->isVisible());
            dentro(*v);
            if (auto* salir = qobject_cast<QPushButton*>(v->WidgetDe("cmdSalir")); salir && salir->isVisible())
                QTest::mouseClick(salir, Qt::LeftButton);
            if (Ventana* w = anfitrion->Buscar(pantalla)) anfitrion->Ejecutar([w] { w->Unload(); });
        });
        abrir();
        return vista;
    }

    QString Texto(const std::string& pantalla, const std::string& control) {
        auto* w = Widget<QLineEdit>(pantalla, control);
        EXPECT_TRUE(w) << control;
        return w ? w->text() : QString();
    }
};

// A cash sale from the first key to the figures of the sale just closed: a
// code typed on the till, F9 to the settlement screen, twenty handed over
// and Enter; the till is then ready for the next customer. The settings ask
// for the pole display on the screen: the line sold shows in its strip.
TEST_F(VentaEnVentanaTest, UnaVentaEnEfectivoSeTerminaEnLaPantallaDeCobro) {
    {
        Connection cn;
        cn.Open(carpeta + "/PERFUMERIA.db");
        cn.Execute(
            "insert into relaciones_fijas (indice, datoa, otros) values ('VisorCAJA1', 'Perfumería La Plaza', '1')");
    }
    SuiteSettings::Instancia().Escribir("visor_en_pantalla", "SI");
    const auto visor = ui::InstalarVisorEnPantalla();
    ASSERT_TRUE(visor);
    frmCaja& caja = AbrirCaja();
    ASSERT_TRUE(Esperar([&] { return visor->tira().isVisible(); }));
    EXPECT_EQ(visor->tira().Fila(0).trimmed().toStdString(), "Perfumería La Plaza");
    const Producto p = Barato();
    Teclear(p.codigo);
    auto* rejilla = Widget<QTableWidget>("frmCaja", "FGCaja");
    ASSERT_TRUE(rejilla && rejilla->rowCount() > 1 && rejilla->item(1, 0));
    ASSERT_EQ(rejilla->item(1, 0)->text().toStdString(), p.nombre);
    ASSERT_TRUE(Esperar([&] { return visor->tira().Fila(1).startsWith(QString::fromStdString(p.nombre).left(5)); }))
        << visor->tira().Fila(1).toStdString();
    EXPECT_EQ(visor->tira().findChild<QLabel*>("visorFila2")->text(), visor->tira().Fila(1));
    Captura(visor->tira(), "visor_en_pantalla");
    const QString total = Texto("frmCaja", "CajaText_Pago");
    ASSERT_FALSE(total.isEmpty());

    // The settlement screen is modal: what is done on it runs from the loop
    // it waits in.
    bool visto = false;
    QObject esta;  // the wait ends with the test, whatever happens
    QTimer::singleShot(200, &esta, [&] {
        ui::VistaPantalla* cobro = anfitrion->Vista("frmCobrar");
        ASSERT_TRUE(cobro);
        visto = true;
        EXPECT_TRUE(cobro->isVisible());
        EXPECT_EQ(Texto("frmCobrar", "CajaText_Pago"), total);
        EXPECT_EQ(Texto("frmCobrar", "txt_Entrega"), "0,00");
        EXPECT_TRUE(cobro->WidgetDe("txt_Entrega")->hasFocus() || !cobro->isActiveWindow());
        Captura(*cobro, "frmCobrar");
        // The entry opens wholly selected: twenty typed replace it, then Enter.
        QWidget* entrega = cobro->WidgetDe("txt_Entrega");
        QTest::keyClicks(entrega, QStringLiteral("20"));
        EXPECT_EQ(Texto("frmCobrar", "txt_Entrega"), "20");
        EXPECT_EQ(Texto("frmCobrar", "txt_Devolucion").toStdString(), Unica<frmCobrar>().txt_Devolucion.Text());
        EXPECT_TRUE(cobro->WidgetDe("cmd_FinVenta")->isVisible());
        Captura(*cobro, "frmCobrar_entrega");
        QTest::keyClick(entrega, Qt::Key_Return);
    });
    QTest::keyClick(Vista("frmCaja").WidgetDe("txtcod"), Qt::Key_F9);
    ASSERT_TRUE(visto);
    EXPECT_EQ(anfitrion->Vista("frmCobrar"), nullptr);

    // The grid is empty again, the total is back to nothing and the last
    // sale's panel shows the figures the model holds.
    ui::VistaPantalla& vista = Vista("frmCaja");
    EXPECT_TRUE(!rejilla->item(1, 0) || rejilla->item(1, 0)->text().isEmpty());
    const QString vacio = Texto("frmCaja", "CajaText_Pago");
    EXPECT_EQ(vacio.toStdString(), caja.CajaText_Pago.Text());
    EXPECT_TRUE(vacio.isEmpty() || vacio == "0,00") << vacio.toStdString();
    EXPECT_TRUE(vista.WidgetDe("frUltimaVenta")->isVisible());
    EXPECT_EQ(Texto("frmCaja", "txtTotal_U_V"), total);
    EXPECT_EQ(Texto("frmCaja", "txt_Entrega_U_V").toStdString(), caja.txt_Entrega_U_V.Text());
    EXPECT_EQ(Texto("frmCaja", "txt_Devolucion_U_V").toStdString(), caja.txt_Devolucion_U_V.Text());
    EXPECT_FALSE(caja.txt_Devolucion_U_V.Text().empty());
    Captura(vista, "frmCaja_tras_la_venta");
}

// The search screen in both its faces and the screen that asks for a closed
// sale open over the till, with their buttons at a finger's size; a touch on
// a line of the sale opens the line editor with the line's figures.
TEST_F(VentaEnVentanaTest, LasPantallasDeBusquedaVentasCerradasYEditorDeLineaSeAbrenSobreLaCaja) {
    frmCaja& caja = AbrirCaja();
    // The product search's picture is a magnifying glass the window draws.
    const auto* lupa = qobject_cast<QLabel*>(Vista("frmCaja").WidgetDe("Picture1"));
    ASSERT_NE(lupa, nullptr);
    EXPECT_FALSE(lupa->pixmap().isNull());
    const auto pulsar = [this](const char* control) {
        return [this, control] { QTest::mouseClick(Vista("frmCaja").WidgetDe(control), Qt::LeftButton); };
    };
    EXPECT_TRUE(EnPantallaModal("frmBuscar", pulsar("cmdBuscarCliente"), [&](ui::VistaPantalla& v) {
        EXPECT_TRUE(v.WidgetDe("FrCli")->isVisible());
        EXPECT_FALSE(v.WidgetDe("FrProd")->isVisible());
        BotonesTactiles(v);
        Captura(v, "frmBuscar_clientes");
    }));
    EXPECT_TRUE(EnPantallaModal("frmBuscar", pulsar("Picture1"), [&](ui::VistaPantalla& v) {
        EXPECT_TRUE(v.WidgetDe("FrProd")->isVisible());
        BotonesTactiles(v);
        Captura(v, "frmBuscar_productos");
    }));
    EXPECT_TRUE(EnPantallaModal("frmDevoluciones", pulsar("cmdDevoluciones"), [&](ui::VistaPantalla& v) {
        EXPECT_TRUE(v.WidgetDe("txtNumFac")->isVisible());
        BotonesTactiles(v);
        Captura(v, "frmDevoluciones");
    }));
    EXPECT_EQ(anfitrion->Vista("frmBuscar"), nullptr);
    EXPECT_EQ(anfitrion->Vista("frmDevoluciones"), nullptr);

    Teclear(Barato().codigo);
    auto* rejilla = Widget<QTableWidget>("frmCaja", "FGCaja");
    ASSERT_TRUE(rejilla && rejilla->rowCount() > 1);
    QTest::mouseClick(rejilla->viewport(), Qt::LeftButton, {}, rejilla->visualItemRect(rejilla->item(1, 0)).center());
    ui::VistaPantalla& vista = Vista("frmCaja");
    ASSERT_TRUE(caja.fr_Lupa.visible);
    EXPECT_TRUE(vista.WidgetDe("fr_Lupa")->isVisible());
    EXPECT_EQ(Texto("frmCaja", "txt_NomLupa").toStdString(), caja.txt_NomLupa.Text());
    EXPECT_EQ(Texto("frmCaja", "txt_CantLupa").toStdString(), caja.txt_CantLupa.Text());
    EXPECT_EQ(Texto("frmCaja", "txt_TotalLupa").toStdString(), caja.txt_TotalLupa.Text());
    Captura(vista, "frmCaja_editor_de_linea");
}

// On a display smaller than the design, the fitter shrinks the till: the
// window and every control stay on the display, and the buttons, grown
// towards a finger's size as far as there is room, cover no other.
TEST_F(VentaEnVentanaTest, EnUnaPantallaPequenaLaCajaCabeEntera) {
    FijarPantalla(std::make_unique<PantallaFija>(800, 600));
    for (int modo : {1, 0}) {
        SCOPED_TRACE(modo);
        if (modo == 1) {
            AbrirCaja();
        } else {
            anfitrion->Ejecutar([] { Unica<frmCaja>().Unload(); });
            sesion().opciones.modopantallacaja = 0;
            anfitrion->Ejecutar([] { Unica<frmCaja>().Show(); });
        }
        ui::VistaPantalla& vista = Vista("frmCaja");
        EXPECT_LE(vista.width(), 800);
        EXPECT_LE(vista.height(), 600);
        const QRect ventana(QPoint(0, 0), vista.size());
        std::vector<QWidget*> botones;
        for (QWidget* w : vista.findChildren<QWidget*>()) {
            if (!w->isVisible() || !vista.ControlDe(w) || vista.WidgetDe(*vista.ControlDe(w)) != w) continue;
            const QRect r(w->mapTo(&vista, QPoint(0, 0)), w->size());
            EXPECT_TRUE(ventana.contains(r)) << w->objectName().toStdString();
            if (qobject_cast<QPushButton*>(w)) botones.push_back(w);
        }
        // The buttons of the panels (products, tariffs...) stay whole inside their panel.
        for (QToolButton* t : vista.findChildren<QToolButton*>()) {
            if (!t->isVisible()) continue;
            EXPECT_TRUE(QRect(QPoint(0, 0), t->parentWidget()->size()).contains(t->geometry()))
                << t->parentWidget()->objectName().toStdString() << "/" << t->objectName().toStdString();
        }
        for (QWidget* b : botones) {
            EXPECT_GE(std::min(b->width(), b->height()), 36) << b->objectName().toStdString();
            for (QWidget* otro : botones) {
                if (otro == b || otro->parentWidget() != b->parentWidget()) continue;
                EXPECT_FALSE(b->geometry().intersects(otro->geometry()))
                    << b->objectName().toStdString() << " / " << otro->objectName().toStdString();
            }
        }
        Captura(vista, modo == 1 ? "frmCaja_800x600_codigo" : "frmCaja_800x600_tactil");
    }
}

}  // namespace
}  // namespace tpv
