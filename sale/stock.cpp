#include "sale/stock.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/servicios/field_list.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

namespace {

constexpr int kDescripcionVenta = 2;
constexpr int kDescripcionAbono = 11;
constexpr int kDescripcionDesdeStock = 5;
constexpr int kDescripcionDesdeInterno = 7;
constexpr int kMovimientoAlInterno = 1;
constexpr int kMovimientoConsumoInterno = 2;

void Insertar(const char* tabla, const std::string& campos) {
    Sesion& s = sesion();
    RecordWriter::Instancia().Insertar(s.Conexion, tabla, campos, s.NombreTienda, s.Multitienda);
}

void Actualizar(const char* tabla, const std::string& campos, const std::string& condicion) {
    Sesion& s = sesion();
    RecordWriter::Instancia().Actualizar(s.Conexion, tabla, campos, s.NombreTienda, s.Multitienda, condicion);
}

std::string Par(const char* nombre, const Value& valor) { return FieldList::Par(nombre, valor); }

double NumeroONulo(const Value& v) { return v.IsNull() ? 0.0 : CDbl(v); }

// A column's value moved by `delta`; a NULL stays NULL, as the sum of a NULL
// always gave, and is written back empty.
Value Sumar(const Value& columna, double delta) {
    if (columna.IsNull()) return Value();
    return Value(CDbl(columna) + delta);
}

double LeerColumna(const char* columna, std::int32_t codigo) {
    Recordset rs;
    rs.Open(std::string("Select ") + columna + " from productos where codigo = " + CStr(Value(codigo)),
            sesion().Conexion);
    if (rs.Eof()) return 0.0;
    return NumeroONulo(rs[columna]);
}

// The HistoricoStock row of a sold unit, shared by both line flows.
void GrabarMovimientoVenta(std::int32_t codigo, const std::string& nombre, double unidades, double coste,
                           std::int32_t ticket, bool modoAbono) {
    Insertar("HistoricoStock", Par("Codigo", codigo) + Par("Nombre", nombre) + Par("Cantidad", Abs(unidades)) +
                                   Par("fecha", Date()) + Par("coste", unidades * coste) + Par("ticket", ticket) +
                                   "Tipo=1|" + Par("DescripcionTipo", modoAbono ? kDescripcionAbono : kDescripcionVenta));
}

// What a component's consumption reads of its product.
struct Componente {
    std::string nombre;
    double coste = 0.0;
    Value stockconsumointerno;
    Value stock;
    Value salida;
    bool existe = false;
};

Componente LeerComponente(std::int32_t codigo) {
    Componente c;
    Recordset rs;
    rs.Open("select * from Productos where codigo =" + CStr(Value(codigo)), sesion().Conexion);
    if (rs.Eof()) return c;
    c.existe = true;
    c.nombre = Texto(rs["nombre"]);
    c.coste = NumeroONulo(rs["coste"]);
    c.stockconsumointerno = rs["stockconsumointerno"];
    c.stock = rs["stock"];
    c.salida = rs["salida"];
    return c;
}

void GrabarMovimientoComponente(std::int32_t codigo, const Componente& c, double cantidad, std::int32_t ticket,
                                std::int16_t indice, std::int32_t codPadre, int descripcion, int movimiento) {
    Insertar("historicostock", Par("codigo", codigo) + Par("Nombre", c.nombre) + "Tipo=1|" + Par("Cantidad", cantidad) +
                                   Par("Coste", c.coste) + Par("Fecha", Date()) + "ObservacionC=|ObservacionR=|" +
                                   Par("Indice", indice) + Par("DescripcionTipo", descripcion) + Par("TICKET", ticket));
    Insertar("stockconsumointerno", Par("codigoproducto", codigo) + Par("cantidadEntrada", cantidad) +
                                        Par("tipomovimiento", movimiento) + Par("Fecha", Date()) +
                                        Par("ticket", ticket) + Par("cod_productoelaborado", codPadre));
}

void ConsumirInterno(std::int32_t codigo, const Componente& c, double cantidad, std::int32_t ticket,
                     std::int16_t indice, std::int32_t codPadre) {
    Actualizar("Productos", Par("stockconsumointerno", Sumar(c.stockconsumointerno, -cantidad)),
               "codigo=" + CStr(Value(codigo)));
    GrabarMovimientoComponente(codigo, c, cantidad, ticket, indice, codPadre, kDescripcionDesdeInterno,
                               kMovimientoConsumoInterno);
}

void ConsumirGeneral(std::int32_t codigo, const Componente& c, double cantidad, std::int32_t ticket,
                     std::int16_t indice, std::int32_t codPadre) {
    // The internal stock grows by what the general stock lost.
    const Value interno = c.stockconsumointerno.IsNull() ? Value(cantidad) : Sumar(c.stockconsumointerno, cantidad);
    Actualizar("Productos",
               Par("stock", Sumar(c.stock, -cantidad)) + Par("SALIDA", Sumar(c.salida, cantidad)) +
                   Par("stockconsumointerno", interno),
               "codigo=" + CStr(Value(codigo)));
    GrabarMovimientoComponente(codigo, c, cantidad, ticket, indice, codPadre, kDescripcionDesdeStock,
                               kMovimientoAlInterno);
}

}  // namespace

double LeerSalida(std::int32_t codigo) { return LeerColumna("salida", codigo); }

double LeerEntrada(std::int32_t codigo) { return LeerColumna("entrada", codigo); }

double LeerStock(std::int32_t codigo, double& coste) {
    coste = 0.0;
    Recordset rs;
    rs.Open("Select stock,coste from productos where codigo = " + CStr(Value(codigo)), sesion().Conexion);
    if (rs.Eof()) return 0.0;
    coste = NumeroONulo(rs["coste"]);
    return NumeroONulo(rs["stock"]);
}

bool EsProductoElaborado(std::int32_t codigo) {
    Recordset rs;
    rs.Open("Select * from productoelaborado_producto where ProductoPadre = " + CStr(Value(codigo)),
            sesion().Conexion);
    return !rs.Eof();
}

std::int16_t SiguienteIndiceHistorico() {
    Recordset rs;
    rs.Open("select indice from HistoricoStock where fecha=#" + Format(Date(), "mm/dd/yyyy") +
                "# order by indice desc",
            sesion().Conexion);
    if (!rs.Eof() && !rs["indice"].IsNull()) return CInt(Value(CDbl(rs["indice"]) + 1));
    return 1;
}

void GrabarHistoricoVenta(std::int32_t codigo, const std::string& nombre, double unidades, std::int32_t ticket,
                          bool modoAbono) {
    GrabarMovimientoVenta(codigo, nombre, unidades, LeerColumna("coste", codigo), ticket, modoAbono);
}

void DescontarElaborado(std::int32_t codigo, double unidades, std::int32_t ticket, std::int16_t& indice) {
    if (!EsProductoElaborado(codigo)) {
        DescontarComponente(codigo, unidades, false, ticket, indice, -1);
        indice = CInt(Value(indice + 1));
        return;
    }
    Recordset rs;
    rs.Open("Select * from productoelaborado_producto where productopadre = " + CStr(Value(codigo)),
            sesion().Conexion);
    for (; !rs.Eof(); rs.MoveNext()) {
        DescontarComponente(CLng(rs["productohijo"]), unidades * CDbl(rs["cantidad"]), true, ticket, indice, codigo);
        indice = CInt(Value(indice + 1));
    }
}

void DescontarComponente(std::int32_t codigo, double cantidad, bool esComponente, std::int32_t ticket,
                         std::int16_t indice, std::int32_t codPadre) {
    if (!esComponente) {
        double coste = 0.0;
        Actualizar("Productos",
                   Par("Salida", LeerSalida(codigo) + cantidad) + Par("Stock", LeerStock(codigo, coste) - cantidad),
                   "codigo = " + CStr(Value(codigo)));
    }
    // The parent's figures above take the quantity as it came.
    cantidad = Round(cantidad, 3);
    const Componente c = LeerComponente(codigo);
    if (!c.existe || !esComponente) return;
    // An internal stock just equal to the quantity, or none at all, is not
    // touched.
    if (!c.stockconsumointerno.IsNull() && CDbl(c.stockconsumointerno) > cantidad)
        ConsumirInterno(codigo, c, cantidad, ticket, indice, codPadre);
    else
        ConsumirGeneral(codigo, c, cantidad, ticket, indice, codPadre);
}

void ConsumirStockInterno(std::int32_t codigo, double cantidad, std::int32_t ticket, std::int16_t indice,
                          std::int32_t codPadre) {
    const Componente c = LeerComponente(codigo);
    if (c.existe) ConsumirInterno(codigo, c, cantidad, ticket, indice, codPadre);
}

void ConsumirStockGeneral(std::int32_t codigo, double cantidad, std::int32_t ticket, std::int16_t indice,
                          std::int32_t codPadre) {
    const Componente c = LeerComponente(codigo);
    if (c.existe) ConsumirGeneral(codigo, c, cantidad, ticket, indice, codPadre);
}

void SalidaStockLinea(std::int32_t codigo, const std::string& producto, double unidades, std::int32_t ticket,
                      bool modoAbono) {
    double coste = 0.0;
    const double stock = LeerStock(codigo, coste);
    // Salida goes up inside the statement; the new stock is worked out here
    // from the figure just read.
    Actualizar("Productos", "Salida=Salida+" + Texto(Value(unidades)) + "|" + Par("Stock", stock - unidades),
               "codigo = " + CStr(Value(codigo)));
    GrabarMovimientoVenta(codigo, producto, unidades, coste, ticket, modoAbono);
}

void MoverStockLinea(std::int32_t codigo, const std::string& producto, double unidades, const std::string& tipoVenta,
                     std::int32_t ticket, bool modoAbono, std::int16_t& indice) {
    if (sesion().Sector == "PANADERIA") {
        GrabarHistoricoVenta(codigo, producto, unidades, ticket, modoAbono);
        DescontarElaborado(codigo, unidades, ticket, indice);
    } else if (tipoVenta == "P") {
        SalidaStockLinea(codigo, producto, unidades, ticket, modoAbono);
    }
}

}  // namespace tpv
