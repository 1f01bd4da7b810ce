#include "core/sesion/arranque.hpp"

#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

#include "core/datos/esquema.hpp"
#include "core/datos/servidor.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/servicios/suite_launcher.hpp"
#include "tests/core/sesion/sesion_prueba.hpp"

extern char** environ;

namespace tpv {
namespace {

namespace fs = std::filesystem;

struct PantallaAnotada : PrimeraPantalla {
    void MostrarSeleccionEmpleado() override { vistas.push_back("frmPrincipalCantarel"); }
    void MostrarCaja() override { vistas.push_back("frmCaja"); }
    std::vector<std::string> vistas;
};

// A process that passes for the suite's shell while the test runs.
class ShellDePrueba {
public:
    explicit ShellDePrueba(const std::string& nombre) {
        std::string arg0 = nombre, segundos = "120";
        char* argv[] = {arg0.data(), segundos.data(), nullptr};
        if (posix_spawn(&pid_, "/bin/sleep", nullptr, nullptr, argv, environ) != 0) pid_ = -1;
        SuiteLauncher lanzador;
        for (int i = 0; i < 200 && pid_ > 0 && !lanzador.EstaEjecutandose(nombre); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ~ShellDePrueba() {
        if (pid_ <= 0) return;
        ::kill(pid_, SIGTERM);
        ::waitpid(pid_, nullptr, 0);
    }

private:
    pid_t pid_ = -1;
};

class Arranque : public prueba::SesionTest {
protected:
    void SetUp() override {
        prueba::SesionTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        carpeta = fs::temp_directory_path() / ("tpv_arranque_" + std::to_string(::getpid()));
        fs::create_directories(carpeta);
        nombreShell = "tpv_shell_" + std::to_string(::getpid());
        shell = std::make_unique<ShellDePrueba>(nombreShell);
        Ajuste(kClaveProgramaShell, nombreShell);
        Ajuste("carpeta_programas", carpeta.string());
        opciones.nombreBloqueo = "tpv-caja-prueba-" + std::to_string(::getpid());
        registro = carpeta / "tpv.log";
        ::setenv("TPV_LOG", registro.c_str(), 1);
        opciones.carpetaPrograma = carpeta.string();
        opciones.hoy = DateSerial(2026, 3, 21);
        TiendaMinima();
        sesion().Reiniciar();
    }
    void TearDown() override {
        ::unsetenv("TPV_LOG");
        InstanciaDelPrograma().Soltar();
        shell.reset();
        std::error_code ec;
        fs::remove_all(carpeta, ec);
        prueba::SesionTest::TearDown();
        // Once every connection to it is closed.
        if (!baseSector.empty()) prueba::BorrarBase(motor, baseSector);
    }

    void TiendaMinima() {
        Ejecutar({
            "insert into opciones (nombre,telefono,Direccion,iva,modopantallacaja,empleadoVentaFijo,Deposito,"
            "clientepordefecto,CodigoBarras,UtilizaColores_FPago,NumDecimales,NumCopiasFactura,"
            "UtilizaColores_empleados,VentasMultiEmpleado,privacidad,abrircajetin,imprimirticket,facturas,"
            "multitienda,nombretienda) values ('La Plaza','963 000 111','Calle Mayor, 12',-1,1,0,-1,0,-1,0,2,1,0,0,"
            "0,-1,-1,0,'N','La Plaza')",
            "insert into opciones_terminal (identificador,terminal,AnimacionesActivas,empleado) values "
            "('CAJA1','CAJA1',-1,-1)",
            "insert into configuracionregional (nombre,bandera,segundoimpuesto,Identificacion_Fiscal) values "
            "('España','',0,'NIF')",
            "insert into empleados (codigo,nombre,apellidos,baja,mostrar_caja,posicion) values "
            "(0,'Encargado','General',0,-1,1)",
            "insert into empleados (codigo,nombre,apellidos,baja,mostrar_caja,posicion) values "
            "(3,'Lucía','Martín Sanz',0,-1,2)",
            "insert into formapago (codigo,nombre,fpa_color,borrar,posicion) values (1,'Contado',0,0,1)",
            "insert into formapago (codigo,nombre,fpa_color,borrar,posicion) values (4,'Dinero en Deposito',0,0,2)",
            "insert into Proveedores (codigo,Nombre,prv_color,Borrar) values (1,'Huerta',0,0)",
            "insert into Seccion (codigo,Nombre,sec_color,Borrar) values (2,'Fruta',0,0)",
            "insert into productos (Codigo,nombre,precio,proveedor,seccion) values (1,'Manzana',1.5,1,2)",
            "insert into clientes (Codigo,Nombre,Apellidos,borrar) values (0,'Cliente','Generico',0)",
            "insert into clientes (Codigo,Nombre,Apellidos,borrar) values (7,'Ana','Gil',0)",
            "insert into relaciones_fijas (indice,daton) values ('Venta',1)",
        });
    }

    // The update finder stand-in notes each start in a file of the folder.
    void BuscadorDeActualizaciones(bool ejecutable) {
        const fs::path programa = carpeta / kProgramaActualizacionesPorDefecto;
        std::ofstream(programa) << "#!/bin/sh\necho \"$TPV_TITULO\" >> '" << (carpeta / "lanzado").string() << "'\n";
        fs::permissions(programa, ejecutable ? fs::perms::owner_all : fs::perms::owner_read | fs::perms::owner_write);
    }
    std::vector<std::string> Lanzamientos(int esperados) {
        const fs::path f = carpeta / "lanzado";
        std::vector<std::string> lineas;
        for (int i = 0; i < 300; ++i) {
            lineas.clear();
            std::ifstream in(f);
            for (std::string l; std::getline(in, l);) lineas.push_back(l);
            if (static_cast<int>(lineas.size()) >= esperados && (esperados > 0 || i >= 20)) break;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return lineas;
    }

    FinArranque Arrancar(PantallaAnotada& pantalla) {
        InstanciaDelPrograma().Soltar();
        sesion().Reiniciar();
        return Main(pantalla, opciones);
    }

    std::vector<std::string> LineasDelRegistro() {
        std::vector<std::string> lineas;
        std::ifstream in(registro);
        for (std::string l; std::getline(in, l);) lineas.push_back(l.substr(l.find("] ") + 2));
        return lineas;
    }

    // The terminal and employee of an audit line written now.
    std::pair<Value, Value> PuestoDeAuditoria() {
        RecordWriter::Instancia().RegistrarCambio(sesion().Conexion, "Cabecera_Factura", "numero = 1", "", "", "35",
                                                  "prueba");
        Recordset rs;
        rs.Open("select terminal, empleado from registrocambios", sesion().Conexion, adOpenStatic, adLockOptimistic);
        rs.MoveLast();
        std::pair<Value, Value> puesto{rs["terminal"].Value(), rs["empleado"].Value()};
        rs.Close();
        return puesto;
    }

    fs::path carpeta;
    fs::path registro;
    std::string nombreShell;
    std::unique_ptr<ShellDePrueba> shell;
    OpcionesArranque opciones;
    std::string baseSector;  // a database of its own, named after a sector
};

TEST_P(Arranque, EmpleadoFijado_CeroOPositivoVanALaCaja) {
    const struct {
        int empleado;
        const char* nombre;
    } casos[] = {{0, "Encargado General"}, {3, "Lucía Martín Sanz"}, {9, ""}};
    for (const auto& c : casos) {
        Ejecutar({"update opciones_terminal set empleado = " + std::to_string(c.empleado)});
        PantallaAnotada pantalla;
        ASSERT_EQ(Arrancar(pantalla), FinArranque::Caja) << c.empleado;
        EXPECT_EQ(pantalla.vistas, std::vector<std::string>{"frmCaja"});
        EXPECT_EQ(sesion().CodigoEmpleadoActual, c.empleado);
        EXPECT_EQ(sesion().NombreEmpleadoActual, c.nombre);
    }
}

TEST_P(Arranque, SinIdentidadDeMaquina_AbreLaCajaConElEmpleadoCero) {
    Connection informes;
    informes.Open(uriInformes);
    informes.Execute("delete * from listadostemporal");
    informes.Close();
    PantallaAnotada pantalla;
    ASSERT_EQ(Arrancar(pantalla), FinArranque::Caja);
    EXPECT_EQ(sesion().IdentificadorTerminal, "");
    EXPECT_EQ(sesion().CodigoEmpleadoActual, 0);
    EXPECT_EQ(sesion().NombreEmpleadoActual, "Encargado General");
}

TEST_P(Arranque, SegundaInstanciaYShellAusente_TerminanEnSilencio) {
    // Another till of this machine holds the lock: this start ends at once.
    InstanciaUnica otraCaja;
    ASSERT_TRUE(otraCaja.Tomar(opciones.nombreBloqueo));
    PantallaAnotada segunda;
    EXPECT_EQ(Arrancar(segunda), FinArranque::OtraInstancia);
    EXPECT_TRUE(segunda.vistas.empty());
    EXPECT_FALSE(sesion().Conexion.IsOpen());
    EXPECT_TRUE(otraCaja.Tomada());

    // Once it has gone, the till starts.
    otraCaja.Soltar();
    PantallaAnotada primera;
    EXPECT_EQ(Arrancar(primera), FinArranque::SeleccionEmpleado);
    InstanciaUnica tercera;
    EXPECT_FALSE(tercera.Tomar(opciones.nombreBloqueo));

    // Without the shell nothing is opened, even with the database at hand.
    Ajuste(kClaveProgramaShell, "shell_que_no_corre_" + std::to_string(::getpid()));
    PantallaAnotada sinShell;
    EXPECT_EQ(Arrancar(sinShell), FinArranque::SinShell);
    EXPECT_TRUE(sinShell.vistas.empty());
    EXPECT_FALSE(sesion().Conexion.IsOpen());
    EXPECT_EQ(sesion().IdentificadorTerminal, "");

    // Nothing on screen, but a technician can read why in the log.
    EXPECT_EQ(LineasDelRegistro(),
              (std::vector<std::string>{
                  "Arranque: ya hay otra caja en marcha en esta máquina; esta termina.",
                  "Arranque: el programa principal de la suite ('shell_que_no_corre_" + std::to_string(::getpid()) +
                      "') no está en marcha; la caja termina."}));
}

TEST_P(Arranque, Auditoria_LlevaElTerminalYElEmpleadoQueTrabaja) {
    // Pinned employee: the till opens with him.
    Ejecutar({"update opciones_terminal set empleado = 3"});
    PantallaAnotada pantalla;
    ASSERT_EQ(Arrancar(pantalla), FinArranque::Caja);
    EXPECT_EQ(PuestoDeAuditoria(), std::make_pair(Value("CAJA1"), Value(3)));

    // Employee chosen on the selection screen: none until the choice.
    Ejecutar({"update opciones_terminal set empleado = -1"});
    ASSERT_EQ(Arrancar(pantalla), FinArranque::SeleccionEmpleado);
    EXPECT_EQ(PuestoDeAuditoria(), std::make_pair(Value("CAJA1"), Value()));
    sesion().FijarEmpleadoActual(0, "Encargado General");
    EXPECT_EQ(PuestoDeAuditoria(), std::make_pair(Value("CAJA1"), Value(0)));
}

TEST_P(Arranque, SinAjustes_ElErrorNombraElArchivoYLaClave) {
    // Only the shell runs: no settings file, no variables naming the sources.
    const std::string sinArchivo = (carpeta / "no_hay" / "suite.conf").string();
    ::setenv("TPV_SUITE_CONF", sinArchivo.c_str(), 1);
    ::unsetenv("TPV_DSN_VELMORA");
    ::unsetenv("TPV_DATABASE");
    SuiteSettings::Instancia().Recargar();
    PantallaAnotada pantalla;
    const auto mensaje = [&] {
        try {
            Arrancar(pantalla);
        } catch (const RuntimeError& e) {
            return std::string(e.what());
        }
        return std::string("sin error");
    };
    // The shell's name is the default one here: a stand-in plays it.
    ShellDePrueba shellPorDefecto(kProgramaShellPorDefecto);
    EXPECT_EQ(mensaje(), "No se encuentra el nombre del origen de datos 'Velmora': falta la clave \"dsn.Velmora\" en "
                         "el archivo de ajustes " +
                             sinArchivo + ", que no existe (o la variable TPV_DSN_VELMORA). [dsn=Velmora]");
    ::setenv("TPV_DSN_VELMORA", uriInformes.c_str(), 1);
    EXPECT_EQ(mensaje(), "No se ha indicado la base de datos de la suite: falta la clave \"base_de_datos\" en el "
                         "archivo de ajustes " +
                             sinArchivo + ", que no existe (o la variable TPV_DATABASE).");
    EXPECT_TRUE(pantalla.vistas.empty());
}

TEST_P(Arranque, BuscadorDeActualizaciones_SoloElDia22ConLaMaquinaActivada) {
    BuscadorDeActualizaciones(true);
    Ejecutar({"insert into relaciones_fijas (indice,datoa) values ('ActivadoBuscarActualizaciones','CAJA1A')"});
    PantallaAnotada pantalla;
    opciones.hoy = DateSerial(2026, 3, 21);
    ASSERT_EQ(Arrancar(pantalla), FinArranque::SeleccionEmpleado);
    EXPECT_TRUE(Lanzamientos(0).empty());

    opciones.hoy = DateSerial(2026, 4, 22);
    ASSERT_EQ(Arrancar(pantalla), FinArranque::SeleccionEmpleado);
    EXPECT_EQ(Lanzamientos(1), std::vector<std::string>{"Buscar Actualizaciones"});

    // Another machine's key does not switch this one on.
    Ejecutar({"update relaciones_fijas set datoa = 'CAJA2A' where indice = 'ActivadoBuscarActualizaciones'"});
    ASSERT_EQ(Arrancar(pantalla), FinArranque::SeleccionEmpleado);
    EXPECT_EQ(Lanzamientos(1).size(), 1u);

    // A finder that cannot be started does not stop the till.
    Ejecutar({"update relaciones_fijas set datoa = 'CAJA1A' where indice = 'ActivadoBuscarActualizaciones'"});
    BuscadorDeActualizaciones(false);
    EXPECT_EQ(Arrancar(pantalla), FinArranque::SeleccionEmpleado);
}

TEST_P(Arranque, Semaforos_SoloLosDelSupermercado) {
    PantallaAnotada tienda;
    ASSERT_EQ(Arrancar(tienda), FinArranque::SeleccionEmpleado);
    EXPECT_EQ(sesion().ClaveTerminal, "CAJA1A");
    EXPECT_EQ(sesion().CarpetaFotos, carpeta.string() + "/fotos/");
    EXPECT_EQ(CLng(Valor("select count(*) from relaciones_fijas where indice like 'Semaforo%'")), 0);

    // The sector is the last part of the database's name: a file SUPERMERCADO.db
    // in the test's folder, or a server database named ".../SUPERMERCADO" (a
    // server keeps the name as the URI gives it); the photo folder is what
    // precedes it.
    std::string carpetaBase = carpeta.string();
    if (motor == prueba::Motor::SQLite) {
        baseSector = (carpeta / "SUPERMERCADO.db").string();
    } else {
        carpetaBase = "tpv_arranque_" + std::to_string(::getpid());
        baseSector = datos::servidor::ConBase(std::getenv("TPV_PG_URI"), carpetaBase + "/SUPERMERCADO");
    }
    const std::string& super = baseSector;
    datos::CrearBaseDeDatos(super, datos::CarpetaEsquemas() + "/tienda.schema");
    cn.Close();
    cn.Open(super);
    TiendaMinima();
    ::setenv("TPV_DATABASE", super.c_str(), 1);
    PantallaAnotada pantalla;
    ASSERT_EQ(Arrancar(pantalla), FinArranque::SeleccionEmpleado);
    EXPECT_EQ(sesion().Sector, "SUPERMERCADO");
    EXPECT_EQ(sesion().CarpetaFotosServidor, carpetaBase + "/fotos/");
    for (const char* nombre : {"Factura", "SalidaProd", "VentaTemp"})
        EXPECT_EQ(Valor(std::string("select datoa from relaciones_fijas where indice = 'Semaforo") + nombre + "'"),
                  Value("verde"))
            << nombre;
}

TPV_EN_CADA_MOTOR(Arranque);

// A database on drive C is the machine's own: no server photo folder.
TEST(ArranqueCarpetaFotos, BaseEnLaUnidadCSinCarpetaDelServidor) {
    const fs::path dir = fs::temp_directory_path() / ("tpv_unidad_" + std::to_string(::getpid()));
    fs::create_directories(dir / "Caja");
    const fs::path base = dir / "Caja" / "SUPERMERCADO.db";
    datos::CrearBaseDeDatos(base.string(), datos::CarpetaEsquemas() + "/tienda.schema");
    const fs::path antes = fs::current_path();
    fs::current_path(dir);

    sesion().Reiniciar();
    sesion().Conexion.Open("Caja/SUPERMERCADO.db");
    EXPECT_EQ(CalcularCarpetaFotosServidor(), "");
    sesion().Conexion.Close();
    sesion().Conexion.Open(base.string());
    EXPECT_EQ(CalcularCarpetaFotosServidor(), (dir / "Caja").string() + "/fotos/");

    fs::current_path(antes);
    sesion().Reiniciar();
    fs::remove_all(dir);
}

}  // namespace
}  // namespace tpv
