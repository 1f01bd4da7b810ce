#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

#include "core/runtime/fecha.hpp"
#include "core/runtime/registro.hpp"
#include "core/runtime/reloj.hpp"

namespace tpv {
namespace {

TEST(Registro, UnaLineaPorSucesoConLaHoraDelRelojYSinSaltos) {
    auto ruta = std::filesystem::temp_directory_path() / ("tpv-registro-" + std::to_string(::getpid()) + ".log");
    std::filesystem::remove(ruta);
    ::setenv("TPV_LOG", ruta.c_str(), 1);
    DateTime momento = fecha::DesdeFecha(2026, 11, 23);
    momento.serial += fecha::DesdeHora(9, 30, 0).serial;
    reloj::Fijar(momento);
    Registrar("primera\nsegunda");
    Registrar("otra");
    reloj::Soltar();
    ::unsetenv("TPV_LOG");

    std::ifstream f(ruta);
    std::string l1, l2, l3;
    ASSERT_TRUE(std::getline(f, l1));
    ASSERT_TRUE(std::getline(f, l2));
    EXPECT_FALSE(std::getline(f, l3));
    EXPECT_EQ(l1.rfind("2026-11-23 09:30:00 [", 0), 0u) << l1;
    EXPECT_NE(l1.find("] primera segunda"), std::string::npos) << l1;
    EXPECT_NE(l2.find("] otra"), std::string::npos);
    std::filesystem::remove(ruta);
}

}  // namespace
}  // namespace tpv
