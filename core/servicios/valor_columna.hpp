#pragma once
#include <string>
#include <string_view>

#include "core/datos/tipos.hpp"
#include "core/runtime/value.hpp"

namespace tpv {

// How RecordWriter turns a value into a literal of a Jet statement for the
// column it goes to. The literals are what the data layer reads back with
// the column's type: numbers with a dot, dates as #mm/dd/yyyy hh:mm:ss#,
// flags -1 and 0, text between apostrophes with apostrophes doubled, NULL.
//
// A value that doesn't suit its column is the run-time error 13.

// A FieldList value for `columna` of `tabla`:
// - number columns: a regional number ("1,5", "-3", "1.234,5", "1,5E-05"),
//   "" for NULL; anything else must be an arithmetic expression of numbers
//   (comma or dot), + - * / and parentheses, and, where `admiteColumnas`,
//   the table's number columns ("Salida+2,5"): it goes into the statement
//   with its decimal commas as dots;
// - flags: -1/0 (any number but 0 is true), "True"/"False",
//   "Verdadero"/"Falso"; "" for NULL;
// - dates: day first, "dd/mm/yyyy" with an optional time, or a time alone;
//   times: "hh:mm:ss" or "hh:mm" (the time of a full date); "" for NULL;
// - text: as it stands, "" an empty text.
std::string LiteralDeCampo(const datos::TableInfo& tabla, const datos::ColumnInfo& columna, const std::string& valor,
                           bool admiteColumnas);

// A value already typed: NULL is NULL; a text is read as a FieldList value
// (without expressions) except for a text column, which takes it whole.
std::string LiteralDeValor(const datos::TableInfo& tabla, const datos::ColumnInfo& columna, const Value& valor);

// 'texto' with its apostrophes doubled.
std::string TextoJet(std::string_view texto);

// A number written the regional way, strictly: optional sign, digits with
// thousands dots only in groups of three, an optional decimal comma and
// exponent. "1.5" is not one (it would be fifteen to the regional reading).
bool LeerNumeroFieldList(std::string_view texto, double& resultado);

}  // namespace tpv
