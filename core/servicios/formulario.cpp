#include "core/servicios/formulario.hpp"

#include <algorithm>
#include <utility>

#include "core/datos/tipos.hpp"
#include "core/runtime/error.hpp"

namespace tpv {

Control* Formulario::Buscar(std::string_view nombreControl) {
    for (Control& c : controles)
        if (datos::IgualesSinCaso(c.nombre, nombreControl)) return &c;
    return nullptr;
}

const Control* Formulario::Buscar(std::string_view nombreControl) const {
    return const_cast<Formulario*>(this)->Buscar(nombreControl);
}

Control& Formulario::Anadir(Control control) {
    controles.push_back(std::move(control));
    return controles.back();
}

}  // namespace tpv

namespace tpv {

// --- TextBox -------------------------------------------------------------------

TextBox::TextBox(std::string texto, long selStart_, long selLength_)
    : selStart(selStart_), selLength(selLength_), text_(std::move(texto)) {}

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

Grid::Grid(long filas, long columnas) {
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
