#pragma once
#include <functional>
#include <string>

#include "core/datos/connection.hpp"

namespace tpv {

// Starts sibling programs of the suite and tells whether one is running.
// Made by a routine for its own use.
class SuiteLauncher {
public:
    SuiteLauncher();

    // Starts `programa` (a file name; a path with "/" is taken as it is) from
    // the settings key "carpeta_programas", else from this program's own
    // folder, detached from this process, and returns at once. The program
    // gets the database of `conexion` in TPV_DATABASE and `titulo` in
    // TPV_TITULO. A program that can't be started is a run-time error.
    void Lanzar(const std::string& programa, const std::string& titulo, Connection& conexion);

    // Whether a process of the machine, other than this one, runs a program
    // of that name: its executable's base name equals `programa` without
    // regard to case, with or without the extension.
    bool EstaEjecutandose(const std::string& programa);

    // The folder Lanzar starts programs from, without a trailing "/".
    static std::string CarpetaProgramas();

    // With a recorder installed Lanzar starts nothing and hands it the
    // program and the title instead (the scripted runner); empty: start.
    using Grabador = std::function<void(const std::string& programa, const std::string& titulo)>;
    static void FijarGrabador(Grabador grabador);
};

}  // namespace tpv
