#pragma once
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tpv {

// A screen as the suite services see it, apart from any drawing: its
// controls with geometry in twips, captions, colours (0xBBGGRR numbers) and
// states. The screens layer keeps one of these per screen and draws it.
struct Control {
    std::string nombre;   // as the screen names it: "txtcod", "cmdTerminarVenta"
    std::string tipo;     // "TextBox", "Label", "CommandButton", "Frame", "CheckBox", ...
    std::string caption;  // caption, or the text of an entry
    double left = 0, top = 0, width = 0, height = 0;
    double fontSize = 8.25;
    long backColor = 0xFFFFFF;
    long foreColor = 0;
    bool visible = true;
    bool enabled = true;
};

class Formulario {
public:
    std::string nombre;   // "frmCaja"
    std::string caption;  // the title
    double width = 0, height = 0;
    long backColor = 0xFFFFFF;
    long foreColor = 0;
    double zoomLetra = 1.0;  // the factor ZoomPanel has applied to the fonts
    std::vector<Control> controles;

    // By name, without regard to case, as the screens' names were written.
    Control* Buscar(std::string_view nombreControl);
    const Control* Buscar(std::string_view nombreControl) const;
    Control& Anadir(Control control);
};

// Errors of the grid, with the numbers the grid control gave them.
inline constexpr long kErrFilaNoValida = 30009;
inline constexpr long kErrColumnaNoValida = 30010;
inline constexpr long kErrQuitarUltimaFila = 30015;
inline constexpr long kErrPilaInsuficiente = 28;

// A text entry: its text, the caret and the selection (counted in
// characters), and the Change handler. Every assignment of the text raises
// Change at once, also when the text stays the same, as the screens expect:
// their ..._Change handlers run inside the assignment.
class TextBox {
public:
    TextBox() = default;
    // The initial text raises nothing: nobody listens yet.
    explicit TextBox(std::string texto, long selStart = 0, long selLength = 0);

    const std::string& Text() const { return text_; }
    void SetText(std::string texto);

    long selStart = 0;
    long selLength = 0;
    bool visible = true;
    bool enabled = true;
    bool locked = false;
    long backColor = 0xFFFFFF;
    long foreColor = 0;
    std::string tag;
    std::function<void()> Change;

private:
    std::string text_;
    int anidado_ = 0;  // Change handlers that assign again, counted
};

// A caption on a screen; some of them hold state, as the sale number does.
struct Label {
    std::string caption;
    bool visible = true;
    bool enabled = true;
    long backColor = 0xFFFFFF;
    long foreColor = 0;
    std::string tag;
};

enum class Alineacion { Izquierda, Centro, Derecha };

inline constexpr double kAnchoColumnaPorDefecto = 960;  // twips of a column not set

struct ColumnaGrid {
    double ancho = kAnchoColumnaPorDefecto;  // twips; 0 hides the column
    Alineacion alineacion = Alineacion::Izquierda;
};

// A grid of text cells, as the screens' grid control held them: `FixedRows`
// heading rows on top (one by default, whose cells are the column titles),
// then the data rows. Rows, columns, the current cell and the first row in
// view are settable; every cell has its text and its back colour. Cells
// hold text only: a number goes in as CStr of it and comes out as the
// runtime reads it back. A row or column out of range is a run-time error.
class Grid {
public:
    // Two rows (the heading and one empty row) and two columns, as the
    // control starts.
    Grid();
    Grid(long filas, long columnas);

    std::string nombre;
    long backColor = 0xFFFFFF;  // of cells without a colour of their own
    long foreColor = 0;
    bool visible = true;
    bool enabled = true;

    long Rows() const { return static_cast<long>(celdas_.size()); }
    long Cols() const { return cols_; }
    long FixedRows() const { return fixedRows_; }
    long FixedCols() const { return fixedCols_; }
    // New cells are empty and uncoloured; removed ones are lost. The current
    // cell and the top row move back inside the grid.
    void SetRows(long filas);
    void SetCols(long columnas);
    void SetFixedRows(long filas);
    void SetFixedCols(long columnas);

    const std::string& TextMatrix(long fila, long columna) const;
    void SetTextMatrix(long fila, long columna, std::string texto);

    // The current cell.
    long Row() const { return row_; }
    long Col() const { return col_; }
    void SetRow(long fila);
    void SetCol(long columna);
    const std::string& Text() const { return TextMatrix(row_, col_); }
    void SetText(std::string texto) { SetTextMatrix(row_, col_, std::move(texto)); }

    // The first data row in view.
    long TopRow() const { return topRow_; }
    void SetTopRow(long fila);

    // 0 for a cell painted with the grid's own colour.
    long CellBackColor(long fila, long columna) const;
    void SetCellBackColor(long fila, long columna, long color);
    // Of the current cell, as the control painted after choosing Row and Col.
    long CellBackColor() const { return CellBackColor(row_, col_); }
    void SetCellBackColor(long color) { SetCellBackColor(row_, col_, color); }

    // A new row at `indice` (at the end when -1), its cells from `elemento`
    // split on tabs from column 0.
    void AddItem(const std::string& elemento, long indice = -1);
    // Takes a row away; the last data row cannot go.
    void RemoveItem(long indice);
    // Empties every cell's text, the headings too; rows and colours stay.
    void Clear();

    double ColWidth(long columna) const;
    void SetColWidth(long columna, double ancho);
    Alineacion ColAlignment(long columna) const;
    void SetColAlignment(long columna, Alineacion alineacion);

private:
    struct Celda {
        std::string texto;
        long backColor = 0;
    };
    void ComprobarFila(long fila) const;
    void ComprobarColumna(long columna) const;
    void AjustarPosicion();

    std::vector<std::vector<Celda>> celdas_;
    std::vector<ColumnaGrid> columnas_;
    long cols_ = 0;
    long fixedRows_ = 1;
    long fixedCols_ = 0;
    long row_ = 1;
    long col_ = 0;
    long topRow_ = 1;
};

}  // namespace tpv
