// People of the demo shop: employees, customers (with a discount, a deposit
// balance and an open debt), the few closed sales that the debt and a voucher
// hang on, and, for the large shop, a customer file of fifty thousand.
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "core/datos/recordset.hpp"
#include "core/runtime/fecha.hpp"
#include "tools/demo/tienda_demo.hpp"

namespace tpv::demo {

namespace {

double Redondear2(double x) { return std::round(x * 100.0) / 100.0; }

std::string Nif(int numero) {
    static const char kLetras[] = "TRWAGMYFPDXBNJZSQVHLCKE";
    char buf[16];
    std::snprintf(buf, sizeof buf, "%08d%c", numero, kLetras[numero % 23]);
    return buf;
}

struct Empleado {
    int codigo;
    const char* nombre;
    const char* apellidos;
    const char* clave;
    bool baja;
    bool enCaja;
};

const Empleado kEmpleados[] = {
    {1, "Laura", "Gómez Ruiz", "1234", false, true},
    {2, "Pedro", "Navarro Díaz", "2222", false, true},
    {3, "Lucía", "Romero Sanz", "", false, true},
    {4, "Javier", "Ortega Vidal", "4444", true, true},
    {5, "Rosa", "Molina Blanco", "5555", false, false},
};

const Empleado& EmpleadoDe(int codigo) { return kEmpleados[codigo - 1]; }

std::string NombreCompleto(const Empleado& e) { return std::string(e.nombre) + " " + e.apellidos; }

// The short form that sale lines keep: "Laura Gómez Ruiz" gives "Laura  G. R.".
std::string NombreCorto(const Empleado& e) {
    const std::string apellidos = e.apellidos;
    const auto blanco = apellidos.find(' ');
    auto inicial = [](const std::string& palabra) {
        // First character, whole even when it takes two bytes.
        std::size_t n = 1;
        while (n < palabra.size() && (static_cast<unsigned char>(palabra[n]) & 0xC0) == 0x80) ++n;
        return palabra.substr(0, n);
    };
    std::string corto = std::string(e.nombre) + "  " + inicial(apellidos);
    if (blanco != std::string::npos) corto += ". " + inicial(apellidos.substr(blanco + 1)) + ".";
    return corto;
}

struct Cliente {
    int codigo;
    const char* nombre;
    const char* apellidos;
    const char* sexo;
    int dni;
    const char* fijo;
    const char* movil;
    const char* direccion;
    const char* poblacion;
    const char* cp;
    double descuento;
    int mesNacimiento;  // 0: unknown
    int diaNacimiento;
    bool deposito;
    double saldo;
    bool borrado;
};

const Cliente kClientes[] = {
    {1, "María", "García López", "Mujer", 12345678, "963 111 222", "600 111 222", "Calle de Colón, 5, 3º",
     "Valencia", "46004", 0, 3, 14, false, 0, false},
    {2, "Antonio", "Martínez Ruiz", "Hombre", 23456789, "963 222 333", "611 222 333", "Avenida del Puerto, 88",
     "Valencia", "46023", 10, 7, 2, false, 0, false},
    {3, "Carmen", "Fernández Gil", "Mujer", 34567890, "", "622 333 444", "Calle Sagunto, 14", "Valencia",
     "46009", 0, 11, 23, true, 50, false},
    {4, "José", "Sánchez Moreno", "Hombre", 45678901, "961 444 555", "633 444 555", "Calle Mayor, 30",
     "Burjassot", "46100", 0, 1, 30, false, 0, false},
    {5, "Lucía", "Pérez Navarro", "Mujer", 56789012, "", "644 555 666", "Plaza de la Virgen, 2", "Valencia",
     "46001", 0, 5, 9, true, 0, false},
    {6, "Francisco", "López Serrano", "Hombre", 67890123, "962 666 777", "", "Calle San Vicente, 101",
     "Torrent", "46900", 0, 9, 17, false, 0, true},
    {7, "Elena", "Ruiz Castillo", "Mujer", 78901234, "", "", "Calle de la Paz, 7", "Valencia", "46003", 0, 0, 0,
     false, 0, false},
};

void InsertarCliente(Connection& cn, const Cliente& c, const std::string& email, DateTime ingreso,
                     DateTime ultimaVisita) {
    const Value nacimiento =
        c.mesNacimiento ? Value(fecha::DesdeFecha(2000, c.mesNacimiento, c.diaNacimiento)) : Value();
    cn.Execute(Fila("clientes")("Codigo", c.codigo)("CodigoCliente", std::to_string(c.codigo))
                   ("Nombre", c.nombre)("Apellidos", c.apellidos)("Sexo", c.sexo)("NIF", Nif(c.dni))
                   ("Telefono1", c.fijo)("Telefono2", c.movil)("Direccion", c.direccion)
                   ("Poblacion", c.poblacion)("Provincia", "Valencia")("CP", c.cp)("Descuento", c.descuento)
                   ("Email", email)("Nacimiento", nacimiento)("Ingreso", Dia(ingreso))
                   ("UltimaVisita", Dia(ultimaVisita))("ClientesTexto3", Value())("Foto", Value())
                   ("activardindep", c.deposito)("dindep", c.saldo)("borrar", c.borrado)
                   .Sql());
}

}  // namespace

void TiendaDemo::Empleados() {
    for (const Empleado& e : kEmpleados)
        Insertar(Fila("empleados")("codigo", e.codigo)("nombre", e.nombre)("apellidos", e.apellidos)
                     ("imagen", Value())("color", Value())("emp_color", false)("clave", e.clave)
                     ("baja", e.baja)("mostrar_caja", e.enCaja)("posicion", e.codigo));
}

void TiendaDemo::Clientes() {
    for (const Cliente& c : kClientes) {
        const std::string email = "cliente" + std::to_string(c.codigo) + "@correo.es";
        InsertarCliente(tienda_, c, email, fecha::DesdeFecha(2022, 1 + c.codigo, 10),
                        fecha::DesdeFecha(2023, 1 + c.codigo, 20));
    }
}

namespace {

struct Linea {
    int codigo;
    double unidades;
};

struct Venta {
    int numero;
    int dias;  // before today
    int hora, minuto;
    int cliente;
    int empleado;
    int pago;
    double tarjeta;  // card part of a mixed payment
    std::vector<Linea> lineas;
};

}  // namespace

void TiendaDemo::VentasCerradas() {
    const std::vector<Venta> ventas = {
        {1, 2, 10, 15, 4, 1, 1, 0, {{11, 2}, {24, 2}, {4, 1}}},
        {2, 1, 12, 40, 1, 2, 2, 0, {{30, 0.5}, {33, 1}, {11, 2}, {25, 2}, {1, 6}}},
        {3, 1, 18, 5, 0, 3, 1, 0, {{7, 2}, {20, 6}, {13, 1}}},
        {4, 1, 19, 30, 2, 1, 3, 10, {{23, 12}, {21, 2}, {36, 1}, {5, 1}}},
    };
    double totalVenta1 = 0;
    double totalVenta2 = 0;
    for (const Venta& v : ventas) {
        const DateTime dia = DiasDesdeHoy(-v.dias);
        const Empleado& emp = EmpleadoDe(v.empleado);
        double total = 0, impuesto = 0;
        for (const Linea& l : v.lineas) {
            Recordset rs;
            rs.Open("select nombre,precio,iva,coste from productos where codigo = " + std::to_string(l.codigo),
                    tienda_, adOpenStatic);
            const std::string nombre = rs.Get("nombre").text();
            const double precioUnit = rs.Get("precio").number();
            const double iva = rs.Get("iva").number();
            const double coste = rs.Get("coste").number();
            rs.Close();

            const double precio = Redondear2(l.unidades * precioUnit);
            const double cuota = Redondear2(precio - precio / (1 + iva / 100));
            total += precio;
            impuesto += cuota;
            Insertar(Fila("detalle_factura")("Num_Factura", v.numero)("codigo", l.codigo)("Producto", nombre)
                         ("Unidades", l.unidades)("Precio", precio)("Descuento", 0.0)("Recargo", 0.0)
                         ("Precio_Unit", precioUnit)("borrar", false)("ProductoDeMenu", false)("menu", false)
                         ("codMenu", " ")("impuesto", cuota)("tipoimpuesto", iva)("codEmpleado", v.empleado)
                         ("NombreEmpleado", NombreCorto(emp))("tipo_Venta", "P")("impuesto_2", 0.0)
                         ("tipoimpuesto_2", 0.0)("codfamilia", 0));
            Insertar(Fila("HistoricoStock")("Codigo", l.codigo)("Nombre", nombre)("Tipo", 1)
                         ("Cantidad", l.unidades)("Coste", Redondear2(l.unidades * coste))("Fecha", Dia(dia))
                         ("DescripcionTipo", 2)("ticket", v.numero));
            tienda_.Execute("update productos set salida = salida + " + Literal(Value(l.unidades)) +
                            ", stock = stock - " + Literal(Value(l.unidades)) +
                            " where codigo = " + std::to_string(l.codigo));
        }
        total = Redondear2(total);
        impuesto = Redondear2(impuesto);
        Insertar(Fila("cabecera_factura")("Numero", v.numero)("Fecha", Dia(dia))("Cliente", v.cliente)
                     ("mesa", 0)("comensales", 0)("Empleado", NombreCompleto(emp))("Zona_Venta", 0)
                     ("Total", total)("descuento", 0.0)("hora", Hora(v.hora, v.minuto))
                     ("Codigo_Empleado", v.empleado)("pago", v.pago)("hora_inicio", Hora(v.hora, v.minuto - 4))
                     ("impuesto", impuesto)("tarjeta", v.pago == 3 ? Value(v.tarjeta) : Value())
                     ("efectivo", v.pago == 3 ? Redondear2(total - v.tarjeta) : 0.0)("recargo", 0.0)
                     ("impuestoincluido", true)("fechaVenta", Dia(dia))("terminal", kTerminal)("cierre", false)
                     ("repartidor", 0)("impuesto_2", 0.0));
        if (v.cliente > 0)
            tienda_.Execute("update clientes set UltimaVisita = " + Literal(Dia(dia)) +
                            " where codigo = " + std::to_string(v.cliente));
        if (v.numero == 1) totalVenta1 = total;
        if (v.numero == 2) totalVenta2 = total;
    }

    // Sale 1 was left on credit in full; the customer has paid 10,00 of it.
    Insertar(Fila("cabecera_pago")("Num_pago", kUltimoPagoDemo)("Num_factura", 1)("cliente", 4)
                 ("importe", totalVenta1)("fecha", Dia(DiasDesdeHoy(-2)))("estado", 0)("empleado", 1)
                 ("observaciones", ""));
    Insertar(Fila("detalle_pago")("num_pago", kUltimoPagoDemo)("fecha", Dia(DiasDesdeHoy(-1)))
                 ("importe", 10.0));

    // Sale 2 reached the first step of the scale and earned a voucher.
    Insertar(Fila("vales_descuento")("num_factura", 2)("importe", totalVenta2)("descuento", 3.0)
                 ("desde", Dia(DiasDesdeHoy(-1)))("hasta", Dia(DiasDesdeHoy(29)))("impMinProxCompra", 20.0)
                 ("estado", 0)("num_factura_aplicado", Value()));
}

namespace {

const char* const kNombresMujer[] = {"María", "Carmen", "Ana", "Isabel", "Laura", "Cristina", "Marta",
                                     "Pilar", "Lucía", "Elena", "Sara", "Paula", "Raquel", "Rosa",
                                     "Silvia", "Teresa", "Beatriz", "Nuria", "Amparo", "Inmaculada"};
const char* const kNombresHombre[] = {"Antonio", "José", "Manuel", "Francisco", "David", "Juan", "Javier",
                                      "Daniel", "Carlos", "Miguel", "Pedro", "Alejandro", "Pablo", "Sergio",
                                      "Jorge", "Alberto", "Vicente", "Rafael", "Andrés", "Enrique"};
const char* const kApellidos[] = {
    "García", "Fernández", "González", "Rodríguez", "López",  "Martínez", "Sánchez", "Pérez",   "Gómez",
    "Martín", "Jiménez",   "Ruiz",     "Hernández", "Díaz",   "Moreno",   "Muñoz",   "Álvarez", "Romero",
    "Alonso", "Gutiérrez", "Navarro",  "Torres",    "Domínguez", "Vázquez", "Ramos",  "Gil",     "Ramírez",
    "Serrano", "Blanco",   "Molina",   "Morales",   "Suárez", "Ortega",   "Delgado", "Castro",  "Ortiz",
    "Rubio",  "Marín",     "Sanz",     "Iglesias",  "Núñez",  "Medina",   "Garrido", "Cortés",  "Castillo",
    "Santos", "Lozano",    "Guerrero", "Cano",      "Prieto"};
const char* const kCalles[] = {"Calle Mayor",        "Calle de Colón",    "Avenida del Puerto",
                               "Calle Sagunto",      "Avenida Blasco Ibáñez", "Calle San Vicente",
                               "Calle de la Paz",    "Gran Vía",          "Calle Cuba",
                               "Calle Ruzafa",       "Avenida de Francia", "Calle Alboraya",
                               "Calle Jesús",        "Avenida Pío XII",   "Calle Xàtiva",
                               "Calle del Mar",      "Calle Sueca",       "Avenida del Cid"};
struct Poblacion {
    const char* nombre;
    const char* cp;
};
const Poblacion kPoblaciones[] = {
    {"Valencia", "46001"}, {"Valencia", "46004"}, {"Valencia", "46010"}, {"Valencia", "46023"},
    {"Burjassot", "46100"}, {"Paterna", "46980"}, {"Torrent", "46900"}, {"Mislata", "46920"},
    {"Manises", "46940"},  {"Alboraya", "46120"}, {"Sagunto", "46500"}, {"Gandia", "46700"},
};

}  // namespace

void TiendaDemo::ClientesMasivos() {
    constexpr int kClientes = 50000;
    for (int i = 0; i < kClientes; ++i) {
        const int codigo = kPrimerClienteMasivo + i;
        // One draw per statement: the order of draws inside an expression is
        // up to the compiler, and the shop must come out the same everywhere.
        const bool mujer = rng_.Probable(50);
        const char* apellido1 = rng_.De(kApellidos);
        const char* apellido2 = rng_.De(kApellidos);
        const std::string apellidos = std::string(apellido1) + " " + apellido2;
        const char* calle = rng_.De(kCalles);
        const std::string direccion = std::string(calle) + ", " + std::to_string(rng_.Entre(1, 150));
        const Poblacion& pob = rng_.De(kPoblaciones);
        char fijo[16], movil[16];
        const int f1 = rng_.Entre(1, 3), f2 = rng_.Entre(0, 999), f3 = rng_.Entre(0, 999);
        const int m1 = rng_.Entre(0, 99), m2 = rng_.Entre(0, 999), m3 = rng_.Entre(0, 999);
        std::snprintf(fijo, sizeof fijo, "96%d %03d %03d", f1, f2, f3);
        std::snprintf(movil, sizeof movil, "6%02d %03d %03d", m1, m2, m3);
        const bool deposito = rng_.Probable(2);
        const Cliente c{codigo,
                        mujer ? rng_.De(kNombresMujer) : rng_.De(kNombresHombre),
                        apellidos.c_str(),
                        mujer ? "Mujer" : "Hombre",
                        rng_.Entre(10000000, 99999999),
                        rng_.Probable(60) ? fijo : "",
                        movil,
                        direccion.c_str(),
                        pob.nombre,
                        pob.cp,
                        rng_.Probable(3) ? 5.0 : 0.0,
                        rng_.Probable(80) ? rng_.Entre(1, 12) : 0,
                        rng_.Entre(1, 28),
                        deposito,
                        deposito ? rng_.Entre(0, 200) * 0.5 : 0.0,
                        rng_.Probable(1)};
        const DateTime ingreso = DateTime{fecha::DesdeFecha(2015, 1, 1).serial + rng_.Entre(0, 3300)};
        const DateTime visita = DateTime{ingreso.serial + rng_.Entre(0, 300)};
        InsertarCliente(tienda_, c, "cliente" + std::to_string(codigo) + "@correo.es", ingreso, visita);
    }
}

}  // namespace tpv::demo
