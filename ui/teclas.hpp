#pragma once
#include <QString>
#include <Qt>

// Qt's keys as the screens' key events number them: the key code of KeyDown
// (the original platform's virtual keys) and the character of KeyPress (its
// code page, as Asc gives it; 0 for a key that types nothing).
namespace tpv::ui {

struct TeclaVB {
    int keyCode = 0;
    int keyAscii = 0;
    int shift = 0;  // 1 shift, 2 control, 4 alt
};

TeclaVB TraducirTecla(int teclaQt, Qt::KeyboardModifiers modificadores, const QString& texto);

}  // namespace tpv::ui
