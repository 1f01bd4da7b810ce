#pragma once
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/datos/tipos.hpp"

namespace tpv::datos {

struct SchemaDef;
struct IndexDef;

// Takes the rows of a statement one at a time; it may move from the row.
using RowSink = std::function<void(std::vector<Value>& row)>;

// How an engine writes the pieces of a statement that differ between engines.
// The translator walks the syntax tree and asks the dialect for these.
class Dialect {
public:
    virtual ~Dialect() = default;
    virtual std::string QuoteIdent(const std::string& name) const = 0;
    virtual std::string Placeholder(int index) const = 0;  // index from 1
    // text of a and b joined, NULL taken as empty
    virtual std::string Concat(const std::string& a, ColType ta, const std::string& b, ColType tb) const = 0;
    // Jet's LIKE: without regard to case, with % _ and [set]
    virtual std::string Like(const std::string& value, const std::string& pattern) const = 0;
    // a text compared without regard to case when it is no column of its own
    virtual std::string TextCollate(const std::string& expr) const = 0;
    virtual std::string Divide(const std::string& a, const std::string& b) const = 0;
    virtual std::string RowKey() const = 0;                     // the hidden key of a row
    virtual std::string CastForSum(const std::string& expr, ColType type) const { (void)type; return expr; }
    // "key IN (subquery)" where the subquery picks the few keys of a lookup
    // (a join the translator took away). An engine whose planner can't use
    // indexes for IN (subquery) under an OR writes it in a form it can.
    virtual std::string KeyLookup(const std::string& key, const std::string& subquery) const {
        return key + " IN (" + subquery + ")";
    }
    // "key IN (subquery)" that stands for a join on a unique key of a table
    // the statement only filters by (the translator took the join away),
    // where the statement reads most rows of its other table anyway. The
    // subquery's one column is written by KeySetColumn. An engine that tests
    // a key against a set faster than it looks one up in an index writes it
    // so.
    virtual std::string KeySet(const std::string& key, const std::string& subquery) const {
        return key + " IN (" + subquery + ")";
    }
    virtual std::string KeySetColumn(const std::string& column) const { return column; }
    // A text column equal to a value, in the conditions of a grouped
    // statement, which tests them on many rows.
    virtual std::string TextEqualsInScan(const std::string& a, const std::string& b) const { return a + " = " + b; }
    // True when the engine would fold the few rows of a one-table DISTINCT
    // (what the translator makes of a join it took away) more slowly than
    // the session does after reading them.
    virtual bool FoldsDistinctLate() const { return false; }
    // A literal given to the statement, as a parameter of the engine.
    virtual Value Bind(const Value& v, ColType target) const = 0;
};

// One database engine. Statements reach it already translated.
class Engine {
public:
    virtual ~Engine() = default;
    virtual const Dialect& dialect() const = 0;
    // Runs a translated statement with its parameters. Rows come back raw:
    // the session gives them their types.
    virtual Result Run(const std::string& sql, const std::vector<Value>& params, bool returnsRows) = 0;
    // Runs a translated statement that returns rows and hands each to the
    // sink as it is read. An engine that can't read a row at a time holds
    // the result while it hands the rows over.
    virtual void RunEach(const std::string& sql, const std::vector<Value>& params, const RowSink& sink) {
        Result r = Run(sql, params, true);
        for (auto& row : r.rows) sink(row);
    }
    virtual Catalog LoadCatalog() = 0;
    virtual std::string DefaultDatabase() const = 0;
    virtual void CreateSchema(const SchemaDef& schema) = 0;
    // The names of the indexes the database holds.
    virtual std::vector<std::string> IndexNames() = 0;
    // Makes one index, unless the database has one of that name already.
    virtual void CreateIndex(const IndexDef& index) = 0;
    virtual void Begin() = 0;
    virtual void Commit() = 0;
    virtual void Rollback() = 0;

    // Writes of an updatable recordset. The image is the row as it was read,
    // every column of the table in order; a write finds the row by its key and
    // only while every column still holds what was read. Each returns the rows
    // changed (0: somebody else changed or deleted the row).
    virtual std::vector<Value> InsertRow(const TableInfo& table, const std::vector<int>& columns,
                                         const std::vector<Value>& values) = 0;  // returns key + image
    virtual long long UpdateRow(const TableInfo& table, const Value& key, const std::vector<Value>& image,
                                const std::vector<int>& columns, const std::vector<Value>& values) = 0;
    virtual long long DeleteRow(const TableInfo& table, const Value& key, const std::vector<Value>& image) = 0;
    // The key of the row that the last UpdateRow wrote, given the key it was
    // found by. An engine whose keys name a version of a row (PostgreSQL's
    // ctid) gives the row a new one on every update.
    virtual Value KeyAfterUpdate(const Value& key) const { return key; }
};

// Where a database URI leads: a server ("postgresql://" or "postgres://"), or
// an SQLite file, given as its path or as "sqlite:PATH". Any other
// "scheme://" (a mistyped "postgresq://") and an empty path are refused with
// a DbError, so that a typing mistake never becomes a new folder or file.
struct DestinoBase {
    bool servidor = false;
    std::string ruta;  // the file's path, for SQLite
};
DestinoBase LeerUri(const std::string& uri);

std::unique_ptr<Engine> OpenSqlite(const std::string& path, bool create);
// create: make the database on the server first when it isn't there.
std::unique_ptr<Engine> OpenPostgres(const std::string& uri, bool create = false);

}  // namespace tpv::datos
