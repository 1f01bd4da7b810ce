#pragma once
// What the fuzz targets share: a shop's database in memory (the shop's
// tables and a few rows in the ones the statements read most), and the
// reading of a target's input.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>

#include "core/datos/esquema.hpp"
#include "core/datos/session.hpp"
#include "core/runtime/unicode.hpp"

namespace tpvfuzz {

// A new session on a new in-memory database with the shop's tables that
// the cases use (the fewer, the sooner the catalog is read again).
inline std::unique_ptr<tpv::datos::Session> NuevaTienda() {
    tpv::datos::SchemaDef esquema = tpv::datos::LeerEsquema(tpv::datos::CarpetaEsquemas() + "/tienda.schema");
    const std::set<std::string> tablas = {"productos", "productos_codigosextra", "clientes", "cabecera_factura",
                                          "detalle_factura", "cabecera_factura_temp", "detalle_factura_temp",
                                          "relaciones_fijas", "pedidos", "pedidosdet"};
    auto fuera = [&](const std::string& t) { return !tablas.count(tpv::unicode::Lower(t)); };
    std::erase_if(esquema.tables, [&](const tpv::datos::TableDef& t) { return fuera(t.name); });
    std::erase_if(esquema.indexes, [&](const tpv::datos::IndexDef& i) { return fuera(i.table); });
    auto engine = tpv::datos::OpenSqlite(":memory:", true);
    engine->CreateSchema(esquema);
    auto s = std::make_unique<tpv::datos::Session>(std::move(engine));
    const char* filas[] = {
        "insert into productos (codigo, nombre, codigocliente, precio, stock, borrar, mostrarencaja) "
        "values (1, 'Agua de colonia', '8410001', 12.5, 3, false, -1)",
        "insert into productos (codigo, nombre, codigocliente, precio, stock, borrar, mostrarencaja) "
        "values (2, 'ÑANDÚ crema', '8410002', 0.333, null, false, -1)",
        "insert into productos (codigo, nombre, codigocliente, precio, stock, borrar, mostrarencaja) "
        "values (32768, 'Jabón %_[', '', -1e15, 1e300, true, 0)",
        "insert into productos_codigosextra (codigo, codigo_extra) values (1, '%8410099')",
        "insert into clientes (codigo, nombre, apellidos, nacimiento, descuento, borrar) "
        "values (1, 'Ana', 'Pérez', #02/29/2000#, 5, false)",
        "insert into cabecera_factura (numero, fecha, hora, cliente, total) values (1, #12/31/9999#, #23:59:59#, 1, 1e300)",
    };
    for (const char* f : filas) s->Run(f, false);
    return s;
}

// The first byte of an input holds flags; the rest is the text.
struct Entrada {
    unsigned banderas = 0;
    std::string texto;
};

inline Entrada Leer(const std::uint8_t* data, std::size_t size) {
    Entrada e;
    if (size == 0) return e;
    e.banderas = data[0];
    e.texto.assign(reinterpret_cast<const char*>(data) + 1, size - 1);
    return e;
}

}  // namespace tpvfuzz
