// Reprint: the twenty latest sales, newest first, and an unplugged printer
// told once.
#include "tests/screens/escritorio_prueba.hpp"

namespace tpv {
namespace {

class ReImprimir : public prueba::EscritorioTest {
protected:
    void TearDown() override {
        ResetPrinters();
        EscritorioTest::TearDown();
    }
    void Venta(int numero, int cliente, const std::string& total) {
        Ejecutar({"insert into cabecera_factura (numero,cliente,fechaventa,total,empleado) values (" +
                  std::to_string(numero) + "," + std::to_string(cliente) + ",#11/14/2026#," + total + ",'Ana')"});
    }
};

TEST_P(ReImprimir, VeinteUltimas_LaMasNuevaPrimero) {
    Ejecutar({"insert into clientes (codigo,nombre,apellidos) values (4,'Marta','Gil')"});
    for (int n = 1; n <= 22; ++n) Venta(n, n == 22 ? 4 : (n == 21 ? 7 : 0), "12.5");
    frmReImprimir& f = Mostrar<frmReImprimir>();
    const Grid& g = f.grid_Reimprimir;
    ASSERT_EQ(g.Rows(), 21);
    EXPECT_EQ(g.Cols(), 4);
    struct Fila {
        long fila;
        const char *numero, *cliente;
    } filas[] = {{1, "22", "Marta Gil"}, {2, "21", "Cliente Generico"}, {3, "20", "Cliente Generico"},
                 {20, "3", "Cliente Generico"}};
    for (const Fila& e : filas) {
        EXPECT_EQ(g.TextMatrix(e.fila, 0), e.numero);
        EXPECT_EQ(g.TextMatrix(e.fila, 1), e.cliente);
    }
    EXPECT_EQ(g.TextMatrix(1, 2), "14/11/2026");
    EXPECT_EQ(g.TextMatrix(1, 3), "12,5");
}

TEST_P(ReImprimir, FalloDeImpresion_CajaYCierra) {
    RecordingPrinter* tickets = prueba::InstalarTickets();
    sesion().ImpresoraTickets = "TICKETS";
    Venta(1, 0, "3");

    // An unplugged printer is told by the ticket engine itself, which then
    // returns normally: no second box.
    tickets->SetFailing(true);
    frmReImprimir& g = Mostrar<frmReImprimir>();
    Teclear(g.txtnumFactura, "1");
    Clic(g.Command1);
    EXPECT_FALSE(g.Cargada());
    ASSERT_EQ(Cajas().size(), 1u);
    EXPECT_TRUE(Cajas().back().starts_with("MENSAJE [Preticket]")) << Cajas().back();
    EXPECT_TRUE(tickets->Documents().empty());

    // Plugged in again, the sale prints.
    tickets->SetFailing(false);
    frmReImprimir& h = Mostrar<frmReImprimir>();
    Teclear(h.txtnumFactura, "1");
    Clic(h.Command1);
    EXPECT_EQ(tickets->Documents().size(), 1u);
    EXPECT_EQ(Cajas().size(), 1u);
}

TPV_EN_CADA_MOTOR(ReImprimir);

}  // namespace
}  // namespace tpv
