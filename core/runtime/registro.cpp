#include "core/runtime/registro.hpp"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>
#include <string>

#include "core/runtime/fecha.hpp"
#include "core/runtime/reloj.hpp"

namespace tpv {

std::string RutaRegistro() {
    if (const char* r = std::getenv("TPV_LOG"); r && *r) return r;
    std::filesystem::path carpeta;
    if (const char* s = std::getenv("XDG_STATE_HOME"); s && *s)
        carpeta = s;
    else if (const char* h = std::getenv("HOME"); h && *h)
        carpeta = std::filesystem::path(h) / ".local" / "state";
    else
        carpeta = std::filesystem::temp_directory_path();
    return (carpeta / "tpv" / "tpv.log").string();
}

void Registrar(std::string_view linea) {
    std::string texto = fecha::ATextoIso(reloj::Ahora());
    texto += " [";
    texto += std::to_string(static_cast<long>(::getpid()));
    texto += "] ";
    // One event, one line: line breaks inside it would split it.
    for (char c : linea) texto += (c == '\n' || c == '\r') ? ' ' : c;
    texto += '\n';

    const std::string ruta = RutaRegistro();
    std::error_code ec;
    std::filesystem::create_directories(std::filesystem::path(ruta).parent_path(), ec);
    if (std::FILE* f = std::fopen(ruta.c_str(), "a")) {
        std::fwrite(texto.data(), 1, texto.size(), f);
        std::fclose(f);
        return;
    }
    std::fwrite(texto.data(), 1, texto.size(), stderr);
}

}  // namespace tpv
