#include "screens/frm_devoluciones.hpp"

#include <cctype>

#include "closing/abono.hpp"
#include "closing/reabrir.hpp"
#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/caption_translator.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/grid_formatter.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/frm_caja.hpp"

namespace tpv {

namespace {

// Wide enough for the grid's five columns (7,300 twips) beside its scroll bar.
constexpr double kAncho = 8160;
constexpr double kAlto = 6720;
constexpr double kMargen = 240;
constexpr double kAltoBoton = 720;
constexpr double kFuenteGrande = 14;
constexpr long kRojo = 255;
constexpr long kColumnas = 5;

// "Juan Perez Lopez" shows as "J.Perez"; a name of one word as it is.
std::string EmpleadoCorto(const std::string& nombre) {
    const auto blanco = nombre.find(' ');
    if (blanco == std::string::npos || nombre.empty()) return nombre;
    std::string resto = nombre.substr(blanco + 1);
    const auto fin = resto.find(' ');
    if (fin != std::string::npos) resto.resize(fin);
    return nombre.substr(0, 1) + "." + resto;
}

// The number typed in: digits only, as the whole numbers of the sales are.
bool NumeroTecleado(const std::string& texto, std::int32_t& numero) {
    if (texto.empty() || texto.size() > 9) return false;
    for (unsigned char c : texto)
        if (!std::isdigit(c)) return false;
    numero = static_cast<std::int32_t>(std::stol(texto));
    return true;
}

}  // namespace

void frmDevoluciones::Disenar() {
    nombre = "frmDevoluciones";
    caption = "Ventas";
    width = kAncho;
    height = kAlto;
    Poner(Label1, "Label1", kMargen, kMargen, kAncho - 2 * kMargen, 480);
    Label1.fontSize = kFuenteGrande;
    Poner(lblBuscarCliente, "lblBuscarCliente", kMargen, 840, 3600, 600,
          "Pulse sobre una venta o escriba su numero");
    Poner(lblEliminarInfo, "lblEliminarInfo", kMargen, 840, 3600, 600,
          "La venta quedara borrada y registrada como incidencia");
    lblEliminarInfo.visible = false;
    Poner(txtNumFac, "txtNumFac", 3960, 840, 3120, 600);
    txtNumFac.fontSize = kFuenteGrande;
    txtNumFac.tabIndex = 0;
    Poner(grid_devolucion, "grid_devolucion", kMargen, 1560, kAncho - 2 * kMargen, 3960);
    grid_devolucion = Grid(2, kColumnas);
    grid_devolucion.nombre = "grid_devolucion";
    grid_devolucion.left = kMargen;
    grid_devolucion.top = 1560;
    grid_devolucion.width = kAncho - 2 * kMargen;
    grid_devolucion.height = 3960;
    grid_devolucion.tabIndex = 1;
    Poner(cmdAceptar, "cmdAceptar", kMargen, 5760, 3360, kAltoBoton, "Aceptar");
    cmdAceptar.tabIndex = 2;
    Poner(cmdSalir, "cmdSalir", kAncho - kMargen - 3360, 5760, 3360, kAltoBoton, "Salir");
    cmdSalir.tabIndex = 3;

    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdSalir.Click = [this] { cmdSalir_Click(); };
    grid_devolucion.Click = [this] {
        txtNumFac.SetText(grid_devolucion.TextMatrix(grid_devolucion.Row(), 0));
    };
}

void frmDevoluciones::Form_Load() {
    Sesion& s = sesion();
    CaptionTranslator::Instancia().Traducir(s.Conexion, *this);
    ColourScheme colores;
    colores.Colorear(*this, s.EsquemaColores, s.Conexion);
    // Over the till's sale grid, where the sale would be.
    const frmCaja& caja = Unica<frmCaja>();
    left = caja.FGCaja.left;
    top = caja.FGCaja.top;

    if (Abono)
        Label1.caption = "Devoluciones de Ventas (Abonos)";
    else if (Modificacion)
        Label1.caption = "Modificaciones de Ventas";
    else
        Label1.caption = "Borrar ventas ya cobradas";
    const bool borrado = !Abono && !Modificacion;
    lblBuscarCliente.visible = !borrado;
    lblEliminarInfo.visible = borrado;

    GridFormatter::Instancia().Formatear(grid_devolucion, "Factura;Cliente;Fecha;Importe;Empleado",
                                         "1000/Centrado;1800/Izquierda;1400/Centrado;1600/centrado;1500/Izquierda");
    CargarUltimasVentas();
}

void frmDevoluciones::CargarUltimasVentas() {
    Recordset rs;
    rs.Open("SELECT top 30 Cabecera_factura.Numero, Cabecera_factura.cliente, Cabecera_factura.FechaVENTA, "
            "Cabecera_factura.Total,cabecera_factura.empleado FROM Cabecera_factura ORDER BY Cabecera_factura.Numero "
            "DESC",
            sesion().Conexion);
    grid_devolucion.SetRows(1);
    for (; !rs.Eof(); rs.MoveNext()) {
        const long fila = grid_devolucion.Rows();
        grid_devolucion.SetRows(fila + 1);
        const std::string numero = Texto(rs["Numero"]);
        grid_devolucion.SetTextMatrix(fila, 0, numero);
        grid_devolucion.SetTextMatrix(fila, 1, NombreCliente(rs["cliente"]));
        grid_devolucion.SetTextMatrix(fila, 2, Texto(rs["FechaVENTA"]));
        grid_devolucion.SetTextMatrix(fila, 3, Texto(rs["Total"]));
        grid_devolucion.SetTextMatrix(fila, 4, EmpleadoCorto(Texto(rs["empleado"])));
        if (TieneDeuda(CLng(rs["Numero"])))
            for (long c = 0; c < kColumnas; ++c) grid_devolucion.SetCellBackColor(fila, c, kRojo);
    }
    // The grid keeps one empty row under its heading when there is no sale.
    if (grid_devolucion.Rows() < 2) grid_devolucion.SetRows(2);
}

void frmDevoluciones::cmdAceptar_Click() {
    const std::string texto = txtNumFac.Text();
    if (texto.empty()) return;
    // Anything but a number matches no sale.
    std::int32_t numero = 0;
    const bool esNumero = NumeroTecleado(texto, numero);
    // The titles and words of the first two refusals were written for the
    // deletion; every mode shows them as they are.
    if (!Modificacion && esNumero && EsAbono(numero)) {
        MsgBox("El numero de ticket / factura es un abono, no se puede borrar.", vbCritical, "Devolucion de Venta");
        frmCaja::FocoSeguro(txtNumFac);
        return;
    }
    if (esNumero && TieneDeuda(numero)) {
        MsgBox("Esta venta tiene una deuda, para poder borrarla antes tiene que cancelar o eliminar la deuda.",
               vbCritical, "Borrado de Venta");
        return;
    }
    if (!esNumero || !existeNumFactura(numero)) {
        MsgBox("El numero de ticket / factura no coincide con ninguna venta.", vbCritical, "Devolucion de Venta");
        frmCaja::FocoSeguro(txtNumFac);
        return;
    }
    if (!Abono) {
        ReabrirFactura(numero, NumeroVentaReabierta);
        if (Modificacion)
            PantallaDevolucion();
        else
            PantallaBorrado();
        return;
    }
    // A refund writes nothing until it is closed.
    pantallaAbono();
}

void frmDevoluciones::pantallaAbono() {
    Unica<frmCaja>().VentaReabierta = CLng(Value(txtNumFac.Text()));
    Unload();
}

void frmDevoluciones::PantallaDevolucion() {
    Unica<frmCaja>().VentaReabierta = CLng(Value(NumeroVentaReabierta));
    Unload();
}

void frmDevoluciones::PantallaBorrado() {
    Unica<frmCaja>().VentaBorrar = CLng(Value(NumeroVentaReabierta));
    Unload();
}

void frmDevoluciones::cmdSalir_Click() {
    Unica<frmCaja>().VentaReabierta = 0;
    Unload();
}

}  // namespace tpv
