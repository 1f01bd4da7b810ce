// The rankings panel: what counts in each ranking (the lines, the customers,
// the shop and the period), and the names of what is gone.
#include "tests/screens/escritorio_prueba.hpp"

namespace tpv {
namespace {

class Top : public prueba::EscritorioTest {
protected:
    void SetUp() override {
        EscritorioTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({"insert into productos (codigo,nombre) values (1,'Colonia')",
                  "insert into productos (codigo,nombre) values (2,'Jabon')",
                  "insert into clientes (codigo,nombre,apellidos) values (4,'Marta','Gil')",
                  "insert into clientes (codigo,nombre,apellidos) values (5,'Pablo','Ruiz')"});
        // Sale, day, customer, total, shop; then its lines: code, units, type.
        Venta(1, "11/10/2026", 4, "30", "");
        Linea(1, 1, 2, "P");
        Linea(1, 2, 5, "P");
        Linea(1, 0, 9, "P");   // code 0 never counts
        Linea(1, 3, 50, "S");  // nor a service
        Venta(2, "11/12/2026", 5, "45.5", "");
        Linea(2, 1, 4, "P");
        Linea(2, 8, 1, "P");   // a product that has gone: no name
        Venta(3, "11/12/2026", 0, "99", "");  // the generic customer never counts
        Linea(3, 2, 2, "P");
        Venta(4, "11/12/2026", 4, "500", "Otra");  // another shop's
        Linea(4, 2, 100, "P", "Otra");
        Venta(5, "11/13/2025", 5, "1000", "");  // over a year ago
        Linea(5, 1, 100, "P");
    }
    void Venta(int n, const std::string& fecha, int cliente, const std::string& total, const std::string& tienda) {
        Ejecutar({"insert into cabecera_factura (numero,fechaventa,cliente,total,tienda) values (" + std::to_string(n) +
                  ",#" + fecha + "#," + std::to_string(cliente) + "," + total + ",'" + tienda + "')"});
    }
    void Linea(int n, int codigo, int unidades, const std::string& tipo, const std::string& tienda = "") {
        Ejecutar({"insert into detalle_factura (num_factura,codigo,unidades,tipo_venta,tienda) values (" +
                  std::to_string(n) + "," + std::to_string(codigo) + "," + std::to_string(unidades) +
                  ",'" + tipo + "','" + tienda + "')"});
    }
    static std::vector<std::string> Filas(const Grid& g) {
        std::vector<std::string> r;
        for (long f = 0; f < g.Rows(); ++f) r.push_back(g.TextMatrix(f, 1) + "|" + g.TextMatrix(f, 2));
        return r;
    }
};

TEST_P(Top, ProductosYClientes_FiltrosYOrden) {
    frmCaja& c = Abrir();
    Clic(c.cmd_TopProductos);
    ASSERT_TRUE(c.frTop.visible);
    EXPECT_EQ(Filas(c.fg_top),
              (std::vector<std::string>{"Ud. Vendidas|Producto", "7|Jabon", "6|Colonia", "1|", "|"}));
    EXPECT_EQ(c.fg_top.ColWidth(0), 0);

    Clic(c.cmd_TopEmpleados);
    EXPECT_EQ(Filas(c.fg_top),
              (std::vector<std::string>{"Importe|Nombre", "45,5|Pablo Ruiz", "30|Marta Gil", "|"}));
}

TEST_P(Top, SinVentas_CabeceraYUnaFilaVacia_YOtraTienda) {
    frmCaja& c = Abrir();
    c.lblTopInfo.caption = "Los 30 Productos mas vendidos";
    c.CargarTop(c.lblTopInfo.caption, DateSerial(2020, 1, 1), DateSerial(2020, 12, 31));
    EXPECT_EQ(Filas(c.fg_top), (std::vector<std::string>{"Ud. Vendidas|Producto", "|"}));

    // With several shops only this shop's rows count.
    sesion().NombreTienda = "Otra";
    c.CargarTop(c.lblTopInfo.caption, DateSerial(2026, 1, 1), DateSerial(2026, 12, 31));
    EXPECT_EQ(Filas(c.fg_top), (std::vector<std::string>{"Ud. Vendidas|Producto", "100|Jabon", "|"}));

    // A title of no ranking leaves the grid as it was.
    c.CargarTop("Otro", DateSerial(2020, 1, 1), DateSerial(2020, 12, 31));
    EXPECT_EQ(c.fg_top.Rows(), 3);
}

TPV_EN_CADA_MOTOR(Top);

}  // namespace
}  // namespace tpv
