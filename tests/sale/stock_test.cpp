#include "sale/stock.hpp"

#include <string>
#include <vector>

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/fecha.hpp"
#include "core/runtime/reloj.hpp"
#include "tests/core/sesion/sesion_prueba.hpp"

namespace tpv {
namespace {

class Stock : public prueba::SesionTest {
protected:
    void SetUp() override {
        SesionTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        reloj::Fijar(DateTime{fecha::DesdeFecha(2026, 11, 23).serial + 0.5});
    }
    void TearDown() override {
        reloj::Soltar();
        SesionTest::TearDown();
    }

    // `interno` and `stock` are SQL literals, so that NULL can be given.
    void Producto(int codigo, const std::string& nombre, double coste, const std::string& stock, double salida,
                  const std::string& interno = "NULL") {
        Ejecutar({"insert into productos (codigo,nombre,coste,stock,salida,stockconsumointerno) values (" +
                  std::to_string(codigo) + ",'" + nombre + "'," + Str(coste) + "," + stock + "," + Str(salida) +
                  "," + interno + ")"});
    }
    void Receta(int padre, int hijo, double cantidad) {
        Ejecutar({"insert into productoelaborado_producto (ProductoPadre,productohijo,cantidad) values (" +
                  std::to_string(padre) + "," + std::to_string(hijo) + "," + Str(cantidad) + ")"});
    }
    double Num(const std::string& sql) { return CDbl(Valor(sql)); }
    double Columna(const char* columna, int codigo) {
        return Num(std::string("select ") + columna + " from productos where codigo = " + std::to_string(codigo));
    }
    long Filas(const std::string& tabla, const std::string& donde = "1=1") {
        return CLng(Valor("select count(*) from " + tabla + " where " + donde));
    }

    // One movement of HistoricoStock as text, to compare whole rows.
    struct Movimiento {
        long codigo;
        double cantidad, coste;
        long indice, descripcion, ticket;
        bool operator==(const Movimiento&) const = default;
    };
    std::vector<Movimiento> Historico() {
        std::vector<Movimiento> v;
        Recordset rs;
        rs.Open("select * from HistoricoStock order by descripciontipo, codigo", cn);
        for (; !rs.Eof(); rs.MoveNext()) {
            EXPECT_EQ(CLng(rs["tipo"]), 1);
            EXPECT_EQ(rs["fecha"].Value(), Value(fecha::DesdeFecha(2026, 11, 23)));
            v.push_back({CLng(rs["codigo"]), CDbl(rs["cantidad"]), CDbl(rs["coste"]),
                         rs["indice"].IsNull() ? -1 : CLng(rs["indice"]), CLng(rs["descripciontipo"]),
                         CLng(rs["ticket"])});
        }
        return v;
    }
};

TEST_P(Stock, OtrosSectores_LineaDeProductoMueveSusCifrasYLaDeServicioNada) {
    struct Caso {
        double unidades;
        bool abono;
        double stock, salida;
        Movimiento mov;
    };
    const Caso casos[] = {
        {3, false, 7, 5, {5, 3, 4.5, -1, 2, 40}},
        {1.5, false, 8.5, 3.5, {5, 1.5, 2.25, -1, 2, 40}},
        {-2, true, 12, 0, {5, 2, -3, -1, 11, 40}},  // a refund: quantity without sign, cost with it
    };
    sesion().Sector = "PERFUMERIA";
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.unidades);
        Ejecutar({"delete from productos", "delete from historicostock"});
        Producto(5, "Colonia", 1.5, "10", 2);
        std::int16_t indice = 0;
        MoverStockLinea(5, "Colonia", c.unidades, "P", 40, c.abono, indice);
        MoverStockLinea(5, "Colonia", c.unidades, "S", 40, c.abono, indice);
        EXPECT_DOUBLE_EQ(Columna("stock", 5), c.stock);
        EXPECT_DOUBLE_EQ(Columna("salida", 5), c.salida);
        EXPECT_EQ(Historico(), std::vector<Movimiento>{c.mov});
        EXPECT_EQ(Valor("select nombre from historicostock"), Value("Colonia"));
        EXPECT_EQ(Filas("stockconsumointerno"), 0);
        EXPECT_EQ(indice, 0);
    }
}

TEST_P(Stock, Panaderia_CompuestoConsumeCadaComponenteDelStockQueLeToca) {
    sesion().Sector = "PANADERIA";
    Producto(100, "Tarta", 3, "50", 0);
    Producto(201, "Harina", 0.5, "100", 0, "10");  // internal 10 > 4: taken from it
    Producto(202, "Nata", 2, "20", 1, "1");        // internal 1 = 1: the general stock pays, and
    Producto(203, "Fresa", 4, "30", 0);            // NULL internal: the general stock too
    Receta(100, 201, 2);
    Receta(100, 202, 0.5);
    Receta(100, 203, 0.25);
    // A movement of another day does not count for today's running number.
    Ejecutar({"insert into historicostock (codigo,fecha,indice) values (1,#11/22/2026#,40)"});

    std::int16_t indice = SiguienteIndiceHistorico();
    EXPECT_EQ(indice, 1);
    MoverStockLinea(100, "Tarta", 2, "P", 77, false, indice);
    EXPECT_EQ(indice, 4);

    // The composite product's own figures stay.
    EXPECT_DOUBLE_EQ(Columna("stock", 100), 50);
    EXPECT_DOUBLE_EQ(Columna("salida", 100), 0);
    // From the internal stock: only that falls.
    EXPECT_DOUBLE_EQ(Columna("stockconsumointerno", 201), 6);
    EXPECT_DOUBLE_EQ(Columna("stock", 201), 100);
    // From the general stock: it falls, salida rises, and the internal stock
    // rises by the same quantity.
    EXPECT_DOUBLE_EQ(Columna("stock", 202), 19);
    EXPECT_DOUBLE_EQ(Columna("salida", 202), 2);
    EXPECT_DOUBLE_EQ(Columna("stockconsumointerno", 202), 2);
    EXPECT_DOUBLE_EQ(Columna("stock", 203), 29.5);
    EXPECT_DOUBLE_EQ(Columna("stockconsumointerno", 203), 0.5);

    Ejecutar({"delete from historicostock where codigo = 1"});
    const std::vector<Movimiento> esperado{
        {100, 2, 6, -1, 2, 77},  // the sold unit
        {202, 0.5 * 2, 2, 2, 5, 77},
        {203, 0.25 * 2, 4, 3, 5, 77},  // component rows: the unit cost, not multiplied
        {201, 4, 0.5, 1, 7, 77},
    };
    EXPECT_EQ(Historico(), esperado);
    EXPECT_EQ(Filas("historicostock", "observacionc = '' and observacionr = ''"), 3);
    EXPECT_EQ(Filas("stockconsumointerno", "cod_productoelaborado = 100 and ticket = 77"), 3);
    EXPECT_EQ(Filas("stockconsumointerno", "codigoproducto = 201 and tipomovimiento = 2 and cantidadentrada = 4"), 1);
    EXPECT_EQ(Filas("stockconsumointerno", "codigoproducto = 202 and tipomovimiento = 1 and cantidadentrada = 1"), 1);
    EXPECT_EQ(SiguienteIndiceHistorico(), 4);
}

TEST_P(Stock, Panaderia_ProductoSinRecetaServicioYAbono) {
    sesion().Sector = "PANADERIA";
    Producto(7, "Barra", 0.2, "40", 3);
    Producto(8, "Bollo", 1, "NULL", 0);
    Producto(300, "Tarta", 3, "50", 0);
    Producto(301, "Harina", 0.5, "100", 0, "10");
    Producto(302, "Canela", 0.1, "100", 0);
    Receta(300, 301, 2);
    Receta(300, 302, 0.3335);

    std::int16_t indice = SiguienteIndiceHistorico();
    // Not composite: salida and stock move, with no internal movement.
    MoverStockLinea(7, "Barra", 4, "P", 9, false, indice);
    // A service line is recorded too, with the cost of the product of its
    // code, and moves that product.
    MoverStockLinea(8, "Servicio", 1, "S", 9, false, indice);
    EXPECT_EQ(indice, 3);
    EXPECT_DOUBLE_EQ(Columna("stock", 7), 36);
    EXPECT_DOUBLE_EQ(Columna("salida", 7), 7);
    EXPECT_DOUBLE_EQ(Columna("stock", 8), -1);
    EXPECT_EQ(Filas("stockconsumointerno"), 0);
    EXPECT_EQ((std::vector<Movimiento>{{7, 4, 0.8, -1, 2, 9}, {8, 1, 1, -1, 2, 9}}), Historico());

    // A refund of one composite unit: the sale row positive with a negative
    // cost; the components come back with negative quantities, the odd one
    // rounded to three decimals.
    Ejecutar({"delete from historicostock"});
    MoverStockLinea(300, "Tarta", -1, "P", 10, true, indice);
    EXPECT_DOUBLE_EQ(Columna("stockconsumointerno", 301), 12);
    EXPECT_DOUBLE_EQ(Columna("stock", 302), 100.334);
    EXPECT_DOUBLE_EQ(Columna("stockconsumointerno", 302), -0.334);
    EXPECT_EQ((std::vector<Movimiento>{{302, -0.334, 0.1, 4, 5, 10}, {301, -2, 0.5, 3, 7, 10}, {300, 1, -3, -1, 11, 10}}),
              Historico());
}

TEST_P(Stock, LecturasDeProducto_SinFilaONuloDanCero) {
    Producto(1, "Uno", 0, "NULL", 0);
    Ejecutar({"update productos set coste = null, salida = null, entrada = 4 where codigo = 1"});
    double coste = -1;
    EXPECT_EQ(LeerStock(1, coste), 0);
    EXPECT_EQ(coste, 0);
    EXPECT_EQ(LeerSalida(1), 0);
    EXPECT_EQ(LeerEntrada(1), 4);
    coste = -1;
    EXPECT_EQ(LeerStock(99, coste), 0);
    EXPECT_EQ(coste, 0);
    EXPECT_EQ(LeerEntrada(99), 0);
    Receta(1, 2, 1);
    EXPECT_TRUE(EsProductoElaborado(1));
    EXPECT_FALSE(EsProductoElaborado(2));
}

TPV_EN_CADA_MOTOR(Stock);

}  // namespace
}  // namespace tpv
