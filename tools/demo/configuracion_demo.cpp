// Settings of the demo shop: options, terminals, counters, printers and the
// layouts of the tickets.
#include "tools/demo/tienda_demo.hpp"

namespace tpv::demo {

namespace {

// A key of relaciones_fijas; a missing part stays NULL.
Fila Clave(const char* indice) { return Fila("relaciones_fijas")("indice", indice); }

}  // namespace

// The machine's identity lives in the reporting source: list2 names the
// terminal, list1 completes its tariff key ("CAJA1" & "A").
void TiendaDemo::Identidad() {
    informes_.Execute(
        Fila("listadostemporal")("list1", kSegundoIdentificador)("list2", kTerminal).Sql());
}

void TiendaDemo::Configuracion() {
    Opciones();
    Contadores();
    Impresion();
}

void TiendaDemo::Opciones() {
    // Prices carry tax, bar-code mode, two decimals. The four flags from
    // privacidad on are written out although NULL would read as true.
    Insertar(Fila("opciones")
                 ("nombre", "Perfumería La Plaza")("telefono", "963 000 111")
                 ("Direccion", "Calle Mayor, 12")("iva", true)("modopantallacaja", 1)
                 ("empleadoVentaFijo", false)("agenda", false)("Deposito", true)
                 ("clientepordefecto", false)("CodigoBarras", true)("UtilizaColores_FPago", false)
                 ("NumDecimales", 2)("NumCopiasFactura", 1)("UtilizaColores_empleados", false)
                 ("VentasMultiEmpleado", false)("privacidad", false)("abrircajetin", true)
                 ("imprimirticket", true)("facturas", false)("multitienda", "N")
                 ("nombretienda", "La Plaza")("cif", "B46000000")("poblacion", "Valencia")
                 ("provincia", "Valencia")("cp", "46001")("TextoPrivacidad", "")
                 ("QuitarPUnitarioTicket", false));

    // The demo's terminal shows the employee selection at start; a second
    // till has its employee pinned.
    Insertar(Fila("opciones_terminal")("identificador", kTerminal)("terminal", kTerminal)
                 ("AnimacionesActivas", true)("empleado", -1));
    Insertar(Fila("opciones_terminal")("identificador", "CAJA2")("terminal", "CAJA2")
                 ("AnimacionesActivas", false)("empleado", 1));

    Insertar(Fila("configuracionregional")("nombre", "España")("bandera", "")
                 ("segundoimpuesto", false)("nombreimpuesto1", "IVA")("nombreimpuesto2", "RE")
                 ("moneda", "€")("Identificacion_Fiscal", "NIF"));

    // Business day of each till: 08:00 to 22:00, no sales after midnight.
    for (const char* terminal : {kTerminal, "CAJA2"})
        Insertar(Fila("entradas")("identificador", terminal)("Horaapertura", Hora(8, 0))
                     ("HoraCierre", Hora(22, 0)));

    // Payment methods: 4 never shows as a button, it is the customer's balance.
    struct Forma {
        int codigo;
        const char* nombre;
        int posicion;
    };
    static const Forma kFormas[] = {
        {1, "Contado", 1}, {2, "Tarjeta", 2}, {3, "Mixto", 3}, {4, "Dinero en Deposito", 4}};
    for (const Forma& f : kFormas)
        Insertar(Fila("formapago")("codigo", f.codigo)("nombre", f.nombre)("imagen", Value())
                     ("color", 16777215)("fpa_color", false)("borrar", false)("posicion", f.posicion));

    // Options of relaciones_fijas: a scan sells one unit, weighed goods ask
    // for the total, the touch panel filters by section.
    Insertar(Clave("PedirCantidadProductos")("datoa", "NO"));
    Insertar(Clave("PedirPrecioTotal")("datoa", "SI"));
    Insertar(Clave("FiltroPantallaTactil")("datoa", "Secciones"));
    Insertar(Clave("LineaXProducto")("datoa", "NO"));
    Insertar(Clave("CampoOrdenItemsCaja")("datoa", "Nombre"));
    Insertar(Clave("DiasCaducidadValeDescuento")("daton", 30));
    Insertar(Clave("DisTicketUtilizado")("datoa", "NUEVO"));
    Insertar(Clave("TotalTicketEnLetras")("datoa", "SI"));
    Insertar(Clave("ComentarioTicketRegalo")
                 ("datoa", "Cambios en 30 días presentando este ticket.")("otros", ""));
}

// Document counters: each holds the next number to hand out, after the
// closed sales and the debt that the demo writes.
void TiendaDemo::Contadores() {
    Insertar(Clave("Venta")("daton", 1));
    Insertar(Clave("Factura")("daton", kUltimaFacturaDemo + 1));
    Insertar(Clave("Albaran")("daton", 1));
    Insertar(Clave("Abonos")("daton", 1));
    Insertar(Clave("PagosCuenta")("daton", kUltimoPagoDemo + 1));
}

void TiendaDemo::Impresion() {
    // Ticket printer with the drawer on a raw port; an office printer for
    // invoices. The second till prints through the driver's own kick.
    Insertar(Fila("impresoras")("terminal", kTerminal)("tipo", "T")("impresora", "Ticketera")
                 ("puerto", "/dev/usb/lp0")("secuencia", "27|112|0|25|250")("fuente", "FontA11")
                 ("numCaracteres", 42)("Modelo", 1));
    Insertar(Fila("impresoras")("terminal", kTerminal)("tipo", "L")("impresora", "Oficina")
                 ("puerto", "")("secuencia", "")("fuente", "")("numCaracteres", Value())("Modelo", 0));
    Insertar(Fila("impresoras")("terminal", "CAJA2")("tipo", "T")("impresora", "Ticketera2")
                 ("puerto", "USB")("secuencia", "")("fuente", "FontA1x1")("numCaracteres", 35)
                 ("Modelo", 1));

    // The configurable ticket; "#C" centres a line.
    Insertar(Fila("confticket")
                 ("EnNegrita", true)("nomEmpresa", "#CPerfumería La Plaza")
                 ("Direccion", "#CCalle Mayor, 12")("poblacion", "#C46001 Valencia")
                 ("provincia", Value())("cif", "#CNIF: B46000000")("web", Value())
                 ("telefono", "#CTlf: 963 000 111")("email", Value())("nomTicket", "Ticket:")
                 ("empleado", "Le atendió: ")("cliente", "Cliente: ")("CifCliente", "NIF: ")
                 ("telefonocliente", "Tlf: ")("DirCliente", "Dir: ")("unidades", "Ud")
                 ("descripcion", "Descripción")("pUnitario", "P.Unit")("total", "Total")
                 ("mostrarPunit", true)("utilizaSubTotal", false)("cuota", "Cuota")
                 ("totalfinal", "TOTAL")("entrega", "Entregado")("cambio", "Cambio")
                 ("mostrartotalletras", false)("desgloseImpuestos", true)("nomImpuesto", "IVA")
                 ("base", "Base")("FormaPago", "Forma de pago: ")("ImpuestosIncluidos", "IVA incluido")
                 ("Gracias", "Gracias por su visita")
                 ("comentariofinal", "No se admiten devoluciones sin el ticket de compra."));

    // The template tickets' lines; 17 is the count of blank lines at the end.
    static const char* const kLineas[] = {
        "Perfumería La Plaza",
        "Calle Mayor, 12",
        "46001 Valencia",
        "Tlf: 963 000 111",
        "NIF: B46000000",
        "Nro. Ticket: <Nro Venta>   Fecha: <fecha>",
        "Le atendió: <Empleado que le atendio>",
        "Cliente: <Nombre del Cliente>",
        "", "", "", "", "", "",
        "Gracias por su compra",
        "Conserve este ticket para cambios",
        "3",
    };
    int numero = 1;
    for (const char* contenido : kLineas)
        Insertar(Fila("datosimpresion")("numlinea", numero++)("contenido", contenido));
}

}  // namespace tpv::demo
