#include "sale/ventas_abiertas.hpp"

#include "core/servicios/colour_scheme.hpp"
#include "sale/grid_venta.hpp"
#include "tests/sale/venta_abierta_prueba.hpp"

namespace tpv {
namespace {

class VentasAbiertas : public prueba::VentaAbiertaTest {};

TEST_P(VentasAbiertas, DeudaCliente_DeudasAbiertasMenosLoPagadoRedondeado) {
    sesion().opciones.NumDecimales = 2;
    Ejecutar({"insert into cabecera_pago (num_pago,cliente,importe,estado) values (1,4,50.004,0)",
              "insert into cabecera_pago (num_pago,cliente,importe,estado) values (2,4,20,0)",
              "insert into cabecera_pago (num_pago,cliente,importe,estado) values (3,4,99,1)",  // settled
              "insert into cabecera_pago (num_pago,cliente,importe,estado) values (4,5,10,0)",
              "insert into cabecera_pago (num_pago,cliente,importe,estado) values (5,6,10,0)",
              "insert into detalle_pago (num_pago,importe) values (1,15)",
              "insert into detalle_pago (num_pago,importe) values (3,99)",
              "insert into detalle_pago (num_pago,importe) values (4,6)",
              "insert into detalle_pago (num_pago,importe) values (4,4)"});
    struct Caso {
        const char* cliente;
        double deuda;
        bool resultado;
    };
    const Caso casos[] = {{"4", 55, true}, {"5", 0, false}, {"6", 10, true}, {"9", 0, false}};
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.cliente);
        double deuda = -1;
        EXPECT_EQ(DeudaCliente(c.cliente, deuda), c.resultado);
        EXPECT_DOUBLE_EQ(deuda, c.deuda);
    }
}

TEST_P(VentasAbiertas, LeerDatosVentaYModificacion) {
    Ejecutar({"insert into clientes (codigo,nombre,apellidos) values (4,'Ana','Gil Sanz')"});
    Cabecera(10, 1);
    Cabecera(11, 1);
    Ejecutar({"update cabecera_factura_temp set cliente = 4 where numero = 11",
              "insert into ventasdevolucion (numerofacturatemporal,numerofacturareal) values (11,300)"});

    std::string codigo = "x", empleado = "x", cliente = "x", nombre = "x";
    LeerDatosVenta(10, codigo, empleado, cliente, nombre);
    EXPECT_EQ(codigo, "3");
    EXPECT_EQ(empleado, "Juan Perez Lopez");
    EXPECT_EQ(cliente, "0");
    EXPECT_EQ(nombre, " ");
    LeerDatosVenta(11, codigo, empleado, cliente, nombre);
    EXPECT_EQ(cliente, "4");
    EXPECT_EQ(nombre, "Ana Gil Sanz");

    EXPECT_FALSE(EsVentaModificada(10));
    EXPECT_EQ(FacturaOrigen(10), 0);
    EXPECT_TRUE(EsVentaModificada(11));
    EXPECT_EQ(FacturaOrigen(11), 300);
}

TEST_P(VentasAbiertas, CargarPanelVentas_BotonesColoresYModificaciones) {
    Sesion& s = sesion();
    s.ColoresGenericos = {"101", "102", "103", "104"};
    s.CarpetaFotos = "/tpv/fotos/";
    ButtonRecord viejo;
    viejo.TextoSuperior = "viejo";
    s.PanelVentas.assign(3, viejo);
    CargarPanelVentas();
    ASSERT_EQ(s.PanelVentas.size(), 1u);  // no open sale: one empty record
    EXPECT_EQ(s.PanelVentas[0].TextoSuperior, "");

    Ejecutar({"insert into clientes (codigo,nombre,apellidos,foto) values (4,'Ana','Gil Sanz','ana.jpg')",
              "insert into clientes (codigo,nombre,apellidos) values (5,'Luis','Mar')"});
    for (int n = 1; n <= 6; ++n) Cabecera(n, 1);
    Cabecera(7, 1, ",presupuesto", ",-1");   // a quote
    Cabecera(8, 1, ",num_albaran", ",3");    // a delivery note
    Cabecera(9, 1, ",num_albaran", ",0");    // listed: no delivery note yet
    Ejecutar({"update cabecera_factura_temp set cliente = 4 where numero = 2",
              "update cabecera_factura_temp set cliente = 5, empleado = 'Maria' where numero = 3",
              "update cabecera_factura_temp set terminal = 'CAJA2' where numero = 6",
              "insert into ventasdevolucion (numerofacturatemporal,numerofacturareal) values (4,812)"});
    CargarPanelVentas();

    // Listed in the order the database gives: find each by its code.
    const PanelRegistros& p = s.PanelVentas;
    ASSERT_EQ(p.size(), 7u);  // 1-5 and 9, and the spare
    EXPECT_EQ(p.back().Codigo, "");
    EXPECT_EQ(p.back().TextoSuperior, "");
    std::vector<std::string> colores;
    for (std::size_t i = 0; i + 1 < p.size(); ++i) colores.push_back(p[i].Color);
    auto boton = [&](const std::string& codigo) -> const ButtonRecord& {
        for (const ButtonRecord& b : p)
            if (b.Codigo == codigo) return b;
        ADD_FAILURE() << "sin boton " << codigo;
        return p.back();
    };
    EXPECT_EQ(boton("1").TextoSuperior, "\r\n-1-\r\n ");
    EXPECT_EQ(boton("1").Imagen, "");
    EXPECT_EQ(boton("1").Texto, "Juan   P. L.");
    EXPECT_EQ(boton("2").TextoSuperior, "\r\n-2-\r\nAna Gil Sanz");
    EXPECT_EQ(boton("2").Imagen, "/tpv/fotos/ana.jpg");
    EXPECT_EQ(boton("3").Imagen, "");
    EXPECT_EQ(boton("3").Texto, "  ");  // a name of one word
    EXPECT_EQ(boton("4").TextoSuperior, "Modificando \r\n-812-\r\n ");
    const std::string resalte = ColourScheme().ColorResalte(s.Conexion, s.EsquemaColores);
    EXPECT_EQ(boton("4").Color, resalte);

    // The others take the generic colours by their place, the fifth and later
    // the first one again.
    const std::string esperados[] = {"101", "102", "103", "104", "101", "101"};
    for (std::size_t i = 0; i < colores.size(); ++i) {
        SCOPED_TRACE(i);
        if (p[i].Codigo == "4") continue;
        EXPECT_EQ(colores[i], esperados[i]);
    }
}

TEST_P(VentasAbiertas, MostrarLineasVenta_RellenaLaGridLineaALinea) {
    sesion().opciones.NumDecimales = 2;
    Cabecera(10, 1);
    Linea(10, 1, 31, "P", 10, 1.5);
    Linea(10, 2, 32, "P", 0, 0);  // no price, no discount: comes back as a gift
    Linea(10, 3, 33, "P", 0, 2);
    Ejecutar({"update detalle_factura_temp set precio_unit = 12.5, impuesto = 1.005, impuesto_2 = 0.5, "
              "unidades = 2.5, recargo = 0.25, codfamilia = 9 where orden = 1"});
    Grid grid = NuevaGridVenta();
    bool dinDep = false;
    MostrarLineasVenta(10, grid, dinDep);
    EXPECT_FALSE(dinDep);
    ASSERT_EQ(grid.Rows(), 5);  // heading, the empty row, plus three

    // Lines are found by code: the statement has no order.
    long f1 = 0, f2 = 0, f3 = 0;
    for (long f = 1; f <= 3; ++f) {
        const std::string c = grid.TextMatrix(f, kColCodigo);
        (c == "31" ? f1 : c == "32" ? f2 : f3) = f;
    }
    ASSERT_TRUE(f1 && f2 && f3);
    // The stored short name is shortened once more, which mangles it.
    const char* esperada[] = {"Producto 31", "12,5", "Juan  . P.", "P", "", "1,5", "3", "31", "21",
                              "2,5",         "10",   "0,25",        "12,5", "1,51", "9", "", ""};
    for (long c = 0; c < kColumnasVenta; ++c) {
        SCOPED_TRACE(c);
        EXPECT_EQ(grid.TextMatrix(f1, c), esperada[c]);
    }
    EXPECT_EQ(grid.TextMatrix(f2, kColNombre), "  REGALO Producto 32");
    EXPECT_NE(grid.CellBackColor(f2, kColUnidades), 0);
    EXPECT_EQ(grid.TextMatrix(f3, kColNombre), "Producto 33");
    EXPECT_EQ(grid.CellBackColor(f3, kColUnidades), 0);
    EXPECT_EQ(grid.TextMatrix(4, kColNombre), "");

    // A deposit line sets the flag; an empty sale touches nothing.
    Cabecera(11, 1);
    Linea(11, 1, 2, "S", 25);
    Grid otra = NuevaGridVenta();
    MostrarLineasVenta(11, otra, dinDep);
    EXPECT_TRUE(dinDep);
    MostrarLineasVenta(12, otra, dinDep);
    EXPECT_EQ(otra.Rows(), 3);
    EXPECT_TRUE(dinDep);
}

TPV_EN_CADA_MOTOR(VentasAbiertas);

}  // namespace
}  // namespace tpv
