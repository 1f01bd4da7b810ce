#include "sale/busqueda.hpp"

#include <gtest/gtest.h>

#include "tests/core/runtime/error_esperado.hpp"
#include "tests/sale/venta_prueba.hpp"
#include "tests/support/mensajes_guionados.hpp"

namespace tpv {
namespace {

class Busqueda : public prueba::VentaTest {
protected:
    void SetUp() override {
        VentaTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({
            "insert into productos (codigo,codigocliente,nombre,precio,stock,ubicacionprincipal,imagen,modoventa) "
            "values (10,'8410001','Champu',3.5,12,'P02 - C01 - F03','champu.jpg',-1)",
            "insert into productos (codigo,codigocliente,nombre,precio) values (11,'8410002','Gel',null)",
            "insert into productos (codigo,codigocliente,nombre,precio,borrar) values (12,'8410003','Retirado',1,-1)",
            "insert into productos (codigo,codigocliente,nombre,precio,mostrarencaja) values "
            "(13,'8410004','Oculto',1,0)",
            "insert into productos (codigo,codigocliente,nombre,precio) values (14,'DUP','Primero',1)",
            "insert into productos (codigo,codigocliente,nombre,precio) values (15,'8410005','Segundo',1)",
            "insert into productos (codigo,codigocliente,nombre,precio) values (40000,'GRANDE','Grande',1)",
            "insert into productos_codigosextra (codigo,codigo_extra) values (10,'EXTRA10')",
            "insert into productos_codigosextra (codigo,codigo_extra) values (10,'8410001')",
            "insert into productos_codigosextra (codigo,codigo_extra) values (15,'DUP')",
        });
    }
};

TEST_P(Busqueda, PorCodigoBarras_EtiquetaCodigoExtraYDuplicados) {
    prueba::MensajesGuionados cajas;
    ProductoEncontrado p;
    struct Caso {
        const char* codigo;
        int esperado;
    } casos[] = {
        {"8410001", 10},                                     // by the label and by an extra code: one row
        {"EXTRA10", 10},  {"8410002", 11}, {"8410003", -1},  // withdrawn
        {"8410004", -1},                                     // not shown at the till
        {"NOEXISTE", -1}, {"", -1},        {"EXTRA1_", 10},  // a wild card the user types works as one
    };
    for (const Caso& c : casos) EXPECT_EQ(BuscarPorCodigoBarras(c.codigo, p), c.esperado) << c.codigo;
    EXPECT_TRUE(cajas.mostradas.empty());

    EXPECT_EQ(BuscarPorCodigoBarras("8410001", p), 10);
    EXPECT_EQ(p.nombre, "Champu");
    EXPECT_EQ(p.stock, 12);
    EXPECT_EQ(p.UbicacionPrincipal, "P02 - C01 - F03");
    EXPECT_EQ(p.imagen, "champu.jpg");
    EXPECT_TRUE(p.modoventa);
    EXPECT_EQ(p.precio, 3.5);
    // NULLs take their defaults; a miss clears what the last hit left.
    EXPECT_EQ(BuscarPorCodigoBarras("8410002", p), 11);
    EXPECT_EQ(p.UbicacionPrincipal, "P01 - C01 - F01");
    EXPECT_EQ(p.imagen, "");
    EXPECT_FALSE(p.modoventa);
    EXPECT_EQ(p.precio, 0);
    EXPECT_EQ(BuscarPorCodigoBarras("NOEXISTE", p), -1);
    EXPECT_EQ(p.nombre, "");

    // One product's extra code on another's label: both names in the box.
    EXPECT_EQ(BuscarPorCodigoBarras("DUP", p), kCodigoDuplicado);
    ASSERT_EQ(cajas.mostradas.size(), 1u);
    const CajaMensaje& caja = cajas.mostradas[0];
    EXPECT_EQ(caja.titulo, "Codigos Duplicados");
    EXPECT_EQ(caja.estilo, vbCritical);
    const bool primeroAntes = caja.texto.find("Primero") < caja.texto.find("Segundo");
    EXPECT_EQ(caja.texto,
              "El codigo de barras introducido pertenece a más de un producto diferente. Los productos con este "
              "codigo de barras son: \r\n" +
                  std::string(primeroAntes ? "\r\nPrimero\r\nSegundo" : "\r\nSegundo\r\nPrimero") +
                  "\r\n\r\nCambie el codigo de barras para continuar con la venta.");

    // The code of a line must fit 16 bits.
    EXPECT_EQ(prueba::ErrorDe([&] { BuscarPorCodigoBarras("GRANDE", p); }).numero, kErrOverflow);
}

TEST_P(Busqueda, PorCodigoBarras_LoQueMandeElLectorNoRompeNada) {
    prueba::MensajesGuionados cajas;
    ProductoEncontrado p;
    // An apostrophe would end the literal: the statement is refused whole,
    // with its text in the error, and nothing of it runs.
    const prueba::ErrorVisto e = prueba::ErrorDe([&] { BuscarPorCodigoBarras("x' or 'a'='a", p); });
    EXPECT_EQ(e.numero, kErrDatabase);
    EXPECT_NE(e.mensaje.find("like 'x' or 'a'='a'"), std::string::npos) << e.mensaje;
    EXPECT_TRUE(cajas.mostradas.empty());
    EXPECT_EQ(prueba::ErrorDe([&] { BuscarPorCodigoBarras("84'10", p); }).numero, kErrDatabase);

    const std::string raros[] = {
        std::string("8410\0"
                    "001",
                    8),
        "\x01\x02\x1b[2J\t\r\n",
        "\xff\xfe\xc3",
        "\xc3\xb1\xe2\x82",
        std::string(5000, '9'),
        "%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%x",
        "]]][[[",
        ";drop table productos",
    };
    for (const std::string& c : raros) EXPECT_EQ(BuscarPorCodigoBarras(c, p), -1);
    EXPECT_EQ(CLng(Valor("select count(*) from productos")), 7);
}

TEST_P(Busqueda, PorCodigoYParaLupa) {
    ProductoEncontrado p;
    EXPECT_EQ(BuscarPorCodigo(13, p), 13);  // not shown at the till, still sold by its code
    EXPECT_EQ(p.nombre, "Oculto");
    EXPECT_EQ(BuscarPorCodigo(12, p), -1);  // withdrawn
    EXPECT_EQ(BuscarPorCodigo(99, p), -1);

    std::string etiqueta = "antes";
    EXPECT_EQ(BuscarParaLupa(12, p, etiqueta), 12);  // the line editor sees withdrawn products
    EXPECT_EQ(etiqueta, "8410003");
    EXPECT_EQ(BuscarParaLupa(10, p, etiqueta), 10);  // two extra codes: the first row
    EXPECT_EQ(p.nombre, "Champu");
    EXPECT_EQ(BuscarParaLupa(99, p, etiqueta), -1);
    EXPECT_EQ(etiqueta, "");
}

TEST_P(Busqueda, PedidoPendiente_SoloElMasNuevoYDesdeHoy) {
    Ejecutar({
        "insert into pedidos (cod,cliente,entrega) values (1,5,#11/20/2026#)",
        "insert into pedidos (cod,cliente,entrega) values (2,5,#11/15/2026#)",
        "insert into pedidos (cod,cliente,entrega) values (3,5,#11/14/2026#)",
        "insert into pedidosdet (pedido,producto,unidades) values (1,10,9)",
        "insert into pedidosdet (pedido,producto,unidades) values (2,10,4)",
        "insert into pedidosdet (pedido,producto,unidades) values (1,11,2)",
        "insert into pedidosdet (pedido,producto,unidades) values (3,11,6)",
    });
    std::string entrega = "x";
    EXPECT_EQ(LeerPedidoPendiente(10, entrega), 4);  // the newest is today's
    EXPECT_EQ(entrega, "15/11/2026");
    EXPECT_EQ(LeerPedidoPendiente(11, entrega), 0);  // the newest is past; the older one isn't looked at
    EXPECT_EQ(entrega, "");
    ProductoEncontrado p;
    BuscarPorCodigoBarras("EXTRA10", p);
    EXPECT_EQ(p.pedido, 4);
    EXPECT_EQ(p.entrega, "15/11/2026");
}

TEST_P(Busqueda, TarifaCerosYFactura) {
    Ejecutar({"insert into detalle_precio (identificador,producto,precio) values (2,10,2.75)",
              "insert into detalle_factura (num_factura,codigo,tipo_venta) values (30,10,'P')",
              "insert into detalle_factura (num_factura,codigo,tipo_venta) values (30,11,'S')"});
    sesion().TarifaActual = 2;
    EXPECT_EQ(PrecioTarifa(10), 2.75);
    EXPECT_EQ(PrecioTarifa(11), -1);
    sesion().TarifaActual = 3;
    EXPECT_EQ(PrecioTarifa(10), -1);

    const std::pair<const char*, const char*> ceros[] = {{"00120", "120"}, {"000", "0"}, {"", ""},     {"0", "0"},
                                                         {"120", "120"},   {"00ñ", "ñ"}, {"0 1", " 1"}};
    for (auto [codigo, esperado] : ceros) EXPECT_EQ(QuitarCerosIzquierda(codigo), esperado) << codigo;

    EXPECT_TRUE(ProductoEnFactura(30, "10"));
    EXPECT_FALSE(ProductoEnFactura(30, "11"));  // services don't count
    EXPECT_FALSE(ProductoEnFactura(31, "10"));
}

TPV_EN_CADA_MOTOR(Busqueda);

}  // namespace
}  // namespace tpv
