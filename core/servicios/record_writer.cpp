#include "core/servicios/record_writer.hpp"

#include <mutex>

#include "core/datos/session.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/error.hpp"
#include "core/servicios/field_list.hpp"
#include "core/servicios/valor_columna.hpp"

namespace tpv {

namespace {

struct Puesto {
    std::mutex mu;
    std::string terminal;
    std::string empleado;
};

Puesto& PuestoActual() {
    static Puesto puesto;
    return puesto;
}

// A column and the literal it takes.
struct Asignacion {
    const datos::ColumnInfo* columna;
    std::string literal;
};

const datos::TableInfo& Tabla(Connection& conexion, const std::string& tabla) {
    datos::Session& sesion = conexion.session();
    if (const datos::TableInfo* t = sesion.catalog().Find(tabla)) return *t;
    // Made since the connection opened, perhaps: look once more.
    sesion.ReloadCatalog();
    if (const datos::TableInfo* t = sesion.catalog().Find(tabla)) return *t;
    throw DbError("tabla", "No se encuentra la tabla o consulta de entrada '" + tabla + "'.", "");
}

const datos::ColumnInfo& Columna(const datos::TableInfo& tabla, const std::string& nombre, const std::string& campos) {
    const datos::ColumnInfo* c = tabla.Find(nombre);
    if (!c)
        throw DbError("columna", "No se encuentra el campo '" + nombre + "' en la tabla '" + tabla.name + "'.", campos);
    return *c;
}

void Anadir(std::vector<Asignacion>& asignaciones, const datos::ColumnInfo& columna, std::string literal,
            const std::string& campos) {
    for (const Asignacion& a : asignaciones)
        if (a.columna == &columna)
            throw DbError("columna", "El campo '" + columna.name + "' está repetido en la lista de campos.", campos);
    asignaciones.push_back({&columna, std::move(literal)});
}

// The FieldList's pairs as literals of their columns, then the shop's name
// for a table of several shops.
std::vector<Asignacion> Asignaciones(const datos::TableInfo& tabla, const std::string& campos,
                                     const std::string& nombreTienda, bool multitienda, bool admiteColumnas) {
    const datos::ColumnInfo* tienda = multitienda ? tabla.Find("Tienda") : nullptr;
    std::vector<Asignacion> asignaciones;
    for (const CampoFieldList& par : FieldList::Leer(campos)) {
        const datos::ColumnInfo& columna = Columna(tabla, par.nombre, campos);
        if (&columna == tienda) continue;  // the service writes the shop itself
        Anadir(asignaciones, columna, LiteralDeCampo(tabla, columna, par.valor, admiteColumnas), campos);
    }
    if (tienda) asignaciones.push_back({tienda, LiteralDeValor(tabla, *tienda, Value(nombreTienda))});
    return asignaciones;
}

std::string Nombre(const std::string& identificador) { return "[" + identificador + "]"; }

std::string Donde(const std::string& condicion) {
    std::size_t a = condicion.find_first_not_of(" \t\r\n");
    return a == std::string::npos ? "" : " where " + condicion.substr(a);
}

void EjecutarInsert(Connection& conexion, const datos::TableInfo& tabla, const std::vector<Asignacion>& asignaciones) {
    if (asignaciones.empty())
        throw DbError("columnas", "No hay campos que insertar en la tabla '" + tabla.name + "'.", "");
    std::string columnas, valores;
    for (const Asignacion& a : asignaciones) {
        if (!columnas.empty()) {
            columnas += ", ";
            valores += ", ";
        }
        columnas += Nombre(a.columna->name);
        valores += a.literal;
    }
    conexion.Execute("insert into " + Nombre(tabla.name) + " (" + columnas + ") values (" + valores + ")");
}

}  // namespace

RecordWriter& RecordWriter::Instancia() {
    static RecordWriter instancia;
    return instancia;
}

void RecordWriter::FijarPuesto(const std::string& terminal, const std::string& empleado) {
    Puesto& p = PuestoActual();
    std::lock_guard<std::mutex> lock(p.mu);
    p.terminal = terminal;
    p.empleado = empleado;
}

void RecordWriter::Insertar(Connection& conexion, const std::string& tabla, const std::string& campos,
                            const std::string& nombreTienda, bool multitienda, const std::string&) {
    const datos::TableInfo& t = Tabla(conexion, tabla);
    // A new row has no values of its own to compute with.
    EjecutarInsert(conexion, t, Asignaciones(t, campos, nombreTienda, multitienda, false));
}

void RecordWriter::Actualizar(Connection& conexion, const std::string& tabla, const std::string& campos,
                              const std::string& nombreTienda, bool multitienda, const std::string& condicion) {
    const datos::TableInfo& t = Tabla(conexion, tabla);
    std::vector<Asignacion> asignaciones = Asignaciones(t, campos, nombreTienda, multitienda, true);
    if (asignaciones.empty()) return;
    std::string sets;
    for (const Asignacion& a : asignaciones) {
        if (!sets.empty()) sets += ", ";
        sets += Nombre(a.columna->name) + " = " + a.literal;
    }
    conexion.Execute("update " + Nombre(t.name) + " set " + sets + Donde(condicion));
}

void RecordWriter::Borrar(Connection& conexion, const std::string& tabla, const std::string&, bool,
                          const std::string& condicion) {
    const datos::TableInfo& t = Tabla(conexion, tabla);
    conexion.Execute("delete * from " + Nombre(t.name) + Donde(condicion));
}

void RecordWriter::InsertarValores(Connection& conexion, const std::string& tabla,
                                   const std::vector<std::pair<std::string, Value>>& valores) {
    const datos::TableInfo& t = Tabla(conexion, tabla);
    std::vector<Asignacion> asignaciones;
    for (const auto& [nombre, valor] : valores) {
        const datos::ColumnInfo& columna = Columna(t, nombre, "");
        Anadir(asignaciones, columna, LiteralDeValor(t, columna, valor), "");
    }
    EjecutarInsert(conexion, t, asignaciones);
}

void RecordWriter::RegistrarCambio(Connection& conexion, const std::string& tabla, const std::string& condicion,
                                   const std::string&, const std::string&, const std::string& codigo,
                                   const std::string& descripcion) {
    std::string terminal, empleado;
    {
        Puesto& p = PuestoActual();
        std::lock_guard<std::mutex> lock(p.mu);
        terminal = p.terminal;
        empleado = p.empleado;
    }
    InsertarValores(conexion, "registrocambios",
                    {{"tabla", Value(tabla)},
                     {"condicion", Value(condicion)},
                     {"codigo", Value(codigo)},
                     {"descripcion", Value(descripcion)},
                     {"fecha", Value(Date())},
                     {"hora", Value(Time())},
                     {"terminal", Value(terminal)},
                     {"empleado", Value(empleado)}});
}

}  // namespace tpv
