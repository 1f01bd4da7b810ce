// The demo shop's catalogue: sections, suppliers, products with their bar
// codes, a composite product, services, tariffs, promotions and orders; and,
// for the large shop, a bulk catalogue.
#include <cmath>
#include <cstdio>
#include <string>

#include "tools/demo/tienda_demo.hpp"

namespace tpv::demo {

namespace {

double Redondear(double x, int decimales) {
    const double f = std::pow(10.0, decimales);
    return std::round(x * f) / f;
}

// The shop's own bar code of a product: Spanish prefix, a maker number
// that follows the supplier, and the product's code.
std::string CodigoDeBarras(int codigo, int proveedor) {
    char doce[32];
    std::snprintf(doce, sizeof doce, "84%05d%05d", 10000 + (codigo / 100000) * 1000 + proveedor,
                  codigo % 100000);
    return Ean13(doce);
}

// Extra codes use a maker number that no product's own code has.
std::string CodigoExtra(int n) {
    char doce[32];
    std::snprintf(doce, sizeof doce, "8499%03d%05d", 900 + n / 100000, n % 100000);
    return Ean13(doce);
}

std::string Ubicacion(int seccion, int codigo) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "P%02d - C%02d - F%02d", seccion, codigo % 12 + 1, codigo % 5 + 1);
    return buf;
}

enum Marca { kPeso = 1, kRetirado = 2, kNoEnCaja = 4, kColorPropio = 8, kSinUbicacion = 16 };

struct Producto {
    int codigo;
    const char* nombre;
    double precio;  // tax included
    double iva;
    int seccion;
    int proveedor;
    double stock;
    double minimo;
    const char* codigoCliente;  // nullptr: a bar code is made
    int marcas;
};

// Codes stay below 32768: the till narrows a sold code to 16 bits.
const Producto kProductos[] = {
    {1, "Leche corporal hidratante 400 ml", 0.89, 4, 3, 2, 120, 24, nullptr, 0},
    {2, "Leche limpiadora 200 ml", 0.85, 4, 3, 2, 96, 24, nullptr, 0},
    {3, "Mascarilla facial pack 4", 1.20, 10, 3, 2, 40, 10, nullptr, 0},
    {4, "Crema antiarrugas 50 ml", 4.95, 4, 3, 2, 18, 5, nullptr, 0},
    {5, "Manteca de karité 250 g", 2.35, 10, 3, 2, 22, 6, nullptr, 0},
    {6, "Discos desmaquillantes 80 ud", 2.60, 4, 3, 2, 30, 10, nullptr, 0},
    {7, "Bolsa de organza", 0.60, 4, 6, 6, 80, 20, "7", 0},
    {8, "Peine de madera", 1.10, 4, 6, 6, 25, 10, nullptr, 0},
    {9, "Horquillas 24 ud", 0.90, 10, 6, 6, 30, 10, nullptr, 0},
    {10, "Gomas de pelo 12 ud", 1.95, 10, 6, 6, 15, 5, nullptr, 0},
    {11, "Aceite de almendras dulces 1 L", 8.95, 10, 1, 1, 48, 12, nullptr, 0},
    {12, "Agua de rosas 250 ml", 1.45, 10, 1, 1, 60, 12, nullptr, 0},
    {13, "Agua micelar 400 ml", 0.95, 10, 1, 1, 70, 12, nullptr, 0},
    {14, "Tónico facial 200 ml", 0.79, 10, 1, 1, 55, 12, nullptr, 0},
    {15, "Perfume sólido pack 3", 3.25, 10, 1, 1, 40, 10, nullptr, 0},
    {16, "Talco perfumado 200 g", 0.99, 10, 1, 1, 35, 10, nullptr, kSinUbicacion},
    {17, "Exfoliante de azúcar 300 g", 1.25, 10, 1, 1, 45, 10, nullptr, 0},
    {18, "Eau de toilette cítrica 100 ml", 2.89, 10, 1, 1, 1, 5, nullptr, 0},
    {19, "Bruma corporal 250 ml", 1.79, 10, 1, 1, 50, 10, nullptr, 0},
    {20, "Colonia de lavanda 750 ml", 0.45, 10, 2, 1, 200, 48, nullptr, 0},
    {21, "Colonia infantil 500 ml", 1.85, 21, 2, 1, 60, 12, nullptr, kColorPropio},
    {22, "Colonia de baño 1 L", 1.59, 10, 2, 1, 40, 12, nullptr, 0},
    {23, "Muestra de perfume 2 ml", 0.75, 21, 2, 3, 240, 48, nullptr, 0},
    {24, "Eau de parfum oriental 75 ml", 6.50, 21, 2, 3, 36, 6, nullptr, 0},
    {25, "Eau de parfum floral 75 ml", 5.95, 21, 2, 3, 24, 6, nullptr, 0},
    {26, "Jabón de Marsella al corte", 1.95, 4, 4, 4, 45.5, 10, "101", kPeso},
    {27, "Jabón de aceite de oliva al corte", 2.49, 4, 4, 4, 38.2, 10, "102", kPeso},
    {28, "Sales de Epsom a granel", 2.20, 4, 4, 4, 30, 8, "103", kPeso},
    {29, "Bicarbonato a granel", 1.35, 4, 4, 4, 60, 15, "104", kPeso},
    {30, "Sales de baño perfumadas al peso", 24.90, 10, 5, 5, 12.75, 3, "201", kPeso},
    {31, "Henna natural 200 g", 3.95, 10, 5, 5, 20, 5, nullptr, 0},
    {32, "Saquito de sales aromáticas", 3.50, 10, 6, 6, 0, 0, nullptr, 0},
    {33, "Detergente líquido 40 lavados", 7.95, 21, 7, 7, 16, 4, nullptr, 0},
    {34, "Lejía 2 L", 1.10, 21, 7, 7, 30, 6, nullptr, 0},
    {35, "Lavavajillas 750 ml", 1.65, 21, 7, 7, 25, 6, nullptr, 0},
    {36, "Papel higiénico 12 rollos", 4.25, 21, 7, 7, 20, 5, nullptr, 0},
    {37, "Gel de baño 750 ml", 2.45, 21, 8, 8, 18, 4, nullptr, 0},
    {38, "Champú 400 ml", 2.95, 21, 8, 8, 15, 4, nullptr, 0},
    {39, "Pasta de dientes 75 ml", 1.85, 21, 8, 8, 20, 5, nullptr, 0},
    {40, "Bolsa de plástico", 0.15, 21, 7, 7, 500, 100, "40", 0},
    {41, "Jaboncillo de regalo 50 g", 1.39, 10, 1, 1, 35, 10, nullptr, 0},
    {42, "Estuche de Navidad", 4.50, 10, 1, 1, 8, 0, nullptr, kRetirado},
    {43, "Vaporizador de viaje", 3.99, 21, 7, 7, 12, 3, nullptr, kNoEnCaja},
    {44, "Caja regalo", 0.00, 21, 7, 7, 20, 0, nullptr, 0},
};

void InsertarProducto(Connection& cn, const Producto& p, const std::string& codigoCliente, double coste,
                      int posicion) {
    Fila f("productos");
    f("Codigo", p.codigo)("codigocliente", codigoCliente)("nombre", p.nombre)("precio", p.precio)
        ("iva", p.iva)("impuesto_2", 0.0)("coste", coste)("stock", p.stock)("Stockminimo", p.minimo)
        ("salida", 0.0)("entrada", p.stock)("stockconsumointerno", Value())
        ("UbicacionPrincipal",
         (p.marcas & kSinUbicacion) ? Value() : Value(Ubicacion(p.seccion, p.codigo)))
        ("imagen", Value())("modoventa", (p.marcas & kPeso) != 0)("seccion", p.seccion)
        ("proveedor", p.proveedor)("pro_color", (p.marcas & kColorPropio) ? "-1" : "0")
        ("Color", (p.marcas & kColorPropio) ? "255" : "")("mostrarencaja", (p.marcas & kNoEnCaja) == 0)
        ("borrar", (p.marcas & kRetirado) != 0)("posicion", posicion);
    cn.Execute(f.Sql());
}

double Coste(double precio, double iva) { return Redondear(precio / (1 + iva / 100) * 0.65, 2); }

}  // namespace

void TiendaDemo::Catalogo() {
    SeccionesYProveedores();
    Productos();
    Servicios();
    TarifasYPromociones();
    Pedidos();
}

void TiendaDemo::SeccionesYProveedores() {
    struct Grupo {
        int codigo;
        const char* nombre;
        int color;  // 0: the panel's generic colours
        bool borrado;
    };
    static const Grupo kSecciones[] = {
        {1, "Perfumes", 0, false}, {2, "Colonias", 0, false},       {3, "Cosmética facial", 0, false},
        {4, "Jabones a granel", 8454016, false}, {5, "Herboristería", 8421631, false}, {6, "Complementos", 8438015, false},
        {7, "Droguería", 0, false},    {8, "Higiene personal", 0, false},    {9, "Temporada", 0, true},
    };
    for (const Grupo& s : kSecciones)
        Insertar(Fila("Seccion")("codigo", s.codigo)("Nombre", s.nombre)("imagen", Value())
                     ("color", s.color ? Value(s.color) : Value())("sec_color", s.color != 0)
                     ("Borrar", s.borrado)("posicion", s.codigo));

    // "Suministros Varios" has no product, so it never shows on the panel.
    static const Grupo kProveedores[] = {
        {1, "Distribuciones Turia S.L.", 0, false}, {2, "Cosmética del Norte S.A.", 0, false},
        {3, "Fragancias Albares", 12632256, false},    {4, "Jabonería La Huerta", 0, false},
        {5, "Herbolario Serranía", 0, false},        {6, "Complementos San Roque", 0, false},
        {7, "Limpiezas Brillo S.L.", 0, false},     {8, "Cosmética Azahar", 0, false},
        {9, "Suministros Varios", 0, false},        {10, "Esencias Marineras", 0, true},
    };
    for (const Grupo& p : kProveedores)
        Insertar(Fila("Proveedores")("codigo", p.codigo)("Nombre", p.nombre)("imagen", Value())
                     ("color", p.color ? Value(p.color) : Value())("prv_color", p.color != 0)
                     ("Borrar", p.borrado)("posicion", p.codigo));
}

void TiendaDemo::Productos() {
    for (const Producto& p : kProductos) {
        const std::string codigoCliente =
            p.codigoCliente ? std::string(p.codigoCliente) : CodigoDeBarras(p.codigo, p.proveedor);
        InsertarProducto(tienda_, p, codigoCliente, Coste(p.precio, p.iva), p.codigo);
    }

    // Extra bar codes: a colony and a sample carry a second code, and the two
    // lotions share one code by mistake (the till reports the duplicate).
    auto extra = [this](int codigo, const std::string& barras) {
        Insertar(Fila("Productos_CodigosExtra")("Codigo", codigo)("Codigo_Extra", barras));
    };
    extra(20, CodigoExtra(20));
    extra(23, CodigoExtra(23));
    extra(11, CodigoExtra(11));
    extra(1, CodigoExtra(1));
    extra(2, CodigoExtra(1));

    // The sachet is made at the counter: an organza bag, 80 g of bath salts
    // and a drop of almond oil.
    auto receta = [this](int padre, int hijo, double cantidad) {
        Insertar(Fila("productoelaborado_producto")("ProductoPadre", padre)("productohijo", hijo)
                     ("cantidad", cantidad));
    };
    receta(32, 7, 1);
    receta(32, 30, 0.08);
    receta(32, 11, 0.01);
}

void TiendaDemo::Servicios() {
    // Service 2 is the deposit: its price comes from the amount deposited.
    Insertar(Fila("Servicios")("codigo", 1)("nombre", "Envío a domicilio")("precio", 3.0)("iva", 21.0)
                 ("impuesto_2", 0.0)("borrar", false));
    Insertar(Fila("Servicios")("codigo", 2)("nombre", "Dinero en Deposito")("precio", 0.0)("iva", 0.0)
                 ("impuesto_2", 0.0)("borrar", false));
    Insertar(Fila("Servicios")("codigo", 3)("nombre", "Envoltorio de regalo")("precio", 2.5)
                 ("iva", 21.0)("impuesto_2", 0.0)("borrar", false));
}

void TiendaDemo::TarifasYPromociones() {
    auto tarifa = [this](int id, const char* nombre, int desde, int hasta) {
        Insertar(Fila("cabecera_precio")("identificador", id)("descripcion", nombre)
                     ("preciovalidodesde", Dia(DiasDesdeHoy(desde)))
                     ("preciovalidohasta", Dia(DiasDesdeHoy(hasta))));
    };
    auto precio = [this](int id, int producto, double importe) {
        Insertar(Fila("detalle_precio")("identificador", id)("producto", producto)("precio", importe));
    };
    tarifa(1, "Tarifa Socios", -30, 335);
    precio(1, 1, 0.79);
    precio(1, 2, 0.75);
    precio(1, 11, 7.95);
    precio(1, 24, 5.90);
    precio(1, 30, 21.90);
    tarifa(2, "Tarifa Profesionales", -10, 20);
    precio(2, 20, 0.35);
    precio(2, 23, 0.60);
    precio(2, 24, 5.50);
    tarifa(3, "Tarifa Navidad", -400, -370);  // gone out of date
    precio(3, 24, 5.75);
    precio(3, 25, 4.95);

    auto promocion = [this](int producto, int tipo, double descuento, int regalo, double importe, int desde,
                            int hasta) {
        Insertar(Fila("descuentos")("codproducto", producto)("tipo", tipo)("descuento", descuento)
                     ("codRegalo", regalo)("precio", importe)("desde", Dia(DiasDesdeHoy(desde)))
                     ("hasta", Dia(DiasDesdeHoy(hasta)))("numdias", Value())("impMinProxCompra", Value()));
    };
    promocion(18, 1, 15, -1, 0, -7, 23);     // the citrus eau de toilette 15 % off
    promocion(19, 2, 0, 41, 1.50, -7, 23);   // body mist at 1,50 with a small soap
    promocion(24, 1, 10, -1, 0, -60, -30);   // an old offer on the oriental perfume

    // The voucher scale: a sale of at least `precio` earns `descuento`. The
    // rows carry no dates, so that no product promotion is hidden by them.
    auto escala = [this](double desde, double vale, int dias, double minimo) {
        Insertar(Fila("descuentos")("codproducto", -1)("tipo", 3)("descuento", vale)("codRegalo", Value())
                     ("precio", desde)("desde", Value())("hasta", Value())("numdias", dias)
                     ("impMinProxCompra", minimo));
    };
    escala(50, 3, 30, 20);
    escala(100, 8, 30, 40);
    escala(200, 20, -1, 60);
}

void TiendaDemo::Pedidos() {
    // An order of eau de toilette already delivered, and perfume still to come.
    Insertar(Fila("pedidos")("cod", 1)("cliente", 1)("fecha", Dia(DiasDesdeHoy(-10)))
                 ("entrega", Dia(DiasDesdeHoy(-2))));
    Insertar(Fila("pedidosdet")("pedido", 1)("producto", 18)("unidades", 6.0));
    Insertar(Fila("pedidos")("cod", 2)("cliente", 2)("fecha", Dia(DiasDesdeHoy(-1)))
                 ("entrega", Dia(DiasDesdeHoy(3))));
    Insertar(Fila("pedidosdet")("pedido", 2)("producto", 24)("unidades", 12.0));
}

namespace {

// How a family is packed: by weight, by volume, by units, or loose (weighed
// at the till).
enum Envase { kSolido, kLiquido, kUnidades, kGranel };

struct Familia {
    const char* tipo;
    int seccion;
    double iva;
    Envase envase;
    double desde, hasta;  // price range, tax included
};

const Familia kFamilias[] = {
    {"Arroz", 1, 10, kSolido, 0.9, 3.5},           {"Macarrones", 1, 10, kSolido, 0.6, 2.2},
    {"Espaguetis", 1, 10, kSolido, 0.6, 2.2},      {"Lentejas", 1, 10, kSolido, 0.9, 3.0},
    {"Garbanzos", 1, 10, kSolido, 0.9, 3.0},       {"Alubias", 1, 10, kSolido, 0.9, 3.2},
    {"Harina", 1, 4, kSolido, 0.6, 1.9},           {"Azúcar", 1, 10, kSolido, 0.9, 2.2},
    {"Café", 1, 10, kSolido, 1.9, 7.5},            {"Cacao soluble", 1, 10, kSolido, 1.9, 5.5},
    {"Galletas", 1, 10, kSolido, 0.9, 3.5},        {"Cereales", 1, 10, kSolido, 1.5, 4.5},
    {"Mermelada", 1, 10, kSolido, 1.2, 3.9},       {"Miel", 1, 10, kSolido, 2.5, 8.5},
    {"Atún", 1, 10, kUnidades, 1.5, 6.5},          {"Sardinas", 1, 10, kUnidades, 1.0, 3.5},
    {"Tomate frito", 1, 10, kSolido, 0.6, 1.9},    {"Aceitunas", 1, 10, kSolido, 0.9, 3.2},
    {"Mayonesa", 1, 10, kSolido, 1.2, 3.5},        {"Caldo", 1, 10, kLiquido, 1.0, 2.9},
    {"Patatas fritas", 1, 10, kSolido, 0.9, 2.9},  {"Frutos secos", 1, 10, kSolido, 1.9, 6.5},
    {"Agua mineral", 2, 10, kLiquido, 0.2, 3.0},   {"Refresco de naranja", 2, 21, kLiquido, 0.6, 4.5},
    {"Refresco de limón", 2, 21, kLiquido, 0.6, 4.5}, {"Zumo de piña", 2, 10, kLiquido, 0.9, 2.9},
    {"Cerveza", 2, 21, kLiquido, 0.5, 7.5},        {"Vino blanco", 2, 21, kLiquido, 2.5, 14.0},
    {"Vino rosado", 2, 21, kLiquido, 2.5, 12.0},   {"Sidra", 2, 21, kLiquido, 1.9, 6.0},
    {"Leche", 3, 4, kLiquido, 0.7, 6.0},           {"Yogur", 3, 10, kUnidades, 0.9, 3.5},
    {"Queso", 3, 4, kSolido, 1.9, 12.0},           {"Natillas", 3, 10, kUnidades, 1.0, 2.9},
    {"Nata", 3, 10, kLiquido, 0.9, 2.5},           {"Kéfir", 3, 10, kLiquido, 1.5, 3.5},
    {"Pera", 4, 4, kGranel, 1.5, 3.5},             {"Melocotón", 4, 4, kGranel, 1.9, 3.9},
    {"Uva", 4, 4, kGranel, 2.0, 4.5},              {"Kiwi", 4, 4, kGranel, 2.5, 5.5},
    {"Limón", 4, 4, kGranel, 1.2, 2.9},            {"Pimiento", 4, 4, kGranel, 1.5, 3.9},
    {"Cebolla", 4, 4, kGranel, 0.9, 1.9},          {"Patata", 4, 4, kGranel, 0.7, 1.9},
    {"Calabacín", 4, 4, kGranel, 1.2, 2.9},        {"Jamón cocido", 5, 10, kSolido, 1.9, 6.5},
    {"Pechuga de pavo", 5, 10, kSolido, 1.9, 5.5}, {"Salchichón", 5, 10, kSolido, 1.5, 5.0},
    {"Lomo embuchado", 5, 10, kSolido, 3.5, 12.0}, {"Fuet", 5, 10, kUnidades, 1.5, 4.5},
    {"Pan de molde", 6, 4, kSolido, 1.0, 2.9},     {"Tostadas", 6, 4, kSolido, 1.0, 2.5},
    {"Bizcocho", 6, 10, kSolido, 1.5, 4.5},        {"Detergente", 7, 21, kLiquido, 3.5, 14.0},
    {"Suavizante", 7, 21, kLiquido, 1.5, 5.5},     {"Limpiador multiusos", 7, 21, kLiquido, 1.2, 3.9},
    {"Friegasuelos", 7, 21, kLiquido, 1.2, 3.5},   {"Bolsas de basura", 7, 21, kUnidades, 0.9, 3.0},
    {"Servilletas", 7, 21, kUnidades, 0.6, 2.5},   {"Papel de cocina", 7, 21, kUnidades, 1.2, 4.5},
    {"Gel de ducha", 8, 21, kLiquido, 1.2, 5.5},   {"Champú", 8, 21, kLiquido, 1.5, 7.5},
    {"Desodorante", 8, 21, kUnidades, 1.5, 4.5},   {"Crema hidratante", 8, 21, kUnidades, 2.9, 12.0},
    {"Jabón de manos", 8, 21, kLiquido, 0.9, 2.9}, {"Cepillo de dientes", 8, 21, kUnidades, 1.0, 3.9},
};

const char* const kMarcas[] = {"Sol de Levante", "Campo Real", "La Alacena", "Huerta Viva", "Monteverde",
                               "El Molino",      "Valdeflores", "Costa Blanca", "Tierra Noble", "Miraflores",
                               "Albada",         "Serrana",     "Mar Azul",     "Peñalba",      "La Despensa",
                               "Río Turia",      "Albufera",    "Sierra Calderona", "Los Naranjos", "Azahar"};
const char* const kVariantes[] = {"", "", "", "", "Clásico", "Ecológico", "Familiar", "Extra", "Tradicional",
                                  "Natural"};
const char* const kPesos[] = {"125 g", "250 g", "400 g", "500 g", "1 kg"};
const char* const kVolumenes[] = {"330 ml", "500 ml", "750 ml", "1 L", "1,5 L", "2 L"};
const char* const kUnidadesEnvase[] = {"pack 2", "pack 3", "pack 4", "pack 6", "12 ud"};

}  // namespace

// The bulk catalogue runs past code 32767: those products are found by
// every lookup, but a sale of one overflows the line's 16-bit code, as it
// would in any shop with such codes.
void TiendaDemo::CatalogoMasivo() {
    constexpr int kProductos = 200000;
    constexpr int kProveedores = 40;
    for (int i = 0; i < kProveedores; ++i) {
        const int codigo = kPrimerProveedorMasivo + i;
        std::string nombre = std::string("Distribuciones ") + kMarcas[i % 20] + (i < 20 ? " S.L." : " S.A.");
        Insertar(Fila("Proveedores")("codigo", codigo)("Nombre", nombre)("imagen", Value())("color", Value())
                     ("prv_color", false)("Borrar", false)("posicion", codigo));
    }

    for (int i = 0; i < kProductos; ++i) {
        const int codigo = kPrimerProductoMasivo + i;
        const Familia& fam = rng_.De(kFamilias);
        std::string nombre = std::string(fam.tipo) + " " + rng_.De(kMarcas);
        const char* variante = rng_.De(kVariantes);
        if (*variante) nombre += std::string(" ") + variante;
        if (fam.envase == kSolido) nombre += std::string(" ") + rng_.De(kPesos);
        if (fam.envase == kLiquido) nombre += std::string(" ") + rng_.De(kVolumenes);
        if (fam.envase == kUnidades) nombre += std::string(" ") + rng_.De(kUnidadesEnvase);

        const int proveedor = kPrimerProveedorMasivo + rng_.Entre(0, kProveedores - 1);
        int marcas = fam.envase == kGranel ? kPeso : 0;
        if (rng_.Probable(2)) marcas |= kRetirado;
        if (rng_.Probable(1)) marcas |= kNoEnCaja;
        if (rng_.Probable(3)) marcas |= kSinUbicacion;
        const int veintenas = rng_.Entre(static_cast<int>(std::lround(fam.desde * 20)),
                                         static_cast<int>(std::lround(fam.hasta * 20)));
        const double precio = veintenas * 0.05;  // prices end in 0 or 5 cents
        const Producto p{codigo, nombre.c_str(), precio, fam.iva, fam.seccion, proveedor,
                         static_cast<double>(rng_.Entre(0, 200)), static_cast<double>(rng_.Entre(0, 20)),
                         nullptr, marcas};
        InsertarProducto(tienda_, p, CodigoDeBarras(codigo, proveedor), Coste(precio, fam.iva), codigo);

        // Every product has a second EAN-13; every other one an EAN-8 too.
        Insertar(Fila("Productos_CodigosExtra")("Codigo", codigo)("Codigo_Extra", CodigoExtra(codigo)));
        if (i % 2 == 0) {
            char siete[16];
            std::snprintf(siete, sizeof siete, "2%06d", codigo % 1000000);
            Insertar(Fila("Productos_CodigosExtra")("Codigo", codigo)("Codigo_Extra", Ean8(siete)));
        }
    }
}

}  // namespace tpv::demo
