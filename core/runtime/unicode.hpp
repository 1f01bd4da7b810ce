#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// UTF-8 helpers for text that counts characters, not bytes, and for the
// case-insensitive Spanish comparison of the database.
namespace tpv::unicode {

// Decodes UTF-8; an invalid byte is taken as the Latin-1 character of that
// value, so that nothing coming from a file or a scanner can fail here.
std::vector<char32_t> Decode(std::string_view text);
std::string Encode(const std::vector<char32_t>& cps);
void Append(std::string& out, char32_t cp);

char32_t ToLower(char32_t cp);
char32_t ToUpper(char32_t cp);
// The letter without its accent (á -> a, Ü -> U); ñ and Ñ keep theirs, as
// Spanish holds them for letters of their own.
char32_t BaseLetter(char32_t cp);

std::string Lower(std::string_view text);
std::string Upper(std::string_view text);
std::size_t Length(std::string_view text);

// Comparison of text as the shop's database does it: without regard to case;
// accents order after the plain letter and ñ between n and o, so "María"
// comes before "MARTA" and "Ñu" after "Nu". Returns <0, 0 or >0.
int CompareText(std::string_view a, std::string_view b);

// LIKE with % (any run), _ (one character) and [set] / [!set] / [a-z], without
// regard to case.
bool Like(std::string_view text, std::string_view pattern);
bool HasLikeWildcard(std::string_view pattern);

}  // namespace tpv::unicode
