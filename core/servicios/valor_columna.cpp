#include "core/servicios/valor_columna.hpp"

#include <charconv>
#include <cmath>
#include <cstdio>

#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/fecha.hpp"

namespace tpv {

namespace {

using datos::ColType;

std::string_view Recortar(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
    return s;
}

bool EsDigito(char c) { return c >= '0' && c <= '9'; }
bool EsLetra(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

[[noreturn]] void NoCoinciden(const datos::TableInfo& tabla, const datos::ColumnInfo& columna, std::string_view valor) {
    throw RuntimeError(kErrTypeMismatch, "No coinciden los tipos: " + tabla.name + "." + columna.name + " = '" +
                                             std::string(valor) + "'");
}

std::string NumeroJet(double x) {
    if (x == 0) return "0";  // no "-0"
    char buf[64];
    auto [p, ec] = std::to_chars(buf, buf + sizeof buf, x);
    return ec == std::errc() ? std::string(buf, p) : "0";
}

std::string FechaJet(DateTime d, ColType tipo) {
    fecha::Partes p = fecha::Descomponer(d);
    char buf[48];
    const bool soloHora = tipo == ColType::Time || std::trunc(d.serial) == 0.0;
    if (soloHora)
        std::snprintf(buf, sizeof buf, "#%02d:%02d:%02d#", p.hora, p.minuto, p.segundo);
    else if (p.hora == 0 && p.minuto == 0 && p.segundo == 0)
        std::snprintf(buf, sizeof buf, "#%02d/%02d/%04d#", p.mes, p.dia, p.anio);
    else
        std::snprintf(buf, sizeof buf, "#%02d/%02d/%04d %02d:%02d:%02d#", p.mes, p.dia, p.anio, p.hora, p.minuto,
                      p.segundo);
    return buf;
}

// The time of day of a date value, on day 0.
DateTime SoloHora(DateTime d) {
    fecha::Partes p = fecha::Descomponer(d);
    return fecha::DesdeHora(p.hora, p.minuto, p.segundo);
}

// Checks an arithmetic expression and writes it for the statement: numbers
// with a dot, the table's number columns by their own names, one blank
// between tokens (so that "- -1" never becomes a comment "--").
class Expresion {
public:
    Expresion(std::string_view texto, const datos::TableInfo& tabla, bool admiteColumnas)
        : s_(texto), tabla_(tabla), admiteColumnas_(admiteColumnas) {}

    bool Escribir(std::string& salida) {
        if (!Siguiente() || !Suma(0) || tipo_ != Tipo::Fin) return false;
        salida = std::move(salida_);
        return true;
    }

private:
    enum class Tipo { Numero, Columna, Operador, Abre, Cierra, Fin, Malo };
    static constexpr int kProfundidadMaxima = 32;

    bool Siguiente() {
        while (i_ < s_.size() && (s_[i_] == ' ' || s_[i_] == '\t')) ++i_;
        tok_.clear();
        if (i_ >= s_.size()) {
            tipo_ = Tipo::Fin;
            return true;
        }
        char c = s_[i_];
        if (EsDigito(c) || ((c == ',' || c == '.') && i_ + 1 < s_.size() && EsDigito(s_[i_ + 1]))) {
            std::size_t j = i_;
            while (j < s_.size() && EsDigito(s_[j])) tok_ += s_[j++];
            if (j < s_.size() && (s_[j] == ',' || s_[j] == '.') && j + 1 < s_.size() && EsDigito(s_[j + 1])) {
                tok_ += '.';
                ++j;
                while (j < s_.size() && EsDigito(s_[j])) tok_ += s_[j++];
            }
            if (j < s_.size() && (s_[j] == 'e' || s_[j] == 'E')) {
                std::size_t k = j + 1;
                std::string exp = "e";
                if (k < s_.size() && (s_[k] == '+' || s_[k] == '-')) exp += s_[k++];
                if (k < s_.size() && EsDigito(s_[k])) {
                    while (k < s_.size() && EsDigito(s_[k])) exp += s_[k++];
                    tok_ += exp;
                    j = k;
                }
            }
            if (tok_.front() == '.') tok_.insert(tok_.begin(), '0');
            if (j < s_.size() && (EsLetra(s_[j]) || EsDigito(s_[j]) || s_[j] == ',' || s_[j] == '.')) return Malo();
            double x;
            auto [p, ec] = std::from_chars(tok_.data(), tok_.data() + tok_.size(), x);
            if (ec != std::errc() || p != tok_.data() + tok_.size() || !std::isfinite(x)) return Malo();
            i_ = j;
            tipo_ = Tipo::Numero;
            return true;
        }
        if (EsLetra(c)) {
            std::size_t j = i_;
            while (j < s_.size() && (EsLetra(s_[j]) || EsDigito(s_[j]))) ++j;
            const datos::ColumnInfo* col = tabla_.Find(s_.substr(i_, j - i_));
            if (!admiteColumnas_ || !col || !(col->type == ColType::Integer || col->type == ColType::Double))
                return Malo();
            tok_ = "[" + col->name + "]";
            i_ = j;
            tipo_ = Tipo::Columna;
            return true;
        }
        ++i_;
        tok_ = std::string(1, c);
        switch (c) {
            case '+':
            case '-':
            case '*':
            case '/':
                tipo_ = Tipo::Operador;
                return true;
            case '(':
                tipo_ = Tipo::Abre;
                return true;
            case ')':
                tipo_ = Tipo::Cierra;
                return true;
            default:
                return Malo();
        }
    }

    bool Malo() {
        tipo_ = Tipo::Malo;
        return false;
    }

    bool Tomar() {
        if (!salida_.empty()) salida_ += ' ';
        salida_ += tok_;
        return Siguiente();
    }

    bool EsOperador(const char* ops) const {
        return tipo_ == Tipo::Operador && std::string_view(ops).find(tok_[0]) != std::string_view::npos;
    }

    bool Suma(int profundidad) {
        if (!Producto(profundidad)) return false;
        while (EsOperador("+-"))
            if (!Tomar() || !Producto(profundidad)) return false;
        return true;
    }

    bool Producto(int profundidad) {
        if (!Factor(profundidad)) return false;
        while (EsOperador("*/"))
            if (!Tomar() || !Factor(profundidad)) return false;
        return true;
    }

    bool Factor(int profundidad) {
        if (profundidad > kProfundidadMaxima) return false;
        if (EsOperador("+-")) return Tomar() && Factor(profundidad + 1);
        if (tipo_ == Tipo::Numero || tipo_ == Tipo::Columna) return Tomar();
        if (tipo_ == Tipo::Abre) {
            if (!Tomar() || !Suma(profundidad + 1) || tipo_ != Tipo::Cierra) return false;
            return Tomar();
        }
        return false;
    }

    std::string_view s_;
    const datos::TableInfo& tabla_;
    bool admiteColumnas_;
    std::size_t i_ = 0;
    Tipo tipo_ = Tipo::Fin;
    std::string tok_;
    std::string salida_;
};

bool IgualSinCaso(std::string_view a, std::string_view b) { return datos::IgualesSinCaso(a, b); }

std::string LiteralNumero(const datos::TableInfo& tabla, const datos::ColumnInfo& columna, double x,
                          std::string_view original) {
    if (!std::isfinite(x)) NoCoinciden(tabla, columna, original);
    switch (columna.type) {
        case ColType::Integer:
            return std::to_string(CLng(Value(x)));  // half to even; overflow past 32 bits
        case ColType::Flag:
            return x != 0 ? "-1" : "0";
        default:
            return NumeroJet(x);
    }
}

}  // namespace

bool LeerNumeroFieldList(std::string_view texto, double& resultado) {
    std::string_view s = Recortar(texto);
    std::string limpio;
    std::size_t i = 0;
    if (i < s.size() && (s[i] == '-' || s[i] == '+')) limpio += s[i++];
    // Whole part, with thousands dots only between groups of three digits.
    std::size_t grupo = 0, cifrasEnteras = 0;
    bool conPuntos = false;
    for (; i < s.size(); ++i) {
        if (EsDigito(s[i])) {
            limpio += s[i];
            ++grupo;
            ++cifrasEnteras;
        } else if (s[i] == '.' && grupo > 0 && (conPuntos ? grupo == 3 : grupo <= 3)) {
            conPuntos = true;
            grupo = 0;
        } else {
            break;
        }
    }
    if (conPuntos && grupo != 3) return false;
    std::size_t cifrasDecimales = 0;
    if (i < s.size() && s[i] == ',') {
        limpio += '.';
        for (++i; i < s.size() && EsDigito(s[i]); ++i, ++cifrasDecimales) limpio += s[i];
    }
    if (cifrasEnteras + cifrasDecimales == 0) return false;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        limpio += 'e';
        ++i;
        if (i < s.size() && (s[i] == '-' || s[i] == '+')) limpio += s[i++];
        std::size_t inicio = i;
        for (; i < s.size() && EsDigito(s[i]); ++i) limpio += s[i];
        if (i == inicio) return false;
    }
    if (i != s.size()) return false;
    const char* b = limpio.data();
    if (*b == '+') ++b;
    double x;
    auto [p, ec] = std::from_chars(b, limpio.data() + limpio.size(), x);
    if (ec != std::errc() || p != limpio.data() + limpio.size() || !std::isfinite(x)) return false;
    resultado = x;
    return true;
}

std::string TextoJet(std::string_view texto) {
    std::string r = "'";
    for (char c : texto) {
        if (c == '\'') r += '\'';
        r += c;
    }
    return r + "'";
}

std::string LiteralDeCampo(const datos::TableInfo& tabla, const datos::ColumnInfo& columna, const std::string& valor,
                           bool admiteColumnas) {
    switch (columna.type) {
        case ColType::Integer:
        case ColType::Double: {
            if (Recortar(valor).empty()) return "NULL";
            double x;
            if (LeerNumeroFieldList(valor, x)) return LiteralNumero(tabla, columna, x, valor);
            std::string expresion;
            if (!Expresion(valor, tabla, admiteColumnas).Escribir(expresion)) NoCoinciden(tabla, columna, valor);
            return expresion;
        }
        case ColType::Flag: {
            std::string_view v = Recortar(valor);
            if (v.empty()) return "NULL";
            if (IgualSinCaso(v, "true") || IgualSinCaso(v, "verdadero")) return "-1";
            if (IgualSinCaso(v, "false") || IgualSinCaso(v, "falso")) return "0";
            double x;
            if (!LeerNumeroFieldList(v, x)) NoCoinciden(tabla, columna, valor);
            return LiteralNumero(tabla, columna, x, valor);
        }
        case ColType::Date:
        case ColType::Time: {
            if (Recortar(valor).empty()) return "NULL";
            DateTime d;
            try {
                d = CDate(Value(valor));
            } catch (const RuntimeError&) {
                NoCoinciden(tabla, columna, valor);
            }
            return FechaJet(columna.type == ColType::Time ? SoloHora(d) : d, columna.type);
        }
        default:
            return TextoJet(valor);
    }
}

std::string LiteralDeValor(const datos::TableInfo& tabla, const datos::ColumnInfo& columna, const Value& valor) {
    switch (valor.kind()) {
        case Value::Kind::Null:
            return "NULL";
        case Value::Kind::Text:
            if (columna.type == ColType::Text || columna.type == ColType::Unknown) return TextoJet(valor.text());
            return LiteralDeCampo(tabla, columna, valor.text(), false);
        case Value::Kind::Date:
            if (columna.type == ColType::Date) return FechaJet(valor.date(), ColType::Date);
            if (columna.type == ColType::Time) return FechaJet(SoloHora(valor.date()), ColType::Time);
            break;
        default:
            if (columna.type == ColType::Integer || columna.type == ColType::Double || columna.type == ColType::Flag)
                return LiteralNumero(tabla, columna, valor.number(), CStr(valor));
            break;
    }
    // A number or date into a text column goes as its text; any other
    // mismatch is a type error.
    if (columna.type == ColType::Text || columna.type == ColType::Unknown) return TextoJet(CStr(valor));
    NoCoinciden(tabla, columna, CStr(valor));
}

}  // namespace tpv
