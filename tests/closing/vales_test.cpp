// Vouchers and debts in the database: the scale a sale's voucher comes
// from, the search of a voucher to spend, its value spread over the lines,
// what is left of it, and the debt of a sale left on credit.
#include <gtest/gtest.h>

#include "closing/vales.hpp"
#include "closing/vales_deudas.hpp"
#include "core/sesion/visor.hpp"
#include "sale/grid_venta.hpp"
#include "tests/closing/cierre_prueba.hpp"

namespace tpv {
namespace {

using Esperadas = std::vector<std::string>;
using prueba::EnPapel;

class Vales : public prueba::CierreTest {
protected:
    void SetUp() override {
        CierreTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({"insert into descuentos (tipo,precio,descuento,numdias,impMinProxCompra) values (3,50,3,0,20)",
                  "insert into descuentos (tipo,precio,descuento,numdias,impMinProxCompra) values (3,100,8,30,40)",
                  "insert into descuentos (tipo,precio,descuento,numdias,impMinProxCompra) values (3,200,20,-1,60)",
                  "insert into descuentos (tipo,precio,descuento,numdias) values (1,10,5,7)"});
    }

    void Factura(int numero, const std::string& total) {
        Escribir("cabecera_factura", "Numero=" + std::to_string(numero) + "|Fecha=15/11/2026|Cliente=6|Total=" +
                                         total + "|Codigo_Empleado=3|fechaVenta=14/11/2026|");
    }

    // A voucher as the till stores it.
    void Vale(int numero, const std::string& descuento, const std::string& desde, const std::string& hasta,
              const std::string& minimo, int estado = 0) {
        Escribir("vales_descuento", "num_factura=" + std::to_string(numero) + "|importe=0|descuento=" + descuento +
                                        "|desde=" + desde + "|hasta=" + hasta + "|impMinProxCompra=" + minimo +
                                        "|estado=" + std::to_string(estado) + "|");
    }
};

// The highest step the total reaches gives the voucher; below the first
// step there is none. -1 days never expire, 0 days last today only.
TEST_P(Vales, EmitirValeVenta_EscalonMasAltoAlcanzado) {
    struct Caso {
        int factura;
        const char* total;
        const char* fila;  // importe|descuento|desde|hasta|impMinProxCompra|estado; "" for none
    };
    const Caso casos[] = {{1, "49,99", ""},
                          {2, "50", "50|3|15/11/2026|15/11/2026|20|0"},
                          {3, "99,99", "99,99|3|15/11/2026|15/11/2026|20|0"},
                          {4, "100", "100|8|15/11/2026|15/12/2026|40|0"},
                          {5, "250", "250|20|15/11/2026|01/01/1900|60|0"}};
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.total);
        Factura(c.factura, c.total);
        const std::size_t antes = tickets_->Documents().size();
        EmitirValeVenta(c.factura);
        const Esperadas filas = Filas("select importe,descuento,desde,hasta,impMinProxCompra,estado from "
                                      "vales_descuento where num_factura = " + std::to_string(c.factura));
        EXPECT_EQ(filas, std::string(c.fila).empty() ? Esperadas{} : Esperadas{c.fila});
        EXPECT_EQ(tickets_->Documents().size(), antes + (filas.empty() ? 0 : 1));
    }

    // The same day every voucher can be spent; the next day the one of 0
    // days has gone, and years later only the one that never expires stays.
    double valor = 0;
    EXPECT_TRUE(BuscarValeAplicable("2", "20", valor));
    EXPECT_EQ(valor, 3);
    Reloj(10, 30, 16);
    EXPECT_FALSE(BuscarValeAplicable("2", "20", valor));
    EXPECT_TRUE(BuscarValeAplicable("4", "40", valor));
    reloj::Fijar(DateTime{DateSerial(2031, 3, 1).serial});
    EXPECT_FALSE(BuscarValeAplicable("4", "40", valor));
    EXPECT_TRUE(BuscarValeAplicable("5", "60", valor));
    EXPECT_EQ(valor, 20);
    EXPECT_TRUE(HayValesAplicables(60));
    EXPECT_FALSE(HayValesAplicables(59.99));
}

// Whatever is wrong with the number typed, nothing is found and nothing
// says why.
TEST_P(Vales, BuscarValeAplicable_SoloUnValeEnVigorQueAlcanzaSuMinimo) {
    Vale(20, "10", "15/11/2026", "15/12/2026", "30");
    Vale(21, "10", "15/11/2026", "15/12/2026", "0", -1);
    Vale(22, "10", "01/10/2026", "14/11/2026", "0");
    Vale(23, "10", "16/11/2026", "01/01/1900", "0");
    Vale(24, "7,5", "01/01/2020", "01/01/1900", "0");
    struct Caso {
        const char* numero;
        const char* importe;
        bool encontrado;
    };
    const Caso casos[] = {{"20", "30", true},    {"20", "29", false},  {"20", "29.99", false},
                          {"21", "40", false},   {"22", "40", false},  {"23", "40", false},
                          {"24", "0", true},     {"25", "40", false},  {"", "40", false},
                          {"abc", "40", false},  {"20,5", "40", false}, {"20 or 1=1", "40", false},
                          {"-20", "40", false},  {"99999999999", "40", false}};
    for (const Caso& c : casos) {
        SCOPED_TRACE(std::string(c.numero) + " / " + c.importe);
        double valor = -1;
        EXPECT_EQ(BuscarValeAplicable(c.numero, c.importe, valor), c.encontrado);
        if (c.encontrado) {
            EXPECT_GT(valor, 0);
        }
    }
}

class PoleRecorder : public Visor {
public:
    void MostrarEnVisor(const std::string& concepto, const std::string& importe) override {
        lineas.push_back(concepto + "=" + importe);
    }
    void MostrarBienvenida() override {}
    std::vector<std::string> lineas;
};

// A quarter off every line: the amount, the discount, the taxes from the
// catalogue price less the discount, the row written in place and shown on
// the pole display. The lines end at the first empty row.
TEST_P(Vales, AplicarPorcentajeALineas_RebajaImpuestosYFilas) {
    Venta(50, "40");
    Linea(50, 1, "Colonia", "1", "30");
    Linea(50, 2, "Jabon", "2", "10");
    Ejecutar({"update detalle_factura_temp set orden = 2 where codigo = 2"});
    sesion().opciones.iva = true;
    sesion().configuracionregional.segundoimpuesto = false;
    PoleRecorder visor;
    FijarVisor(&visor);
    sesion().VisorActivo = true;
    Grid grid = NuevaGridVenta();
    grid.SetRows(5);
    auto fila = [&](long f, const char* nombre, const char* codigo, const char* unidades, const char* importe,
                    const char* precio, const char* tipo2) {
        const std::pair<long, const char*> celdas[] = {{kColNombre, nombre}, {kColTipo, "P"},
                                                        {kColCodigo, codigo}, {kColTipoIva, "21"},
                                                        {kColUnidades, unidades}, {kColImporte, importe},
                                                        {kColPrecio, precio}, {kColImpuesto2, tipo2},
                                                        {kColCodEmpleado, "3"}, {kColEmpleado, "Ana"},
                                                        {kColCodFamilia, "4"}};
        for (const auto& [col, texto] : celdas) grid.SetTextMatrix(f, col, texto);
    };
    fila(1, "Colonia", "1", "1", "30,00", "30", "0");
    fila(2, "Jabon", "2", "2", "10,00", "5", "4");
    fila(4, "Fuera", "3", "1", "9,00", "9", "0");  // after the empty row 3: untouched
    AplicarPorcentajeALineas(25, grid, 50);
    FijarVisor(nullptr);

    EXPECT_EQ(grid.TextMatrix(1, kColPorcentaje), "25");
    EXPECT_EQ(grid.TextMatrix(1, kColImporte), "22,50");
    EXPECT_EQ(grid.TextMatrix(2, kColImporte), "7,50");
    EXPECT_EQ(grid.TextMatrix(4, kColImporte), "9,00");
    EXPECT_EQ(grid.TextMatrix(4, kColPorcentaje), "");
    // Colonia: net 30 - 7,5 = 22,5, tax in it 3,90. Jabon: net 5 - 2,5 =
    // 2,5, taxes 0,43 and 0,10 at 4 % (the second tax always counts here).
    EXPECT_EQ(Filas("select codigo,orden,unidades,precio,descuento,precio_unit,impuesto,tipoimpuesto,impuesto_2,"
                    "tipoimpuesto_2 from detalle_factura_temp order by codigo"),
              (Esperadas{"1|1|1|22,5|7,5|30|3,9|21|0|0", "2|2|2|7,5|2,5|5|0,43|21|0,1|4"}));
    EXPECT_EQ(visor.lineas, (Esperadas{"Colonia=22,50", "Jabon=7,50"}));
}

// What is left stays on the voucher with a new slip; at 0 it is used up.
// A voucher another till spent meanwhile no longer has the value applied,
// and nothing is changed.
TEST_P(Vales, ActualizarValeUsado_RestoReimpresoAgotadoYDosCajas) {
    Vale(30, "50", "15/11/2026", "01/01/1900", "20");
    Vale(31, "10", "15/11/2026", "15/12/2026", "12,5");
    ActualizarValeUsado(10, 50, 30);
    EXPECT_EQ(Filas("select descuento,estado,desde,hasta from vales_descuento where num_factura = 30"),
              Esperadas{"10|0|15/11/2026|01/01/1900"});
    ASSERT_EQ(tickets_->Documents().size(), 1u);
    EXPECT_TRUE(EnPapel(tickets_->Documents()[0], "*         10,00        *"));

    // The second till applied it at 50 too: no row has that value now.
    ActualizarValeUsado(0, 50, 30);
    EXPECT_EQ(Filas("select descuento,estado from vales_descuento where num_factura = 30"), Esperadas{"10|0"});

    ActualizarValeUsado(0, 10, 31);
    EXPECT_EQ(Filas("select descuento,estado,hasta from vales_descuento where num_factura = 31"),
              Esperadas{"0|-1|15/12/2026"});
    EXPECT_EQ(tickets_->Documents().size(), 1u);
}

// A debt is tied to its invoice: a second closing under the same number
// brings the row up to date, open again, under the same payment number.
TEST_P(Vales, GrabarDeuda_InsertaYLuegoActualizaPorFactura) {
    GrabarDeuda(70, 5);  // no closed sale under that number: no debt
    EXPECT_EQ(Cuenta("cabecera_pago"), 0);
    Factura(70, "40");
    GrabarDeuda(70, 12.5);
    EXPECT_EQ(Filas("select num_pago,num_factura,cliente,importe,fecha,estado,empleado,observaciones "
                    "from cabecera_pago"),
              Esperadas{"3|70|6|12,5|14/11/2026|0|3|"});
    Ejecutar({"update cabecera_pago set estado = 1"});
    GrabarDeuda(70, 7);
    EXPECT_EQ(Filas("select num_pago,num_factura,importe,estado from cabecera_pago"), Esperadas{"3|70|7|0"});
    EXPECT_EQ(CLng(Valor("select daton from relaciones_fijas where indice = 'PagosCuenta'")), 4);
}

TPV_EN_CADA_MOTOR(Vales);

}  // namespace
}  // namespace tpv
