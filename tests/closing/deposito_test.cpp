// The customer's balance raised and lowered in the table and in the
// session's list together, and a till whose list is old.
#include "closing/deposito.hpp"
#include "tests/closing/cierre_prueba.hpp"

namespace tpv {
namespace {

class Deposito : public prueba::CierreTest {
protected:
    void SetUp() override {
        CierreTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({"insert into clientes (codigo,nombre,activardindep,dindep) values (8,'Rosa',-1,30)",
                  "insert into clientes (codigo,nombre,activardindep,dindep) values (9,'Luis',-1,5)"});
        sesion().Clientes = {RegistroCliente{"Luis", "", 9, {}, 0, true, 5},
                             RegistroCliente{"Rosa", "", 8, {}, 0, true, 30}};
    }

    std::string Saldo(int cliente) {
        return Texto(Valor("select dindep from clientes where codigo = " + std::to_string(cliente)));
    }
};

TEST_P(Deposito, SaldoGrabado_TablaYListaALaVez) {
    struct Caso {
        std::int32_t indice;
        std::int32_t cliente;
        double valor;
        const char* tabla;
        double lista;
    } casos[] = {
        {1, 8, 0, "0", 0},          // the whole balance spent
        {1, 8, 12.5, "12,5", 12.5},  // what was left of it
        {-1, 9, 2, "2", 5},         // a customer not in the list: the table alone
    };
    for (const Caso& c : casos) {
        GrabarDinDep(c.indice, c.cliente, c.valor);
        EXPECT_EQ(Saldo(c.cliente), c.tabla);
    }
    EXPECT_EQ(sesion().Clientes[1].DinDep, 12.5);
    EXPECT_EQ(sesion().Clientes[0].DinDep, 5);
    // Raising the balance of a customer not in the list changes nothing.
    EXPECT_EQ(AumentarDinDep(-1, "9", 50), 0);
    EXPECT_EQ(Saldo(9), "2");
}

TEST_P(Deposito, OtraCajaConLaListaVieja_PisaElSaldo) {
    // The first till raises the balance; the second, whose list still says
    // 30, writes its own sum over it.
    AumentarDinDep(1, "8", 100);
    sesion().Clientes[1].DinDep = 30;
    AumentarDinDep(1, "8", 20);
    EXPECT_EQ(Saldo(8), "50");
}

TPV_EN_CADA_MOTOR(Deposito);

}  // namespace
}  // namespace tpv
