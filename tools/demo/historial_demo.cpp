// A year of closed sales for the demo shop: every day about 550 sales of one
// to nine lines, most of them without a customer. A few products and
// customers sell far more than the rest, as in a real shop, so that the
// rankings have a clear head.
#include <cmath>
#include <vector>

#include "core/datos/recordset.hpp"
#include "tools/demo/tienda_demo.hpp"

namespace tpv::demo {

namespace {

constexpr int kDias = 365;
constexpr int kVentasPorDia = 550;
constexpr int kMaxLineas = 9;

struct ProductoHistorial {
    int codigo;
    std::string nombre;
    double precio;
    double iva;
};

double Redondear(double x) { return std::round(x * 100.0) / 100.0; }

// An index below n, the low ones far more likely.
std::size_t Sesgado(Aleatorio& rng, std::size_t n) {
    const double u = rng.Entre(0, 999999) / 1000000.0;
    return static_cast<std::size_t>(static_cast<double>(n) * u * u * u);
}

}  // namespace

long TiendaDemo::LlenarHistorial() {
    std::vector<ProductoHistorial> productos;
    {
        Recordset rs;
        rs.Open("select codigo,nombre,precio,iva from productos where borrar = false and modoventa = 0 "
                "order by codigo",
                tienda_, adOpenStatic);
        for (; !rs.Eof(); rs.MoveNext())
            productos.push_back({static_cast<int>(rs.Get("codigo").number()), rs.Get("nombre").text(),
                                 rs.Get("precio").IsNull() ? 1.0 : rs.Get("precio").number(),
                                 rs.Get("iva").IsNull() ? 21.0 : rs.Get("iva").number()});
    }
    std::vector<int> clientes;
    {
        Recordset rs;
        rs.Open("select codigo from clientes where codigo > 0 order by codigo", tienda_, adOpenStatic);
        for (; !rs.Eof(); rs.MoveNext()) clientes.push_back(static_cast<int>(rs.Get("codigo").number()));
    }
    if (productos.empty()) return 0;

    long lineas = 0;
    int numero = kPrimeraFacturaHistorial;
    for (int d = kDias; d >= 1; --d) {
        const DateTime dia = DiasDesdeHoy(-d);
        for (int v = 0; v < kVentasPorDia; ++v, ++numero) {
            const int empleado = rng_.Entre(1, 4);
            const int cliente = clientes.empty() || rng_.Probable(60) ? 0 : clientes[Sesgado(rng_, clientes.size())];
            const int n = rng_.Entre(1, kMaxLineas);
            double total = 0, impuesto = 0;
            for (int l = 1; l <= n; ++l) {
                const ProductoHistorial& p = productos[Sesgado(rng_, productos.size())];
                const double unidades = rng_.Entre(1, 3);
                const double precio = Redondear(unidades * p.precio);
                const double cuota = Redondear(precio - precio / (1 + p.iva / 100));
                total += precio;
                impuesto += cuota;
                Insertar(Fila("detalle_factura")("Num_Factura", numero)("codigo", p.codigo)("Producto", p.nombre)
                             ("Unidades", unidades)("Precio", precio)("Descuento", 0.0)("Precio_Unit", p.precio)
                             ("impuesto", cuota)("tipoimpuesto", p.iva)("codEmpleado", empleado)
                             ("tipo_Venta", "P")("orden", l));
                ++lineas;
            }
            const int minutos = 9 * 60 + v * (12 * 60) / kVentasPorDia;
            Insertar(Fila("cabecera_factura")("Numero", numero)("Fecha", Dia(dia))("Cliente", cliente)
                         ("Total", Redondear(total))("descuento", 0.0)("hora", Hora(minutos / 60, minutos % 60))
                         ("Codigo_Empleado", empleado)("pago", rng_.Entre(1, 2))("impuesto", Redondear(impuesto))
                         ("impuestoincluido", true)("fechaVenta", Dia(dia))("terminal", kTerminal)
                         ("cierre", true));
        }
    }
    return lineas;
}

}  // namespace tpv::demo
