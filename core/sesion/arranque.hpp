#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "core/runtime/value.hpp"
#include "core/sesion/instancia_unica.hpp"

namespace tpv {

// The two screens a run can open with; the screens layer implements them.
class PrimeraPantalla {
public:
    virtual ~PrimeraPantalla() = default;
    // frmPrincipalCantarel: the employee chooses himself.
    virtual void MostrarSeleccionEmpleado() = 0;
    // frmCaja, with the terminal's employee already in the session.
    virtual void MostrarCaja() = 0;
};

// How a start ended. The first two end the program in silence.
enum class FinArranque { OtraInstancia, SinShell, SeleccionEmpleado, Caja };

struct OpcionesArranque {
    std::string nombreBloqueo;    // "": InstanciaUnica::NombrePorDefecto()
    std::string carpetaPrograma;  // "": the folder of the running executable
    std::optional<DateTime> hoy;  // none: today's date
    // Neither the single-instance lock nor the shell's check: the scripted
    // runner plays the shell itself, and several of its runs go side by side.
    bool sinGuardas = false;
};

// Settings of the suite that name its sibling programs.
inline constexpr const char* kClaveProgramaShell = "programa_shell";
inline constexpr const char* kProgramaShellPorDefecto = "suite_shell";
inline constexpr const char* kClaveProgramaActualizaciones = "programa_actualizaciones";
inline constexpr const char* kProgramaActualizacionesPorDefecto = "buscar_actualizaciones";

// The start of the till: one instance per machine, only under the suite's
// shell; then the machine's identity, the connection, the configuration, the
// start-up caches and semaphores, the monthly update finder, and the first
// screen. A failure of the database or of a suite service on the way is a
// run-time error that ends the run.
FinArranque Main(PrimeraPantalla& pantalla, const OpcionesArranque& opciones = {});

// Gives the open database every index of the shop's schema it lacks (a shop
// whose database is older than some index). Never fails: what it made and
// what it could not make go to the log, and the start goes on.
void CompletarIndicesDeLaBase();

// The lock that Main takes for the whole run; tests let it go between starts.
InstanciaUnica& InstanciaDelPrograma();

// nombre & " " & apellidos of an employee; "" when there is no such employee.
std::string ObtenerNombreEmpleado(std::int32_t codigo);

// The photo folder beside the database, for a database that is not on drive
// C: what precedes the sector's name in its path, and "fotos/".
std::string CalcularCarpetaFotosServidor();

}  // namespace tpv
