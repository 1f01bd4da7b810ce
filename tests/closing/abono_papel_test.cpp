#include <gtest/gtest.h>

#include "tests/closing/cierre_prueba.hpp"

namespace tpv {
namespace {

using Papel = std::vector<std::string>;

// A refund of one bottle of cologne of 8,00 against invoice 77, typed at the
// till as open sale 42: the line and the total are negative there, and the
// refund document keeps them made positive.
class AbonoPapel : public prueba::CierreTest {
protected:
    void SetUp() override {
        CierreTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar(
            {"update confticket set unidades = 'Ud', descripcion = 'Descripcion', pUnitario = 'P.Unit', "
             "total = 'Total', mostrarPunit = -1, desgloseImpuestos = -1, nomImpuesto = 'IVA', base = 'Base', "
             "cuota = 'Cuota', entrega = 'Entregado', cambio = 'Cambio', FormaPago = 'Forma de pago: '"});
    }

    DatosCierre Abono(int numeroVenta) {
        Venta(numeroVenta, "-8");
        Linea(numeroVenta, 1, "Colonia", "-1", "-8");
        Ejecutar({"update detalle_factura_temp set precio_unit = 8, impuesto = -1.39 where num_factura = " +
                  std::to_string(numeroVenta)});
        modoAbono = true;
        caja.NumeroFacturaAbonada = "77";
        caja.CajaText_Pago = "-8,00";
        DatosCierre d = Datos(numeroVenta);
        d.entrega = "0,00";
        d.devolucion = "8,00";
        return d;
    }
};

// The paper shows the refund as the till did, below zero: the units and the
// total negated back from the stored document, the line's amount and the
// tax base made positive, and the money handed back as the change. The
// ticket service, used when the configurable ticket is off, prints the same.
TEST_P(AbonoPapel, Ticket_UnidadesYTotalEnNegativoComoEnLaCaja) {
    const std::string raya(35, '-');
    const Papel cuerpo = {"-1Colonia              8,00    8,00", raya, "                   TOTAL      -8,00",
                          "                  Cambio       8,00", "", raya, "IVA                 Base      Cuota",
                          "21%                 9,39      -1,39"};
    for (const bool configurable : {true, false}) {
        SCOPED_TRACE(configurable ? "ticket configurable" : "servicio de tickets");
        tickets_->Clear();
        sesion().TicketConfigurable = configurable;
        DatosCierre d = Abono(configurable ? 42 : 43);
        Cerrar(d);
        // The refund document itself holds the units and the total above zero.
        const std::string abono = configurable ? "7" : "8";
        ASSERT_EQ(tickets_->Documents().size(), 1u);
        const Papel& papel = tickets_->Documents()[0].paper;
        ASSERT_EQ(papel.size(), 19u);
        EXPECT_EQ(papel[2], "Abono:" + abono + "      15/11/26 10:30");
        EXPECT_EQ(Papel(papel.begin() + 7, papel.begin() + 15), cuerpo);
        EXPECT_EQ(Filas("select unidades,precio from detalle_abono where num_abono = " + abono), Papel{"1|-8"});
        EXPECT_EQ(Filas("select total from cabecera_abono where numero = " + abono), Papel{"8"});
        EXPECT_FALSE(modoAbono);
    }
}

TPV_EN_CADA_MOTOR(AbonoPapel);

}  // namespace
}  // namespace tpv
