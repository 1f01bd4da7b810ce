// The line editor of the till: a touch on a line of the sale opens, under
// it, the panel that shows the line as large entries. The assistant changes
// price, quantity, discount or employee on an on-screen pad, or deletes the
// line. Which entry is being changed is told by its colour alone.
#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/key_filter.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/anulacion.hpp"
#include "sale/grid_venta.hpp"
#include "sale/linea_comun.hpp"
#include "sale/linea_editada.hpp"
#include "sale/lineas_venta.hpp"
#include "screens/colores.hpp"
#include "screens/frm_caja.hpp"

namespace tpv {

namespace {

constexpr long kBlanco = 0xFFFFFF;
constexpr double kAltoFilaGrid = 300;   // twips of a row of the sale grid
constexpr double kAltoDatos = 1680;     // the entries of the line
constexpr double kAltoBotones = 720;    // the three buttons under them
constexpr double kAltoMovil = 3600;     // the pad or the employees, sliding out
constexpr double kPasoLupa = 240;       // twips the pad slides per tick
constexpr long kColumnasPintadas = 12;  // columns 0 to 11 show the selection

// An entry of the editor read as a number; empty counts as 0.
double Numero(const TextBox& caja) { return caja.Text().empty() ? 0.0 : CDbl(Value(caja.Text())); }

// "Ana María Gil" is "A. G.": the first letter of the name and of the first
// surname, when there is one.
std::string Iniciales(const std::string& texto) {
    std::vector<std::string> partes;
    for (const std::string& p : Split(Trim(texto), " "))
        if (!p.empty()) partes.push_back(p);
    if (partes.empty()) return "";
    std::string corto = Left(partes[0], 1) + ". ";
    if (partes.size() > 1) corto += Left(partes[1], 1) + ".";
    return corto;
}

}  // namespace

void frmCaja::DisenarLupa() {
    const double ancho = fr_Lupa.width;
    Poner(fr_DatosLupa, "fr_DatosLupa", 0, 240, ancho, kAltoDatos, "", &fr_Lupa);
    Poner(txt_NomLupa, "txt_NomLupa", 120, 0, ancho - 240, 480, "", &fr_DatosLupa);
    struct Entrada {
        TextBox* caja;
        const char* nombre;
        double left, width;
    } entradas[] = {{&txt_PrecioLupa, "txt_PrecioLupa", 120, 1320},  {&txt_CantLupa, "txt_CantLupa", 1560, 1080},
                    {&txt_DescLupa, "txt_DescLupa", 2760, 1320},     {&txt_TotalLupa, "txt_TotalLupa", 4200, 1440},
                    {&txt_EmpLupa, "txt_EmpLupa", 5760, ancho - 5880}};
    for (const Entrada& e : entradas) {
        Poner(*e.caja, e.nombre, e.left, 600, e.width, 600, "", &fr_DatosLupa);
        e.caja->fontSize = 14;
    }
    for (TextBox* t : {&txt_NomLupa, &txt_PrecioLupa, &txt_CantLupa, &txt_DescLupa, &txt_TotalLupa, &txt_EmpLupa}) {
        t->locked = true;
        t->tabStop = false;
    }
    Poner(lblEmpleadosLupa, "lblEmpleadosLupa", 5760, 1260, ancho - 5880, 360, "", &fr_DatosLupa);
    lblEmpleadosLupa.visible = false;
    Poner(lblCodEmp, "lblCodEmp", 120, 1260, 1320, 360, "", &fr_DatosLupa);
    Poner(lbl_tipoItem, "lbl_tipoItem", 1560, 1260, 1080, 360, "", &fr_DatosLupa);
    lblCodEmp.visible = false;
    lbl_tipoItem.visible = false;

    Poner(frLupaInferior, "frLupaInferior", 0, 240 + kAltoDatos, ancho, kAltoBotones, "", &fr_Lupa);
    Poner(cmd_AceptarLupa, "cmd_AceptarLupa", 120, 60, 2280, 600, "Aplicar Cambio", &frLupaInferior);
    Poner(cmd_SalirLupa, "cmd_SalirLupa", 2520, 60, 2280, 600, "Salir sin Cambios", &frLupaInferior);
    Poner(cmd_BorrarLupa, "cmd_BorrarLupa", 4920, 60, ancho - 5040, 600, "Borrar Linea de Venta", &frLupaInferior);

    // The pad and the employees slide out from behind the entries.
    Poner(fr_LupaMovil, "fr_LupaMovil", 0, 240, ancho, kAltoMovil, "", &fr_Lupa);
    fr_LupaMovil.visible = false;
    Poner(fr_NuevoValor, "fr_NuevoValor", 0, 0, ancho, kAltoMovil, "", &fr_LupaMovil);
    Poner(lbl_TitValorLupa, "lbl_TitValorLupa", 240, 120, 2880, 480, "", &fr_NuevoValor);
    Poner(txt_ValorLupa, "txt_ValorLupa", 240, 600, 2880, 720, "", &fr_NuevoValor);
    txt_ValorLupa.fontSize = 14;
    Poner(cmd_AceptarImporte, "cmd_AceptarImporte", 240, 1440, 2880, 960, "Aceptar", &fr_NuevoValor);
    Teclado(btnNumerico_Lupa, "btnNumerico_Lupa", &fr_NuevoValor, 3360, 120, 720);
    Poner(cmd_nuevoLupa, "cmd_nuevoLupa", 3360 + 2 * 840, 120 + 3 * 768, 720, 648, "C", &fr_NuevoValor);
    Poner(fr_EmpLupa, "fr_EmpLupa", 0, 0, ancho, kAltoMovil, "", &fr_LupaMovil);
    Poner(PanelEmpLupa, "PanelEmpLupa", 120, 120, ancho - 240, kAltoMovil - 240, "", &fr_EmpLupa);
}

void frmCaja::ConectarLupa() {
    FGCaja.Click = [this] { FGCaja_Click(); };
    // The entries only show the line; a touch picks the one to change.
    for (TextBox* t : {&txt_NomLupa, &txt_PrecioLupa, &txt_CantLupa, &txt_DescLupa, &txt_TotalLupa, &txt_EmpLupa}) {
        t->GotFocus = nullptr;
        t->LostFocus = nullptr;
    }
    for (TextBox* t : {&txt_PrecioLupa, &txt_CantLupa, &txt_DescLupa, &txt_EmpLupa})
        t->Click = [this, t] { EditarEntradaLupa(*t); };
    txt_ValorLupa.KeyPress = [this](int& k) { txt_ValorLupa_KeyPress(k); };
    cmd_AceptarImporte.Click = [this] { cmd_AceptarImporte_Click(); };
    cmd_AceptarLupa.Click = [this] { cmd_AceptarLupa_Click(); };
    cmd_SalirLupa.Click = [this] { cmd_SalirLupa_Click(); };
    cmd_BorrarLupa.Click = [this] { cmd_BorrarLupa_Click(); };
    PanelEmpLupa.Pulsado = [this] { PanelEmpLupa_Pulsado(); };
}

void frmCaja::FGCaja_Click() {
    const long fila = FGCaja.Row();
    if (FGCaja.Rows() <= 1 || fila < FGCaja.FixedRows()) return;
    if (FGCaja.TextMatrix(fila, kColPvp).empty()) return;
    if (FGCaja.Col() == kColEmpleado && InStr(FGCaja.TextMatrix(fila, kColEmpleado), "/") > 0)
        MuestroLupaEmpleados(fila);
    else
        lblEmpleadosLupa.visible = false;

    // The row selected before goes back to the grid's colour; this one turns white.
    const long colorFilas = NumeroDeColor(ColorFilasGrid);
    for (long r = FGCaja.FixedRows(); r < FGCaja.Rows(); ++r) {
        if (FGCaja.CellBackColor(r, 0) != kBlanco) continue;
        for (long c = 0; c < FGCaja.Cols(); ++c) FGCaja.SetCellBackColor(r, c, colorFilas);
    }
    for (long c = 0; c < kColumnasPintadas && c < FGCaja.Cols(); ++c) FGCaja.SetCellBackColor(fila, c, kBlanco);

    cmd_AceptarLupa.backColor = NumeroDeColor(ColorResalte);
    ColocoLupa(fila);
    CargoDatosLupa(fila);
    QuitarFocoCajasLupa();
    fr_Lupa.visible = true;
    fr_hijo.enabled = false;
}

// A line sold by several employees: their names, one a line, under the entry.
void frmCaja::MuestroLupaEmpleados(long fila) {
    std::string texto;
    for (const std::string& nombre : Split(FGCaja.TextMatrix(fila, kColEmpleado), "/"))
        texto += (texto.empty() ? "" : "\r\n") + Trim(nombre);
    lblEmpleadosLupa.caption = texto;
    lblEmpleadosLupa.visible = true;
}

void frmCaja::ColocoLupa(long fila) {
    ReducirLupa();
    fr_Lupa.left = FGCaja.left;
    fr_Lupa.width = FGCaja.width;
    fr_Lupa.top = FGCaja.top + (fila - FGCaja.TopRow() + 1) * kAltoFilaGrid;
    // Under a row near the bottom it would leave the screen: it rises.
    const double alto = fr_Lupa.height + kAltoMovil;
    if (fr_Lupa.top + alto > height) fr_Lupa.top = height - alto;
    if (fr_Lupa.top < 0) fr_Lupa.top = 0;
    frLupaInferior.left = 0;
}

void frmCaja::ReducirLupa() {
    fr_Lupa.height = frLupaInferior.top + frLupaInferior.height;
    fr_LupaMovil.visible = false;
    tmrMovLupa.SetEnabled(false);
}

void frmCaja::QuitarFocoCajasLupa() {
    for (TextBox* t : {&txt_PrecioLupa, &txt_CantLupa, &txt_DescLupa, &txt_EmpLupa}) t->backColor = kBlanco;
}

void frmCaja::CargoDatosLupa(long fila) {
    auto celda = [&](long c) -> const std::string& { return FGCaja.TextMatrix(fila, c); };
    txt_NomLupa.SetText(celda(kColNombre));
    const std::string precio = celda(kColPvp).empty() ? "0" : celda(kColPvp);
    txt_PrecioLupa.SetText(precio);
    txt_PrecioLupa.tag = precio;
    txt_EmpLupa.SetText(celda(kColEmpleado));
    txt_CantLupa.SetText(celda(kColUnidades));
    const double valorPrecio = CDbl(Value(precio));
    double descuento = 0;
    if (valorPrecio > 0) descuento = NumeroCelda(FGCaja, fila, kColPorcentaje) / valorPrecio * 100;
    txt_DescLupa.SetText(FormatNumber(Value(descuento), 4));
    txt_TotalLupa.SetText(celda(kColImporte).empty() ? "0" : celda(kColImporte));
    lblCodEmp.caption = celda(kColCodEmpleado);
    lbl_tipoItem.caption = celda(kColTipo);
    cmd_AceptarImporte.backColor = NumeroDeColor(ColorResalte);
    cmd_BorrarLupa.visible = true;
}

void frmCaja::EditarEntradaLupa(TextBox& entrada) {
    const long resalte = NumeroDeColor(ColorResalte);
    QuitarFocoCajasLupa();
    entrada.backColor = resalte;
    const bool empleados = &entrada == &txt_EmpLupa;
    if (&entrada == &txt_PrecioLupa)
        lbl_TitValorLupa.caption = "Ingrese el nuevo Valor";
    else if (&entrada == &txt_CantLupa)
        lbl_TitValorLupa.caption = "Ingrese la nueva Cantidad";
    else if (&entrada == &txt_DescLupa)
        lbl_TitValorLupa.caption = "Ingrese el Descuento";
    if (!empleados) {
        txt_ValorLupa.SetText(entrada.Text());
        txt_ValorLupa.selStart = 0;
        txt_ValorLupa.selLength = Len(txt_ValorLupa.Text());
    }
    ReducirLupa();
    moverLupa(empleados);
}

void frmCaja::moverLupa(bool conEmpleados) {
    fr_EmpLupa.visible = conEmpleados;
    fr_NuevoValor.visible = !conEmpleados;
    fr_Lupa.height = fr_DatosLupa.top + fr_DatosLupa.height + fr_LupaMovil.height;
    fr_LupaMovil.visible = true;
    if (sesion().opciones_terminal.AnimacionesActivas) {
        fr_LupaMovil.top = fr_DatosLupa.top;
        tmrMovLupa.SetEnabled(true);
    } else {
        fr_LupaMovil.top = fr_DatosLupa.top + fr_DatosLupa.height;
    }
    if (!conEmpleados) FocoSeguro(txt_ValorLupa);
}

void frmCaja::tmrMovLupa_Timer() {
    const double destino = fr_DatosLupa.top + fr_DatosLupa.height;
    fr_LupaMovil.top += kPasoLupa;
    if (fr_LupaMovil.top >= destino) {
        fr_LupaMovil.top = destino;
        tmrMovLupa.SetEnabled(false);
    }
}

void frmCaja::txt_ValorLupa_KeyPress(int& tecla) {
    if (tecla == vbKeyReturn) {
        tecla = 0;
        cmd_AceptarImporte_Click();
        return;
    }
    tecla = KeyFilter::Instancia().FiltrarTecla(tecla, txt_ValorLupa, sesion().opciones.NumDecimales);
}

void frmCaja::cmd_AceptarImporte_Click() {
    if (!txt_ValorLupa.Text().empty()) {
        const long resalte = NumeroDeColor(ColorResalte);
        const std::string& valor = txt_ValorLupa.Text();
        if (txt_PrecioLupa.backColor == resalte) {
            // A price below the line's is taken as a discount on it.
            const double nuevo = CDbl(Value(valor));
            const double precio = Numero(txt_PrecioLupa);
            if (nuevo < precio)
                txt_DescLupa.SetText(FormatNumber(Value((1 - nuevo / precio) * 100), 4));
            else
                txt_PrecioLupa.SetText(valor);
        } else if (txt_CantLupa.backColor == resalte) {
            txt_CantLupa.SetText(valor);
        } else if (txt_DescLupa.backColor == resalte) {
            txt_DescLupa.SetText(valor);
        }
        RecalcularTotalLupa();
    }
    ReducirLupa();
    FocoSeguro(cmd_AceptarLupa);
}

void frmCaja::RecalcularTotalLupa() {
    const double precio = Numero(txt_PrecioLupa);
    const double cantidad = Numero(txt_CantLupa);
    const double descuento = Numero(txt_DescLupa);
    double total;
    if (descuento == 0)
        total = cantidad * precio;
    else
        total = (1 - descuento / 100) * (cantidad * precio);
    txt_TotalLupa.SetText(FormatNumber(Value(total), sesion().opciones.NumDecimales));
}

void frmCaja::PanelEmpLupa_Pulsado() {
    const std::string corto = Iniciales(PanelEmpLupa.TextoPulsado);
    if (txt_EmpLupa.Text().empty())
        txt_EmpLupa.SetText(corto);
    else
        txt_EmpLupa.SetText(txt_EmpLupa.Text() + "/" + corto);
    lblCodEmp.caption = PanelEmpLupa.CodigoPulsado;
    ReducirLupa();
}

void frmCaja::ModificarGrid(long fila) {
    const double descuento = Numero(txt_DescLupa);
    // The discount per unit is reckoned on the price the line had on opening.
    const double precioInicial = txt_PrecioLupa.tag.empty() ? 0.0 : CDbl(Value(txt_PrecioLupa.tag));
    FGCaja.SetTextMatrix(fila, kColPvp, txt_PrecioLupa.Text());
    FGCaja.SetTextMatrix(fila, kColEmpleado, txt_EmpLupa.Text());
    FGCaja.SetTextMatrix(fila, kColPorcentaje, CStr(Value(Round(descuento / 100 * precioInicial, 2))));
    FGCaja.SetTextMatrix(fila, kColCodEmpleado, lblCodEmp.caption);
    FGCaja.SetTextMatrix(fila, kColUnidades, txt_CantLupa.Text());
    FGCaja.SetTextMatrix(fila, kColImporte, txt_TotalLupa.Text());
    FGCaja.SetTextMatrix(fila, kColDescuento,
                         CStr(Value(descuento / 100 * Numero(txt_CantLupa) * Numero(txt_PrecioLupa))));
}

void frmCaja::cmd_AceptarLupa_Click() {
    const Sesion& s = sesion();
    const long fila = FGCaja.Row();
    const std::int32_t numero = CLng(Value(lblNumVenta.caption));
    ModificarGrid(fila);
    GrabarLineaEditada(FGCaja, fila, numero, lbl_tipoItem.caption);
    if (s.VisorActivo)
        MostrarLineaEnVisor(FGCaja.TextMatrix(fila, kColNombre), FGCaja.TextMatrix(fila, kColPvp));
    RecalcularCabecera(numero);
    SumarTotalGrid(CajaText_Pago, FGCaja);
    contarNumArticulos();
    cmd_SalirLupa_Click();
}

void frmCaja::cmd_SalirLupa_Click() {
    fr_hijo.enabled = true;
    fr_Lupa.visible = false;
    fr_LupaMovil.visible = false;
}

void frmCaja::cmd_BorrarLupa_Click() {
    const long fila = FGCaja.Row();
    const std::int32_t numero = CLng(Value(lblNumVenta.caption));
    const std::int32_t codigo = CLng(Value(FGCaja.TextMatrix(fila, kColCodigo)));
    const std::string tipo = FGCaja.TextMatrix(fila, kColTipo);
    AnularLinea(numero, codigo, tipo, FilaCorta(fila));
    EliminoItemGrid(FGCaja, fila, numero);
    RecalcularCabecera(numero);
    SumarTotalGrid(CajaText_Pago, FGCaja);
    contarNumArticulos();
    cmd_SalirLupa_Click();
}

}  // namespace tpv
