#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <iostream>
#include <set>

#include "core/sesion/contadores.hpp"
#include "tests/closing/cierre_prueba.hpp"
#include "tests/support/procesos.hpp"

namespace tpv {
namespace {

class CierreConcurrente : public prueba::CierreTest {};

// The place of a child among `n`: the first of n marker files it creates.
int PuestoDelHijo(const std::string& base, int n) {
    for (int i = 0; i < n; ++i) {
        const int fd = ::open((base + std::to_string(i)).c_str(), O_CREAT | O_EXCL | O_WRONLY, 0600);
        if (fd >= 0) {
            ::close(fd);
            return i;
        }
    }
    return -1;
}

TEST_P(CierreConcurrente, DosCajasALaVez_NiNumerosRepetidosNiLineasPerdidasNiStockDescuadrado) {
    // Two supermarket tills each close their own open sales at the same
    // time; every sale has a line of each of three shared products.
    constexpr int kCajas = 2;
    constexpr int kVentas = 6;
    sesion().Sector = "SUPERMERCADO";
    sesion().opciones.NumCopiasFactura = 0;
    CrearSemaforos();
    for (int codigo = 1; codigo <= 3; ++codigo) Producto(codigo, "Leche " + std::to_string(codigo), 1000, 1);
    for (int numero = 1; numero <= kCajas * kVentas; ++numero) {
        Venta(numero, "12");
        for (int codigo = 1; codigo <= 3; ++codigo)
            Linea(numero, codigo, "Leche " + std::to_string(codigo), std::to_string(codigo), "2");
    }

    const std::string marcas = "/tmp/tpv_cierre_" + std::to_string(::getpid()) + "_" + std::string(motor == prueba::Motor::SQLite ? "sqlite" : "pg") + "_";
    const std::vector<std::string> resultados = prueba::EnProcesos(kCajas, [&] {
        prueba::ConexionPropia(sesion().Conexion, uri);
        const int puesto = PuestoDelHijo(marcas, kCajas);
        std::string fallos;
        for (int v = 1; v <= kVentas; ++v) {
            // Two tills that take the same invoice number: the second one's
            // write of the counter is refused before anything of its sale
            // is written, and the assistant closes it again.
            for (int intento = 0; intento < 3; ++intento) {
                DatosCierre d = Datos(puesto * kVentas + v);
                try {
                    Cerrar(d);
                    break;
                } catch (const std::exception& e) {
                    if (intento == 2) fallos += std::string(e.what()) + "\n";
                }
            }
        }
        return fallos;
    });
    for (int i = 0; i < kCajas; ++i) ::unlink((marcas + std::to_string(i)).c_str());
    for (const std::string& r : resultados) EXPECT_EQ(r, "");

    const long ventas = kCajas * kVentas;
    EXPECT_EQ(Cuenta("cabecera_factura"), ventas);
    std::set<long> numeros;
    for (const std::string& n : Filas("select numero from cabecera_factura")) numeros.insert(std::stol(n));
    EXPECT_EQ(static_cast<long>(numeros.size()), ventas);
    EXPECT_EQ(Cuenta("detalle_factura"), ventas * 3);
    EXPECT_EQ(Cuenta("historicostock"), ventas * 3);
    EXPECT_EQ(Cuenta("detalle_factura_temp") + Cuenta("cabecera_factura_temp"), 0);
    for (int codigo = 1; codigo <= 3; ++codigo) {
        const std::string c = std::to_string(codigo);
        const double movido = CDbl(Valor("select sum(cantidad) from historicostock where codigo = " + c));
        EXPECT_EQ(movido, ventas * codigo);
        // Salida goes up inside the database's own update and always adds up.
        // Stock is written back from what the till read: the semaphore only
        // narrows the window (a till that has probed long enough goes in
        // anyway), so a decrement can be lost, never one made twice.
        EXPECT_EQ(CDbl(Valor("select salida from productos where codigo = " + c)), movido) << c;
        const double stock = CDbl(Valor("select stock from productos where codigo = " + c));
        EXPECT_GE(stock, 1000 - movido) << c;
        if (stock != 1000 - movido) std::cout << "stock " << c << ": " << stock << " por " << 1000 - movido << "\n";
    }
    EXPECT_EQ(CLng(Valor("select daton from relaciones_fijas where indice = 'Factura'")), 100 + ventas);
}

TPV_EN_CADA_MOTOR(CierreConcurrente);

}  // namespace
}  // namespace tpv
