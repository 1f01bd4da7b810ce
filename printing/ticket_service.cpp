#include "printing/ticket_service.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

namespace {

// An amount as the settlement screen writes it; "" or anything else is 0.
double Cantidad(const std::string& texto) {
    double valor = 0.0;
    return LeerNumero(texto, valor) ? valor : 0.0;
}

void Imprimir(Connection& conexion, const std::string& impresora, std::int32_t numero, const std::string& tabla,
              const std::string& devolucion, const std::string& entrega) {
    const Sesion& s = sesion();
    double propina = 0.0;
    ImprimirConfONOFF ticket(RotulosDelServicio(conexion));
    ticket.ImprimirNuevoTicket(conexion, impresora, s.LogoTicket, s.LogoTicket, s.LogoAlto, s.LogoAncho,
                               static_cast<float>(s.LogoPosicion), numero, tabla, Cantidad(entrega),
                               Cantidad(devolucion), 0, propina);
}

std::string Centrada(const std::string& texto) { return texto.empty() ? "" : "#C" + texto; }

}  // namespace

ConfTicket RotulosDelServicio(Connection& conexion) {
    std::string nombre, direccion, telefono, cif, cp, poblacion;
    bool iva = false;
    Recordset rs;
    rs.Open("Select nombre,direccion,telefono,cif,cp,poblacion,iva from opciones", conexion, adOpenStatic);
    if (!rs.Eof()) {
        nombre = Texto(rs.Get("nombre"));
        direccion = Texto(rs.Get("direccion"));
        telefono = Texto(rs.Get("telefono"));
        cif = Texto(rs.Get("cif"));
        cp = Texto(rs.Get("cp"));
        poblacion = Texto(rs.Get("poblacion"));
        iva = !rs.Get("iva").IsNull() && CDbl(rs.Get("iva")) != 0;
    }
    rs.Close();
    std::string impuesto = "IVA";
    rs.Open("Select nombreimpuesto1 from configuracionregional", conexion, adOpenStatic);
    if (!rs.Eof() && !Texto(rs.Get("nombreimpuesto1")).empty()) impuesto = Texto(rs.Get("nombreimpuesto1"));
    rs.Close();
    const std::string& identificacion = sesion().IdentificacionFiscal;

    ConfTicket c;
    c.EnNegrita = true;
    c.nomEmpresa = Centrada(nombre);
    c.Direccion = Centrada(direccion);
    c.poblacion = Centrada(Trim(cp + " " + poblacion));
    c.cif = cif.empty() ? "" : Centrada((identificacion.empty() ? "C.I.F." : identificacion) + ": " + cif);
    c.telefono = telefono.empty() ? "" : Centrada("Tlf: " + telefono);
    c.nomTicket = "Ticket: ";
    c.empleado = "Le atendió: ";
    c.cliente = "Cliente: ";
    c.CifCliente = "NIF: ";
    c.telefonocliente = "Tlf: ";
    c.DirCliente = "";
    c.unidades = "Ud";
    c.descripcion = "Descripción";
    c.pUnitario = "Precio";
    c.total = "Importe";
    c.mostrarPunit = true;
    c.cuota = "Cuota";
    c.totalfinal = "TOTAL";
    c.entrega = "Entregado";
    c.cambio = "Cambio";
    c.desgloseImpuestos = -1;
    c.nomImpuesto = impuesto;
    c.base = "Base";
    c.FormaPago = "Forma de pago: ";
    c.ImpuestosIncluidos = iva ? impuesto + " incluido" : "";
    c.Gracias = "Gracias por su visita";
    return c;
}

void TicketService::ImprimirTicketVenta(Connection& conexion, const std::string& impresoraTickets,
                                        std::int32_t numero, const std::string& devolucion,
                                        const std::string& entrega) {
    Imprimir(conexion, impresoraTickets, numero, "cabecera_factura", devolucion, entrega);
}

void TicketService::ImprimirTicketAbono(Connection& conexion, const std::string& impresoraTickets,
                                        std::int32_t numero, const std::string& devolucion,
                                        const std::string& entrega) {
    Imprimir(conexion, impresoraTickets, numero, "cabecera_abono", devolucion, entrega);
}

}  // namespace tpv
