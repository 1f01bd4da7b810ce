#pragma once
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "core/servicios/suite_settings.hpp"
#include "core/sesion/sesion.hpp"
#include "tests/support/base_prueba.hpp"

namespace tpv::prueba {

// A fresh shop database with the session of the run open on it, the suite
// pointed at it (default database, reporting source naming the machine
// "CAJA1" & "A", an empty settings file of its own), and the session back at
// its start values before and after each test.
class SesionTest : public BaseDeDatosTest {
protected:
    void SetUp() override {
        BaseDeDatosTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        static std::atomic<int> contador{0};
        ajustes = (std::filesystem::temp_directory_path() /
                   ("tpv_suite_" + std::to_string(::getpid()) + "_" + std::to_string(contador++) + ".conf"))
                      .string();
        ::setenv("TPV_SUITE_CONF", ajustes.c_str(), 1);
        ::setenv("TPV_DATABASE", uri.c_str(), 1);
        SuiteSettings::Instancia().Recargar();

        uriInformes = NuevaBase(motor, "informes.schema");
        ::setenv("TPV_DSN_VELMORA", uriInformes.c_str(), 1);
        Connection informes;
        informes.Open(uriInformes);
        informes.Execute("insert into listadostemporal (list1,list2) values ('A','CAJA1')");
        informes.Close();

        sesion().Reiniciar();
        sesion().Conexion.Open(uri);
        sesion().ColoresGenericos = {"11", "22", "33", "44"};
    }

    void TearDown() override {
        sesion().Reiniciar();
        if (!uriInformes.empty()) BorrarBase(motor, uriInformes);
        if (!ajustes.empty()) std::remove(ajustes.c_str());
        ::unsetenv("TPV_SUITE_CONF");
        ::unsetenv("TPV_DATABASE");
        ::unsetenv("TPV_DSN_VELMORA");
        SuiteSettings::Instancia().Recargar();
        BaseDeDatosTest::TearDown();
    }

    void Ajuste(const std::string& clave, const std::string& valor) {
        SuiteSettings::Instancia().Escribir(clave, valor);
    }

    std::string ajustes;
    std::string uriInformes;
};

}  // namespace tpv::prueba
