// Delivery notes: the note number and its warnings, the notes joined into one
// open sale with their lines and totals, and two tills picking the same note.
#include "closing/albaranes.hpp"
#include "core/runtime/texto.hpp"
#include "core/sesion/contadores.hpp"
#include "sale/anulacion.hpp"
#include "sale/lineas_venta.hpp"
#include "tests/closing/cierre_prueba.hpp"

namespace tpv {
namespace {

class Albaranes : public prueba::CierreTest {
protected:
    void SetUp() override {
        CierreTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        sesion().NombreEmpleadoActual = "Juan Perez Lopez";
        sesion().CodigoEmpleadoActual = 5;
        Ejecutar({"insert into relaciones_fijas (indice,daton) values ('Venta',40)",
                  "insert into clientes (codigo,nombre,apellidos) values (8,'Rosa','Vidal Mora')"});
    }

    // An open sale of customer 8 with the totals given and one line per
    // product, each at place 1.
    void Nota(int numero, const std::string& total, const std::string& recargo, const std::string& descuento,
              const std::string& impuesto, std::initializer_list<int> productos) {
        Venta(numero, total, 8);
        auto sql = [](const std::string& x) { return Replace(x, ",", "."); };
        Ejecutar({"update cabecera_factura_temp set recargo = " + sql(recargo) + ", descuento = " + sql(descuento) +
                  ", impuesto = " + sql(impuesto) + ", impuesto_2 = 1 where numero = " + std::to_string(numero)});
        for (int p : productos) Linea(numero, p, "P" + std::to_string(p), "1", "10");
    }

    long LineasDe(std::int32_t venta) {
        return CLng(Valor("select count(*) from detalle_factura_temp where num_factura = " + std::to_string(venta)));
    }

    std::string Cabecera(std::int32_t numero) {
        const auto filas = Filas("select total,recargo,descuento,impuesto,impuesto_2,cliente,num_albaran from "
                                 "cabecera_factura_temp where numero = " + std::to_string(numero));
        return filas.empty() ? "" : filas[0];
    }
};

TEST_P(Albaranes, GrabarAlbaran_ImpresoraQueFallaAvisaEnCadaCopiaYElAlbaranQueda) {
    prueba::MensajesGuionados cajas;
    sesion().ImpresoraTickets = "TICK'ETS";
    Nota(31, "10", "0", "0", "1,74", {1});
    GrabarAlbaran(31, 3);
    prueba::AvisosDeImpresora(cajas.mostradas, 3);
    EXPECT_EQ(Texto(Valor("select num_albaran from cabecera_factura_temp where numero = 31")), "1");
}

TEST_P(Albaranes, TresNotas_UnaVentaConTodasLasLineasYLasSumas) {
    Nota(31, "10", "0", "0,5", "1,74", {1});
    Nota(32, "20", "1", "0", "3,47", {2, 3});
    Nota(33, "12,5", "0", "1,25", "2,17", {3});
    Ejecutar({"update cabecera_factura_temp set descuento = null where numero = 32"});
    for (int n : {31, 32, 33}) GrabarAlbaran(n, 1);
    // The first note of a shop makes its counter; nothing but the number
    // moves: no stock, no closed sale, no drawer.
    EXPECT_EQ(Filas("select num_albaran from cabecera_factura_temp order by numero"),
              (std::vector<std::string>{"1", "2", "3"}));
    EXPECT_EQ(Cuenta("cabecera_factura") + Cuenta("historicostock") + cajones, 0);
    EXPECT_EQ(tickets_->Documents().size(), 3u);
    const std::vector<AlbaranPendiente> lista = AlbaranesPendientes(8);
    ASSERT_EQ(lista.size(), 3u);
    EXPECT_EQ(lista[0].numero, "33");  // the newest first
    EXPECT_EQ(lista[0].cliente, "Rosa Vidal Mora");
    EXPECT_EQ(lista[0].importe, "12,5");
    EXPECT_EQ(lista[0].empleado, "Ana");  // one word stays whole
    EXPECT_TRUE(AlbaranesPendientes(9).empty());

    Label etiqueta;
    const std::int32_t venta = JuntarAlbaranes(etiqueta, 8, {33, 31, 32});
    EXPECT_EQ(venta, 40);
    EXPECT_EQ(etiqueta.caption, "40");
    // The sums of the notes; the second tax is not carried.
    EXPECT_EQ(Cabecera(venta), "42,5|1|1,75|7,38||8|");
    EXPECT_EQ(Filas("select count(*) from cabecera_factura_temp")[0], "1");
    EXPECT_EQ(Filas("select codigo, orden from detalle_factura_temp where num_factura = 40 order by codigo"),
              (std::vector<std::string>{"1|1", "2|1", "3|1", "3|1"}));  // the lines keep their places
}

TEST_P(Albaranes, DosCajasConLaMismaNota_LaSegundaSumaElTotalSinLineas) {
    Nota(31, "10", "0", "0", "1,74", {1, 2});
    GrabarAlbaran(31, 1);
    Label cajaA, cajaB;
    const std::int32_t a = AbrirVenta(cajaA, 8, "Ana", "3");
    const std::int32_t b = AbrirVenta(cajaB, 8, "Luis", "4");
    // Both tills read the note before either deleted it.
    PasoDetallesANuevaVenta(31, a);
    AumentoTotalCabecera(31, a);
    PasoDetallesANuevaVenta(31, b);
    AumentoTotalCabecera(31, b);
    BorrarCabeceraTemp(31);
    BorrarCabeceraTemp(31);
    EXPECT_EQ(LineasDe(a), 2);
    EXPECT_EQ(LineasDe(b), 0);
    EXPECT_EQ(Cabecera(a), "10|0|0|1,74||8|");
    EXPECT_EQ(Cabecera(b), "10|0|0|1,74||8|");

    // A till whose list is older than the other's whole joining gets an
    // empty sale, and nothing else changes.
    const std::int32_t c = JuntarAlbaranes(cajaB, 8, {31});
    EXPECT_EQ(LineasDe(c), 0);
    EXPECT_EQ(Cabecera(c), "|||||8|");
    EXPECT_EQ(LineasDe(a), 2);
}

TPV_EN_CADA_MOTOR(Albaranes);

}  // namespace
}  // namespace tpv
