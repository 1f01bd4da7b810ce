// The till screen selling by code: the quantity asked, one line per unit,
// unknown and shared codes, finishing, and a till with no employee.
#include "core/runtime/texto.hpp"
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class CajaCodigo : public prueba::CajaTest {};

TEST_P(CajaCodigo, VenderPorCodigo_CantidadDesconocidoYDuplicado) {
    struct Caso {
        const char* que;
        bool pedirCantidad, lineaXProducto;
        const char* codigo;
        const char* cantidad;   // typed into txtCantidad when it is asked
        long lineas;            // rows of the sale in the table
        const char* unidades;   // units of the first grid row
        const char* nombre;     // lblnomProd afterwards
        const char* articulos;  // txtTArticulos afterwards
        const char* entrada;    // txtcod afterwards; an unknown code is left selected
        std::size_t avisos;
    } casos[] = {
        // The articles are counted from the grid as the last product's name
        // changes; the line routine then adds the quantity to that count.
        {"con cantidad", true, false, "8410001", "3", 1, "3", "Colonia", "6", "0", 0},
        {"una linea por unidad", true, true, "8410001", "3", 3, "1", "Colonia", "4", "0", 0},
        {"fraccion en una linea", true, true, "8410001", "2,5", 1, "2,5", "Colonia", "4,5", "0", 0},
        {"desconocido", false, false, "999", nullptr, 0, "", "Producto no encontrado", "0", "999", 0},
        {"duplicado", false, false, "55", nullptr, 0, "", "", "0", "55", 1},
        {"letras y signos", false, false, "ab-c$%", nullptr, 0, "", "Producto no encontrado", "0", nullptr, 0},
    };
    Articulo(5, "8410001", "Colonia", "10");
    Articulo(7, "55", "Crema A", "3");
    Articulo(8, "55", "Crema B", "3");
    for (const Caso& k : casos) {
        SCOPED_TRACE(k.que);
        Sesion& s = sesion();
        s.PedirCantidad = k.pedirCantidad;
        s.LineaXProducto = k.lineaXProducto;
        lineas.clear();
        frmCaja& c = Abrir();
        c.cmdNuevaVenta_Click();
        Escanear(k.codigo);
        if (k.cantidad) {
            EXPECT_EQ(c.ActiveControl(), &c.txtCantidad);
            EXPECT_EQ(c.txtCantidad.Text(), "1");
            Teclear(c.txtCantidad, k.cantidad);
            Intro(c.txtCantidad);
            EXPECT_FALSE(c.txtCantidad.visible);
        }
        const std::int32_t venta = CLng(Value(c.lblNumVenta.caption.empty() ? "0" : c.lblNumVenta.caption));
        EXPECT_EQ(LineasDe(venta), k.lineas);
        EXPECT_EQ(c.FGCaja.TextMatrix(1, kColUnidades), k.unidades);
        EXPECT_EQ(c.lblnomProd.caption, k.nombre);
        EXPECT_EQ(c.VentaNueva, k.lineas == 0);
        EXPECT_EQ(c.cmdTerminarVenta.visible, k.lineas > 0);
        EXPECT_EQ(c.txtTArticulos.Text(), k.articulos);
        if (k.entrada) {
            EXPECT_EQ(c.txtcod.Text(), k.entrada);
        }
        if (k.lineas == 0 && k.avisos == 0) {
            EXPECT_EQ(c.txtcod.selLength, Len(c.txtcod.Text()));
        }
        EXPECT_EQ(Avisos().size(), k.avisos);
        c.Unload();
    }
}

TEST_P(CajaCodigo, TerminarVenta_GridVaciaCobradaYSinCobrar) {
    Articulo(5, "8410001", "Colonia", "10");
    frmCaja& c = Abrir();
    int cobros = 0;
    bool cobrar = false;
    c.MostrarCobro = [&] {
        ++cobros;
        EXPECT_FALSE(c.cmdTerminarVenta.enabled);
        c.VentaCobrada = cobrar;
        c.txtTotal_U_V.SetText("10,00");
    };
    TeclaFuncion(c.txtcod, 9);  // F9 with nothing sold
    EXPECT_EQ(cobros, 0);

    Escanear("8410001");
    TeclaFuncion(c.txtcod, 9);  // left without paying: the sale stays
    EXPECT_EQ(cobros, 1);
    EXPECT_TRUE(c.cmdTerminarVenta.enabled);
    EXPECT_FALSE(c.VentaNueva);
    EXPECT_EQ(c.FGCaja.TextMatrix(1, 0), "Colonia");

    cobrar = true;
    Clic(c.cmdTerminarVenta);
    EXPECT_EQ(cobros, 2);
    EXPECT_TRUE(c.VentaNueva);
    EXPECT_EQ(c.lblNumVenta.caption, "");
    EXPECT_TRUE(c.frUltimaVenta.visible);
    EXPECT_EQ(c.txtTotal_U_V.Text(), "10,00");
    // The next key hides the last sale's figures.
    Teclear(c.txtcod, "8");
    EXPECT_FALSE(c.frUltimaVenta.visible);
}

TEST_P(CajaCodigo, EmpleadoMenosUno_CambiaDeEmpleadoSinVender) {
    Articulo(5, "8410001", "Colonia", "10");
    frmCaja& c = Abrir();
    sesion().CodigoEmpleadoActual = -1;
    Escanear("8410001");
    EXPECT_FALSE(c.Cargada());
    EXPECT_TRUE(Unica<frmPrincipalCantarel>().Cargada());
    EXPECT_EQ(CLng(Valor("select count(*) from cabecera_factura_temp")), 0);
    EXPECT_EQ(CLng(Valor("select count(*) from detalle_factura_temp")), 0);
}

TPV_EN_CADA_MOTOR(CajaCodigo);

}  // namespace
}  // namespace tpv
