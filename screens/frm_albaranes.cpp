#include "screens/frm_albaranes.hpp"

#include <vector>

#include "closing/albaranes.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/caption_translator.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/grid_formatter.hpp"
#include "core/servicios/screen_fitter.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/colores.hpp"
#include "screens/frm_caja.hpp"
#include "screens/pantallas.hpp"

namespace tpv {

namespace {

constexpr double kAncho = 7680;
constexpr double kAlto = 9600;
constexpr double kMargen = 120;
constexpr double kAltoLista = 3120;
constexpr double kAltoBoton = 960;

const char* const kTitulos = "Albaran;Cliente;Fecha;Importe;Empleado;numFactura";
constexpr long kColImporteNota = 3;
constexpr long kColNumeroNota = 5;  // hidden: the note's open sale

bool FilaConNota(const Grid& grid, long fila) {
    return fila >= 1 && fila < grid.Rows() && !grid.TextMatrix(fila, 0).empty();
}

// A list with no note keeps one empty row under its heading.
bool SinNotas(const Grid& grid) { return !FilaConNota(grid, 1); }

}  // namespace

void frmAlbaranes::Disenar() {
    nombre = "frmAlbaranes";
    caption = "Conversion de Albaranes";
    width = kAncho;
    height = kAlto;
    const double anchoLista = kAncho - 2 * kMargen;
    Poner(Label1, "Label1", kMargen, 120, anchoLista, 480, "Albaranes de ");
    Label1.fontSize = 14;
    Poner(Label2, "Label2", kMargen, 720, anchoLista, 360, "Relacion de albaranes pendientes de facturar");
    Poner(grid_devolucion, "grid_devolucion", kMargen, 1080, anchoLista, kAltoLista);
    Poner(Label3, "Label3", kMargen, 4320, anchoLista, 360, "Albaranes seleccionados para facturar");
    Poner(gridSel, "gridSel", kMargen, 4680, anchoLista, kAltoLista);
    Poner(Label4, "Label4", kMargen, 7920, 1800, 600, "Total");
    Label4.fontSize = 14;
    Poner(txtTotal, "txtTotal", kMargen + 1920, 7920, 2400, 600, "");
    txtTotal.fontSize = 14;
    txtTotal.locked = true;
    txtTotal.tabStop = false;
    Poner(lblNumVenta, "lblNumVenta", kMargen + 4440, 7920, 1200, 600, "");
    lblNumVenta.visible = false;
    Poner(cmdAceptar, "cmdAceptar", kMargen, 8520, 4440, kAltoBoton, "Convertir y Terminar Venta");
    cmdAceptar.visible = false;
    Poner(cmdSalir, "cmdSalir", kMargen + 4560, 8520, anchoLista - 4560, kAltoBoton, "Salir");
    Poner(tmrColorear, "tmrColorear", 0, 0, 0, 0);
    tmrColorear.SetInterval(500);
    tmrColorear.enabled = false;

    GridFormatter& formato = GridFormatter::Instancia();
    formato.Formatear(grid_devolucion, kTitulos,
                      "1000/Centrado;2400/Izquierda;1200/Centrado;1200/centrado;1400/Izquierda;0/derecha");
    formato.Formatear(gridSel, kTitulos,
                      "1000/Centrado;2400/Izquierda;1500/Centrado;1200/centrado;1500/Izquierda;0/derecha");

    grid_devolucion.Click = [this] { grid_devolucion_Click(); };
    gridSel.Click = [this] { gridSel_Click(); };
    txtTotal.Change = [this] { txtTotal_Change(); };
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdSalir.Click = [this] { Unload(); };
    tmrColorear.Tick = [this] { tmrColorear_Timer(); };
}

void frmAlbaranes::Form_Load() {
    Sesion& s = sesion();
    const frmCaja& caja = Unica<frmCaja>();
    CaptionTranslator::Instancia().Traducir(s.Conexion, *this);
    ColourScheme colores;
    colores.Colorear(*this, s.EsquemaColores, s.Conexion);
    ScreenFitter::Instancia().Ajustar(s.Conexion, *this, s.AnchoPantalla, s.AltoPantalla, kAnchoDiseno, kAltoDiseno);
    colorFondo_ = NumeroDeColor(caja.ColorFondo);
    colorSegundo_ = NumeroDeColor(caja.ColorSegundo);
    // Over the till's list of lines, inside the screen.
    left = caja.fr_hijo.left + caja.FGCaja.left;
    top = caja.fr_hijo.top + caja.FGCaja.top;
    if (left + width > caja.width) left = caja.width - width;
    if (top + height > caja.height) top = caja.height - height;
    if (left < 0) left = 0;
    if (top < 0) top = 0;
    Label1.caption = "Albaranes de " + caja.txtNomCliente.Text();
    txtTotal.SetText("0");
    CargarAlbaranes();
}

void frmAlbaranes::CargarAlbaranes() {
    const std::vector<AlbaranPendiente> notas = AlbaranesPendientes(CLng(Value(Unica<frmCaja>().lblCodCliente.caption)));
    if (notas.empty()) return;
    grid_devolucion.SetRows(static_cast<long>(notas.size()) + 1);
    long fila = 1;
    for (const AlbaranPendiente& n : notas) {
        const std::string celdas[] = {n.albaran, n.cliente, n.fecha, n.importe, n.empleado, n.numero};
        for (long c = 0; c <= kColNumeroNota; ++c) grid_devolucion.SetTextMatrix(fila, c, celdas[c]);
        ++fila;
    }
}

void frmAlbaranes::MoverFila(Grid& origen, long fila, Grid& destino) {
    long nueva = 1;
    if (!SinNotas(destino)) {
        nueva = destino.Rows();
        destino.SetRows(nueva + 1);
    }
    for (long c = 0; c < origen.Cols() && c < destino.Cols(); ++c)
        destino.SetTextMatrix(nueva, c, origen.TextMatrix(fila, c));
    if (origen.Rows() > 2) {
        origen.RemoveItem(fila);
    } else {
        for (long c = 0; c < origen.Cols(); ++c) origen.SetTextMatrix(1, c, "");
    }
}

void frmAlbaranes::SumarAlTotal(double importe) {
    const double total = txtTotal.Text().empty() ? 0.0 : CDbl(Value(txtTotal.Text()));
    txtTotal.SetText(CStr(Value(total + importe)));
}

void frmAlbaranes::grid_devolucion_Click() {
    const long fila = grid_devolucion.Row();
    if (!FilaConNota(grid_devolucion, fila)) return;
    const double importe = CDbl(Value(grid_devolucion.TextMatrix(fila, kColImporteNota)));
    MoverFila(grid_devolucion, fila, gridSel);
    SumarAlTotal(importe);
    cmdAceptar.visible = true;
}

void frmAlbaranes::gridSel_Click() {
    const long fila = gridSel.Row();
    if (!FilaConNota(gridSel, fila)) return;
    const double importe = CDbl(Value(gridSel.TextMatrix(fila, kColImporteNota)));
    MoverFila(gridSel, fila, grid_devolucion);
    SumarAlTotal(-importe);
    if (SinNotas(gridSel)) cmdAceptar.visible = false;
}

// Once there is something to invoice the accept button calls for attention,
// until the screen goes.
void frmAlbaranes::txtTotal_Change() {
    if (!txtTotal.Text().empty() && CDbl(Value(txtTotal.Text())) > 0) tmrColorear.SetEnabled(true);
}

void frmAlbaranes::tmrColorear_Timer() {
    cmdAceptar.backColor = cmdAceptar.backColor == colorFondo_ ? colorSegundo_ : colorFondo_;
}

void frmAlbaranes::cmdAceptar_Click() {
    if (!SinNotas(gridSel)) JuntarAlbaranesYMostrar();
}

void frmAlbaranes::JuntarAlbaranesYMostrar() {
    frmCaja& caja = Unica<frmCaja>();
    std::vector<std::int32_t> notas;
    for (long f = 1; f < gridSel.Rows(); ++f)
        if (FilaConNota(gridSel, f)) notas.push_back(CLng(Value(gridSel.TextMatrix(f, kColNumeroNota))));
    JuntarAlbaranes(lblNumVenta, CLng(Value(caja.lblCodCliente.caption)), notas);
    caja.VentaAlbaranes = lblNumVenta.caption;
    Unload();
}

}  // namespace tpv
