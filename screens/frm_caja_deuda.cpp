// The customer's debt on the till: the panel that tells it for a while when
// the customer is chosen or the sale resumed, and the button that opens the
// suite's program of payments on account.
#include "core/runtime/error.hpp"
#include "core/runtime/registro.hpp"
#include "core/servicios/suite_launcher.hpp"
#include "core/servicios/suite_settings.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/frm_caja.hpp"

namespace tpv {

namespace {

constexpr long kTicksDeuda = 6000;  // ticks the debt panel stays
// The program that takes the payments of customers who owe the shop; the
// suite's settings may name another one.
constexpr const char* kClaveProgramaPagos = "programa_pagos";
constexpr const char* kProgramaPagosPorDefecto = "pagos_cuenta";
constexpr const char* kTituloPagos = "Pagos a Cuenta";

}  // namespace

// When the time is up the panel goes, and back to its place over the grid,
// ready for the next customer who owes.
void frmCaja::tmrfinDeuda_Timer() {
    if (++ticksDeuda_ < kTicksDeuda) return;
    ticksDeuda_ = 0;
    tmrfinDeuda.SetEnabled(false);
    frDeuda.visible = false;
    frDeuda.left = FGCaja.left + (FGCaja.width - frDeuda.width) / 2;
    frDeuda.top = FGCaja.top + (FGCaja.height - frDeuda.height) / 2;
}

// The till doesn't wait for the program; one that can't be started leaves a
// line in the log and the till goes on.
void frmCaja::cmdIrAPagos_Click() {
    const std::string programa = SuiteSettings::Instancia().Leer(kClaveProgramaPagos, kProgramaPagosPorDefecto);
    try {
        SuiteLauncher().Lanzar(programa, kTituloPagos, sesion().Conexion);
    } catch (const RuntimeError& e) {
        tpv::Registrar("Pagos a cuenta: no se ha podido abrir '" + programa + "': " + e.what());
    }
}

void frmCaja::ConectarDeuda() {
    tmrfinDeuda.Tick = [this] { tmrfinDeuda_Timer(); };
    cmdIrAPagos.Click = [this] { cmdIrAPagos_Click(); };
}

}  // namespace tpv
