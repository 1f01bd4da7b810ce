#include "core/sesion/instancia_unica.hpp"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <string>

#include "tests/support/procesos.hpp"

namespace tpv {
namespace {

// Whether a process of another user (nobody) can take the name now.
std::string OtroUsuarioToma(const std::string& nombre) {
    return prueba::EnProcesos(1, [&] {
        const passwd* nadie = ::getpwnam("nobody");
        if (!nadie || ::setgid(nadie->pw_gid) != 0 || ::setuid(nadie->pw_uid) != 0) return std::string("sin usuario");
        InstanciaUnica caja;
        return std::string(caja.Tomar(nombre) ? "tomada" : "ocupada");
    })[0];
}

TEST(InstanciaUnica, UnaCajaPorMaquinaSeaCualSeaElUsuario) {
    if (::geteuid() != 0) GTEST_SKIP() << "hace falta root para probar con otro usuario";
    const std::string nombre = "tpv-caja-prueba-" + std::to_string(::getpid());

    // While root's till runs, another user's start finds it taken.
    InstanciaUnica primera;
    ASSERT_TRUE(primera.Tomar(nombre));
    EXPECT_TRUE(primera.Tomar(nombre));  // taking it again is no second till
    InstanciaUnica segunda;
    EXPECT_FALSE(segunda.Tomar(nombre));
    EXPECT_EQ(OtroUsuarioToma(nombre), "ocupada");

    // Once it has gone, another user starts.
    primera.Soltar();
    EXPECT_EQ(OtroUsuarioToma(nombre), "tomada");

    // A till of root that ended without letting go leaves nothing behind.
    EXPECT_EQ(prueba::EnProcesos(1,
                                 [&] {
                                     auto* caja = new InstanciaUnica;  // never released: the process just ends
                                     return std::string(caja->Tomar(nombre) ? "tomada" : "ocupada");
                                 })[0],
              "tomada");
    EXPECT_EQ(OtroUsuarioToma(nombre), "tomada");
    EXPECT_TRUE(segunda.Tomar(nombre));
}

TEST(InstanciaUnica, NombreDeTodasLasCajas) {
    InstanciaUnica caja;
    EXPECT_FALSE(caja.Tomar(""));
    EXPECT_FALSE(caja.Tomar(std::string(200, 'x')));
    EXPECT_FALSE(caja.Tomada());
}

}  // namespace
}  // namespace tpv
