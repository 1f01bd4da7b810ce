#include "closing/cierre.hpp"

#include "closing/abono.hpp"
#include "closing/copias.hpp"
#include "closing/grabar_factura.hpp"
#include "closing/vales_deudas.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/sesion/contadores.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/cajon.hpp"
#include "printing/factura.hpp"
#include "printing/ticket_configurable.hpp"
#include "printing/ticket_service.hpp"
#include "printing/vales.hpp"
#include "sale/anulacion.hpp"
#include "sale/ventas_abiertas.hpp"

namespace tpv {

namespace {

// The closed document a copy prints: the refund, or the sale.
struct Documento {
    bool abono = false;
    std::int32_t numero = 0;
};

void ImprimirCopia(const DatosCierre& datos, const Documento& doc) {
    Sesion& s = sesion();
    if (s.TicketConfigurable) {
        double propina = 0.0;
        ImprimirConfONOFF ticket;
        ticket.ImprimirNuevoTicket(s.Conexion, s.ImpresoraTickets, s.LogoTicket, datos.imagenLogo, s.LogoAlto,
                                   s.LogoAncho, static_cast<float>(s.LogoPosicion), doc.numero,
                                   doc.abono ? "cabecera_abono" : "cabecera_factura", CDbl(Value(datos.entrega)),
                                   CDbl(Value(datos.devolucion)), 0, propina);
        return;
    }
    // The service takes the change before the money handed over.
    TicketService servicio;
    if (doc.abono)
        servicio.ImprimirTicketAbono(s.Conexion, s.ImpresoraTickets, doc.numero, datos.devolucion, datos.entrega);
    else
        servicio.ImprimirTicketVenta(s.Conexion, s.ImpresoraTickets, doc.numero, datos.devolucion, datos.entrega);
}

void BorrarVentaTemp(std::int32_t numeroVenta) {
    BorrarLineasTemp(numeroVenta, -1, "", -1);
    BorrarCabeceraTemp(numeroVenta);
}

}  // namespace

void CerrarVenta(DatosCierre& datos, CajaEnCierre& caja) {
    Sesion& s = sesion();
    const bool modoAbono = caja.ModoAbono;
    std::int32_t numeroFactura = 0;
    std::int32_t numeroAbono = 0;
    bool esModificacion = false;

    if (modoAbono) {
        numeroAbono = SiguienteNumeroAbono();
        const std::int32_t numeroFacturaAbonada = CLng(Value(caja.NumeroFacturaAbonada));
        GrabarDetalleAbono(numeroAbono, datos.numeroVenta, numeroFacturaAbonada);
        GrabarCabeceraAbono(numeroAbono, datos.numeroVenta, datos.formaPago, datos.tarjeta, numeroFacturaAbonada,
                            caja.Fecha1);
        BorrarVentaTemp(datos.numeroVenta);
        if (datos.imprimirValeAbono) EmitirValeAbono(numeroFacturaAbonada, Abs(Val(caja.CajaText_Pago)));
    } else {
        esModificacion = EsVentaModificada(datos.numeroVenta);
        // A modified sale comes back under its own number.
        numeroFactura = esModificacion ? FacturaOrigen(datos.numeroVenta) : SiguienteNumeroFactura();
        GrabarLineasFactura(numeroFactura, datos.numeroVenta);
        GrabarCabeceraFactura(numeroFactura, datos.numeroVenta, datos.formaPago, datos.tarjeta, caja.Fecha1);
        BorrarVentaTemp(datos.numeroVenta);
    }

    if (esModificacion)
        RecordWriter::Instancia().Borrar(s.Conexion, "VentasDevolucion", s.NombreTienda, s.Multitienda,
                                         "NumeroFacturaTemporal=" + CStr(Value(datos.numeroVenta)));

    if (datos.deuda > 0) {
        GrabarDeuda(numeroFactura, datos.deuda);
        // A sale left wholly on credit prints its debt as the change.
        const std::string cero = FormatNumber(Value(0), s.opciones.NumDecimales);
        if (datos.entrega == cero && datos.devolucion == cero)
            datos.devolucion = FormatNumber(Value(datos.deuda), s.opciones.NumDecimales);
    }

    if (datos.numeroVale > -1) {
        MarcarValeAplicado(datos.numeroVale, numeroFactura);
        AnotarValeEnTicket(datos.numeroVale);
    }

    if (datos.imprimir) {
        const Documento doc{modoAbono, modoAbono ? numeroAbono : numeroFactura};
        ImprimirCopiasConAviso(s.opciones.NumCopiasFactura, [&] { ImprimirCopia(datos, doc); });
    }

    if (datos.numeroVale > -1) QuitarValeDeTicket();
    if (datos.abrirCajon) AbrirCajon();

    if (modoAbono)
        caja.ModoAbono = false;
    else
        EmitirValeVenta(numeroFactura);

    if (datos.factura) PrepararFactura(numeroFactura);
    if (!datos.listaRegalo.empty())
        ImprimirAlbaran::ImprimirTicketRegalo(s.Conexion, s.ImpresoraTickets, numeroFactura, datos.listaRegalo);

    if (caja.lblUltFactura) caja.lblUltFactura(CStr(Value(UltimoNumeroFactura())));
}

}  // namespace tpv
