#include "core/servicios/formulario.hpp"

#include <algorithm>
#include <utility>

#include "core/datos/tipos.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/texto.hpp"
#include "core/runtime/unicode.hpp"

namespace tpv {

Control::Control(std::string nombre_, std::string tipo_, std::string caption_)
    : nombre(std::move(nombre_)), tipo(std::move(tipo_)), caption(std::move(caption_)) {}

Control::Control(const Control& otro) { *this = otro; }

Control& Control::operator=(const Control& otro) {
    if (this == &otro) return *this;
    nombre = otro.nombre;
    tipo = otro.tipo;
    caption = otro.caption;
    left = otro.left;
    top = otro.top;
    width = otro.width;
    height = otro.height;
    fontSize = otro.fontSize;
    backColor = otro.backColor;
    foreColor = otro.foreColor;
    visible = otro.visible;
    enabled = otro.enabled;
    tag = otro.tag;
    toolTipText = otro.toolTipText;
    tabIndex = otro.tabIndex;
    tabStop = otro.tabStop;
    Click = otro.Click;
    DblClick = otro.DblClick;
    GotFocus = otro.GotFocus;
    LostFocus = otro.LostFocus;
    KeyDown = otro.KeyDown;
    KeyPress = otro.KeyPress;
    return *this;
}

bool Control::VisibleEnPantalla() const {
    for (const Control* c = this; c; c = c->contenedor)
        if (!c->visible) return false;
    return !formulario || formulario->visible;
}

bool Control::HabilitadoEnPantalla() const {
    for (const Control* c = this; c; c = c->contenedor)
        if (!c->enabled) return false;
    return !formulario || formulario->enabled;
}

void Control::SetFocus() {
    if (!TomaFoco() || !Alcanzable()) throw ErrorLlamadaNoValida();
    if (!formulario) {
        if (GotFocus) GotFocus();
        return;
    }
    Control* anterior = formulario->activo_;
    if (anterior == this) return;
    formulario->activo_ = this;
    if (anterior && anterior->LostFocus) anterior->LostFocus();
    if (GotFocus) GotFocus();
}

bool Control::TieneFoco() const { return formulario && formulario->activo_ == this; }

void Control::Clic() {
    if (Click) Click();
}

Formulario::Formulario(Formulario&& otro) noexcept
    : nombre(std::move(otro.nombre)), caption(std::move(otro.caption)), left(otro.left), top(otro.top),
      width(otro.width), height(otro.height), backColor(otro.backColor), foreColor(otro.foreColor),
      zoomLetra(otro.zoomLetra), visible(otro.visible), enabled(otro.enabled), keyPreview(otro.keyPreview),
      KeyDown(std::move(otro.KeyDown)), KeyPress(std::move(otro.KeyPress)), controles(std::move(otro.controles)),
      activo_(otro.activo_), propios_(std::move(otro.propios_)) {
    for (Control& c : controles)
        if (c.formulario == &otro) c.formulario = this;
    otro.activo_ = nullptr;
}

Control* Formulario::Buscar(std::string_view nombreControl) {
    for (Control& c : controles)
        if (datos::IgualesSinCaso(c.nombre, nombreControl)) return &c;
    return nullptr;
}

const Control* Formulario::Buscar(std::string_view nombreControl) const {
    return const_cast<Formulario*>(this)->Buscar(nombreControl);
}

Control& Formulario::Anadir(const Control& control) {
    propios_.push_back(std::make_unique<Control>(control));
    Registrar(*propios_.back());
    return *propios_.back();
}

void Formulario::Registrar(Control& control, Control* marco) {
    if (control.formulario != this) {
        controles.emplace_back(control);
        control.formulario = this;
    }
    control.contenedor = marco;
}

Control* Formulario::SiguienteEnTabulacion(const Control* desde) const {
    // Controls in tab order; ties keep the order they were registered in.
    std::vector<Control*> orden;
    for (Control& c : controles) orden.push_back(&c);
    std::stable_sort(orden.begin(), orden.end(), [](const Control* a, const Control* b) { return a->tabIndex < b->tabIndex; });
    auto puede = [](const Control* c) { return c->TomaFoco() && c->tabStop && c->Alcanzable(); };
    auto donde = std::find(orden.begin(), orden.end(), desde);
    const std::size_t inicio = donde == orden.end() ? orden.size() - 1 : static_cast<std::size_t>(donde - orden.begin());
    for (std::size_t i = 1; i <= orden.size(); ++i) {
        Control* c = orden[(inicio + i) % orden.size()];
        if (puede(c)) return c;
    }
    return nullptr;
}

}  // namespace tpv

namespace tpv {

// --- TextBox -------------------------------------------------------------------

TextBox::TextBox(std::string texto, long selStart_, long selLength_)
    : Control("", "TextBox"), selStart(selStart_), selLength(selLength_), text_(std::move(texto)) {}

std::string TextBox::SelText() const {
    const std::vector<char32_t> cps = unicode::Decode(text_);
    const long n = static_cast<long>(cps.size());
    const long inicio = std::clamp(selStart, 0L, n);
    const long fin = std::clamp(inicio + selLength, inicio, n);
    return unicode::Encode(std::vector<char32_t>(cps.begin() + inicio, cps.begin() + fin));
}

void TextBox::RecibirCaracter(int keyAscii) {
    if (locked || keyAscii == 0) return;
    std::vector<char32_t> cps = unicode::Decode(text_);
    const long n = static_cast<long>(cps.size());
    long inicio = std::clamp(selStart, 0L, n);
    long fin = std::clamp(inicio + selLength, inicio, n);
    if (keyAscii == vbKeyBack) {
        // Backspace takes the selection, or the character before the caret.
        if (fin == inicio) {
            if (inicio == 0) return;
            --inicio;
        }
        cps.erase(cps.begin() + inicio, cps.begin() + fin);
    } else {
        if (keyAscii < 32) return;  // Enter, Escape and other controls write nothing
        const std::vector<char32_t> nuevo = unicode::Decode(Chr(keyAscii));
        if (maxLength > 0 && n - (fin - inicio) + static_cast<long>(nuevo.size()) > maxLength) return;
        cps.erase(cps.begin() + inicio, cps.begin() + fin);
        cps.insert(cps.begin() + inicio, nuevo.begin(), nuevo.end());
        inicio += static_cast<long>(nuevo.size());
    }
    selStart = inicio;
    selLength = 0;
    SetText(unicode::Encode(cps));
}

void TextBox::SetText(std::string texto) {
    text_ = std::move(texto);
    if (!Change) return;
    // A handler that keeps assigning its own box would recurse without end;
    // the runtime stopped that with its out-of-stack error.
    if (anidado_ >= 64) throw RuntimeError(kErrPilaInsuficiente, "Espacio de pila insuficiente");
    ++anidado_;
    try {
        Change();
    } catch (...) {
        --anidado_;
        throw;
    }
    --anidado_;
}

// --- Grid ----------------------------------------------------------------------

Grid::Grid() : Grid(2, 2) {}

Grid::Grid(long filas, long columnas) : Control("", "Grid") {
    SetCols(columnas);
    SetRows(filas);
}

void Grid::ComprobarFila(long fila) const {
    if (fila < 0 || fila >= Rows()) throw RuntimeError(kErrFilaNoValida, "Valor de fila no válido");
}

void Grid::ComprobarColumna(long columna) const {
    if (columna < 0 || columna >= cols_) throw RuntimeError(kErrColumnaNoValida, "Valor de columna no válido");
}

void Grid::AjustarPosicion() {
    const long ultimaFila = std::max(0L, Rows() - 1);
    row_ = std::clamp(row_, std::min(fixedRows_, ultimaFila), ultimaFila);
    col_ = std::clamp(col_, 0L, std::max(0L, cols_ - 1));
    topRow_ = std::clamp(topRow_, std::min(fixedRows_, ultimaFila), ultimaFila);
}

void Grid::SetRows(long filas) {
    if (filas < 0 || filas < fixedRows_) throw RuntimeError(kErrFilaNoValida, "Valor de fila no válido");
    celdas_.resize(static_cast<std::size_t>(filas), std::vector<Celda>(static_cast<std::size_t>(cols_)));
    AjustarPosicion();
}

void Grid::SetCols(long columnas) {
    if (columnas < 0 || columnas < fixedCols_) throw RuntimeError(kErrColumnaNoValida, "Valor de columna no válido");
    cols_ = columnas;
    columnas_.resize(static_cast<std::size_t>(columnas));
    for (auto& fila : celdas_) fila.resize(static_cast<std::size_t>(columnas));
    AjustarPosicion();
}

void Grid::SetFixedRows(long filas) {
    if (filas < 0 || filas > Rows()) throw RuntimeError(kErrFilaNoValida, "Valor de fila no válido");
    fixedRows_ = filas;
    AjustarPosicion();
}

void Grid::SetFixedCols(long columnas) {
    if (columnas < 0 || columnas > cols_) throw RuntimeError(kErrColumnaNoValida, "Valor de columna no válido");
    fixedCols_ = columnas;
}

const std::string& Grid::TextMatrix(long fila, long columna) const {
    ComprobarFila(fila);
    ComprobarColumna(columna);
    return celdas_[static_cast<std::size_t>(fila)][static_cast<std::size_t>(columna)].texto;
}

void Grid::SetTextMatrix(long fila, long columna, std::string texto) {
    ComprobarFila(fila);
    ComprobarColumna(columna);
    celdas_[static_cast<std::size_t>(fila)][static_cast<std::size_t>(columna)].texto = std::move(texto);
}

void Grid::ClicEnCelda(long fila, long columna, bool doble) {
    SetRow(fila);
    SetCol(columna);
    if (Click) Click();
    if (doble && DblClick) DblClick();
}

void Grid::SetRow(long fila) {
    ComprobarFila(fila);
    row_ = fila;
}

void Grid::SetCol(long columna) {
    ComprobarColumna(columna);
    col_ = columna;
}

void Grid::SetTopRow(long fila) {
    ComprobarFila(fila);
    topRow_ = std::max(fila, std::min(fixedRows_, Rows() - 1));
}

long Grid::CellBackColor(long fila, long columna) const {
    ComprobarFila(fila);
    ComprobarColumna(columna);
    return celdas_[static_cast<std::size_t>(fila)][static_cast<std::size_t>(columna)].backColor;
}

void Grid::SetCellBackColor(long fila, long columna, long color) {
    ComprobarFila(fila);
    ComprobarColumna(columna);
    celdas_[static_cast<std::size_t>(fila)][static_cast<std::size_t>(columna)].backColor = color;
}

void Grid::AddItem(const std::string& elemento, long indice) {
    if (indice == -1) indice = Rows();
    if (indice < 0 || indice > Rows()) throw RuntimeError(kErrFilaNoValida, "Valor de fila no válido");
    std::vector<Celda> fila(static_cast<std::size_t>(cols_));
    std::size_t inicio = 0;
    for (std::size_t c = 0; c < fila.size(); ++c) {
        const std::size_t tab = elemento.find('\t', inicio);
        fila[c].texto = elemento.substr(inicio, tab == std::string::npos ? std::string::npos : tab - inicio);
        if (tab == std::string::npos) break;
        inicio = tab + 1;
    }
    celdas_.insert(celdas_.begin() + indice, std::move(fila));
    AjustarPosicion();
}

void Grid::RemoveItem(long indice) {
    ComprobarFila(indice);
    if (indice < fixedRows_) throw RuntimeError(kErrFilaNoValida, "Valor de fila no válido");
    if (Rows() - fixedRows_ <= 1) throw RuntimeError(kErrQuitarUltimaFila, "No se puede quitar la última fila no fija");
    celdas_.erase(celdas_.begin() + indice);
    AjustarPosicion();
}

void Grid::Clear() {
    for (auto& fila : celdas_)
        for (Celda& c : fila) c.texto.clear();
}

double Grid::ColWidth(long columna) const {
    ComprobarColumna(columna);
    return columnas_[static_cast<std::size_t>(columna)].ancho;
}

void Grid::SetColWidth(long columna, double ancho) {
    ComprobarColumna(columna);
    columnas_[static_cast<std::size_t>(columna)].ancho = ancho < 0 ? kAnchoColumnaPorDefecto : ancho;
}

Alineacion Grid::ColAlignment(long columna) const {
    ComprobarColumna(columna);
    return columnas_[static_cast<std::size_t>(columna)].alineacion;
}

void Grid::SetColAlignment(long columna, Alineacion alineacion) {
    ComprobarColumna(columna);
    columnas_[static_cast<std::size_t>(columna)].alineacion = alineacion;
}

}  // namespace tpv
