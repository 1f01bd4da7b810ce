// The till screen's events wired to its routines, its timers, the sliding
// panels, the help page and the hidden corner frames.
#include <filesystem>

#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/reloj.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/suite_context.hpp"
#include "core/servicios/suite_launcher.hpp"
#include "core/servicios/zoom_panel.hpp"
#include "core/sesion/configuracion.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/cajon.hpp"
#include "screens/colores.hpp"
#include "screens/frm_caja.hpp"
#include "screens/frm_caja_inicial.hpp"
#include "screens/frm_gastos.hpp"
#include "screens/frm_observaciones.hpp"
#include "screens/frm_reimprimir.hpp"
#include "screens/pantallas.hpp"

namespace tpv {

namespace {

constexpr double kPasoMovimiento = 240;      // twips a sliding panel moves per tick
constexpr double kPasoModificacion = 15;     // twips lblModificacion moves per tick
constexpr int kTicksImagen = 5;              // seconds the enlarged picture stays

}  // namespace

// Where the help page lives: the folder of the running program.
std::string PaginaDeAyuda() {
    std::error_code ec;
    std::filesystem::path programa = std::filesystem::read_symlink("/proc/self/exe", ec);
    const std::string carpeta = ec ? std::string(".") : programa.parent_path().string();
    return carpeta + "/ayudas/caja1.html";
}

void frmCaja::Conectar() {
    // A fresh screen: nothing of the last one stays.
    VentaNueva = true;
    VentaDinDep = false;
    VentaCobrada = false;
    ImprimirFacturaAlCerrar = false;
    FocoEnBuscarProducto = false;
    ControlActivo = nullptr;
    movimiento_ = {};
    ayudaEntrando_ = false;
    ticksImagen_ = 0;
    ticksDeuda_ = 0;

    ConectarCodigo();
    ConectarTactil();
    ConectarOpciones();
    ConectarTimers();
    ConectarTop();
    cmdCajaInicial.Click = [] { Unica<frmCajaInicial>().Show(true); };
    cmdGastos.Click = [] { Unica<frmGastos>().Show(true); };
    Command7.Click = [] { Unica<frmObservaciones>().Show(true); };
    cmdReimprimir.Click = [] { Unica<frmReImprimir>().Show(true); };
    ConectarLupa();
    ConectarDescuentos();
    ConectarDevoluciones();
    ConectarClientes();
    ConectarAlbaranes();
    ConectarDeposito();
    ConectarDeuda();
    cmdNuevaVenta.Click = [this] { cmdNuevaVenta_Click(); };
    cmd_CambioEmpleado.Click = [this] { cmd_CambioEmpleado_Click(); };
    cmd_VentasActivas.Click = [this] { cmd_VentasActivas_Click(); };
    cmd_SalirVentas.Click = [this] { cmd_SalirVentas_Click(); };
    cmdCambioTactil.Click = [this] { cmdCambioTactil_Click(); };
    cmdTerminarVenta.Click = [this] { cmdTerminarVenta_Click(); };
    cmdTerminarVenta_Tactil.Click = [this] { cmdTerminarVenta_Click(); };
    cmd_Salir.Click = [this] { Unload(); };
    cmdAbrirCajetin.Click = [] { AbrirCajon(); };
    Picture1.Click = [this] { Picture1_Click(); };
    // The product's picture, enlarged for a few seconds.
    picImagen.Click = [this] {
        if (picImagen.picture.empty()) return;
        imgProdZoom.picture = picImagen.picture;
        frImagen.visible = true;
        ticksImagen_ = 0;
        tmrQuitarImg.SetEnabled(true);
    };
    cmdObservaciones.Click = [this] {
        frUltimaVenta.visible = false;
        frOpcionesCaja.visible = true;
    };
    cmdSalirOpciones.Click = [this] {
        frOpcionesCaja.visible = false;
        FocoEntrada();
    };
    cmdAyuda.Click = [this] { cmdAyuda_Click(); };
    Open1.Cerrado = [this] {
        ayudaEntrando_ = false;
        tmrAyuda.SetEnabled(true);
    };
    fr_Zoom1.Click = [this] {
        Sesion& s = sesion();
        s.AnchoDiseno = width;
        s.AltoDiseno = height;
        if (SuiteContext::Instancia().ElegirTamano(s.Conexion, s.AnchoPantalla, s.AltoPantalla)) ModificarTamano();
    };
    fr_Zoom2.Click = [this] {
        Sesion& s = sesion();
        const bool ajuste = SuiteContext::Instancia().AjusteLetra(s.Conexion);
        ZoomPanel::Instancia().Aplicar(s.Conexion, *this, ajuste);
    };
    fr_Zoom3.Click = [this] {
        Sesion& s = sesion();
        s.EsquemaColores = SuiteContext::Instancia().ElegirEsquemaColores(s.Conexion);
        colorearme();
    };
    ConectarTeclasDeFuncion();
}

void frmCaja::ConectarCodigo() {
    txtcod.KeyPress = [this](int& k) { txtcod_KeyPress(k); };
    txtCodBarras.KeyPress = [this](int& k) { txtCodBarras_KeyPress(k); };
    txtCantidad.KeyPress = [this](int& k) { txtCantidad_KeyPress(k); };
    txtPeso.KeyPress = [this](int& k) { txtPeso_KeyPress(k); };
    txtPrecio.KeyPress = [this](int& k) { txtPrecio_KeyPress(k); };
    txtUltProd.Change = [this] {
        if (txtUltProd.Text().empty()) return;
        frUltimaLinea.visible = true;
        contarNumArticulos();
    };
    // Every entry shows the focus in its colour with its text selected, and
    // is the one the pads write to.
    for (Control& c : controles) {
        auto* caja = dynamic_cast<TextBox*>(&c);
        if (!caja) continue;
        caja->GotFocus = [this, caja] {
            caja->backColor = NumeroDeColor(ColorFoco);
            caja->selStart = 0;
            caja->selLength = Len(caja->Text());
            ControlActivo = caja;
            if (caja == &txtCantidad || caja == &txtPeso || caja == &txtPrecio) FocoEnBuscarProducto = false;
        };
        caja->LostFocus = [caja] { caja->backColor = 0xFFFFFF; };
    }
    optPTotal.Click = [this] {
        if (cambiandoOpciones_) return;
        sesion().PedirPrecioTotal = true;
        GuardarPedirPrecioTotal(true);
        txtPrecio.SetText(FormatNumber(Value(0.0), sesion().opciones.NumDecimales));
    };
    optPXKilo.Click = [this] {
        if (cambiandoOpciones_) return;
        sesion().PedirPrecioTotal = false;
        GuardarPedirPrecioTotal(false);
        const double precio = txtPrecio.tag.empty() ? 0.0 : CDbl(Value(txtPrecio.tag));
        txtPrecio.SetText(FormatNumber(Value(precio), sesion().opciones.NumDecimales));
    };
}

void frmCaja::ConectarTactil() {
    PanelProductos.Pulsado = [this] { PanelProductos_Pulsado(); };
    panelProveedores.Pulsado = [this] { panelProveedores_Pulsado(); };
    PanelSecciones.Pulsado = [this] { PanelSecciones_Pulsado(); };
    PanelVentas.Pulsado = [this] { PanelVentas_Pulsado(); };
    PanelTarifas.Pulsado = [this] { PanelTarifas_Pulsado(); };
    cmdXProveedor.Click = [this] { cmdXProveedor_Click(); };
    cmdXSeccion.Click = [this] { cmdXSeccion_Click(); };
    for (int d = 0; d < 10; ++d) {
        btnNumerico_Cobro[d].Click = [this, d] { PulsarDigito(ControlActivo, d); };
        btnNumPeso_Cobro[d].Click = [this, d] { btnNumerico_Cobro[d].Click(); };
        btnNumerico_Lupa[d].Click = [this, d] { PulsarDigito(&txt_ValorLupa, d); };
    }
    btnNumerico_Cobro[10].Click = [this] { PulsarComa(ControlActivo); };
    btnNumPeso_Cobro[10].Click = [this] { btnNumerico_Cobro[10].Click(); };
    btnNumerico_Lupa[10].Click = [this] { PulsarComa(&txt_ValorLupa); };
    cmd_nuevoCobro.Click = [this] {
        if (ControlActivo) ControlActivo->SetText("");
    };
    cmd_nuevoPeso.Click = [this] { cmd_nuevoCobro.Click(); };
    cmd_nuevoLupa.Click = [this] { txt_ValorLupa.SetText("0"); };
    cmdAceptarNum.Click = [this] { cmdAceptarNum_Click(); };
    cmdAceptarNumPeso.Click = [this] { cmdAceptarNum_Click(); };
}

void frmCaja::ConectarOpciones() {
    chkPideCantidad.toolTipText = "Activado = Pedir Cantidad de productos";
    chkLineaXProducto.toolTipText = "Activado = Una linea por cada unidad de producto";
    chkPideCantidad.Click = [this] {
        chkPideCantidad.toolTipText = chkPideCantidad.Value() == 1 ? "Activado = Pedir Cantidad de productos"
                                                                     : "No Activado = No Pide Cantidad de productos";
        if (cambiandoOpciones_) return;
        sesion().PedirCantidad = chkPideCantidad.Value() == 1;
        GuardarPedirCantidad(sesion().PedirCantidad);
    };
    chkLineaXProducto.Click = [this] {
        chkLineaXProducto.toolTipText = chkLineaXProducto.Value() == 1
                                            ? "Activado = Una linea por cada unidad de producto"
                                            : "No Activado = Una linea por cada unidad de producto";
        if (cambiandoOpciones_) return;
        sesion().LineaXProducto = chkLineaXProducto.Value() == 1;
        GuardarLineaXProducto(sesion().LineaXProducto);
    };
    optNombre.Click = [this] {
        if (!cambiandoOpciones_) guardarOrdenItems("Nombre");
    };
    optPosicion.Click = [this] {
        if (!cambiandoOpciones_) guardarOrdenItems("Posicion");
    };
    slDiasCad.Change = [this] {
        if (chkCadValeNunca.Value() == 1) return;
        lbldiasCad.caption = std::to_string(slDiasCad.Value() * 15) + " dias";
        if (cambiandoOpciones_) return;
        sesion().DiasCaducidadValeDescuento = static_cast<std::int32_t>(slDiasCad.Value() * 15);
        GuardarDiasCaducidadValeDescuento(sesion().DiasCaducidadValeDescuento);
    };
    chkCadValeNunca.Click = [this] {
        const bool nunca = chkCadValeNunca.Value() == 1;
        chkCadValeNunca.tag = nunca ? "-1" : "";
        slDiasCad.enabled = !nunca;
        if (nunca) {
            slDiasCad.SetValue(slDiasCad.max);
            lbldiasCad.caption = "Nunca";
        } else {
            lbldiasCad.caption = std::to_string(slDiasCad.Value() * 15) + " dias";
        }
        if (cambiandoOpciones_) return;
        sesion().DiasCaducidadValeDescuento =
            nunca ? -1 : static_cast<std::int32_t>(slDiasCad.Value() * 15);
        GuardarDiasCaducidadValeDescuento(sesion().DiasCaducidadValeDescuento);
    };
}

void frmCaja::ConectarTimers() {
    tmrHora.Tick = [this] { lblHora.caption = Format(Value(reloj::Ahora()), "HH:MM"); };
    tmrColorear.Tick = [this] {
        if (lblDescuentoInfo.caption.empty()) {
            cmdTerminarVenta.backColor = NumeroDeColor(ColorResalte);
            tmrColorear.SetEnabled(false);
            return;
        }
        destelloTerminar_ = !destelloTerminar_;
        cmdTerminarVenta.backColor = NumeroDeColor(destelloTerminar_ ? ColorSegundo : ColorResalte);
    };
    tmrDinDep.Tick = [this] {
        const long fondo = NumeroDeColor(ColorFondo);
        cmdIngDeposito.backColor = cmdIngDeposito.backColor != fondo ? fondo : NumeroDeColor(ColorSegundo);
    };
    tmrQuitarImg.Tick = [this] {
        if (++ticksImagen_ < kTicksImagen) return;
        ticksImagen_ = 0;
        frImagen.visible = false;
        tmrQuitarImg.SetEnabled(false);
    };
    tmrMovGen.Tick = [this] { tmrMovGen_Timer(); };
    tmrMovLupa.Tick = [this] { tmrMovLupa_Timer(); };
    tmrMovModificacion.Tick = [this] { tmrMovModificacion_Timer(); };
    tmrVolverLista.Tick = [this] {
        FGCaja.visible = true;
        tmrVolverLista.SetEnabled(false);
    };
    tmrAyuda.Tick = [this] { tmrAyuda_Timer(); };
}

// Every control passes the function keys on, wherever the focus stands.
void frmCaja::ConectarTeclasDeFuncion() {
    for (Control& c : controles) {
        auto propio = c.KeyDown;
        c.KeyDown = [this, propio](int& keyCode, int shift) {
            if (propio) propio(keyCode, shift);
            BotonFuncion(keyCode);
        };
    }
}

void frmCaja::MoveFrame(Control& panel, const std::string& direccion, double destino) {
    panel.visible = true;
    movimiento_ = {&panel, direccion, destino};
    tmrMovGen.SetEnabled(true);
}

void frmCaja::tmrMovGen_Timer() {
    Movimiento& m = movimiento_;
    if (!m.panel) {
        tmrMovGen.SetEnabled(false);
        return;
    }
    Control& p = *m.panel;
    const bool horizontal = m.direccion == "izquierda" || m.direccion == "derecha";
    const bool avanza = m.direccion == "derecha" || m.direccion == "abajo";
    double& pos = horizontal ? p.left : p.top;
    pos += avanza ? kPasoMovimiento : -kPasoMovimiento;
    if ((avanza && pos >= m.destino) || (!avanza && pos <= m.destino)) {
        pos = m.destino;
        tmrMovGen.SetEnabled(false);
        // A panel sent out of the screen is put away.
        if (m.destino >= (horizontal ? width : height) || m.destino + (horizontal ? p.width : p.height) <= 0)
            p.visible = false;
        m = {};
    }
}

// Shows the moving label with `texto`, starting at the help button.
void frmCaja::LetreroEnMovimiento(const std::string& texto) {
    lblModificacion.caption = texto;
    lblModificacion.left = cmdAyuda.left;
    lblModificacion.backColor = fr_Padre.backColor;
    DireccionModificacion = "derecha";
    tmrMovModificacion.SetEnabled(true);
    lblModificacion.visible = true;
}

// The moving label runs between the help and exit buttons and turns at each
// end; with the label hidden the timer stops until it is shown again.
void frmCaja::tmrMovModificacion_Timer() {
    if (!lblModificacion.visible) {
        tmrMovModificacion.SetEnabled(false);
        return;
    }
    const double izquierda = cmdAyuda.left + cmdAyuda.width;
    const double derecha = cmd_Salir.left - lblModificacion.width;
    if (DireccionModificacion == "izquierda") {
        lblModificacion.left -= kPasoModificacion;
        if (lblModificacion.left <= izquierda) {
            lblModificacion.left = izquierda;
            DireccionModificacion = "derecha";
        }
    } else {
        lblModificacion.left += kPasoModificacion;
        if (lblModificacion.left >= derecha) {
            lblModificacion.left = derecha;
            DireccionModificacion = "izquierda";
        }
    }
}

void frmCaja::ColocarAyuda() {
    Open1.left = 0;
    Open1.width = width;
    Open1.top = -Open1.height;
    Open1.visible = false;
}

void frmCaja::cmdAyuda_Click() {
    Open1.Abrir(PaginaDeAyuda());
    Open1.visible = true;
    ayudaEntrando_ = true;
    tmrAyuda.SetEnabled(true);
}

void frmCaja::tmrAyuda_Timer() {
    if (ayudaEntrando_) {
        Open1.top += kPasoMovimiento;
        if (Open1.top >= 0) {
            Open1.top = 0;
            tmrAyuda.SetEnabled(false);
        }
        return;
    }
    Open1.top -= kPasoMovimiento;
    if (Open1.top <= -Open1.height) {
        Open1.top = -Open1.height;
        Open1.visible = false;
        tmrAyuda.SetEnabled(false);
    }
}

}  // namespace tpv
