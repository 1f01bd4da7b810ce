// Statements the till should never see, and what the data layer does with
// them: a syntax error of its own, a refusal or the runtime's overflow,
// never a crash, a wrong row or a statement run in place of another.
#include <gtest/gtest.h>

#include <chrono>

#include "core/datos/jet_parser.hpp"
#include "core/datos/postgres_dialecto.hpp"
#include "core/datos/session.hpp"
#include "core/datos/traductor.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/fecha.hpp"
#include "tests/support/base_prueba.hpp"

namespace tpv::datos {
namespace {

std::string Repetir(const std::string& s, int n) {
    std::string out;
    out.reserve(s.size() * static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) out += s;
    return out;
}

// A catalog with one table, for the translator alone.
Catalog CatalogoDePrueba() {
    Catalog c;
    TableInfo t;
    t.name = "Productos";
    t.columns = {{"Codigo", ColType::Integer}, {"Nombre", ColType::Text}, {"Precio", ColType::Double}};
    c.Add(t);
    TableInfo e;
    e.name = "Extra";
    e.columns = {{"Codigo", ColType::Integer}, {"Codigo_Extra", ColType::Text}};
    c.Add(e);
    return c;
}

std::shared_ptr<Translation> Traducir(const std::string& sql, const Catalog& cat) {
    Lexed lx;
    Lex(sql, lx);
    auto t = Translate(sql, lx, cat);
    Render(*t, pg::Dialecto(), 0, false);
    return t;
}

TEST(LectorJet, SentenciasCortadas_DanErrorDeSintaxis) {
    const char* rotas[] = {
        "delete a.", "delete a", "delete a.b from t", "delete a.*", "delete t. from t", "delete *",
        "select a.", "select a.* from", "select * from t where", "select * from t where a in (",
        "select * from t where a in (select", "select * from t where a between 1", "select top",
        "insert into", "insert into t (", "insert into t (a) values (", "update t set", "update t set a =",
        "update t set a.", "select * from (t left join", "select count(", "select * from t order by",
        "select * from t where a is", "select * from t where not", "select -", "select [a",
    };
    for (const char* sql : rotas) {
        SCOPED_TRACE(sql);
        Lexed lx;
        try {
            Lex(sql, lx);
            Parse(sql, lx);
            ADD_FAILURE() << "se leyó";
        } catch (const DbError& e) {
            EXPECT_EQ(e.Statement(), sql);
        }
    }
}

TEST(LectorJet, AnidamientoSinFin_SeRechaza_YLoHondoPeroRazonableSeTraduce) {
    Catalog cat = CatalogoDePrueba();
    const std::string base = "select codigo from productos where ";
    const std::string hondas[] = {
        base + Repetir("(", 8000) + "codigo = 1" + Repetir(")", 8000),
        base + "codigo = 0" + Repetir(" or codigo = 1", 7000),
        base + "codigo = 0" + Repetir(" and codigo = 1", 7000),
        base + Repetir("not ", 7000) + "codigo = 1",
        base + "codigo = " + Repetir("-", 7000) + "1",
        base + "nombre = 'a'" + Repetir(" & 'a'", 7000),
        base + "codigo = 1" + Repetir(" + 1", 7000),
        base + Repetir("codigo in (select codigo from productos where ", 500) + "codigo = 1" + Repetir(")", 500),
        "select productos.codigo from productos" + Repetir(" left join extra on productos.codigo = extra.codigo", 3000),
        "select codigo from " + Repetir("(", 3000) + "productos" + Repetir(")", 3000),
        base + "codigo = " + Repetir("abs(", 3000) + "1" + Repetir(")", 3000),
    };
    for (const std::string& sql : hondas) {
        SCOPED_TRACE(sql.substr(0, 80));
        try {
            Traducir(sql, cat);
            ADD_FAILURE() << "se tradujo";
        } catch (const DbError& e) {
            EXPECT_STREQ(e.what(), ("La consulta es demasiado compleja. [" + sql + "]").c_str());
        }
    }
    // The till's own statements nest a few levels; a hundred is still read.
    const std::string razonables[] = {
        base + Repetir("(", 90) + "codigo = 1" + Repetir(")", 90),
        base + "codigo = 0" + Repetir(" or codigo = 1", 90),
        base + Repetir("codigo in (select codigo from productos where ", 40) + "codigo = 1" + Repetir(")", 40),
    };
    for (const std::string& sql : razonables) EXPECT_NO_THROW(Traducir(sql, cat)) << sql.substr(0, 80);
}

TEST(LectorJet, LaFormaDistingueNombresEntreCorchetesDePalabras) {
    const std::pair<const char*, const char*> distintas[] = {
        {"delete * from detalle_factura where num_factura = 1", "delete * from detalle_factura [where num_factura] = 1"},
        {"select * from productos where codigo = 1", "select * from productos [where codigo] = 1"},
        {"select [a b] from t", "select a b from t"},
        {"select [select] from t", "select select from t"},
        {"select [a]from t", "select [a] from t"},  // same tokens: same shape (checked below)
        {"select a.b from t", "select [a.b] from t"},
        {"select [ab] from t", "select [a] [b] from t"},
        {"select Codigo from t", "select codigo from t"},
    };
    for (const auto& [a, b] : distintas) {
        Lexed la, lb;
        Lex(a, la);
        Lex(b, lb);
        if (std::string(a) == "select [a]from t") EXPECT_EQ(la.shape, lb.shape);
        else EXPECT_NE(la.shape, lb.shape) << a << " / " << b;
    }
}

TEST(LectorJet, ColumnasRepetidas_SeNombranPorSuTabla_YLuegoComoExpresiones) {
    Catalog cat = CatalogoDePrueba();
    auto t = Traducir(
        "select codigo, productos.codigo, p2.codigo, Codigo, precio * 2, nombre as n, nombre, p2.nombre, 1 "
        "from productos, productos as p2",
        cat);
    const std::vector<std::string> nombres = {"Codigo",   "productos.Codigo", "p2.Codigo", "Expr1000", "Expr1001",
                                              "n",        "Nombre",           "p2.Nombre", "Expr1002"};
    EXPECT_EQ(t->names, nombres);

    // Ten thousand columns are named in a moment, not in minutes.
    auto inicio = std::chrono::steady_clock::now();
    auto muchas = Traducir("select codigo" + Repetir(", codigo", 9999) + " from productos", cat);
    ASSERT_EQ(muchas->names.size(), 10000u);
    EXPECT_EQ(muchas->names[1], "productos.Codigo");
    EXPECT_EQ(muchas->names[2], "Expr1000");
    EXPECT_EQ(muchas->names[9999], "Expr10997");
    EXPECT_LT(std::chrono::steady_clock::now() - inicio, std::chrono::seconds(20));
}

TEST(FechasFueraDeRango, SonDesbordamiento) {
    const double fuera[] = {1e300, -1e300, fecha::kSerialMaximo, fecha::kSerialMinimo - 1, 1.0 / 0.0, 0.0 / 0.0};
    for (double s : fuera) {
        SCOPED_TRACE(s);
        try {
            fecha::Descomponer(DateTime{s});
            ADD_FAILURE() << "se descompuso";
        } catch (const RuntimeError& e) {
            EXPECT_EQ(e.Number(), kErrOverflow);
        }
        EXPECT_THROW(fecha::ATextoIso(DateTime{s}), RuntimeError);
        EXPECT_THROW(pg::TextoHora(DateTime{s}), RuntimeError);
    }
    EXPECT_EQ(fecha::ATextoIso(DateTime{fecha::kSerialMaximo - 1.0 / 86400}), "9999-12-31 23:59:59");
    EXPECT_EQ(fecha::ATextoIso(DateTime{fecha::kSerialMinimo}), "0100-01-01");
}

}  // namespace
}  // namespace tpv::datos

namespace tpv::prueba {
namespace {

class LectorEnCadaMotor : public BaseDeDatosTest {
protected:
    void EsperarDesbordamiento(const std::function<void()>& f) {
        try {
            f();
            ADD_FAILURE() << "no hubo error";
        } catch (const DbError& e) {
            ADD_FAILURE() << "error de la base en lugar de desbordamiento: " << e.what();
        } catch (const RuntimeError& e) {
            EXPECT_EQ(e.Number(), kErrOverflow) << e.what();
        }
    }
};

TEST_P(LectorEnCadaMotor, NombreEntreCorchetes_NoEjecutaLaSentenciaAnteriorDeOtraForma) {
    Ejecutar({
        "insert into detalle_factura (num_factura, codigo, unidades) values (1, 10, 1)",
        "insert into detalle_factura (num_factura, codigo, unidades) values (2, 20, 1)",
        "insert into detalle_factura (num_factura, codigo, unidades) values (2, 21, 1)",
        "delete * from detalle_factura where num_factura = 1",
    });
    EXPECT_THROW(cn.Execute("delete * from detalle_factura [where num_factura] = 2"), DbError);
    EXPECT_EQ(Valor("select count(*) from detalle_factura where num_factura = 2").integer(), 2);

    EXPECT_EQ(Valor("select codigo from detalle_factura where codigo = 20").integer(), 20);
    Recordset rs;
    EXPECT_THROW(rs.Open("select codigo from detalle_factura [where codigo] = 21", cn), DbError);
}

TEST_P(LectorEnCadaMotor, NumerosQueNoCabenEnUnDouble_SonDesbordamiento) {
    Ejecutar({"insert into productos (codigo, nombre, precio) values (1, 'pan', 2.5)"});
    EsperarDesbordamiento([&] { cn.Execute("update productos set precio = 1e999 where codigo = 1"); });
    EsperarDesbordamiento([&] { cn.Execute("update productos set precio = '1e999' where codigo = 1"); });
    EsperarDesbordamiento([&] { cn.Execute("update productos set precio = -1E+400 where codigo = 1"); });
    EXPECT_EQ(Valor("select precio from productos where codigo = 1"), Value(2.5));
    cn.Execute("update productos set precio = 1e-999 where codigo = 1");  // too small is 0
    EXPECT_EQ(Valor("select precio from productos where codigo = 1"), Value(0.0));
}

TEST_P(LectorEnCadaMotor, FechasFueraDeRango_SonDesbordamiento) {
    Ejecutar({"insert into cabecera_factura_temp (numero, fecha, hora) values (1, #11/15/2026#, #12:30:00#)"});
    EsperarDesbordamiento([&] { cn.Execute("update cabecera_factura_temp set fecha = 1e300 where numero = 1"); });
    EsperarDesbordamiento([&] { cn.Execute("update cabecera_factura_temp set hora = -1e300 where numero = 1"); });
    EXPECT_EQ(fecha::ATextoIso(Valor("select fecha from cabecera_factura_temp").date()), "2026-11-15");
    if (motor == Motor::SQLite) {
        // Date arithmetic in a statement: the sum is a date, out of range.
        EsperarDesbordamiento([&] {
            Value v = Valor("select 1e300 + #12:30:00# as x from cabecera_factura_temp where numero = 1");
            fecha::ATextoIso(v.date());
        });
        // Another program may store any number in a date column of the file.
        cn.session().engine().Run("UPDATE cabecera_factura_temp SET fecha = 1e300", {}, false);
        EsperarDesbordamiento([&] { fecha::ATextoIso(Valor("select fecha from cabecera_factura_temp").date()); });
    }
}

TEST_P(LectorEnCadaMotor, MismoTextoOtraVez_DaLoMismo_TambienTrasCambiarLaBase) {
    Ejecutar({"insert into productos (codigo, nombre, precio) values (1, 'pan', 2.5)"});
    const std::string sql = "select nombre, precio from productos where codigo = 1";
    for (int vez = 0; vez < 3; ++vez) EXPECT_EQ(Valor(sql), Value("pan"));
    cn.Execute("update productos set nombre = 'pan de leña' where codigo = 1");
    EXPECT_EQ(Valor(sql), Value("pan de leña"));
    // The same text read only and as writable: each as it was asked for.
    Recordset rs;
    rs.Open(sql, cn, adOpenKeyset, adLockOptimistic);
    rs["precio"] = Value(3.0);
    rs.Update();
    rs.Close();
    rs.Open(sql, cn, adOpenStatic, adLockOptimistic);
    EXPECT_EQ(rs["precio"].Value(), Value(3.0));
    EXPECT_THROW(rs["precio"] = Value(4.0), RuntimeError);
}

TEST_P(LectorEnCadaMotor, DistinctSinLaUnion_PliegaComoElMotor) {
    // Rows without a code: only DISTINCT tells them apart, by value, with
    // text compared without regard to case.
    Ejecutar({
        "insert into productos (codigo, codigocliente, nombre, precio, borrar, mostrarencaja) values (null, '77', 'Pan', 1, False, -1)",
        "insert into productos (codigo, codigocliente, nombre, precio, borrar, mostrarencaja) values (null, '77', 'PAN', 1, False, -1)",
        "insert into productos (codigo, codigocliente, nombre, precio, borrar, mostrarencaja) values (null, '77', 'Pan', 2, False, -1)",
        "insert into productos (codigo, codigocliente, nombre, precio, borrar, mostrarencaja) values (null, '77', null, 2, False, -1)",
        "insert into productos (codigo, codigocliente, nombre, precio, borrar, mostrarencaja) values (null, '77', null, 2, False, -1)",
        "insert into productos (codigo, codigocliente, nombre, precio, borrar, mostrarencaja) values (5, '78', 'Sal', 1, False, -1)",
        "insert into productos_codigosextra (codigo, codigo_extra) values (5, '77')",
        "insert into productos_codigosextra (codigo, codigo_extra) values (5, '77')",
    });
    const std::string sql =
        "SELECT distinct(Productos.Codigo) as codigoInt, productos.nombre, productos.precio FROM Productos LEFT JOIN "
        "Productos_CodigosExtra ON Productos.Codigo = Productos_CodigosExtra.Codigo WHERE "
        "(((Productos_CodigosExtra.Codigo_Extra) like '77') or codigocliente = '77') AND BORRAR =FALSE and "
        "mostrarencaja = -1";
    Recordset rs;
    rs.Open(sql, cn, adOpenStatic, adLockOptimistic);
    EXPECT_EQ(rs.RecordCount(), 4);  // Pan 1, Pan 2, NULL 2, Sal
    int sal = 0;
    for (; !rs.Eof(); rs.MoveNext()) sal += rs["nombre"].Value() == Value("Sal");
    EXPECT_EQ(sal, 1);
    // Streamed, the rows are the same.
    ForwardReader filas(cn, sql);
    int n = 0;
    filas.ForEach([&](const std::vector<Value>&) { ++n; });
    EXPECT_EQ(n, 4);
}

TEST_P(LectorEnCadaMotor, LecturaHaciaDelante_DaCadaFilaConSuTipo) {
    Ejecutar({
        "insert into clientes (codigo, nombre, nacimiento, descuento) values (2, 'Luis', #02/03/1980#, 5)",
        "insert into clientes (codigo, nombre, nacimiento, descuento) values (1, 'ana', null, null)",
    });
    ForwardReader filas(cn, "select codigo, nombre, nacimiento, descuento from clientes order by nombre");
    ASSERT_EQ(filas.FieldCount(), 4);
    int codigo = filas.IndexOf("CODIGO"), nacimiento = filas.IndexOf("clientes.nacimiento");
    std::vector<std::string> vistas;
    filas.ForEach([&](const std::vector<Value>& fila) {
        vistas.push_back(std::to_string(fila[static_cast<std::size_t>(codigo)].integer()) + " " +
                         (fila[static_cast<std::size_t>(nacimiento)].IsNull()
                              ? "NULL"
                              : fecha::ATextoIso(fila[static_cast<std::size_t>(nacimiento)].date())));
    });
    EXPECT_EQ(vistas, (std::vector<std::string>{"1 NULL", "2 1980-02-03"}));
    try {
        filas.IndexOf("no_existe");
        ADD_FAILURE();
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.Number(), 3265);
    }
    EXPECT_THROW(ForwardReader(cn, "delete * from clientes"), DbError);
    EXPECT_THROW(ForwardReader(cn, "select * from clientes where"), DbError);
    // An error inside the function reaches the caller as it was.
    EXPECT_THROW(filas.ForEach([](const std::vector<Value>&) { throw ErrorDesbordamiento(); }), RuntimeError);
    EXPECT_EQ(Valor("select count(*) from clientes").integer(), 2);
}

TPV_EN_CADA_MOTOR(LectorEnCadaMotor);

}  // namespace
}  // namespace tpv::prueba
