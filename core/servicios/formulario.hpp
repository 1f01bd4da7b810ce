#pragma once
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tpv {

class Formulario;

// Key codes of the key events, as the original platform numbered them.
inline constexpr int vbKeyBack = 8;
inline constexpr int vbKeyTab = 9;
inline constexpr int vbKeyReturn = 13;
inline constexpr int vbKeyEscape = 27;
inline constexpr int vbKeyF1 = 112;  // F2 to F12 follow

// One control of a screen, apart from any drawing: geometry in twips on the
// screen's design size, caption, colours (0xBBGGRR numbers), states, tab
// order and the events every control has. Each kind of control derives from
// it. A control stands on one screen (`formulario`) and maybe inside a frame
// (`contenedor`): a hidden or disabled frame hides or disables what it holds.
class Control {
public:
    Control() = default;
    Control(std::string nombre_, std::string tipo_, std::string caption_ = "");
    virtual ~Control() = default;
    // A copy stands nowhere; assigning another control to one keeps its place
    // (screen and frame): only the properties and handlers are taken.
    Control(const Control& otro);
    Control& operator=(const Control& otro);

    std::string nombre;   // as the screen names it: "txtcod", "cmdTerminarVenta"
    std::string tipo;     // "TextBox", "Label", "CommandButton", "Frame", "CheckBox", ...
    std::string caption;  // the caption of labels, buttons and frames
    double left = 0, top = 0, width = 0, height = 0;
    double fontSize = 8.25;
    long backColor = 0xFFFFFF;
    long foreColor = 0;
    bool visible = true;
    bool enabled = true;
    std::string tag;
    std::string toolTipText;
    int tabIndex = 0;
    bool tabStop = true;

    Formulario* formulario = nullptr;
    Control* contenedor = nullptr;

    // Events. Key codes and characters may be changed or set to 0 by the
    // handler: 0 swallows the key.
    std::function<void()> Click;
    std::function<void()> DblClick;
    std::function<void()> GotFocus;
    std::function<void()> LostFocus;
    std::function<void(int& keyCode, int shift)> KeyDown;
    std::function<void(int& keyAscii)> KeyPress;

    // Visible, or enabled, with every frame that holds it and its screen.
    bool VisibleEnPantalla() const;
    bool HabilitadoEnPantalla() const;
    // Whether a user's click or key can reach it.
    bool Alcanzable() const { return VisibleEnPantalla() && HabilitadoEnPantalla(); }

    // Gives it the focus: LostFocus of the control that had it, then its
    // GotFocus. A hidden or disabled control (or one in a hidden or disabled
    // frame, or on a screen not shown) can't take it: run-time error 5.
    void SetFocus();
    bool TieneFoco() const;

    // Kinds that hold the focus (entries, buttons, lists...); labels,
    // frames and timers don't.
    virtual bool TomaFoco() const { return true; }
    // A character let through by the key events: entries write it.
    virtual void RecibirCaracter(int /*keyAscii*/) {}
    // A user's click: check boxes toggle, option buttons select, then Click.
    virtual void Clic();
};

// A screen: its controls (each held by reference; the screen classes keep
// them as members), its title, size and colours, and the control with the
// focus. The suite services (fitting, colouring, translating) work on it.
class Formulario {
public:
    Formulario() = default;
    virtual ~Formulario() = default;
    Formulario(Formulario&& otro) noexcept;
    Formulario& operator=(Formulario&&) = delete;
    Formulario(const Formulario&) = delete;
    Formulario& operator=(const Formulario&) = delete;

    std::string nombre;   // "frmCaja"
    std::string caption;  // the title
    double left = 0, top = 0, width = 0, height = 0;
    long backColor = 0xFFFFFF;
    long foreColor = 0;
    double zoomLetra = 1.0;  // the factor ZoomPanel has applied to the fonts
    bool visible = true;     // shown; a screen's controls take the focus only then
    bool enabled = true;
    // With KeyPreview the screen's own key events run before the control's.
    bool keyPreview = false;
    std::function<void(int& keyCode, int shift)> KeyDown;
    std::function<void(int& keyAscii)> KeyPress;

    std::vector<std::reference_wrapper<Control>> controles;

    // By name, without regard to case, as the screens' names were written.
    Control* Buscar(std::string_view nombreControl);
    const Control* Buscar(std::string_view nombreControl) const;
    // A control the screen keeps itself (a copy of `control`).
    Control& Anadir(const Control& control);
    // A control kept by the caller, inside the frame `marco` if given.
    // Registering one already there only moves it to that frame.
    void Registrar(Control& control, Control* marco = nullptr);

    Control* ActiveControl() const { return activo_; }
    // Forgets the focus (the screen unloads) without events.
    void OlvidarFoco() { activo_ = nullptr; }
    // The next control in tab order that can take the focus after `desde`.
    Control* SiguienteEnTabulacion(const Control* desde) const;

private:
    friend class Control;
    Control* activo_ = nullptr;
    std::vector<std::unique_ptr<Control>> propios_;
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
class TextBox : public Control {
public:
    TextBox() : Control("", "TextBox") {}
    // The initial text raises nothing: nobody listens yet.
    explicit TextBox(std::string texto, long selStart = 0, long selLength = 0);

    const std::string& Text() const { return text_; }
    void SetText(std::string texto);

    long selStart = 0;
    long selLength = 0;
    bool locked = false;  // shows its text but takes no typing
    long maxLength = 0;   // characters typing may reach; 0: no limit
    std::function<void()> Change;

    // The selected text, and the typing of one character over it.
    std::string SelText() const;
    void RecibirCaracter(int keyAscii) override;

private:
    std::string text_;
    int anidado_ = 0;  // Change handlers that assign again, counted
};

// A caption on a screen; some of them hold state, as the sale number does.
class Label : public Control {
public:
    Label() : Control("", "Label") {}
    bool TomaFoco() const override { return false; }
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
class Grid : public Control {
public:
    // Two rows (the heading and one empty row) and two columns, as the
    // control starts.
    Grid();
    Grid(long filas, long columnas);

    // backColor is that of cells without a colour of their own.

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

    // A user's click on a cell: it becomes the current cell, then Click, and
    // for a double click DblClick after it.
    void ClicEnCelda(long fila, long columna, bool doble);

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
