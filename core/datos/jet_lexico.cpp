#include "core/datos/jet_lexico.hpp"

#include <algorithm>
#include <array>

#include "core/datos/tipos.hpp"
#include "core/runtime/error.hpp"

namespace tpv::datos {

namespace {

constexpr std::array<std::string_view, 40> kKeywords = {
    "select", "distinct", "top",   "from",   "where", "group",  "by",     "having", "order",  "asc",
    "desc",   "as",       "and",   "or",     "not",   "like",   "between", "in",    "is",     "null",
    "true",   "false",    "inner", "left",   "right", "outer",  "join",   "on",     "insert", "into",
    "values", "update",   "set",   "delete", "mod",   "distinctrow", "yes", "no",  "union",  "all"};

bool IsIdentStart(unsigned char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c >= 0x80; }
bool IsIdentChar(unsigned char c) { return IsIdentStart(c) || (c >= '0' && c <= '9'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

[[noreturn]] void Fail(const std::string& sql, const std::string& what) {
    throw DbError("sintaxis", "Error de sintaxis en la instrucción SQL: " + what, sql);
}

// Each token goes into the shape as its kind, the length of its text and the
// text: no run of tokens can then read as another ("[where x]" is one name,
// not the word WHERE and a name). A literal leaves only its kind.
void AnadirAForma(std::string& forma, Tok kind, std::string_view text) {
    forma.push_back(static_cast<char>(kind));
    std::size_t n = text.size();
    do {
        forma.push_back(static_cast<char>((n & 0x7F) | (n > 0x7F ? 0x80 : 0)));
        n >>= 7;
    } while (n);
    forma += text;
}

}  // namespace

bool IsKeyword(std::string_view w) {
    return std::find(kKeywords.begin(), kKeywords.end(), w) != kKeywords.end();
}

namespace {

// The keyword a word is, in lower case, or an empty view when it is none;
// without building a string for the word.
std::string_view Keyword(std::string_view word) {
    constexpr std::size_t kLargoMaximo = 11;  // "distinctrow"
    if (word.size() < 2 || word.size() > kLargoMaximo) return {};
    char buf[kLargoMaximo];
    for (std::size_t i = 0; i < word.size(); ++i) {
        char c = word[i];
        buf[i] = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    }
    std::string_view lower(buf, word.size());
    for (std::string_view k : kKeywords)
        if (k == lower) return k;
    return {};
}

}  // namespace

void Lex(const std::string& sql, Lexed& out) {
    out.tokens.clear();
    out.literals.clear();
    out.shape.clear();
    out.tokens.reserve(sql.size() / 3 + 4);
    std::size_t i = 0, n = sql.size();
    int slot = 0;
    while (i < n) {
        char c = sql[i];
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
            ++i;
            continue;
        }
        Token t;
        t.pos = i;
        if (IsIdentStart(static_cast<unsigned char>(c))) {
            std::size_t j = i;
            while (j < n && IsIdentChar(static_cast<unsigned char>(sql[j]))) ++j;
            std::string_view word(sql.data() + i, j - i);
            std::string_view kw = Keyword(word);
            t.kind = kw.empty() ? Tok::Ident : Tok::Keyword;
            t.text = kw.empty() ? word : kw;
            i = j;
        } else if (c == '[') {
            std::size_t j = sql.find(']', i + 1);
            if (j == std::string::npos) Fail(sql, "falta ']'");
            t.kind = Tok::Ident;
            t.text = sql.substr(i + 1, j - i - 1);
            i = j + 1;
        } else if (IsDigit(c) || (c == '.' && i + 1 < n && IsDigit(sql[i + 1]))) {
            std::size_t j = i;
            while (j < n && IsDigit(sql[j])) ++j;
            if (j < n && sql[j] == '.') {
                ++j;
                while (j < n && IsDigit(sql[j])) ++j;
            }
            if (j < n && (sql[j] == 'e' || sql[j] == 'E')) {
                std::size_t k = j + 1;
                if (k < n && (sql[k] == '+' || sql[k] == '-')) ++k;
                if (k < n && IsDigit(sql[k])) {
                    while (k < n && IsDigit(sql[k])) ++k;
                    j = k;
                }
            }
            if (j < n && IsIdentStart(static_cast<unsigned char>(sql[j]))) Fail(sql, "número mal formado");
            t.kind = Tok::Number;
            t.text = sql.substr(i, j - i);
            i = j;
        } else if (c == '\'' || c == '"') {
            std::size_t j = i + 1;
            std::string v;
            bool closed = false;
            while (j < n) {
                if (sql[j] == c) {
                    if (j + 1 < n && sql[j + 1] == c) {
                        v.push_back(c);
                        j += 2;
                        continue;
                    }
                    closed = true;
                    ++j;
                    break;
                }
                v.push_back(sql[j++]);
            }
            if (!closed) Fail(sql, "falta el cierre de un texto");
            t.kind = Tok::String;
            t.text = std::move(v);
            i = j;
        } else if (c == '#') {
            std::size_t j = sql.find('#', i + 1);
            if (j == std::string::npos) Fail(sql, "falta el cierre de una fecha");
            t.kind = Tok::Date;
            t.text = sql.substr(i + 1, j - i - 1);
            i = j + 1;
        } else {
            t.kind = Tok::Symbol;
            if (i + 1 < n && ((c == '<' && (sql[i + 1] == '>' || sql[i + 1] == '=')) || (c == '>' && sql[i + 1] == '=') ||
                              (c == '!' && sql[i + 1] == '='))) {
                t.text = sql.substr(i, 2);
                if (t.text == "!=") t.text = "<>";
                i += 2;
            } else if (std::string_view("(),.*=<>+-/\\&;").find(c) != std::string_view::npos) {
                t.text = std::string(1, c);
                ++i;
            } else {
                Fail(sql, std::string("carácter no válido '") + c + "'");
            }
            if (t.text == ";") {
                std::size_t k = i;
                while (k < n && (sql[k] == ' ' || sql[k] == '\t' || sql[k] == '\r' || sql[k] == '\n')) ++k;
                if (k < n) Fail(sql, "texto después del final de la instrucción");
                break;  // the statement ends here
            }
        }
        if (t.kind == Tok::Number || t.kind == Tok::String || t.kind == Tok::Date) {
            t.slot = slot++;
            out.shape.push_back(static_cast<char>(t.kind));
        } else {
            AnadirAForma(out.shape, t.kind, t.text);
        }
        out.tokens.push_back(std::move(t));
    }
    Token end;
    end.kind = Tok::End;
    end.pos = n;
    out.tokens.push_back(end);
    for (const Token& t : out.tokens)
        if (t.slot >= 0) out.literals.push_back(&t);
}

}  // namespace tpv::datos
