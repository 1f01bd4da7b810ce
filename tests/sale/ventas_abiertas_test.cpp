#include "sale/ventas_abiertas.hpp"

#include "tests/sale/venta_abierta_prueba.hpp"

namespace tpv {
namespace {

class VentasAbiertas : public prueba::VentaAbiertaTest {};

TEST_P(VentasAbiertas, DeudaCliente_DeudasAbiertasMenosLoPagadoRedondeado) {
    sesion().opciones.NumDecimales = 2;
    Ejecutar({"insert into cabecera_pago (num_pago,cliente,importe,estado) values (1,4,50.004,0)",
              "insert into cabecera_pago (num_pago,cliente,importe,estado) values (2,4,20,0)",
              "insert into cabecera_pago (num_pago,cliente,importe,estado) values (3,4,99,1)",  // settled
              "insert into cabecera_pago (num_pago,cliente,importe,estado) values (4,5,10,0)",
              "insert into cabecera_pago (num_pago,cliente,importe,estado) values (5,6,10,0)",
              "insert into detalle_pago (num_pago,importe) values (1,15)",
              "insert into detalle_pago (num_pago,importe) values (3,99)",
              "insert into detalle_pago (num_pago,importe) values (4,6)",
              "insert into detalle_pago (num_pago,importe) values (4,4)"});
    struct Caso {
        const char* cliente;
        double deuda;
        bool resultado;
    };
    const Caso casos[] = {{"4", 55, true}, {"5", 0, false}, {"6", 10, true}, {"9", 0, false}};
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.cliente);
        double deuda = -1;
        EXPECT_EQ(DeudaCliente(c.cliente, deuda), c.resultado);
        EXPECT_DOUBLE_EQ(deuda, c.deuda);
    }
}

TEST_P(VentasAbiertas, LeerDatosVentaYModificacion) {
    Ejecutar({"insert into clientes (codigo,nombre,apellidos) values (4,'Ana','Gil Sanz')"});
    Cabecera(10, 1);
    Cabecera(11, 1);
    Ejecutar({"update cabecera_factura_temp set cliente = 4 where numero = 11",
              "insert into ventasdevolucion (numerofacturatemporal,numerofacturareal) values (11,300)"});

    std::string codigo = "x", empleado = "x", cliente = "x", nombre = "x";
    LeerDatosVenta(10, codigo, empleado, cliente, nombre);
    EXPECT_EQ(codigo, "3");
    EXPECT_EQ(empleado, "Juan Perez Lopez");
    EXPECT_EQ(cliente, "0");
    EXPECT_EQ(nombre, " ");
    LeerDatosVenta(11, codigo, empleado, cliente, nombre);
    EXPECT_EQ(cliente, "4");
    EXPECT_EQ(nombre, "Ana Gil Sanz");

    EXPECT_FALSE(EsVentaModificada(10));
    EXPECT_EQ(FacturaOrigen(10), 0);
    EXPECT_TRUE(EsVentaModificada(11));
    EXPECT_EQ(FacturaOrigen(11), 300);
}

TPV_EN_CADA_MOTOR(VentasAbiertas);

}  // namespace
}  // namespace tpv
