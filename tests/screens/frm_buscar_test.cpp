// The search screen in both faces: what each box filters on, the product
// statements, an apostrophe typed in a search box, the on-screen keyboard,
// the Enter walk and the clean button.
#include <functional>
#include <vector>

#include "screens/frm_buscar.hpp"
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class Buscar : public prueba::CajaTest {
protected:
    void SetUp() override {
        CajaTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({
            "insert into clientes (codigo,codigocliente,nombre,apellidos,telefono1,telefono2,email,borrar) values "
            "(1,'101','Ana','Gil','961000','600111','ana@correo.es',0)",
            "insert into clientes (codigo,codigocliente,nombre,apellidos,telefono1,telefono2,email,borrar) values "
            "(2,'1010','Andrés','Ruiz','962000','611222','12345678Z',0)",
            "insert into clientes (codigo,codigocliente,nombre,apellidos,telefono1,telefono2,email,borrar) values "
            "(3,'102','Begoña','Gil','961500','622333','bego@correo.es',0)",
            "insert into clientes (codigo,codigocliente,nombre,apellidos,email,borrar) values "
            "(4,'103','Anabel','Borrada','x@y.es',-1)",
            "insert into seccion (codigo,nombre,borrar) values (1,'Perfumes',0)",
            "insert into seccion (codigo,nombre,borrar) values (2,'Droguería',0)",
            "insert into proveedores (codigo,nombre,borrar) values (1,'Aromas SL',0)",
            "insert into proveedores (codigo,nombre,borrar) values (2,'Limpia SA',0)",
            "insert into productos_codigosextra (codigo,codigo_extra) values (3,'EXTRA9')",
        });
        Articulo(1, "8401", "Colonia fresca", "12.5", 1, 1);
        Articulo(2, "8402", "Colonia intensa", "20", 1, 1);
        Articulo(3, "8403", "Jabón", "3.2", 2, 2);
        Articulo(4, "8404", "Colonia vieja", "12.5", 1, 1);
        Ejecutar({"update productos set borrar = -1 where codigo = 4"});
    }
    void TearDown() override {
        Unica<frmBuscar>().Unload();
        CajaTest::TearDown();
    }
    frmBuscar& Mostrar(const char* modo) {
        Unica<frmCaja>().ModoBusqueda = modo;
        frmBuscar& b = Unica<frmBuscar>();
        b.Show();
        return b;
    }
    static std::vector<std::string> Filas(const ListBox& l) {
        std::vector<std::string> r;
        for (long i = 0; i < l.ListCount(); ++i) r.push_back(l.List(i));
        return r;
    }
    using Filas_t = std::vector<std::string>;
};

TEST_P(Buscar, Clientes_CadaCajaFiltraSuColumna) {
    frmBuscar& b = Mostrar("Cl");
    EXPECT_TRUE(b.FrCli.visible);
    EXPECT_FALSE(b.FrProd.visible);
    struct Caso {
        TextBox frmBuscar::*caja;
        const char* texto;
        Filas_t nombres;
        Filas_t codigos;
    } casos[] = {
        {&frmBuscar::txtapellidos, "gil", {"Ana Gil", "Begoña Gil"}, {"1", "3"}},
        {&frmBuscar::txtTelefono, "961", {"Ana Gil", "Begoña Gil"}, {"1", "3"}},
        {&frmBuscar::txtMovil, "61", {"Andrés Ruiz"}, {"2"}},
        // The card code has no wild card: "101" is not "1010".
        {&frmBuscar::txtcodigo, "101", {"Ana Gil"}, {"1"}},
        {&frmBuscar::txtEmail, "bego", {"Begoña Gil"}, {"3"}},
        // The D.N.I. box searches the e-mail column.
        {&frmBuscar::txtDNI, "12345678", {"Andrés Ruiz"}, {"2"}},
        {&frmBuscar::txtDNI, "ana@", {"Ana Gil"}, {"1"}},
        {&frmBuscar::txtnombre, "%", {"Ana Gil", "Andrés Ruiz", "Begoña Gil"}, {"1", "2", "3"}},
    };
    for (const Caso& k : casos) {
        SCOPED_TRACE(k.texto);
        anfitrion.Accion([&] { b.cmdLimpiar_Click(); });
        (b.*k.caja).SetText(k.texto);
        anfitrion.Accion([&] { b.cmdbuscar_Click(); });
        EXPECT_EQ(Filas(b.ListBusClie), k.nombres);
        EXPECT_EQ(Filas(b.Auxiliar), k.codigos);
    }
    // "%" is shown back as "*"; every box empty still lists everyone.
    EXPECT_EQ(b.txtnombre.Text(), "*");
    anfitrion.Accion([&] { b.cmdLimpiar_Click(); });
    EXPECT_EQ(b.ListBusClie.ListCount(), 0);
    EXPECT_EQ(b.fechadesde.Value(), DateSerial(2000, 1, 1));
    anfitrion.Accion([&] { b.cmdbuscar_Click(); });
    EXPECT_EQ(b.ListBusClie.ListCount(), 3);
    b.txtTelefono.SetText("999");
    anfitrion.Accion([&] { b.cmdbuscar_Click(); });
    EXPECT_EQ(b.ListBusClie.ListCount(), 0);
    EXPECT_EQ(Avisos(), (Filas_t{"MENSAJE [Buscar] No existe ningún cliente con esas condiciones -> Aceptar"}));
}

TEST_P(Buscar, Productos_NombrePrecioSeccionProveedorYBarras) {
    frmBuscar& b = Mostrar("Pr");
    EXPECT_FALSE(b.FrCli.visible);
    EXPECT_EQ(Filas(b.cmbComboProductos), (Filas_t{"Droguería", "Perfumes"}));
    EXPECT_EQ(Filas(b.cmb_AuxComboProductos), (Filas_t{"2", "1"}));
    EXPECT_EQ(Filas(b.cbProveedor), (Filas_t{"Aromas SL", "Limpia SA"}));
    struct Caso {
        const char* que;
        const char* nombre;
        const char* precio;
        const char* codigo;
        long seccion, proveedor;  // list index, -1 none
        const char* barras;
        Filas_t nombres;
    } casos[] = {
        {"todo", "", "", "", -1, -1, "", {"Colonia fresca", "Colonia intensa", "Jabón"}},
        {"nombre y precio con coma", "col", "12,5", "", -1, -1, "", {"Colonia fresca"}},
        {"seccion", "*", "", "", 0, -1, "", {"Jabón"}},
        {"proveedor", "", "", "", -1, 0, "", {"Colonia fresca", "Colonia intensa"}},
        {"codigo con comodin", "", "", "840", -1, -1, "", {"Colonia fresca", "Colonia intensa", "Jabón"}},
        // The bar code replaces the statement and ignores borrar.
        {"barras de un borrado", "zz", "", "", -1, -1, "8404", {"Colonia vieja"}},
        {"barras extra", "", "", "", -1, -1, "EXTRA9", {"Jabón"}},
    };
    for (const Caso& k : casos) {
        SCOPED_TRACE(k.que);
        anfitrion.Accion([&] { b.cmdLimpiar_Click(); });
        b.txtNombreProd.SetText(k.nombre);
        b.txtPrecioProd.SetText(k.precio);
        b.txtCodigoProd.SetText(k.codigo);
        b.txtCodBarras.SetText(k.barras);
        b.cmbComboProductos.SetListIndex(k.seccion);
        b.cbProveedor.SetListIndex(k.proveedor);
        anfitrion.Accion([&] { b.cmdbuscar_Click(); });
        EXPECT_EQ(Filas(b.ListBusClie), k.nombres);
        EXPECT_EQ(b.Auxiliar.ListCount(), b.ListBusClie.ListCount());
    }
    EXPECT_TRUE(Avisos().empty());
    anfitrion.Accion([&] { b.cmdLimpiar_Click(); });
    EXPECT_EQ(b.txtNombreProd.Text(), "");
    anfitrion.Accion([&] { b.cmdbuscar_Click(); });
    EXPECT_EQ(b.txtNombreProd.Text(), "*");
    b.txtPrecioProd.SetText("99");
    anfitrion.Accion([&] { b.cmdbuscar_Click(); });
    EXPECT_EQ(Avisos(), (Filas_t{"MENSAJE [Buscar] No existe ningún servicio con esas condiciones -> Aceptar"}));
}

TEST_P(Buscar, Apostrofe_RompeLaSentenciaYLaCajaSigue) {
    frmBuscar& b = Mostrar("Pr");
    Teclear(b.txtNombreProd, "d'o");
    ASSERT_EQ(Avisos().size(), 1u);
    EXPECT_TRUE(Avisos()[0].starts_with("ERROR")) << Avisos()[0];
    EXPECT_TRUE(b.Cargada());
    // "*" takes the branch that doubles the apostrophe: nothing breaks.
    anfitrion.Accion([&] { b.cmdLimpiar_Click(); });
    b.txtNombreProd.SetText("*");
    anfitrion.Accion([&] { b.cmdbuscar_Click(); });
    EXPECT_EQ(b.ListBusClie.ListCount(), 3);
    EXPECT_EQ(Avisos().size(), 1u);
    b.Unload();

    frmBuscar& c = Mostrar("Cl");
    Teclear(c.txtapellidos, "o'b");
    anfitrion.Accion([&] { c.cmdbuscar_Click(); });
    ASSERT_EQ(Avisos().size(), 2u);
    EXPECT_TRUE(Avisos()[1].starts_with("ERROR")) << Avisos()[1];
    anfitrion.Accion([&] { c.cmdLimpiar_Click(); });
    Teclear(c.txtnombre, "beg");
    EXPECT_EQ(Filas(c.ListBusClie), (Filas_t{"Begoña Gil"}));
}

TEST_P(Buscar, Teclado_CambiarFocoYTeclasDeFuncion) {
    frmBuscar& b = Mostrar("Cl");
    auto tecla = [&](int codigo) {
        for (std::size_t i = 0; i < kCodigosTeclado.size(); ++i)
            if (kCodigosTeclado[i] == codigo) return Clic(b.bt_letra[i]);
        FAIL() << codigo;
    };
    b.txtapellidos.SetFocus();
    for (int c : {int('G'), int('I'), int('L'), 8, 209, int(','), int(' ')}) tecla(c);
    EXPECT_EQ(b.txtapellidos.Text(), "GIÑ, ");
    b.txtapellidos.selStart = 0;
    b.txtapellidos.selLength = 5;
    tecla('A');
    EXPECT_EQ(b.txtapellidos.Text(), "A");
    // The telephone boxes take digits only.
    b.txtTelefono.SetFocus();
    for (int c : {int('A'), int('9'), int(','), int('6'), 8, int('1')}) tecla(c);
    EXPECT_EQ(b.txtTelefono.Text(), "91");
    tecla(13);  // runs the search
    EXPECT_EQ(Filas(b.Auxiliar), (Filas_t{}));

    // Enter walks the customer boxes round.
    b.txtnombre.SetFocus();
    for (const char* siguiente :
         {"txtapellidos", "txtTelefono", "txtMovil", "txtcodigo", "txtEmail", "txtDNI", "txtnombre"}) {
        Intro(*b.ActiveControl());
        EXPECT_EQ(b.ActiveControl()->nombre, siguiente);
    }

    // F1 searches, F3 takes the first row, F2 cleans, F4 leaves without a choice.
    anfitrion.Accion([&] { b.cmdLimpiar_Click(); });
    b.txtapellidos.SetText("gil");
    TeclaFuncion(b.txtapellidos, 1);
    EXPECT_EQ(b.ListBusClie.ListCount(), 2);
    TeclaFuncion(b.txtapellidos, 3);
    EXPECT_EQ(b.ActiveControl(), &b.ListBusClie);
    EXPECT_EQ(b.ListBusClie.ListIndex(), 0);
    TeclaFuncion(b.ListBusClie, 2);
    EXPECT_EQ(b.ListBusClie.ListCount(), 0);
    EXPECT_EQ(b.txtapellidos.Text(), "");
    EXPECT_EQ(b.ActiveControl(), &b.txtnombre);

    // Over a wholly selected name the box is emptied, then takes the key: its
    // live search runs on both texts.
    b.txtnombre.SetText("Zo");  // nobody: its box
    b.txtnombre.selStart = 0;
    b.txtnombre.selLength = 2;
    lineas.clear();
    Filas_t busquedas;
    const std::function<void()> buscar = b.txtnombre.Change;
    b.txtnombre.Change = [&] {
        busquedas.push_back(b.txtnombre.Text());
        buscar();
    };
    tecla('B');
    b.txtnombre.Change = buscar;
    EXPECT_EQ(busquedas, (Filas_t{"", "B"}));
    EXPECT_EQ(Filas(b.ListBusClie), (Filas_t{"Begoña Gil"}));
    EXPECT_TRUE(Avisos().empty());  // the empty name finds every customer: no box

    Unica<frmCaja>().lblCodCliente.caption = "0";
    TeclaFuncion(b.txtnombre, 4);
    EXPECT_FALSE(b.Cargada());
    EXPECT_EQ(Unica<frmCaja>().lblCodCliente.caption, "-1");
}

TPV_EN_CADA_MOTOR(Buscar);

}  // namespace
}  // namespace tpv
