#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>

#include "core/datos/esquema.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/connection_opener.hpp"
#include "core/servicios/fuente_informes.hpp"
#include "core/servicios/suite_context.hpp"
#include "core/servicios/suite_launcher.hpp"
#include "tests/core/runtime/error_esperado.hpp"
#include "tests/core/servicios/entorno_prueba.hpp"
#include "tests/support/base_prueba.hpp"

extern char** environ;

namespace tpv {
namespace {

namespace fs = std::filesystem;
using prueba::AjustesTemporales;
using prueba::ErrorDe;
using prueba::VariableTemporal;

// A folder of its own under the temporary one, removed at the end.
struct CarpetaTemporal {
    fs::path ruta;
    explicit CarpetaTemporal(const std::string& nombre)
        : ruta(fs::path(AjustesTemporales::CarpetaTemporal()) / (nombre + "_" + std::to_string(getpid()))) {
        fs::remove_all(ruta);
        fs::create_directories(ruta);
    }
    ~CarpetaTemporal() {
        std::error_code ec;
        fs::remove_all(ruta, ec);
    }
};

TEST(SuiteSettings, LeeEscribeYConservaElRestoDelArchivo) {
    AjustesTemporales ajustes("# ajustes de la suite\nBase_De_Datos = /var/tpv/TIENDA.db \nidioma=es\n\nsin igual\n");
    SuiteSettings& s = SuiteSettings::Instancia();
    EXPECT_EQ(s.Leer("base_de_datos"), "/var/tpv/TIENDA.db");  // keys without regard to case, values trimmed
    EXPECT_EQ(s.Leer("no_esta", "por defecto"), "por defecto");

    s.Escribir("IDIOMA", "en");
    s.Escribir("sector", "PANADERIA");
    EXPECT_EQ(ajustes.Contenido(),
              "# ajustes de la suite\nBase_De_Datos = /var/tpv/TIENDA.db \nIDIOMA=en\n\nsin igual\nsector=PANADERIA\n");
    s.Recargar();
    EXPECT_EQ(s.Leer("idioma"), "en");
    EXPECT_EQ(s.Leer("sector"), "PANADERIA");
    EXPECT_NE(ErrorDe([&] { s.Escribir("clave", "dos\nlineas"); }).numero, 0);
}

TEST(ConnectionOpener, BaseDeDatosPorDefectoYConNombre) {
    AjustesTemporales ajustes("base_de_datos=/srv/ajustes.db\nbase_de_datos.historico=/srv/historico.db\n");
    ConnectionOpener& co = ConnectionOpener::Instancia();
    {
        VariableTemporal sinVariable("TPV_DATABASE", std::nullopt);
        EXPECT_EQ(co.Resolver(""), "/srv/ajustes.db");
        EXPECT_EQ(co.Resolver("historico"), "/srv/historico.db");
        EXPECT_EQ(co.Resolver("/otra/base.db"), "/otra/base.db");
    }
    VariableTemporal variable("TPV_DATABASE", "/srv/entorno.db");
    EXPECT_EQ(co.Resolver(""), "/srv/entorno.db");

    AjustesTemporales vacios("");
    VariableTemporal sinVariable("TPV_DATABASE", std::nullopt);
    EXPECT_NE(ErrorDe([&] { co.Resolver(""); }).mensaje.find("base_de_datos"), std::string::npos);
}

TEST(FuenteInformes, ResuelveElDsnPorEntornoOAjustes) {
    AjustesTemporales ajustes("dsn.Velmora=/srv/informes.db\n");
    {
        VariableTemporal sinVariable("TPV_DSN_VELMORA", std::nullopt);
        EXPECT_EQ(ResolverFuenteDatos("dsn=Velmora"), "/srv/informes.db");
        EXPECT_EQ(ResolverFuenteDatos("DSN=Velmora;UID=admin"), "/srv/informes.db");
    }
    VariableTemporal variable("TPV_DSN_VELMORA", "/srv/entorno.db");
    EXPECT_EQ(ResolverFuenteDatos("dsn=Velmora"), "/srv/entorno.db");
    EXPECT_EQ(ResolverFuenteDatos("/srv/directa.db"), "/srv/directa.db");
    EXPECT_EQ(ErrorDe([] { ResolverFuenteDatos("dsn=Otra"); }).mensaje,
              "No se encuentra el nombre del origen de datos 'Otra': falta la clave \"dsn.Otra\" en el archivo de "
              "ajustes " +
                  ajustes.Ruta() + " (o la variable TPV_DSN_OTRA). [dsn=Otra]");
}

TEST(SuiteContext, SectorDelNombreDeLaBaseOAjustes) {
    EXPECT_EQ(SectorDeBaseDeDatos("/var/tpv/SUPERMERCADO"), "SUPERMERCADO");
    EXPECT_EQ(SectorDeBaseDeDatos("/var/tpv/Panaderia.db"), "Panaderia");
    EXPECT_EQ(SectorDeBaseDeDatos("\\\\servidor\\tpv\\PERFUMERIA"), "PERFUMERIA");
    EXPECT_EQ(SectorDeBaseDeDatos("tienda"), "tienda");

    CarpetaTemporal carpeta("tpv_sector");
    const std::string ruta = (carpeta.ruta / "SUPERMERCADO.db").string();
    datos::CrearBaseDeDatos(ruta, datos::CarpetaEsquemas() + "/tienda.schema");
    Connection cn;
    cn.Open(ruta);
    AjustesTemporales ajustes("");
    EXPECT_EQ(SuiteContext::Instancia().Sector(cn), "SUPERMERCADO");
    AjustesTemporales fijado("sector=PANADERIA\n");
    EXPECT_EQ(SuiteContext::Instancia().Sector(cn), "PANADERIA");
}

TEST(SuiteContext, EsquemaYTamanoSeGuardanEnLosAjustes) {
    AjustesTemporales ajustes("esquema_colores=3\nancho_pantalla=19200\nalto_pantalla=15360\najuste_letra=SI\n");
    SuiteContext& sc = SuiteContext::Instancia();
    Connection cn;
    EXPECT_EQ(sc.EsquemaColores(cn), 3);
    EXPECT_TRUE(sc.AjusteLetra(cn));
    EXPECT_EQ(sc.AnchoConfigurado(cn), 19200.0);
    EXPECT_EQ(sc.AltoConfigurado(cn), 15360.0);
    EXPECT_EQ(sc.ElegirEsquemaColores(cn), 0);  // without a chooser: the next, round to the first
    EXPECT_EQ(sc.EsquemaColores(cn), 0);

    double ancho = 19200, alto = 15360;
    EXPECT_TRUE(sc.ElegirTamano(cn, ancho, alto));
    EXPECT_EQ(ancho, 20490.0);
    SuiteSettings::Instancia().Recargar();
    EXPECT_EQ(sc.AnchoConfigurado(cn), 20490.0);

    sc.FijarElectores([](int) { return -1; }, [](double&, double&) { return false; });
    EXPECT_EQ(sc.ElegirEsquemaColores(cn), 0);  // the user gave up
    EXPECT_FALSE(sc.ElegirTamano(cn, ancho, alto));
    sc.FijarElectores(nullptr, nullptr);

    AjustesTemporales otros("esquema_colores=9\n");
    EXPECT_EQ(sc.EsquemaColores(cn), 0);
    EXPECT_EQ(sc.AnchoConfigurado(cn), 0.0);  // not set: the real display counts
    EXPECT_FALSE(sc.AjusteLetra(cn));
}

bool Esperar(const std::function<bool()>& condicion) {
    for (int i = 0; i < 200; ++i) {
        if (condicion()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
    }
    return false;
}

TEST(SuiteLauncher, EstaEjecutandoseVeUnProcesoPorSuNombre) {
    CarpetaTemporal carpeta("tpv_lanzador_ver");
    const std::string nombre = "tpvduerme" + std::to_string(getpid() % 100000);
    const fs::path enlace = carpeta.ruta / nombre;
    fs::create_symlink("/bin/sleep", enlace);
    SuiteLauncher lanzador;
    EXPECT_FALSE(lanzador.EstaEjecutandose(nombre));

    pid_t pid = 0;
    std::string ruta = enlace.string(), segundos = "20";
    char* argv[] = {ruta.data(), segundos.data(), nullptr};
    ASSERT_EQ(posix_spawn(&pid, ruta.c_str(), nullptr, nullptr, argv, environ), 0);
    EXPECT_TRUE(Esperar([&] { return lanzador.EstaEjecutandose(nombre); }));
    EXPECT_TRUE(lanzador.EstaEjecutandose(nombre + ".EXE"));  // any case, with an extension
    EXPECT_TRUE(lanzador.EstaEjecutandose(UCase(nombre)));
    EXPECT_FALSE(lanzador.EstaEjecutandose(nombre.substr(0, nombre.size() - 1)));
    kill(pid, SIGTERM);
    waitpid(pid, nullptr, 0);
    EXPECT_FALSE(lanzador.EstaEjecutandose(nombre));
}

TEST(SuiteLauncher, LanzarArrancaElProgramaDeLaCarpetaYVuelveEnSeguida) {
    CarpetaTemporal carpeta("tpv_lanzador");
    const std::string nombre = "tpvhermano" + std::to_string(getpid() % 100000);
    const fs::path marca = carpeta.ruta / "marca";
    {
        std::ofstream guion(carpeta.ruta / nombre);
        guion << "#!/bin/sh\n"
              << "echo \"$$|$TPV_TITULO|$TPV_DATABASE\" > '" << marca.string() << ".tmp'\n"
              << "mv '" << marca.string() << ".tmp' '" << marca.string() << "'\n"
              << "exec sleep 20\n";
    }
    fs::permissions(carpeta.ruta / nombre, fs::perms::owner_all);
    AjustesTemporales ajustes("carpeta_programas=" + carpeta.ruta.string() + "/\n");
    EXPECT_EQ(SuiteLauncher::CarpetaProgramas(), carpeta.ruta.string());

    const std::string uri = prueba::NuevaBase(prueba::Motor::SQLite);
    Connection cn;
    cn.Open(uri);
    const auto inicio = std::chrono::steady_clock::now();
    SuiteLauncher().Lanzar(nombre, "Historico Clientes", cn);
    EXPECT_LT(std::chrono::steady_clock::now() - inicio, std::chrono::seconds(5));

    ASSERT_TRUE(Esperar([&] { return fs::exists(marca); }));
    std::string linea;
    std::getline(std::ifstream(marca), linea);
    const pid_t pid = std::stoi(linea.substr(0, linea.find('|')));
    EXPECT_EQ(linea.substr(linea.find('|')), "|Historico Clientes|" + uri);
    EXPECT_NE(getsid(pid), getsid(0));  // a session of its own
    kill(pid, SIGTERM);
    cn.Close();
    prueba::BorrarBase(prueba::Motor::SQLite, uri);

    auto e = ErrorDe([&] { SuiteLauncher().Lanzar("no_existe.exe", "", cn); });
    EXPECT_EQ(e.numero, 53);
    EXPECT_NE(e.mensaje.find("no_existe.exe"), std::string::npos);
}

}  // namespace
}  // namespace tpv
