#pragma once
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/servicios/suite_settings.hpp"

namespace tpv::prueba {

// Sets an environment variable for the life of the object, then puts back
// what was there.
class VariableTemporal {
public:
    VariableTemporal(std::string nombre, const std::optional<std::string>& valor) : nombre_(std::move(nombre)) {
        if (const char* v = std::getenv(nombre_.c_str())) anterior_ = v;
        if (valor)
            setenv(nombre_.c_str(), valor->c_str(), 1);
        else
            unsetenv(nombre_.c_str());
    }
    ~VariableTemporal() {
        if (anterior_)
            setenv(nombre_.c_str(), anterior_->c_str(), 1);
        else
            unsetenv(nombre_.c_str());
    }
    VariableTemporal(const VariableTemporal&) = delete;
    VariableTemporal& operator=(const VariableTemporal&) = delete;

private:
    std::string nombre_;
    std::optional<std::string> anterior_;
};

// A settings file of the suite with the given text, in force while the object
// lives.
class AjustesTemporales {
public:
    explicit AjustesTemporales(const std::string& contenido)
        : ruta_(CarpetaTemporal() + "/tpv_suite_" + std::to_string(getpid()) + "_" + std::to_string(contador_++) +
                ".conf"),
          variable_(std::make_unique<VariableTemporal>("TPV_SUITE_CONF", ruta_)) {
        std::ofstream(ruta_) << contenido;
        SuiteSettings::Instancia().Recargar();
    }
    ~AjustesTemporales() {
        std::remove(ruta_.c_str());
        variable_.reset();
        SuiteSettings::Instancia().Recargar();
    }
    const std::string& Ruta() const { return ruta_; }
    std::string Contenido() const {
        std::ifstream f(ruta_);
        return std::string(std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>());
    }

    static std::string CarpetaTemporal() {
        const char* tmp = std::getenv("TMPDIR");
        return tmp && *tmp ? tmp : "/tmp";
    }

private:
    static inline int contador_ = 0;
    std::string ruta_;
    std::unique_ptr<VariableTemporal> variable_;
};

}  // namespace tpv::prueba
