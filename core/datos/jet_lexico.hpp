#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace tpv::datos {

// Tokens of a statement in the Jet dialect.
enum class Tok {
    Ident,    // name, or [bracketed name]; text holds the name
    Keyword,  // a reserved word; text holds it in lower case
    Number,   // text holds the digits as written
    String,   // text holds the value, quotes removed and doubled quotes undone
    Date,     // #...#; text holds what stands between the marks
    Symbol,   // punctuation and operators: ( ) , . * = <> < > <= >= + - / \ & ;
    End
};

struct Token {
    Tok kind = Tok::End;
    std::string text;
    std::size_t pos = 0;  // byte offset in the statement
    int slot = -1;        // literals: their place in the statement's list of values
};

struct Lexed {
    std::vector<Token> tokens;   // ends with an End token
    std::vector<const Token*> literals;  // filled by Lex: the literal tokens in order
    std::string shape;           // the statement with its literals taken out
};

// Splits a statement into tokens. Throws DbError on a text that does not end
// (an apostrophe inside a value breaks its statement) or a stray character.
// A statement-ending ";" may only be followed by blanks.
void Lex(const std::string& sql, Lexed& out);

bool IsKeyword(std::string_view lowerWord);

}  // namespace tpv::datos
