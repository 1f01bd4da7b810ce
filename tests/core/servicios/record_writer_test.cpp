#include "core/servicios/record_writer.hpp"

#include <gtest/gtest.h>

#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/fecha.hpp"
#include "tests/core/runtime/error_esperado.hpp"
#include "tests/support/base_prueba.hpp"

namespace tpv {
namespace {

using prueba::ErrorDe;

class RecordWriterTest : public prueba::BaseDeDatosTest {
protected:
    RecordWriter& rw = RecordWriter::Instancia();

    long Cuenta(const std::string& tabla, const std::string& condicion = "") {
        return CLng(Valor("select count(*) from " + tabla + (condicion.empty() ? "" : " where " + condicion)));
    }
};

TEST_P(RecordWriterTest, Insertar_ConvierteCadaValorAlTipoDeSuColumna) {
    rw.Insertar(cn, "Cabecera_factura_Temp",
                "Numero=7|fecha=03/02/2026|cliente=|Empleado=Ana O'Brien|Hora=08:12:40|Codigo_Empleado=3|"
                "ImpuestoIncluido=-1|terminal=CAJA1|total=1.234,5|descuento=1,5|tarjeta=|",
                "", false, "");
    Recordset rs;
    rs.Open("select * from cabecera_factura_temp", cn, adOpenStatic, adLockOptimistic);
    ASSERT_EQ(rs.RecordCount(), 1);
    EXPECT_EQ(rs["Numero"].Value(), Value(7));
    EXPECT_EQ(CStr(rs["Fecha"].Value()), "03/02/2026");  // the 3rd of February, not the 2nd of March
    EXPECT_EQ(CStr(rs["Hora"].Value()), "08:12:40");
    EXPECT_TRUE(rs["Cliente"].IsNull());
    EXPECT_TRUE(rs["tarjeta"].IsNull());
    EXPECT_EQ(rs["Empleado"].Value(), Value("Ana O'Brien"));
    EXPECT_EQ(rs["ImpuestoIncluido"].Value(), Value(-1));
    EXPECT_DOUBLE_EQ(rs["total"].Value().number(), 1234.5);
    EXPECT_DOUBLE_EQ(rs["descuento"].Value().number(), 1.5);
    EXPECT_EQ(rs["Tienda"].Value(), Value(""));  // one shop: the column's default
    EXPECT_EQ(Cuenta("cabecera_factura_temp", "fecha = #02/03/2026#"), 1);
}

TEST_P(RecordWriterTest, Actualizar_PasaLaSalidaComoExpresionYSoloEnLasFilasDeLaCondicion) {
    Ejecutar({"insert into productos (codigo, nombre, salida, stock) values (44, 'Pan', 10, 5)",
              "insert into productos (codigo, nombre, salida, stock) values (45, 'Leche', 10, 5)"});
    rw.Actualizar(cn, "Productos", "Salida=Salida+2,5|Stock=2,5|", "", false, "codigo = 44");
    rw.Actualizar(cn, "Productos", "Salida=Salida+-1|", "", false, "codigo = 44");
    EXPECT_DOUBLE_EQ(Valor("select salida from productos where codigo = 44").number(), 11.5);
    EXPECT_DOUBLE_EQ(Valor("select stock from productos where codigo = 44").number(), 2.5);
    EXPECT_DOUBLE_EQ(Valor("select salida from productos where codigo = 45").number(), 10.0);

    // No condition: every row, as the till's change of mode for all tills.
    Ejecutar({"insert into opciones (nombre, modopantallacaja) values ('A', 1)",
              "insert into opciones (nombre, modopantallacaja) values ('B', 1)"});
    rw.Actualizar(cn, "Opciones", "ModoPantallaCaja=0|", "", false, "");
    EXPECT_EQ(Cuenta("opciones", "modopantallacaja = 0"), 2);
}

TEST_P(RecordWriterTest, Multitienda_LaTiendaLaPoneElServicioEnAltasYCambios) {
    rw.Insertar(cn, "HistoricoStock", "Codigo=44|Nombre=Pan|Tienda=Otra|Tipo=1|", "Centro", true, "");
    rw.Insertar(cn, "HistoricoStock", "Codigo=45|Nombre=Pan|Tipo=1|", "Centro", false, "");
    EXPECT_EQ(Valor("select tienda from historicostock where codigo = 44"), Value("Centro"));
    EXPECT_EQ(Valor("select tienda from historicostock where codigo = 45"), Value(""));

    rw.Actualizar(cn, "HistoricoStock", "Cantidad=2|", "L'Hospitalet", true, "codigo = 45");
    EXPECT_EQ(Valor("select tienda from historicostock where codigo = 45"), Value("L'Hospitalet"));
    // A table without the column is written all the same.
    rw.Insertar(cn, "gastos", "importe=3,5|motivo=Cafe|", "Centro", true, "");
    EXPECT_EQ(Cuenta("gastos"), 1);
}

TEST_P(RecordWriterTest, UnFalloNoEscribeNada) {
    Ejecutar({"insert into productos (codigo, nombre, salida, stock) values (44, 'Pan', 10, 5)"});
    auto desconocida = ErrorDe([&] { rw.Actualizar(cn, "productos", "Stock=1|Salidas=2|", "", false, "codigo = 44"); });
    EXPECT_NE(desconocida.mensaje.find("No se encuentra el campo 'Salidas' en la tabla 'productos'."),
              std::string::npos)
        << desconocida.mensaje;
    EXPECT_EQ(ErrorDe([&] {
                  rw.Actualizar(cn, "productos", "Stock=1|Salida=Salida; delete * from productos|", "", false,
                                "codigo = 44");
              }).numero,
              kErrTypeMismatch);
    EXPECT_EQ(ErrorDe([&] { rw.Insertar(cn, "productos", "codigo=46|stock=Salida+1|", "", false); }).numero,
              kErrTypeMismatch);
    EXPECT_NE(ErrorDe([&] { rw.Insertar(cn, "productos", "codigo=46|codigo=47|", "", false); }).numero, 0);
    EXPECT_NE(ErrorDe([&] { rw.Insertar(cn, "no_existe", "codigo=46|", "", false); }).mensaje.find("'no_existe'"),
              std::string::npos);
    EXPECT_DOUBLE_EQ(Valor("select stock from productos where codigo = 44").number(), 5.0);
    EXPECT_EQ(Cuenta("productos"), 1);
}

TEST_P(RecordWriterTest, Borrar_QuitaLasFilasDeLaCondicion) {
    rw.Insertar(cn, "vales_descuento", "num_factura=5|importe=10|estado=0|", "", false);
    rw.Insertar(cn, "vales_descuento", "num_factura=6|importe=10|estado=0|", "", false);
    rw.Borrar(cn, "vales_descuento", "", false, "num_factura=5");
    EXPECT_EQ(Cuenta("vales_descuento"), 1);
    EXPECT_EQ(Cuenta("vales_descuento", "num_factura = 6"), 1);
}

TEST_P(RecordWriterTest, RegistrarCambio_EscribeUnaLineaDeAuditoriaConElPuesto) {
    RecordWriter::FijarPuesto("CAJA1", "7");
    const DateTime antes = Date();
    rw.RegistrarCambio(cn, "Cabecera_Factura", "numero = 17", "", "", "40",
                       "Num Factura = 17 a cambiado a la fecha: 03/02/2026 Empleado = Ana O'Brien|x");
    RecordWriter::FijarPuesto("", "");
    rw.RegistrarCambio(cn, "Detalle_factura_temp", "codEmpleado = 7", "", "", "32", "");

    Recordset rs;
    rs.Open("select * from registrocambios order by codigo desc", cn, adOpenStatic, adLockOptimistic);
    ASSERT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(rs["tabla"].Value(), Value("Cabecera_Factura"));
    EXPECT_EQ(rs["condicion"].Value(), Value("numero = 17"));
    EXPECT_EQ(rs["codigo"].Value(), Value(40));
    EXPECT_EQ(rs["descripcion"].Value(),
              Value("Num Factura = 17 a cambiado a la fecha: 03/02/2026 Empleado = Ana O'Brien|x"));
    EXPECT_TRUE(rs["fecha"].Value() == Value(antes) || rs["fecha"].Value() == Value(Date()));
    EXPECT_FALSE(rs["hora"].IsNull());
    EXPECT_EQ(rs["terminal"].Value(), Value("CAJA1"));
    EXPECT_EQ(rs["empleado"].Value(), Value(7));
    rs.MoveNext();
    EXPECT_EQ(rs["codigo"].Value(), Value(32));
    EXPECT_TRUE(rs["empleado"].IsNull());
}

TPV_EN_CADA_MOTOR(RecordWriterTest);

}  // namespace
}  // namespace tpv
