#pragma once
#include <memory>
#include <string>
#include <vector>

#include "core/datos/tipos.hpp"

// The small syntax tree of a Jet statement: what the parser builds and the
// writers of each engine print.
namespace tpv::datos::ast {

struct Select;
struct Expr;
using ExprPtr = std::unique_ptr<Expr>;

enum class ExprKind {
    Column,     // [qualifier.]name
    Literal,    // a value of the statement: slot >= 0
    Bool,       // True / False / Yes / No
    Null,
    Star,       // * inside count(*)
    Unary,      // op: "-", "+", "not"
    Binary,     // op: "or" "and" "=" "<>" "<" ">" "<=" ">=" "+" "-" "*" "/" "\" "mod" "&"
    Like,       // args[0] like args[1]; negated
    Between,    // args[0] between args[1] and args[2]; negated
    InList,     // args[0] in (args[1..]); negated
    InSelect,   // args[0] in (sub); negated
    IsNull,     // args[0] is [not] null; negated
    Func,       // name(args), distinctArg for count(distinct x)
    Subquery,   // (select ...) as a value
};

enum class LitKind { Number, String, Date };

struct Expr {
    ExprKind kind;
    std::string op;         // operator or function name (lower case)
    std::string qualifier;  // column: table or alias as written
    std::string name;       // column name as written
    bool boolValue = false;
    bool negated = false;
    bool distinctArg = false;
    int slot = -1;
    int depth = 1;  // levels of the tree from here down, subqueries included
    LitKind litKind = LitKind::Number;
    std::vector<ExprPtr> args;
    std::unique_ptr<Select> sub;

    // Filled by the translator.
    ColType type = ColType::Unknown;
    const ColumnInfo* column = nullptr;
    std::string tableName;  // column: the real table
};

struct SelectItem {
    ExprPtr expr;               // null for * and t.*
    std::string alias;
    bool star = false;
    std::string starQualifier;  // t.*
};

struct TableRef {
    std::string name;   // table name as written
    std::string alias;  // "" when none
    const TableInfo* info = nullptr;
    const std::string& Visible() const { return alias.empty() ? name : alias; }
};

// FROM: a list of join trees, separated by commas.
struct JoinNode {
    bool isTable = true;
    TableRef table;
    std::string joinType;  // "inner", "left", "right"
    std::unique_ptr<JoinNode> left, right;
    ExprPtr on;
    int depth = 1;
};

struct OrderItem {
    ExprPtr expr;
    bool desc = false;
};

struct Select {
    bool distinct = false;
    int topSlot = -1;  // literal slot of TOP n
    std::vector<SelectItem> items;
    std::vector<std::unique_ptr<JoinNode>> from;
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
    std::vector<OrderItem> orderBy;
    std::vector<TableRef*> tables;  // every table of the FROM, in order (filled by the parser)
    // DISTINCT over plain columns of one table, with nothing after it (no
    // TOP, ORDER BY or grouping): the session may fold the rows itself.
    bool distinctFoldable = false;
};

struct Insert {
    TableRef table;
    std::vector<std::string> columns;  // empty: positional
    std::vector<ExprPtr> values;
    std::unique_ptr<Select> select;
};

struct Assignment {
    std::string column;
    ExprPtr value;
    const ColumnInfo* info = nullptr;
};

struct Update {
    TableRef table;
    std::vector<Assignment> sets;
    ExprPtr where;
};

struct Delete {
    TableRef table;
    ExprPtr where;
};

struct Statement {
    enum class Kind { Select, Insert, Update, Delete } kind;
    std::unique_ptr<Select> select;
    std::unique_ptr<Insert> insert;
    std::unique_ptr<Update> update;
    std::unique_ptr<Delete> del;
};

}  // namespace tpv::datos::ast
