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

}  // namespace

bool IsKeyword(std::string_view w) {
    return std::find(kKeywords.begin(), kKeywords.end(), w) != kKeywords.end();
}

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
            t.text = sql.substr(i, j - i);
            std::string lower = Minusculas(t.text);
            if (IsKeyword(lower)) {
                t.kind = Tok::Keyword;
                t.text = lower;
            } else {
                t.kind = Tok::Ident;
            }
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
            out.shape += t.kind == Tok::Number ? "\x01N" : t.kind == Tok::String ? "\x01S" : "\x01D";
        } else {
            out.shape += t.kind == Tok::Ident ? Minusculas(t.text) : t.text;
        }
        out.shape.push_back(t.kind == Tok::Ident ? '\x02' : ' ');
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
