#include "core/sesion/arranque.hpp"

#include <exception>
#include <filesystem>
#include <system_error>

#include "core/datos/esquema.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/registro.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/connection_opener.hpp"
#include "core/servicios/fuente_informes.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/servicios/suite_context.hpp"
#include "core/servicios/suite_launcher.hpp"
#include "core/servicios/suite_settings.hpp"
#include "core/sesion/clientes.hpp"
#include "core/sesion/configuracion.hpp"
#include "core/sesion/contadores.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/paneles.hpp"
#include "core/sesion/sesion.hpp"

namespace fs = std::filesystem;

namespace tpv {

namespace {

constexpr const char* kTituloActualizaciones = "Buscar Actualizaciones";

std::string CarpetaDelEjecutable() {
    std::error_code ec;
    const fs::path exe = fs::read_symlink("/proc/self/exe", ec);
    return ec ? fs::current_path(ec).string() : exe.parent_path().string();
}

std::string ConBarra(std::string carpeta) {
    if (carpeta.empty() || carpeta.back() != '/') carpeta += '/';
    return carpeta;
}

void CargarColoresGenericos() {
    Sesion& s = sesion();
    ColourScheme esquema;
    s.ColoresGenericos = {esquema.Color1(s.Conexion, s.EsquemaColores), esquema.Color2(s.Conexion, s.EsquemaColores),
                          esquema.Color3(s.Conexion, s.EsquemaColores), esquema.Color4(s.Conexion, s.EsquemaColores)};
}

void CargarCachesDeArranque() {
    CargarPanelEmpleados();
    CargarPanelProveedores();
    CargarPanelSecciones();
    CargarPanelFormasPago();
    CargarClientes();
}

// A machine takes part in the monthly search when its key is listed.
bool BuscarActualizacionesActivado() {
    const Sesion& s = sesion();
    Recordset rs;
    lectura::Abrir(rs,
                   "Select datoa from Relaciones_Fijas where indice = 'ActivadoBuscarActualizaciones' and datoa = '" +
                       s.IdentificadorTerminal + s.SegundoIdentificador + "'");
    const bool activado = rs.RecordCount() > 0;
    rs.Close();
    return activado;
}

// On the 22nd of the month the update finder is started, not waited for; a
// failure to start it is no reason to stop the till.
void BuscarActualizaciones(SuiteLauncher& lanzador, const std::string& carpetaPrograma, DateTime hoy) {
    if (Day(Value(hoy)) != 22) return;
    const std::string programa =
        SuiteSettings::Instancia().Leer(kClaveProgramaActualizaciones, kProgramaActualizacionesPorDefecto);
    const bool activado = BuscarActualizacionesActivado();
    std::error_code ec;
    const bool existe = fs::exists(fs::path(carpetaPrograma) / programa, ec);
    if (!activado || !existe) return;
    try {
        lanzador.Lanzar(programa, kTituloActualizaciones, sesion().Conexion);
    } catch (const std::exception&) {
    }
}

FinArranque ElegirPrimeraPantalla(PrimeraPantalla& pantalla) {
    Sesion& s = sesion();
    if (s.EmpleadoTerminal < 0) {
        pantalla.MostrarSeleccionEmpleado();
        return FinArranque::SeleccionEmpleado;
    }
    s.FijarEmpleadoActual(s.EmpleadoTerminal, ObtenerNombreEmpleado(s.EmpleadoTerminal));
    pantalla.MostrarCaja();
    return FinArranque::Caja;
}

}  // namespace

InstanciaUnica& InstanciaDelPrograma() {
    static InstanciaUnica instancia;
    return instancia;
}

void CompletarIndicesDeLaBase() {
    try {
        const datos::IndicesCompletados hecho =
            datos::CompletarIndices(sesion().Conexion, datos::CarpetaEsquemas() + "/tienda.schema");
        for (const std::string& n : hecho.creados) Registrar("Arranque: se crea el índice '" + n + "', que faltaba.");
        for (const auto& [n, motivo] : hecho.fallidos)
            Registrar("Arranque: no se pudo crear el índice '" + n + "': " + motivo);
    } catch (const std::exception& e) {
        Registrar(std::string("Arranque: no se pudieron revisar los índices de la base de datos: ") + e.what());
    }
}

std::string ObtenerNombreEmpleado(std::int32_t codigo) {
    Recordset rs;
    lectura::Abrir(rs, "Select nombre, apellidos from empleados where codigo = " + std::to_string(codigo));
    std::string nombre;
    if (rs.RecordCount() > 0) nombre = Texto(rs["nombre"]) + " " + Texto(rs["Apellidos"]);
    rs.Close();
    return nombre;
}

std::string CalcularCarpetaFotosServidor() {
    Sesion& s = sesion();
    const std::string baseDatos = s.Conexion.DefaultDatabase();
    // A database on drive C is this machine's own: its pictures are the local ones.
    if (UCase(Left(baseDatos, 1)) == "C") return "";
    const std::string sector = SuiteContext::Instancia().Sector(s.Conexion);
    // The database file is named after the sector: the folder is what precedes it.
    const std::string fichero = baseDatos + ".mdb";
    const long posicion = InStr(LCase(fichero), LCase(sector + ".mdb"));
    return Left(fichero, posicion - 1) + "fotos/";
}

// Both guards end the run without a word on screen; the log says why. Caja
// here means that the start goes on.
static FinArranque Guardas(SuiteLauncher& lanzador, const OpcionesArranque& opciones) {
    const std::string bloqueo =
        opciones.nombreBloqueo.empty() ? InstanciaUnica::NombrePorDefecto() : opciones.nombreBloqueo;
    if (!InstanciaDelPrograma().Tomar(bloqueo)) {
        Registrar("Arranque: ya hay otra caja en marcha en esta máquina; esta termina.");
        return FinArranque::OtraInstancia;
    }

    // The till only runs under the suite's shell.
    const std::string shell = SuiteSettings::Instancia().Leer(kClaveProgramaShell, kProgramaShellPorDefecto);
    if (!lanzador.EstaEjecutandose(shell)) {
        InstanciaDelPrograma().Soltar();
        Registrar("Arranque: el programa principal de la suite ('" + shell + "') no está en marcha; la caja termina.");
        return FinArranque::SinShell;
    }
    return FinArranque::Caja;
}

FinArranque Main(PrimeraPantalla& pantalla, const OpcionesArranque& opciones) {
    SuiteLauncher lanzador;
    if (!opciones.sinGuardas) {
        const FinArranque fin = Guardas(lanzador, opciones);
        if (fin != FinArranque::Caja) return fin;
    }

    Sesion& s = sesion();
    s.IdentificadorTerminal = LeerIdentificadorTerminal();
    const std::string carpetaPrograma =
        opciones.carpetaPrograma.empty() ? CarpetaDelEjecutable() : opciones.carpetaPrograma;
    s.CarpetaFotos = ConBarra(carpetaPrograma) + "fotos/";
    ConnectionOpener::Instancia().Abrir("", s.Conexion);
    CompletarIndicesDeLaBase();
    s.EsquemaColores = SuiteContext::Instancia().EsquemaColores(s.Conexion);
    s.CarpetaFotosServidor = CalcularCarpetaFotosServidor();
    CargarColoresGenericos();
    CargarConfiguracion();
    // Audit lines carry this terminal from now on, and no employee until one works.
    RecordWriter::FijarPuesto(s.TerminalActual, "");
    CargarCachesDeArranque();
    if (s.Sector == "SUPERMERCADO") CrearSemaforos();
    BuscarActualizaciones(lanzador, carpetaPrograma, opciones.hoy.value_or(Date()));
    return ElegirPrimeraPantalla(pantalla);
}

}  // namespace tpv
