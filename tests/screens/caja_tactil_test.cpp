// The till screen by touch: the products' colours, tariffs, the numeric
// pads; the options panel and its write-backs; the change of mode; the
// drawer button; the timers by the virtual clock; the layout on the design
// size.
#include <filesystem>

#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class CajaTactil : public prueba::CajaTest {
protected:
    void SetUp() override {
        CajaTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        sesion().opciones.modopantallacaja = 0;
        Ejecutar({"insert into proveedores (codigo,nombre,borrar,prv_color,color) values (1,'Alfa',0,0,null)",
                  "insert into proveedores (codigo,nombre,borrar,prv_color,color) values (2,'Beta',0,-1,5000)",
                  "insert into seccion (codigo,nombre,borrar) values (1,'Perfumes',0)",
                  "insert into seccion (codigo,nombre,borrar) values (2,'Jabones',0)"});
        Articulo(5, "8410001", "Colonia", "10", 1, 1);
        Articulo(6, "8410002", "Jabon", "2", 2, 2, false, "pro_color = '-1', color = '777'");
        Articulo(7, "8410003", "Crema", "3", 2, 1, false, "pro_color = '-1', color = '777', stockminimo = 11");
        Articulo(8, "8410004", "Sales", "4", 2, 2, false, "stockminimo = 10");
    }
};

TEST_P(CajaTactil, PorProveedor_ColoresDeLosBotones) {
    frmCaja& c = Abrir();
    ASSERT_TRUE(c.frTactil.visible);
    // The first supplier's products come up at the start.
    ASSERT_EQ(c.PanelProductos.Botones().size(), 1u);
    EXPECT_EQ(c.PanelProductos.Botones()[0].Color, "101");  // inherits the supplier's colour

    Pulsar(c.panelProveedores, 1);
    EXPECT_EQ(c.lblInfoFiltro.caption, "Productos de: Beta");
    EXPECT_EQ(c.ActiveControl(), &c.txtCodBarras);
    struct Boton {
        const char *codigo, *color;
    } esperados[] = {{"7", "255"},    // its own colour, but under its minimum stock
                     {"6", "777"},    // its own colour
                     {"8", "5000"}};  // no colour of its own: the supplier's
    const PanelRegistros& b = c.PanelProductos.Botones();
    ASSERT_EQ(b.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(b[i].Codigo, esperados[i].codigo);
        EXPECT_EQ(b[i].Color, esperados[i].color) << b[i].Texto;
    }

    // The filter chosen is stored.
    Clic(c.cmdXSeccion);
    EXPECT_EQ(Clave("FiltroPantallaTactil"), "Secciones");
    Clic(c.cmdXProveedor);
    EXPECT_EQ(Clave("FiltroPantallaTactil"), "Proveedores");
    EXPECT_TRUE(Avisos().empty());
}

TEST_P(CajaTactil, SinProveedores_BotonRojoQueNoMuestraNada) {
    Ejecutar({"update productos set proveedor = 99"});
    frmCaja& c = Abrir();
    ASSERT_EQ(c.panelProveedores.Botones().size(), 1u);
    EXPECT_EQ(c.panelProveedores.Botones()[0].TextoSuperior, "Sin Proveedores");
    EXPECT_EQ(c.panelProveedores.Botones()[0].Color, "255");
    Pulsar(c.panelProveedores, 0);
    EXPECT_TRUE(c.PanelProductos.Botones().empty());
    EXPECT_TRUE(Avisos().empty());
}

TEST_P(CajaTactil, Tarifas_PanelVisibleYCambioGuardado) {
    Sesion& s = sesion();
    s.Tarifas = {{"General", "200", "", "", "", "-1"}, {"Socios", "300", "", "", "", "2"}};
    frmCaja& c = Abrir();
    ASSERT_TRUE(c.frTarifas.visible);
    EXPECT_TRUE(c.PanelTarifas.UsaColores);
    EXPECT_EQ(c.FGCaja.height, 5280 - c.frTarifas.height);
    Pulsar(c.PanelTarifas, 1);
    EXPECT_EQ(s.TarifaActual, 2);
    EXPECT_EQ(c.fr_hijo.backColor, 300);
    EXPECT_EQ(CLng(Valor("select daton from relaciones_fijas where indice = 'TarifaAplicada' and datoa = 'PC1'")), 2);
    Pulsar(c.PanelTarifas, 0);
    EXPECT_EQ(s.TarifaActual, -1);
    EXPECT_EQ(CLng(Valor("select count(*) from relaciones_fijas where indice = 'TarifaAplicada'")), 0);
    EXPECT_TRUE(Avisos().empty());
}

TEST_P(CajaTactil, Teclados_DigitosComaBorrarYAceptar) {
    sesion().opciones.modopantallacaja = 1;
    sesion().PedirCantidad = true;
    frmCaja& c = Abrir();
    // Nothing focused yet but the code entry; a pad with no entry does nothing.
    c.ControlActivo = nullptr;
    Clic(c.btnNumerico_Cobro[4]);
    Clic(c.cmdAceptarNum);
    Escanear("8410001");
    ASSERT_EQ(c.ControlActivo, &c.txtCantidad);
    // "1" is selected: the first digit replaces it; a second comma is refused.
    for (int tecla : {2, 10, 10, 5, 7}) Clic(c.btnNumerico_Cobro[tecla]);
    EXPECT_EQ(c.txtCantidad.Text(), "2,57");
    Clic(c.btnNumerico_Cobro[9]);  // two decimals at most
    EXPECT_EQ(c.txtCantidad.Text(), "2,57");
    Clic(c.cmd_nuevoCobro);
    EXPECT_EQ(c.txtCantidad.Text(), "");
    Clic(c.btnNumerico_Cobro[10]);  // a comma never stands first
    EXPECT_EQ(c.txtCantidad.Text(), "");
    Clic(c.btnNumerico_Cobro[2]);
    Clic(c.cmdAceptarNum);
    EXPECT_EQ(c.FGCaja.TextMatrix(1, kColUnidades), "2");

    // The weight: a comma first gives "0,", three decimals.
    Articulo(9, "2000009", "Queso", "12", 1, 1, true);
    Escanear("2000009");
    ASSERT_EQ(c.ControlActivo, &c.txtPeso);
    Clic(c.btnNumPeso_Cobro[10]);
    for (int tecla : {1, 2, 5, 5}) Clic(c.btnNumPeso_Cobro[tecla]);
    EXPECT_EQ(c.txtPeso.Text(), "0,125");
    Clic(c.cmdAceptarNumPeso);
    EXPECT_EQ(c.ControlActivo, &c.txtPrecio);
    Clic(c.cmdAceptarNumPeso);
    EXPECT_EQ(c.FGCaja.TextMatrix(2, kColImporte), "1,5");

    // Accept with the touch entry last focused does nothing.
    c.txtCodBarras.visible = true;
    c.frTactil.visible = true;
    anfitrion.Accion([&] { c.txtCodBarras.SetFocus(); });
    c.txtCodBarras.SetText("8410001");
    Clic(c.cmdAceptarNum);
    EXPECT_EQ(c.FGCaja.Rows(), 3);
    // The editor's pad writes to its own entry; its erase leaves "0".
    Clic(c.btnNumerico_Lupa[7]);
    EXPECT_EQ(c.txt_ValorLupa.Text(), "7");
    Clic(c.cmd_nuevoLupa);
    EXPECT_EQ(c.txt_ValorLupa.Text(), "0");
    EXPECT_TRUE(Avisos().empty());
}

TEST_P(CajaTactil, Opciones_SeGuardanAlCambiar) {
    sesion().opciones.modopantallacaja = 1;
    frmCaja& c = Abrir();
    // Opening shows what is stored and writes nothing.
    EXPECT_EQ(CLng(Valor("select count(*) from relaciones_fijas where indice <> 'Venta'")), 0);
    EXPECT_TRUE(c.optNombre.Value());
    EXPECT_EQ(c.lbldiasCad.caption, "15 dias");
    Clic(c.cmdObservaciones);
    ASSERT_TRUE(c.frOpcionesCaja.visible);
    Clic(c.chkPideCantidad);
    EXPECT_TRUE(sesion().PedirCantidad);
    EXPECT_EQ(Clave("PedirCantidadProductos"), "SI");
    Clic(c.chkLineaXProducto);
    EXPECT_EQ(Clave("LineaXProducto"), "SI");
    Clic(c.optPosicion);
    EXPECT_EQ(Clave("CampoOrdenItemsCaja"), "Posicion");
    ASSERT_EQ(Avisos().size(), 1u);
    EXPECT_EQ(Avisos()[0],
              "MENSAJE [Modo de Ordenacion] Para que este cambio haga efecto tiene que salir de caja. -> Aceptar");
    anfitrion.Accion([&] { c.slDiasCad.SetValue(4); });
    EXPECT_EQ(c.lbldiasCad.caption, "60 dias");
    EXPECT_EQ(CLng(Valor("select daton from relaciones_fijas where indice = 'DiasCaducidadValeDescuento'")), 60);
    Clic(c.chkCadValeNunca);
    EXPECT_EQ(c.lbldiasCad.caption, "Nunca");
    EXPECT_EQ(c.slDiasCad.Value(), 14);
    EXPECT_EQ(CLng(Valor("select daton from relaciones_fijas where indice = 'DiasCaducidadValeDescuento'")), -1);
}

TEST_P(CajaTactil, CambioDeModo_GuardaElModoYReleePedirCantidad) {
    Ejecutar({"insert into opciones (nombre,modopantallacaja) values ('Tienda',1)",
              "insert into relaciones_fijas (indice,datoa) values ('PedirCantidadProductos','SI')"});
    Sesion& s = sesion();
    s.opciones.modopantallacaja = 1;
    s.PedirCantidad = true;
    frmCaja& c = Abrir();
    Clic(c.cmdCambioTactil);
    EXPECT_FALSE(s.PedirCantidad);
    EXPECT_EQ(Clave("PedirCantidadProductos"), "SI");  // forced off, not stored
    EXPECT_EQ(CLng(Valor("select modopantallacaja from opciones")), 0);
    EXPECT_EQ(c.ActiveControl(), &c.txtCodBarras);
    Clic(c.cmdCambioTactil);
    EXPECT_FALSE(c.frTactil.visible);
    EXPECT_TRUE(s.PedirCantidad);  // read back as stored
    EXPECT_EQ(CLng(Valor("select modopantallacaja from opciones")), 1);
    TeclaFuncion(c.cmdCambioTactil, 5);  // F5: back to the code entry
    EXPECT_EQ(c.ActiveControl(), &c.txtcod);
}

TEST_P(CajaTactil, AbrirCajetin_SecuenciaAlPuerto) {
    Sesion& s = sesion();
    s.PuertoImpresora = "COM1";
    s.SecuenciaApertura = "27|112|0|25|250";
    frmCaja& c = Abrir();
    Clic(c.cmdAbrirCajetin);
    ASSERT_EQ(cajon.size(), 1u);
    EXPECT_EQ(cajon[0].first, "COM1");
    EXPECT_EQ(cajon[0].second, (std::vector<std::uint8_t>{27, 112, 0, 25, 250, 13, 10}));
}

TEST_P(CajaTactil, Temporizadores_EtiquetaMovilImagenYAyuda) {
    frmCaja& c = Abrir();
    c.ModoAbono = true;
    c.Unload();
    c.Show();
    ASSERT_TRUE(c.lblModificacion.visible);
    const double inicio = c.lblModificacion.left;
    anfitrion.Avanzar(500);
    EXPECT_GT(c.lblModificacion.left, inicio);
    // It turns at the exit button and comes back.
    anfitrion.Avanzar(20000);
    EXPECT_GE(c.lblModificacion.left, c.cmdAyuda.left + c.cmdAyuda.width);
    EXPECT_LE(c.lblModificacion.left + c.lblModificacion.width, c.cmd_Salir.left);
    c.ModoAbono = false;
    c.LimpiarPantalla();
    anfitrion.Avanzar(10);
    EXPECT_FALSE(c.tmrMovModificacion.Enabled());  // idle while the label is hidden

    // The enlarged picture goes after five seconds.
    c.picImagen.visible = true;
    c.picImagen.picture = "/fotos/colonia.jpg";
    Clic(c.picImagen);
    EXPECT_EQ(c.imgProdZoom.picture, "/fotos/colonia.jpg");
    anfitrion.Avanzar(4500);
    EXPECT_TRUE(c.frImagen.visible);
    anfitrion.Avanzar(500);
    EXPECT_FALSE(c.frImagen.visible);

    // The help page slides in and out by its timer.
    Clic(c.cmdAyuda);
    EXPECT_TRUE(std::filesystem::exists(c.Open1.pagina)) << c.Open1.pagina;
    anfitrion.Avanzar(1000);
    EXPECT_EQ(c.Open1.top, 0);
    anfitrion.Accion([&] { c.Open1.Cerrar(); });
    anfitrion.Avanzar(1000);
    EXPECT_FALSE(c.tmrAyuda.Enabled());
}

// The sale grid, the total and the finishing button stay in view in both
// modes, nothing lies off the design size, and the buttons are big enough
// for a finger.
TEST_P(CajaTactil, Disposicion_VentaSiempreVisibleYBotonesGrandes) {
    frmCaja& c = Abrir();
    auto absoluto = [](const Control& k, double& x, double& y) {
        x = k.left;
        y = k.top;
        for (const Control* m = k.contenedor; m; m = m->contenedor) {
            x += m->left;
            y += m->top;
        }
    };
    for (const Control& k : c.controles) {
        if (k.tipo == "Timer" || &k == &c.Open1) continue;
        double x, y;
        absoluto(k, x, y);
        EXPECT_GE(x, 0) << k.nombre;
        EXPECT_GE(y, 0) << k.nombre;
        EXPECT_LE(x + k.width, kAnchoDiseno) << k.nombre;
        EXPECT_LE(y + k.height, kAltoDiseno) << k.nombre;
        if (k.tipo == "CommandButton") {
            EXPECT_GE(k.height, 480) << k.nombre;
        }
    }
    for (const Control* k : std::initializer_list<const Control*>{&c.FGCaja, &c.CajaText_Pago, &c.cmdTerminarVenta}) {
        double x, y;
        absoluto(*k, x, y);
        EXPECT_GE(x, c.frTactil.left + c.frTactil.width) << k->nombre << " under the touch panels";
    }
}

TPV_EN_CADA_MOTOR(CajaTactil);

}  // namespace
}  // namespace tpv
