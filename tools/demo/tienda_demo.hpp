#pragma once
#include "core/datos/connection.hpp"
#include "core/runtime/value.hpp"
#include "tools/demo/fila.hpp"

// The demo shop: a believable Spanish shop for the terminal "CAJA1", made on a
// fresh database. The small shop has a few dozen products chosen to show
// every feature of the till; the large one adds a bulk catalogue and customer
// file of a real shop's size on top of it.
namespace tpv::demo {

enum class Tamano { Pequena, Grande };

// Identity of the demo's terminal, as the reporting source names it.
inline constexpr const char* kTerminal = "CAJA1";
inline constexpr const char* kSegundoIdentificador = "A";

// First codes of the bulk rows, clear of the hand-made ones.
inline constexpr int kPrimerProductoMasivo = 1001;
inline constexpr int kPrimerClienteMasivo = 101;
inline constexpr int kPrimerProveedorMasivo = 21;

// Closed sales and debts that the demo writes; the counters go on from them.
inline constexpr int kUltimaFacturaDemo = 4;
inline constexpr int kUltimoPagoDemo = 1;
// The history's sales, far above the numbers the till will take.
inline constexpr int kPrimeraFacturaHistorial = 1000001;

class TiendaDemo {
public:
    TiendaDemo(Connection& tienda, Connection& informes, Tamano tamano, DateTime hoy);

    // Fills both databases. The caller holds the transaction.
    void Llenar();

    // A year of closed sales up to yesterday, about a million lines, over
    // the catalogue and customers already made: for measuring what reads
    // the sales history. Their numbers start at kPrimeraFacturaHistorial.
    // Returns the number of lines written.
    long LlenarHistorial();

private:
    // configuracion_demo.cpp
    void Configuracion();
    void Opciones();
    void Contadores();
    void Impresion();
    void Identidad();

    // catalogo_demo.cpp
    void Catalogo();
    void SeccionesYProveedores();
    void Productos();
    void Servicios();
    void TarifasYPromociones();
    void Pedidos();
    void CatalogoMasivo();

    // personas_demo.cpp
    void Empleados();
    void Clientes();
    void ClientesMasivos();
    void VentasCerradas();

    void Insertar(const Fila& fila) { tienda_.Execute(fila.Sql()); }
    DateTime DiasDesdeHoy(int dias) const { return DateTime{hoy_.serial + dias}; }

    Connection& tienda_;
    Connection& informes_;
    Tamano tamano_;
    DateTime hoy_;
    Aleatorio rng_;
};

}  // namespace tpv::demo
