#pragma once
#include <string_view>

#include "core/runtime/value.hpp"

// The date functions of the original runtime, on date serials (days since
// 30/12/1899, the time as the fraction). A Value argument goes through CDate
// first, so a text is read day first and NULL is an error.
namespace tpv {

DateTime Date();  // today, without time
DateTime Time();  // the time of day now, on day 0
DateTime Now();

int Day(const Value& d);
int Month(const Value& d);
int Year(const Value& d);
int Hour(const Value& d);
int Minute(const Value& d);
int Second(const Value& d);
// 1 to 7; the week starts on `primerDia` (1 Sunday, 2 Monday...).
int Weekday(const Value& d, int primerDia = 1);

// Months and days out of range carry over: DateSerial(2026, 13, 0) is
// 31/12/2026. Years 0-29 are 2000-2029 and 30-99 are 1930-1999.
DateTime DateSerial(int anio, int mes, int dia);
DateTime TimeSerial(int hora, int minuto, int segundo);
DateTime DateValue(const Value& d);  // the date part
DateTime TimeValue(const Value& d);  // the time part, on day 0

// Intervals: "yyyy", "q", "m", "y", "d", "w", "ww", "h", "n", "s". Adding
// months keeps the day unless the month is shorter (31/01 + 1 month is the
// last day of February). `n` loses its fraction.
DateTime DateAdd(std::string_view intervalo, double n, const Value& d);
// Boundaries crossed from `d1` to `d2`: DateDiff("d", ...) counts midnights,
// whatever the times; "ww" counts Sundays (the week's first day), "w" whole
// weeks.
long long DateDiff(std::string_view intervalo, const Value& d1, const Value& d2);

}  // namespace tpv
