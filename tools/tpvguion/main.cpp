// tpvguion: runs the till from a script of user actions, without a display,
// and writes what a person would have seen and what came out of the machine.
//   tpvguion [--base BASE] [--informes BASE_INFORMES] [--reloj "dd/mm/yyyy hh:mm:ss"]
//            [--pantalla ANCHOxALTO] [--papel CARPETA] [GUION]
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "core/datos/connection.hpp"
#include "core/runtime/reloj.hpp"
#include "core/servicios/connection_opener.hpp"
#include "core/sesion/pantalla.hpp"
#include "tools/tpvguion/dispositivos.hpp"
#include "tools/tpvguion/ejecutor.hpp"
#include "tools/tpvguion/guion.hpp"

using namespace tpv;

namespace {

constexpr const char* kUso =
    "uso: tpvguion [--base BASE] [--informes BASE_INFORMES] [--reloj \"dd/mm/yyyy hh:mm:ss\"]\n"
    "              [--pantalla ANCHOxALTO] [--papel CARPETA] [GUION]\n"
    "\n"
    "Ejecuta la caja sin pantalla con las acciones del guion (un archivo, o la\n"
    "entrada estándar) y escribe en la salida lo que se habría visto: mensajes,\n"
    "pantallas, papel impreso, visor, cajón y programas lanzados.\n"
    "Sale con 0 si todas las líneas se ejecutaron, 1 si alguna no pudo y 2 si\n"
    "los argumentos no son válidos o la base no se puede abrir.\n";

struct Opciones {
    std::string base, informes, reloj, pantalla, papel, guion;
};

int Uso(const std::string& error) {
    if (!error.empty()) std::cerr << "tpvguion: " << error << "\n";
    std::cerr << kUso;
    return 2;
}

bool LeerOpciones(int argc, char** argv, Opciones& o, std::string& error) {
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        std::string* destino = nullptr;
        if (a == "--base") destino = &o.base;
        else if (a == "--informes") destino = &o.informes;
        else if (a == "--reloj") destino = &o.reloj;
        else if (a == "--pantalla") destino = &o.pantalla;
        else if (a == "--papel") destino = &o.papel;
        if (destino) {
            if (i + 1 >= argc) {
                error = "falta el valor de " + a;
                return false;
            }
            *destino = argv[++i];
        } else if (a.rfind("--", 0) == 0 || !o.guion.empty()) {
            error = "argumento no válido: " + a;
            return false;
        } else {
            o.guion = a;
        }
    }
    return true;
}

bool LeerPantalla(const std::string& texto, int& ancho, int& alto) {
    const std::size_t x = texto.find_first_of("xX");
    if (x == std::string::npos) return false;
    const auto a = guion::LeerEntero(texto.substr(0, x)), b = guion::LeerEntero(texto.substr(x + 1));
    if (!a || !b || *a < 1 || *b < 1 || *a > 100000 || *b > 100000) return false;
    ancho = static_cast<int>(*a);
    alto = static_cast<int>(*b);
    return true;
}

void Linea(const std::string& linea) {
    std::cout << linea << '\n';
    std::cout.flush();
}

}  // namespace

int main(int argc, char** argv) {
    Opciones o;
    std::string error;
    if (argc == 2 && (std::string(argv[1]) == "--help" || std::string(argv[1]) == "-h")) {
        std::cout << kUso;
        return 0;
    }
    if (!LeerOpciones(argc, argv, o, error)) return Uso(error);

    int ancho = 1024, alto = 768;
    if (!o.pantalla.empty() && !LeerPantalla(o.pantalla, ancho, alto))
        return Uso("tamaño de pantalla no válido: " + o.pantalla);
    FijarPantalla(std::make_unique<PantallaFija>(ancho, alto));

    // The virtual clock: from the option, else from the machine's time, and
    // from then on it only moves when the script moves it.
    if (!o.reloj.empty()) {
        const auto momento = guion::LeerMomento(o.reloj);
        if (!momento) return Uso("fecha y hora no válidas: " + o.reloj);
        reloj::Fijar(*momento);
    } else {
        reloj::Fijar(reloj::Ahora());
    }

    if (!o.base.empty()) setenv("TPV_DATABASE", o.base.c_str(), 1);
    if (!o.informes.empty()) setenv("TPV_DSN_VELMORA", o.informes.c_str(), 1);

    std::ifstream archivo;
    if (!o.guion.empty()) {
        archivo.open(o.guion);
        if (!archivo) return Uso("no se puede leer el guion " + o.guion);
    }

    // A database that can't open stops the run before its first line.
    try {
        Connection prueba;
        ConnectionOpener::Instancia().Abrir("", prueba);
    } catch (const std::exception& e) {
        std::cerr << "tpvguion: " << e.what() << "\n";
        return 2;
    }

    guion::Dispositivos dispositivos(Linea, o.papel);
    guion::Ejecutor ejecutor(o.guion.empty() ? std::cin : archivo, Linea, dispositivos);
    return ejecutor.Correr() ? 0 : 1;
}
