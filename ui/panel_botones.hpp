#pragma once
#include "ui/vista_pantalla.hpp"

// A panel of big buttons (ButtonMatrix): the page in view as a grid of
// buttons with picture, caption and colour, and the page turners when the
// records take more than one page.
namespace tpv::ui {

WidgetDeControl PanelBotones(ButtonMatrix& c, QWidget* padre, VistaPantalla& vista);

// A caption broken into lines that fit `ancho` pixels with the font `f`, at
// most `lineas` of them, the last cut with an ellipsis when it still doesn't.
QString PartirEnLineas(const QString& texto, const QFont& f, int ancho, int lineas);

}  // namespace tpv::ui
