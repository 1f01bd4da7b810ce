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
// ticket service, used when the configurable ticket is off, prints the same
// paper, with the change and the money handed over in their places.
TEST_P(AbonoPapel, Ticket_UnidadesYTotalEnNegativoComoEnLaCaja) {
    const auto esperado = [](const std::string& numero) {
        return Papel{
            "   Perfumería Olmo",
            "",
            "Abono:" + numero + "      15/11/26 10:30",
            "Ana",
            "",
            "Ud Descripcion       P.Unit   Total",
            "-----------------------------------",
            "-1Colonia              8,00    8,00",
            "-----------------------------------",
            "                   TOTAL      -8,00",
            "                  Cambio       8,00",
            "",
            "-----------------------------------",
            "IVA                 Base      Cuota",
            "21%                 9,39      -1,39",
            "-----------------------------------",
            "",
            "       Forma de pago: Contado",
            "",
        };
    };
    for (const bool configurable : {true, false}) {
        SCOPED_TRACE(configurable ? "ticket configurable" : "servicio de tickets");
        tickets_->Clear();
        sesion().TicketConfigurable = configurable;
        DatosCierre d = Abono(configurable ? 42 : 43);
        Cerrar(d);
        // The refund document itself holds the units and the total above zero.
        const std::string abono = configurable ? "7" : "8";
        ASSERT_EQ(tickets_->Documents().size(), 1u);
        EXPECT_EQ(tickets_->Documents()[0].paper, esperado(abono));
        EXPECT_EQ(Filas("select unidades,precio from detalle_abono where num_abono = " + abono), Papel{"1|-8"});
        EXPECT_EQ(Filas("select total from cabecera_abono where numero = " + abono), Papel{"8"});
        EXPECT_FALSE(modoAbono);
    }
}

// The ticket printer comes back when the operator is told of its failure.
struct ImpresoraQueVuelve : prueba::MensajesGuionados {
    int Mostrar(const CajaMensaje& caja) override {
        sesion().ImpresoraTickets = "TICKETS";
        return MensajesGuionados::Mostrar(caja);
    }
};

// A refund's copies go as a sale's: as many as the options ask for, none
// unticked or at 0 copies, and a failing copy warns after itself and after
// every copy that follows, while the refund closes and the drawer opens.
TEST_P(AbonoPapel, Copias_ComoLasDeUnaVentaYElAvisoSeRepite) {
    struct Caso {
        int copias;
        bool imprimir;
        size_t papeles;
    };
    int venta = 50;
    for (const Caso& caso : {Caso{2, true, 2}, Caso{3, false, 0}, Caso{0, true, 0}}) {
        SCOPED_TRACE(caso.copias);
        tickets_->Clear();
        sesion().opciones.NumCopiasFactura = caso.copias;
        DatosCierre d = Abono(venta++);
        d.imprimir = caso.imprimir;
        Cerrar(d);
        ASSERT_EQ(tickets_->Documents().size(), caso.papeles);
        for (const auto& documento : tickets_->Documents()) EXPECT_EQ(documento.paper, tickets_->Documents()[0].paper);
    }
    tickets_->Clear();

    ImpresoraQueVuelve cajas;
    sesion().opciones.NumCopiasFactura = 3;
    sesion().ImpresoraTickets = "TICK'ETS";  // breaks the ticket's first query
    DatosCierre d = Abono(60);
    d.abrirCajon = true;
    Cerrar(d);
    Papel avisos;
    for (const CajaMensaje& c : cajas.mostradas)
        avisos.push_back(c.titulo + (c.estilo & vbCritical ? " (critico): " : ": ") + c.texto);
    EXPECT_EQ(avisos, Papel(3,
                            "Impresion (critico): Compruebe la conexion con su impresora, si la impresora esta "
                            "conectada a otro equipo compruebe el estado de la conexion."));
    ASSERT_EQ(tickets_->Documents().size(), 2u);
    EXPECT_EQ(tickets_->Documents()[1].paper.at(2).substr(0, 9), "Abono:10 ");
    EXPECT_EQ(cajones, 1);
    EXPECT_EQ(Filas("select total from cabecera_abono where numero = 10"), Papel{"8"});
    EXPECT_EQ(Cuenta("cabecera_factura_temp") + Cuenta("cabecera_factura"), 0);
    EXPECT_FALSE(modoAbono);
}

TPV_EN_CADA_MOTOR(AbonoPapel);

}  // namespace
}  // namespace tpv
