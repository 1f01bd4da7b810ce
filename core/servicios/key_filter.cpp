#include "core/servicios/key_filter.hpp"

#include <algorithm>
#include <vector>

#include "core/runtime/unicode.hpp"

namespace tpv {

KeyFilter& KeyFilter::Instancia() {
    static KeyFilter instancia;
    return instancia;
}

std::string KeyFilter::SeparadorDecimal() const { return ","; }

int KeyFilter::FiltrarTecla(int tecla, const TextBox& caja, int decimales, int) const {
    if (tecla == kRetroceso) return kRetroceso;
    const bool digito = tecla >= '0' && tecla <= '9';
    const bool separador = tecla == kComa || tecla == kPunto;
    if (!digito && !separador) return 0;
    if (decimales < 0) decimales = 0;

    // The text as it will stand around the caret once the selection is gone.
    std::vector<char32_t> texto = unicode::Decode(caja.Text());
    const long n = static_cast<long>(texto.size());
    const long inicio = std::clamp(caja.selStart, 0L, n);
    const long largo = std::clamp(caja.selLength, 0L, n - inicio);
    texto.erase(texto.begin() + inicio, texto.begin() + inicio + largo);
    const auto coma = std::find(texto.begin(), texto.end(), U',');
    const long posicionComa = coma == texto.end() ? -1 : static_cast<long>(coma - texto.begin());
    const long detrasDelCursor = static_cast<long>(texto.size()) - inicio;

    if (digito) {
        if (posicionComa >= 0 && inicio > posicionComa) {
            const long decimalesEscritos = static_cast<long>(texto.size()) - posicionComa - 1;
            if (decimalesEscritos >= decimales) return 0;
        }
        return tecla;
    }
    // A separator needs a figure before it: on an empty entry it is swallowed,
    // so that a pad's separator key leaves the entry empty.
    if (decimales == 0 || posicionComa >= 0 || inicio == 0 || detrasDelCursor > decimales) return 0;
    return kComa;
}

void KeyFilter::PulsarTeclaPad(TextBox& caja, int tecla, int decimales) const {
    const long largo = static_cast<long>(unicode::Length(caja.Text()));
    if (largo > 0 && caja.selStart <= 0 && caja.selLength >= largo) caja.SetText("");
    const TextBox alFinal(caja.Text(), static_cast<long>(unicode::Length(caja.Text())), 0);
    const int paso = FiltrarTecla(tecla, alFinal, decimales);
    // Each change of the entry is an assignment of its text, as the pad wrote it.
    if (paso == kRetroceso) {
        std::vector<char32_t> texto = unicode::Decode(caja.Text());
        if (!texto.empty()) {
            texto.pop_back();
            caja.SetText(unicode::Encode(texto));
        }
    } else if (paso != 0) {
        caja.SetText(caja.Text() + static_cast<char>(paso));
    }
    caja.selStart = static_cast<long>(unicode::Length(caja.Text()));
    caja.selLength = 0;
}

}  // namespace tpv
