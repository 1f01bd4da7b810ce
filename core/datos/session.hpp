#pragma once
#include <memory>
#include <string>
#include <unordered_map>

#include "core/datos/motor.hpp"
#include "core/datos/traductor.hpp"

namespace tpv::datos {

// What a statement turned into: the engine's text, its parameters, and what
// the translator knows of its shape.
struct Prepared {
    std::shared_ptr<Translation> translation;
    std::string sql;
    std::vector<Value> params;
};

// An open database: its engine, its catalog and the translations already made.
class Session {
public:
    explicit Session(std::unique_ptr<Engine> engine);

    Prepared Prepare(const std::string& jetSql, bool writable);
    // Runs a statement; rows come back with the types of their columns.
    Result Run(const std::string& jetSql, bool writable, std::shared_ptr<Translation>* translation = nullptr);

    Engine& engine() { return *engine_; }
    const Catalog& catalog() const { return *catalog_; }
    void ReloadCatalog();

    static Value Typed(const Value& raw, ColType type);

private:
    std::shared_ptr<Translation> Find(const std::string& jetSql, const Lexed& lexed);

    std::unique_ptr<Engine> engine_;
    // Shared with the translations made against it: a recordset still open
    // when the catalog is read again keeps the tables it knows.
    std::shared_ptr<const Catalog> catalog_;
    std::unordered_map<std::string, std::shared_ptr<Translation>> cache_;
};

// Reads the literal of a statement as the value the engine gets.
Value LiteralValue(const Token& token, const SlotPlan& plan, const std::string& sql);

// A number in the regional form ("12,5", "1.234,5", " 44 "). False when the
// text is not a number.
bool LeerNumeroRegional(std::string_view text, double& out);

}  // namespace tpv::datos
