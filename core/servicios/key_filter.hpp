#pragma once
#include <string>

#include "core/servicios/formulario.hpp"

namespace tpv {

// What a numeric entry lets through: digits, one decimal separator and the
// backspace, with no more than `decimales` digits after the separator.
class KeyFilter {
public:
    static constexpr int kRetroceso = 8;
    static constexpr int kComa = 44;
    static constexpr int kPunto = 46;

    static KeyFilter& Instancia();

    // The machine's decimal separator: ",".
    std::string SeparadorDecimal() const;

    // The key to let through for `tecla` typed into `caja` (whose selection
    // the key replaces), or 0 to swallow it. The "." key, as a numeric pad
    // sends it, comes back as the separator ",". A separator is refused when
    // the entry has one already, when no decimals are allowed, when nothing
    // stands before the caret (an empty entry stays empty), or when it would
    // leave more than `decimales` digits behind it.
    int FiltrarTecla(int tecla, const TextBox& caja, int decimales, int extra = 0) const;

    // A key of an on-screen pad: if the whole text is selected it is cleared
    // first; the key goes through FiltrarTecla as if typed at the end, and
    // what comes back is appended (a backspace takes the last character).
    void PulsarTeclaPad(TextBox& caja, int tecla, int decimales) const;

private:
    KeyFilter() = default;
};

}  // namespace tpv
