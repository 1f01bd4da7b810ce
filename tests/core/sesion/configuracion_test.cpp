#include "core/sesion/configuracion.hpp"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/sesion/pantalla.hpp"
#include "core/sesion/tarifas.hpp"
#include "tests/core/runtime/error_esperado.hpp"
#include "tests/core/sesion/sesion_prueba.hpp"

namespace tpv {
namespace {

using prueba::ErrorDe;

// A date literal `dias` away from today.
std::string FechaJet(int dias) { return "#" + Format(Value(DateTime{Date().serial + dias}), "mm/dd/yyyy") + "#"; }

const char* const kColumnasOpciones =
    "insert into opciones (nombre,telefono,Direccion,iva,modopantallacaja,empleadoVentaFijo,Deposito,"
    "clientepordefecto,CodigoBarras,UtilizaColores_FPago,NumDecimales,NumCopiasFactura,UtilizaColores_empleados,"
    "VentasMultiEmpleado,privacidad,abrircajetin,imprimirticket,facturas,multitienda,nombretienda) values ";

class Configuracion : public prueba::SesionTest {
protected:
    // A shop whose guarded columns are all NULL.
    void OpcionesConNulos() {
        Ejecutar({std::string(kColumnasOpciones) +
                  "('Tienda',Null,Null,-1,1,0,Null,0,-1,0,3,Null,0,0,Null,Null,Null,Null,Null,Null)"});
    }
    void Clave(const std::string& indice, const std::string& datoa, const std::string& daton = "Null",
               const std::string& otros = "Null") {
        Ejecutar({"insert into relaciones_fijas (indice,datoa,daton,otros) values ('" + indice + "'," + datoa + "," +
                  daton + "," + otros + ")"});
    }
    void Cargar() {
        sesion().IdentificadorTerminal = "CAJA1";
        CargarConfiguracion();
    }
};

TEST_P(Configuracion, BaseVacia_ValoresPorDefectoYLaFilaDeOrden) {
    Cargar();
    const Sesion& s = sesion();
    EXPECT_EQ(s.CampoOrdenItemsCaja, "Nombre");
    EXPECT_EQ(Valor("select datoa from relaciones_fijas where indice = 'CampoOrdenItemsCaja'"), Value("Nombre"));
    EXPECT_EQ(s.TarifaActual, -1);
    EXPECT_TRUE(s.Tarifas.empty());
    // Without a row of opciones nothing is read, not even the NULL defaults.
    EXPECT_EQ(s.opciones.NumCopiasFactura, 0);
    EXPECT_FALSE(s.opciones.privacidad);
    EXPECT_EQ(s.ClaveTerminal, "CAJA1" + s.SegundoIdentificador);

    // A second start finds the row and writes no other.
    Cargar();
    EXPECT_EQ(CLng(Valor("select count(*) from relaciones_fijas where indice = 'CampoOrdenItemsCaja'")), 1);
}

TEST_P(Configuracion, Opciones_ReglasDeNull_DepositoSoloConMenosUnoYLosCuatroFlagsSalvoCero) {
    OpcionesConNulos();
    Cargar();
    const OpcionesTienda& o = sesion().opciones;
    EXPECT_EQ(o.telefono, "");
    EXPECT_EQ(o.direccion, "");
    EXPECT_EQ(o.NumCopiasFactura, 1);
    EXPECT_EQ(NumDecimales(), 3);  // Fmt rounds to the shop's decimals from now on
    const struct {
        const char* valor;
        bool deposito;
        bool otros;
    } casos[] = {{"Null", false, true}, {"-1", true, true}, {"1", false, true}, {"0", false, false}};
    for (const auto& c : casos) {
        const std::string v = c.valor;
        Ejecutar({"update opciones set Deposito = " + v + ", privacidad = " + v + ", abrircajetin = " + v +
                  ", imprimirticket = " + v + ", facturas = " + v});
        Cargar();
        EXPECT_EQ(o.Deposito, c.deposito) << v;
        EXPECT_EQ(o.privacidad, c.otros) << v;
        EXPECT_EQ(o.abrircajetin, c.otros) << v;
        EXPECT_EQ(o.imprimirticket, c.otros) << v;
        EXPECT_EQ(o.facturas, c.otros) << v;
    }
}

TEST_P(Configuracion, Opciones_NullSinReglaEsErrorEnTiempoDeEjecucion) {
    for (const char* columna :
         {"nombre", "iva", "modopantallacaja", "empleadoVentaFijo", "clientepordefecto", "CodigoBarras",
          "UtilizaColores_FPago", "NumDecimales", "UtilizaColores_empleados", "VentasMultiEmpleado"}) {
        Ejecutar({"delete * from opciones"});
        OpcionesConNulos();
        Ejecutar({std::string("update opciones set ") + columna + " = Null"});
        const auto e = ErrorDe([&] { Cargar(); });
        EXPECT_EQ(e.numero, kErrInvalidUse) << columna;
        EXPECT_EQ(e.mensaje, "Uso no válido de Null") << columna;
    }
}

TEST_P(Configuracion, Multitienda_SyTIgualesElRestoNo) {
    OpcionesConNulos();
    const struct {
        const char* valor;
        bool multitienda;
    } casos[] = {{"'S'", true}, {"'T'", true}, {"'N'", false}, {"''", false}, {"'s'", false}, {"Null", false}};
    for (const auto& c : casos) {
        Ejecutar({std::string("update opciones set multitienda = ") + c.valor + ", nombretienda = 'Centro'"});
        Cargar();
        EXPECT_EQ(sesion().Multitienda, c.multitienda) << c.valor;
        EXPECT_EQ(sesion().NombreTienda, c.multitienda ? "Centro" : "") << c.valor;
    }
}

TEST_P(Configuracion, TamanoPantalla_ElConfiguradoSoloSiCubreElDiseno) {
    const struct {
        const char* ancho;
        const char* alto;
        double anchoEsperado;
        double altoEsperado;
    } casos[] = {
        {"20490", "11520", 20490, 11520}, {"15360", "11085", 15360, 11085}, {"20490", "11084", 19200, 15010},
        {"15359", "15360", 19200, 15010}, {"", "", 19200, 15010},
    };
    FijarPantalla(std::make_unique<PantallaFija>(1280, 1024));
    for (const auto& c : casos) {
        Ajuste("ancho_pantalla", c.ancho);
        Ajuste("alto_pantalla", c.alto);
        Cargar();
        EXPECT_DOUBLE_EQ(sesion().AnchoPantalla, c.anchoEsperado) << c.ancho << "x" << c.alto;
        EXPECT_DOUBLE_EQ(sesion().AltoPantalla, c.altoEsperado) << c.ancho << "x" << c.alto;
    }
    // Without a display the till takes 1024 x 768.
    FijarPantalla(nullptr);
    Cargar();
    EXPECT_DOUBLE_EQ(sesion().AnchoPantalla, 15360.0);
    EXPECT_DOUBLE_EQ(sesion().AltoPantalla, 11520.0 - 350.0);
}

TEST_P(Configuracion, ClavesDeTexto_ComparacionExacta) {
    Clave("PedirCantidadProductos", "'no'");
    Clave("PedirPrecioTotal", "'NO'");
    Clave("LineaXProducto", "'SI'");
    Clave("FiltroPantallaTactil", "'Secciones'");
    Clave("CampoOrdenItemsCaja", "''");
    Clave("DiasCaducidadValeDescuento", "Null", "-1");
    Clave("ComentarioTicketRegalo", "'Cambios en '", "Null", "'30 días'");
    Clave("VisorCAJA1", "Null", "Null", "'/dev/ttyS0'");
    Clave("DisTicketUtilizado", "'NUEVO'");
    Cargar();
    const Sesion& s = sesion();
    EXPECT_TRUE(s.PedirCantidad);  // only "NO" in capitals turns it off
    EXPECT_FALSE(s.PedirPrecioTotal);
    EXPECT_TRUE(s.LineaXProducto);
    EXPECT_EQ(s.FiltroPantallaTactil, "Secciones");
    EXPECT_EQ(s.CampoOrdenItemsCaja, "Nombre");
    EXPECT_EQ(Valor("select datoa from relaciones_fijas where indice = 'CampoOrdenItemsCaja'"), Value("Nombre"));
    EXPECT_EQ(s.DiasCaducidadValeDescuento, -1);
    EXPECT_EQ(s.ComentarioTicketRegalo, "Cambios en 30 días");
    EXPECT_TRUE(s.VisorActivo);
    EXPECT_EQ(s.PuertoVisor, "/dev/ttyS0");
    EXPECT_EQ(s.DatoVisor, "");
    EXPECT_FALSE(s.TicketConfigurable);  // chosen, but there is no layout

    Ejecutar({"insert into confticket (nomTicket) values ('Ticket:')",
              "update relaciones_fijas set datoa = 'si' where indice = 'LineaXProducto'",
              "update relaciones_fijas set datoa = 'Posicion' where indice = 'CampoOrdenItemsCaja'",
              "update relaciones_fijas set daton = Null where indice = 'DiasCaducidadValeDescuento'"});
    Cargar();
    EXPECT_TRUE(s.TicketConfigurable);
    EXPECT_FALSE(s.LineaXProducto);
    EXPECT_EQ(s.CampoOrdenItemsCaja, "Posicion");
    EXPECT_EQ(s.DiasCaducidadValeDescuento, 15);
}

TEST_P(Configuracion, Tarifas_LaCaducadaCaeANingunaYNoSaleEnElPanel) {
    Ejecutar({
        "insert into cabecera_precio (identificador,descripcion,preciovalidodesde,preciovalidohasta) values (7,"
        "'Verano'," +
            FechaJet(-60) + "," + FechaJet(-1) + ")",
        "insert into cabecera_precio (identificador,descripcion,preciovalidodesde,preciovalidohasta) values (8,"
        "'Socios'," +
            FechaJet(0) + "," + FechaJet(0) + ")",
        "insert into cabecera_precio (identificador,descripcion,preciovalidodesde,preciovalidohasta) values (9,"
        "'Mayoristas'," +
            FechaJet(-5) + "," + FechaJet(30) + ")",
        "insert into cabecera_precio (identificador,descripcion,preciovalidodesde,preciovalidohasta) values (10,"
        "'Futura'," +
            FechaJet(1) + "," + FechaJet(30) + ")",
    });
    sesion().IdentificadorTerminal = "CAJA1";
    CargarConfiguracion();
    const std::string clave = sesion().ClaveTerminal;
    Clave("TarifaAplicada", "'" + clave + "'", "7");
    Clave("TarifaAplicada", "'OTRA'", "9");
    Cargar();
    const Sesion& s = sesion();
    EXPECT_EQ(s.TarifaActual, -1);
    ASSERT_EQ(s.Tarifas.size(), 3u);
    EXPECT_EQ(s.Tarifas[0].TextoSuperior, "General");
    EXPECT_EQ(s.Tarifas[0].Codigo, "-1");
    EXPECT_EQ(s.ColorTarifaActual, s.Tarifas[0].Color);
    std::vector<std::string> codigos{s.Tarifas[1].Codigo, s.Tarifas[2].Codigo};
    std::sort(codigos.begin(), codigos.end());
    EXPECT_EQ(codigos, (std::vector<std::string>{"8", "9"}));
    EXPECT_EQ(s.ColoresTarifas, (std::array<std::string, 4>{"12632319", "16777152", "12648447", "16761024"}));
    EXPECT_EQ(s.Tarifas[1].Color, "12632319");
    EXPECT_EQ(s.Tarifas[2].Color, "16777152");

    // A tariff in force gives its own colour.
    Ejecutar({"update relaciones_fijas set daton = 9 where indice = 'TarifaAplicada' and datoa = '" + clave + "'"});
    Cargar();
    EXPECT_EQ(s.TarifaActual, 9);
    EXPECT_EQ(s.ColorTarifaActual, s.Tarifas[1].Codigo == "9" ? s.Tarifas[1].Color : s.Tarifas[2].Color);
    EXPECT_EQ(NombreTarifa(9), "Mayoristas");

    // A tariff that no longer exists stands as it is.
    Ejecutar({"update relaciones_fijas set daton = 99 where indice = 'TarifaAplicada' and datoa = '" + clave + "'"});
    EXPECT_EQ(LeerTarifaAplicada(), 99);
}

TEST_P(Configuracion, Logo_SeCopiaDelServidorYLeeSuTamano) {
    namespace fs = std::filesystem;
    const fs::path raiz = fs::temp_directory_path() / ("tpv_logo_" + std::to_string(::getpid()));
    fs::create_directories(raiz / "servidor");
    std::ofstream(raiz / "servidor" / "logo.bmp") << "BM";
    Sesion& s = sesion();
    s.CarpetaFotos = (raiz / "local").string() + "/";
    s.CarpetaFotosServidor = (raiz / "servidor").string() + "/";
    Clave("LogoTicket", "'logo.bmp'");
    Clave("TamLogoTicket", "'2,5'", "3", "'1,5'");
    Cargar();
    EXPECT_EQ(s.LogoTicket, s.CarpetaFotos + "logo.bmp");
    EXPECT_TRUE(fs::exists(s.LogoTicket));
    EXPECT_DOUBLE_EQ(s.LogoAncho, 2.5);
    EXPECT_DOUBLE_EQ(s.LogoAlto, 1.5);
    EXPECT_EQ(s.LogoPosicion, 3);

    // The local path stands even when the logo is nowhere.
    Ejecutar({"update relaciones_fijas set datoa = 'otro.bmp' where indice = 'LogoTicket'"});
    Cargar();
    EXPECT_EQ(s.LogoTicket, s.CarpetaFotos + "otro.bmp");
    EXPECT_FALSE(fs::exists(s.LogoTicket));
    fs::remove_all(raiz);
}

TEST_P(Configuracion, EscrituraDeOpciones_AnadeOCambiaLaFila) {
    GuardarPedirCantidad(false);
    GuardarPedirPrecioTotal(true);
    GuardarLineaXProducto(false);
    GuardarFiltroPantallaTactil("Secciones");
    EXPECT_EQ(Valor("select datoa from relaciones_fijas where indice = 'PedirCantidadProductos'"), Value("NO"));
    EXPECT_EQ(Valor("select datoa from relaciones_fijas where indice = 'PedirPrecioTotal'"), Value("SI"));
    EXPECT_EQ(Valor("select datoa from relaciones_fijas where indice = 'LineaXProducto'"), Value("NO"));
    EXPECT_FALSE(LeerPedirCantidad());
    EXPECT_FALSE(sesion().PedirCantidad);

    GuardarPedirCantidad(true);
    GuardarFiltroPantallaTactil("Proveedores");
    EXPECT_TRUE(LeerPedirCantidad());
    EXPECT_EQ(Valor("select datoa from relaciones_fijas where indice = 'FiltroPantallaTactil'"), Value("Proveedores"));
    EXPECT_EQ(CLng(Valor("select count(*) from relaciones_fijas")), 4);

    // The voucher validity is rewritten whole, duplicates included.
    Clave("DiasCaducidadValeDescuento", "Null", "10");
    Clave("DiasCaducidadValeDescuento", "Null", "20");
    GuardarDiasCaducidadValeDescuento(45);
    EXPECT_EQ(CLng(Valor("select count(*) from relaciones_fijas where indice = 'DiasCaducidadValeDescuento'")), 1);
    EXPECT_EQ(CLng(Valor("select daton from relaciones_fijas where indice = 'DiasCaducidadValeDescuento'")), 45);
}

TPV_EN_CADA_MOTOR(Configuracion);

}  // namespace
}  // namespace tpv
