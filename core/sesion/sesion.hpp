#pragma once
#include <array>
#include <cstdint>
#include <string>

#include "core/datos/connection.hpp"
#include "core/sesion/button_record.hpp"
#include "core/sesion/registro_cliente.hpp"

namespace tpv {

// Shop-wide options, read from the table of the same name at start.
struct OpcionesTienda {
    std::string nombre;
    std::string telefono;
    std::string direccion;
    bool iva = false;                   // catalogue prices carry tax
    std::int16_t modopantallacaja = 0;  // 1 bar code, 0 touch
    bool empleadoVentaFijo = false;
    bool VentasMultiEmpleado = false;
    bool clientepordefecto = false;
    bool CodigoBarras = false;
    bool Deposito = false;
    bool UtilizaColores_FPago = false;
    bool UtilizaColores_empleados = false;
    std::int16_t NumCopiasFactura = 0;
    bool privacidad = false;
    bool abrircajetin = false;
    bool imprimirticket = false;
    bool facturas = false;
    std::int16_t NumDecimales = 0;  // decimals of every money amount
};

// This machine's row of opciones_terminal.
struct OpcionesTerminal {
    bool AnimacionesActivas = false;
};

struct ConfiguracionRegional {
    bool segundoimpuesto = false;  // a second tax is in force
    std::string bandera;           // path of the flag picture, "" when the file is missing
    std::string nombre;            // the flag's tool tip
};

// The state of the whole run: what start-up and configuration read once and
// every routine of the till reads afterwards. One instance lives for the run;
// the names are the ones the rest of the till uses.
struct Sesion {
    // The one connection of the run; the semaphores reopen it.
    Connection Conexion;

    // Identity of the machine and of who works at it.
    std::string IdentificadorTerminal;
    std::string SegundoIdentificador;
    std::string ClaveTerminal;  // IdentificadorTerminal & SegundoIdentificador: key of the tariff row
    std::string TerminalActual;
    std::int32_t EmpleadoTerminal = 0;  // pinned employee; negative: choose at start
    std::int32_t CodigoEmpleadoActual = 0;
    std::string NombreEmpleadoActual;

    // Folders of pictures: local, and beside the database when it is elsewhere.
    std::string CarpetaFotos;
    std::string CarpetaFotosServidor;

    std::int32_t EsquemaColores = 0;
    std::string Sector;  // "SUPERMERCADO", "PANADERIA" or any other word
    std::int32_t TarifaActual = 0;
    std::string NombreTienda;
    bool Multitienda = false;

    // Printers of this terminal.
    std::string ImpresoraTickets;
    std::string ImpresoraListados;
    std::string PuertoImpresora;
    std::string SecuenciaApertura;  // bytes that open the drawer
    std::string FuenteImpresora;

    OpcionesTienda opciones;
    OpcionesTerminal opciones_terminal;
    ConfiguracionRegional configuracionregional;
    std::string IdentificacionFiscal;

    // Options kept as keys of relaciones_fijas.
    std::string ComentarioTicketRegalo;
    bool PedirCantidad = false;
    bool PedirPrecioTotal = false;
    std::string FiltroPantallaTactil;
    std::string PuertoVisor;
    std::string DatoVisor;
    bool VisorActivo = false;
    bool LineaXProducto = false;
    std::string CampoOrdenItemsCaja;
    std::int32_t DiasCaducidadValeDescuento = 0;  // -1: vouchers never expire
    bool TicketConfigurable = false;
    std::string LogoTicket;
    double LogoAncho = 0.0;
    double LogoAlto = 0.0;
    std::int32_t LogoPosicion = 0;

    // Screen sizes in twips: the real one and the one the screens are drawn for.
    double AnchoPantalla = 0.0;
    double AltoPantalla = 0.0;
    double AnchoDiseno = 0.0;
    double AltoDiseno = 0.0;

    // Tariffs in force and their colours.
    PanelRegistros Tarifas;
    std::array<std::string, 4> ColoresTarifas;
    std::string ColorTarifaActual;
    std::array<std::string, 4> ColoresGenericos;  // panel buttons without a colour of their own

    // Panels read once at start, and those the till screen refills.
    PanelRegistros PanelEmpleados;
    PanelRegistros PanelProveedores;
    PanelRegistros PanelSecciones;
    PanelRegistros PanelFormasPago;
    PanelRegistros PanelVentas;
    PanelRegistros PanelProductos;

    ListaClientes Clientes;

    // The employee who works now, chosen at the selection screen or pinned to
    // the terminal; from then on audit lines carry him.
    void FijarEmpleadoActual(std::int32_t codigo, const std::string& nombre);

    // Back to the start values, the connection closed: for tests, which run
    // several starts in one process.
    void Reiniciar();
};

// The session of this run.
Sesion& sesion();

}  // namespace tpv
