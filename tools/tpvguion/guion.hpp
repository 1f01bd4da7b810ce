#pragma once
#include <optional>
#include <string>
#include <vector>

#include "core/runtime/value.hpp"

// Reading a script: one action a line, arguments split on blanks, an
// argument with blanks between double quotes (\" inside is a quote).
namespace tpv::guion {

struct Linea {
    std::string accion;               // lower-cased
    std::vector<std::string> argumentos;
};

// Splits a line. Blank lines and comments give an empty action; a quote
// left open is an error, told in `error`.
std::optional<Linea> Partir(const std::string& texto, std::string& error);

// "dd/mm/yyyy" with an optional " hh:mm[:ss]"; none for a text that is not
// such a date or a date that does not exist.
std::optional<DateTime> LeerMomento(const std::string& texto);

// A key of `tecla`: its key code and character (0: KeyDown only). False for
// a name that is no key.
bool LeerTecla(const std::string& nombre, int& keyCode, int& keyAscii);

// The key code and character of one character typed.
void TeclaDeCaracter(const std::string& caracter, int& keyCode, int& keyAscii);

// A whole number of the script; none when the text is not one.
std::optional<long long> LeerEntero(const std::string& texto);

}  // namespace tpv::guion
