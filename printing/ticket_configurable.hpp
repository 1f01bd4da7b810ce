#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "core/datos/recordset.hpp"
#include "printing/ticket_consultas.hpp"

namespace tpv {

// The wording and switches of the configurable ticket: the one row of
// `confticket`. Texts print as they stand (NULL as ""); a text holding "#C"
// is centred.
struct ConfTicket {
    bool EnNegrita = false;
    std::string nomEmpresa, Direccion, poblacion, provincia, cif, web, telefono, email;
    std::string nomTicket, empleado, cliente, CifCliente, telefonocliente, DirCliente;
    std::string unidades, descripcion, pUnitario, total;
    bool mostrarPunit = false;
    std::int32_t utilizaSubTotal = 0;  // -1: base and tax before the adjustments
    std::string cuota, totalfinal, entrega, cambio;
    bool mostrartotalletras = false;
    std::int32_t desgloseImpuestos = 0;  // -1: the tax table
    std::string nomImpuesto, base;
    std::optional<std::string> FormaPago;  // NULL: no payment line
    std::string ImpuestosIncluidos, Gracias, comentariofinal;

    // The current row of a recordset over `confticket`.
    static ConfTicket Leer(Recordset& rs);
};

// The till receipt of a sale, a refund or a pre-ticket, laid out from the
// wording of `confticket` on the ticket printer. One instance prints one
// document; nothing is kept between documents.
class ImprimirConfONOFF {
public:
    // `rotulosSinTabla`: the wording to use when `confticket` doesn't hold
    // exactly one row; without it such a ticket prints nothing.
    explicit ImprimirConfONOFF(std::optional<ConfTicket> rotulosSinTabla = std::nullopt);

    // Prints the document `numero` of `tablaCabecera` ("cabecera_factura",
    // "cabecera_abono", or "cabecera_factura_temp" for a pre-ticket) on the
    // printer named `impresora`. A negative number or an empty table prints a
    // sample. `imagenLogo` is the loaded logo picture ("" for none). The tip
    // actually printed is left in `propina`. Printer failures are not passed
    // on: an unplugged printer is reported in a box.
    void ImprimirNuevoTicket(Connection& conexion, const std::string& impresora, const std::string& rutaLogo,
                             const std::string& imagenLogo, double altoLogo, double anchoLogo, float izquierdaLogo,
                             std::int32_t numero, const std::string& tablaCabecera, double entrega, double cambio,
                             std::int16_t comensales, double& propina);

    void construirCaracteres();
    void construirGuiones();
    std::string ObtenerNomEmpleado(std::int32_t codigo);
    std::string EnLetras(const std::string& texto, const std::string& moneda);
    std::string obtenerNomPedido_x_Mesa(const std::string& codigo);
    std::string ObtenerNomClientexCodigo(std::int32_t codigo, std::string& nif, std::string& telefono,
                                         std::string& direccion);
    std::string ObtenerNomFormaPago(std::int32_t codigo);
    ConceptoPropina ObtenerConceptoPropina();

private:
    enum class Documento { Muestra, Preticket, Venta, Abono };
    struct Impuestos {
        double baseTotal = 0.0;
        double cuotaTotal = 0.0;
    };

    void ImprimirDocumento(const std::string& impresora, const std::string& rutaLogo, const std::string& imagenLogo,
                           double altoLogo, double anchoLogo, float izquierdaLogo, std::int32_t numero,
                           const std::string& tablaCabecera, double entrega, double cambio, double& propina);
    void ComponerTicket(std::int32_t numero, const std::string& tablaCabecera, double entrega, double cambio,
                        double& propina);
    void ImprimirTextoLargo(std::string texto, bool centrar, bool negrita);
    std::string LineaImporte(std::string importe, const std::string& etiqueta) const;
    std::string LineaEtiquetaImporte(const std::string& etiqueta, std::string importe) const;
    std::string LineaDetalle(std::string cantidad, std::string descripcion, std::string precio, std::string total,
                             bool mostrarPrecio) const;
    std::string LineaImpuesto(std::string nombre, std::string base, std::string cuota) const;
    std::string ColocarLinea(std::string texto, const std::string& alineacion, double tamano);
    void ImprimirLinea(std::string texto, const std::string& alineacion, double tamano);
    void ImprimirLineaNegrita(std::string texto, const std::string& alineacion, double tamano);
    // Strong lines: double-struck when the ticket asks for bold.
    void ImprimirFuerte(const std::string& texto, const std::string& alineacion, double tamano = 9);
    Impuestos SumarImpuestosDocumento();
    bool HayLineaPropinas();

    // The settings read at the start of a document.
    void LeerDecimales();
    void LeerImpresora(const std::string& impresora);
    void LeerTotalEnLetras();
    void LeerAjustesSinUso();
    void LeerConfiguracionRegional();

    // The sections of the ticket, head to foot.
    bool PrepararDocumento(std::int32_t numero, const std::string& tablaCabecera);
    void SeccionCabecera();
    void SeccionDocumento(std::int32_t numero);
    void SeccionLineas(std::int32_t numero);
    void SeccionImportes(double entrega, double cambio, double& propina);
    Impuestos CalcularPropina(double& propina, std::string& etiquetaPropina, std::string& baseWord);
    void SeccionLetras();
    void SeccionImpuestos();
    void PiePreticket();
    void PieVenta();

    // The query of the tax table over the document's lines, and the base
    // and tax of its current row.
    void AbrirImpuestos(Recordset& rs);
    Impuestos ImpuestosDeFila(Recordset& rs, Documento documento) const;
    // A column of the document's head; with no head (a sample) it fails.
    const Value& Cabecera(const char* columna) const;
    std::string Importe(double valor) const;

    Connection* conexion_ = nullptr;
    std::optional<ConfTicket> rotulosSinTabla_;

    std::int16_t numDecimales = 2;
    std::int16_t numCaracteres = 35;
    std::string nombreFuente = "FontA11";
    bool totalEnLetrasConfigurado = false;
    bool quitarPUnitario = false;
    std::int16_t linea17 = 0;
    std::string nombreImpuesto = "IVA";
    std::string moneda;
    std::string reglaCaracteres;
    std::string guiones;
    std::int32_t anchoLinea = 0;
    bool enNegrita = false;
    std::int16_t comensales = 0;

    // The document being composed.
    Documento documento_ = Documento::Muestra;
    ConfTicket conf_;
    Recordset cabecera_;
    std::string tablaLineas_;
    std::string claveLineas_;
    double total_ = 0.0;
    double totalFinal_ = 0.0;
    double pagoValeDescuento_ = 0.0;
    std::string empleado_;
};

}  // namespace tpv
