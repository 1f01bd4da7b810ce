// The settlement screen in the corners where a figure read the wrong way
// changes what happens: what is left to pay after a voucher.
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

using Esperadas = std::vector<std::string>;

class CobroRevision : public prueba::CobroTest {
protected:
    void SetUp() override {
        CobroTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Articulo(5, "8410001", "Colonia", "10.8");
    }
};

// The voucher's share is measured on the whole units of the total (10 of
// 10,80), but what is left afterwards counts with its cents: 0,54 still has
// to be paid, and only a rest of nothing finishes the sale by itself.
TEST_P(CobroRevision, ValeQueCasiPaga_ElRestoConCentimosNoTermina) {
    const struct {
        const char* valor;
        const char* resto;
        bool terminada;
    } casos[] = {{"9.5", "0,54", false}, {"10", "0,00", true}};
    for (const auto& c : casos) {
        SCOPED_TRACE(c.valor);
        Ejecutar({"delete * from vales_descuento", "delete * from cabecera_factura",
                  std::string("insert into vales_descuento (num_factura,importe,descuento,desde,hasta,"
                              "impMinProxCompra,estado) values (40,0,") +
                      c.valor + ",#01/01/2020#,#01/01/1900#,0,0)"});
        frmCobrar& f = Cobro({"8410001"}, "4");
        Clic(f.cmdapliVale);
        Teclear(f.txtnumVale, "40");
        Intro(f.txtnumVale);
        EXPECT_EQ(f.NumeroVale, 40);
        EXPECT_EQ(f.CajaText_Pago.Text(), c.resto);
        EXPECT_EQ(!f.Cargada(), c.terminada);
        EXPECT_EQ(Filas("select count(*) from cabecera_factura"), Esperadas{c.terminada ? "1" : "0"});
        EXPECT_EQ(Filas("select count(*) from cabecera_pago"), Esperadas{"0"});
    }
}

TPV_EN_CADA_MOTOR(CobroRevision);

}  // namespace
}  // namespace tpv
