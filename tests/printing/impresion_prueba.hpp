#pragma once
#include <cstdlib>
#include <string>

#include "core/sesion/sesion.hpp"
#include "tests/support/base_prueba.hpp"

namespace tpv::prueba {

// A fresh shop database with the session open on it and the reporting data
// source pointed at a fresh database of its own; the session goes back to its
// start values after each test.
class ImpresionTest : public BaseDeDatosTest {
protected:
    void SetUp() override {
        BaseDeDatosTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        uriInformes = NuevaBase(motor, "informes.schema");
        ::setenv("TPV_DSN_VELMORA", uriInformes.c_str(), 1);
        informes.Open(uriInformes);
        sesion().Reiniciar();
        sesion().Conexion.Open(uri);
    }

    void TearDown() override {
        sesion().Reiniciar();
        informes.Close();
        if (!uriInformes.empty()) BorrarBase(motor, uriInformes);
        ::unsetenv("TPV_DSN_VELMORA");
        BaseDeDatosTest::TearDown();
    }

    std::string uriInformes;
    Connection informes;
};

}  // namespace tpv::prueba
