// tpv: starts the till up to its first screen and describes, in Spanish,
// what it would show and the session it has loaded. The screens come later;
// until then this is how a start is checked against a shop's database.
#include <cstdio>
#include <exception>
#include <string>

#include "core/runtime/error.hpp"
#include "core/sesion/arranque.hpp"
#include "core/sesion/sesion.hpp"

using namespace tpv;

namespace {

const char* SiNo(bool flag) { return flag ? "sí" : "no"; }

class PantallaDeTexto : public PrimeraPantalla {
public:
    void MostrarSeleccionEmpleado() override {
        std::printf("Pantalla: selección de empleado (frmPrincipalCantarel)\n");
        const Sesion& s = sesion();
        std::printf("Empleados en el panel: %zu\n", s.PanelEmpleados.size());
        for (const ButtonRecord& b : s.PanelEmpleados) std::printf("  [%s] %s\n", b.Codigo.c_str(), b.Texto.c_str());
    }
    void MostrarCaja() override {
        const Sesion& s = sesion();
        std::printf("Pantalla: caja (frmCaja)\n");
        std::printf("Empleado: %d %s\n", s.CodigoEmpleadoActual, s.NombreEmpleadoActual.c_str());
    }
};

void Resumen() {
    const Sesion& s = sesion();
    std::printf("\nSesión\n");
    std::printf("  Terminal: %s (identificador %s, clave %s)\n", s.TerminalActual.c_str(),
                s.IdentificadorTerminal.c_str(), s.ClaveTerminal.c_str());
    std::printf("  Base de datos: %s\n", s.Conexion.DefaultDatabase().c_str());
    std::printf("  Sector: %s\n", s.Sector.c_str());
    std::printf("  Tienda: %s (multitienda: %s %s)\n", s.opciones.nombre.c_str(), SiNo(s.Multitienda),
                s.NombreTienda.c_str());
    std::printf("  Tarifa aplicada: %d; tarifas en vigor: %zu\n", s.TarifaActual, s.Tarifas.size());
    std::printf("  Modo de caja: %s; decimales: %d; precios con IVA: %s\n",
                s.opciones.modopantallacaja == 1 ? "código de barras" : "táctil", s.opciones.NumDecimales,
                SiNo(s.opciones.iva));
    std::printf("  Pedir cantidad: %s; pedir precio total: %s; línea por producto: %s\n", SiNo(s.PedirCantidad),
                SiNo(s.PedirPrecioTotal), SiNo(s.LineaXProducto));
    std::printf("  Filtro del panel táctil: %s; orden de los paneles: %s\n", s.FiltroPantallaTactil.c_str(),
                s.CampoOrdenItemsCaja.c_str());
    std::printf("  Ticket configurable: %s; días de caducidad de los vales: %d\n", SiNo(s.TicketConfigurable),
                s.DiasCaducidadValeDescuento);
    std::printf("  Impresora de tickets: %s (puerto %s); impresora de listados: %s\n", s.ImpresoraTickets.c_str(),
                s.PuertoImpresora.c_str(), s.ImpresoraListados.c_str());
    std::printf("  Visor: %s %s\n", SiNo(s.VisorActivo), s.PuertoVisor.c_str());
    std::printf("  Pantalla: %.0f x %.0f twips (diseño %.0f x %.0f)\n", s.AnchoPantalla, s.AltoPantalla, s.AnchoDiseno,
                s.AltoDiseno);
    std::printf("  Carpeta de fotos: %s; en el servidor: %s\n", s.CarpetaFotos.c_str(), s.CarpetaFotosServidor.c_str());
    std::printf("  Paneles: %zu proveedores, %zu secciones, %zu formas de pago; %zu clientes\n",
                s.PanelProveedores.size(), s.PanelSecciones.size(), s.PanelFormasPago.size(), s.Clientes.size());
}

}  // namespace

int main() {
    PantallaDeTexto pantalla;
    try {
        const FinArranque fin = Main(pantalla);
        if (fin == FinArranque::OtraInstancia || fin == FinArranque::SinShell) return 0;
        Resumen();
    } catch (const RuntimeError& e) {
        std::fprintf(stderr, "Error %ld en tiempo de ejecución: %s\n", e.Number(), e.what());
        return 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "Error: %s\n", e.what());
        return 1;
    }
    return 0;
}
