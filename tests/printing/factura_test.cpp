#include "printing/factura.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/reloj.hpp"
#include "tests/printing/impresion_prueba.hpp"

namespace tpv::prueba {
namespace {

class FacturaTest : public ImpresionTest {
protected:
    void SetUp() override {
        ImpresionTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        reloj::Fijar(DateSerial(2026, 3, 14));
        Ejecutar({
            "insert into opciones (nombre,direccion,poblacion,cif,cp,provincia,telefono,iva) values "
            "('Perfumería Olmo','C/ Mayor 3','Alcalá','B12345678','28801','Madrid','918880000',True)",
            "insert into clientes (codigo,nombre,apellidos,nif,direccion,cp,poblacion,provincia,telefono1,telefono2) "
            "values (7,'Ana','Ruiz Gil','12345678Z','C/ Sol 1','28001','Madrid','Madrid','911111111',Null)",
            "insert into cabecera_factura (numero,cliente,descuento,fechaVenta,total) values "
            "(41,7,1.5,#02/28/2026#,30.25)",
            "insert into detalle_factura (num_factura,producto,unidades,precio,impuesto,descuento,tipoimpuesto,"
            "precio_unit) values (41,'Colonia fresca',2,24.2,4.2,0,21,12.1)",
            "insert into detalle_factura (num_factura,producto,unidades,precio,impuesto,descuento,tipoimpuesto,"
            "precio_unit) values (41,'Jabón',1,6.05,1.05,0.5,21,6.55)",
            "insert into cabecera_factura (numero,cliente,fechaVenta,total) values (42,0,#03/01/2026#,0)",
        });
        informes.Execute("insert into informes (texto1) values ('de otro informe')");
        sesion().opciones.iva = true;
    }
    void TearDown() override {
        reloj::Soltar();
        ImpresionTest::TearDown();
    }

    std::vector<std::vector<std::string>> Filas(const std::string& columnas) {
        std::vector<std::vector<std::string>> filas;
        Recordset rs;
        rs.Open("select " + columnas + " from informes order by numerico4 desc", informes, adOpenStatic);
        for (; !rs.Eof(); rs.MoveNext()) {
            std::vector<std::string> fila;
            for (int i = 0; i < rs.FieldCount(); ++i) fila.push_back(Texto(rs.Fields(i).Value()));
            filas.push_back(fila);
        }
        return filas;
    }
};

TEST_P(FacturaTest, PrepararFactura_UnaFilaPorLineaConTiendaYCliente) {
    sesion().IdentificacionFiscal = "NIF";
    PrepararFactura(41);
    const auto filas = Filas(
        "texto1,texto2,texto20,texto3,texto4,texto5,texto6,texto9,texto11,texto12,texto13,texto14,texto15,texto16,"
        "texto17,texto18,texto29,fecha1,numerico1,numerico2,numerico3,numerico4,numerico5,numerico6,numerico20,"
        "numerico21");
    const std::vector<std::vector<std::string>> esperadas = {
        {"Perfumería Olmo", "NIF: B12345678", "NIF: ", "C/ Mayor 3", "28801", "Madrid", "Ana Ruiz Gil",
         "Colonia fresca", "Tlf: 918880000", "12345678Z", "Factura", "C/ Sol 1", "28001", "Madrid", "Madrid",
         "911111111", "IVA incluido", "28/02/2026", "41", "24,2", "4,2", "2", "0", "21", "12,1", "1,5"},
        {"Perfumería Olmo", "NIF: B12345678", "NIF: ", "C/ Mayor 3", "28801", "Madrid", "Ana Ruiz Gil", "Jabón",
         "Tlf: 918880000", "12345678Z", "Factura", "C/ Sol 1", "28001", "Madrid", "Madrid", "911111111",
         "IVA incluido", "28/02/2026", "41", "6,05", "1,05", "1", "0,5", "21", "6,55", "1,5"},
    };
    EXPECT_EQ(filas, esperadas);
}

TEST_P(FacturaTest, PrepararFactura_SinClienteNiIdentificacionDiceGenericoYCif) {
    Ejecutar({"insert into detalle_factura (num_factura,producto,unidades,precio) values (42,'Peine',1,2)"});
    sesion().opciones.iva = false;
    PrepararFactura(42);
    const auto filas = Filas("texto2,texto20,texto6,texto12,texto18,texto29,fecha1");
    const std::vector<std::vector<std::string>> esperadas = {
        {"B12345678", "C.I.F:", "Generico", "", "", "IVA No incluido", "01/03/2026"}};
    EXPECT_EQ(filas, esperadas);
}

TEST_P(FacturaTest, PrepararFactura_VentaSinLineasSoloVaciaLaTabla) {
    PrepararFactura(42);
    EXPECT_TRUE(Filas("texto1").empty());
    PrepararFactura(999);
    EXPECT_TRUE(Filas("texto1").empty());
}

TEST_P(FacturaTest, PrepararFactura_TelefonoFijoCuandoFaltaElMovil) {
    Ejecutar({"update clientes set telefono2 = '600000000' where codigo = 7"});
    PrepararFactura(41);
    EXPECT_EQ(Filas("texto18").front().front(), "600000000");
    Ejecutar({"update clientes set telefono2 = Null, telefono1 = Null where codigo = 7"});
    PrepararFactura(41);
    EXPECT_EQ(Filas("texto18").front().front(), "");
}

TPV_EN_CADA_MOTOR(FacturaTest);

}  // namespace
}  // namespace tpv::prueba
