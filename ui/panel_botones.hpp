#pragma once
#include <QStringList>

#include "ui/vista_pantalla.hpp"

// A panel of big buttons (ButtonMatrix): the page in view as a grid of
// buttons with picture, caption and colour, and the page turners when the
// records take more than one page.
namespace tpv::ui {

WidgetDeControl PanelBotones(ButtonMatrix& c, QWidget* padre, VistaPantalla& vista);

// What a record's button reads: the text above (lines of its own) and the
// caption, the same text only once, blank lines left out.
QStringList PartesDelRotulo(const ButtonRecord& b);

}  // namespace tpv::ui
