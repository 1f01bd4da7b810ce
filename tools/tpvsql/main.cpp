// tpvsql: runs statements of the till's SQL dialect against a shop database.
//   tpvsql DATABASE [-e STATEMENT]...
//   tpvsql --create [--force] DATABASE [SCHEMA_FILE]
// Without -e the statements come from standard input: on a terminal with a
// prompt, each ending with ";" (over as many lines as it takes); from a file
// or a pipe one a line, a ";" at its end allowed. Lines starting with "--"
// are comments; "salir" or "exit" ends.
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "core/datos/esquema.hpp"
#include "core/datos/recordset.hpp"
#include "core/datos/servidor.hpp"
#include "tools/tpvsql/resultado.hpp"

namespace fs = std::filesystem;

namespace {

constexpr const char* kUso =
    "uso: tpvsql BASE [-e INSTRUCCION]...\n"
    "     tpvsql --create [--force] BASE [ARCHIVO_DE_ESQUEMA]\n"
    "\n"
    "BASE es un archivo SQLite o un URI postgresql://usuario@servidor:puerto/base.\n"
    "Sin -e las instrucciones se leen de la entrada: en un terminal, cada una\n"
    "acaba en ';' (puede ocupar varias líneas); desde un archivo, una por línea.\n"
    "Las líneas que empiezan por '--' son comentarios; 'salir' o 'exit' termina.\n"
    "--create hace una base vacía con el esquema (por defecto, el de la tienda);\n"
    "nunca sustituye una base que ya existe, salvo con --force, y nunca un\n"
    "archivo que no sea una base de datos.\n";

bool Ejecutar(tpv::Connection& cn, const std::string& sql) {
    try {
        tpv::herramientas::EscribirResultado(cn, sql, std::cout);
        std::cout.flush();
        return true;
    } catch (const std::exception& e) {
        std::cerr << "error: " << e.what() << "\n";
        return false;
    }
}

std::string Recortar(const std::string& s) {
    const std::size_t a = s.find_first_not_of(" \t\r\n");
    if (a == std::string::npos) return "";
    return s.substr(a, s.find_last_not_of(" \t\r\n") - a + 1);
}

bool EsSalida(const std::string& linea) {
    std::string w = Recortar(linea);
    if (!w.empty() && w.back() == ';') w.pop_back();
    for (char& c : w) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return w == "salir" || w == "exit";
}

// Statements from standard input; false when one failed.
bool Interactivo(tpv::Connection& cn) {
    const bool terminal = ::isatty(STDIN_FILENO) != 0;
    bool ok = true;
    std::string pendiente;
    const auto indicador = [&] {
        if (terminal) std::cout << (pendiente.empty() ? "tpvsql> " : "     -> ") << std::flush;
    };
    indicador();
    for (std::string linea; std::getline(std::cin, linea); indicador()) {
        const std::string limpia = Recortar(linea);
        if (pendiente.empty() && (limpia.empty() || limpia.rfind("--", 0) == 0)) continue;
        if (pendiente.empty() && EsSalida(limpia)) break;
        pendiente += (pendiente.empty() ? "" : "\n") + linea;
        // On a terminal a statement goes on until a line ends with ";".
        const bool completa = !limpia.empty() && limpia.back() == ';';
        if (terminal && !completa) continue;
        std::string sql = Recortar(pendiente);
        pendiente.clear();
        while (!sql.empty() && sql.back() == ';') sql = Recortar(sql.substr(0, sql.size() - 1));
        if (!sql.empty()) ok = Ejecutar(cn, sql) && ok;
    }
    if (terminal) std::cout << "\n";
    if (!Recortar(pendiente).empty()) ok = Ejecutar(cn, Recortar(pendiente)) && ok;
    return ok;
}

// An SQLite database file starts with these 16 bytes; an empty file is an
// empty database too.
bool EsBaseSqlite(const fs::path& f) {
    std::error_code ec;
    if (fs::is_regular_file(f, ec) && fs::file_size(f, ec) == 0) return true;
    char cabecera[16] = {};
    std::ifstream in(f, std::ios::binary);
    return in.read(cabecera, sizeof cabecera) && std::memcmp(cabecera, "SQLite format 3", 16) == 0;
}

// Gets the place of a new database ready. A file that exists is replaced only
// with --force and only when it is a database; a server database is dropped
// with --force, and otherwise left to the schema loader, which refuses one
// that already has tables. Returns "" or why it cannot be made.
std::string PrepararDestino(const std::string& uri, bool forzar) {
    if (tpv::datos::servidor::EsUri(uri)) {
        const std::string base = tpv::datos::servidor::Base(uri);
        if (forzar && !base.empty())
            tpv::datos::servidor::BorrarBase(tpv::datos::servidor::ConBase(uri, "postgres"), base);
        return "";
    }
    const fs::path f(uri.rfind("sqlite:", 0) == 0 ? uri.substr(7) : uri);
    std::error_code ec;
    if (!fs::exists(f, ec)) return "";
    if (!EsBaseSqlite(f)) return f.string() + " existe y no es una base de datos: no se sustituye";
    if (!forzar) return f.string() + " ya existe (use --force para sustituirla)";
    return "";
}

int Uso(int estado) {
    (estado == 0 ? std::cout : std::cerr) << kUso;
    return estado;
}

int Crear(const std::vector<std::string>& args) {
    bool forzar = false;
    std::vector<std::string> resto;
    for (std::size_t i = 1; i < args.size(); ++i) {
        if (args[i] == "--force") forzar = true;
        else resto.push_back(args[i]);
    }
    if (resto.empty() || resto.size() > 2) return Uso(2);
    const std::string schema = resto.size() == 2 ? resto[1] : tpv::datos::CarpetaEsquemas() + "/tienda.schema";
    const std::string motivo = PrepararDestino(resto[0], forzar);
    if (!motivo.empty()) {
        std::cerr << "tpvsql: " << motivo << "\n";
        return 1;
    }
    tpv::datos::CrearBaseDeDatos(resto[0], schema);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty()) return Uso(2);
    if (args[0] == "--help" || args[0] == "-h") return Uso(0);
    try {
        if (args[0] == "--create") return Crear(args);
        if (args[0].rfind("-", 0) == 0) return Uso(2);
        tpv::Connection cn;
        cn.Open(args[0]);
        if (args.size() == 1) return Interactivo(cn) ? 0 : 1;
        bool ok = true;
        for (std::size_t i = 1; i < args.size(); ++i) {
            if (args[i] != "-e" || i + 1 >= args.size()) return Uso(2);
            ok = Ejecutar(cn, args[++i]) && ok;
        }
        return ok ? 0 : 1;
    } catch (const std::exception& e) {
        std::cerr << "error: " << e.what() << "\n";
        return 1;
    }
}
