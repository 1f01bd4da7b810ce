#pragma once
#include <cstdint>
#include <string>

// Document counters and the semaphores between tills, kept as rows of
// relaciones_fijas. A counter row holds the next number to hand out.
namespace tpv {

// Names of the semaphores.
inline constexpr const char* kSemaforoVentaTemp = "VentaTemp";
inline constexpr const char* kSemaforoFactura = "Factura";
inline constexpr const char* kSemaforoSalidaProd = "SalidaProd";

// Probes of a held semaphore before it is taken anyway.
inline constexpr int kSondeosSemaforo = 101;

// Adds the rows "SemaforoFactura", "SemaforoSalidaProd" and
// "SemaforoVentaTemp" as "verde" where they are missing.
void CrearSemaforos();

// Only in the sector "SUPERMERCADO": reopens the connection, probes until the
// semaphore is free or 101 probes have been made, and sets it "rojo" either
// way, so that a till that died holding it cannot stop the others. Returns the
// number of probes made, 0 in any other sector.
int TomarSemaforo(const std::string& nombre);

// Sets the semaphore "verde", in every sector (elsewhere no row matches).
void SoltarSemaforo(const std::string& nombre);

// The next number of each document; 0, with nothing written, when the
// counter's row is missing, except for delivery notes, whose first use adds
// the row and hands out 1.
std::int32_t SiguienteNumeroVenta();
std::int32_t SiguienteNumeroFactura();
std::int32_t SiguienteNumeroAbono();
std::int32_t SiguienteNumeroPagoCuenta();
std::int32_t SiguienteNumeroAlbaran();

// The last invoice handed out; 0 when none was (or there is no counter).
std::int32_t UltimoNumeroFactura();

}  // namespace tpv
