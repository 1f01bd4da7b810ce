#pragma once
#include <QFont>
#include <QSize>
#include <QString>
#include <QStringList>

// Fitting a caption into a button: the largest legible size at which it
// reads whole, on as few lines as that takes.
namespace tpv::ui {

// A caption broken into lines that fit `ancho` pixels with the font `f`, at
// most `lineas` of them, the last cut with an ellipsis when it still doesn't.
QString PartirEnLineas(const QString& texto, const QFont& f, int ancho, int lineas);

struct TextoAjustado {
    QString texto;  // lines joined with '\n'
    int px = 0;     // pixel size of the font
};

// The caption in `caja` with `base` at a size from `maximo` down to `minimo`
// pixels and at most `lineas` lines: whole words first; at the smallest size
// a word too wide for the box is split with a hyphen; only when that still
// doesn't fit is the end cut with an ellipsis. The lines of `encima` go
// first, each on a line of its own, and count in the box.
TextoAjustado AjustarTexto(const QString& texto, QFont base, QSize caja, int maximo, int minimo, int lineas,
                           const QStringList& encima = {});

}  // namespace tpv::ui
