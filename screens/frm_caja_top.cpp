// The rankings panel of the till: the 30 products sold in the most units or
// the 30 customers who bought for the most, over a period that starts as the
// last year, sliding over the sale.
#include <algorithm>
#include <vector>

#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/grid_formatter.hpp"
#include "core/servicios/screen_fitter.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/rankings.hpp"
#include "screens/frm_caja.hpp"

namespace tpv {

namespace {

const char* const kTopProductos = "Los 30 Productos mas vendidos";
const char* const kTopClientes = "Los 30 Clientes con mas ventas";
constexpr double kDiasTop = 365;

// The figure of a row as the sort compares it; an empty row goes last.
double CifraDeFila(const Grid& g, long fila) {
    const std::string& t = g.TextMatrix(fila, 1);
    double v = 0;
    return LeerNumero(t, v) ? v : -1e308;
}

// Sorts the rows under the heading by the figure of column 1, highest first.
void OrdenarDescendente(Grid& g) {
    std::vector<std::vector<std::string>> filas;
    for (long f = g.FixedRows(); f < g.Rows(); ++f) {
        std::vector<std::string> celdas;
        for (long c = 0; c < g.Cols(); ++c) celdas.push_back(g.TextMatrix(f, c));
        filas.push_back(std::move(celdas));
    }
    std::vector<double> cifras;
    for (long f = g.FixedRows(); f < g.Rows(); ++f) cifras.push_back(CifraDeFila(g, f));
    std::vector<std::size_t> orden(filas.size());
    for (std::size_t i = 0; i < orden.size(); ++i) orden[i] = i;
    std::stable_sort(orden.begin(), orden.end(), [&](std::size_t a, std::size_t b) { return cifras[a] > cifras[b]; });
    for (std::size_t i = 0; i < orden.size(); ++i)
        for (long c = 0; c < g.Cols(); ++c)
            g.SetTextMatrix(g.FixedRows() + static_cast<long>(i), c, filas[orden[i]][static_cast<std::size_t>(c)]);
}

}  // namespace

void frmCaja::DisenarTop() {
    Poner(lblTopInfo, "lblTopInfo", 240, 120, 5160, 480, "", &frTop);
    lblTopInfo.fontSize = 12;
    Poner(lbl_cerrar, "lbl_cerrar", 5520, 120, 1560, 480, "CERRAR X", &frTop);
    Poner(f_desde, "f_desde", 240, 720, 2280, 600, "", &frTop);
    Poner(f_hasta, "f_hasta", 2640, 720, 2280, 600, "", &frTop);
    Poner(cmdActualizarTop, "cmdActualizarTop", 5040, 720, 2040, 600, "Actualizar", &frTop);
    Poner(fg_top, "fg_top", 240, 1440, 6840, 3720, "", &frTop);
}

void frmCaja::ConectarTop() {
    cmd_TopProductos.Click = [this] {
        lblTopInfo.caption = kTopProductos;
        mostrarTop();
    };
    cmd_TopEmpleados.Click = [this] {
        lblTopInfo.caption = kTopClientes;
        mostrarTop();
    };
    cmdActualizarTop.Click = [this] { CargarTop(lblTopInfo.caption, f_desde.Value(), f_hasta.Value()); };
    lbl_cerrar.Click = [this] { lbl_cerrar_Click(); };
}

void frmCaja::mostrarTop() {
    frUltimaVenta.visible = false;
    const DateTime hoy = Date();
    f_desde.SetValue(DateTime{hoy.serial - kDiasTop});
    f_hasta.SetValue(hoy);
    if (frTop.visible) {
        frTop.visible = false;
        cmd_Salir.visible = true;
    }
    CargarTop(lblTopInfo.caption, f_desde.Value(), f_hasta.Value());
    if (sesion().opciones_terminal.AnimacionesActivas) {
        frTop.top = height;
        MoveFrame(frTop, "arriba", FGCaja.top);
    } else {
        frTop.top = FGCaja.top;
        frTop.visible = true;
    }
    cmd_Salir.visible = false;
}

void frmCaja::CargarTop(const std::string& titulo, DateTime desde, DateTime hasta) {
    if (titulo == kTopProductos) Top_Ten("P", desde, hasta);
    else if (titulo == kTopClientes) Top_Ten("clientes", desde, hasta);
}

void frmCaja::Top_Ten(const std::string& tipo, DateTime desde, DateTime hasta) {
    const TablaTop tabla = LeerTop(tipo, desde, hasta);
    fg_top.Clear();
    fg_top.SetRows(2);
    fg_top.SetCols(3);
    const double factor = ScreenFitter::Instancia().FactorAncho();
    GridFormatter::Instancia().Formatear(fg_top, tipo == "P" ? ";Ud. Vendidas;Producto" : ";Importe;Nombre",
                                         "0/Izquierda;" + CStr(Value(factor * 1500)) + "/Centrado;" +
                                             CStr(Value(factor * 5500)) + "/Izquierda");
    // Each place goes to the last row; a place with a figure opens the next.
    for (const FilaTop& f : tabla) {
        if (f.cifra == 0 && f.nombre.empty()) break;
        const long fila = fg_top.Rows() - 1;
        fg_top.SetTextMatrix(fila, 1, CStr(Value(f.cifra)));
        fg_top.SetTextMatrix(fila, 2, f.nombre);
        if (f.cifra != 0) fg_top.SetRows(fg_top.Rows() + 1);
    }
    OrdenarDescendente(fg_top);
}

void frmCaja::lbl_cerrar_Click() {
    if (sesion().opciones_terminal.AnimacionesActivas) MoveFrame(frTop, "abajo", height);
    else frTop.visible = false;
    cmd_Salir.visible = true;
    FocoEntrada();
}

}  // namespace tpv
