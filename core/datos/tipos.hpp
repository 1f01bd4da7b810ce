#pragma once
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/runtime/value.hpp"

namespace tpv::datos {

// The types a column can have, as the till treats them.
enum class ColType { Unknown, Integer, Double, Text, Date, Time, Flag };

const char* NombreTipo(ColType t);
bool EsNumerico(ColType t);

struct ColumnInfo {
    std::string name;  // as the schema spells it
    ColType type = ColType::Unknown;
    bool unico = false;  // a unique index on this column alone: no two rows share a value
};

struct TableInfo {
    std::string name;
    std::vector<ColumnInfo> columns;
    const ColumnInfo* Find(std::string_view column) const;
    int IndexOf(std::string_view column) const;
};

// What tables and columns the database has; names without regard to case.
class Catalog {
public:
    void Add(TableInfo table);
    const TableInfo* Find(std::string_view table) const;
    bool Empty() const { return tables_.empty(); }
    std::vector<std::string> Names() const;

private:
    std::map<std::string, TableInfo> tables_;  // key: lower-case name
};

// ASCII lower case, for identifiers.
std::string Minusculas(std::string_view s);
bool IgualesSinCaso(std::string_view a, std::string_view b);

// A set of rows as an engine returns them.
struct Result {
    std::vector<std::string> names;
    std::vector<ColType> types;
    std::vector<std::vector<Value>> rows;
    long long changes = 0;
};

}  // namespace tpv::datos
