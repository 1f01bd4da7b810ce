#include "closing/deposito.hpp"

#include "core/runtime/conversiones.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/lineas_venta.hpp"

namespace tpv {

namespace {

void EscribirDinDep(const std::string& cliente, double valor) {
    Sesion& s = sesion();
    RecordWriter::Instancia().Actualizar(s.Conexion, "Clientes", "dindep=" + CStr(Value(valor)) + "|", s.NombreTienda,
                                         s.Multitienda, "codigo = " + cliente);
}

RegistroCliente* EnLista(std::int32_t indiceCliente) {
    ListaClientes& lista = sesion().Clientes;
    if (indiceCliente < 0 || static_cast<std::size_t>(indiceCliente) >= lista.size()) return nullptr;
    return &lista[static_cast<std::size_t>(indiceCliente)];
}

}  // namespace

void IngresoDeposito(Label& lblNumVenta, std::int32_t cliente, double importe, ControlesVenta& controles) {
    const Sesion& s = sesion();
    if (s.CodigoEmpleadoActual == -1) return;
    const std::string empleado = std::to_string(s.CodigoEmpleadoActual);
    const std::int32_t numero = AbrirVenta(lblNumVenta, cliente, s.NombreEmpleadoActual, empleado);
    controles.ImporteDinDep = importe;
    AnadirItem(numero, kServicioDeposito, 1, "", "S", empleado, s.NombreEmpleadoActual, 0, controles);
}

double AumentarDinDep(std::int32_t indiceCliente, const std::string& cliente, double pagado) {
    RegistroCliente* ficha = EnLista(indiceCliente);
    if (!ficha) return 0.0;
    const double saldo = ficha->DinDep;
    EscribirDinDep(cliente, pagado + saldo);
    ficha->DinDep = pagado + saldo;
    return saldo;
}

void GrabarDinDep(std::int32_t indiceCliente, std::int32_t cliente, double valor) {
    EscribirDinDep(std::to_string(cliente), valor);
    if (RegistroCliente* ficha = EnLista(indiceCliente)) ficha->DinDep = valor;
}

}  // namespace tpv
