#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>
#include <cstdio>

#include "core/datos/recordset.hpp"
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
    BotonesTactiles(tactil);
    Captura(tactil, "frmCaja_tactil");

    // Its exit button unloads it, back to the employee selection.
    QTest::mouseClick(Widget<QPushButton>("frmCaja", "cmd_Salir"), Qt::LeftButton);
    EXPECT_EQ(anfitrion->Vista("frmCaja"), nullptr);
    EXPECT_TRUE(Vista("frmPrincipalCantarel").isVisible());
}

// A code read on frmCaja reaches txtcod whole, at the reader's pace.
TEST_F(TiendaEnVentanaTest, ElLectorEscribeElCodigoEnteroEnLaCaja) {
    ASSERT_EQ(Arrancar(), FinArranque::SeleccionEmpleado);
    anfitrion->Ejecutar([] { Unica<frmCaja>().Show(); });
    frmCaja& caja = Unica<frmCaja>();
    // A product of the demo with a 13-digit bar code.
    std::string codigo, nombre;
    Recordset rs;
    rs.Open("select codigocliente, nombre from productos order by codigo", sesion().Conexion, adOpenStatic);
    for (; !rs.Eof() && codigo.empty(); rs.MoveNext()) {
        const Value c = rs.Get("codigocliente");
        if (c.IsNull() || c.text().size() != 13) continue;
        codigo = c.text();
        nombre = rs.Get("nombre").text();
    }
    ASSERT_FALSE(codigo.empty());
    std::vector<std::string> leidos;
    auto propio = caja.txtcod.KeyDown;
    caja.txtcod.KeyDown = [&](int& k, int shift) {
        if (k == vbKeyReturn) leidos.push_back(caja.txtcod.Text());
        if (propio) propio(k, shift);
    };
    anfitrion->Ejecutar([&] { caja.txtcod.SetFocus(); });
    QWidget* receptor = Vista("frmCaja").WidgetDe("txtcod");
    for (QChar ch : QString::fromStdString(codigo + "\r")) {
        const int tecla = ch == '\r' ? Qt::Key_Return : Qt::Key_0 + (ch.unicode() - '0');
        QCoreApplication::postEvent(receptor, new QKeyEvent(QEvent::KeyPress, tecla, Qt::NoModifier, QString(ch)));
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(leidos, std::vector<std::string>{codigo});
    // The line of the product sold shows in the grid.
    auto* rejilla = Widget<QTableWidget>("frmCaja", "FGCaja");
    ASSERT_TRUE(rejilla && rejilla->rowCount() > 1 && rejilla->item(1, 0));
    EXPECT_EQ(rejilla->item(1, 0)->text().toStdString(), caja.FGCaja.TextMatrix(1, 0));
    EXPECT_EQ(rejilla->item(1, 0)->text().toStdString(), nombre);
}

}  // namespace
}  // namespace tpv
