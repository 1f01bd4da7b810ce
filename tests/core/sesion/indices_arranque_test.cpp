// A database made before some index joined the shop's schema gets it at the
// next start, and a start with every index in place changes nothing.
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/datos/esquema.hpp"
#include "core/datos/session.hpp"
#include "core/sesion/arranque.hpp"
#include "tests/core/sesion/sesion_prueba.hpp"

namespace tpv {
namespace {

namespace fs = std::filesystem;

class IndicesDeArranque : public prueba::SesionTest {
protected:
    void SetUp() override {
        prueba::SesionTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        registro = fs::temp_directory_path() / ("tpv_indices_" + std::to_string(::getpid()) + ".log");
        fs::remove(registro);
        ::setenv("TPV_LOG", registro.c_str(), 1);
    }
    void TearDown() override {
        ::unsetenv("TPV_LOG");
        fs::remove(registro);
        prueba::SesionTest::TearDown();
    }

    datos::Engine& Motor() { return sesion().Conexion.session().engine(); }
    bool Tiene(const std::string& indice) {
        auto nombres = Motor().IndexNames();
        return std::find(nombres.begin(), nombres.end(), indice) != nombres.end();
    }
    void Quitar(const std::string& indice) { Motor().Run("DROP INDEX \"" + indice + "\"", {}, false); }
    std::string Registro() {
        std::ifstream f(registro);
        std::stringstream ss;
        ss << f.rdbuf();
        return ss.str();
    }

    fs::path registro;
};

TEST_P(IndicesDeArranque, IndicesQuitados_VuelvenAlArrancarYUnSegundoArranqueNoHaceNada) {
    Quitar("ix_detalle_factura_top");
    Quitar("ix_cabecera_factura_numero");  // a unique one
    ASSERT_FALSE(Tiene("ix_detalle_factura_top"));

    CompletarIndicesDeLaBase();
    EXPECT_TRUE(Tiene("ix_detalle_factura_top"));
    EXPECT_TRUE(Tiene("ix_cabecera_factura_numero"));
    EXPECT_NE(Registro().find("se crea el índice 'ix_detalle_factura_top', que faltaba."), std::string::npos);
    // The unique one refuses a repeated invoice number again.
    Ejecutar({"insert into cabecera_factura (numero) values (7)"});
    EXPECT_THROW(sesion().Conexion.Execute("insert into cabecera_factura (numero) values (7)"), DbError);

    const auto antes = Motor().IndexNames().size();
    fs::remove(registro);
    const auto segunda = datos::CompletarIndices(sesion().Conexion, datos::CarpetaEsquemas() + "/tienda.schema");
    EXPECT_TRUE(segunda.creados.empty());
    EXPECT_TRUE(segunda.fallidos.empty());
    EXPECT_EQ(Motor().IndexNames().size(), antes);
    CompletarIndicesDeLaBase();
    EXPECT_EQ(Registro(), "");
}

TEST_P(IndicesDeArranque, IndiceQueNoSePuedeCrear_SeAnotaYLosDemasSeCrean) {
    // Rows that a unique index refuses: that index can't be made, the till
    // still starts and the other missing index is made.
    Quitar("ix_cabecera_factura_numero");
    Quitar("ix_detalle_factura_factura");
    Ejecutar({"insert into cabecera_factura (numero) values (5)", "insert into cabecera_factura (numero) values (5)"});

    ASSERT_NO_THROW(CompletarIndicesDeLaBase());
    EXPECT_FALSE(Tiene("ix_cabecera_factura_numero"));
    EXPECT_TRUE(Tiene("ix_detalle_factura_factura"));
    EXPECT_NE(Registro().find("no se pudo crear el índice 'ix_cabecera_factura_numero'"), std::string::npos);
}

TEST_P(IndicesDeArranque, SinArchivoDeEsquema_ElArranqueSigueYLoAnota) {
    const char* antes = std::getenv("TPV_SCHEMA_DIR");
    const std::string carpeta = antes ? antes : "";
    ::setenv("TPV_SCHEMA_DIR", "/nonexistent-tpv-schema", 1);
    EXPECT_NO_THROW(CompletarIndicesDeLaBase());
    if (antes) ::setenv("TPV_SCHEMA_DIR", carpeta.c_str(), 1);
    else ::unsetenv("TPV_SCHEMA_DIR");
    EXPECT_NE(Registro().find("no se pudieron revisar los índices"), std::string::npos);
}

TPV_EN_CADA_MOTOR(IndicesDeArranque);

}  // namespace
}  // namespace tpv
