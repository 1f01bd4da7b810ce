#pragma once
// The parts of the PostgreSQL engine that need no client library: how the
// till's statements are written for the server, the text forms in which
// values travel, and the DDL of a shop's database.
#include <string>
#include <string_view>

#include "core/datos/esquema.hpp"
#include "core/datos/motor.hpp"

namespace tpv::datos::pg {

// Text compares, groups and sorts through the collation "jet" (ICU, Spanish,
// strength 2: case ignored, accents kept, ñ after n); LIKE, & and the text of
// numbers through the functions jet_like and jet_text that the DDL creates.
class PostgresDialect : public Dialect {
public:
    std::string QuoteIdent(const std::string& name) const override;
    std::string Placeholder(int index) const override;
    std::string Concat(const std::string& a, ColType ta, const std::string& b, ColType tb) const override;
    std::string Like(const std::string& value, const std::string& pattern) const override;
    std::string TextCollate(const std::string& expr) const override;
    std::string Divide(const std::string& a, const std::string& b) const override;
    std::string RowKey() const override { return "ctid"; }
    std::string KeyLookup(const std::string& key, const std::string& subquery) const override;
    std::string TextEqualsInScan(const std::string& a, const std::string& b) const override;
    Value Bind(const Value& v, ColType target) const override;
};

const PostgresDialect& Dialecto();

// "yyyy-mm-dd hh:mm:ss[.ffffff]": exact to the microsecond, so that a value
// read from the server compares equal when it is sent back.
std::string TextoFechaHora(DateTime d);
// "hh:mm:ss[.ffffff]", the time of day alone.
std::string TextoHora(DateTime d);
// The server's forms of date, timestamp and time (DateStyle ISO). False for
// anything else (infinity, BC dates).
bool LeerFechaHora(std::string_view text, DateTime& out);
bool LeerHora(std::string_view text, DateTime& out);
// The shortest text that reads back as the same double.
std::string TextoDouble(double v);

// The statements that make the tables, indexes and support functions of the
// schema, as one script.
std::string Ddl(const SchemaDef& schema);
// The statement that makes one index unless one of its name is there.
std::string IndiceDdl(const IndexDef& index);

}  // namespace tpv::datos::pg
