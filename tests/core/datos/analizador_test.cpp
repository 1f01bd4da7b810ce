// The statement reader never crashes, whatever text reaches it: only a
// DbError comes out of a statement it cannot read.
#include <gtest/gtest.h>

#include <random>

#include "core/datos/jet_parser.hpp"
#include "core/runtime/error.hpp"

namespace tpv::datos {
namespace {

TEST(AnalizadorJet, TextoCualquiera_SoloDaDbError) {
    const std::string semillas[] = {
        "SELECT distinct(Productos.Codigo) as codigoInt FROM Productos LEFT JOIN Productos_CodigosExtra ON "
        "Productos.Codigo = Productos_CodigosExtra.Codigo WHERE (((Productos_CodigosExtra.Codigo_Extra) like 'x') or "
        "codigocliente = 'x') AND BORRAR =FALSE",
        "update cabecera_factura_temp set total='12,5' where numero = 3",
        "Insert into relaciones_fijas values ('TarifaAplicada',3,'A',null)",
        "delete * from informes where fecha between #01/02/2026# and #02/03/2026#",
        "select top 30 sum(total) as Expr1, Cliente from cabecera_factura where cliente>0 group by cliente order by 1 desc",
    };
    const std::string piezas = "()'\"#,.;*=<>&[]%_ \t\nselectfromwhereandornotlike0123456789";
    std::mt19937 rng(12345);
    int leidas = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string s = semillas[static_cast<std::size_t>(i) % std::size(semillas)];
        int cambios = 1 + static_cast<int>(rng() % 6);
        for (int k = 0; k < cambios && !s.empty(); ++k) {
            std::size_t pos = rng() % s.size();
            switch (rng() % 3) {
                case 0: s.erase(pos, 1 + rng() % 4); break;
                case 1: s.insert(pos, 1, piezas[rng() % piezas.size()]); break;
                default: s[pos] = static_cast<char>(rng() % 256); break;
            }
        }
        try {
            Lexed lx;
            Lex(s, lx);
            Parse(s, lx);
            ++leidas;
        } catch (const DbError& e) {
            EXPECT_EQ(e.Statement(), s);
        }
    }
    EXPECT_GT(leidas, 0);
}

TEST(AnalizadorJet, LaFormaNoDependeDeLosValores) {
    Lexed a, b, c;
    Lex("select * from clientes where codigo = 5 and nombre like 'Ana%'", a);
    Lex("SELECT * FROM clientes WHERE codigo = 77 AND nombre LIKE 'Luis'", b);
    Lex("select * from clientes where codigo = '5' and nombre like 'Ana%'", c);
    EXPECT_EQ(a.shape, b.shape);
    EXPECT_NE(a.shape, c.shape);  // a quoted number is another shape
    ASSERT_EQ(b.literals.size(), 2u);
    EXPECT_EQ(b.literals[0]->text, "77");
    EXPECT_EQ(b.literals[1]->text, "Luis");
}

}  // namespace
}  // namespace tpv::datos
