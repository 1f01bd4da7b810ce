#include "core/servicios/suite_settings.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <vector>

#include "core/datos/tipos.hpp"
#include "core/runtime/error.hpp"

namespace tpv {

namespace {

constexpr const char* kRutaPorDefecto = "/etc/tpv/suite.conf";
constexpr long kErrAccesoArchivo = 75;

std::string Recortar(std::string_view s) {
    std::size_t a = s.find_first_not_of(" \t\r");
    if (a == std::string_view::npos) return "";
    std::size_t b = s.find_last_not_of(" \t\r");
    return std::string(s.substr(a, b - a + 1));
}

// The key of a "clave=valor" line, lower-cased; "" for comments, blanks and
// lines without "=".
std::string ClaveDeLinea(const std::string& linea, std::string* valor = nullptr) {
    std::string l = Recortar(linea);
    if (l.empty() || l[0] == '#') return "";
    std::size_t igual = l.find('=');
    if (igual == std::string::npos) return "";
    if (valor) *valor = Recortar(std::string_view(l).substr(igual + 1));
    return datos::Minusculas(Recortar(std::string_view(l).substr(0, igual)));
}

std::vector<std::string> LeerLineas(const std::string& ruta) {
    std::vector<std::string> lineas;
    std::ifstream f(ruta);
    std::string linea;
    while (std::getline(f, linea)) lineas.push_back(linea);
    return lineas;
}

}  // namespace

SuiteSettings& SuiteSettings::Instancia() {
    static SuiteSettings instancia;
    return instancia;
}

SuiteSettings::SuiteSettings() { CargarSinBloqueo(); }

void SuiteSettings::CargarSinBloqueo() {
    const char* env = std::getenv("TPV_SUITE_CONF");
    ruta_ = env && *env ? env : kRutaPorDefecto;
    valores_.clear();
    for (const std::string& linea : LeerLineas(ruta_)) {
        std::string valor;
        std::string clave = ClaveDeLinea(linea, &valor);
        if (!clave.empty()) valores_[clave] = valor;
    }
}

void SuiteSettings::Recargar() {
    std::lock_guard<std::mutex> lock(mu_);
    CargarSinBloqueo();
}

std::string SuiteSettings::Ruta() const {
    std::lock_guard<std::mutex> lock(mu_);
    return ruta_;
}

std::string SuiteSettings::Donde() const {
    const std::string ruta = Ruta();
    return "el archivo de ajustes " + ruta + (::access(ruta.c_str(), F_OK) == 0 ? "" : ", que no existe");
}

std::string SuiteSettings::Leer(const std::string& clave, const std::string& porDefecto) const {
    std::lock_guard<std::mutex> lock(mu_);
    auto it = valores_.find(datos::Minusculas(Recortar(clave)));
    return it == valores_.end() ? porDefecto : it->second;
}

bool SuiteSettings::Existe(const std::string& clave) const {
    std::lock_guard<std::mutex> lock(mu_);
    return valores_.count(datos::Minusculas(Recortar(clave))) > 0;
}

void SuiteSettings::Escribir(const std::string& clave, const std::string& valor) {
    const std::string nombre = Recortar(clave);
    const std::string limpio = Recortar(valor);
    if (nombre.empty() || nombre.find_first_of("=\n\r#") != std::string::npos ||
        limpio.find_first_of("\n\r") != std::string::npos)
        throw ErrorLlamadaNoValida();

    std::lock_guard<std::mutex> lock(mu_);
    const std::string buscada = datos::Minusculas(nombre);
    // Keep every other line as it stands; the key's line changes in place.
    std::vector<std::string> lineas = LeerLineas(ruta_);
    bool puesta = false;
    for (auto it = lineas.begin(); it != lineas.end();) {
        if (ClaveDeLinea(*it) == buscada) {
            if (puesta) {
                it = lineas.erase(it);
                continue;
            }
            *it = nombre + "=" + limpio;
            puesta = true;
        }
        ++it;
    }
    if (!puesta) lineas.push_back(nombre + "=" + limpio);

    // Write beside the file and rename, so that a reader never sees half of it.
    const std::string temporal = ruta_ + ".tmp" + std::to_string(getpid());
    {
        std::ofstream f(temporal, std::ios::trunc);
        for (const std::string& l : lineas) f << l << '\n';
        f.flush();
        if (!f) {
            std::remove(temporal.c_str());
            throw RuntimeError(kErrAccesoArchivo, "Error de acceso a ruta o archivo: " + ruta_);
        }
    }
    if (std::rename(temporal.c_str(), ruta_.c_str()) != 0) {
        int e = errno;
        std::remove(temporal.c_str());
        throw RuntimeError(kErrAccesoArchivo,
                           "Error de acceso a ruta o archivo: " + ruta_ + " (" + std::strerror(e) + ")");
    }
    valores_[buscada] = limpio;
}

}  // namespace tpv
