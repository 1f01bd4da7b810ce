#pragma once
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

// A text entry as the key filter sees it: the text, the caret and the
// selection, counted in characters.
struct TextBox {
    std::string text;
    long selStart = 0;
    long selLength = 0;
};

// A grid of text cells under a row of headers.
enum class Alineacion { Izquierda, Centro, Derecha };

struct ColumnaGrid {
    std::string titulo;
    double ancho = 0;  // twips; 0 hides the column
    Alineacion alineacion = Alineacion::Izquierda;
    bool visible = true;
};

struct Grid {
    std::string nombre;
    std::vector<ColumnaGrid> columnas;
    std::vector<std::vector<std::string>> filas;  // data rows, one text per column
};

}  // namespace tpv
