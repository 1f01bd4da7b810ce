#include "tests/support/base_prueba.hpp"

#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>

#include "core/datos/esquema.hpp"
#include "core/datos/servidor.hpp"

namespace tpv::prueba {

namespace {

std::string UriAdministrador() {
    const char* uri = std::getenv("TPV_PG_URI");
    return uri ? uri : "";
}

std::uint64_t Huella(const std::string& texto) {
    std::uint64_t h = 14695981039346656037ULL;  // FNV-1a
    for (unsigned char c : texto) h = (h ^ c) * 1099511628211ULL;
    return h;
}

// The template of a schema on the test server: made once, by whichever test
// process comes first, and named after its DDL, so that a changed schema gets
// a template of its own. Each test's database is a copy of it, which the
// server makes much faster than running the DDL again.
std::string Plantilla(const std::string& admin, const std::string& esquema, const std::string& ruta) {
    static std::mutex mu;
    static std::map<std::string, std::string> hechas;
    std::lock_guard<std::mutex> lock(mu);
    auto it = hechas.find(esquema);
    if (it != hechas.end()) return it->second;

    std::string ddl = datos::servidor::Ddl(datos::LeerEsquema(ruta));
    char huella[17];
    std::snprintf(huella, sizeof huella, "%016llx", static_cast<unsigned long long>(Huella(ddl)));
    std::string nombre = "tpv_plantilla_" + datos::Minusculas(esquema.substr(0, esquema.find('.'))) + "_" + huella;
    if (!datos::servidor::ExisteBase(admin, nombre)) {
        // Made under a name of its own and renamed when complete: a process
        // that races this one never copies a half-made template.
        std::string temporal = nombre + "_" + std::to_string(getpid());
        datos::servidor::BorrarBase(admin, temporal);
        datos::CrearBaseDeDatos(datos::servidor::ConBase(admin, temporal), ruta);
        try {
            datos::servidor::Ejecutar(admin, "ALTER DATABASE " + datos::servidor::Identificador(temporal) +
                                                 " RENAME TO " + datos::servidor::Identificador(nombre));
        } catch (const DbError& e) {
            datos::servidor::BorrarBase(admin, temporal);
            if (e.EngineCode() != "42P04") throw;  // another process made it first
        }
    }
    hechas.emplace(esquema, nombre);
    return nombre;
}

}  // namespace

std::string NombreMotor(const ::testing::TestParamInfo<Motor>& info) {
    return info.param == Motor::SQLite ? "SQLite" : "PostgreSQL";
}

bool PostgresDisponible() { return !UriAdministrador().empty(); }

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
    std::string admin = UriAdministrador();
    if (admin.empty()) throw std::runtime_error("TPV_PG_URI no indica ningún servidor PostgreSQL de pruebas");
    std::string plantilla = Plantilla(admin, esquema, schema);
    std::string nombre = "tpv_prueba_" + std::to_string(getpid()) + "_" + std::to_string(contador++);
    datos::servidor::CrearBase(admin, nombre, plantilla);
    return datos::servidor::ConBase(admin, nombre);
}

void BorrarBase(Motor motor, const std::string& uri) {
    if (motor == Motor::SQLite) {
        std::remove(uri.c_str());
        std::remove((uri + "-wal").c_str());
        std::remove((uri + "-shm").c_str());
    } else {
        datos::servidor::BorrarBase(UriAdministrador(), datos::servidor::Base(uri));
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
