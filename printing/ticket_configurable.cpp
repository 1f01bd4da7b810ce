#include "printing/ticket_configurable.hpp"

#include <filesystem>
#include <system_error>

#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/en_letras.hpp"
#include "printing/page_device.hpp"

namespace tpv {

namespace {

bool Interruptor(const Value& v) { return !v.IsNull() && CDbl(v) != 0; }
std::int32_t Entero(const Value& v) { return v.IsNull() ? 0 : CLng(v); }

bool ExisteFichero(const std::string& ruta) {
    std::error_code ec;
    return std::filesystem::is_regular_file(ruta, ec);
}

}  // namespace

ConfTicket ConfTicket::Leer(Recordset& rs) {
    auto t = [&](const char* columna) { return Texto(rs.Get(columna)); };
    ConfTicket c;
    c.EnNegrita = Interruptor(rs.Get("EnNegrita"));
    c.nomEmpresa = t("nomEmpresa");
    c.Direccion = t("Direccion");
    c.poblacion = t("poblacion");
    c.provincia = t("provincia");
    c.cif = t("cif");
    c.web = t("web");
    c.telefono = t("telefono");
    c.email = t("email");
    c.nomTicket = t("nomTicket");
    c.empleado = t("empleado");
    c.cliente = t("cliente");
    c.CifCliente = t("CifCliente");
    c.telefonocliente = t("telefonocliente");
    c.DirCliente = t("DirCliente");
    c.unidades = t("unidades");
    c.descripcion = t("descripcion");
    c.pUnitario = t("pUnitario");
    c.total = t("total");
    c.mostrarPunit = Interruptor(rs.Get("mostrarPunit"));
    c.utilizaSubTotal = Entero(rs.Get("utilizaSubTotal"));
    c.cuota = t("cuota");
    c.totalfinal = t("totalfinal");
    c.entrega = t("entrega");
    c.cambio = t("cambio");
    c.mostrartotalletras = Interruptor(rs.Get("mostrartotalletras"));
    c.desgloseImpuestos = Entero(rs.Get("desgloseImpuestos"));
    c.nomImpuesto = t("nomImpuesto");
    c.base = t("base");
    if (!rs.Get("FormaPago").IsNull()) c.FormaPago = t("FormaPago");
    c.ImpuestosIncluidos = t("ImpuestosIncluidos");
    c.Gracias = t("Gracias");
    c.comentariofinal = t("comentariofinal");
    return c;
}

ImprimirConfONOFF::ImprimirConfONOFF(std::optional<ConfTicket> rotulosSinTabla)
    : conexion_(&sesion().Conexion), rotulosSinTabla_(std::move(rotulosSinTabla)) {}

void ImprimirConfONOFF::ImprimirNuevoTicket(Connection& conexion, const std::string& impresora,
                                            const std::string& rutaLogo, const std::string& imagenLogo,
                                            double altoLogo, double anchoLogo, float izquierdaLogo,
                                            std::int32_t numero, const std::string& tablaCabecera, double entrega,
                                            double cambio, std::int16_t comensalesVenta, double& propina) {
    conexion_ = &conexion;
    LeerDecimales();
    LeerImpresora(impresora);
    LeerTotalEnLetras();
    LeerAjustesSinUso();
    LeerConfiguracionRegional();
    construirCaracteres();
    construirGuiones();
    comensales = comensalesVenta;
    ImprimirDocumento(impresora, rutaLogo, imagenLogo, altoLogo, anchoLogo, izquierdaLogo, numero, tablaCabecera,
                      entrega, cambio, propina);
}

void ImprimirConfONOFF::LeerDecimales() {
    numDecimales = 2;
    Recordset rs;
    rs.Open("Select numDecimales from opciones", *conexion_, adOpenStatic);
    if (!rs.Eof() && !rs.Get("numDecimales").IsNull()) numDecimales = CInt(rs.Get("numDecimales"));
    rs.Close();
}

void ImprimirConfONOFF::LeerImpresora(const std::string& impresora) {
    nombreFuente = "FontA11";
    numCaracteres = 35;
    Recordset rs;
    rs.Open("Select fuente,numCaracteres from impresoras where impresora = '" + impresora + "'", *conexion_,
            adOpenStatic);
    if (!rs.Eof()) {
        const std::string fuente = Texto(rs.Get("fuente"));
        nombreFuente = fuente.empty() ? "FontA11" : fuente;
        const Value& caracteres = rs.Get("numCaracteres");
        numCaracteres = caracteres.IsNull() ? 35 : CInt(caracteres);
    }
    rs.Close();
}

void ImprimirConfONOFF::LeerTotalEnLetras() {
    Recordset rs;
    rs.Open("Select * from relaciones_fijas where indice = 'TotalTicketEnLetras' and datoa = 'SI'", *conexion_,
            adOpenStatic);
    totalEnLetrasConfigurado = rs.RecordCount() > 0;
    rs.Close();
}

// Read for the ticket's interface; the layout doesn't use them.
void ImprimirConfONOFF::LeerAjustesSinUso() {
    Recordset rs;
    rs.Open("Select QuitarPUnitarioTicket from opciones", *conexion_, adOpenStatic);
    quitarPUnitario = !rs.Eof() && Interruptor(rs.Get("QuitarPUnitarioTicket"));
    rs.Close();
    rs.Open("Select contenido from datosimpresion where numlinea=17", *conexion_, adOpenStatic);
    linea17 = rs.Eof() ? 0 : CInt(Val(Texto(rs.Get("contenido"))));
    rs.Close();
}

void ImprimirConfONOFF::LeerConfiguracionRegional() {
    nombreImpuesto = "IVA";
    moneda.clear();
    Recordset rs;
    rs.Open("Select nombreimpuesto1,moneda from configuracionregional", *conexion_, adOpenStatic);
    if (!rs.Eof()) {
        if (!rs.Get("nombreimpuesto1").IsNull()) nombreImpuesto = Texto(rs.Get("nombreimpuesto1"));
        moneda = Texto(rs.Get("moneda"));
    }
    rs.Close();
}

void ImprimirConfONOFF::construirCaracteres() {
    reglaCaracteres.clear();
    for (int i = 0; i < numCaracteres; ++i) reglaCaracteres += "8";
}

void ImprimirConfONOFF::construirGuiones() {
    guiones.clear();
    for (int i = 0; i < numCaracteres; ++i) guiones += "-";
}

// Every step runs even when the one before failed, so the paper drawn so far
// is still sent; a failure inside the composition ends the composition only.
// An unplugged printer is the one failure the user is told about.
void ImprimirConfONOFF::ImprimirDocumento(const std::string& impresora, const std::string& rutaLogo,
                                          const std::string& imagenLogo, double altoLogo, double anchoLogo,
                                          float izquierdaLogo, std::int32_t numero, const std::string& tablaCabecera,
                                          double entrega, double cambio, double& propina) {
    long error = 0;
    auto paso = [&error](auto&& accion) {
        try {
            accion();
        } catch (const RuntimeError& e) {
            error = e.Number();
        } catch (const std::exception&) {
            error = -1;
        }
    };

    paso([&] { BuscarImpresora(Trim(impresora)); });
    if (!imagenLogo.empty() && !rutaLogo.empty() && ExisteFichero(rutaLogo)) {
        paso([&] {
            if (anchoLogo == 0) anchoLogo = 3386;
            if (altoLogo == 0) altoLogo = 3386;
        });
        paso([&] { Printer().PaintPicture(imagenLogo, izquierdaLogo, 0, anchoLogo, altoLogo); });
        paso([&] { Printer().CurrentY = altoLogo - 300; });
    }
    paso([&] { anchoLinea = static_cast<std::int32_t>(Round(Printer().TextWidth(reglaCaracteres))); });
    paso([&] { ComponerTicket(numero, tablaCabecera, entrega, cambio, propina); });
    paso([&] { Printer().EndDoc(); });
    if (error == kErrImpresora)
        MsgBox("Compruebe la conexion con su impresora y que esta este encendida.", vbInformation, "Preticket");
}

std::string ImprimirConfONOFF::ObtenerNomEmpleado(std::int32_t codigo) {
    return tpv::ObtenerNomEmpleado(*conexion_, codigo);
}

std::string ImprimirConfONOFF::EnLetras(const std::string& texto, const std::string& monedaTexto) {
    return tpv::EnLetras(texto, monedaTexto);
}

std::string ImprimirConfONOFF::obtenerNomPedido_x_Mesa(const std::string& codigo) {
    return tpv::obtenerNomPedido_x_Mesa(*conexion_, codigo);
}

std::string ImprimirConfONOFF::ObtenerNomClientexCodigo(std::int32_t codigo, std::string& nif, std::string& telefono,
                                                        std::string& direccion) {
    return tpv::ObtenerNomClientexCodigo(*conexion_, codigo, nif, telefono, direccion);
}

std::string ImprimirConfONOFF::ObtenerNomFormaPago(std::int32_t codigo) {
    return tpv::ObtenerNomFormaPago(*conexion_, codigo);
}

ConceptoPropina ImprimirConfONOFF::ObtenerConceptoPropina() { return tpv::ObtenerConceptoPropina(*conexion_); }

bool ImprimirConfONOFF::HayLineaPropinas() { return tpv::HayLineaPropinas(*conexion_); }

}  // namespace tpv
