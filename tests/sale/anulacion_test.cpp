#include "sale/anulacion.hpp"

#include <vector>

#include "core/datos/recordset.hpp"
#include "core/runtime/formato.hpp"
#include "tests/sale/venta_abierta_prueba.hpp"

namespace tpv {
namespace {

class Anulacion : public prueba::VentaAbiertaTest {
protected:
    std::vector<long> Ordenes(int numero, const char* tabla = "detalle_factura_temp") {
        std::vector<long> v;
        Recordset rs;
        rs.Open(std::string("select orden, codigo from ") + tabla + " where num_factura = " + std::to_string(numero) +
                    " order by orden",
                cn);
        for (; !rs.Eof(); rs.MoveNext()) v.push_back(CLng(rs["orden"]));
        return v;
    }
    std::vector<long> CodigosAnulados() {
        std::vector<long> v;
        Recordset rs;
        rs.Open("select codigo from detalle_factura_anulaciones order by codigo, tipo_venta", cn);
        for (; !rs.Eof(); rs.MoveNext()) v.push_back(CLng(rs["codigo"]));
        return v;
    }
};

TEST_P(Anulacion, AnularVenta_CopiaLineasYCabeceraConAuditoria32YLasBorra) {
    Cabecera(15, 20.5, ",mesa,descuento,comensales", ",NULL,NULL,2");
    Linea(15, 1, 5, "P", 10, 0, "'M1'");
    Linea(15, 2, 6, "P", 10.5, 1.25);
    Ejecutar({"update detalle_factura_temp set borrar = -1, menu = -1 where orden = 2"});
    Cabecera(16, 4);
    Linea(16, 1, 5);
    reloj::Fijar(Hoy(18, 42));

    AnularVenta(15, Hoy());

    EXPECT_EQ(Cuenta("cabecera_factura_temp", "numero = 15"), 0);
    EXPECT_EQ(Cuenta("detalle_factura_temp", "num_factura = 15"), 0);
    EXPECT_EQ(Cuenta("detalle_factura_temp", "num_factura = 16"), 1);  // another sale stays

    Recordset l;
    l.Open("select * from detalle_factura_anulaciones order by codigo", cn);
    ASSERT_EQ(l.RecordCount(), 2);
    EXPECT_EQ(l["num_factura"].Value(), Value(15));
    EXPECT_EQ(l["codmenu"].Value(), Value("M1"));
    EXPECT_EQ(l["borrar"].Value(), Value(0));
    l.MoveNext();
    EXPECT_EQ(l["codmenu"].Value(), Value(" "));  // NULL copied as one blank
    EXPECT_EQ(l["borrar"].Value(), Value(-1));
    EXPECT_EQ(l["menu"].Value(), Value(-1));
    EXPECT_EQ(l["productodemenu"].Value(), Value(0));
    EXPECT_DOUBLE_EQ(CDbl(l["precio"]), 10.5);
    EXPECT_DOUBLE_EQ(CDbl(l["descuento"]), 1.25);
    EXPECT_DOUBLE_EQ(CDbl(l["impuesto"]), 1.74);
    EXPECT_EQ(l["nombreempleado"].Value(), Value("Juan  P. L."));

    Recordset c;
    c.Open("select * from cabecera_factura_anulaciones", cn);
    ASSERT_EQ(c.RecordCount(), 1);
    EXPECT_EQ(c["numero"].Value(), Value(15));
    EXPECT_EQ(c["fecha"].Value(), Value(Hoy()));
    EXPECT_EQ(c["fechaventa"].Value(), Value(Hoy()));
    EXPECT_EQ(Format(c["hora"], "hh:mm"), "18:42");
    EXPECT_EQ(Format(c["hora_inicio"], "hh:mm"), "09:15");
    EXPECT_EQ(c["pago"].Value(), Value(1));
    EXPECT_EQ(c["mesa"].Value(), Value(0));
    EXPECT_EQ(c["comensales"].Value(), Value(2));
    EXPECT_DOUBLE_EQ(CDbl(c["descuento"]), 0);
    EXPECT_DOUBLE_EQ(CDbl(c["total"]), 20.5);
    EXPECT_EQ(c["impuestoincluido"].Value(), Value(-1));
    EXPECT_EQ(c["empleado"].Value(), Value("Juan Perez Lopez"));
    EXPECT_TRUE(c["numfactorigen"].IsNull());
    EXPECT_TRUE(c["fechaborrado"].IsNull());

    Recordset a;
    a.Open("select * from registrocambios", cn);
    ASSERT_EQ(a.RecordCount(), 1);
    EXPECT_EQ(a["codigo"].Value(), Value(32));
    EXPECT_EQ(Texto(a["descripcion"]), "");
    EXPECT_EQ(a["tabla"].Value(), Value("Detalle_factura_temp"));
    EXPECT_EQ(a["condicion"].Value(), Value("codEmpleado = 7"));
}

TEST_P(Anulacion, AnularVenta_DeUnaModificacion_Auditoria35ConOrigenYFechaBorrado) {
    // The screen's date moved to another day: the business date is that day.
    Cabecera(21, 30.5);
    Linea(21, 1, 5);
    Ejecutar({"insert into ventasdevolucion (numerofacturatemporal,numerofacturareal,importe,fechaventa) "
              "values (21,120,30.5,#11/20/2026#)"});

    AnularVenta(21, DateTime{Hoy().serial - 2});

    Recordset c;
    c.Open("select * from cabecera_factura_anulaciones", cn);
    ASSERT_EQ(c.RecordCount(), 1);
    EXPECT_EQ(c["numfactorigen"].Value(), Value(120));
    EXPECT_EQ(c["fechaborrado"].Value(), Value(Hoy()));
    EXPECT_EQ(c["fechaventa"].Value(), Value(DateTime{Hoy().serial - 2}));
    EXPECT_EQ(c["pago"].Value(), Value(1));
    EXPECT_EQ(Valor("select codigo from registrocambios"), Value(35));
    EXPECT_EQ(Valor("select descripcion from registrocambios"), Value("Num Factura = 120 con importe de: 30,5"));
    // The modification's row is closing's to remove, not the annulment's.
    EXPECT_EQ(Cuenta("ventasdevolucion"), 1);
}

TEST_P(Anulacion, AnularVenta_FalloAlCopiarLaCabecera_DejaLaVentaEnteraYLaAuditoria) {
    // A "|" in the employee's name breaks the header's field list.
    Cabecera(30, 10);
    Linea(30, 1, 5);
    Ejecutar({"update cabecera_factura_temp set empleado = 'Ana|Gil'"});
    EXPECT_THROW(AnularVenta(30, Hoy()), RuntimeError);
    EXPECT_EQ(Cuenta("registrocambios"), 1);  // written before the header's copy
    EXPECT_EQ(Cuenta("detalle_factura_anulaciones"), 1);
    EXPECT_EQ(Cuenta("detalle_factura_temp"), 1);
    EXPECT_EQ(Cuenta("cabecera_factura_temp"), 1);
}

TEST_P(Anulacion, CabeceraQueNoEsta_SePasaPorAlto) {
    Cabecera(41, 1);
    GuardarCabeceraAnulada(40, Hoy());
    BorrarCabeceraTemp(40);
    EXPECT_EQ(Cuenta("cabecera_factura_anulaciones"), 0);
    EXPECT_EQ(Cuenta("registrocambios"), 0);
    EXPECT_EQ(Cuenta("cabecera_factura_temp"), 1);
}

TEST_P(Anulacion, AnularLinea_PorCodigoYPorOrden_QuitaYCopiaSoloLasElegidas) {
    struct Caso {
        int codigo;
        const char* tipo;
        int orden;
        std::vector<long> quedan;
        std::vector<long> anulados;
    };
    const Caso casos[] = {
        {5, "P", 2, {1, 3, 4}, {5}},
        {5, "P", -1, {3, 4}, {5, 5}},
        {5, "S", -1, {1, 2, 3}, {5}},
        {-1, "", 3, {1, 2, 4}, {6}},
        {-1, "", -1, {}, {5, 5, 5, 6}},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(std::to_string(c.codigo) + c.tipo + std::to_string(c.orden));
        Ejecutar({"delete from detalle_factura_temp", "delete from detalle_factura_anulaciones"});
        Linea(50, 1, 5);
        Linea(50, 2, 5);
        Linea(50, 3, 6);
        Linea(50, 4, 5, "S");
        Linea(51, 2, 5);
        AnularLinea(50, c.codigo, c.tipo, static_cast<std::int16_t>(c.orden));
        EXPECT_EQ(Ordenes(50), c.quedan);
        EXPECT_EQ(CodigosAnulados(), c.anulados);
        EXPECT_EQ(Ordenes(51), std::vector<long>{2});
    }
}

TEST_P(Anulacion, RenumerarOrden_MueveSoloLasLineasDeLaVentaDesdeElLugarDado) {
    for (int orden : {1, 3, 4, 5}) Linea(60, orden, orden);
    Linea(61, 3, 9);
    RenumerarOrden(2, 60, false);
    EXPECT_EQ(Ordenes(60), (std::vector<long>{1, 2, 3, 4}));
    EXPECT_EQ(Valor("select codigo from detalle_factura_temp where num_factura = 60 and orden = 2"), Value(3));
    EXPECT_EQ(Ordenes(61), std::vector<long>{3});
    RenumerarOrden(3, 60, true);
    EXPECT_EQ(Ordenes(60), (std::vector<long>{1, 2, 4, 5}));
}

TEST_P(Anulacion, BaseVenta_TotalMenosImpuesto) {
    Cabecera(70, 12.1);
    EXPECT_DOUBLE_EQ(BaseVenta("70"), 10.1);
    EXPECT_EQ(BaseVenta("71"), 0);
}

TPV_EN_CADA_MOTOR(Anulacion);

}  // namespace
}  // namespace tpv
