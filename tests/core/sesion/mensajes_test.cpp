#include <gtest/gtest.h>

#include "core/runtime/calendario.hpp"
#include "core/runtime/fecha.hpp"
#include "core/runtime/reloj.hpp"
#include "core/sesion/mensajes.hpp"
#include "tests/support/mensajes_guionados.hpp"

namespace tpv {
namespace {

TEST(MsgBox, SinNadieQueLasMuestreContestaElBotonPorDefecto) {
    struct Caso {
        int estilo;
        int respuesta;
    } casos[] = {
        {vbOKOnly, vbOK},
        {vbYesNo + vbQuestion, vbYes},
        {vbYesNo + vbQuestion + vbDefaultButton2, vbNo},
        {vbYesNoCancel + vbDefaultButton3, vbCancel},
        {vbAbortRetryIgnore + vbDefaultButton2, vbRetry},
        {vbRetryCancel + vbCritical, vbRetry},
    };
    for (const Caso& c : casos) EXPECT_EQ(MsgBox("texto", c.estilo), c.respuesta) << c.estilo;
}

TEST(MsgBox, LaCajaLlevaTextoTituloEIconoYRecibeLaRespuestaGuionada) {
    prueba::MensajesGuionados cajas;
    cajas.respuestas.push_back(vbNo);
    EXPECT_EQ(MsgBox("¿Seguro?", vbYesNo + vbQuestion, "Borrar"), vbNo);
    EXPECT_EQ(MsgBox("Hecho"), vbOK);
    ASSERT_EQ(cajas.mostradas.size(), 2u);
    EXPECT_EQ(cajas.mostradas[0].titulo, "Borrar");
    EXPECT_EQ(cajas.mostradas[0].Icono(), vbQuestion);
    EXPECT_EQ(cajas.mostradas[0].NumeroDeBotones(), 2);
    EXPECT_EQ(cajas.mostradas[1].titulo, kTituloPrograma);
}

TEST(Reloj, FijadoNoSeMueveSinoCuandoSeLeDiceYHoyYAhoraLoSiguen) {
    DateTime momento = fecha::DesdeFecha(2026, 2, 3);
    momento.serial += fecha::DesdeHora(23, 59, 59).serial;
    reloj::Fijar(momento);
    EXPECT_EQ(Now(), momento);
    EXPECT_EQ(Date(), fecha::DesdeFecha(2026, 2, 3));
    reloj::Avanzar(1000);
    EXPECT_EQ(Date(), fecha::DesdeFecha(2026, 2, 4));
    EXPECT_EQ(Hour(Value(Now())), 0);
    reloj::Soltar();
    EXPECT_FALSE(reloj::Fijado());
    EXPECT_GT(Now().serial, fecha::DesdeFecha(2026, 1, 1).serial);
}

}  // namespace
}  // namespace tpv
