#pragma once
#include <map>
#include <mutex>
#include <string>

namespace tpv {

// The suite's own small settings store, shared by all its programs on the
// machine: a text file of "clave=valor" lines, "#" starting a comment. Its
// path comes from the environment variable TPV_SUITE_CONF, else
// /etc/tpv/suite.conf. Keys are compared without regard to case; a missing
// file is an empty store.
class SuiteSettings {
public:
    static SuiteSettings& Instancia();

    std::string Leer(const std::string& clave, const std::string& porDefecto = "") const;
    bool Existe(const std::string& clave) const;
    // Sets the key and writes the file at once, keeping its other lines and
    // comments; a failure to write is a run-time error.
    void Escribir(const std::string& clave, const std::string& valor);
    // Reads the file again, from the path the environment names now.
    void Recargar();

    std::string Ruta() const;
    // "el archivo de ajustes RUTA", and whether it is missing: where a
    // message tells a technician that a key was looked for.
    std::string Donde() const;

private:
    SuiteSettings();
    void CargarSinBloqueo();

    mutable std::mutex mu_;
    std::string ruta_;
    std::map<std::string, std::string> valores_;  // key: lower-case
};

}  // namespace tpv
