#include "core/sesion/contadores.hpp"

#include <algorithm>
#include <cstdlib>
#include <set>

#include "core/runtime/conversiones.hpp"
#include "tests/core/sesion/sesion_prueba.hpp"
#include "tests/support/procesos.hpp"

namespace tpv {
namespace {

class Contadores : public prueba::SesionTest {
protected:
    void Contador(const char* indice, int daton) {
        Ejecutar({std::string("insert into relaciones_fijas (indice,daton) values ('") + indice + "'," +
                  std::to_string(daton) + ")"});
    }
    long Daton(const char* indice) {
        return CLng(Valor(std::string("select daton from relaciones_fijas where indice = '") + indice + "'"));
    }
    Value Semaforo(const char* nombre) {
        return Valor(std::string("select datoa from relaciones_fijas where indice = 'Semaforo") + nombre + "'");
    }
    long Filas() { return CLng(Valor("select count(*) from relaciones_fijas")); }
};

TEST_P(Contadores, OtroSector_NiReconectaNiTocaSemaforosYLosContadoresSiguen) {
    Contador("Venta", 5);
    Contador("Factura", 8);
    sesion().Sector = "PERFUMERIA";
    // With no default database named, a reconnection would fail.
    ::unsetenv("TPV_DATABASE");
    EXPECT_EQ(TomarSemaforo(kSemaforoVentaTemp), 0);
    SoltarSemaforo(kSemaforoVentaTemp);
    EXPECT_EQ(SiguienteNumeroVenta(), 5);
    EXPECT_EQ(SiguienteNumeroFactura(), 8);
    EXPECT_EQ(Daton("Venta"), 6);
    EXPECT_EQ(Daton("Factura"), 9);
    EXPECT_TRUE(sesion().Conexion.IsOpen());
    EXPECT_EQ(Filas(), 2);
}

TEST_P(Contadores, Supermercado_CreaLosSemaforosYLosTomaReconectando) {
    Contador("Venta", 1);
    Ejecutar({"insert into relaciones_fijas (indice,datoa) values ('SemaforoFactura','rojo')"});
    sesion().Sector = "SUPERMERCADO";
    CrearSemaforos();
    CrearSemaforos();
    EXPECT_EQ(Semaforo("Factura"), Value("rojo"));  // an existing row is left as it is
    EXPECT_EQ(Semaforo("SalidaProd"), Value("verde"));
    EXPECT_EQ(Semaforo("VentaTemp"), Value("verde"));
    EXPECT_EQ(Filas(), 4);

    EXPECT_EQ(TomarSemaforo(kSemaforoSalidaProd), 1);
    EXPECT_EQ(Semaforo("SalidaProd"), Value("rojo"));
    SoltarSemaforo(kSemaforoSalidaProd);
    EXPECT_EQ(Semaforo("SalidaProd"), Value("verde"));

    EXPECT_EQ(SiguienteNumeroVenta(), 1);
    EXPECT_EQ(Daton("Venta"), 2);
    EXPECT_EQ(Semaforo("VentaTemp"), Value("verde"));

    // The acquire goes through the suite's opener: without a database named
    // it fails, and the connection stays closed.
    ::unsetenv("TPV_DATABASE");
    EXPECT_THROW(TomarSemaforo(kSemaforoVentaTemp), RuntimeError);
    EXPECT_FALSE(sesion().Conexion.IsOpen());
}

TEST_P(Contadores, SemaforoRojoAbandonado_SeTomaTrasLos101Sondeos) {
    Contador("Factura", 3);
    Ejecutar({"insert into relaciones_fijas (indice,datoa) values ('SemaforoFactura','rojo')"});
    sesion().Sector = "SUPERMERCADO";
    EXPECT_EQ(TomarSemaforo(kSemaforoFactura), kSondeosSemaforo);
    EXPECT_EQ(Semaforo("Factura"), Value("rojo"));

    EXPECT_EQ(SiguienteNumeroFactura(), 3);
    EXPECT_EQ(Daton("Factura"), 4);
    EXPECT_EQ(Semaforo("Factura"), Value("verde"));
}

TEST_P(Contadores, SinFila_CeroSinEscribirSalvoElPrimerAlbaran) {
    sesion().Sector = "SUPERMERCADO";
    EXPECT_EQ(SiguienteNumeroVenta(), 0);
    EXPECT_EQ(SiguienteNumeroFactura(), 0);
    EXPECT_EQ(SiguienteNumeroAbono(), 0);
    EXPECT_EQ(SiguienteNumeroPagoCuenta(), 0);
    EXPECT_EQ(UltimoNumeroFactura(), 0);
    EXPECT_EQ(Filas(), 0);

    EXPECT_EQ(SiguienteNumeroAlbaran(), 1);
    EXPECT_EQ(Daton("Albaran"), 2);
    EXPECT_EQ(SiguienteNumeroAlbaran(), 2);
    EXPECT_EQ(Daton("Albaran"), 3);
    EXPECT_EQ(Filas(), 1);
}

TEST_P(Contadores, VariasCajasALaVez_UnaSolaFilaDeAlbaranYDeSemaforos) {
    // Eight tills of a supermarket start at once on a database without the
    // semaphores, and each hands out its first delivery note.
    constexpr int kCajas = 8;
    const std::vector<std::string> resultados = prueba::EnProcesos(kCajas, [&] {
        prueba::ConexionPropia(sesion().Conexion, uri);
        sesion().Sector = "SUPERMERCADO";
        CrearSemaforos();
        return std::to_string(SiguienteNumeroAlbaran());
    });

    std::set<long> numeros;
    for (const std::string& r : resultados) {
        // Two tills that read the same number: the later write is refused.
        if (r.rfind("error: No se encuentra la fila para actualizar", 0) == 0) continue;
        ASSERT_EQ(r.find_first_not_of("0123456789"), std::string::npos) << r;
        EXPECT_TRUE(numeros.insert(std::stol(r)).second) << "número repetido " << r;
    }
    ASSERT_FALSE(numeros.empty());
    EXPECT_EQ(*numeros.begin(), 1);
    EXPECT_EQ(Daton("Albaran"), *numeros.rbegin() + 1);
    EXPECT_EQ(CLng(Valor("select count(*) from relaciones_fijas where indice = 'Albaran'")), 1);
    for (const char* nombre : {"Factura", "SalidaProd", "VentaTemp"})
        EXPECT_EQ(CLng(Valor(std::string("select count(*) from relaciones_fijas where indice = 'Semaforo") + nombre +
                             "'")),
                  1)
            << nombre;

    // The counter goes on from there as usual.
    EXPECT_EQ(SiguienteNumeroAlbaran(), *numeros.rbegin() + 1);
}

TEST_P(Contadores, UltimoNumeroFactura_NuncaMenosUnoYSinCambiarNada) {
    Contador("Factura", 0);
    const struct {
        int daton;
        int ultimo;
    } casos[] = {{0, 0}, {1, 0}, {2, 1}, {18, 17}};
    for (const auto& c : casos) {
        Ejecutar({"update relaciones_fijas set daton = " + std::to_string(c.daton) + " where indice = 'Factura'"});
        EXPECT_EQ(UltimoNumeroFactura(), c.ultimo) << c.daton;
        EXPECT_EQ(Daton("Factura"), c.daton);
    }
}

TPV_EN_CADA_MOTOR(Contadores);

}  // namespace
}  // namespace tpv
