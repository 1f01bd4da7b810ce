#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include "core/sesion/sesion.hpp"
#include "screens/pantallas.hpp"
#include "tests/ui/ventana_prueba.hpp"

namespace tpv {
namespace {

using prueba::TiendaEnVentanaTest;

TEST_F(TiendaEnVentanaTest, ElPanelDeEmpleadosLlevaALaCajaEnSusDosModos) {
    ASSERT_EQ(Arrancar(), FinArranque::SeleccionEmpleado);
    ui::VistaPantalla& seleccion = Vista("frmPrincipalCantarel");
    EXPECT_TRUE(seleccion.isVisible());
    EXPECT_EQ(seleccion.size(), QSize(1024, 745));  // the display less the task bar's 350 twips

    // One big button per employee of the panel, with the employee's name.
    const PanelRegistros& empleados = sesion().PanelEmpleados;
    ASSERT_FALSE(empleados.empty());
    QWidget* panel = seleccion.WidgetDe("PanelEmpleados");
    ASSERT_TRUE(panel);
    for (std::size_t i = 0; i < empleados.size(); ++i) {
        auto* b = panel->findChild<QToolButton*>("boton" + QString::number(i));
        ASSERT_TRUE(b) << i;
        EXPECT_EQ(b->text().replace('\n', ' ').toStdString(), empleados[i].Texto);
    }
    BotonesTactiles(seleccion);
    Captura(seleccion, "frmPrincipalCantarel");

    QTest::mouseClick(panel->findChild<QToolButton*>("boton0"), Qt::LeftButton);
    ui::VistaPantalla& caja = Vista("frmCaja");
    EXPECT_TRUE(caja.isVisible());
    EXPECT_EQ(Widget<QLabel>("frmCaja", "lbl_Empleado")->text().toStdString(), empleados[0].Texto);
    EXPECT_EQ(Widget<QLineEdit>("frmCaja", "txtNomCliente")->text(), "Cliente Generico");
    // The bar-code mode: the touch panel's frame is hidden, txtcod has the focus.
    EXPECT_FALSE(caja.WidgetDe("frTactil")->isVisible());
    EXPECT_TRUE(caja.WidgetDe("txtcod")->hasFocus() || !caja.isActiveWindow());
    BotonesTactiles(caja);
    Captura(caja, "frmCaja_codigo_barras");

    // The touch mode shows its frame.
    Unica<frmCaja>().Unload();
    sesion().opciones.modopantallacaja = 0;
    anfitrion->Ejecutar([] { Unica<frmCaja>().Show(); });
    ui::VistaPantalla& tactil = Vista("frmCaja");
    EXPECT_TRUE(tactil.WidgetDe("frTactil")->isVisible());
    // Each product button shows its picture and its name once.
    const PanelRegistros& productos = sesion().PanelProductos;
    QWidget* panelProductos = tactil.WidgetDe("PanelProductos");
    ASSERT_TRUE(panelProductos && !productos.empty());
    int vistos = 0;
    for (std::size_t i = 0; i < productos.size(); ++i) {
        auto* b = panelProductos->findChild<QToolButton*>("boton" + QString::number(i));
        if (!b || !b->isVisible()) continue;
        ++vistos;
        EXPECT_FALSE(b->icon().isNull()) << productos[i].Texto;
        EXPECT_EQ(b->text().replace(QStringLiteral("-\n"), QString()).replace('\n', ' ').toStdString(),
                  productos[i].Texto);
        EXPECT_GE(b->font().pixelSize(), 11);
    }
    EXPECT_GT(vistos, 0);
    // The total is big: its font fills most of its box.
    auto* total = Widget<QLineEdit>("frmCaja", "CajaText_Pago");
    ASSERT_TRUE(total);
    EXPECT_GE(total->font().pixelSize(), total->height() / 2);
    BotonesTactiles(tactil);
    Captura(tactil, "frmCaja_tactil");

    // Its exit button unloads it, back to the employee selection.
    QTest::mouseClick(Widget<QPushButton>("frmCaja", "cmd_Salir"), Qt::LeftButton);
    EXPECT_EQ(anfitrion->Vista("frmCaja"), nullptr);
    EXPECT_TRUE(Vista("frmPrincipalCantarel").isVisible());
}

}  // namespace
}  // namespace tpv
