#include "core/runtime/cifras.hpp"

#include <charconv>
#include <cstdlib>

namespace tpv::cifras {

Cifras Descomponer(double x) {
    Cifras c;
    if (x == 0.0) return c;
    // "-d.dddddddddddddde+XX": the 15 significant digits, already rounded.
    char buf[40];
    auto r = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::scientific, 14);
    std::string_view t(buf, static_cast<std::size_t>(r.ptr - buf));
    if (t.front() == '-') {
        c.negativo = true;
        t.remove_prefix(1);
    }
    std::size_t e = t.find('e');
    c.digitos.push_back(t[0]);
    c.digitos.append(t.substr(2, e - 2));
    int exp10 = 0;
    std::string_view ex = t.substr(e + 1);
    if (ex.front() == '+') ex.remove_prefix(1);
    std::from_chars(ex.data(), ex.data() + ex.size(), exp10);
    c.exponente = exp10 + 1;
    while (!c.digitos.empty() && c.digitos.back() == '0') c.digitos.pop_back();
    return c;
}

void RedondearMitadArriba(Cifras& c, int decimales) {
    if (c.EsCero()) return;
    const long guardar = static_cast<long>(c.exponente) + decimales;
    if (guardar >= static_cast<long>(c.digitos.size())) return;
    if (guardar < 0 || (guardar == 0 && c.digitos[0] < '5')) {
        c.digitos.clear();  // the sign stays: the runtime writes -0,00
        c.exponente = 0;
        return;
    }
    const bool arriba = c.digitos[static_cast<std::size_t>(guardar)] >= '5';
    c.digitos.resize(static_cast<std::size_t>(guardar));
    if (arriba) {
        std::size_t i = c.digitos.size();
        while (i > 0 && c.digitos[i - 1] == '9') c.digitos[--i] = '0';
        if (i == 0) {
            c.digitos.insert(c.digitos.begin(), '1');
            ++c.exponente;
        } else {
            ++c.digitos[i - 1];
        }
    }
    while (!c.digitos.empty() && c.digitos.back() == '0') c.digitos.pop_back();
    if (c.digitos.empty()) c.exponente = 0;
}

std::string ParteEntera(const Cifras& c) {
    if (c.EsCero() || c.exponente <= 0) return {};
    std::string s = c.digitos.substr(0, static_cast<std::size_t>(c.exponente));
    s.resize(static_cast<std::size_t>(c.exponente), '0');
    return s;
}

std::string ParteDecimal(const Cifras& c, int n) {
    std::string s(static_cast<std::size_t>(n > 0 ? n : 0), '0');
    for (int i = 0; i < n; ++i) {
        long k = static_cast<long>(c.exponente) + i;
        if (k >= 0 && k < static_cast<long>(c.digitos.size())) s[static_cast<std::size_t>(i)] = c.digitos[static_cast<std::size_t>(k)];
    }
    return s;
}

std::string ParteDecimal(const Cifras& c) {
    long n = static_cast<long>(c.digitos.size()) - c.exponente;
    return n > 0 ? ParteDecimal(c, static_cast<int>(n)) : std::string();
}

double ADouble(const Cifras& c) {
    if (c.EsCero()) return 0.0;
    std::string t = c.negativo ? "-" : "";
    t += c.digitos;
    t += 'e';
    t += std::to_string(c.exponente - static_cast<int>(c.digitos.size()));
    double v = 0.0;
    std::from_chars(t.data(), t.data() + t.size(), v);
    return v;
}

std::string Agrupar(const std::string& entero, char separador) {
    std::string s;
    s.reserve(entero.size() + entero.size() / 3);
    for (std::size_t i = 0; i < entero.size(); ++i) {
        if (i > 0 && (entero.size() - i) % 3 == 0) s.push_back(separador);
        s.push_back(entero[i]);
    }
    return s;
}

}  // namespace tpv::cifras
