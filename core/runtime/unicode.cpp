#include "core/runtime/unicode.hpp"

namespace tpv::unicode {

std::vector<char32_t> Decode(std::string_view s) {
    std::vector<char32_t> out;
    out.reserve(s.size());
    std::size_t i = 0;
    while (i < s.size()) {
        unsigned char c = static_cast<unsigned char>(s[i]);
        int extra = c < 0x80 ? 0 : (c & 0xE0) == 0xC0 ? 1 : (c & 0xF0) == 0xE0 ? 2 : (c & 0xF8) == 0xF0 ? 3 : -1;
        if (extra <= 0) {
            out.push_back(c);
            ++i;
            continue;
        }
        char32_t cp = c & (0x3F >> extra);
        bool ok = i + static_cast<std::size_t>(extra) < s.size();
        for (int k = 1; ok && k <= extra; ++k) {
            unsigned char cc = static_cast<unsigned char>(s[i + k]);
            if ((cc & 0xC0) != 0x80) ok = false;
            else cp = (cp << 6) | (cc & 0x3F);
        }
        if (!ok) {
            out.push_back(c);
            ++i;
            continue;
        }
        out.push_back(cp);
        i += extra + 1;
    }
    return out;
}

void Append(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
}

std::string Encode(const std::vector<char32_t>& cps) {
    std::string out;
    out.reserve(cps.size());
    for (char32_t cp : cps) Append(out, cp);
    return out;
}

char32_t ToLower(char32_t cp) {
    if (cp >= 'A' && cp <= 'Z') return cp + 32;
    if (cp < 0xC0) return cp;
    if (cp <= 0xDE && cp != 0xD7) return cp + 32;          // Latin-1 capitals
    if (cp >= 0x100 && cp <= 0x17F) {                        // Latin Extended-A
        if ((cp >= 0x139 && cp <= 0x148) || (cp >= 0x179 && cp <= 0x17E)) return (cp % 2 == 1) ? cp + 1 : cp;
        if (cp == 0x178) return 0xFF;
        if (cp != 0x130 && cp != 0x131 && cp != 0x138 && cp != 0x149 && cp != 0x17F) return (cp % 2 == 0) ? cp + 1 : cp;
    }
    if (cp >= 0x391 && cp <= 0x3AB && cp != 0x3A2) return cp + 32;  // Greek
    if (cp >= 0x410 && cp <= 0x42F) return cp + 32;                  // Cyrillic
    return cp;
}

char32_t ToUpper(char32_t cp) {
    if (cp >= 'a' && cp <= 'z') return cp - 32;
    if (cp < 0xE0) return cp;
    if (cp <= 0xFE && cp != 0xF7) return cp - 32;
    if (cp == 0xFF) return 0x178;
    if (cp >= 0x100 && cp <= 0x17F) {
        if ((cp >= 0x139 && cp <= 0x148) || (cp >= 0x179 && cp <= 0x17E)) return (cp % 2 == 0) ? cp - 1 : cp;
        if (cp != 0x130 && cp != 0x131 && cp != 0x138 && cp != 0x149 && cp != 0x17F) return (cp % 2 == 1) ? cp - 1 : cp;
    }
    if (cp >= 0x3B1 && cp <= 0x3CB && cp != 0x3C2) return cp - 32;
    if (cp >= 0x430 && cp <= 0x44F) return cp - 32;
    return cp;
}

char32_t BaseLetter(char32_t cp) {
    if (cp < 0xC0 || cp > 0xFF) return cp;
    static const char kBase[] =
        "AAAAAAACEEEEIIII"   // C0-CF
        "DNOOOOOxOUUUUYPs"   // D0-DF (Ñ kept below)
        "aaaaaaaceeeeiiii"   // E0-EF
        "dnooooo/ouuuuypy";  // F0-FF
    if (cp == 0xD1 || cp == 0xF1 || cp == 0xD7 || cp == 0xF7 || cp == 0xDF || cp == 0xDE || cp == 0xFE ||
        cp == 0xC6 || cp == 0xE6 || cp == 0xD0 || cp == 0xF0)
        return cp;
    return static_cast<char32_t>(static_cast<unsigned char>(kBase[cp - 0xC0]));
}

std::string Lower(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char32_t cp : Decode(text)) Append(out, ToLower(cp));
    return out;
}

std::string Upper(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char32_t cp : Decode(text)) Append(out, ToUpper(cp));
    return out;
}

std::size_t Length(std::string_view text) {
    std::size_t n = 0;
    for (unsigned char c : text)
        if ((c & 0xC0) != 0x80) ++n;
    return n;
}

namespace {

// Primary weight: the lower-case letter without accent; ñ sits between n and o.
double Primary(char32_t cp) {
    char32_t l = ToLower(cp);
    if (l == 0xF1) return 'n' + 0.5;
    return static_cast<double>(BaseLetter(l));
}

}  // namespace

int CompareText(std::string_view a, std::string_view b) {
    // Fast path for plain ASCII, the common case of codes and most names.
    bool ascii = true;
    for (unsigned char c : a) ascii = ascii && c < 0x80;
    for (unsigned char c : b) ascii = ascii && c < 0x80;
    if (ascii) {
        std::size_t n = a.size() < b.size() ? a.size() : b.size();
        for (std::size_t i = 0; i < n; ++i) {
            unsigned char x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
            if (x >= 'A' && x <= 'Z') x += 32;
            if (y >= 'A' && y <= 'Z') y += 32;
            if (x != y) return x < y ? -1 : 1;
        }
        return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
    }
    auto x = Decode(a), y = Decode(b);
    std::size_t n = x.size() < y.size() ? x.size() : y.size();
    for (std::size_t i = 0; i < n; ++i) {
        double px = Primary(x[i]), py = Primary(y[i]);
        if (px != py) return px < py ? -1 : 1;
    }
    if (x.size() != y.size()) return x.size() < y.size() ? -1 : 1;
    // Same letters: the accented form orders after the plain one; case never counts.
    for (std::size_t i = 0; i < n; ++i) {
        char32_t lx = ToLower(x[i]), ly = ToLower(y[i]);
        if (lx != ly) return lx < ly ? -1 : 1;
    }
    return 0;
}

bool HasLikeWildcard(std::string_view pattern) {
    return pattern.find_first_of("%_[") != std::string_view::npos;
}

namespace {

// One step of a LIKE pattern: a run of any length (%), one character (_), one
// character of a set ([a-c], [!x]) or one letter. Every step but % takes
// exactly one character of the text.
struct PasoLike {
    enum Clase { Cualquiera, Uno, Conjunto, Letra } clase;
    char32_t letra = 0;              // Letra: the letter in lower case
    bool niega = false;              // Conjunto: [!...]
    std::size_t desde = 0, hasta = 0;  // Conjunto: its items in the pattern
};

std::vector<PasoLike> Pasos(const std::vector<char32_t>& p) {
    std::vector<PasoLike> out;
    for (std::size_t pi = 0; pi < p.size(); ++pi) {
        char32_t pc = p[pi];
        if (pc == '%') {
            if (out.empty() || out.back().clase != PasoLike::Cualquiera) out.push_back({PasoLike::Cualquiera});
        } else if (pc == '_') {
            out.push_back({PasoLike::Uno});
        } else {
            std::size_t cierre = pi + 1;
            if (pc == '[')
                while (cierre < p.size() && p[cierre] != ']') ++cierre;
            if (pc == '[' && cierre < p.size()) {
                PasoLike paso{PasoLike::Conjunto};
                paso.desde = pi + 1;
                paso.niega = paso.desde < cierre && p[paso.desde] == '!';
                if (paso.niega) ++paso.desde;
                paso.hasta = cierre;
                out.push_back(paso);
                pi = cierre;
            } else {
                PasoLike paso{PasoLike::Letra};
                paso.letra = ToLower(pc);
                out.push_back(paso);
            }
        }
    }
    return out;
}

bool CasaUno(const PasoLike& paso, const std::vector<char32_t>& p, char32_t c) {
    switch (paso.clase) {
        case PasoLike::Uno: return true;
        case PasoLike::Letra: return paso.letra == ToLower(c);
        case PasoLike::Conjunto: {
            c = ToLower(c);
            bool dentro = false;
            for (std::size_t k = paso.desde; k < paso.hasta; ++k) {
                if (k + 2 < paso.hasta && p[k + 1] == '-') {
                    if (c >= ToLower(p[k]) && c <= ToLower(p[k + 2])) dentro = true;
                    k += 2;
                } else if (ToLower(p[k]) == c) {
                    dentro = true;
                }
            }
            return dentro != paso.niega;
        }
        case PasoLike::Cualquiera: break;
    }
    return false;
}

}  // namespace

// Each step but % takes one character, so a failed try only has to go back to
// the last % and let it take one more character: the work is bounded by the
// text's length times the pattern's, whatever the pattern.
bool Like(std::string_view text, std::string_view pattern) {
    const std::vector<char32_t> t = Decode(text), p = Decode(pattern);
    const std::vector<PasoLike> pasos = Pasos(p);
    const std::size_t npos = static_cast<std::size_t>(-1);
    std::size_t ti = 0, pi = 0, trasComodin = npos, desdeTexto = 0;
    while (ti < t.size()) {
        if (pi < pasos.size() && pasos[pi].clase == PasoLike::Cualquiera) {
            trasComodin = ++pi;
            desdeTexto = ti;
        } else if (pi < pasos.size() && CasaUno(pasos[pi], p, t[ti])) {
            ++pi;
            ++ti;
        } else if (trasComodin != npos) {
            pi = trasComodin;
            ti = ++desdeTexto;
        } else {
            return false;
        }
    }
    while (pi < pasos.size() && pasos[pi].clase == PasoLike::Cualquiera) ++pi;
    return pi == pasos.size();
}

}  // namespace tpv::unicode
