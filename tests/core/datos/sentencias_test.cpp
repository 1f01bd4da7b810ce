// Every statement the till writes, as it writes it, run against the small
// demo shop on every engine: each must run, and where the answer is cheap to
// know, give the rows Jet would have given.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "core/datos/tipos.hpp"
#include "core/runtime/fecha.hpp"
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

std::string Texto(const Value& v) {
    switch (v.kind()) {
        case Value::Kind::Null:
            return "NULL";
        case Value::Kind::Integer:
            return std::to_string(v.integer());
        case Value::Kind::Double: {
            char buf[32];
            std::snprintf(buf, sizeof buf, "%g", v.real());
            return buf;
        }
        case Value::Kind::Text:
            return v.text();
        case Value::Kind::Date:
            return fecha::ATextoIso(v.date());
    }
    return "";
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
            tienda_ = ConBase(std::getenv("TPV_PG_URI"), nombre);
            informes_ = ConBase(std::getenv("TPV_PG_URI"), nombre + "_informes");
            CrearDemo(tienda_, informes_);
            if (HasFatalFailure()) return;
        }
        cn.Open(tienda_);
        informes.Open(informes_);
        hoy_ = fecha::Hoy();
        extra_ = Primero("select Codigo_Extra from Productos_CodigosExtra where codigo = 2");
    }

    void TearDown() override {
        cn.Close();
        informes.Close();
        for (const std::string& uri : {tienda_, informes_})
            if (!uri.empty()) BorrarBase(motor_, uri);
    }

    static void CrearDemo(const std::string& tienda, const std::string& informes) {
        std::string orden = std::string(TPV_TOOLS_DIR) + "/tpvdemo --size small --force '" + tienda + "' '" + informes +
                            "' > /dev/null";
        ASSERT_EQ(std::system(orden.c_str()), 0) << orden;
    }

    // The server's URI with another database in it.
    static std::string ConBase(const std::string& admin, const std::string& base) {
        std::size_t esquema = admin.find("://");
        std::size_t barra = admin.find('/', esquema == std::string::npos ? 0 : esquema + 3);
        std::size_t consulta = admin.find('?');
        std::string resto = consulta == std::string::npos ? "" : admin.substr(consulta);
        return (barra == std::string::npos ? admin : admin.substr(0, barra)) + "/" + base + resto;
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
        return rs.RecordCount() > 0 ? Texto(rs.Fields(0).Value()) : "";
    }

    static std::string Fila(Recordset& rs) {
        std::string fila;
        for (int i = 0; i < rs.FieldCount(); ++i) fila += (i ? "|" : "") + Texto(rs.Fields(i).Value());
        return fila;
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
    Connection informes;

private:
    inline static std::string plantilla_;
    Motor motor_ = Motor::SQLite;
    std::string tienda_, informes_;
    DateTime hoy_;
    std::string extra_;
};

TEST_P(SentenciasTest, ArranqueYConfiguracion) {
    Comprobar(
        {
            // The machine's identity, from the reporting source.
            {"Select list2 from listadostemporal", 1, "CAJA1"},
            {"Select list1 from listadostemporal", 1, "A"},
        },
        informes);
    Comprobar({
        {"Select nombre, apellidos from empleados where codigo = 1", 1, "Laura|Gómez Ruiz"},
        {"Select datoa from Relaciones_Fijas where indice = 'ActivadoBuscarActualizaciones' and datoa = 'CAJA1A'", 0},
        {"Select nombre,telefono,direccion,iva, modopantallacaja ,empleadoVentaFijo,agenda,Deposito,clientepordefecto,"
         "CodigoBarras,UtilizaColores_FPago, "
         "numdecimales,NumCopiasFactura,UtilizaColores_empleados,VentasMultiEmpleado,"
         "privacidad,abrircajetin,imprimirticket,facturas from opciones",
         1, "Perfumería La Plaza|963 000 111|Calle Mayor, 12|-1|1|0|0|-1|0|-1|0|2|1|0|0|0|-1|-1|0"},
        {"Select terminal,AnimacionesActivas,empleado from opciones_terminal where identificador = 'CAJA1'", 1,
         "CAJA1|-1|-1"},
        {"Select segundoimpuesto from configuracionregional", 1, "0"},
        {"Select multitienda, nombretienda from opciones", 1, "N|La Plaza"},
        {"Select impresora from impresoras where tipo = 'T' and terminal = 'CAJA1'", 1, "Ticketera"},
        {"Select impresora from impresoras where tipo = 'L' and terminal = 'caja1'", 1, "Oficina"},
        {"Select puerto,secuencia,tipo,fuente from impresoras where terminal = 'CAJA1' and tipo = 'T'", 1,
         "/dev/usb/lp0|27|112|0|25|250|T|FontA11"},
        {"Select puerto,secuencia,tipo,fuente from impresoras where terminal = 'CAJA1'", 2},
        {"Select bandera from configuracionregional", 1, ""},
        {"Select nombre from configuracionregional", 1, "España"},
        {"Select Identificacion_Fiscal from configuracionregional", 1, "NIF"},
        {"Select * from confticket", 1},
        // Tariffs: the members' one and the catering one are in force, Christmas's has gone.
        {"Select descripcion from cabecera_precio where identificador = 1", 1, "Tarifa Socios"},
        {"Select daton from relaciones_fijas where indice = 'TarifaAplicada' and datoa= 'CAJA1A'", 0},
        {"select preciovalidodesde,preciovalidohasta from cabecera_precio where identificador = 3", 1},
        {"select descripcion,identificador from cabecera_precio where preciovalidodesde <= #{HOY}# and "
         "preciovalidohasta >= #{HOY}#",
         2},
        {"Select datoA,indice from relaciones_fijas where indice ='CampoOrdenItemsCaja'", 1,
         "Nombre|CampoOrdenItemsCaja"},
        {"Select * from relaciones_fijas where indice = 'PedirCantidadProductos'", 1,
         "PedirCantidadProductos|NULL|NO|NULL"},
        {"Select * from relaciones_fijas where indice = 'VisorCAJA1'", 0},
        // The voucher's days in force are written by delete and insert.
        {"delete * from relaciones_fijas where indice='DiasCaducidadValeDescuento'", 1},
        {"insert into relaciones_fijas (indice,daton) values ('DiasCaducidadValeDescuento',-1)", 1},
        {"Select daton, datoa from relaciones_fijas where indice = 'DiasCaducidadValeDescuento'", 1, "-1|NULL"},
    });
}

TEST_P(SentenciasTest, ContadoresYSemaforos) {
    Comprobar({
        {"select indice,datoa from relaciones_fijas where indice = 'SemaforoFactura'", 0},
        {"insert into relaciones_fijas (indice,datoa) values ('SemaforoFactura','verde')", 1},
        {"Select * from relaciones_fijas where indice = 'SemaforoFactura' and datoa = 'rojo'", 0},
        {"update relaciones_fijas set datoa='rojo' where indice = 'SemaforoFactura'", 1},
        // The state is compared as text, without regard to case.
        {"Select * from relaciones_fijas where indice = 'SemaforoFactura' and datoa = 'ROJO'", 1},
        {"update relaciones_fijas set datoa='verde' where indice = 'SemaforoFactura'", 1},
        {"update relaciones_fijas set datoa='verde' where indice = 'SemaforoSalidaProd'", 0},
        {"Select * from Relaciones_fijas where indice = 'Factura'", 1, "Factura|5|NULL|NULL"},
    });
    // A counter is read and moved on in place.
    for (int esperado : {1, 2}) {
        Recordset rs;
        rs.Open("Select * from Relaciones_fijas where indice = 'Venta'", cn, adOpenKeyset, adLockOptimistic);
        ASSERT_EQ(rs.RecordCount(), 1);
        EXPECT_EQ(rs["daton"].Value().number(), esperado);
        rs["daton"] = Value(rs["daton"].Value().number() + 1);
        rs.Update();
    }
    // The first delivery note of a database adds its counter.
    Recordset rs;
    rs.Open("Select * from Relaciones_fijas where indice = 'Albaran'", cn, adOpenKeyset, adLockOptimistic);
    rs.Delete();
    rs.Close();
    rs.Open("Select * from Relaciones_fijas where indice = 'Albaran'", cn, adOpenKeyset, adLockOptimistic);
    EXPECT_EQ(rs.RecordCount(), 0);
    rs.AddNew();
    rs["indice"] = Value("Albaran");
    rs["daton"] = Value(2);
    rs.Update();
    rs.Close();
    Comprobar({{"Select daton from relaciones_fijas where indice = 'Albaran'", 1, "2"}});
}

TEST_P(SentenciasTest, BusquedaDeProductosYPromociones) {
    const std::string barras =
        "SELECT distinct(Productos.Codigo) as codigoInt, productos.nombre,productos.stock,productos.UbicacionPrincipal,"
        "productos.imagen,productos.modoventa,productos.precio   FROM Productos LEFT JOIN Productos_CodigosExtra ON "
        "Productos.Codigo = Productos_CodigosExtra.Codigo  WHERE (((Productos_CodigosExtra.Codigo_Extra) like '";
    const std::string porCodigo =
        "SELECT Productos.Codigo as codigoInt, productos.nombre,productos.stock,productos.UbicacionPrincipal,"
        "productos.imagen,productos.modoventa,productos.precio   FROM Productos  WHERE codigo = ";
    const std::string lupa =
        "SELECT Productos.Codigo as codigoInt, productos.nombre,productos.stock,productos.UbicacionPrincipal,"
        "productos.imagen,productos.modoventa,productos.precio,productos.codigocliente   FROM Productos LEFT JOIN "
        "Productos_CodigosExtra ON Productos.Codigo = Productos_CodigosExtra.Codigo  WHERE Productos.Codigo= ";
    Comprobar({
        // By bar code: the shop's own code, the shared extra code (two rows:
        // the duplicate box), a withdrawn product and one the till doesn't sell.
        {barras + "7') or codigocliente = '7') AND BORRAR =FALSE and mostrarencaja = -1", 1,
         "7|Bolsa de organza|78|P06 - C08 - F03|NULL|0|0.6"},
        {barras + "{EXTRA}') or codigocliente = '{EXTRA}') AND BORRAR =FALSE and mostrarencaja = -1", 2},
        {barras + "101') or codigocliente = '101') AND BORRAR =FALSE and mostrarencaja = -1", 1,
         "26|Jabón de Marsella al corte|45.5|P04 - C03 - F02|NULL|-1|1.95"},
        {barras + "no existe') or codigocliente = 'no existe') AND BORRAR =FALSE and mostrarencaja = -1", 0},
        {porCodigo + "16 AND BORRAR =FALSE", 1, "16|Talco perfumado 200 g|35|NULL|NULL|0|0.99"},
        {porCodigo + "42 AND BORRAR =FALSE", 0},
        {porCodigo + "43 AND BORRAR =FALSE", 1},
        {lupa + "42", 1},
        {lupa + "1", 1},
        // A pending order: the wine's is still to come, the coffee's has gone.
        {"Select pedidosdet.unidades,pedidosdet.pedido,pedidos.entrega from pedidosdet,pedidos where "
         "pedidosdet.producto = 24 and pedidosdet.pedido = pedidos.cod order by pedido desc",
         1},
        {"select precio from detalle_precio where identificador = 1 and producto = 11", 1, "7.95"},
        {"select precio from detalle_precio where identificador = 2 and producto = 11", 0},
        {"Select codigo from detalle_Factura where num_factura = 1 and codigo = 24 and tipo_venta in ('P')", 1, "24"},
        {"Select codigo from detalle_Factura where num_factura = 1 and codigo = 7 and tipo_venta in ('P')", 0},
        {"Select nombre,precio,iva,impuesto_2 from Productos where codigo = 18", 1,
         "Eau de toilette cítrica 100 ml|2.89|10|0"},
        {"Select nombre,precio,iva,impuesto_2 from Servicios where codigo = 2", 1, "Dinero en Deposito|0|0|0"},
        // Promotions in force today: the coffee's; the wine's has ended,
        // and the voucher scale has no dates.
        {"Select tipo,descuento,codRegalo,precio from descuentos where (codproducto = 18 or codproducto = -1) and "
         "desde<=#{HOY}# and hasta>=#{HOY}#",
         1, "1|15|-1|0"},
        {"Select tipo,descuento,codRegalo,precio from descuentos where (codproducto = 19 or codproducto = -1) and "
         "desde<=#{HOY}# and hasta>=#{HOY}#",
         1, "2|0|41|1.5"},
        {"Select tipo,descuento,codRegalo,precio from descuentos where (codproducto = 24 or codproducto = -1) and "
         "desde<=#{HOY}# and hasta>=#{HOY}#",
         0},
    });
}

TEST_P(SentenciasTest, VentaAbierta_LineasTotalesYAnulacion) {
    AbrirVentas();
    Comprobar({
        // Writing a line: found by its place, by code and place, or by code.
        {"select * from detalle_factura_temp where num_factura = 1 and orden = 2", 1},
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
        {"Select * from cabecera_Factura_temp where numero = 1", 1},
        // Annulment: all lines, a code, a place.
        {"select * from Detalle_Factura_Temp where Num_Factura = 1", 3},
        {"select * from Detalle_Factura_Temp where Num_Factura = 1 and codigo = '19' and tipo_venta = 'P'", 1},
        {"select * from Detalle_Factura_Temp where Num_Factura = 1 and orden = 3", 1},
        {"select * from Detalle_Factura_Temp where Num_Factura = 1 and codigo = '19' and tipo_venta = 'P' "
         "and orden = 2",
         1},
        {"Select orden from detalle_Factura_temp where orden >= 2 and num_factura= 1 order by orden", 2, "2"},
        {"Delete from detalle_Factura_temp where num_factura = 1 and codigo = '19' and tipo_venta = 'P' and orden = 2",
         1},
        {"Delete from detalle_Factura_temp where num_factura = 1 and orden = 3", 1},
        {"Delete from detalle_Factura_temp where num_factura = 1 and codigo = '18' and tipo_venta = 'P'", 1},
        {"Delete from detalle_Factura_temp where num_factura = 4", 1},
        {"Select * from Cabecera_Factura_Temp where Numero = 4", 1},
        {"select * from Cabecera_Factura_Temp where numero = 4", 1},
    });
}

TEST_P(SentenciasTest, VentasAbiertas_PanelYRecuperacion) {
    AbrirVentas();
    Comprobar({
        // Open sales of this till: not the delivery note, not the other till's.
        // A sale without customer joins NULL names as nothing.
        {"SELECT cabecera_factura_temp.Numero AS numero, clientes.Nombre AS nom, clientes.Apellidos AS ape, "
         "clientes.Foto AS foto,cabecera_factura_temp.empleado, cabecera_factura_temp.cliente   FROM "
         "cabecera_factura_temp LEFT JOIN clientes ON cabecera_factura_temp.Cliente = clientes.Codigo  where "
         "cabecera_factura_temp.presupuesto = 0 and (num_albaran <=0 or num_albaran is null) and "
         "cabecera_factura_temp.terminal = 'CAJA1'",
         2},
        {"Select * from ventasdevolucion where numerofacturatemporal=2", 1, "2|3|2.35|{AYER_ISO}"},
        {"Select * from ventasdevolucion where numerofacturatemporal=1", 0},
        {"SELECT cabecera_factura_temp.codigo_empleado, cabecera_factura_temp.empleado, cabecera_factura_temp.cliente,"
         "clientes.nombre & ' ' & clientes.apellidos as nomCli  FROM cabecera_factura_temp LEFT JOIN clientes ON "
         "cabecera_factura_temp.Cliente = clientes.Codigo where cabecera_factura_temp.numero = 1",
         1, "1|Laura Gómez Ruiz|0| "},
        {"SELECT cabecera_factura_temp.codigo_empleado, cabecera_factura_temp.empleado, cabecera_factura_temp.cliente,"
         "clientes.nombre & ' ' & clientes.apellidos as nomCli  FROM cabecera_factura_temp LEFT JOIN clientes ON "
         "cabecera_factura_temp.Cliente = clientes.Codigo where cabecera_factura_temp.numero = 2",
         1, "2|Pedro Navarro Díaz|1|María García López"},
        {"Select producto,precio_unit,nombreempleado,tipo_venta,descuento,codempleado,codigo,impuesto,tipoImpuesto,"
         "unidades,precio,recargo,impuesto_2,codfamilia from detalle_factura_temp where num_factura = 2",
         1, "Manteca de karité 250 g|2.35|Pedro  N. D.|P|0|2|5|0.21|10|1|2.35|0|0|0"},
        // The debt of José: sale 1, of which 10 are paid.
        {"Select sum(importe) as importeTotal from cabecera_pago where cliente = 4 and estado = 0", 1, "35.85"},
        {"Select sum(detalle_pago.importe) as importetotal from detalle_pago INNER JOIN cabecera_pago on "
         "detalle_pago.num_pago=cabecera_pago.num_pago where cabecera_pago.cliente = 4 and cabecera_pago.estado =0",
         1, "10"},
        {"Select sum(importe) as importeTotal from cabecera_pago where cliente = 1 and estado = 0", 1, "NULL"},
        // Delivery notes of a customer.
        {"SELECT num_albaran, cliente, Fecha, Total,empleado,numero FROM Cabecera_factura_temp where num_albaran >0 "
         "and cliente = 3 ORDER BY Numero DESC",
         1, "1|3|{AYER_ISO}|3.5|Laura Gómez Ruiz|3"},
    });
}

TEST_P(SentenciasTest, MovimientosDeStock) {
    Comprobar({
        {"insert into HistoricoStock (Codigo, Nombre, Tipo, Cantidad, Coste, Fecha, Indice, DescripcionTipo, ticket) "
         "values (7, 'Bolsa de organza', 1, 1, 0.38, #{HOY}#, null, 2, 5)",
         1},
        {"insert into HistoricoStock (Codigo, Nombre, Tipo, Cantidad, Coste, Fecha, Indice, DescripcionTipo, ticket) "
         "values (30, 'Sales de baño perfumadas al peso', 1, 0.08, 14.71, #{HOY}#, 3, 7, 5)",
         1},
        // The day's running number: NULLs sort below every number, as in Jet.
        {"select indice from HistoricoStock where fecha=#{HOY}# order by indice desc", 2, "3"},
        {"select indice from HistoricoStock where fecha=#{HACE365}# order by indice desc", 0},
        {"Select * from productoelaborado_producto where ProductoPadre = 32", 3},
        {"Select * from productoelaborado_producto where productopadre = 7", 0},
        {"Select coste from productos where codigo = 11", 1, "5.29"},
        {"select * from Productos where codigo =30", 1},
    });
}

TEST_P(SentenciasTest, CierreDevolucionesYModificaciones) {
    AbrirVentas();
    Comprobar({
        // Closing: the business day of the till, the date of a modified sale.
        {"Select Horaapertura,HoraCierre from entradas where identificador = 'CAJA1'", 1, "08:00:00|22:00:00"},
        {"Select fechaVenta from ventasdevolucion where numerofacturareal = 3", 1, "{AYER_ISO}"},
        {"Select fechaVenta from ventasdevolucion where numerofacturareal = 4", 0},
        {"SELECT codigo, nombre, imagen, color,fpa_color from formapago where borrar = false and codigo <> 4 "
         "order by posicion",
         3, "1|Contado|NULL|16777215|0"},
        {"select * from relaciones_fijas where indice = 'ComentarioTicketRegalo'", 1},
        // Returns: the latest sales, their customers and debts.
        {"SELECT top 30 Cabecera_factura.Numero, Cabecera_factura.cliente, Cabecera_factura.FechaVENTA, "
         "Cabecera_factura.Total,cabecera_factura.empleado FROM Cabecera_factura ORDER BY Cabecera_factura.Numero DESC",
         4, "4|2|{AYER_ISO}|19.3|Laura Gómez Ruiz"},
        {"SELECT top 2 Cabecera_factura.Numero, Cabecera_factura.cliente, Cabecera_factura.FechaVENTA, "
         "Cabecera_factura.Total,cabecera_factura.empleado FROM Cabecera_factura ORDER BY Cabecera_factura.Numero DESC",
         2},
        {"Select nombre,apellidos from clientes where codigo = 4", 1, "José|Sánchez Moreno"},
        {"Select nombre,apellidos from clientes where codigo = 0", 0},
        {"Select * from cabecera_pago where num_factura = 1 and estado = 0", 1},
        {"Select * from cabecera_pago where num_factura = 2 and estado = 0", 0},
        {"Select * from cabecera_factura where numero = 2", 1},
        {"Select * from cabecera_factura where numero = 3 and fechaventa=#{AYER}#", 1},
        {"Select * from cabecera_factura where numero = 3 and fechaventa=#{HOY}#", 0},
        {"select cliente from cabecera_Factura where numero = 4", 1, "2"},
        // Modifying and deleting closed sales.
        {"Select fechaventa from cabecera_factura where numero = 3", 1, "{AYER_ISO}"},
        {"Select * from Detalle_Factura where Num_Factura = 3", 3},
        {"Select * from Detalle_Factura where Num_Factura = 3 and codigo = '7'", 1},
        {"Select * from Cabecera_Factura where Numero = 3", 1},
        {"select total from Cabecera_Factura_temp where numero = 2", 1, "2.35"},
        // Debts.
        {"Select * from cabecera_pago where num_factura = 1", 1},
    });
}

TEST_P(SentenciasTest, ValesDeDescuento) {
    Comprobar({
        {"Select total from cabecera_factura where numero = 2", 1, "55.54"},
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

TEST_P(SentenciasTest, TicketsEImpresoras) {
    AbrirVentas();
    const std::string impuestos =
        "SELECT tipoimpuesto, Sum(impuesto) as val_impuesto, sum(precio) as total, sum(recargo) as totalRecargo, "
        "sum(descuento) as totalDescuento   From ";
    Comprobar({
        // The configurable ticket.
        {"Select * from confticket", 1},
        {"select datoa from relaciones_fijas where indice ='LineaPropinas'", 0},
        {"Select numDecimales from opciones", 1, "2"},
        {"Select fuente,numCaracteres from impresoras where impresora = 'Ticketera'", 1, "FontA11|42"},
        {"Select fuente,numCaracteres from impresoras where impresora = 'Oficina'", 1, "|NULL"},
        {"Select * from relaciones_fijas where indice = 'TotalTicketEnLetras' and datoa = 'SI'", 1},
        {"Select QuitarPUnitarioTicket from opciones", 1, "0"},
        {"Select contenido from datosimpresion where numlinea=17", 1, "3"},
        {"Select nombreimpuesto1,moneda from configuracionregional", 1, "IVA|€"},
        {"Select * from cabecera_factura where numero = 4", 1},
        {"Select * from cabecera_factura_temp where numero = 1", 1},
        {"Select * from cabecera_abono where numero = 1", 0},
        {"Select unidades, producto, precio_unit, precio,recargo,orden from Detalle_Factura where num_factura = 4", 4},
        {"Select unidades, producto, precio_unit, precio,recargo,orden from Detalle_Factura_Temp where num_factura = 1",
         3},
        {"Select unidades, producto, precio_unit, precio,recargo,orden from detalle_abono where num_abono = 1", 0},
        {"Select * from relaciones_fijas where indice = 'UtilizaConceptoPropina'", 0},
        {impuestos +
             "Detalle_Factura where Detalle_Factura.num_factura = 4 group by tipoimpuesto order by tipoimpuesto",
         2, "10|0.21|2.35|0|0"},
        {impuestos + "detalle_abono where detalle_abono.num_abono = 1 group by tipoimpuesto order by tipoimpuesto", 0},
        {impuestos + "Detalle_Factura_Temp where Detalle_Factura_Temp.num_factura = 1 group by tipoimpuesto "
                     "order by tipoimpuesto",
         2, "0|0|0|0|0"},
        // Lookups beside the amount in words.
        {"Select nombre,apellidos from empleados where codigo = 2", 1, "Pedro|Navarro Díaz"},
        {"Select nombre from mesas where codigo = 1", 0},
        {"Select nombre, apellidos,nif,telefono2, direccion from clientes where codigo = 3", 1,
         "Carmen|Fernández Gil|34567890V|622 333 444|Calle Sagunto, 14"},
        {"Select nombre from formapago where codigo = 3", 1, "Mixto"},
        {"Select mesas.nummesa from mesas where mesas.codigo = 1", 0},
        // The template ticket of a delivery note.
        {"Select * from DatosImpresion", 17},
        {"Select * from DatosImpresion where numlinea >7", 10},
        {"Select NumDecimales,QuitarPUnitarioTicket from opciones", 1, "2|0"},
        {"Select nombreimpuesto1 from configuracionregional", 1, "IVA"},
        {"Select fuente,numcaracteres from impresoras where impresora = 'Ticketera'", 1},
        {"Select Modelo from impresoras where impresora = 'Ticketera'", 1, "1"},
        {"Select * from clientes where codigo = 3", 1},
        {"Select * from detalle_factura_temp where num_factura = 3 and borrar = 0", 1},
        {"Select * from cabecera_factura_temp where numero = 3", 1},
        {"SELECT tipoimpuesto, Sum(impuesto) as val_impuesto, sum(precio) as total  From Detalle_Factura_temp where "
         "detalle_Factura_temp.num_factura = 3 group by tipoimpuesto order by tipoimpuesto",
         1, "10|0.32|3.5"},
        // Gift ticket.
        {"Select * from detalle_factura where num_factura = 2 and borrar = 0", 5},
        // The invoice's shop and customer data.
        {"Select nombre,direccion,poblacion,cif,cp,provincia,telefono from opciones", 1,
         "Perfumería La Plaza|Calle Mayor, 12|Valencia|B46000000|46001|Valencia|963 000 111"},
        {"Select cabecera_factura.fecha,cabecera_factura.CLIENTE,cabecera_factura.descuento,"
         "cabecera_factura.fechaventa from cabecera_factura where numero = 2",
         1, "{AYER_ISO}|1|0|{AYER_ISO}"},
        {"select nombre,apellidos,direccion,nif,poblacion,provincia,cp,telefono2,telefono1 from clientes "
         "where codigo = 1",
         1, "María|García López|Calle de Colón, 5, 3º|12345678Z|Valencia|Valencia|46004|600 111 222|963 111 222"},
        {"Select * from detalle_factura where num_factura = 2", 5},
    });
    // The staging table lives in the reporting source.
    Comprobar(
        {
            {"insert into informes (texto1, numerico1) values ('Perfumería La Plaza', 2)", 1},
            {"delete * from informes", 1},
            {"Select * from informes", 0},
            {"Delete * from informes", 0},
        },
        informes);
}

TEST_P(SentenciasTest, PantallaDeCaja_PanelesRankingYCliente) {
    Comprobar({
        // Panels: suppliers and sections that have products, by the ordering field.
        {"Select * from Proveedores where Borrar=false and codigo in (Select proveedor from productos) order by Nombre",
         8},
        {"Select * from Proveedores where Borrar=false and codigo in (Select proveedor from productos) "
         "order by Posicion",
         8, "1|Distribuciones Turia S.L.|NULL|NULL|0|0|1"},
        {"Select * from Seccion where Borrar=false and codigo in (Select seccion from productos) order by Nombre", 8,
         "2|Colonias|NULL|NULL|0|0|2"},
        {"Select codigo,nombre,apellidos,imagen,color,emp_color from empleados where baja= false and mostrar_caja = -1 "
         "order by posicion",
         3, "1|Laura|Gómez Ruiz|NULL|NULL|0"},
        {"Select * from Productos where borrar=false and proveedor = 4 and mostrarencaja=-1 order by Nombre", 4},
        {"Select * from Productos where borrar=false and seccion = 7 and mostrarencaja=-1 order by Nombre", 6},
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
        {"select * from Productos where Codigo=23", 1},
        {"select * from Clientes where Codigo=4", 1},
        // The customer list and a customer's card read by the scanner.
        {"Select codigo,nombre,apellidos,nacimiento,descuento,activardindep,dindep from clientes "
         "where borrar=false and codigo >= 0 order by Nombre",
         6, "2|Antonio|Martínez Ruiz|2000-07-02|10|0|0"},
        {"Select codigo from clientes where codigocliente ='3' and borrar=0", 1, "3"},
        {"Select codigo from clientes where codigocliente ='6' and borrar=0", 0},
        {"Select * from pasardatos where terminal = 'CAJA1A' order by indice", 0},
    });
}

TEST_P(SentenciasTest, AdministracionDeCaja) {
    Comprobar({
        {"SELECT clave FROM Empleados where codigo = 1", 1, "1234"},
        {"SELECT clave FROM Empleados where codigo = 3", 1, ""},
        {"insert into caja_inicial (fecha, hora, empleado, importe, terminal) "
         "values (#{HOY}#, #08:05:00#, 1, 150, 'CAJA1')",
         1},
        {"Select * from caja_inicial where fecha = #{HOY}# and terminal='CAJA1'", 1},
        {"Select * from caja_inicial where fecha = #{HOY}# and terminal='CAJA2'", 0},
        {"insert into gastos (fecha, hora, empleado, importe, motivo, terminal) "
         "values (#{HOY}#, #10:00:00#, 1, 12.5, 'Limpieza', 'CAJA1')",
         1},
        {"insert into gastos (fecha, hora, empleado, importe, motivo, terminal) "
         "values (#{AYER}#, #10:00:00#, 2, 3, 'Mensajería', 'CAJA1')",
         1},
        {"insert into gastos (fecha, hora, empleado, importe, motivo, terminal) "
         "values (#{AYER}#, #12:00:00#, 2, -2, 'limpieza', 'CAJA1')",
         1},
        // Motives that differ only in case are one motive.
        {"Select distinct(motivo) as concepto from gastos", 2},
        {"insert into ObservacionCaja (fecha, hora, empleado, Observacion, terminal) values (#{HOY}#, #09:00:00#, 2, "
         "'Falta cambio de 5', 'CAJA1')",
         1},
        {"insert into ObservacionCaja (fecha, hora, empleado, Observacion, terminal) values (#{HOY}#, #09:30:00#, 9, "
         "'Nota de un empleado que ya no está', 'CAJA1')",
         1},
        {"Select empleados.Nombre AS NOM,empleados.Apellidos AS APE,ObservacionCaja.observacion from "
         "ObservacionCaja,empleados where fecha = #{HOY}# and terminal = 'CAJA1' and empleados.codigo = "
         "observacioncaja.empleado",
         1, "Pedro|Navarro Díaz|Falta cambio de 5"},
        // Reprint.
        {"SELECT top 20 Cabecera_factura.Numero, Cabecera_factura.cliente, Cabecera_factura.Fechaventa, "
         "Cabecera_factura.Total,cabecera_factura.empleado FROM Cabecera_factura ORDER BY Cabecera_factura.Numero DESC",
         4, "4|2|{AYER_ISO}|19.3|Laura Gómez Ruiz"},
    });
}

TEST_P(SentenciasTest, BusquedaYFichaDeCliente) {
    Comprobar({
        {"Select * from Seccion where Borrar=false order by Nombre", 8},
        {"Select * from Proveedores where Borrar=false order by Nombre", 9},
        {"Select * from clientes where nombre like 'mar%' and borrar = false order by nombre", 1},
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
        {"select * from productos where Nombre like 'colonia%' and Borrar=0 order by Nombre", 3},
        {"SELECT distinct(productos.Codigo) as codigo,nombre   FROM productos LEFT JOIN productos_CodigosExtra ON "
         "productos.Codigo = productos_CodigosExtra.Codigo  WHERE (((productos_CodigosExtra.Codigo_Extra) like "
         "'{EXTRA}')) or codigocliente = '{EXTRA}'",
         2},
        {"SELECT distinct(productos.Codigo) as codigo,nombre   FROM productos LEFT JOIN productos_CodigosExtra ON "
         "productos.Codigo = productos_CodigosExtra.Codigo  WHERE (((productos_CodigosExtra.Codigo_Extra) like "
         "'40')) or codigocliente = '40'",
         1, "40|Bolsa de plástico"},
        // A new customer's card.
        {"select max(codigo) as num from Clientes", 1, "7"},
        {"select max(codigocliente) as num2 from Clientes", 1, "7"},
        // The customer code is text: "10" sorts before "7".
        {"insert into clientes (Codigo, CodigoCliente, Nombre, Apellidos, borrar) values (8, '10', 'Rosa', 'Vidal', 0)",
         1},
        {"select max(codigocliente) as num2 from Clientes", 1, "7"},
        {"select max(codigo) as num from Clientes", 1, "8"},
        {"Select codigo from clientes where CODIGOCLIENTE = '3' and codigo <> 8", 1, "3"},
        {"Select codigo from clientes where CODIGOCLIENTE = '10' and codigo <> 8", 0},
        {"Select codigo from clientes where CODIGOCLIENTE = '10' and codigo <> 9", 1, "8"},
        {"Select * from clientes where codigo = 1", 1},
        {"Select nombre,direccion,poblacion,provincia,cp,cif,TextoPrivacidad  from opciones", 1,
         "Perfumería La Plaza|Calle Mayor, 12|Valencia|Valencia|46001|B46000000|"},
    });
}

// The statements that the till opens for change and writes through the
// recordset: options, lines, totals, renumbering, deletions, vouchers,
// the ticket template and the mailbox of the customer history tool.
TEST_P(SentenciasTest, EscriturasEnElRecordset) {
    AbrirVentas();
    Comprobar({{"delete * from relaciones_fijas where indice = 'CampoOrdenItemsCaja'", 1},
               {"insert into pasardatos (indice, terminal, texto2) values ('Cantarel', 'CAJA1A', '1')", 1},
               {"insert into pasardatos (indice, terminal, texto2) values ('Otro', 'CAJA1A', '2')", 1}});
    auto abrir = [this](Recordset& rs, const std::string& sql) { rs.Open(sql, cn, adOpenKeyset, adLockOptimistic); };
    {
        // The first start writes the default ordering field.
        Recordset rs;
        abrir(rs, "Select datoA,indice from relaciones_fijas where indice ='CampoOrdenItemsCaja'");
        ASSERT_EQ(rs.RecordCount(), 0);
        rs.AddNew();
        rs["indice"] = Value("CampoOrdenItemsCaja");
        rs["DatoA"] = Value("Nombre");
        rs.Update();
    }
    {
        Recordset rs;
        abrir(rs, "select * from relaciones_fijas where indice = 'ComentarioTicketRegalo'");
        ASSERT_EQ(rs.RecordCount(), 1);
        rs["DatoA"] = Value("Válido para cambios durante 15 días");
        rs["otros"] = Value("");
        rs.Update();
    }
    {
        // A second coffee joins its line; a new line is added at place 4.
        Recordset rs;
        abrir(rs,
              "select * from detalle_factura_temp where codigo = '18' and num_factura = 1 and tipo_venta = 'P' and "
              "borrar =0 and orden = 1");
        ASSERT_EQ(rs.RecordCount(), 1);
        rs["Unidades"] = Value(3.0);
        rs["Precio"] = Value(7.37);
        rs["Descuento"] = Value(1.3);
        rs.Update();
        rs.Close();
        abrir(rs, "select * from detalle_factura_temp where num_factura = 1 and orden = 4");
        ASSERT_EQ(rs.RecordCount(), 0);
        rs.AddNew();
        // clang-format off
        const std::pair<const char*, Value> campos[] = {
            {"Num_Factura", 1}, {"Codigo", 7}, {"Producto", "Bolsa de organza"}, {"Unidades", 1.0}, {"recargo", 0.0},
            {"Precio", 0.6}, {"Descuento", 0.0}, {"Precio_Unit", 0.6}, {"Impuesto", 0.02}, {"TipoImpuesto", 4.0},
            {"Servido", 0}, {"codEmpleado", 1}, {"NombreEmpleado", "Laura  G. R."}, {"Tienda", ""},
            {"tipo_Venta", "P"}, {"impuesto_2", 0.0}, {"tipoimpuesto_2", 0.0}, {"CodFamilia", 0}, {"orden", 4}};
        // clang-format on
        for (const auto& [campo, valor] : campos) rs[campo] = valor;
        rs.Update();
    }
    {
        // The header takes the sums of its lines.
        Recordset suma;
        suma.Open(
            "Select sum(precio) as totalPrecio, sum(Impuesto) as totalimpuesto, sum(descuento) as totaldescuento, "
            "sum(recargo) as totalRecargo from detalle_factura_temp where num_factura = 1",
            cn, adOpenStatic, adLockOptimistic);
        Recordset rs;
        abrir(rs, "Select total,impuesto,descuento,recargo from cabecera_factura_temp where numero = 1");
        ASSERT_EQ(rs.RecordCount(), 1);
        rs["total"] = suma["totalPrecio"].Value();
        rs["impuesto"] = suma["totalimpuesto"].Value();
        rs["descuento"] = suma["totaldescuento"].Value();
        rs["recargo"] = suma["totalRecargo"].Value();
        rs.Update();
    }
    Comprobar({{"Select total,impuesto,descuento,recargo from cabecera_factura_temp where numero = 1", 1,
                "9.47|0.61|1.3|0"}});
    {
        // A line leaves the sale and those behind it move up one place.
        cn.Execute("Delete from detalle_Factura_temp where num_factura = 1 and orden = 2");
        Recordset rs;
        abrir(rs, "Select orden from detalle_Factura_temp where orden >= 2 and num_factura= 1 order by orden");
        ASSERT_EQ(rs.RecordCount(), 2);
        while (!rs.Eof()) {
            rs["orden"] = Value(rs["orden"].Value().number() - 1);
            rs.Update();
            rs.MoveNext();
        }
    }
    Comprobar({{"Select codigo, orden from detalle_factura_temp where num_factura = 1 order by orden", 3, "18|1"},
               {"Select codigo from detalle_factura_temp where num_factura = 1 and orden = 3", 1, "7"}});
    {
        // The other till's sale and the closed sale 3 are deleted row by row.
        Recordset rs;
        abrir(rs, "Select * from Cabecera_Factura_Temp where Numero = 4");
        ASSERT_EQ(rs.RecordCount(), 1);
        rs.Delete();
        rs.Close();
        abrir(rs, "Select * from Detalle_Factura where Num_Factura = 3");
        ASSERT_EQ(rs.RecordCount(), 3);
        while (!rs.Eof()) {
            rs.Delete();
            rs.MoveNext();
        }
        rs.Close();
        abrir(rs, "Select * from Cabecera_Factura where Numero = 3");
        ASSERT_EQ(rs.RecordCount(), 1);
        rs.Delete();
    }
    {
        // A voucher spent in full.
        Recordset rs;
        abrir(rs,
              "select descuento,estado,hasta,impMinProxCompra from vales_descuento where num_factura=2 and descuento = "
              "3");
        ASSERT_EQ(rs.RecordCount(), 1);
        rs["descuento"] = Value(0.0);
        rs["estado"] = Value(-1);
        rs.Update();
    }
    {
        // The voucher's note on the ticket template, and off it again.
        Recordset rs;
        abrir(rs, "Select * from datosimpresion where contenido = null or contenido like '' order by numlinea desc");
        ASSERT_GT(rs.RecordCount(), 0);
        rs["contenido"] = Value("  Aplicamos vale desc. Nro.=2");
        rs.Update();
        rs.Close();
        abrir(rs, "Select * from datosimpresion where contenido like '  Aplicamos vale desc. Nro.=%'");
        ASSERT_EQ(rs.RecordCount(), 1);
        EXPECT_EQ(rs["numlinea"].Value().number(), 14);
        rs["contenido"] = Value("");
        rs.Update();
    }
    {
        // The mailbox of the customer history tool: emptied for the terminal, one row written.
        Recordset rs;
        abrir(rs, "Select * from pasardatos where terminal = 'CAJA1A' order by indice");
        ASSERT_EQ(rs.RecordCount(), 2);
        while (!rs.Eof()) {
            rs.Delete();
            rs.MoveNext();
        }
        rs.AddNew();
        rs["indice"] = Value("Cantarel");
        rs["terminal"] = Value("CAJA1A");
        rs["texto2"] = Value("3");
        rs.Update();
    }
    Comprobar({
        {"Select datoA,indice from relaciones_fijas where indice ='CampoOrdenItemsCaja'", 1,
         "Nombre|CampoOrdenItemsCaja"},
        {"select datoa & otros as comentario from relaciones_fijas where indice = 'ComentarioTicketRegalo'", 1,
         "Válido para cambios durante 15 días"},
        {"Select * from Cabecera_Factura_Temp where Numero = 4", 0},
        {"Select * from Detalle_Factura where Num_Factura = 3", 0},
        {"Select * from Cabecera_Factura where Numero = 3", 0},
        {"Select * from vales_descuento where num_factura = 2 and estado = -1", 1},
        {"Select * from datosimpresion where contenido like '  Aplicamos vale desc. Nro.=%'", 0},
        {"Select indice, texto2 from pasardatos where terminal = 'CAJA1A' order by indice", 1, "Cantarel|3"},
    });
}

TPV_EN_CADA_MOTOR(SentenciasTest);

}  // namespace
}  // namespace tpv::prueba
