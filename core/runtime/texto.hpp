#pragma once
#include <string>
#include <string_view>
#include <vector>

// The text functions of the original runtime on UTF-8 text. Positions and
// lengths count characters, not bytes: Len("Ñandú") is 5. Positions start
// at 1. A bad position or length is the run-time error 5 "Argumento o
// llamada a procedimiento no válida".
namespace tpv {

// How two texts are compared: code by code, or without regard to case.
enum class CompareMethod { Binary = 0, Text = 1 };

long Len(std::string_view s);
std::string Mid(std::string_view s, long inicio);  // from `inicio` to the end
std::string Mid(std::string_view s, long inicio, long longitud);
std::string Left(std::string_view s, long longitud);
std::string Right(std::string_view s, long longitud);

// The position of `buscado` in `s` from `inicio`, 0 when it isn't there; an
// empty `buscado` is found at `inicio` itself.
long InStr(std::string_view s, std::string_view buscado, CompareMethod comparacion = CompareMethod::Binary);
long InStr(long inicio, std::string_view s, std::string_view buscado,
           CompareMethod comparacion = CompareMethod::Binary);
// The last position at or before `inicio` (-1: the end).
long InStrRev(std::string_view s, std::string_view buscado, long inicio = -1,
              CompareMethod comparacion = CompareMethod::Binary);

// Blanks only, not tabs.
std::string Trim(std::string_view s);
// Trim of any of the given blanks (tabs, line ends), for settings files and lists.
std::string Recortar(std::string_view s, std::string_view blancos = " \t");
std::string LTrim(std::string_view s);
std::string RTrim(std::string_view s);

// As the runtime did it, the result starts at `inicio`: what comes before is
// dropped. `veces` -1 replaces every occurrence.
std::string Replace(std::string_view s, std::string_view buscado, std::string_view nuevo, long inicio = 1,
                    long veces = -1, CompareMethod comparacion = CompareMethod::Binary);

std::string UCase(std::string_view s);
std::string LCase(std::string_view s);
std::string Space(long n);
std::string String(long n, std::string_view caracter);  // the first character of `caracter`
std::string String(long n, int codigo);                 // Chr(codigo)
std::string StrReverse(std::string_view s);

// -1, 0 or 1. The text comparison is the Spanish one of the database: case
// doesn't count, accents do, ñ between n and o.
int StrComp(std::string_view a, std::string_view b, CompareMethod comparacion = CompareMethod::Binary);

// Character codes of the Western Windows code page (1252), as the runtime
// had them: Chr(128) is "€", Asc("ñ") 241; a character outside the code page
// is "?" (63). AscW and ChrW work on Unicode code points.
int Asc(std::string_view s);
long AscW(std::string_view s);
std::string Chr(int codigo);
std::string ChrW(long codigo);

// Split("", ...) gives no items; an empty separator gives the whole text as
// one item; `limite` items at most, the last one holding the rest.
std::vector<std::string> Split(std::string_view s, std::string_view separador = " ", long limite = -1,
                               CompareMethod comparacion = CompareMethod::Binary);
std::string Join(const std::vector<std::string>& partes, std::string_view separador = " ");

}  // namespace tpv
