// A grouped join on a unique key of a table the statement only filters by
// runs as a test of each row's key against the keys of that table. These
// cases check that it gives the rows of the join exactly, on data made to
// catch it out: a sale's date changed after later sales, headers outside the
// period, lines without a header, other shops, case, codes 0, NULL units,
// numbers far apart; and that a join the test can't stand for keeps its rows.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/datos/session.hpp"
#include "core/runtime/conversiones.hpp"
#include "tests/support/base_prueba.hpp"

namespace tpv::prueba {
namespace {

class JoinPorClave : public BaseDeDatosTest {
protected:
    void SetUp() override {
        BaseDeDatosTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({
            // numero, fecha de venta, cliente, tienda. Sale 4 was changed to a
            // date after the period; 2000000000 lies far from the others.
            "insert into cabecera_factura (numero, fechaventa, cliente, tienda, total) values (1, #01/15/2026#, 3, '', 10)",
            "insert into cabecera_factura (numero, fechaventa, cliente, tienda, total) values (2, #03/10/2026#, 4, '', 20)",
            "insert into cabecera_factura (numero, fechaventa, cliente, tienda, total) values (3, #12/20/2025#, 3, '', 30)",
            "insert into cabecera_factura (numero, fechaventa, cliente, tienda, total) values (4, #07/15/2026#, 4, '', 40)",
            "insert into cabecera_factura (numero, fechaventa, cliente, tienda, total) values (5, #02/01/2026#, 3, '', 50)",
            "insert into cabecera_factura (numero, fechaventa, cliente, tienda, total) values (2000000000, #04/01/2026#, 4, '', 60)",
            "insert into cabecera_factura (fechaventa, cliente, tienda, total) values (#02/02/2026#, 3, '', 70)",
        });
        const char* lineas[][5] = {
            {"1", "10", "'P'", "''", "2"},       {"1", "11", "'P'", "''", "1"},
            {"1", "0", "'P'", "''", "5"},        {"1", "14", "'P'", "'Tienda Ñ'", "2"},
            {"1", "15", "'P'", "'Tienda N'", "3"}, {"2", "10", "'p'", "''", "3"},
            {"2", "12", "'S'", "''", "4"},       {"2", "11", "'P'", "'OTRA'", "7"},
            {"2", "14", "'P'", "'TIENDA ñ'", "1"}, {"3", "10", "'P'", "''", "100"},
            {"4", "11", "'P'", "''", "50"},      {"5", "12", "'P'", "''", "1"},
            {"5", "12", "'P'", "''", "Null"},    {"2000000000", "13", "'P'", "''", "6"},
            {"99", "10", "'P'", "''", "9"},      {"Null", "10", "'P'", "''", "8"},
            {"1", "16", "'P'", "'TIÉNDA Ñ'", "4"},
        };
        for (const auto& l : lineas)
            Ejecutar({std::string("insert into detalle_factura (num_factura, codigo, tipo_venta, tienda, unidades) "
                                  "values (") +
                      l[0] + ", " + l[1] + ", " + l[2] + ", " + l[3] + ", " + l[4] + ")"});
    }

    // The rows as text, in a fixed order (ties of a ranking come in any order).
    std::vector<std::string> Filas(const std::string& sql) {
        std::vector<std::string> out;
        for (const auto& fila : cn.session().Run(sql, false).rows) {
            std::string t;
            for (const Value& v : fila) t += (v.IsNull() ? std::string("Null") : CStr(v)) + "|";
            out.push_back(t);
        }
        std::sort(out.begin(), out.end());
        return out;
    }

    std::string Traducida(const std::string& sql) { return cn.session().Prepare(sql, false)->sql; }
};

std::string Reemplazar(std::string s, const std::string& de, const std::string& a) {
    const auto p = s.find(de);
    return p == std::string::npos ? s : s.replace(p, de.size(), a);
}

TEST_P(JoinPorClave, RankingDeProductos_DaLasFilasDelJoin) {
    // {T}: the shop; the join as the till writes it, and as "+ 0", which
    // nothing rewrites.
    const std::string ranking =
        "select top 30 sum(unidades) as Expr1, Codigo from Detalle_factura,cabecera_factura where Codigo>0 and "
        "Tipo_Venta='P' and detalle_factura.tienda='{T}' and detalle_factura.num_factura = cabecera_factura.numero "
        "and cabecera_factura.fechaventa between #01/01/2026# and #06/30/2026# group by Codigo order by "
        "sum(unidades) desc";
    struct Caso {
        std::string tienda;
        std::vector<std::string> esperadas;
    };
    const Caso casos[] = {
        // 10: 2 + 3 ('p'); 11: 1 (the other shop's and the changed sale's
        // lines out); 12: the service out, 1 + Null; 13: the far number.
        {"", {"1|11|", "1|12|", "5|10|", "6|13|"}},
        {"otra", {"7|11|"}},
        {"tienda ñ", {"3|14|"}},  // Ñ and ñ alike, N and É apart
        {"tiénda ñ", {"4|16|"}},
    };
    for (const Caso& c : casos) {
        const std::string sql = Reemplazar(ranking, "{T}", c.tienda);
        const std::string llano = Reemplazar(sql, "cabecera_factura.numero", "cabecera_factura.numero + 0");
        EXPECT_EQ(Filas(sql), c.esperadas) << c.tienda;
        EXPECT_EQ(Filas(llano), c.esperadas) << c.tienda;
    }
    // The fast form is the one that ran: no join left.
    EXPECT_NE(Traducida(Reemplazar(ranking, "{T}", "")).find("FROM \"detalle_factura\" WHERE"), std::string::npos);
}

TEST_P(JoinPorClave, OtrasFormas_DanLasMismasFilasQueElJoin) {
    // Each statement against its "+ 0" twin, which runs as a plain join.
    const std::string casos[] = {
        // tables the other way round, aliases, the key on the left
        "select d.codigo, sum(d.unidades) as u from cabecera_factura c, detalle_factura d where c.numero = "
        "d.num_factura and c.total > 15 group by d.codigo",
        // numbers close together
        "select d.codigo, count(*) as n from detalle_factura d, cabecera_factura c where c.numero = d.num_factura "
        "and (c.cliente = 3 or c.fechaventa > #03/01/2026#) and d.codigo <> 11 and c.numero < 1000 group by d.codigo",
        // the joined table named in what is shown, grouped or compared with
        // the other: the join stays
        "select d.codigo, max(c.fechaventa) as f from detalle_factura d, cabecera_factura c where d.num_factura = "
        "c.numero group by d.codigo",
        "select c.cliente, count(*) as n from detalle_factura d, cabecera_factura c where d.num_factura = c.numero "
        "group by c.cliente",
        "select d.codigo, count(*) as n from detalle_factura d, cabecera_factura c where d.num_factura = c.numero "
        "and d.codigo < c.cliente * 4 group by d.codigo",
        // a key that repeats: a line meets every header of its customer
        "select d.codigo, count(*) as n from detalle_factura d, cabecera_factura c where d.num_factura = "
        "c.cliente group by d.codigo",
        // no condition on the joined table but the join itself
        "select d.codigo, count(*) as n from detalle_factura d, cabecera_factura c where d.num_factura = c.numero "
        "group by d.codigo having count(*) > 1",
    };
    for (const std::string& sql : casos) {
        std::string llano = sql;
        for (const char* clave : {"c.numero = d.num_factura", "d.num_factura = c.numero", "d.num_factura = c.cliente"})
            llano = Reemplazar(llano, clave, std::string(clave) + " + 0");
        ASSERT_NE(llano, sql);
        const auto filas = Filas(sql);
        EXPECT_FALSE(filas.empty()) << sql;
        EXPECT_EQ(filas, Filas(llano)) << sql;
    }
}

TPV_EN_CADA_MOTOR(JoinPorClave);

}  // namespace
}  // namespace tpv::prueba
