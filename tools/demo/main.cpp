// tpvdemo: makes a fresh shop database, and its reporting source, filled with
// a demo shop for the terminal "CAJA1".
//
//   tpvdemo [--size small|large] [--historial] [--force] [--fotos FOLDER] [--hoy dd/mm/yyyy]
//           DATABASE [REPORTING_DATABASE]
//
// The demo's dates (sales, offers, vouchers, debts) are counted from today,
// or from the day given with --hoy, so that a scripted run whose clock is set
// to that day sees the same shop on any day it runs.
// Without REPORTING_DATABASE a file "informes.db" beside DATABASE is used.
#include <chrono>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>

#include "core/datos/connection.hpp"
#include "core/datos/esquema.hpp"
#include "core/datos/recordset.hpp"
#include "core/datos/servidor.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/fecha.hpp"
#include "tools/demo/fotos.hpp"
#include "tools/demo/tienda_demo.hpp"

namespace fs = std::filesystem;
using namespace tpv;

namespace {

struct Argumentos {
    demo::Tamano tamano = demo::Tamano::Pequena;
    bool forzar = false;
    bool historial = false;
    std::string tienda;
    std::string informes;
    std::string fotos;
    DateTime hoy = fecha::Hoy();
};

void Uso() {
    std::fprintf(stderr,
                 "uso: tpvdemo [--size small|large] [--historial] [--force] [--fotos CARPETA] [--hoy dd/mm/aaaa] "
                 "BASE_DE_DATOS [BASE_DE_INFORMES]\n"
                 "  --size small   unas decenas de productos (por defecto)\n"
                 "  --size large   200.000 productos, 300.000 codigos extra, 50.000 clientes\n"
                 "  --historial    un año de ventas cerradas, cerca de un millon de lineas\n"
                 "  --force        sustituye las bases de datos que ya existan\n"
                 "  --fotos DIR    dibuja en DIR las fotos de productos y empleados\n"
                 "  --hoy FECHA    cuenta las fechas de la demostracion desde ese dia y no desde hoy\n");
}

// A day as the till reads dates ("dd/mm/yyyy"); its time, if any, is dropped.
bool LeerDia(const char* valor, DateTime& dia) {
    if (!IsDate(Value(valor))) return false;
    dia = DateTime{std::floor(CDate(Value(valor)).serial)};
    return true;
}

bool LeerTamano(std::string_view valor, demo::Tamano& tamano) {
    if (valor == "small") tamano = demo::Tamano::Pequena;
    else if (valor == "large") tamano = demo::Tamano::Grande;
    else return false;
    return true;
}

bool LeerArgumentos(int argc, char** argv, Argumentos& a) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if (arg == "--force") {
            a.forzar = true;
        } else if (arg == "--historial") {
            a.historial = true;
        } else if (arg == "--size") {
            if (++i >= argc || !LeerTamano(argv[i], a.tamano)) return false;
        } else if (arg.starts_with("--size=")) {
            if (!LeerTamano(arg.substr(7), a.tamano)) return false;
        } else if (arg == "--hoy") {
            if (++i >= argc || !LeerDia(argv[i], a.hoy)) return false;
        } else if (arg == "--fotos") {
            if (++i >= argc) return false;
            a.fotos = argv[i];
        } else if (arg.starts_with("-")) {
            return false;
        } else if (a.tienda.empty()) {
            a.tienda = arg;
        } else if (a.informes.empty()) {
            a.informes = arg;
        } else {
            return false;
        }
    }
    return !a.tienda.empty();
}

// The file behind an SQLite URI: the path itself, or what follows "sqlite:".
fs::path Fichero(const std::string& uri) {
    return fs::path(uri.starts_with("sqlite:") ? uri.substr(7) : uri);
}

// A file database is made anew: an existing one is refused, or removed with
// --force together with the journals beside it. A server database is left to
// the schema loader, which refuses one that already has a shop's tables;
// with --force it is dropped first, from the server's maintenance database,
// as a database cannot drop itself.
bool PrepararDestino(const std::string& uri, bool forzar) {
    if (datos::servidor::EsUri(uri)) {
        const std::string base = datos::servidor::Base(uri);
        if (forzar && !base.empty()) datos::servidor::BorrarBase(datos::servidor::ConBase(uri, "postgres"), base);
        return true;
    }
    const fs::path f = Fichero(uri);
    if (fs::exists(f)) {
        if (!forzar) {
            std::fprintf(stderr, "tpvdemo: %s ya existe (use --force para sustituirla)\n", f.c_str());
            return false;
        }
        for (const char* resto : {"", "-wal", "-shm", "-journal"}) fs::remove(f.string() + resto);
    }
    if (f.has_parent_path()) fs::create_directories(f.parent_path());
    return true;
}

void Resumen(Connection& cn, const std::string& esquema) {
    for (const datos::TableDef& tabla : datos::LeerEsquema(esquema).tables) {
        Recordset rs;
        rs.Open("select count(*) as n from " + tabla.name, cn, adOpenStatic);
        const long long n = static_cast<long long>(rs.Get("n").number());
        if (n > 0) std::printf("  %-30s %9lld\n", tabla.name.c_str(), n);
    }
}

}  // namespace

int main(int argc, char** argv) {
    Argumentos a;
    if (!LeerArgumentos(argc, argv, a)) {
        Uso();
        return 2;
    }
    if (a.informes.empty()) {
        if (datos::servidor::EsUri(a.tienda)) {
            std::fprintf(stderr, "tpvdemo: con un servidor hay que indicar la base de informes\n");
            return 2;
        }
        a.informes = (Fichero(a.tienda).parent_path() / "informes.db").string();
    }

    const std::string esquemaTienda = datos::CarpetaEsquemas() + "/tienda.schema";
    const std::string esquemaInformes = datos::CarpetaEsquemas() + "/informes.schema";
    const auto inicio = std::chrono::steady_clock::now();
    try {
        if (!PrepararDestino(a.tienda, a.forzar) || !PrepararDestino(a.informes, a.forzar)) return 1;
        datos::CrearBaseDeDatos(a.tienda, esquemaTienda);
        datos::CrearBaseDeDatos(a.informes, esquemaInformes);

        Connection tienda, informes;
        tienda.Open(a.tienda);
        informes.Open(a.informes);
        tienda.BeginTrans();
        informes.BeginTrans();
        demo::TiendaDemo relleno(tienda, informes, a.tamano, a.hoy);
        relleno.Llenar();
        if (a.historial) relleno.LlenarHistorial();
        if (!a.fotos.empty()) std::printf("Fotos en %s: %d\n", a.fotos.c_str(), demo::EscribirFotos(tienda, a.fotos));
        tienda.CommitTrans();
        informes.CommitTrans();

        const double segundos =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count();
        std::printf("Tienda de demostracion para el terminal %s en %s (%.1f s)\n", demo::kTerminal,
                    datos::servidor::SinClave(a.tienda).c_str(), segundos);
        Resumen(tienda, esquemaTienda);
        std::printf("Fuente de informes en %s\n", datos::servidor::SinClave(a.informes).c_str());
        Resumen(informes, esquemaInformes);
    } catch (const DbError& e) {
        // A server database that holds a shop already: the way out is the
        // same as for an existing file.
        std::fprintf(stderr, "tpvdemo: %s%s\n", e.what(),
                     e.EngineCode() == "42P07" ? " (use --force para sustituirla)" : "");
        return 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "tpvdemo: %s\n", e.what());
        return 1;
    }
    return 0;
}
