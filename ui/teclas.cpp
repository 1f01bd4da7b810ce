#include "ui/teclas.hpp"

#include <cctype>

#include "core/runtime/texto.hpp"
#include "core/servicios/formulario.hpp"

namespace tpv::ui {

namespace {

struct Par {
    int qt;
    int vb;
};

// Keys that are not letters, digits or function keys.
constexpr Par kTeclas[] = {
    {Qt::Key_Backspace, vbKeyBack}, {Qt::Key_Tab, vbKeyTab},       {Qt::Key_Backtab, vbKeyTab},
    {Qt::Key_Return, vbKeyReturn},  {Qt::Key_Enter, vbKeyReturn},  {Qt::Key_Escape, vbKeyEscape},
    {Qt::Key_Space, 32},            {Qt::Key_PageUp, 33},          {Qt::Key_PageDown, 34},
    {Qt::Key_End, 35},              {Qt::Key_Home, 36},            {Qt::Key_Left, 37},
    {Qt::Key_Up, 38},               {Qt::Key_Right, 39},           {Qt::Key_Down, 40},
    {Qt::Key_Insert, 45},           {Qt::Key_Delete, 46},          {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},          {Qt::Key_Alt, 18},             {Qt::Key_Comma, 188},
    {Qt::Key_Minus, 189},           {Qt::Key_Period, 190},         {Qt::Key_Plus, 187},
    {Qt::Key_Asterisk, 106},        {Qt::Key_Slash, 111},
};

// The numeric pad's own codes.
int TeclaDelTeclado(int teclaQt) {
    if (teclaQt >= Qt::Key_0 && teclaQt <= Qt::Key_9) return 96 + (teclaQt - Qt::Key_0);
    switch (teclaQt) {
        case Qt::Key_Asterisk: return 106;
        case Qt::Key_Plus: return 107;
        case Qt::Key_Minus: return 109;
        case Qt::Key_Period:
        case Qt::Key_Comma: return 110;
        case Qt::Key_Slash: return 111;
        default: return 0;
    }
}

}  // namespace

TeclaVB TraducirTecla(int teclaQt, Qt::KeyboardModifiers modificadores, const QString& texto) {
    TeclaVB t;
    if (modificadores & Qt::ShiftModifier) t.shift |= 1;
    if (modificadores & Qt::ControlModifier) t.shift |= 2;
    if (modificadores & Qt::AltModifier) t.shift |= 4;

    if (modificadores & Qt::KeypadModifier) t.keyCode = TeclaDelTeclado(teclaQt);
    if (t.keyCode == 0) {
        if (teclaQt >= Qt::Key_0 && teclaQt <= Qt::Key_9) t.keyCode = 48 + (teclaQt - Qt::Key_0);
        else if (teclaQt >= Qt::Key_A && teclaQt <= Qt::Key_Z) t.keyCode = 65 + (teclaQt - Qt::Key_A);
        else if (teclaQt >= Qt::Key_F1 && teclaQt <= Qt::Key_F12) t.keyCode = vbKeyF1 + (teclaQt - Qt::Key_F1);
        else
            for (const Par& p : kTeclas)
                if (p.qt == teclaQt) t.keyCode = p.vb;
    }

    switch (t.keyCode) {
        case vbKeyBack:
        case vbKeyTab:
        case vbKeyReturn:
        case vbKeyEscape: t.keyAscii = t.keyCode; break;
        default:
            // Control with a letter types its control character, as it did.
            if (texto.size() == 1 && texto[0].unicode() < 32) t.keyAscii = texto[0].unicode();
            else if (!texto.isEmpty() && texto[0].unicode() >= 32 && texto[0].unicode() != 127)
                t.keyAscii = Asc(texto.left(1).toStdString());
    }
    // A character of a key with no code of its own (a dead key's result, a
    // letter of another layout) still reaches the entry.
    if (t.keyCode == 0 && t.keyAscii != 0) t.keyCode = t.keyAscii < 128 ? std::toupper(t.keyAscii) : 255;
    return t;
}

}  // namespace tpv::ui
