// Statements of the till run against the small demo shop on every engine,
// those whose answer on real data depends most on the translation (text
// compared without case, NULLs, regional numbers, joins, top and ranges),
// giving the rows Jet would have given. Each routine's own tests run the rest.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "core/datos/servidor.hpp"
#include "core/datos/tipos.hpp"
#include "core/runtime/fecha.hpp"
#include "tests/core/datos/filas_prueba.hpp"
#include "tests/support/base_prueba.hpp"

namespace tpv::prueba {
namespace {

namespace fs = std::filesystem;

// A statement and what it gives: the rows it returns (a SELECT) or changes
// (anything else), and the first row as "v1|v2|...". -1 and "" leave them
// unchecked. {HOY}, {AYER}, {HACE365} stand for dates as the till writes
// them (mm/dd/yyyy); {AYER_ISO} for yesterday in an expected row;
// {EXTRA} for the bar code that two milks share by mistake.
struct Caso {
    Caso(std::string sentencia, long long n = -1, std::string fila = "")
        : sql(std::move(sentencia)), filas(n), primera(std::move(fila)) {}
    std::string sql;
    long long filas;
    std::string primera;
};

std::string Mdy(DateTime d) {
    fecha::Partes p = fecha::Descomponer(d);
    char buf[16];
    std::snprintf(buf, sizeof buf, "%02d/%02d/%04d", p.mes, p.dia, p.anio);
    return buf;
}

bool EsConsulta(const std::string& sql) {
    std::size_t i = sql.find_first_not_of(" ");
    return i != std::string::npos && sql.size() >= i + 6 && datos::Minusculas(sql.substr(i, 6)) == "select";
}

// The small demo shop, made once per run by tpvdemo; each test on SQLite
// works on a copy of its files, each test on PostgreSQL on a shop of its own.
class SentenciasTest : public ::testing::TestWithParam<Motor> {
protected:
    static void TearDownTestSuite() {
        if (!plantilla_.empty()) {
            fs::remove(plantilla_ + ".db");
            fs::remove(plantilla_ + "_informes.db");
        }
    }

    void SetUp() override {
        motor_ = GetParam();
        if (motor_ == Motor::PostgreSQL && !PostgresDisponible()) {
            if (std::getenv("CI")) FAIL() << "En CI las pruebas de PostgreSQL no se saltan: falta TPV_PG_URI";
            GTEST_SKIP() << "PostgreSQL no disponible (TPV_PG_URI vacío): prueba saltada";
        }
        static int contador = 0;
        std::string nombre = "tpv_sentencias_" + std::to_string(getpid()) + "_" + std::to_string(contador++);
        if (motor_ == Motor::SQLite) {
            if (plantilla_.empty()) {
                std::string demo =
                    (fs::temp_directory_path() / ("tpv_sentencias_demo_" + std::to_string(getpid()))).string();
                CrearDemo(demo + ".db", demo + "_informes.db");
                if (HasFatalFailure()) return;
                plantilla_ = demo;
            }
            tienda_ = (fs::temp_directory_path() / (nombre + ".db")).string();
            informes_ = (fs::temp_directory_path() / (nombre + "_informes.db")).string();
            fs::copy_file(plantilla_ + ".db", tienda_, fs::copy_options::overwrite_existing);
            fs::copy_file(plantilla_ + "_informes.db", informes_, fs::copy_options::overwrite_existing);
        } else {
            tienda_ = datos::servidor::ConBase(std::getenv("TPV_PG_URI"), nombre);
            informes_ = datos::servidor::ConBase(std::getenv("TPV_PG_URI"), nombre + "_informes");
            CrearDemo(tienda_, informes_);
            if (HasFatalFailure()) return;
        }
        cn.Open(tienda_);
        hoy_ = fecha::Hoy();
        extra_ = Primero("select Codigo_Extra from Productos_CodigosExtra where codigo = 2");
    }

    void TearDown() override {
        cn.Close();
        for (const std::string& uri : {tienda_, informes_})
            if (!uri.empty()) BorrarBase(motor_, uri);
    }

    static void CrearDemo(const std::string& tienda, const std::string& informes) {
        std::string orden = std::string(TPV_TOOLS_DIR) + "/tpvdemo --size small --force '" + tienda + "' '" + informes +
                            "' > /dev/null";
        ASSERT_EQ(std::system(orden.c_str()), 0) << orden;
    }

    std::string Expandir(std::string s) const {
        const std::pair<const char*, std::string> marcas[] = {
            {"{HOY}", Mdy(hoy_)},
            {"{AYER}", Mdy(DateTime{hoy_.serial - 1})},
            {"{HACE365}", Mdy(DateTime{hoy_.serial - 365})},
            {"{AYER_ISO}", fecha::ATextoIso(DateTime{hoy_.serial - 1})},
            {"{EXTRA}", extra_},
        };
        for (const auto& [marca, valor] : marcas)
            for (std::size_t p; (p = s.find(marca)) != std::string::npos;)
                s.replace(p, std::string(marca).size(), valor);
        return s;
    }

    std::string Primero(const std::string& sql) {
        Recordset rs;
        rs.Open(sql, cn, adOpenStatic, adLockOptimistic);
        return rs.RecordCount() > 0 ? TextoInvariante(rs.Fields(0).Value()) : "";
    }

    // Runs each statement on the connection, in order, and checks what it gives.
    void Comprobar(const std::vector<Caso>& casos, Connection& con) {
        for (const Caso& c : casos) {
            const std::string sql = Expandir(c.sql);
            SCOPED_TRACE(sql);
            try {
                if (EsConsulta(sql)) {
                    Recordset rs;
                    rs.Open(sql, con, adOpenStatic, adLockOptimistic);
                    if (c.filas >= 0) {
                        EXPECT_EQ(rs.RecordCount(), c.filas);
                    }
                    if (!c.primera.empty()) {
                        EXPECT_EQ(rs.RecordCount() > 0 ? Fila(rs) : "(ninguna fila)", Expandir(c.primera));
                    }
                } else {
                    long long n = con.Execute(sql);
                    if (c.filas >= 0) {
                        EXPECT_EQ(n, c.filas);
                    }
                }
            } catch (const std::exception& e) {
                ADD_FAILURE() << e.what();
            }
        }
    }
    void Comprobar(const std::vector<Caso>& casos) { Comprobar(casos, cn); }

    // Open sales of the demo's till, as the till leaves them: sale 1 without
    // customer (a coffee on promotion, biscuits at a fixed price and their
    // gift), sale 2 of María that modifies the closed sale 3, a delivery
    // note of Carmen's, and a sale of the other till.
    void AbrirVentas() {
        const std::string cabecera =
            "insert into cabecera_factura_temp (Numero, Fecha, Hora, Cliente, Empleado, Codigo_Empleado, "
            "ImpuestoIncluido, terminal, total, impuesto, impuesto_2, num_albaran, presupuesto) values ";
        const std::string linea =
            "insert into detalle_factura_temp (Num_Factura, Codigo, Producto, Unidades, Precio, Descuento, recargo, "
            "Precio_Unit, Impuesto, TipoImpuesto, impuesto_2, tipoimpuesto_2, Servido, codEmpleado, NombreEmpleado, "
            "Tienda, tipo_Venta, CodFamilia, orden) values ";
        const char* const cabeceras[] = {
            "(1, #{HOY}#, #10:30:00#, 0, 'Laura Gómez Ruiz', 1, -1, 'CAJA1', 6.41, 0.59, 0, 0, 0)",
            "(2, #{HOY}#, #11:00:00#, 1, 'Pedro Navarro Díaz', 2, -1, 'CAJA1', 2.35, 0.21, 0, null, 0)",
            "(3, #{AYER}#, #17:00:00#, 3, 'Laura Gómez Ruiz', 1, -1, 'CAJA1', 3.5, 0.32, 0, 1, 0)",
            "(4, #{HOY}#, #09:00:00#, 0, 'Pedro Navarro Díaz', 2, -1, 'CAJA2', 0.6, 0.02, 0, 0, 0)",
        };
        const char* const lineas[] = {
            "(1, '18', 'Eau de toilette cítrica 100 ml', 2, 4.91, 0.87, 0, 2.89, 0.45, 10, 0, 0, 0, 1, 'Laura  G. R.', "
            "'', 'P', 0, 1)",
            "(1, '19', 'Bruma corporal 250 ml', 1, 1.5, 0, 0, 1.79, 0.14, 10, 0, 0, 0, 1, 'Laura  G. R.', '', 'P', "
            "0, 2)",
            "(1, '41', 'Jaboncillo de regalo 50 g', 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 'Laura  G. R.', '', 'P', 0, 3)",
            "(2, '5', 'Manteca de karité 250 g', 1, 2.35, 0, 0, 2.35, 0.21, 10, 0, 0, 0, 2, 'Pedro  N. D.', '', 'P', 0, 1)",
            "(3, '32', 'Saquito de sales aromáticas', 1, 3.5, 0, 0, 3.5, 0.32, 10, 0, 0, 0, 1, 'Laura  G. R.', '', 'P', 0, 1)",
            "(4, '7', 'Bolsa de organza', 1, 0.6, 0, 0, 0.6, 0.02, 4, 0, 0, 0, 2, 'Pedro  N. D.', '', 'P', 0, 1)",
        };
        std::vector<Caso> casos;
        for (const char* valores : cabeceras) casos.push_back({cabecera + valores, 1});
        for (const char* valores : lineas) casos.push_back({linea + valores, 1});
        casos.push_back(
            {"insert into ventasdevolucion (NumeroFacturaTemporal, NumeroFacturaReal, Importe, fechaVenta) "
             "values (2, 3, 2.35, #{AYER}#)",
             1});
        Comprobar(casos);
    }

    Connection cn;

private:
    inline static std::string plantilla_;
    Motor motor_ = Motor::SQLite;
    std::string tienda_, informes_;
    DateTime hoy_;
    std::string extra_;
};

TEST_P(SentenciasTest, VentaAbierta_LineasTotalesYAnulacion) {
    AbrirVentas();
    Comprobar({
        // Writing a line: found by its place, by code and place, or by code.
        {"select * from detalle_factura_temp where codigo = '18' and num_factura = 1 and tipo_venta = 'P' "
         "and borrar =0 and orden = 1",
         1},
        {"select * from detalle_factura_temp where codigo = '18' and num_factura = 1 and tipo_venta = 'p' "
         "and borrar =0",
         1},
        // Header totals, written back as regional text.
        {"Select sum(precio) as total,sum(impuesto) as totalimpuesto,sum(impuesto_2) as totalImpuesto_2 from "
         "detalle_factura_temp where num_factura = 1",
         1, "6.41|0.59|0"},
        {"Select sum(precio) as total,sum(impuesto) as totalimpuesto,sum(impuesto_2) as totalImpuesto_2 from "
         "detalle_factura_temp where num_factura = 99",
         1, "NULL|NULL|NULL"},
        {"update cabecera_factura_temp set total='12,5',impuesto='1,14', impuesto_2='0' where numero = 1", 1},
        {"Select total,impuesto,descuento,recargo from cabecera_factura_temp where numero = 1", 1,
         "12.5|1.14|NULL|NULL"},
        // A refund's negative totals, and thousands in the regional form.
        {"update cabecera_factura_temp set total='-6,41',impuesto='-0,59', impuesto_2='0' where numero = 2", 1},
        {"update cabecera_factura_temp set total='1.234,56',impuesto='214,26', impuesto_2='0' where numero = 3", 1},
        {"Select total, impuesto from cabecera_factura_temp where numero = 2 or numero = 3 order by numero", 2,
         "-6.41|-0.59"},
        {"Select total, impuesto from cabecera_factura_temp where numero = 3", 1, "1234.56|214.26"},
        {"Select sum(precio) as totalPrecio, sum(Impuesto) as totalimpuesto, sum(descuento) as totaldescuento, "
         "sum(recargo) as totalRecargo from detalle_factura_temp where num_factura = 1",
         1, "6.41|0.59|0.87|0"},
        // Annulment: all lines, a code, a place.
        {"select * from Detalle_Factura_Temp where Num_Factura = 1", 3},
        {"select * from Detalle_Factura_Temp where Num_Factura = 1 and codigo = '19' and tipo_venta = 'P' "
         "and orden = 2",
         1},
        {"Select orden from detalle_Factura_temp where orden >= 2 and num_factura= 1 order by orden", 2, "2"},
        {"Delete from detalle_Factura_temp where num_factura = 1 and codigo = '19' and tipo_venta = 'P' and orden = 2",
         1},
        {"Delete from detalle_Factura_temp where num_factura = 1 and orden = 3", 1},
        {"Delete from detalle_Factura_temp where num_factura = 1 and codigo = '18' and tipo_venta = 'P'", 1},
        {"Delete from detalle_Factura_temp where num_factura = 4", 1},
    });
}

TEST_P(SentenciasTest, ValesDeDescuento) {
    Comprobar({
        // The highest step of the scale that a total reaches.
        {"Select * from descuentos where tipo = 3 and precio <= 123.45 order by precio desc", 2,
         "-1|3|8|NULL|100|NULL|NULL|30|40"},
        {"Select * from descuentos where tipo = 3 and precio <= 49.99 order by precio desc", 0},
        {"Select *   from vales_descuento  where desde<=#{HOY}# and (hasta >=#{HOY}# or hasta =#01/01/1900#) and "
         "estado =0  and impminproxcompra <= 40.5",
         1},
        {"Select *   from vales_descuento  where desde<=#{HOY}# and (hasta >=#{HOY}# or hasta =#01/01/1900#) and "
         "estado =0  and impminproxcompra <= 19.99",
         0},
        {"Select *   from vales_descuento  where num_Factura = 2 and desde<=#{HOY}# and (hasta >=#{HOY}# or hasta = "
         "#01/01/1900#) and estado =0  and impminproxcompra <= 25",
         1},
        // A voucher that never expires is found by its 1/1/1900.
        {"update vales_descuento set hasta = #01/01/1900# where num_factura = 2", 1},
        {"Select *   from vales_descuento  where num_Factura = 2 and desde<=#{HOY}# and (hasta >=#{HOY}# or hasta = "
         "#01/01/1900#) and estado =0  and impminproxcompra <= 25",
         1},
        {"select descuento,estado,hasta,impMinProxCompra from vales_descuento where num_factura=2 and descuento = 3", 1,
         "3|0|1900-01-01|20"},
        {"select descuento,estado,hasta,impMinProxCompra from vales_descuento where num_factura=2 and descuento = 2.5",
         0},
        // The note of an applied voucher goes into the highest empty line of the template.
        {"update datosimpresion set contenido = null where numlinea = 13", 1},
        {"Select * from datosimpresion where contenido = null or contenido like '' order by numlinea desc", 6, "14|"},
        {"update datosimpresion set contenido = '  Aplicamos vale desc. Nro.=2' where numlinea = 14", 1},
        {"Select * from datosimpresion where contenido like '  Aplicamos vale desc. Nro.=%'", 1},
        {"Select * from datosimpresion where contenido like '  APLICAMOS VALE%'", 1},
    });
}

TEST_P(SentenciasTest, PantallaDeCaja_TarifaRankingYCliente) {
    Comprobar({
        // The tariff of this machine, written positionally.
        {"Insert into relaciones_fijas values ('TarifaAplicada',1,'CAJA1A','')", 1},
        {"Select daton, datoa, otros from relaciones_fijas where indice = 'TarifaAplicada' and datoa= 'CAJA1A'", 1,
         "1|CAJA1A|"},
        // Rankings of the last year, for a single shop (Tienda '').
        {"select top 30 sum(unidades) as Expr1, Codigo from Detalle_factura,cabecera_factura where Codigo>0 and "
         "Tipo_Venta='P' and detalle_factura.tienda='' and detalle_factura.num_factura = cabecera_factura.numero and "
         "cabecera_factura.fechaventa between #{HACE365}# and #{HOY}# group by Codigo order by sum(unidades) desc",
         14, "12|23"},
        {"select top 30 sum(total) as Expr1, Cliente from cabecera_factura where cliente>0 and tienda= '' and "
         "fechaventa between #{HACE365}# and #{HOY}# group by cliente  order by sum(total) desc",
         3, "55.54|1"},
        {"select top 30 sum(total) as Expr1, Cliente from cabecera_factura where cliente>0 and tienda= 'La Plaza' and "
         "fechaventa between #{HACE365}# and #{HOY}# group by cliente  order by sum(total) desc",
         0},
        // The customer list and a customer's card read by the scanner.
        {"Select codigo,nombre,apellidos,nacimiento,descuento,activardindep,dindep from clientes "
         "where borrar=false and codigo >= 0 order by Nombre",
         6, "2|Antonio|Martínez Ruiz|2000-07-02|10|0|0"},
        {"Select codigo from clientes where codigocliente ='3' and borrar=0", 1, "3"},
        {"Select codigo from clientes where codigocliente ='6' and borrar=0", 0},
        {"Select * from pasardatos where terminal = 'CAJA1A' order by indice", 0},
        // The debt of José (sale 1, of which 10 are paid) through an inner join.
        {"Select sum(detalle_pago.importe) as importetotal from detalle_pago INNER JOIN cabecera_pago on "
         "detalle_pago.num_pago=cabecera_pago.num_pago where cabecera_pago.cliente = 4 and cabecera_pago.estado =0",
         1, "10"},
        // The day's running number of stock moves: NULLs sort below every number, as in Jet.
        {"insert into HistoricoStock (Codigo, Nombre, Tipo, Cantidad, Coste, Fecha, Indice, DescripcionTipo, ticket) "
         "values (7, 'Bolsa de organza', 1, 1, 0.38, #{HOY}#, null, 2, 5)",
         1},
        {"insert into HistoricoStock (Codigo, Nombre, Tipo, Cantidad, Coste, Fecha, Indice, DescripcionTipo, ticket) "
         "values (30, 'Sales de baño perfumadas al peso', 1, 0.08, 14.71, #{HOY}#, 3, 7, 5)",
         1},
        {"select indice from HistoricoStock where fecha=#{HOY}# order by indice desc", 2, "3"},
    });
}

TEST_P(SentenciasTest, BusquedaYFichaDeCliente) {
    Comprobar({
        {"Select * from productos where nombre like 'LECHE%' and borrar =0 order by nombre", 2},
        // The customer search: every box filled, and none.
        {"Select * from Clientes  where codigo <> null and borrar = false and Nombre like 'ma%' "
         "and Apellidos like 'gar%' and Telefono1 like '963%' and telefono2 like '600%' and codigocliente like '1' "
         "and email like 'cliente1%' and email like 'CLIENTE%' order by nombre",
         1},
        {"Select * from Clientes  where codigo <> null and borrar = false order by nombre", 6},
        // The product search: a name, price, code, section and supplier.
        {"select * from productos where Nombre like '%'  and precio = 0.89 and codigocliente like '84%' "
         "and seccion = 3 and proveedor = 2 and Borrar=0 order by Nombre",
         1},
        {"select * from productos where Nombre like 'l''%'  and Borrar=0 order by Nombre", 0},
        {"SELECT distinct(productos.Codigo) as codigo,nombre   FROM productos LEFT JOIN productos_CodigosExtra ON "
         "productos.Codigo = productos_CodigosExtra.Codigo  WHERE (((productos_CodigosExtra.Codigo_Extra) like "
         "'{EXTRA}')) or codigocliente = '{EXTRA}'",
         2},
        {"SELECT distinct(productos.Codigo) as codigo,nombre   FROM productos LEFT JOIN productos_CodigosExtra ON "
         "productos.Codigo = productos_CodigosExtra.Codigo  WHERE (((productos_CodigosExtra.Codigo_Extra) like "
         "'40')) or codigocliente = '40'",
         1, "40|Bolsa de plástico"},
        // A new customer's card.
        {"select max(codigocliente) as num2 from Clientes", 1, "7"},
        // The customer code is text: "10" sorts before "7".
        {"insert into clientes (Codigo, CodigoCliente, Nombre, Apellidos, borrar) values (8, '10', 'Rosa', 'Vidal', 0)",
         1},
        {"select max(codigocliente) as num2 from Clientes", 1, "7"},
        {"select max(codigo) as num from Clientes", 1, "8"},
        {"Select codigo from clientes where CODIGOCLIENTE = '10' and codigo <> 9", 1, "8"},
        {"Select nombre,direccion,poblacion,provincia,cp,cif,TextoPrivacidad  from opciones", 1,
         "Perfumería La Plaza|Calle Mayor, 12|Valencia|Valencia|46001|B46000000|"},
    });
}

TPV_EN_CADA_MOTOR(SentenciasTest);

}  // namespace
}  // namespace tpv::prueba
