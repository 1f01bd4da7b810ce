// The customer of the sale on the till: a card read into txtNomCliente and
// its silent fallback, what the till shows of a customer, the search left
// without a choice, the product search, the new card cancelled, the history
// tool, the debt's panel and the program of payments on account.
#include <cstdlib>

#include "core/servicios/suite_launcher.hpp"
#include "core/sesion/clientes.hpp"
#include "screens/frm_buscar.hpp"
#include "screens/frm_clientes.hpp"
#include "tests/core/servicios/entorno_prueba.hpp"
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class CajaClientes : public prueba::CajaTest {
protected:
    void SetUp() override {
        CajaTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({
            "insert into clientes (codigo,codigocliente,nombre,apellidos,descuento,activardindep,dindep,borrar) "
            "values (0,'0','Cliente','Generico',0,0,0,0)",
            "insert into clientes (codigo,codigocliente,nombre,apellidos,descuento,activardindep,dindep,borrar) "
            "values (4,'C4','Ana','Gil Sanz',10,0,0,0)",
            "insert into clientes (codigo,codigocliente,nombre,apellidos,descuento,activardindep,dindep,borrar) "
            "values (5,'C5','Luis','Mora',0,-1,50,0)",
            "insert into clientes (codigo,codigocliente,nombre,apellidos,borrar) values (6,'C6','Eva','Borrada',-1)",
            "insert into cabecera_pago (num_pago,num_factura,cliente,importe,estado) values (1,90,5,30,0)",
            "insert into detalle_pago (num_pago,importe) values (1,12.5)",
        });
        CargarClientes();
        // Added on another till after this one started: in the table only.
        Ejecutar({"insert into clientes (codigo,codigocliente,nombre,apellidos,borrar) values (7,'C7','Tardio','X',0)"});
        Articulo(1, "111", "Colonia", "10");
    }
    void TearDown() override {
        SuiteLauncher::FijarGrabador(nullptr);
        Unica<frmBuscar>().Unload();
        Unica<frmClientes>().Unload();
        CajaTest::TearDown();
    }

    std::string ClienteDeVenta(const std::string& numero) {
        return CStr(Valor("select cliente from cabecera_factura_temp where numero = " + numero));
    }
};

TEST_P(CajaClientes, TarjetaLeida_ClienteOFallbackSilencioso) {
    struct Caso {
        const char* tarjeta;
        const char* codigo;     // lblCodCliente afterwards
        const char* nombre;     // txtNomCliente afterwards
        const char* cabecera;   // the open sale's customer afterwards
        const char* descuento;  // lblDescuentoInfo
    } casos[] = {
        {"C4", "4", "Ana Gil Sanz", "4", "Aplicar 10% de descuento segun ficha."},
        // The fallback leaves the last card's discount offer where it was.
        {"ZZ", "0", "Cliente Generico", "0", "Aplicar 10% de descuento segun ficha."},
        {"C4", "4", "Ana Gil Sanz", "4", "Aplicar 10% de descuento segun ficha."},
        {"C6", "0", "Cliente Generico", "0", "Aplicar 10% de descuento segun ficha."},  // deleted: not found
        {"C4", "4", "Ana Gil Sanz", "4", "Aplicar 10% de descuento segun ficha."},
        // In the table but not in the list: the code changes, the screen and the sale don't.
        {"C7", "7", "C7", "4", ""},
    };
    frmCaja& c = Abrir();
    Escanear("111");
    const std::string venta = c.lblNumVenta.caption;
    ASSERT_FALSE(venta.empty());
    for (const Caso& k : casos) {
        SCOPED_TRACE(k.tarjeta);
        Clic(c.txtNomCliente);
        Teclear(c.txtNomCliente, k.tarjeta);
        Intro(c.txtNomCliente);
        EXPECT_EQ(c.lblCodCliente.caption, k.codigo);
        EXPECT_EQ(c.txtNomCliente.Text(), k.nombre);
        EXPECT_EQ(ClienteDeVenta(venta), k.cabecera);
        EXPECT_EQ(c.lblDescuentoInfo.caption, k.descuento);
    }
    EXPECT_TRUE(Avisos().empty());

    // With no sale open the customer stays on the screen, and the next sale takes it.
    c.cmdNuevaVenta_Click();
    c.txtNomCliente.SetText("C4");
    int intro = vbKeyReturn;
    c.txtNomCliente_KeyPress(intro);
    Escanear("111");
    EXPECT_EQ(ClienteDeVenta(c.lblNumVenta.caption), "4");

    // An apostrophe on the card breaks the lookup's statement: a run-time
    // error is shown, nothing changes, and the till goes on selling.
    const std::int32_t otra = CLng(Value(c.lblNumVenta.caption));
    c.txtNomCliente.SetText("O'B");
    Intro(c.txtNomCliente);
    ASSERT_EQ(Avisos().size(), 1u);
    EXPECT_TRUE(Avisos()[0].starts_with("ERROR")) << Avisos()[0];
    EXPECT_EQ(c.lblCodCliente.caption, "4");
    EXPECT_EQ(ClienteDeVenta(c.lblNumVenta.caption), "4");
    Escanear("111");
    EXPECT_DOUBLE_EQ(
        CDbl(Valor("select sum(unidades) from detalle_factura_temp where num_factura = " + std::to_string(otra))), 2);
}

TEST_P(CajaClientes, MostrarResultado_DeudaSaldoYSinEleccion) {
    frmCaja& c = Abrir();
    c.lblCodCliente.caption = "5";
    c.MostrarResultadoBusqueda();
    EXPECT_EQ(c.lblImpDeuda.caption, "17,50");  // 30 owed, 12,50 paid
    EXPECT_TRUE(c.cmdIngDeposito.visible);
    EXPECT_EQ(c.cmdIngDeposito.caption, "50\r\nSaldo a favor");
    EXPECT_TRUE(c.tmrDinDep.Enabled());
    EXPECT_EQ(c.lblDescuentoInfo.caption, "");

    // The generic customer shows its name and no more; "-1" leaves all as it is.
    c.lblCodCliente.caption = "0";
    c.MostrarResultadoBusqueda();
    EXPECT_EQ(c.txtNomCliente.Text(), "Cliente Generico");
    EXPECT_TRUE(c.cmdIngDeposito.visible);
    c.lblCodCliente.caption = "-1";
    c.txtNomCliente.SetText("sin tocar");
    c.MostrarResultadoBusqueda();
    EXPECT_EQ(c.txtNomCliente.Text(), "sin tocar");
}

// Left with F4: "-1" on the till, the sale keeps its customer.
TEST_P(CajaClientes, BuscarCliente_SalirSinEleccion) {
    frmCaja& c = Abrir();
    c.lblCodCliente.caption = "4";
    c.txtNomCliente.SetText("Ana Gil Sanz");
    Escanear("111");
    const std::string venta = c.lblNumVenta.caption;
    frmBuscar& b = Unica<frmBuscar>();
    Guion({[&] { TeclaFuncion(b.txtnombre, 4); }});
    Clic(c.cmdBuscarCliente);
    EXPECT_EQ(c.lblCodCliente.caption, "-1");
    EXPECT_EQ(c.txtNomCliente.Text(), "Ana Gil Sanz");
    EXPECT_EQ(ClienteDeVenta(venta), "4");
}

TEST_P(CajaClientes, BuscarProducto_F6VendeElElegido) {
    frmCaja& c = Abrir();
    frmBuscar& b = Unica<frmBuscar>();
    Guion({[&] {
        EXPECT_TRUE(b.FrProd.visible);
        EXPECT_FALSE(b.FrCli.visible);
        Teclear(b.txtNombreProd, "col");
        b.ListBusClie.SetListIndex(0);
        anfitrion.Accion([&] { b.ListBusClie.DblClick(); });
    }});
    TeclaFuncion(c.txtcod, 6);
    // Without a quantity to ask, the product found is sold at once.
    EXPECT_EQ(c.lblnomProd.caption, "Colonia");
    EXPECT_EQ(c.FGCaja.TextMatrix(1, 0), "Colonia");
    EXPECT_FALSE(c.lblNumVenta.caption.empty());
}

// A new card cancelled: "-1" on the till, the sale keeps its customer.
TEST_P(CajaClientes, NuevoCliente_CanceladoNoCambiaLaVenta) {
    frmCaja& c = Abrir();
    c.lblCodCliente.caption = "4";
    Escanear("111");
    const std::string venta = c.lblNumVenta.caption;
    Guion({[&] { Clic(Unica<frmClientes>().cmdCancelar); }});
    Clic(c.Command10);
    EXPECT_EQ(c.lblCodCliente.caption, "-1");
    EXPECT_EQ(ClienteDeVenta(venta), "4");
}

TEST_P(CajaClientes, Historico_DejaElClienteEnPasardatosYVuelveALaBase) {
    ::setenv("TPV_DATABASE", uri.c_str(), 1);
    std::vector<std::string> lanzados;
    SuiteLauncher::FijarGrabador(
        [&](const std::string& programa, const std::string& titulo) { lanzados.push_back(programa + "|" + titulo); });
    Ejecutar({"insert into pasardatos (indice,terminal,texto2) values ('Otro','PC1','1')",
              "insert into pasardatos (indice,terminal,texto2) values ('Otro','PC1','2')",
              "insert into pasardatos (indice,terminal,texto2) values ('Otro','PC2','3')"});
    frmCaja& c = Abrir();
    c.lblCodCliente.caption = "-1";
    Clic(c.bt_historico);
    EXPECT_TRUE(lanzados.empty());

    c.lblCodCliente.caption = "4";
    Clic(c.bt_historico);
    ::unsetenv("TPV_DATABASE");
    ASSERT_EQ(lanzados.size(), 1u);
    EXPECT_EQ(lanzados[0], "historico_clientes|Historico Clientes");
    ASSERT_TRUE(sesion().Conexion.IsOpen());
    Recordset rs;
    rs.Open("select indice,terminal,texto2 from pasardatos order by terminal", sesion().Conexion, adOpenStatic);
    ASSERT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(CStr(rs.Get("indice")) + CStr(rs.Get("terminal")) + CStr(rs.Get("texto2")), "CantarelPC14");
    rs.MoveNext();
    EXPECT_EQ(CStr(rs.Get("terminal")), "PC2");
    rs.Close();
    EXPECT_TRUE(Avisos().empty());
}

// The debt's panel goes after its time and goes back to its place for the
// next customer.
TEST_P(CajaClientes, PanelDeDeuda_SeVaTrasSeisMilTicksYVuelveASuSitio) {
    frmCaja& c = Abrir();
    const double izquierda = c.frDeuda.left, arriba = c.frDeuda.top;
    c.frDeuda.visible = true;
    c.frDeuda.left = izquierda + 500;  // moved meanwhile
    c.tmrfinDeuda.SetEnabled(true);
    anfitrion.Avanzar(5999);
    EXPECT_TRUE(c.frDeuda.visible);
    EXPECT_TRUE(c.tmrfinDeuda.enabled);
    anfitrion.Avanzar(1);
    EXPECT_FALSE(c.frDeuda.visible);
    EXPECT_FALSE(c.tmrfinDeuda.enabled);
    EXPECT_EQ(c.frDeuda.left, izquierda);
    EXPECT_EQ(c.frDeuda.top, arriba);
    // The count starts again for the next customer.
    c.frDeuda.visible = true;
    c.tmrfinDeuda.SetEnabled(true);
    anfitrion.Avanzar(5999);
    EXPECT_TRUE(c.frDeuda.visible);
}

// The program of payments on account may be named in the settings; one that
// can't be started leaves the till as it was.
TEST_P(CajaClientes, IrAPagos_LanzaElProgramaDePagosACuenta) {
    frmCaja& c = Abrir();
    std::vector<std::string> lanzados;
    SuiteLauncher::FijarGrabador(
        [&](const std::string& programa, const std::string& titulo) { lanzados.push_back(programa + " " + titulo); });
    {
        prueba::AjustesTemporales ajustes("programa_pagos=cobros\n");
        Clic(c.cmdIrAPagos);
    }
    SuiteLauncher::FijarGrabador(nullptr);
    EXPECT_EQ(lanzados, (std::vector<std::string>{"cobros Pagos a Cuenta"}));

    prueba::AjustesTemporales ajustes("carpeta_programas=" + prueba::AjustesTemporales::CarpetaTemporal() +
                                      "\nprograma_pagos=no_existe_pagos\n");
    Clic(c.cmdIrAPagos);
    EXPECT_TRUE(Avisos().empty());
    EXPECT_TRUE(c.Cargada());
}

TPV_EN_CADA_MOTOR(CajaClientes);

}  // namespace
}  // namespace tpv
