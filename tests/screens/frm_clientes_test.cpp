// The customer card: the proposed codes, the required boxes, what is saved
// and added to the in-memory list, and the privacy contract.
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "core/sesion/clientes.hpp"
#include "screens/frm_clientes.hpp"
#include "tests/core/servicios/entorno_prueba.hpp"
#include "tests/screens/caja_prueba.hpp"

namespace tpv {
namespace {

class FichaCliente : public prueba::CajaTest {
protected:
    void TearDown() override {
        Unica<frmClientes>().Unload();
        Unica<frmEsperar>().Unload();
        CajaTest::TearDown();
    }
    void Cliente(int codigo, const std::string& tarjeta) {
        Ejecutar({"insert into clientes (codigo,codigocliente,nombre,apellidos,borrar) values (" +
                  std::to_string(codigo) + ",'" + tarjeta + "','N" + std::to_string(codigo) + "','A',0)"});
    }
    frmClientes& Mostrar() {
        frmClientes& f = Unica<frmClientes>();
        f.Show();
        return f;
    }
    void Aceptar(frmClientes& f) {
        anfitrion.Accion([&] { f.cmdAceptar_Click(); });
    }
};

TEST_P(FichaCliente, Darcodigo_PropuestaDeNumeroYCodigo) {
    struct Caso {
        const char* que;
        std::vector<std::pair<int, const char*>> clientes;
        const char* lblCod;
        const char* txtcodigo;
    } casos[] = {
        {"tabla vacia", {}, "1", "1"},
        {"siguiente al mayor", {{1, "7"}, {2, "8"}}, "3", "9"},
        // In text order "9" is above "10": 10 is taken, so the number is tried.
        {"orden de texto", {{1, "9"}, {2, "10"}}, "3", "3"},
        {"numero ocupado tambien", {{1, "9"}, {2, "10"}, {3, "4"}}, "4", "5"},
        {"numero ocupado, se sube", {{1, "9"}, {2, "10"}, {4, "5"}}, "5", "6"},
        {"codigo que no es numero", {{1, "9"}, {2, "ABC"}}, "3", ""},
    };
    for (const Caso& k : casos) {
        SCOPED_TRACE(k.que);
        Ejecutar({"delete from clientes"});
        for (const auto& [codigo, tarjeta] : k.clientes) Cliente(codigo, tarjeta);
        frmClientes& f = Mostrar();
        EXPECT_EQ(f.lblCod.caption, k.lblCod);
        EXPECT_EQ(f.txtcodigo.Text(), k.txtcodigo);
        f.Unload();
    }
}

TEST_P(FichaCliente, Aceptar_ComprobacionesEnOrden) {
    frmClientes& f = Mostrar();
    struct Caso {
        const char* codigo;
        const char* nombre;
        const char* apellidos;
        const char* aviso;
        TextBox frmClientes::*foco;
    } casos[] = {
        {"", "", "", "Es necesario que escriba un codigo para el cliente", &frmClientes::txtcodigo},
        {"1", "", "X", "Es necesario que escriba un Nombre", &frmClientes::txtnombre},
        {"1", "Ana", "", "Es necesario que escriba los Apellidos", &frmClientes::txtapellidos},
    };
    for (const Caso& k : casos) {
        SCOPED_TRACE(k.aviso);
        lineas.clear();
        f.txtcodigo.SetText(k.codigo);
        f.txtnombre.SetText(k.nombre);
        f.txtapellidos.SetText(k.apellidos);
        Aceptar(f);
        ASSERT_EQ(Avisos().size(), 1u);
        EXPECT_EQ(Avisos()[0], std::string("MENSAJE [TPV] ") + k.aviso + " -> Aceptar");
        EXPECT_EQ(f.ActiveControl(), &(f.*k.foco));
    }
    EXPECT_EQ(CLng(Valor("select count(*) from clientes")), 0);
    EXPECT_TRUE(f.Cargada());
}

// A birthday without its day or its month is stored as 1/1/2000, and the
// new card joins the till's list.
TEST_P(FichaCliente, Guardar_FechaIncompletaYListaEnMemoria) {
    Cliente(0, "0");
    CargarClientes();
    for (auto [dia, mes] : {std::pair{"15", ""}, std::pair{"", "7"}}) {
        SCOPED_TRACE(std::string(dia) + "/" + mes);
        frmClientes& f = Mostrar();
        const std::string codigo = f.lblCod.caption;
        Teclear(f.txtnombre, "Rosa");
        Teclear(f.txtapellidos, "Vidal");
        Teclear(f.txtDia, dia);
        Teclear(f.TxtMes, mes);
        Aceptar(f);
        EXPECT_FALSE(f.Cargada());
        EXPECT_EQ(Unica<frmCaja>().lblCodCliente.caption, codigo);
        EXPECT_EQ(CDate(Valor("select nacimiento from clientes where codigo = " + codigo)), DateSerial(2000, 1, 1));
        const RegistroCliente& ultimo = sesion().Clientes.back();
        EXPECT_EQ(ultimo.Codigo, CLng(Value(codigo)));
        EXPECT_EQ(ultimo.Nombre + " " + ultimo.Apellidos, "Rosa Vidal");
        EXPECT_EQ(ultimo.Nacimiento, DateSerial(2000, 1, 1));
        EXPECT_DOUBLE_EQ(ultimo.Descuento, 0);
    }
    EXPECT_EQ(sesion().Clientes.size(), 3u);
    EXPECT_TRUE(Avisos().empty());
}

TEST_P(FichaCliente, Contrato_SeEscenificaYSeImprimeConEsperaDelante) {
    const std::string uriInformes = NuevaBase(motor, "informes.schema");
    ::setenv("TPV_DSN_VELMORA", uriInformes.c_str(), 1);
    const std::string carpeta = ::testing::TempDir() + "contratos_" + std::to_string(::getpid());
    prueba::AjustesTemporales ajustes("carpeta_informes=" + carpeta + "\n");
    sesion().opciones.privacidad = true;
    Ejecutar({"insert into opciones (nombre,direccion,poblacion,provincia,cp,cif,TextoPrivacidad) values "
              "('Perfumería Olmo','C/ Mayor 3','Alcalá','Madrid','28801','B1','Sus datos son nuestros.')"});
    Connection informes;
    informes.Open(uriInformes);
    frmClientes& f = Mostrar();
    f.txtcodigo.SetText("R1");
    f.txtnombre.SetText("Rosa");
    f.txtapellidos.SetText("Vidal");
    Aceptar(f);
    // The card stays for the signature, behind the wait screen.
    EXPECT_TRUE(f.cmdSalir_Alta.visible);
    EXPECT_FALSE(f.cmdAceptar.enabled);
    EXPECT_TRUE(Unica<frmEsperar>().Cargada());
    Recordset rs;
    rs.Open("select * from informes", informes, adOpenStatic);
    ASSERT_EQ(rs.RecordCount(), 1);
    EXPECT_EQ(Texto(rs.Get("texto1")), "Rosa Vidal");
    EXPECT_EQ(Texto(rs.Get("texto2")), "Perfumería Olmo");
    EXPECT_EQ(Texto(rs.Get("texto3")), "C/ Mayor 3 28801 Alcalá Madrid");
    EXPECT_EQ(Texto(rs.Get("memo2")), "Sus datos son nuestros.");
    rs.Close();
    EXPECT_TRUE(Avisos().empty());
    Clic(f.cmdSalir_Alta);
    EXPECT_FALSE(f.Cargada());
    Unica<frmEsperar>().Unload();
    std::size_t pdfs = 0;
    for (const auto& e : std::filesystem::directory_iterator(carpeta)) pdfs += e.path().extension() == ".pdf";
    EXPECT_EQ(pdfs, 1u);
    std::filesystem::remove_all(carpeta);

    // Without a reporting source the failure is told, and the card is saved all the same.
    ::setenv("TPV_DSN_VELMORA", "", 1);
    lineas.clear();
    frmClientes& g = Mostrar();
    g.txtcodigo.SetText("R3");
    g.txtnombre.SetText("Eva");
    g.txtapellidos.SetText("Sanz");
    Aceptar(g);
    EXPECT_EQ(Avisos().size(), 1u);
    EXPECT_EQ(CLng(Valor("select count(*) from clientes where codigocliente = 'R3'")), 1);
    informes.Close();
    ::unsetenv("TPV_DSN_VELMORA");
    BorrarBase(motor, uriInformes);
}

TPV_EN_CADA_MOTOR(FichaCliente);

}  // namespace
}  // namespace tpv
