#pragma once
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/reloj.hpp"
#include "core/sesion/sesion.hpp"
#include "core/sesion/visor.hpp"
#include "sale/grid_venta.hpp"
#include "sale/lineas_venta.hpp"
#include "tests/support/base_prueba.hpp"

namespace tpv::prueba {

// What the customer's display was sent.
class VisorGrabado : public Visor {
public:
    VisorGrabado() { FijarVisor(this); }
    ~VisorGrabado() override { FijarVisor(nullptr); }
    void MostrarEnVisor(const std::string& concepto, const std::string& importe) override {
        lineas.emplace_back(concepto, importe);
    }
    void MostrarBienvenida() override {}
    std::vector<std::pair<std::string, std::string>> lineas;
};

// A fresh shop with the session open on it, the clock on 15/11/2026 at
// 10:30, prices with tax, two decimals, no tariff; and the till's sale grid
// and boxes for the line routines.
class VentaTest : public BaseDeDatosTest {
protected:
    void SetUp() override {
        BaseDeDatosTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        sesion().Reiniciar();
        sesion().Conexion.Open(uri);
        Sesion& s = sesion();
        s.opciones.iva = true;
        Decimales(2);
        s.TarifaActual = -1;
        s.TerminalActual = "CAJA1";
        s.NombreTienda = "";
        s.Sector = "PERFUMERIA";
        reloj::Fijar(DateTime{DateSerial(2026, 11, 15).serial + TimeSerial(10, 30, 0).serial});
        Ejecutar({"insert into relaciones_fijas (indice,daton) values ('Venta',7)"});
    }

    void TearDown() override {
        sesion().Reiniciar();
        reloj::Soltar();
        FijarNumDecimales(2);
        BaseDeDatosTest::TearDown();
    }

    static void Decimales(int n) {
        sesion().opciones.NumDecimales = static_cast<std::int16_t>(n);
        FijarNumDecimales(n);
    }

    // A product sold at the till; `imp2` as SQL text ("null" for NULL).
    void Producto(int codigo, const std::string& nombre, const std::string& precio, const std::string& iva,
                  const std::string& imp2 = "null", const std::string& codigocliente = "null") {
        Ejecutar({"insert into productos (codigo,codigocliente,nombre,precio,iva,impuesto_2) values (" +
                  std::to_string(codigo) + "," + codigocliente + ",'" + nombre + "'," + precio + "," + iva + "," +
                  imp2 + ")"});
    }

    std::int32_t Abrir() { return numero = AbrirVenta(lblNumVenta, 0, "Juan Perez Lopez", "3"); }

    void Anadir(int codigo, double cantidad, const std::string& tipo = "P", const std::string& empleado = "3",
                const std::string& nombre = "Juan Perez Lopez") {
        AnadirItem(numero, codigo, cantidad, "", tipo, empleado, nombre, 0, controles);
    }

    std::string Celda(long fila, long columna) const { return FGCaja.TextMatrix(fila, columna); }

    // The header's total, tax and second tax against the sums of its lines.
    void CabeceraCuadra() {
        const std::string n = std::to_string(numero);
        for (auto [cabecera, linea] :
             {std::pair{"total", "precio"}, {"impuesto", "impuesto"}, {"impuesto_2", "impuesto_2"}}) {
            const Value suma =
                Valor("select sum(" + std::string(linea) + ") from detalle_factura_temp where num_factura = " + n);
            EXPECT_NEAR(
                CDbl(Valor("select " + std::string(cabecera) + " from cabecera_factura_temp where numero = " + n)),
                suma.IsNull() ? 0.0 : CDbl(suma), 1e-9)
                << cabecera;
        }
    }

    Value Linea(const std::string& columna, int orden) {
        return Valor("select " + columna + " from detalle_factura_temp where num_factura = " + std::to_string(numero) +
                     " and orden = " + std::to_string(orden));
    }
    double NumLinea(const std::string& columna, int orden) { return CDbl(Linea(columna, orden)); }
    long Lineas() {
        return CLng(Valor("select count(*) from detalle_factura_temp where num_factura = " + std::to_string(numero)));
    }

    Label lblNumVenta;
    Grid FGCaja = NuevaGridVenta();
    TextBox CajaText_Pago, txtUltProd, txtUltCant, txtTArticulos;
    ControlesVenta controles{FGCaja, CajaText_Pago, txtUltProd, txtUltCant, txtTArticulos};
    std::int32_t numero = 0;
};

}  // namespace tpv::prueba
