// What the server engine had to rebuild of Jet's meaning (text rules, the
// text of numbers, dates, row keys that move on update) checked on both
// engines, and what only a server has: a writer that waits for another's
// transaction, rows written by other programs, database names and URIs.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <thread>

#include "core/datos/esquema.hpp"
#include "core/datos/servidor.hpp"
#include "core/datos/session.hpp"
#include "core/runtime/fecha.hpp"
#include "core/runtime/unicode.hpp"
#include "tests/support/base_prueba.hpp"

namespace tpv::prueba {
namespace {

class JetEnCadaMotor : public BaseDeDatosTest {
protected:
    std::vector<long long> Codigos(const std::string& sql) {
        std::vector<long long> out;
        Recordset rs;
        rs.Open(sql, cn, adOpenStatic, adLockOptimistic);
        for (; !rs.Eof(); rs.MoveNext()) out.push_back(rs.Fields(0).Value().integer());
        return out;
    }
    std::vector<std::string> Textos(const std::string& sql) {
        std::vector<std::string> out;
        Recordset rs;
        rs.Open(sql, cn, adOpenStatic, adLockOptimistic);
        for (; !rs.Eof(); rs.MoveNext()) out.push_back(rs.Fields(0).Value().text());
        return out;
    }
    void Clientes(const std::vector<std::string>& nombres) {
        for (std::size_t i = 0; i < nombres.size(); ++i)
            cn.Execute("insert into clientes (codigo, nombre) values (" + std::to_string(i) + ", '" + nombres[i] +
                       "')");
    }
};

TEST_P(JetEnCadaMotor, Like_EncuentraLoMismoQueElLikeDelTpv) {
    const std::vector<std::string> nombres = {"María", "MARTA", "Ñu", "nube", "a.b", "axb", "(1)", "a+b", "A+B",
                                              "a\\b", "$5", "^x", "x", "a|b", "a{2}", "%off", "_id", "éxito",
                                              "Ámbar", "-", "", "[x]", "a*b", "a?b"};
    Clientes(nombres);
    const char* patrones[] = {"mar%", "%a.b%", "%(1)%", "a+b", "%+%", "[!a]%", "[a-c]%", "[c-a]%", "[]%", "[!]%",
                              "a\\b", "%$%", "^%", "_", "%|%", "a{2}", "[%]%", "[_]%", "ñ%", "É%", "[á]%", "[x]",
                              "[[]x]", "%]", "a*b", "a?b", "%", "[a-", "[-]", "a[+|]b"};
    for (const char* p : patrones) {
        SCOPED_TRACE(p);
        std::vector<long long> esperados;
        for (std::size_t i = 0; i < nombres.size(); ++i)
            if (unicode::Like(nombres[i], p)) esperados.push_back(static_cast<long long>(i));
        try {
            EXPECT_EQ(Codigos(std::string("select codigo from clientes where nombre like '") + p + "' order by codigo"),
                      esperados);
        } catch (const std::exception& e) {
            ADD_FAILURE() << e.what();
        }
    }
    // A pattern made in the statement, from columns and text.
    Ejecutar({"update clientes set apellidos = 'ma' where codigo = 0"});
    EXPECT_EQ(Codigos("select codigo from clientes where apellidos is not null and nombre like apellidos & '%'"),
              std::vector<long long>{0});
    EXPECT_EQ(Codigos("select codigo from clientes where codigo like '2%' order by codigo"),
              (std::vector<long long>{2, 20, 21, 22, 23}));
}

TEST_P(JetEnCadaMotor, Orden_Agrupacion_YDistinct_ComoElEspanolSinMayusculas) {
    const std::vector<std::string> nombres = {"María", "MARTA", "maria", "MARIA",     "Ñu",    "Nube",
                                              "nz",    "o",     "Ávila", "avila",     "Zoe",   "éxito",
                                              "Eva",   "ñandú", "Ñandu", "Ana María", "Anabel"};
    Clientes(nombres);
    std::vector<std::string> orden = Textos("select nombre from clientes order by nombre");
    ASSERT_EQ(orden.size(), nombres.size());
    for (std::size_t i = 1; i < orden.size(); ++i)
        EXPECT_LE(unicode::CompareText(orden[i - 1], orden[i]), 0) << orden[i - 1] << " antes que " << orden[i];
    EXPECT_EQ(Textos("select nombre from clientes where nombre > 'NZ' and nombre < 'P' order by nombre"),
              (std::vector<std::string>{"Ñandu", "ñandú", "Ñu", "o"}));
    // maria and MARIA are one group and one distinct value; María is another.
    EXPECT_EQ(Codigos("select count(*) as n from clientes where nombre = 'MARIA'"), std::vector<long long>{2});
    std::vector<long long> grupos =
        Codigos("select count(*) as n from clientes where nombre like 'mar%' group by nombre order by 1");
    EXPECT_EQ(grupos, (std::vector<long long>{1, 1, 2}));
    EXPECT_EQ(Textos("select distinct nombre from clientes where nombre = 'maria'").size(), 1u);
    // Two texts that are no columns compare the same way.
    EXPECT_EQ(Valor("select count(*) from clientes where 'maría' = 'MARÍA'").integer(),
              static_cast<long long>(nombres.size()));
    EXPECT_EQ(Valor("select count(*) from clientes where 'maria' = 'maría'").integer(), 0);
}

TEST_P(JetEnCadaMotor, Fechas_YHoras_VuelvenComoSeEscribieron) {
    const DateTime dia = fecha::DesdeFecha(2026, 2, 3);
    const DateTime hora = fecha::DesdeHora(8, 12, 40);
    const DateTime diaYHora{dia.serial + hora.serial};
    const DateTime ninguna = fecha::DesdeFecha(1900, 1, 1);
    struct Caso {
        int numero;
        Value fecha, hora;
    } casos[] = {{1, Value(dia), Value(hora)}, {2, Value(diaYHora), Value()}, {3, Value(hora), Value(hora)},
                 {4, Value(ninguna), Value(fecha::DesdeHora(23, 59, 59))}};
    Recordset rs;
    rs.Open("select numero, fecha, hora from cabecera_factura where numero = 0", cn, adOpenKeyset, adLockOptimistic);
    for (const Caso& c : casos) {
        rs.AddNew();
        rs["numero"] = Value(c.numero);
        rs["fecha"] = c.fecha;
        rs["hora"] = c.hora;
        rs.Update();
    }
    rs.Close();
    rs.Open("select numero, fecha, hora from cabecera_factura order by numero", cn, adOpenStatic, adLockOptimistic);
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.numero);
        ASSERT_FALSE(rs.Eof());
        EXPECT_EQ(rs["fecha"].Value(), c.fecha);
        EXPECT_EQ(rs["hora"].Value(), c.hora);
        rs.MoveNext();
    }
    EXPECT_EQ(Codigos("select numero from cabecera_factura where fecha = #02/03/2026 08:12:40#"),
              std::vector<long long>{2});
    EXPECT_EQ(
        Codigos(
            "select numero from cabecera_factura where fecha >= #02/03/2026# and fecha < #02/04/2026# order by numero"),
        (std::vector<long long>{1, 2}));
    EXPECT_EQ(Codigos("select numero from cabecera_factura where fecha = #01/01/1900#"), std::vector<long long>{4});
    EXPECT_EQ(Codigos("select numero from cabecera_factura where hora > #08:00:00# order by numero"),
              (std::vector<long long>{1, 3, 4}));
    EXPECT_EQ(Valor("select max(fecha) from cabecera_factura"), Value(diaYHora));
}

TEST_P(JetEnCadaMotor, NullCeroYVacio_PorElRecordsetYAlJuntarTexto) {
    Recordset rs;
    rs.Open("select codigo, nombre, apellidos, descuento, dindep from clientes", cn, adOpenKeyset, adLockOptimistic);
    rs.AddNew();
    rs["codigo"] = Value(1);
    rs["nombre"] = Value("");
    rs["apellidos"] = Value();
    rs["descuento"] = Value(0);
    rs["dindep"] = Value();
    rs.Update();
    rs.Close();
    rs.Open(
        "select nombre, apellidos, descuento, dindep, nombre & '|' & apellidos & '|' & descuento & '|' & dindep as t "
        "from clientes",
        cn, adOpenStatic, adLockOptimistic);
    ASSERT_EQ(rs.RecordCount(), 1);
    EXPECT_EQ(rs["nombre"].Value(), Value(""));
    EXPECT_TRUE(rs["apellidos"].IsNull());
    EXPECT_EQ(rs["descuento"].Value(), Value(0.0));
    EXPECT_TRUE(rs["dindep"].IsNull());
    EXPECT_EQ(rs["t"].Value(), Value("||0|"));
    EXPECT_EQ(Codigos("select codigo from clientes where nombre = ''"), std::vector<long long>{1});
    EXPECT_EQ(Codigos("select codigo from clientes where apellidos = ''"), std::vector<long long>{});
    EXPECT_EQ(Codigos("select codigo from clientes where descuento = 0 and dindep is null"), std::vector<long long>{1});
}

TEST_P(JetEnCadaMotor, Numeros_TextoConComa_YTiposDeLasCuentas) {
    Ejecutar({"insert into productos (codigo, nombre, precio, stock) values (1, 'a', 1.25, 5)",
              "insert into productos (codigo, nombre, precio, stock) values (2, 'b', -2.5, 0.1)",
              "insert into productos (codigo, nombre, precio, stock) values (3, 'c', 12, 0.2)",
              "insert into productos (codigo, nombre, precio, stock) values (4, 'd', 100000, null)"});
    EXPECT_EQ(Textos("select precio & '' as t from productos order by codigo"),
              (std::vector<std::string>{"1,25", "-2,5", "12", "100000"}));
    EXPECT_EQ(Valor("select (stock + 0.2) & '' from productos where codigo = 2"), Value("0,3"));
    EXPECT_EQ(Valor("select (codigo / 3) & '' from productos where codigo = 1"), Value("0,333333333333333"));
    EXPECT_EQ(Valor("select codigo & 'x' from productos where codigo = 4"), Value("4x"));

    Recordset rs;
    rs.Open("select 7 / 2 as d, 7 \\ 2 as e, codigo * codigo as i, precio * 2 as f, codigo / 0 as z from productos "
            "where codigo = 1", cn, adOpenStatic, adLockOptimistic);
    EXPECT_EQ(rs["d"].Value(), Value(3.5));
    EXPECT_EQ(rs["e"].Value(), Value(3));
    EXPECT_EQ(rs["i"].Value(), Value(1));
    EXPECT_EQ(rs["f"].Value(), Value(2.5));
    EXPECT_TRUE(rs["z"].IsNull());
    rs.Open(
        "select sum(codigo) as s, avg(codigo) as a, count(*) as n, sum(precio) as p, max(nombre) as m from productos",
        cn, adOpenStatic, adLockOptimistic);
    EXPECT_EQ(rs["s"].Value(), Value(10));
    EXPECT_EQ(rs["a"].Value(), Value(2.5));
    EXPECT_EQ(rs["n"].Value(), Value(4));
    EXPECT_EQ(rs["p"].Value(), Value(100010.75));
    EXPECT_EQ(rs["m"].Value(), Value("d"));
}

TEST_P(JetEnCadaMotor, MismaFila_SeEscribeVariasVecesYSeBorra_YLosNombresSonLosDelEsquema) {
    Recordset rs;
    rs.Open("select * from relaciones_fijas where indice = 'Factura'", cn, adOpenKeyset, adLockOptimistic);
    EXPECT_EQ(rs.FieldName(0), "indice");
    rs.AddNew();
    rs["indice"] = Value("Factura");
    rs["daton"] = Value(1);
    rs.Update();
    for (int n = 2; n <= 4; ++n) {
        rs["daton"] = Value(n);
        rs.Update();
    }
    EXPECT_EQ(Valor("select daton from relaciones_fijas").number(), 4);
    rs.Delete();
    EXPECT_EQ(Valor("select count(*) from relaciones_fijas").integer(), 0);

    Recordset cabecera;
    cabecera.Open("Select * from Cabecera_Factura_Temp", cn, adOpenStatic, adLockReadOnly);
    EXPECT_EQ(cabecera.FieldName(0), "Numero");
    EXPECT_EQ(cabecera.FieldName(2), "Hora");
}

TPV_EN_CADA_MOTOR(JetEnCadaMotor);

// ---------------------------------------------------------------- a server only

class SoloServidor : public JetEnCadaMotor {};

TEST_P(SoloServidor, EscrituraQueEsperaAOtraTransaccion_FallaSiLaOtraCambioLaFila) {
    // The other till's update is not committed yet when this one writes: this
    // write waits for it, then finds the row changed and must not go through.
    Ejecutar({"insert into relaciones_fijas (indice, daton) values ('Factura', 100)"});
    Connection otra;
    otra.Open(uri);
    Recordset a, b;
    b.Open("Select * from Relaciones_fijas where indice = 'Factura'", otra, adOpenKeyset, adLockOptimistic);
    cn.BeginTrans();
    a.Open("Select * from Relaciones_fijas where indice = 'Factura'", cn, adOpenKeyset, adLockOptimistic);
    a["daton"] = Value(101);
    a.Update();
    bool fallo = false;
    std::thread escritor([&] {
        try {
            b["daton"] = Value(101);
            b.Update();
        } catch (const RuntimeError&) {
            fallo = true;
        }
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    cn.CommitTrans();
    escritor.join();
    EXPECT_TRUE(fallo) << "el mismo número se habría dado dos veces";
    EXPECT_EQ(Valor("select daton from relaciones_fijas where indice = 'Factura'").number(), 101);
}

TEST_P(SoloServidor, FilasDeOtrosProgramas_ConFraccionesDeSegundo_SeLeenYSeEscriben) {
    cn.session().engine().Run(
        "INSERT INTO cabecera_factura_temp (numero, fecha, hora, total, terminal) "
        "VALUES (1, '2026-02-03 08:12:40.123456', '08:12:40.5', 0.1, 'Caja1')", {}, false);
    Recordset rs;
    rs.Open("select * from cabecera_factura_temp where terminal = 'CAJA1'", cn, adOpenKeyset, adLockOptimistic);
    ASSERT_EQ(rs.RecordCount(), 1);
    fecha::Partes p = fecha::Descomponer(rs["fecha"].Value().date());
    EXPECT_EQ(p.anio * 10000 + p.mes * 100 + p.dia, 20260203);
    EXPECT_NE(rs["hora"].Value(), Value(fecha::DesdeHora(8, 12, 40)));
    rs["total"] = Value(2.5);
    rs.Update();  // the row still holds what was read, to the microsecond
    rs["terminal"] = Value("CAJA1");
    rs.Update();
    EXPECT_EQ(Valor("select total & terminal from cabecera_factura_temp"), Value("2,5CAJA1"));
}

TEST_P(SoloServidor, BaseNueva_ConElNombreComoLoDaLaUri_YNoSeCreaDosVeces) {
    const std::string admin = std::getenv("TPV_PG_URI");
    const std::string nombre = "tpv_prueba_" + std::to_string(::getpid()) + "/SUPERMERCADO";
    struct Borrar {
        const std::string &admin, &nombre;
        ~Borrar() { datos::servidor::BorrarBase(admin, nombre); }
    } borrar{admin, nombre};
    const std::string otra = datos::servidor::ConBase(admin, nombre);
    datos::CrearBaseDeDatos(otra, datos::CarpetaEsquemas() + "/tienda.schema");
    {
        Connection c;
        c.Open(otra);
        EXPECT_EQ(c.DefaultDatabase(), nombre);  // the sector is its last component
        c.Execute("insert into relaciones_fijas (indice) values ('Factura')");
    }
    try {
        datos::CrearBaseDeDatos(otra, datos::CarpetaEsquemas() + "/tienda.schema");
        ADD_FAILURE() << "creó las tablas dos veces";
    } catch (const DbError& e) {
        EXPECT_NE(std::string(e.what()).find("ya tiene tablas"), std::string::npos) << e.what();
    }
    Connection c;
    c.Open(otra);
    EXPECT_EQ(c.Execute("update relaciones_fijas set datoa = 'x'"), 1);
}

INSTANTIATE_TEST_SUITE_P(Servidor, SoloServidor, ::testing::Values(Motor::PostgreSQL), NombreMotor);

TEST(UriServidor, BaseYOtraBase_ConservanUsuarioPuertoYOpciones) {
    using datos::servidor::Base;
    using datos::servidor::ConBase;
    EXPECT_EQ(Base("postgresql://caja@server:5432/SUPERMERCADO"), "SUPERMERCADO");
    EXPECT_EQ(Base("postgres://caja@server/tienda%2FPANADERIA?sslmode=require"), "tienda/PANADERIA");
    EXPECT_EQ(Base("postgresql://caja@server"), "");
    EXPECT_EQ(ConBase("postgresql://caja@server:5432/postgres", "x_1"), "postgresql://caja@server:5432/x_1");
    EXPECT_EQ(ConBase("postgresql://caja@server?sslmode=require", "ñ b"),
              "postgresql://caja@server/%C3%B1%20b?sslmode=require");
    EXPECT_EQ(ConBase("postgres://caja:clave@[::1]:5432/a?connect_timeout=2", "b/C"),
              "postgres://caja:clave@[::1]:5432/b%2FC?connect_timeout=2");
}

}  // namespace
}  // namespace tpv::prueba
