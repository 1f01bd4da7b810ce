#include "tests/support/base_prueba.hpp"

#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>

#include "core/datos/esquema.hpp"

namespace tpv::prueba {

std::string NombreMotor(const ::testing::TestParamInfo<Motor>& info) {
    return info.param == Motor::SQLite ? "SQLite" : "PostgreSQL";
}

bool PostgresDisponible() {
    const char* uri = std::getenv("TPV_PG_URI");
    return uri && *uri;
}

std::string NuevaBase(Motor motor, const std::string& esquema) {
    static std::atomic<int> contador{0};
    std::string schema = datos::CarpetaEsquemas() + "/" + esquema;
    if (motor == Motor::SQLite) {
        const char* tmp = std::getenv("TMPDIR");
        std::string ruta = std::string(tmp && *tmp ? tmp : "/tmp") + "/tpv_prueba_" + std::to_string(getpid()) + "_" +
                           std::to_string(contador++) + ".db";
        datos::CrearBaseDeDatos(ruta, schema);
        return ruta;
    }
    throw std::runtime_error("PostgreSQL todavía no está disponible en las pruebas");
}

void BorrarBase(Motor motor, const std::string& uri) {
    if (motor == Motor::SQLite) {
        std::remove(uri.c_str());
        std::remove((uri + "-wal").c_str());
        std::remove((uri + "-shm").c_str());
    }
}

void BaseDeDatosTest::SetUp() {
    motor = GetParam();
    if (motor == Motor::PostgreSQL && !PostgresDisponible()) {
        if (std::getenv("CI")) FAIL() << "En CI las pruebas de PostgreSQL no se saltan: falta TPV_PG_URI";
        GTEST_SKIP() << "PostgreSQL no disponible (TPV_PG_URI vacío): prueba saltada";
    }
    uri = NuevaBase(motor);
    cn.Open(uri);
}

void BaseDeDatosTest::TearDown() {
    cn.Close();
    if (!uri.empty()) BorrarBase(motor, uri);
}

void BaseDeDatosTest::Ejecutar(std::initializer_list<std::string> sentencias) {
    for (const auto& s : sentencias) {
        try {
            cn.Execute(s);
        } catch (const std::exception& e) {
            ADD_FAILURE() << s << ": " << e.what();
            return;
        }
    }
}

Value BaseDeDatosTest::Valor(const std::string& sentencia) {
    Recordset rs;
    rs.Open(sentencia, cn, adOpenStatic, adLockOptimistic);
    if (rs.RecordCount() < 1) return Value();
    return rs.Fields(0).Value();
}

}  // namespace tpv::prueba
