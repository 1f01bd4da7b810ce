#include "tools/demo/tienda_demo.hpp"

namespace tpv::demo {

TiendaDemo::TiendaDemo(Connection& tienda, Connection& informes, Tamano tamano, DateTime hoy)
    : tienda_(tienda), informes_(informes), tamano_(tamano), hoy_(Dia(hoy).date()), rng_(20240601) {}

void TiendaDemo::Llenar() {
    Identidad();
    Configuracion();
    Empleados();
    Catalogo();
    Clientes();
    VentasCerradas();
    if (tamano_ == Tamano::Grande) {
        CatalogoMasivo();
        ClientesMasivos();
    }
}

}  // namespace tpv::demo
