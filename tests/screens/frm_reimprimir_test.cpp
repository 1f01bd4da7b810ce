// Reprint: the twenty latest sales, newest first, and the printer box on
// any failure.
#include "printing/page_device.hpp"
#include "printing/recording_printer.hpp"
#include "tests/screens/escritorio_prueba.hpp"

namespace tpv {
namespace {

const char* const kCajaImpresion =
    "MENSAJE [Impresion] Compruebe la conexion con su impresora, si la impresora esta conectada a otro equipo "
    "compruebe el estado de la conexion. -> Aceptar";

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
    frmReImprimir& vacia = Mostrar<frmReImprimir>();
    EXPECT_EQ(vacia.grid_Reimprimir.Rows(), 2);
    EXPECT_EQ(vacia.grid_Reimprimir.TextMatrix(0, 1), "Cliente");
    EXPECT_EQ(vacia.grid_Reimprimir.TextMatrix(1, 0), "");
    Clic(vacia.cmd_Salir);

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
    EXPECT_EQ(g.ColAlignment(1), Alineacion::Izquierda);
    EXPECT_EQ(g.ColAlignment(3), Alineacion::Centro);
    EXPECT_DOUBLE_EQ(g.ColWidth(1), g.ColWidth(0) * 2.7);

    anfitrion.Accion([&] { f.grid_Reimprimir.ClicEnCelda(3, 2, true); });
    EXPECT_EQ(f.txtnumFactura.Text(), "20");
}

TEST_P(ReImprimir, FalloDeImpresion_CajaYCierra) {
    auto impresora = std::make_unique<RecordingPrinter>("TICKETS");
    RecordingPrinter* tickets = impresora.get();
    std::vector<std::unique_ptr<PageDevice>> lista;
    lista.push_back(std::move(impresora));
    InstallPrinters(std::move(lista));
    sesion().ImpresoraTickets = "TICKETS";
    Venta(1, 0, "3");

    // An empty number fails to convert: the printer's box, and the screen closes.
    frmReImprimir& f = Mostrar<frmReImprimir>();
    Clic(f.Command1);
    EXPECT_FALSE(f.Cargada());
    EXPECT_EQ(Cajas(), std::vector<std::string>{kCajaImpresion});

    // An unplugged printer is told by the ticket engine itself, which then
    // returns normally: no second box.
    tickets->SetFailing(true);
    frmReImprimir& g = Mostrar<frmReImprimir>();
    Teclear(g.txtnumFactura, "1");
    Clic(g.Command1);
    EXPECT_FALSE(g.Cargada());
    ASSERT_EQ(Cajas().size(), 2u);
    EXPECT_TRUE(Cajas().back().starts_with("MENSAJE [Preticket]")) << Cajas().back();
    EXPECT_TRUE(tickets->Documents().empty());

    // Plugged in again, the sale prints.
    tickets->SetFailing(false);
    frmReImprimir& h = Mostrar<frmReImprimir>();
    Teclear(h.txtnumFactura, "1");
    Clic(h.Command1);
    EXPECT_EQ(tickets->Documents().size(), 1u);
    EXPECT_EQ(Cajas().size(), 2u);
}

TPV_EN_CADA_MOTOR(ReImprimir);

}  // namespace
}  // namespace tpv
