#include "sale/ventas_abiertas.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/linea_comun.hpp"
#include "sale/lineas_venta.hpp"
#include "sale/promociones.hpp"

namespace tpv {

namespace {

std::string Num(std::int32_t n) { return CStr(Value(n)); }

// The first row of the modification of an open sale, if it has one.
void AbrirModificacion(Recordset& rs, std::int32_t numero) {
    rs.Open("Select * from ventasdevolucion where numerofacturatemporal=" + Num(numero), sesion().Conexion);
}

// The employee under an open sale's button: the short name of the lines with
// one more blank between the first name and the initials.
std::string EmpleadoDelBoton(const std::string& empleado) {
    const std::string corto = NombreCorto(empleado);
    const std::string nombre = Left(empleado, InStr(empleado, " "));
    return nombre + " " + Mid(corto, static_cast<long>(Len(nombre)) + 1);
}

ButtonRecord BotonVenta(Recordset& rs, std::size_t i, const std::string& colorModificacion) {
    const Sesion& s = sesion();
    ButtonRecord b;
    const std::int32_t numero = CLng(rs["numero"]);
    std::string mostrado = CStr(rs["numero"]);
    std::string inicio;
    const bool modificada = EsVentaModificada(numero);
    if (modificada) {
        mostrado = Num(FacturaOrigen(numero));
        inicio = "Modificando ";
    }
    b.TextoSuperior = inicio + "\r\n-" + mostrado + "-\r\n" + Texto(rs["nom"]) + " " + Texto(rs["ape"]);
    if (modificada)
        b.Color = colorModificacion;
    else
        b.Color = s.ColoresGenericos[i <= 3 ? i : 0];
    b.Imagen = rs["foto"].IsNull() ? "" : s.CarpetaFotos + Texto(rs["foto"]);
    b.Codigo = CStr(rs["numero"]);
    b.Texto = EmpleadoDelBoton(Texto(rs["empleado"]));
    return b;
}

bool EsCero(const Value& v) { return !v.IsNull() && CDbl(v) == 0.0; }

}  // namespace

void CargarPanelVentas() {
    Sesion& s = sesion();
    s.PanelVentas.assign(1, ButtonRecord{});
    Recordset rs;
    rs.Open("SELECT cabecera_factura_temp.Numero AS numero, clientes.Nombre AS nom, clientes.Apellidos AS ape, "
            "clientes.Foto AS foto,cabecera_factura_temp.empleado, cabecera_factura_temp.cliente "
            "  FROM cabecera_factura_temp LEFT JOIN clientes ON cabecera_factura_temp.Cliente = clientes.Codigo "
            " where cabecera_factura_temp.presupuesto = 0 and (num_albaran <=0 or num_albaran is null)"
            " and cabecera_factura_temp.terminal = '" +
                s.TerminalActual + "'",
            s.Conexion);
    if (rs.Eof()) return;
    // A modification is painted with the scheme's highlight colour.
    const std::string colorModificacion = ColourScheme().ColorResalte(s.Conexion, s.EsquemaColores);
    s.PanelVentas.clear();
    for (std::size_t i = 0; !rs.Eof(); rs.MoveNext(), ++i) s.PanelVentas.push_back(BotonVenta(rs, i, colorModificacion));
    s.PanelVentas.push_back(ButtonRecord{});
}

void MostrarLineasVenta(std::int32_t numero, Grid& grid, bool& ventaDinDep) {
    Recordset rs;
    rs.Open("Select producto,precio_unit,nombreempleado,tipo_venta,descuento,codempleado,codigo,impuesto,"
            "tipoImpuesto,unidades,precio,recargo,impuesto_2,codfamilia from detalle_factura_temp where num_factura "
            "= " +
                Num(numero),
            sesion().Conexion);
    if (rs.Eof()) return;
    long f = 0;
    grid.SetRows(grid.Rows() + rs.RecordCount());
    for (; !rs.Eof(); rs.MoveNext()) {
        ++f;
        auto poner = [&](long columna, std::string texto) { grid.SetTextMatrix(f, columna, std::move(texto)); };
        const std::string producto = Texto(rs["producto"]);
        const std::string tipo = Texto(rs["tipo_venta"]);
        poner(kColNombre, producto);
        poner(kColPvp, Texto(rs["precio_unit"]));
        poner(kColEmpleado, NombreCorto(Texto(rs["nombreempleado"])));
        poner(kColTipo, tipo);
        poner(kColInvitado, "");
        poner(kColPorcentaje, Texto(rs["descuento"]));
        poner(kColCodEmpleado, Texto(rs["codempleado"]));
        poner(kColCodigo, Texto(rs["codigo"]));
        poner(kColTipoIva, Texto(rs["tipoimpuesto"]));
        poner(kColUnidades, Texto(rs["unidades"]));
        poner(kColImporte, Texto(rs["precio"]));
        poner(kColRecargo, Texto(rs["recargo"]));
        poner(kColPrecio, Texto(rs["precio_unit"]));
        poner(kColImpuesto2, CStr(Fmt(CeroSiNulo(rs["impuesto"]) + CeroSiNulo(rs["impuesto_2"]))));
        poner(kColCodFamilia, Texto(rs["codfamilia"]));
        if (tipo == "S" && !rs["codigo"].IsNull() && CDbl(rs["codigo"]) == 2) ventaDinDep = true;
        if (EsCero(rs["precio"]) && EsCero(rs["descuento"])) {
            poner(kColNombre, "  REGALO " + producto);
            ColorearFilaRegalo(FilaCorta(f), grid);
        }
    }
}

bool EsVentaModificada(std::int32_t numero) {
    Recordset rs;
    AbrirModificacion(rs, numero);
    return !rs.Eof();
}

std::int32_t FacturaOrigen(std::int32_t numero) {
    Recordset rs;
    AbrirModificacion(rs, numero);
    if (rs.Eof() || rs["NumeroFacturaReal"].IsNull()) return 0;
    return CLng(rs["NumeroFacturaReal"]);
}

void LeerDatosVenta(std::int32_t numero, std::string& codigoEmpleado, std::string& empleado, std::string& cliente,
                    std::string& nombreCliente) {
    Recordset rs;
    rs.Open("SELECT cabecera_factura_temp.codigo_empleado, cabecera_factura_temp.empleado, "
            "cabecera_factura_temp.cliente,clientes.nombre & ' ' & clientes.apellidos as nomCli"
            "  FROM cabecera_factura_temp LEFT JOIN clientes ON cabecera_factura_temp.Cliente = clientes.Codigo "
            "where cabecera_factura_temp.numero = " +
                Num(numero),
            sesion().Conexion);
    if (rs.Eof()) return;
    codigoEmpleado = Texto(rs["codigo_empleado"]);
    empleado = Texto(rs["empleado"]);
    cliente = Texto(rs["cliente"]);
    nombreCliente = Texto(rs["nomCli"]);
}

bool DeudaCliente(const std::string& cliente, double& deuda) {
    Connection& cn = sesion().Conexion;
    Recordset rs;
    rs.Open("Select sum(importe) as importeTotal from cabecera_pago where cliente = " + cliente + " and estado = 0",
            cn);
    deuda = rs.Eof() ? 0.0 : CeroSiNulo(rs["importeTotal"]);
    if (deuda > 0) {
        Recordset pagos;
        pagos.Open("Select sum(detalle_pago.importe) as importetotal from detalle_pago INNER JOIN cabecera_pago on "
                   "detalle_pago.num_pago=cabecera_pago.num_pago where cabecera_pago.cliente = " +
                       cliente + " and cabecera_pago.estado =0",
                   cn);
        deuda -= pagos.Eof() ? 0.0 : CeroSiNulo(pagos["importetotal"]);
    }
    deuda = Fmt(deuda, sesion().opciones.NumDecimales);
    return deuda > 0;
}

}  // namespace tpv
