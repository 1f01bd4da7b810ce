#include "printing/informe.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <regex>
#include <string>
#include <vector>

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/reloj.hpp"
#include "printing/factura.hpp"
#include "printing/impresoras_sistema.hpp"
#include "printing/page_device.hpp"
#include "tests/core/servicios/entorno_prueba.hpp"
#include "tests/printing/impresion_prueba.hpp"
#include "tests/support/mensajes_guionados.hpp"

namespace tpv::prueba {
namespace {

namespace fs = std::filesystem;

// The text of a PDF as pdftotext lays it out, each run of blanks made one.
std::string TextoDelPdf(const std::string& ruta) {
    std::string salida;
    std::unique_ptr<FILE, int (*)(FILE*)> p(popen(("pdftotext -layout '" + ruta + "' -").c_str(), "r"), pclose);
    char buf[512];
    while (p && fgets(buf, sizeof buf, p.get())) salida += buf;
    return std::regex_replace(salida, std::regex("[ \t]+"), " ");
}

// Set TPV_CONSERVAR_INFORMES to keep the PDFs made, to look at them.
class InformeTest : public ImpresionTest {
protected:
    void SetUp() override {
        ImpresionTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        carpeta = ::testing::TempDir() + "informes_" + std::to_string(::getpid());
        if (!std::getenv("TPV_CONSERVAR_INFORMES")) fs::remove_all(carpeta);
        ajustes = std::make_unique<AjustesTemporales>("carpeta_informes=" + carpeta + "/guardados\n");
        reloj::Fijar(DateSerial(2026, 3, 14));
        Ejecutar({
            "insert into opciones (nombre,direccion,poblacion,cif,cp,provincia,telefono,iva) values "
            "('Perfumería Olmo','C/ Mayor 3','Alcalá','B12345678','28801','Madrid','918880000',True)",
            "insert into clientes (codigo,nombre,apellidos,nif,direccion,cp,poblacion,provincia,telefono1) "
            "values (7,'Ana','Ruiz Gil','12345678Z','C/ Sol 1','28001','Madrid','Madrid','911111111')",
            "insert into cabecera_factura (numero,cliente,descuento,fechaVenta,total) values "
            "(41,7,0.5,#02/28/2026#,34.45)",
            "insert into detalle_factura (num_factura,producto,unidades,precio,impuesto,descuento,tipoimpuesto,"
            "precio_unit) values (41,'Colonia fresca',2,24.2,4.2,0,21,12.1)",
            "insert into detalle_factura (num_factura,producto,unidades,precio,impuesto,descuento,tipoimpuesto,"
            "precio_unit) values (41,'Jabón de glicerina',1,6.05,1.05,0.5,21,6.55)",
            "insert into detalle_factura (num_factura,producto,unidades,precio,impuesto,descuento,tipoimpuesto,"
            "precio_unit) values (41,'Galletas',1.5,4.2,0.4,0,10.5,2.8)",
        });
        sesion().opciones.iva = true;
        sesion().IdentificacionFiscal = "NIF";
    }
    void TearDown() override {
        ResetPrinters();
        ajustes.reset();
        if (!std::getenv("TPV_CONSERVAR_INFORMES")) fs::remove_all(carpeta);
        reloj::Soltar();
        ImpresionTest::TearDown();
    }

    std::string Imprimir(const std::string& informe) {
        std::string resultado = "(sin tocar)";
        ImprimirReport(informe, resultado);
        return resultado;
    }

    void Espera(const std::string& texto, const std::vector<std::string>& filas) {
        for (const std::string& f : filas) EXPECT_NE(texto.find(f), std::string::npos) << f << "\n" << texto;
    }

    std::string carpeta;
    std::unique_ptr<AjustesTemporales> ajustes;
    MensajesGuionados cajas;
};

TEST_P(InformeTest, Factura_SinImpresoraDeListadosSeGuardaConTodoSuTexto) {
    PrepararFactura(41);
    const std::string ruta = Imprimir("N_factura.rpt");
    EXPECT_EQ(ruta, carpeta + "/guardados/Factura 41.pdf");
    const std::string texto = TextoDelPdf(ruta);
    Espera(texto, {"Perfumería Olmo FACTURA", "C/ Mayor 3", "28801 Madrid", "Tlf: 918880000", "NIF: B12345678",
                   "Número 41", "Fecha 28/02/2026",
                   "Ana Ruiz Gil", "NIF: 12345678Z", "C/ Sol 1", "28001 Madrid", "Tlf: 911111111",
                   "Descripción Cantidad Precio Dto. IVA Importe", "Colonia fresca 2 12,10 21 % 24,20",
                   "Jabón de glicerina 1 6,55 0,50 21 % 6,05", "Galletas 1,5 2,80 10,50 % 4,20",
                   "Base imponible Cuota Total Base imponible 28,80 €", "10,50 % 3,80 0,40 4,20 Cuota de IVA 5,65 €",
                   "21 % 25,00 5,25 30,25 Descuentos aplicados 0,50 €", "TOTAL 34,45 €", "IVA incluido",
                   "Perfumería Olmo · NIF: B12345678 Página 1 de 1"});
    EXPECT_TRUE(cajas.mostradas.empty());
}

TEST_P(InformeTest, Factura_LargaSigueEnMasPaginasSinPerderLineas) {
    std::vector<std::string> lineas;
    const std::string larga = "Crema hidratante de día con protección solar, aloe vera, manteca de karité y aceite de "
                              "argán para pieles secas y sensibles, envase de cincuenta mililitros";
    for (int i = 1; i <= 70; ++i)
        lineas.push_back("insert into detalle_factura (num_factura,producto,unidades,precio,impuesto,tipoimpuesto,"
                         "precio_unit) values (43,'" +
                         (i == 35 ? larga : "Artículo " + std::to_string(i)) + "',1,1.21,0.21,21,1.21)");
    lineas.push_back("insert into cabecera_factura (numero,cliente,fechaVenta) values (43,0,#03/14/2026#)");
    for (const std::string& sql : lineas) cn.Execute(sql);
    sesion().IdentificacionFiscal = "";
    sesion().opciones.iva = false;
    PrepararFactura(43);
    const std::string texto = TextoDelPdf(Imprimir("N_factura.rpt"));
    for (int i = 1; i <= 70; ++i)
        if (i != 35) Espera(texto, {"Artículo " + std::to_string(i) + " 1 1,21 21 % 1,21"});
    // The long description is broken into lines, none of it lost.
    for (const char* trozo : {"Crema hidratante", "argán", "cincuenta mililitros"}) Espera(texto, {trozo});
    Espera(texto, {"Número 43 Generico", "C.I.F: B12345678", "Perfumería Olmo Factura 43", "Página 1 de 3", "Página 2 de 3",
                   "Página 3 de 3", "21 % 70,00 14,70 84,70 Cuota de IVA 14,70 €", "TOTAL 84,70 €",
                   "IVA No incluido"});
    EXPECT_EQ(texto.find("NIF:"), std::string::npos);
}

TEST_P(InformeTest, ImpresoraDeListados_RecibeElPdfYSiFallaSeAvisaYSeGuarda) {
    std::vector<std::unique_ptr<PageDevice>> lista;
    lista.push_back(CrearImpresora("Tickets", "ESC/POS", "file:/dev/null"));
    lista.push_back(CrearImpresora("Listados", "PDF", "carpeta:" + carpeta + "/cola"));
    lista.push_back(CrearImpresora("Rota", "PDF", "file:/dev/no-existe/lp0"));
    InstallPrinters(std::move(lista));
    PrepararFactura(41);

    sesion().ImpresoraListados = "Listados";
    EXPECT_EQ(Imprimir("N_factura.rpt"), carpeta + "/cola/0001.pdf");
    Espera(TextoDelPdf(carpeta + "/cola/0001.pdf"), {"TOTAL 34,45 €"});
    EXPECT_TRUE(cajas.mostradas.empty());
    // The report never changes the ticket printer.
    EXPECT_EQ(Printer().DeviceName(), "Tickets");

    sesion().ImpresoraListados = "Rota";
    EXPECT_EQ(Imprimir("N_factura.rpt"), carpeta + "/guardados/Factura 41.pdf");
    ASSERT_EQ(cajas.mostradas.size(), 1u);
    EXPECT_EQ(cajas.mostradas[0].titulo, "482");
    EXPECT_EQ(cajas.mostradas[0].Icono(), vbCritical);
    EXPECT_EQ(cajas.mostradas[0].texto.rfind("Error de la impresora: ", 0), 0u) << cajas.mostradas[0].texto;

    // A ticket printer can't take a page: the invoice is saved.
    sesion().ImpresoraListados = "Tickets";
    EXPECT_EQ(Imprimir("N_factura.rpt"), carpeta + "/guardados/Factura 41.pdf");
    EXPECT_EQ(cajas.mostradas.size(), 1u);
}

TEST_P(InformeTest, ProteccionDeDatos_TextoDeLaTiendaOGenericoConLaFirma) {
    struct Caso {
        const char* informe;
        std::vector<std::string> esperado;
    } casos[] = {
        {"N_protecciondatosusuario.rpt",
         {"PROTECCIÓN DE DATOS PERSONALES", "Cliente: Ana Ruiz Gil", "Sus datos los guarda la tienda.",
          "Segunda línea del texto.", "Fecha: 14 de marzo de 2026", "Firma del cliente Por el establecimiento",
          "Ana Ruiz Gil Perfumería Olmo"}},
        {"N_protecciondatosgenerico.rpt",
         {"Responsable del tratamiento: Perfumería Olmo, con domicilio en C/ Mayor 3 28801 Alcalá Madrid.",
          "Agencia Española de Protección de Datos", "Fecha: 14 de marzo de 2026"}},
    };
    informes.Execute("delete * from informes");
    informes.Execute("insert into informes (texto1,texto2,texto3,memo2) values ('Ana Ruiz Gil','Perfumería Olmo',"
                     "'C/ Mayor 3 28801 Alcalá Madrid','Sus datos los guarda la tienda.\n"
                     "Segunda línea del texto.')");
    for (const Caso& c : casos) {
        const std::string ruta = Imprimir(c.informe);
        EXPECT_EQ(ruta, carpeta + "/guardados/Proteccion de datos - Ana Ruiz Gil.pdf");
        Espera(TextoDelPdf(ruta), c.esperado);
    }
    EXPECT_TRUE(cajas.mostradas.empty());
}

// The customer's mobile, else the landline, else nothing.
TEST_P(InformeTest, Factura_TelefonoFijoCuandoFaltaElMovil) {
    for (const auto& [sql, telefono] : {std::pair{"update clientes set telefono2 = '600000000'", "600000000"},
                                        std::pair{"update clientes set telefono2 = Null", "911111111"},
                                        std::pair{"update clientes set telefono1 = Null", ""}}) {
        Ejecutar({sql});
        PrepararFactura(41);
        Recordset rs;
        rs.Open("select texto18 from informes", informes);
        EXPECT_EQ(Texto(rs.Fields(0).Value()), telefono) << sql;
    }
}

TEST_P(InformeTest, SinFilasNadaYInformeDesconocidoAvisa) {
    informes.Execute("insert into informes (texto1) values ('de otro informe')");
    PrepararFactura(999);
    EXPECT_EQ(Imprimir("N_factura.rpt"), "");
    EXPECT_FALSE(fs::exists(carpeta + "/guardados/Factura 999.pdf"));
    EXPECT_TRUE(cajas.mostradas.empty());

    EXPECT_EQ(Imprimir("N_otro.rpt"), "");
    ASSERT_EQ(cajas.mostradas.size(), 1u);
    EXPECT_EQ(cajas.mostradas[0].titulo, "53");
    EXPECT_NE(cajas.mostradas[0].texto.find("N_otro.rpt"), std::string::npos);
}

TPV_EN_CADA_MOTOR(InformeTest);

}  // namespace
}  // namespace tpv::prueba
