#pragma once
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "core/datos/jet_lexico.hpp"
#include "core/datos/jet_sintaxis.hpp"
#include "core/datos/motor.hpp"

namespace tpv::datos {

// How one literal of the statement reaches the engine.
struct SlotPlan {
    ColType target = ColType::Unknown;  // the column type it meets, when known
    bool inlineInt = false;             // written into the statement (TOP n, ORDER BY 2)
};

// A translated statement: text pieces and the places of its literals.
struct Chunk {
    std::string text;
    int slot = -1;  // >= 0: the literal goes here
};

struct Rendered {
    std::vector<Chunk> chunks;
    bool foldRows = false;  // DISTINCT left to the session: fold equal rows after reading
};

// What the translator knows of a statement shape. Shared by every statement
// of the same shape, whatever its values.
struct Translation {
    ast::Statement stmt;
    std::vector<SlotPlan> slots;
    std::map<const ast::Expr*, int> likeIndex;  // LIKE over a text column with a literal pattern
    std::vector<int> likeSlots;                 // the pattern's slot, by like index
    bool returnsRows = false;
    std::vector<std::string> names;  // visible columns of a SELECT
    std::vector<ColType> types;
    const TableInfo* baseTable = nullptr;  // a SELECT over one table: its rows can be written
    std::shared_ptr<const Catalog> catalog;  // what the tables above point into

    std::mutex mu;
    std::map<unsigned, Rendered> variants;  // by like mask and the writable flag
};

// Thrown when a statement names a table the catalog doesn't have: the
// session reloads its catalog once and tries again.
struct TablaDesconocida {
    std::string name;
};

std::shared_ptr<Translation> Translate(const std::string& sql, const Lexed& lexed, const Catalog& catalog);

// Writes the statement for the engine. likeMask: bit i set when the i-th LIKE
// pattern holds a wild card (else the LIKE is written as an equality, which
// an index can serve). writable: add the row key and the row's columns
// behind the visible ones.
Rendered Render(const Translation& t, const Dialect& d, unsigned likeMask, bool writable);

}  // namespace tpv::datos
