#include "printing/factura.hpp"

#include <memory>

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/fuente_informes.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

namespace {

// The reporting connection of the last staging stays open until the program
// ends, as reports read the staged rows through the same data source.
std::unique_ptr<Connection>& ConexionInformes() {
    static std::unique_ptr<Connection> cn;
    return cn;
}

struct Tienda {
    std::string nombre, direccion, poblacion, cif, cp, provincia, telefono;
};

struct ClienteFactura {
    std::string nombre = "Generico";
    std::string nif, direccion, cp, poblacion, provincia, telefono;
};

Tienda LeerTienda(Connection& cn) {
    Tienda t;
    Recordset rs;
    rs.Open("Select nombre,direccion,poblacion,cif,cp,provincia,telefono from opciones", cn, adOpenStatic);
    if (!rs.Eof()) {
        t.nombre = Texto(rs.Get("nombre"));
        t.direccion = Texto(rs.Get("direccion"));
        t.poblacion = Texto(rs.Get("poblacion"));
        t.cif = Texto(rs.Get("cif"));
        t.cp = Texto(rs.Get("cp"));
        t.provincia = Texto(rs.Get("provincia"));
        t.telefono = Texto(rs.Get("telefono"));
    }
    rs.Close();
    return t;
}

ClienteFactura LeerCliente(Connection& cn, std::int32_t codigo) {
    ClienteFactura c;
    Recordset rs;
    rs.Open("select nombre,apellidos,direccion,nif,poblacion,provincia,cp,telefono2,telefono1 from clientes where "
            "codigo = " +
                std::to_string(codigo),
            cn, adOpenStatic);
    if (!rs.Eof()) {
        c.nombre = Texto(rs.Get("nombre")) + " " + Texto(rs.Get("apellidos"));
        c.nif = Texto(rs.Get("nif"));
        c.direccion = Texto(rs.Get("direccion"));
        c.cp = Texto(rs.Get("cp"));
        c.poblacion = Texto(rs.Get("poblacion"));
        c.provincia = Texto(rs.Get("provincia"));
        c.telefono = Texto(rs.Get("telefono2"));
        if (c.telefono.empty()) c.telefono = Texto(rs.Get("telefono1"));
    }
    rs.Close();
    return c;
}

}  // namespace

void PrepararFactura(std::int32_t numero) {
    Sesion& s = sesion();
    ClienteFactura cliente;
    Value fecha = Date();
    Value descuentoCabecera;

    auto informes = std::make_unique<Connection>();
    informes->Open(ResolverFuenteDatos(kFuenteInformes));
    ConexionInformes() = std::move(informes);
    Connection& cnInformes = *ConexionInformes();
    cnInformes.Execute("delete * from informes");

    const Tienda tienda = LeerTienda(s.Conexion);

    Recordset cabecera;
    cabecera.Open(
        "Select cabecera_factura.fecha,cabecera_factura.CLIENTE,cabecera_factura.descuento,cabecera_factura.fechaventa "
        "from cabecera_factura where numero = " +
            std::to_string(numero),
        s.Conexion, adOpenStatic);
    if (!cabecera.Eof()) {
        const Value& codigoCliente = cabecera.Get("cliente");
        if (!codigoCliente.IsNull() && CDbl(codigoCliente) > 0) cliente = LeerCliente(s.Conexion, CLng(codigoCliente));
        descuentoCabecera = cabecera.Get("descuento");
        fecha = cabecera.Get("fechaventa");
    }
    cabecera.Close();

    const std::string& identificacion = s.IdentificacionFiscal;
    const std::string textoCif = identificacion.empty() ? tienda.cif : identificacion + ": " + tienda.cif;
    const std::string etiquetaCif = identificacion.empty() ? "C.I.F:" : identificacion + ": ";
    const std::string notaIva = s.opciones.iva ? "IVA incluido" : "IVA No incluido";

    Recordset lineas;
    lineas.Open("Select * from detalle_factura where num_factura = " + std::to_string(numero), s.Conexion,
                adOpenStatic);
    if (!lineas.Eof()) {
        Recordset rs;
        rs.Open("Select * from informes", cnInformes, adOpenKeyset, adLockOptimistic);
        for (; !lineas.Eof(); lineas.MoveNext()) {
            rs.AddNew();
            rs.Set("texto1", tienda.nombre);
            rs.Set("texto2", textoCif);
            rs.Set("TEXTO20", etiquetaCif);
            rs.Set("texto3", tienda.direccion);
            rs.Set("texto4", tienda.cp);
            rs.Set("texto5", tienda.provincia);
            rs.Set("texto6", cliente.nombre);
            rs.Set("texto9", lineas.Get("producto"));
            rs.Set("texto11", "Tlf: " + tienda.telefono);
            rs.Set("texto12", cliente.nif);
            rs.Set("texto13", "Factura");
            rs.Set("texto14", cliente.direccion);
            rs.Set("texto15", cliente.cp);
            rs.Set("texto16", cliente.poblacion);
            rs.Set("texto17", cliente.provincia);
            rs.Set("texto18", cliente.telefono);
            rs.Set("texto29", notaIva);
            rs.Set("Fecha1", fecha);
            rs.Set("numerico1", numero);
            rs.Set("numerico2", lineas.Get("precio"));
            rs.Set("numerico3", lineas.Get("impuesto"));
            rs.Set("numerico4", lineas.Get("unidades"));
            rs.Set("numerico5", lineas.Get("descuento"));
            rs.Set("numerico6", lineas.Get("tipoimpuesto"));
            rs.Set("numerico20", lineas.Get("Precio_Unit"));
            rs.Set("numerico21", descuentoCabecera);
            rs.Update();
        }
        rs.Close();
    }
    lineas.Close();
}

}  // namespace tpv
