// The till screen: its opening, its two modes, the function keys, clearing
// for the next sale, finishing a sale, the open sales and the change of
// employee.
#include "screens/frm_caja.hpp"

#include "closing/abono.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/fecha.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/reloj.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/caption_translator.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/grid_formatter.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/servicios/screen_fitter.hpp"
#include "core/servicios/screen_rights.hpp"
#include "core/sesion/configuracion.hpp"
#include "core/sesion/contadores.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"
#include "core/sesion/tarifas.hpp"
#include "core/sesion/visor.hpp"
#include "sale/lineas_venta.hpp"
#include "sale/ventas_abiertas.hpp"
#include "screens/colores.hpp"
#include "screens/pantallas.hpp"

namespace tpv {

namespace {

constexpr int vbKeyF2 = vbKeyF1 + 1, vbKeyF3 = vbKeyF1 + 2, vbKeyF4 = vbKeyF1 + 3, vbKeyF5 = vbKeyF1 + 4,
              vbKeyF6 = vbKeyF1 + 5, vbKeyF9 = vbKeyF1 + 8;

}  // namespace

// On a date other than today the assistant confirms that the sale goes
// with that date.
bool ConfirmarFechaCambiada(DateTime fecha) {
    if (static_cast<long>(fecha.serial) == static_cast<long>(fecha::Hoy().serial)) return true;
    const std::string dia = Format(Value(fecha), "dd/mm/yyyy");
    const std::string texto = "El programa detecta que la fecha seleccionada corresponde a otro dia.\r\n"
                              "¿Está seguro que quiere guardar esta venta con fecha de " +
                              dia + "?\r\n\r\nSi pulsa SI el programa grabará la venta con fecha de " + dia +
                              " y lo guardará como incidencia.";
    return MsgBox(texto, vbYesNo, "Venta con fecha cambiada") == vbYes;
}

frmCaja::frmCaja() : controlesVenta{FGCaja, CajaText_Pago, txtUltProd, txtUltCant, txtTArticulos} {}

bool frmCaja::ModoTactil() const { return sesion().opciones.modopantallacaja != 1; }

void frmCaja::FocoSeguro(Control& c) {
    try {
        c.SetFocus();
    } catch (const RuntimeError&) {
        // A control hidden or disabled at this moment keeps its focus away.
    }
}

void frmCaja::FocoEntrada() { FocoSeguro(ModoTactil() ? txtCodBarras : txtcod); }

void frmCaja::Form_Load() {
    Sesion& s = sesion();
    if (s.AltoPantalla < 11085) {
        PanelVentas.Separacion = 300;
        PanelVentas.TamanoBoton = 700;
    }
    CaptionTranslator::Instancia().Traducir(s.Conexion, *this);
    ColocarAyuda();
    colorearme();
    ModificarTamano();
    pantallaInicial();
    ScreenRights::Instancia().Aplicar(s.Conexion, *this, s.EmpleadoTerminal);
}

void frmCaja::colorearme() {
    Sesion& s = sesion();
    ColourScheme colores;
    colores.Colorear(*this, s.EsquemaColores, s.Conexion);
    ColorResalte = colores.ColorResalte(s.Conexion, s.EsquemaColores);
    ColorFoco = colores.ColorFoco(s.Conexion, s.EsquemaColores);
    ColorFondo = colores.Color1(s.Conexion, s.EsquemaColores);
    ColorSegundo = colores.Color2(s.Conexion, s.EsquemaColores);
    ColorFilasGrid = colores.Color4(s.Conexion, s.EsquemaColores);
    cmdTerminarVenta.backColor = NumeroDeColor(ColorResalte);
    cmdTerminarVenta_Tactil.backColor = cmdTerminarVenta.backColor;
}

void frmCaja::ModificarTamano() {
    Sesion& s = sesion();
    ScreenFitter& ajuste = ScreenFitter::Instancia();
    ajuste.Ajustar(s.Conexion, *this, s.AnchoPantalla, s.AltoPantalla, s.AnchoDiseno, s.AltoDiseno);
    for (ButtonMatrix* p : {&PanelEmpLupa, &PanelSecciones, &panelProveedores, &PanelTarifas, &PanelVentas,
                            &PanelProductos})
        p->Redimensionar(ajuste.FactorAncho(), ajuste.FactorAlto(), p->width, p->height);
}

void frmCaja::pantallaInicial() {
    Sesion& s = sesion();
    FocoEnBuscarProducto = false;
    if (!s.configuracionregional.bandera.empty()) {
        Bandera.picture = s.configuracionregional.bandera;
        Bandera.toolTipText = s.configuracionregional.nombre;
    }
    for (ButtonMatrix* p : {&PanelEmpLupa, &PanelSecciones, &panelProveedores, &PanelTarifas, &PanelVentas})
        p->Vaciar();
    InicializarGrids();
    cargarPanelEmpleadosLupa();
    cargarPanelTarifas();
    cargarPanelSecciones();
    cargarPanelProveedores();

    // The overlays over the grid, or centred on it.
    frTactil.left = 0;
    frTactil.top = 0;
    for (Frame* f : {&frVentaPeso, &fr_Ventas}) {
        f->left = FGCaja.left;
        f->top = FGCaja.top;
    }
    for (Frame* f : {&frDescuentoImporte, &frOpcionesCaja, &frDeuda}) {
        f->left = FGCaja.left + (FGCaja.width - f->width) / 2;
        f->top = FGCaja.top + (FGCaja.height - f->height) / 2;
    }
    frImagen.left = FGCaja.left - frImagen.width - 120;
    if (frImagen.left < 0) frImagen.left = 0;

    lblHora.caption = Format(Value(reloj::Ahora()), "HH:MM");
    lbl_Empleado.caption = s.NombreEmpleadoActual;
    lblUltFactura.caption = CStr(Value(UltimoNumeroFactura()));
    LimpiarPantalla();
    VentaNueva = true;
    PonerNomTarifa();

    frTarifas.visible = !s.Tarifas.empty();
    if (frTarifas.visible) FGCaja.height -= frTarifas.height;

    CargarOpcionesEnPantalla();

    if (s.opciones.modopantallacaja == 1) {
        frTactil.visible = false;
        cmdCambioTactil.caption = "Ventas en modo Tactil";
    } else {
        frTactil.visible = true;
        cmdCambioTactil.caption = "Ventas en modo Codigo de Barras";
        s.PedirCantidad = false;
    }

    if (!s.PanelProveedores.empty()) {
        const ButtonRecord& primero = s.PanelProveedores.front();
        CargarPanelProductos(primero.Codigo, primero.Color, PanelProductos);
        lblInfoFiltro.caption = "Productos de: " + primero.Texto;
    }
    if (s.VisorActivo) VisorDelPuesto().InicializarVisor();
}

// The options panel shows what is stored; nothing is written back meanwhile.
void frmCaja::CargarOpcionesEnPantalla() {
    Sesion& s = sesion();
    cambiandoOpciones_ = true;
    chkPideCantidad.SetValue(s.PedirCantidad ? 1 : 0);
    chkLineaXProducto.SetValue(s.LineaXProducto ? 1 : 0);
    if (s.DiasCaducidadValeDescuento == -1) {
        chkCadValeNunca.SetValue(1);
        chkCadValeNunca.tag = "-1";
        slDiasCad.SetValue(slDiasCad.max);
        lbldiasCad.caption = "Nunca";
    } else {
        chkCadValeNunca.SetValue(0);
        long pasos = s.DiasCaducidadValeDescuento / 15;
        if (pasos < slDiasCad.min) pasos = slDiasCad.min;
        if (pasos > slDiasCad.max) pasos = slDiasCad.max;
        slDiasCad.SetValue(pasos);
    }
    if (UCase(s.CampoOrdenItemsCaja) == "NOMBRE")
        optNombre.SetValue(true);
    else
        optPosicion.SetValue(true);
    const bool secciones = s.FiltroPantallaTactil == "Secciones";
    PanelSecciones.visible = secciones;
    panelProveedores.visible = !secciones;
    if (s.PedirPrecioTotal)
        optPTotal.SetValue(true);
    else
        optPXKilo.SetValue(true);
    cambiandoOpciones_ = false;
}

void frmCaja::Form_Activate() {
    if (ModoAbono && !FocoEnBuscarProducto) {
        // A refund starts as a new sale for the customer of the invoice.
        cmdNuevaVenta_Click();
        lblCodCliente.caption = ClienteAbono(NumeroFacturaAbonada);
        // With no invoice found there is no customer to show.
        if (!lblCodCliente.caption.empty()) MostrarResultadoBusqueda();
        LetreroEnMovimiento("Abono de Venta");
        lblInfoAbono.visible = true;
    } else if (ModoTactil()) {
        FocoSeguro(txtCodBarras);
    }
}

void frmCaja::BotonFuncion(int tecla) {
    switch (tecla) {
        case vbKeyF1: cmdNuevaVenta_Click(); break;
        case vbKeyF2: cmd_CambioEmpleado_Click(); break;
        case vbKeyF3: cmd_VentasActivas_Click(); break;
        case vbKeyF4:
            if (cmdBuscarCliente.Click) cmdBuscarCliente.Click();
            break;
        case vbKeyF5:
            FocoSeguro(txtcod);
            if (ModoTactil()) FocoSeguro(txtCodBarras);
            break;
        case vbKeyF6: Picture1_Click(); break;
        case vbKeyF9: cmdTerminarVenta_Click(); break;
        default: break;
    }
}

void frmCaja::InicializarGrids() {
    GridFormatter::Instancia().Formatear(
        FGCaja,
        "Detalle de Venta;Precio;Empleado;;;Desc;;;;Can.;Total;PrecioUnitario;;;codFamilia;Cod. Producto;impDscto",
        "2600/izquierda;800/Centrado;0/Izquierda;0/Izquierda;0/Izquierda;500/Izquierda;0/Izquierda;0/Izquierda;"
        "0/Izquierda;550/Centrado;1100/Centrado;0/Derecha;0/Derecha;0/Derecha;0/Derecha;1500/Izquierda;0/Derecha");
    const double factor = ScreenFitter::Instancia().FactorAncho();
    for (long c = 0; c < FGCaja.Cols(); ++c) FGCaja.SetColWidth(c, FGCaja.ColWidth(c) * factor);
}

void frmCaja::PonerNomTarifa() {
    const Sesion& s = sesion();
    if (s.TarifaActual > 0) lblnomProd.caption = "Tarifa aplicada: " + NombreTarifa(s.TarifaActual);
}

void frmCaja::limpiarGrids() {
    while (FGCaja.Rows() > 2) FGCaja.RemoveItem(FGCaja.Rows() - 1);
    if (FGCaja.Rows() < 2) FGCaja.SetRows(2);
    for (long c = 0; c < FGCaja.Cols(); ++c) {
        FGCaja.SetTextMatrix(1, c, "");
        FGCaja.SetCellBackColor(1, c, 0);
    }
    FGCaja.SetTopRow(1);
    CajaText_Pago.SetText("");
}

void frmCaja::MostrarTerminar(bool mostrar) {
    cmdTerminarVenta.visible = mostrar;
    cmdTerminarVenta_Tactil.visible = mostrar;
    // The discounts on the whole sale come and go with it.
    cmd_DescImporte.visible = mostrar;
    cmd_DescPorcentaje.visible = mostrar;
}

void frmCaja::LimpiarPantalla() {
    LimpiarPantallaDinDep();
    txtNomCliente.SetText("Cliente Generico");
    lblCodCliente.caption = "0";
    Fecha1.SetValue(fecha::Hoy());
}

// Everything of a clean screen but the customer and the date.
void frmCaja::LimpiarPantallaDinDep() {
    limpiarGrids();
    lblNumVenta.caption = "";
    txtcod.SetText("");
    txtCodBarras.SetText("");
    lblCodProd.caption = "";
    lblnomProd.caption = "";
    MostrarTerminar(false);
    VentaDinDep = false;
    lblModificacion.visible = false;
    picImagen.picture.clear();
    picImagen.visible = false;
    for (Label* l : {&lblPedido, &lblStock, &lblUbicacion, &lblDescuentoInfo, &lblInfoAbono}) l->caption.clear();
    lblInfoAbono.visible = false;
    tmrDinDep.SetEnabled(false);
    cmdIngDeposito.visible = false;
    frUltimaLinea.visible = false;
    txtUltProd.SetText("");
    txtUltCant.SetText("0");
    txtTArticulos.SetText("0");
    cmd_DescImporte.visible = false;
    cmd_DescPorcentaje.visible = false;
    if (sesion().VisorActivo) VisorDelPuesto().MostrarBienvenida();
}

void frmCaja::cmdCambioTactil_Click() {
    Sesion& s = sesion();
    frUltimaVenta.visible = false;
    std::string campos;
    if (!ModoTactil()) {
        frTactil.visible = true;
        cmdCambioTactil.caption = "Ventas en modo Codigo de Barras";
        s.opciones.modopantallacaja = 0;
        s.PedirCantidad = false;
        FocoSeguro(txtCodBarras);
        campos = "ModoPantallaCaja=0|";
    } else {
        frTactil.visible = false;
        cmdCambioTactil.caption = "Ventas en modo Tactil";
        s.opciones.modopantallacaja = 1;
        LeerPedirCantidad();
        FocoSeguro(txtcod);
        campos = "ModoPantallaCaja=1|";
    }
    RecordWriter::Instancia().Actualizar(s.Conexion, "Opciones", campos, s.NombreTienda, s.Multitienda, "");
}

void frmCaja::cmdNuevaVenta_Click() {
    frUltimaVenta.visible = false;
    LimpiarPantalla();
    VentaNueva = true;
    FocoSeguro(txtcod);
}

void frmCaja::cmdTerminarVenta_Click() {
    if (FGCaja.Rows() < 2 || FGCaja.TextMatrix(1, 0).empty()) return;
    if (!ConfirmarFechaCambiada(Fecha1.Value())) return;
    VentaCobrada = false;
    ImprimirFacturaAlCerrar = false;
    cmdTerminarVenta.enabled = false;
    if (MostrarCobro) {
        try {
            MostrarCobro();
        } catch (...) {
            cmdTerminarVenta.enabled = true;
            throw;
        }
    }
    cmdTerminarVenta.enabled = true;
    if (!VentaCobrada) return;
    if (ImprimirFacturaAlCerrar && ImprimirFactura) ImprimirFactura();
    CargarPanelVentas();
    cargarPanelVentas();
    LimpiarPantalla();
    VentaNueva = true;
    FocoEntrada();
    frUltimaVenta.top = fr_SeparacionH1.top + fr_SeparacionH1.height - 10;
    frUltimaVenta.visible = true;
}

void frmCaja::cargarPanelVentas() {
    const Sesion& s = sesion();
    PanelVentas.Recibo_Datos_De_Matriz(s.PanelVentas);
    PanelVentas.LimpiarPanel();
    PanelVentas.Cargar_Contenido_Boton();
    long abiertas = 0;
    for (const ButtonRecord& b : s.PanelVentas)
        if (!b.Codigo.empty()) ++abiertas;
    lblVentasAbiertas.caption =
        "Tiene " + std::to_string(abiertas) + " ventas Abiertas -> Pulse Aqui para Eliminarlas";
}

void frmCaja::cmd_VentasActivas_Click() {
    frUltimaVenta.visible = false;
    CargarPanelVentas();
    cargarPanelVentas();
    fr_Ventas.visible = true;
    for (Control* c : std::initializer_list<Control*>{&fr_hijo, &cmdCambioTactil, &txtNomCliente, &cmdBuscarCliente,
                                                      &Command10})
        c->enabled = false;
}

void frmCaja::cmd_SalirVentas_Click() {
    fr_Ventas.visible = false;
    for (Control* c : std::initializer_list<Control*>{&fr_hijo, &cmdCambioTactil, &txtNomCliente, &cmdBuscarCliente,
                                                      &Command10})
        c->enabled = true;
    FocoSeguro(txtcod);
}

void frmCaja::cmd_CambioEmpleado_Click() {
    frUltimaVenta.visible = false;
    Unica<frmPrincipalCantarel>().Show();
    Unload();
}

void frmCaja::Picture1_Click() {
    frUltimaVenta.visible = false;
    FocoEnBuscarProducto = true;
    ModoBusqueda = "Pr";
    txtcod.SetText("");
    if (!MostrarBuscar) return;
    lblCodProd.caption = "";
    MostrarBuscar();
    if (!lblCodProd.caption.empty() && IsNumeric(Value(lblCodProd.caption)))
        VisualizarArticulo(CLng(Value(lblCodProd.caption)));
    tmrVolverLista.SetEnabled(true);
}

void frmCaja::mostrarVenta(std::int32_t numero) {
    Sesion& s = sesion();
    std::string codigoEmpleado, empleado, cliente = "0", nombreCliente;
    LeerDatosVenta(numero, codigoEmpleado, empleado, cliente, nombreCliente);
    const RegistroCliente* ficha = nullptr;
    for (const RegistroCliente& c : s.Clientes)
        if (CStr(Value(c.Codigo)) == cliente) ficha = &c;
    if (cliente != "0" && !ficha) {
        MsgBox("El cliente de esta venta (" + nombreCliente +
                   ") ha sido eliminado para poder continuar debe recuperar dicho cliente",
               vbOKOnly, "Mostrar venta");
        return;
    }
    VentaDinDep = false;
    lblNumVenta.caption = std::to_string(numero);
    MostrarLineasVenta(numero, FGCaja, VentaDinDep);
    SumarTotalGrid(CajaText_Pago, FGCaja);
    lbl_Empleado.caption = empleado;
    fr_Ventas.visible = false;
    for (Control* c : std::initializer_list<Control*>{&fr_hijo, &cmdCambioTactil, &txtNomCliente, &cmdBuscarCliente,
                                                      &Command10})
        c->enabled = true;
    lblCodCliente.caption = cliente;
    txtNomCliente.SetText(nombreCliente);
    if (cliente != "0" && ficha) {
        double deuda = 0;
        if (DeudaCliente(cliente, deuda)) {
            lblDeudaInfo.caption = nombreCliente + " tiene una deuda con nosotros de: ";
            lblImpDeuda.caption = FormatNumber(deuda, s.opciones.NumDecimales);
            frDeuda.backColor = NumeroDeColor(ColorResalte);
            frDeuda.visible = true;
            ticksDeuda_ = 0;
            tmrfinDeuda.SetEnabled(true);
        }
        if (ficha->Descuento > 0) {
            lblDescuentoInfo.caption = "Aplicar " + CStr(Value(ficha->Descuento)) + "% de descuento segun ficha.";
            tmrColorear.SetEnabled(true);
        }
        DineroDeposito(static_cast<std::int32_t>(ficha - s.Clientes.data()));
        tmrDinDep.SetEnabled(false);
        if (ficha->ActivarDinDep) {
            lblValorDinDep.caption = CStr(Value(ficha->DinDep)) + "\r\nSaldo a favor";
            cmdIngDeposito.visible = true;
        }
    } else {
        txtNomCliente.SetText("Cliente Generico");
    }
    if (EsVentaModificada(numero)) {
        LetreroEnMovimiento("Modificacion de Venta");
    }
    // The sale on the screen is open: the next item goes into it.
    VentaNueva = false;
    MostrarTerminar(!FGCaja.TextMatrix(1, 0).empty());
    contarNumArticulos();
}

}  // namespace tpv
