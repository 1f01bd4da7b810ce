#pragma once
// The failures of the engines as the user and the technician see them: one
// Spanish text and one number per kind of failure, the same on every engine;
// the engine's own code and words go to the log and to the error's detail.
#include <chrono>
#include <string>

#include "core/runtime/error.hpp"

namespace tpv::datos {

enum class Fallo {
    NoSeAbre,     // no such file or database, no permission
    NoValida,     // not a database, or a damaged one
    Ocupada,      // another program holds it locked beyond the wait
    Repetido,     // a unique index refuses the row
    Obligatorio,  // a required value is missing
    Regla,        // another rule of the database refuses the row
    SoloLectura,  // the database can only be read
    Acceso,       // the server refuses user or password
    SinServidor,  // no connection to the server, or lost on the way
    Otro,         // anything else: the engine's text, marked as the database's
};

// The error of a failure on the database `base` (a file path, or a URI whose
// password is hidden here). Every one leaves a line in the log with the
// engine's code and text and the statement.
DbError ErrorDeMotor(Fallo fallo, const std::string& base, const std::string& codigo, const std::string& detalle,
                     const std::string& sentencia);

// How long a statement waits, in all, for a database that another program
// holds locked before it fails with Fallo::Ocupada: 10 seconds.
std::chrono::milliseconds EsperaOcupada();
// Tests shorten it; a zero or negative wait restores the 10 seconds.
void FijarEsperaOcupada(std::chrono::milliseconds espera);

}  // namespace tpv::datos
