#include "core/sesion/configuracion.hpp"

#include <filesystem>
#include <system_error>

#include "core/runtime/conversiones.hpp"
#include "core/servicios/fuente_informes.hpp"
#include "core/servicios/suite_context.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/pantalla.hpp"
#include "core/sesion/sesion.hpp"
#include "core/sesion/tarifas.hpp"

namespace fs = std::filesystem;

namespace tpv {

namespace {

// The size every screen is drawn for, in twips.
constexpr double kAnchoDiseno = 15360.0;
constexpr double kAltoDiseno = 11520.0;

bool ExisteFichero(const std::string& ruta) {
    std::error_code ec;
    return !ruta.empty() && fs::exists(ruta, ec);
}

// The flags from privacidad on are true for anything but 0, NULL included.
bool CiertoSalvoCero(const Value& v) { return v.IsNull() || CDbl(v) != 0.0; }

void LeerOpciones() {
    OpcionesTienda& o = sesion().opciones;
    Recordset rs;
    lectura::Abrir(rs,
                   "Select nombre,telefono,direccion,iva, modopantallacaja ,empleadoVentaFijo,agenda,Deposito,"
                   "clientepordefecto,CodigoBarras,UtilizaColores_FPago, numdecimales,NumCopiasFactura,"
                   "UtilizaColores_empleados,VentasMultiEmpleado,privacidad,abrircajetin,imprimirticket,facturas "
                   "from opciones");
    if (rs.RecordCount() > 0) {
        o.nombre = CStr(rs["nombre"]);
        o.telefono = Texto(rs["telefono"]);
        o.direccion = Texto(rs["Direccion"]);
        o.NumDecimales = CInt(rs["NumDecimales"]);
        o.iva = CBool(rs["iva"]);
        o.modopantallacaja = CInt(rs["modopantallacaja"]);
        o.empleadoVentaFijo = CBool(rs["empleadoVentaFijo"]);
        o.VentasMultiEmpleado = CBool(rs["VentasMultiEmpleado"]);
        o.clientepordefecto = CBool(rs["clientepordefecto"]);
        o.CodigoBarras = CBool(rs["CodigoBarras"]);
        // Deposit money needs an exact -1.
        const Value& deposito = rs["Deposito"];
        o.Deposito = !deposito.IsNull() && CDbl(deposito) == -1.0;
        o.UtilizaColores_FPago = CBool(rs["UtilizaColores_FPago"]);
        o.UtilizaColores_empleados = CBool(rs["UtilizaColores_empleados"]);
        const Value& copias = rs["numcopiasfactura"];
        o.NumCopiasFactura = copias.IsNull() ? 1 : CInt(copias);
        o.privacidad = CiertoSalvoCero(rs["privacidad"]);
        o.abrircajetin = CiertoSalvoCero(rs["abrirCajetin"]);
        o.imprimirticket = CiertoSalvoCero(rs["ImprimirTicket"]);
        o.facturas = CiertoSalvoCero(rs["facturas"]);
    }
    rs.Close();
    // Fmt(x) rounds to the shop's money decimals from now on.
    FijarNumDecimales(o.NumDecimales);
}

void LeerOpcionesTerminal() {
    Sesion& s = sesion();
    Recordset rs;
    lectura::Abrir(rs, "Select terminal,AnimacionesActivas,empleado from opciones_terminal where identificador = '" +
                           s.IdentificadorTerminal + "'");
    if (rs.RecordCount() > 0) {
        s.TerminalActual = CStr(rs["terminal"]);
        s.opciones_terminal.AnimacionesActivas = CBool(rs["AnimacionesActivas"]);
        s.EmpleadoTerminal = CLng(rs["empleado"]);
    }
    rs.Close();
}

void LeerSegundoImpuesto() {
    Recordset rs;
    lectura::Abrir(rs, "Select segundoimpuesto from configuracionregional");
    if (rs.RecordCount() > 0) sesion().configuracionregional.segundoimpuesto = CBool(rs["segundoimpuesto"]);
    rs.Close();
}

// "S" and "T" both mean several shops: sale rows then carry the shop's name.
void LeerMultitienda() {
    Sesion& s = sesion();
    s.Multitienda = false;
    s.NombreTienda = "";
    Recordset rs;
    lectura::Abrir(rs, "Select multitienda, nombretienda from opciones");
    if (rs.RecordCount() > 0 && !rs["multitienda"].IsNull()) {
        const std::string valor = CStr(rs["multitienda"]);
        if (valor == "S" || valor == "T") {
            s.Multitienda = true;
            s.NombreTienda = CStr(rs["nombretienda"]);
        }
    }
    rs.Close();
}

std::string LeerImpresora(const std::string& tipo) {
    Recordset rs;
    lectura::Abrir(rs, "Select impresora from impresoras where tipo = '" + tipo + "' and terminal = '" +
                           sesion().TerminalActual + "'");
    std::string impresora;
    if (rs.RecordCount() > 0) impresora = CStr(rs["impresora"]);
    rs.Close();
    return impresora;
}

void LeerImpresoras() {
    Sesion& s = sesion();
    s.ImpresoraTickets = LeerImpresora("T");
    s.ImpresoraListados = LeerImpresora("L");
    Recordset rs;
    lectura::Abrir(rs, "Select puerto,secuencia,tipo,fuente from impresoras where terminal = '" + s.TerminalActual +
                           "' and tipo = 'T'");
    if (rs.RecordCount() > 0) {
        s.PuertoImpresora = Texto(rs["Puerto"]);
        s.SecuenciaApertura = Texto(rs["secuencia"]);
        s.FuenteImpresora = Texto(rs["fuente"]);
    }
    rs.Close();
}

// The configured size stands only when it is at least the designed one;
// otherwise the real display is used, less the height of the task bar.
void LeerTamanoPantalla() {
    Sesion& s = sesion();
    SuiteContext& contexto = SuiteContext::Instancia();
    s.AnchoPantalla = contexto.AnchoConfigurado(s.Conexion);
    s.AltoPantalla = contexto.AltoConfigurado(s.Conexion);
    s.AnchoDiseno = kAnchoDiseno;
    s.AltoDiseno = kAltoDiseno;
    if (!(s.AltoPantalla >= 11085.0 && s.AnchoPantalla >= 15360.0)) {
        s.AltoPantalla = PantallaActual().AltoTwips() - 350.0;
        s.AnchoPantalla = PantallaActual().AnchoTwips();
    }
}

void LeerRegion() {
    ConfiguracionRegional& region = sesion().configuracionregional;
    Recordset rs;
    lectura::Abrir(rs, "Select bandera from configuracionregional");
    if (rs.RecordCount() > 0) {
        const std::string bandera = CStr(rs["Bandera"]);
        region.bandera = ExisteFichero(bandera) ? bandera : "";
    }
    rs.Close();
    lectura::Abrir(rs, "Select nombre from configuracionregional");
    if (rs.RecordCount() > 0) region.nombre = CStr(rs["nombre"]);
    rs.Close();
}

void LeerTarifas() {
    Sesion& s = sesion();
    s.Tarifas.clear();
    s.TarifaActual = LeerTarifaAplicada();
    CargarTarifas();
}

// A flag kept as text: `siNoHay` unless the row holds exactly `contrario`.
bool LeerFlagTexto(const std::string& indice, const char* contrario, bool siNoHay) {
    const lectura::Clave c = lectura::LeerClave(indice);
    if (c.existe && !c.datoa.IsNull() && CStr(c.datoa) == contrario) return !siNoHay;
    return siNoHay;
}

void LeerVisor() {
    Sesion& s = sesion();
    const lectura::Clave c = lectura::LeerClave("Visor" + s.IdentificadorTerminal);
    s.VisorActivo = c.existe;
    if (c.existe) {
        s.PuertoVisor = Texto(c.otros);
        s.DatoVisor = Texto(c.datoa);
    }
}

// The first start writes the default ordering into the table.
void LeerCampoOrdenItemsCaja() {
    Sesion& s = sesion();
    Recordset rs;
    lectura::AbrirParaCambiar(rs, "Select datoA,indice from relaciones_fijas where indice ='CampoOrdenItemsCaja'");
    if (rs.RecordCount() < 1) {
        rs.AddNew();
        rs["indice"] = Value("CampoOrdenItemsCaja");
        rs["DatoA"] = Value("Nombre");
        rs.Update();
        s.CampoOrdenItemsCaja = "Nombre";
    } else if (rs["DatoA"].IsNull() || CStr(rs["DatoA"]).empty()) {
        rs["DatoA"] = Value("Nombre");
        rs.Update();
        s.CampoOrdenItemsCaja = "Nombre";
    } else {
        s.CampoOrdenItemsCaja = CStr(rs["DatoA"]);
    }
    rs.Close();
}

void LeerIdentificacionFiscal() {
    Recordset rs;
    lectura::Abrir(rs, "Select Identificacion_Fiscal from configuracionregional");
    if (rs.RecordCount() > 0) sesion().IdentificacionFiscal = CStr(rs["Identificacion_Fiscal"]);
    rs.Close();
}

void LeerDiasCaducidadValeDescuento() {
    const lectura::Clave c = lectura::LeerClave("DiasCaducidadValeDescuento");
    sesion().DiasCaducidadValeDescuento = c.existe && !c.daton.IsNull() ? CLng(c.daton) : 15;
}

// The configurable ticket is used when it is chosen and there is a layout.
void LeerTicketConfigurable() {
    Sesion& s = sesion();
    s.TicketConfigurable = false;
    const lectura::Clave c = lectura::LeerClave("DisTicketUtilizado");
    if (!c.existe || c.datoa.IsNull() || CStr(c.datoa) != "NUEVO") return;
    Recordset rs;
    lectura::Abrir(rs, "Select * from confticket");
    s.TicketConfigurable = rs.RecordCount() > 0;
    rs.Close();
}

// The logo is printed from the local photo folder; a logo only found beside
// the database is copied there first.
std::string RutaLogoLocal(const std::string& nombre) {
    const Sesion& s = sesion();
    const std::string local = s.CarpetaFotos + nombre;
    const std::string servidor = s.CarpetaFotosServidor + nombre;
    if (!ExisteFichero(local) && ExisteFichero(servidor)) {
        std::error_code ec;
        const fs::path destino(local);
        if (destino.has_parent_path()) fs::create_directories(destino.parent_path(), ec);
        fs::copy_file(servidor, destino, fs::copy_options::overwrite_existing, ec);
        if (ec) throw RuntimeError(75, "Error de acceso a ruta o archivo: " + local);
    }
    return local;
}

void LeerLogoTicket() {
    Sesion& s = sesion();
    const lectura::Clave logo = lectura::LeerClave("LogoTicket");
    if (!logo.existe) return;
    s.LogoTicket = logo.datoa.IsNull() ? "" : RutaLogoLocal(CStr(logo.datoa));

    const lectura::Clave tam = lectura::LeerClave("TamLogoTicket");
    if (tam.existe) {
        s.LogoAncho = CDbl(tam.datoa);
        s.LogoAlto = CDbl(tam.otros);
        s.LogoPosicion = CLng(tam.daton);
    }
}

void LeerClavesRelacionesFijas() {
    Sesion& s = sesion();
    const lectura::Clave comentario = lectura::LeerClave("ComentarioTicketRegalo");
    s.ComentarioTicketRegalo = Texto(comentario.datoa) + Texto(comentario.otros);
    LeerPedirCantidad();
    s.PedirPrecioTotal = LeerFlagTexto("PedirPrecioTotal", "NO", true);

    const lectura::Clave filtro = lectura::LeerClave("FiltroPantallaTactil");
    s.FiltroPantallaTactil = filtro.datoa.IsNull() ? "Proveedores" : CStr(filtro.datoa);

    LeerVisor();
    s.LineaXProducto = LeerFlagTexto("LineaXProducto", "SI", false);
    LeerCampoOrdenItemsCaja();
    LeerIdentificacionFiscal();
    LeerDiasCaducidadValeDescuento();
    LeerTicketConfigurable();
    LeerLogoTicket();
}

// The value of a key kept as text, the row added when missing.
void GuardarClave(const std::string& indice, const std::string& valor) {
    Recordset rs;
    lectura::AbrirParaCambiar(rs, "Select * from relaciones_fijas where indice = '" + indice + "'");
    if (rs.RecordCount() < 1) {
        rs.AddNew();
        rs["indice"] = Value(indice);
    }
    rs["DatoA"] = Value(valor);
    rs.Update();
    rs.Close();
}

const char* SiNo(bool flag) { return flag ? "SI" : "NO"; }

}  // namespace

void CargarConfiguracion() {
    Sesion& s = sesion();
    LeerOpciones();
    LeerOpcionesTerminal();
    LeerSegundoImpuesto();
    LeerMultitienda();
    LeerImpresoras();
    s.SegundoIdentificador = LeerSegundoIdentificador();
    LeerTamanoPantalla();
    LeerRegion();
    s.ClaveTerminal = s.IdentificadorTerminal + s.SegundoIdentificador;
    s.Sector = SuiteContext::Instancia().Sector(s.Conexion);
    LeerTarifas();
    LeerClavesRelacionesFijas();
}

bool LeerPedirCantidad() {
    sesion().PedirCantidad = LeerFlagTexto("PedirCantidadProductos", "NO", true);
    return sesion().PedirCantidad;
}

void GuardarPedirCantidad(bool pedir) { GuardarClave("PedirCantidadProductos", SiNo(pedir)); }
void GuardarPedirPrecioTotal(bool pedir) { GuardarClave("PedirPrecioTotal", SiNo(pedir)); }
void GuardarLineaXProducto(bool lineaPorUnidad) { GuardarClave("LineaXProducto", SiNo(lineaPorUnidad)); }
void GuardarFiltroPantallaTactil(const std::string& filtro) { GuardarClave("FiltroPantallaTactil", filtro); }

void GuardarDiasCaducidadValeDescuento(std::int32_t dias) {
    Connection& cn = sesion().Conexion;
    cn.Execute("delete * from relaciones_fijas where indice='DiasCaducidadValeDescuento'");
    cn.Execute("insert into relaciones_fijas (indice,daton) values ('DiasCaducidadValeDescuento'," +
               std::to_string(dias) + ")");
}

}  // namespace tpv
