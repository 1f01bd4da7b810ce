#pragma once
// The till opened on the headless host, for the benchmarks that drive its
// screens as a person would, and closed again when they are done.
#include "core/sesion/mensajes.hpp"
#include "screens/pantallas.hpp"

namespace tpvbench {

inline tpv::frmCaja& AbrirCaja(tpv::AnfitrionSinPantalla& anfitrion) {
    tpv::FijarAnfitrion(&anfitrion);
    tpv::FijarMensajes(&anfitrion);
    tpv::frmCaja& caja = tpv::Unica<tpv::frmCaja>();
    caja.Show();
    return caja;
}

inline void CerrarCaja(tpv::frmCaja& caja) {
    caja.Unload();
    tpv::FijarAnfitrion(nullptr);
    tpv::FijarMensajes(nullptr);
}

}  // namespace tpvbench
