#include "ui/ajuste_texto.hpp"

#include <QFontMetrics>
#include <QStringList>
#include <algorithm>

namespace tpv::ui {

namespace {

// Greedy word wrap without cutting anything: lines may be wider than `ancho`
// when a single word is.
QStringList Envolver(const QStringList& palabras, const QFontMetrics& m, int ancho) {
    QStringList lineas;
    QString actual;
    for (const QString& p : palabras) {
        const QString prueba = actual.isEmpty() ? p : actual + ' ' + p;
        if (actual.isEmpty() || m.horizontalAdvance(prueba) <= ancho) {
            actual = prueba;
        } else {
            lineas << actual;
            actual = p;
        }
    }
    if (!actual.isEmpty()) lineas << actual;
    return lineas;
}

// Words wider than `ancho` split into pieces that fit, each but the last
// ending in a hyphen.
QStringList PartirPalabrasLargas(const QStringList& palabras, const QFontMetrics& m, int ancho) {
    QStringList piezas;
    for (QString p : palabras) {
        while (m.horizontalAdvance(p) > ancho && p.size() > 2) {
            int n = static_cast<int>(p.size()) - 1;
            while (n > 1 && m.horizontalAdvance(p.left(n) + '-') > ancho) --n;
            piezas << p.left(n) + '-';
            p = p.mid(n);
        }
        piezas << p;
    }
    return piezas;
}

// Joins a hyphen-ended piece to the piece after it when both sit on one line
// ("Comple- mentos" back to "Complementos").
QStringList Envolver(const QStringList& piezas, const QFontMetrics& m, int ancho, bool unirGuiones) {
    if (!unirGuiones) return Envolver(piezas, m, ancho);
    QStringList lineas;
    QString actual;
    bool guion = false;
    for (const QString& p : piezas) {
        const QString prueba = actual.isEmpty() ? p : (guion ? actual.chopped(1) + p : actual + ' ' + p);
        if (actual.isEmpty() || m.horizontalAdvance(prueba) <= ancho) {
            actual = prueba;
        } else {
            lineas << actual;
            actual = p;
        }
        guion = actual.endsWith('-');
    }
    if (!actual.isEmpty()) lineas << actual;
    return lineas;
}

bool Cabe(const QStringList& lineas, const QFontMetrics& m, QSize caja, int maxLineas) {
    if (lineas.isEmpty()) return true;
    if (lineas.size() > maxLineas || m.lineSpacing() * lineas.size() > caja.height()) return false;
    return std::all_of(lineas.begin(), lineas.end(), [&](const QString& l) { return m.horizontalAdvance(l) <= caja.width(); });
}

}  // namespace

QString PartirEnLineas(const QString& texto, const QFont& f, int ancho, int lineas) {
    const QFontMetrics m(f);
    QStringList hechas;
    QString actual;
    const QStringList palabras = texto.simplified().split(' ', Qt::SkipEmptyParts);
    for (int i = 0; i < palabras.size(); ++i) {
        const QString prueba = actual.isEmpty() ? palabras[i] : actual + ' ' + palabras[i];
        if (actual.isEmpty() || m.horizontalAdvance(prueba) <= ancho) {
            actual = prueba;
            continue;
        }
        hechas << actual;
        actual = palabras[i];
        if (hechas.size() == lineas - 1) {
            actual = palabras.mid(i).join(' ');
            break;
        }
    }
    if (!actual.isEmpty()) hechas << actual;
    for (QString& l : hechas) l = m.elidedText(l, Qt::ElideRight, ancho);
    return hechas.join('\n');
}

TextoAjustado AjustarTexto(const QString& texto, QFont base, QSize caja, int maximo, int minimo, int lineas,
                           const QStringList& encima) {
    const QStringList palabras = texto.simplified().split(' ', Qt::SkipEmptyParts);
    minimo = std::min(minimo, maximo);
    const int fijas = static_cast<int>(encima.size());
    const auto conEncima = [&](const QStringList& l) { return QStringList(encima) << l; };
    for (int px = maximo; px >= minimo; --px) {
        base.setPixelSize(px);
        const QFontMetrics m(base);
        const QStringList l = conEncima(Envolver(palabras, m, caja.width()));
        if (Cabe(l, m, caja, lineas + fijas)) return {l.join('\n'), px};
    }
    base.setPixelSize(minimo);
    const QFontMetrics m(base);
    const QStringList partidas = conEncima(Envolver(PartirPalabrasLargas(palabras, m, caja.width()), m, caja.width(), true));
    if (Cabe(partidas, m, caja, lineas + fijas)) return {partidas.join('\n'), minimo};
    QStringList hechas;
    for (const QString& l : encima) hechas << m.elidedText(l, Qt::ElideRight, caja.width());
    const int caben = std::clamp(caja.height() / std::max(1, m.lineSpacing()) - fijas, 1, std::max(1, lineas));
    if (!palabras.isEmpty()) hechas << PartirEnLineas(texto, base, caja.width(), caben);
    return {hechas.join('\n'), minimo};
}

}  // namespace tpv::ui
