#include "core/sesion/sesion.hpp"

#include "core/servicios/record_writer.hpp"

namespace tpv {

void Sesion::FijarEmpleadoActual(std::int32_t codigo, const std::string& nombre) {
    CodigoEmpleadoActual = codigo;
    NombreEmpleadoActual = nombre;
    RecordWriter::FijarPuesto(TerminalActual, std::to_string(codigo));
}

void Sesion::Reiniciar() {
    Conexion.Close();
    *this = Sesion();
    RecordWriter::FijarPuesto("", "");
}

Sesion& sesion() {
    static Sesion instancia;
    return instancia;
}

}  // namespace tpv
