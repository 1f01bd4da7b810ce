#pragma once
#include <array>
#include <memory>
#include <string>
#include <unordered_map>

#include "core/datos/motor.hpp"
#include "core/datos/traductor.hpp"
#include "core/runtime/error.hpp"

namespace tpv::datos {

// What a statement turned into: the engine's text, its parameters, and what
// the translator knows of its shape.
struct Prepared {
    std::shared_ptr<Translation> translation;
    std::string sql;
    std::vector<Value> params;
    bool foldRows = false;  // the engine gets no DISTINCT: equal rows are folded after reading
};

// An open database: its engine, its catalog and the statements already made.
//
// A statement is looked up first by its exact text: the till issues the same
// texts over and over, and such a statement goes to the engine with no
// reading at all. Any other text is read into tokens and looked up by its
// shape (the statement without its values), so that a shape is translated
// once; only a new shape is parsed and translated.
class Session {
public:
    explicit Session(std::unique_ptr<Engine> engine);

    std::shared_ptr<const Prepared> Prepare(const std::string& jetSql, bool writable);
    // Runs a statement; rows come back with the types of their columns.
    // withNames: fill the result's names and types (a recordset reads them
    // from the translation instead).
    Result Run(const std::string& jetSql, bool writable, std::shared_ptr<Translation>* translation = nullptr,
               bool withNames = true);
    // Runs a statement that returns rows and hands each row, typed, to the
    // sink as the engine reads it; none is kept. The sink must not run
    // statements of its own on this session.
    void Each(const std::shared_ptr<const Prepared>& prepared, const std::string& jetSql, const RowSink& sink);

    Engine& engine() { return *engine_; }
    const Catalog& catalog() const { return *catalog_; }
    void ReloadCatalog();

    static Value Typed(const Value& raw, ColType type);
    static void TypeInPlace(Value& v, ColType type);

private:
    std::shared_ptr<Translation> Find(const std::string& jetSql, const Lexed& lexed);
    Prepared PrepareNew(const std::string& jetSql, bool writable);
    [[noreturn]] void Rethrow(const DbError& e, const std::string& jetSql);

    std::unique_ptr<Engine> engine_;
    // Shared with the translations made against it: a recordset still open
    // when the catalog is read again keeps the tables it knows.
    std::shared_ptr<const Catalog> catalog_;
    std::unordered_map<std::string, std::shared_ptr<Translation>> cache_;  // by shape
    // By exact text: the statement as read only and as writable.
    std::unordered_map<std::string, std::array<std::shared_ptr<const Prepared>, 2>> exact_;
};

// Reads the literal of a statement as the value the engine gets.
Value LiteralValue(const Token& token, const SlotPlan& plan, const std::string& sql);

// A number in the regional form ("12,5", "1.234,5", " 44 "). False when the
// text is not a number.
bool LeerNumeroRegional(std::string_view text, double& out);

}  // namespace tpv::datos
