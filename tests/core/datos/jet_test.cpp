// The Jet dialect on every engine: statements as the till writes them, and
// the rows Jet would have given.
#include <gtest/gtest.h>

#include "core/runtime/fecha.hpp"
#include "tests/core/datos/filas_prueba.hpp"
#include "tests/support/base_prueba.hpp"

namespace tpv::prueba {
namespace {

class JetTest : public BaseDeDatosTest {
protected:
    void SetUp() override {
        BaseDeDatosTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({
            "insert into productos (codigo, codigocliente, nombre, precio, iva, stock, borrar, mostrarencaja) "
            "values (1, '8410001', 'María pan', 1.25, 10, 5, False, -1)",
            "insert into productos (codigo, codigocliente, nombre, precio, iva, stock, borrar, mostrarencaja) "
            "values (2, '8410002', 'MARTA leche', 0.95, 10, null, False, -1)",
            "insert into productos (codigo, codigocliente, nombre, precio, iva, stock, borrar, mostrarencaja) "
            "values (3, '8410003', 'Ñu de peluche', 12.5, 21, 0, True, -1)",
            "insert into productos (codigo, codigocliente, nombre, precio, iva, stock, borrar, mostrarencaja) "
            "values (4, '8410004', 'nube de azúcar', 2, 21, 3, False, 0)",
            "insert into Productos_CodigosExtra (Codigo, Codigo_Extra) values (1, 'EXTRA1')",
            "insert into Productos_CodigosExtra (Codigo, Codigo_Extra) values (2, '8410001')",
            "insert into clientes (codigo, codigocliente, nombre, apellidos, borrar) values (1, 'C1', 'Ana', null, False)",
            "insert into clientes (codigo, codigocliente, nombre, apellidos, borrar) values (2, 'C2', 'Luis', 'Pérez', False)",
            "insert into clientes (codigo, codigocliente, nombre, apellidos, borrar) values (-1, 'X', 'Anónimo', '', False)",
        });
    }

    // All rows of a statement, each as "v1|v2|...", values in an invariant form.
    std::vector<std::string> Filas(const std::string& sql) {
        std::vector<std::string> out;
        Recordset rs;
        rs.Open(sql, cn, adOpenStatic, adLockOptimistic);
        for (; !rs.Eof(); rs.MoveNext()) out.push_back(Fila(rs));
        return out;
    }
};

using V = std::vector<std::string>;

TEST_P(JetTest, SentenciasDelTpv_DanLasFilasDeJet) {
    struct Caso {
        const char* sql;
        V filas;
    } casos[] = {
        // Bar-code lookup: an extra code on one product while another has it as its own code.
        {"SELECT distinct(Productos.Codigo) as codigoInt, productos.nombre,productos.stock,productos.precio "
         "  FROM Productos LEFT JOIN Productos_CodigosExtra ON Productos.Codigo = Productos_CodigosExtra.Codigo "
         " WHERE (((Productos_CodigosExtra.Codigo_Extra) like '8410001') or codigocliente = '8410001') AND BORRAR "
         "=FALSE and mostrarencaja = -1 order by 1",
         {"1|María pan|5|1.25", "2|MARTA leche|NULL|0.95"}},
        // The same product matched by its own code and an extra code is one row.
        {"SELECT distinct(Productos.Codigo) as codigoInt, productos.nombre FROM Productos LEFT JOIN "
         "Productos_CodigosExtra ON Productos.Codigo = Productos_CodigosExtra.Codigo WHERE "
         "(((Productos_CodigosExtra.Codigo_Extra) like 'extra1') or codigocliente = 'extra1') AND BORRAR =FALSE",
         {"1|María pan"}},
        // Text ignores case, Spanish letters too; María sorts before MARTA, Ñ after N.
        {"select nombre from productos order by nombre",
         {"María pan", "MARTA leche", "nube de azúcar", "Ñu de peluche"}},
        {"select codigo from productos where nombre = 'MARÍA PAN'", {"1"}},
        {"select codigo from productos where nombre = 'maria pan'", {}},
        {"select codigo from productos where nombre like 'ñU%'", {"3"}},
        // & joins text with NULL as empty; numbers join with the decimal comma.
        {"select nombre & ' ' & apellidos as nomCli from clientes where codigo >= 0 order by codigo", {"Ana ", "Luis Pérez"}},
        {"select nombre & ' ' & precio as x from productos where codigo = 1", {"María pan 1,25"}},
        // = null and <> null are tests for NULL; every customer has a code.
        {"select codigo from clientes where apellidos = null", {"1"}},
        {"select count(*) as n from clientes where codigo <> null", {"3"}},
        // A quoted number: regional form against a number column, whole numbers too.
        {"select codigo from productos where precio = '12,5'", {"3"}},
        {"select nombre from productos where codigo = '2'", {"MARTA leche"}},
        // top N, aggregates, group by, in (select ...).
        {"select top 2 codigo from productos order by codigo desc", {"4", "3"}},
        {"select sum(precio) as total, max(codigo) as m, count(*) as n from productos where borrar = false",
         {"4.2|4|3"}},
        {"select iva, count(*) as n from productos group by iva order by iva", {"10|2", "21|2"}},
        {"Select codigo from clientes where codigo in (Select codigo from productos where borrar=false) order by codigo",
         {"1", "2"}},
        {"Select codigo from clientes where codigo not in (Select codigo from productos) order by codigo", {"-1"}},
        {"Select codigo from clientes where codigo in (1, 2) order by codigo", {"1", "2"}},
        // Joins written in the where, identifiers in any case.
        {"Select PRODUCTOS.nombre, productos_codigosextra.CODIGO_EXTRA from Productos_CodigosExtra,productos where "
         "productos.codigo = productos_codigosextra.codigo order by productos.codigo",
         {"María pan|EXTRA1", "MARTA leche|8410001"}},
        {"Select distinct(iva) as tipo from productos order by 1", {"10", "21"}},
        {"Select sum(productos.precio) as t from productos INNER JOIN Productos_CodigosExtra on "
         "productos.codigo = productos_codigosextra.codigo where productos.borrar = false",
         {"2.2"}},
        // NULL sorts below every number either way; sums of no rows are NULL.
        {"select codigo from productos order by stock desc", {"1", "4", "3", "2"}},
        {"select codigo from productos order by stock", {"2", "3", "4", "1"}},
        {"select sum(precio) as t, sum(stock) as s from productos where codigo = 99", {"NULL|NULL"}},
        {"select count(*) as n from productos where nombre like 'l''%'", {"0"}},
    };
    for (const auto& c : casos) {
        SCOPED_TRACE(c.sql);
        try {
            EXPECT_EQ(Filas(c.sql), c.filas);
        } catch (const std::exception& e) {
            ADD_FAILURE() << e.what();
        }
    }
}

TEST_P(JetTest, FechasConMesDelante_YBetween) {
    Ejecutar({
        "insert into cabecera_factura (numero, fecha, fechaventa, total, hora) values (1, #02/03/2026#, #02/03/2026#, 10, #08:12:40#)",
        "insert into cabecera_factura (numero, fecha, fechaventa, total) values (2, #03/02/2026#, #03/02/2026#, 20)",
    });
    EXPECT_EQ(Filas("select numero from cabecera_factura where fechaventa = #02/03/2026#"), V{"1"});
    EXPECT_EQ(Filas("select fechaventa, hora from cabecera_factura where numero = 1"), V{"2026-02-03|08:12:40"});
    EXPECT_EQ(Filas("select numero from cabecera_factura where fechaventa between #02/01/2026# and #02/28/2026#"), V{"1"});
    EXPECT_EQ(Filas("select numero from cabecera_factura where fechaventa >= #03/01/2026# order by numero"), V{"2"});
    // Jet reads an impossible month the other way round.
    EXPECT_EQ(Filas("select numero from cabecera_factura where fechaventa = #15/02/2026#"), V{});
    EXPECT_EQ(Filas("select numero from cabecera_factura where fechaventa = #02/15/2026#"), V{});
    EXPECT_EQ(Filas("select numero from cabecera_factura where fechaventa = #13/02/2026#"), V{});
    EXPECT_EQ(Filas("select max(fechaventa) as f from cabecera_factura"), V{"2026-03-02"});
}

TEST_P(JetTest, EscrituraConValoresRegionales_YPosicional) {
    Ejecutar({
        "insert into cabecera_factura_temp (numero, total, terminal) values (7, 0, 'CAJA1')",
        "update cabecera_factura_temp set total='1.234,5', impuesto = '-1,14' where numero = 7",
        "Insert into relaciones_fijas values ('TarifaAplicada',3,'CAJA1A',null)",
        "delete * from productos where codigo = 4",
        "Delete from clientes where codigo = -1",
    });
    EXPECT_EQ(Filas("select total, impuesto from cabecera_factura_temp where numero = 7"), V{"1234.5|-1.14"});
    EXPECT_EQ(Valor("select count(*) from clientes").integer(), 2);
    EXPECT_EQ(Filas("Select daton, datoa, otros from relaciones_fijas where indice = 'TarifaAplicada'"), V{"3|CAJA1A|NULL"});
    EXPECT_EQ(Valor("select count(*) from productos").integer(), 3);
    EXPECT_EQ(cn.Execute("update productos set stock = stock - 1 where borrar = false"), 2);
    EXPECT_EQ(Filas("select stock from productos order by codigo"), (V{"4", "NULL", "0"}));
}

TEST_P(JetTest, SentenciasRotas_FallanNombrandoLaSentencia_SinEjecutarNada) {
    const char* rotas[] = {
        // A name with an apostrophe breaks its statement.
        "select * from clientes where nombre like 'O'Brien%'",
        "update clientes set nombre = 'D'Angelo' where codigo = 1",
        // Nothing can be stacked behind a statement.
        "delete * from clientes where codigo = 1; delete * from productos",
        "select * from clientes where nombre = 'x'; drop table productos",
        "select * from tabla_que_no_existe",
        "select columna_que_no_existe from productos",
        "select * from productos where precio = 'doce'",
        "select * from productos where fecha = #99/99/2026#",
        "",
    };
    for (const char* sql : rotas) {
        SCOPED_TRACE(sql);
        try {
            cn.Execute(sql);
            ADD_FAILURE() << "no falló";
        } catch (const DbError& e) {
            EXPECT_EQ(e.Statement(), sql);
        }
    }
    EXPECT_EQ(Valor("select count(*) from productos").integer(), 4);
    EXPECT_EQ(Valor("select nombre from clientes where codigo = 1"), Value("Ana"));
}

TEST_P(JetTest, MismaFormaConOtrosValores_UsaCadaVezLosSuyos) {
    // The translation is kept by shape; each call brings its own values.
    for (int codigo = 1; codigo <= 4; ++codigo) {
        Value v = Valor("select codigo from productos where codigocliente = '841000" + std::to_string(codigo) + "'");
        EXPECT_EQ(v, Value(codigo));
    }
    EXPECT_EQ(Valor("select count(*) from productos where nombre like 'MAR%'").integer(), 2);
    EXPECT_EQ(Valor("select count(*) from productos where nombre like 'marta leche'").integer(), 1);
    EXPECT_EQ(Valor("select count(*) from productos where nombre like 'marta%'").integer(), 1);
}

TEST_P(JetTest, ConstantesYFunciones_ComoEnJet) {
    EXPECT_EQ(Valor("select count(*) from productos where true").integer(), 4);
    EXPECT_EQ(Valor("select count(*) from productos where false").integer(), 0);
    EXPECT_EQ(Valor("select nz(apellidos) & '|' as a from clientes where codigo = 1"), Value("|"));
    EXPECT_EQ(Valor("select nz(stock) as s from productos where codigo = 2"), Value(0.0));
    // A function Jet has but the till never uses is refused, not answered wrongly.
    EXPECT_THROW(cn.Execute("select int(precio) from productos"), DbError);
}

TPV_EN_CADA_MOTOR(JetTest);

}  // namespace
}  // namespace tpv::prueba
