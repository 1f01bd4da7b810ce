#pragma once
#include "core/datos/jet_lexico.hpp"
#include "core/datos/jet_sintaxis.hpp"

namespace tpv::datos {

// Builds the syntax tree of one statement. Throws DbError naming the
// statement when it is not a statement of the dialect.
ast::Statement Parse(const std::string& sql, const Lexed& lexed);

}  // namespace tpv::datos
