#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "core/runtime/error.hpp"
#include "core/runtime/value.hpp"

// The conversions of the original runtime under the Spanish regional
// settings: decimal comma, thousands dot, dates day first. They are the one
// place where numbers and dates meet text, and they keep that runtime's
// meaning exactly, roundings included.
//
// Failures are run-time errors: a text that is not a number is 13 "No
// coinciden los tipos", a NULL where none is allowed 94 "Uso no válido de
// Null", a value out of range 6 "Desbordamiento".
namespace tpv {

// --- Numbers out of text ---------------------------------------------------

// The leading number of a text, written with a dot whatever the regional
// settings: blanks, tabs and line feeds are skipped anywhere, reading stops
// at the first character that can't continue the number ("40,50" is 40).
// &H and &O introduce hexadecimal and octal whole numbers.
double Val(std::string_view text);

// Regional reading: decimal comma, thousands dots ignored, blanks around,
// sign before or after, "1,5E3", a trailing or leading "€", &H / &O.
//
// Each conversion takes a Value, so a flag given as a bool counts as -1, as
// the runtime held True, and numbers and texts need no overloads of their own.
double CDbl(const Value& v);
float CSng(const Value& v);

// Whole numbers round half to even (2.5 is 2, 3.5 is 4) and must fit:
// CInt in 16 bits, CLng in 32, else overflow.
std::int16_t CInt(const Value& v);
std::int32_t CLng(const Value& v);

// A number is true when not 0; a text may also be "True"/"False" or
// "Verdadero"/"Falso".
bool CBool(const Value& v);

// A number is taken as a date serial; a text is read day first:
// "dd/mm/yyyy", "dd/mm/yyyy hh:mm:ss", "hh:mm:ss", "hh:mm", with "/", "-"
// or "." between the parts and two-digit years 1930-2029; a text with the
// year first ("yyyy-mm-dd") is read as such, and one that can only be
// month first is read month first, as the runtime did.
DateTime CDate(const Value& v);

// Under the regional settings, and without raising an error.
bool IsNumeric(const Value& v);
// Reads a number written in the regional form ("1.234,5", "12,50 €", "(3)");
// false when the text is not one, or does not fit a double.
bool LeerNumero(std::string_view texto, double& out);
// The same, but a number too big for a double is the overflow error.
bool LeerNumeroODesborda(std::string_view texto, double& out);
bool IsDate(const Value& v);

// --- Text out of numbers and dates -------------------------------------------

// A double as the runtime wrote it: up to 15 significant digits, decimal
// comma, no thousands, no trailing zeros: "12,1", "0,333333333333333",
// "-0,5"; "1E+15" and "1E-05" beyond 15 digits before or 4 zeros after the
// comma. A date: "dd/mm/yyyy" without time, "hh:mm:ss" on day 0, else both.
std::string CStr(const Value& v);

// The invariant form: a dot, a leading blank for a number that isn't
// negative, no zero before the dot (" 12.5", " .5", "-3").
std::string Str(double x);

// What joining a value to a text gives ("" & x): NULL is "", numbers and
// dates as CStr.
std::string Texto(const Value& v);

// --- Rounding ----------------------------------------------------------------

// Grouped by thousands, `decimales` places (-1: the regional two), halves
// away from zero on the number's decimal text: FormatNumber(1234.5, 2) is
// "1.234,50", FormatNumber(0.5, 2) "0,50". A negative value that rounds to
// zero keeps its sign ("-0,00"), as the runtime wrote it.
std::string FormatNumber(const Value& v, int decimales = -1);

// Rounding by formatting and reading back: halves away from zero on the
// value's decimal text of 15 digits, so Fmt(2.675, 2) is 2.68 although the
// binary value lies below 2.675. Fmt(x) rounds to the money decimals of the
// shop, which the configuration sets at start.
double Fmt(double x, int decimales);
double Fmt(double x);
void FijarNumDecimales(int decimales);
int NumDecimales();

// The runtime's Round: half to even on the binary value, so Round(2.5) is
// 2, Round(0.125, 2) is 0.12 and Round(2.675, 2) is 2.67.
double Round(double x, int decimales = 0);

double Int(double x);  // towards minus infinity: Int(-2.5) is -3
double Fix(double x);  // towards zero: Fix(-2.5) is -2
double Abs(double x);
int Sgn(double x);

}  // namespace tpv
