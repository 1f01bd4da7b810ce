#include "core/datos/postgres_dialecto.hpp"

#include <charconv>
#include <cmath>
#include <cstdio>

#include "core/datos/session.hpp"
#include "core/runtime/fecha.hpp"

namespace tpv::datos::pg {

namespace {

// The support objects every shop database on a server carries. Text columns
// take the collation "jet"; LIKE needs a deterministic collation of its own
// (jet_es) to lower-case and match, and turns Jet's pattern into a regular
// expression: % _ [set] [!set] [a-z], everything else literal.
constexpr const char* kSoporte = R"sql(
SET client_min_messages = warning;
CREATE COLLATION IF NOT EXISTS jet (provider = icu, locale = 'es-u-ks-level2', deterministic = false);
CREATE COLLATION IF NOT EXISTS jet_es (provider = icu, locale = 'es');

CREATE OR REPLACE FUNCTION jet_text(v text) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT COALESCE(v, '') $$;

-- A number as the runtime joins it to text: 15 significant digits, decimal comma.
CREATE OR REPLACE FUNCTION jet_text(v double precision) RETURNS text
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT COALESCE(replace(v::numeric::text, '.', ','), '') $$;

CREATE OR REPLACE FUNCTION jet_text(v timestamp) RETURNS text
LANGUAGE sql STABLE PARALLEL SAFE AS $$
  SELECT CASE
    WHEN v IS NULL THEN ''
    WHEN v > '1899-12-29' AND v < '1899-12-31' AND v::time <> '00:00' THEN to_char(v, 'HH24:MI:SS')
    WHEN v::time = '00:00' THEN to_char(v, 'YYYY-MM-DD')
    ELSE to_char(v, 'YYYY-MM-DD HH24:MI:SS')
  END $$;

CREATE OR REPLACE FUNCTION jet_text(v time) RETURNS text
LANGUAGE sql STABLE PARALLEL SAFE AS $$ SELECT COALESCE(to_char(v::interval, 'HH24:MI:SS'), '') $$;

CREATE OR REPLACE FUNCTION jet_like_regex(p text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $f$
DECLARE
  r text := '^';
  i int := 1;
  n int := length(p);
  c text;
  k int;
  j int;
  neg boolean;
  items text;
  lo text;
  hi text;
BEGIN
  WHILE i <= n LOOP
    c := substr(p, i, 1);
    k := CASE WHEN c = '[' THEN strpos(substr(p, i + 1), ']') ELSE 0 END;
    IF c = '%' THEN
      r := r || '.*';
    ELSIF c = '_' THEN
      r := r || '.';
    ELSIF k > 0 THEN
      j := i + 1;
      neg := substr(p, j, 1) = '!' AND j < i + k;
      IF neg THEN j := j + 1; END IF;
      items := '';
      WHILE j < i + k LOOP
        lo := substr(p, j, 1);
        IF j + 2 < i + k AND substr(p, j + 1, 1) = '-' THEN
          hi := substr(p, j + 2, 1);
          IF ascii(lo) <= ascii(hi) THEN
            items := items || CASE WHEN strpos('\]^-[', lo) > 0 THEN '\' ELSE '' END || lo || '-'
                           || CASE WHEN strpos('\]^-[', hi) > 0 THEN '\' ELSE '' END || hi;
          END IF;
          j := j + 3;
        ELSE
          items := items || CASE WHEN strpos('\]^-[', lo) > 0 THEN '\' ELSE '' END || lo;
          j := j + 1;
        END IF;
      END LOOP;
      IF items = '' THEN
        r := r || CASE WHEN neg THEN '.' ELSE '(?!)' END;
      ELSE
        r := r || '[' || CASE WHEN neg THEN '^' ELSE '' END || items || ']';
      END IF;
      i := i + k;
    ELSIF strpos('.^$*+?()[]{}|\', c) > 0 THEN
      r := r || '\' || c;
    ELSE
      r := r || c;
    END IF;
    i := i + 1;
  END LOOP;
  RETURN r || '$';
END
$f$;

CREATE OR REPLACE FUNCTION jet_like(v text, p text) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS
$$ SELECT lower(v COLLATE jet_es) ~ jet_like_regex(lower(p COLLATE jet_es)) $$;

CREATE OR REPLACE FUNCTION jet_like(v double precision, p text) RETURNS boolean
LANGUAGE sql IMMUTABLE PARALLEL SAFE AS
$$ SELECT jet_like(CASE WHEN v IS NULL THEN NULL ELSE jet_text(v) END, p) $$;

CREATE OR REPLACE FUNCTION jet_like(v timestamp, p text) RETURNS boolean
LANGUAGE sql STABLE PARALLEL SAFE AS
$$ SELECT jet_like(CASE WHEN v IS NULL THEN NULL ELSE jet_text(v) END, p) $$;
)sql";

const char* Declaracion(ColType t) {
    switch (t) {
        case ColType::Integer: return "integer";
        case ColType::Double: return "double precision";
        case ColType::Text: return "text COLLATE jet";
        case ColType::Date: return "timestamp";  // a day, which may carry a time
        case ColType::Time: return "time";
        case ColType::Flag: return "smallint";
        default: return "text";
    }
}

std::string Literal(const std::string& s) {
    std::string out = "'";
    for (char c : s) {
        if (c == '\'') out += '\'';
        out += c;
    }
    return out + "'";
}

// A plain column or alias reference: "x" or "t"."x".
bool EsReferencia(const std::string& e) {
    if (e.empty() || e.front() != '"' || e.back() != '"') return false;
    bool dentro = false;
    for (char c : e) {
        if (c == '"') dentro = !dentro;
        else if (!dentro && c != '.') return false;
    }
    return true;
}

std::string TextoNumeroSqlite(double v) {
    // What a number turns into as text where a text column meets it: 15
    // significant digits with a dot, as the embedded engine does it.
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.15g", v);
    return buf;
}

// Splits a serial into whole days and microseconds of the day.
void Partir(DateTime d, double& dias, long long& micros) {
    fecha::EnRangoODesborda(d);
    dias = std::floor(d.serial);
    micros = std::llround((d.serial - dias) * 86400e6);
    if (micros >= 86400000000LL) {
        dias += 1;
        micros -= 86400000000LL;
    }
}

std::string Hora(long long micros) {
    long long s = micros / 1000000, us = micros % 1000000;
    char buf[32];
    if (us)
        std::snprintf(buf, sizeof buf, "%02lld:%02lld:%02lld.%06lld", s / 3600, s / 60 % 60, s % 60, us);
    else
        std::snprintf(buf, sizeof buf, "%02lld:%02lld:%02lld", s / 3600, s / 60 % 60, s % 60);
    return buf;
}

// "hh:mm:ss[.ffffff]" at the start of t; the rest (a time zone) is ignored.
bool LeerHoraEn(std::string_view t, DateTime& out) {
    int h, mi, s;
    if (t.size() < 8 || t[2] != ':' || t[5] != ':' || !fecha::LeerDigitos(t, 0, 2, h) ||
        !fecha::LeerDigitos(t, 3, 2, mi) || !fecha::LeerDigitos(t, 6, 2, s))
        return false;
    long long us = 0;
    std::size_t i = 8;
    if (i < t.size() && t[i] == '.') {
        int cifras = 0;
        for (++i; i < t.size() && t[i] >= '0' && t[i] <= '9'; ++i, ++cifras)
            if (cifras < 6) us = us * 10 + (t[i] - '0');
        for (; cifras < 6; ++cifras) us *= 10;
    }
    if (i < t.size() && t[i] != '+' && t[i] != '-') return false;
    // Whole seconds give the serial the runtime itself builds, bit for bit.
    out = fecha::DesdeHora(h, mi, s);
    if (us) out.serial += static_cast<double>(us) / 86400e6;
    return true;
}

}  // namespace

std::string PostgresDialect::QuoteIdent(const std::string& name) const {
    // Tables and columns are made lower-case; any spelling of a name finds them.
    std::string out = "\"";
    for (char c : Minusculas(name)) {
        if (c == '"') out += '"';
        out += c;
    }
    return out + "\"";
}

std::string PostgresDialect::Placeholder(int index) const { return "$" + std::to_string(index); }

std::string PostgresDialect::Concat(const std::string& a, ColType ta, const std::string& b, ColType tb) const {
    auto parte = [](const std::string& e, ColType t) {
        return t == ColType::Text ? "COALESCE(" + e + ", '')" : "jet_text(" + e + ")";
    };
    return parte(a, ta) + " || " + parte(b, tb);
}

std::string PostgresDialect::Like(const std::string& value, const std::string& pattern) const {
    return "jet_like(" + value + ", " + pattern + ")";
}

std::string PostgresDialect::TextCollate(const std::string& expr) const {
    // A column already has the collation; an alias can't take a COLLATE in
    // ORDER BY, and DISTINCT wants its columns in ORDER BY as they stand.
    if (EsReferencia(expr)) return expr;
    return "(" + expr + ") COLLATE jet";
}

std::string PostgresDialect::Divide(const std::string& a, const std::string& b) const {
    // Always in floating point; by zero gives NULL, as on the embedded engine.
    return "CAST(" + a + " AS double precision) / NULLIF(" + b + ", 0)";
}

std::string PostgresDialect::KeyLookup(const std::string& key, const std::string& subquery) const {
    // The keys as an array: under an OR the planner can then join the index
    // scans of both branches (the bar-code lookup), where IN (subquery)
    // leaves it a scan of the whole table.
    return key + " = ANY (ARRAY(" + subquery + "))";
}

std::string PostgresDialect::TextEqualsInScan(const std::string& a, const std::string& b) const {
    // The collation jet compares through ICU, which costs on every row; the
    // same bytes are equal in any collation, and a byte-wise comparison
    // settles most rows first (a line of type 'P' against 'P').
    return "(" + a + " = " + b + " COLLATE \"C\" OR " + a + " = " + b + ")";
}

Value PostgresDialect::Bind(const Value& v, ColType target) const {
    switch (v.kind()) {
        case Value::Kind::Date:
            if (target == ColType::Text || target == ColType::Unknown) return Value(fecha::ATextoIso(v.date()));
            if (EsNumerico(target)) return Value(v.date().serial);
            return v;
        case Value::Kind::Integer:
        case Value::Kind::Double:
            if (target == ColType::Text)
                return v.kind() == Value::Kind::Integer ? Value(std::to_string(v.integer()))
                                                        : Value(TextoNumeroSqlite(v.real()));
            if (target == ColType::Date || target == ColType::Time) return Value(DateTime{v.number()});
            return v;
        case Value::Kind::Text: {
            if (EsNumerico(target)) {
                double d;
                if (!LeerNumeroRegional(v.text(), d)) return v;  // the server refuses it
                if (target != ColType::Double && d == std::floor(d) && std::fabs(d) < 9e15)
                    return Value(static_cast<long long>(d));
                return Value(d);
            }
            DateTime d;
            if ((target == ColType::Date || target == ColType::Time) && fecha::DesdeTextoIso(v.text(), d))
                return Value(d);
            return v;
        }
        default: return v;
    }
}

const PostgresDialect& Dialecto() {
    static const PostgresDialect d;
    return d;
}

std::string TextoFechaHora(DateTime d) {
    double dias;
    long long micros;
    Partir(d, dias, micros);
    fecha::Partes p = fecha::Descomponer(DateTime{dias});
    char buf[24];
    std::snprintf(buf, sizeof buf, "%04d-%02d-%02d ", p.anio, p.mes, p.dia);
    return buf + Hora(micros);
}

std::string TextoHora(DateTime d) {
    double dias;
    long long micros;
    Partir(d, dias, micros);
    return Hora(micros);
}

bool LeerFechaHora(std::string_view t, DateTime& out) {
    int y, m, d;
    if (t.size() < 10 || t[4] != '-' || t[7] != '-' || !fecha::LeerDigitos(t, 0, 4, y) ||
        !fecha::LeerDigitos(t, 5, 2, m) || !fecha::LeerDigitos(t, 8, 2, d) || !fecha::EsFechaValida(y, m, d))
        return false;
    out = fecha::DesdeFecha(y, m, d);
    if (t.size() == 10) return true;
    DateTime h;
    if (t[10] != ' ' || !LeerHoraEn(t.substr(11), h)) return false;
    out.serial += h.serial;
    return true;
}

bool LeerHora(std::string_view t, DateTime& out) { return LeerHoraEn(t, out); }

std::string TextoDouble(double v) {
    char buf[64];
    auto r = std::to_chars(buf, buf + sizeof buf, v);
    return std::string(buf, r.ptr);
}

std::string Ddl(const SchemaDef& schema) {
    const PostgresDialect& d = Dialecto();
    std::string s = kSoporte;
    for (const TableDef& t : schema.tables) {
        std::string tabla = d.QuoteIdent(t.name);
        s += "\nCREATE TABLE " + tabla + " (";
        for (std::size_t i = 0; i < t.columns.size(); ++i) {
            const ColumnDef& c = t.columns[i];
            s += (i ? ",\n  " : "\n  ") + d.QuoteIdent(c.info.name) + " " + Declaracion(c.info.type);
            if (!c.defaultValue.empty()) s += " DEFAULT " + c.defaultValue;
        }
        s += "\n);\n";
        // The names as the schema spells them, for the catalog to give back.
        s += "COMMENT ON TABLE " + tabla + " IS " + Literal(t.name) + ";\n";
        for (const ColumnDef& c : t.columns)
            s += "COMMENT ON COLUMN " + tabla + "." + d.QuoteIdent(c.info.name) + " IS " + Literal(c.info.name) + ";\n";
    }
    for (const IndexDef& ix : schema.indexes) s += IndiceDdl(ix) + ";\n";
    return s;
}

std::string IndiceDdl(const IndexDef& ix) {
    const PostgresDialect& d = Dialecto();
    std::string s = std::string(ix.unique ? "CREATE UNIQUE INDEX" : "CREATE INDEX") + " IF NOT EXISTS " +
                    d.QuoteIdent(ix.name) + " ON " + d.QuoteIdent(ix.table) + " (";
    for (std::size_t i = 0; i < ix.columns.size(); ++i) s += (i ? ", " : "") + d.QuoteIdent(ix.columns[i]);
    return s + ")" + (ix.where.empty() ? "" : " WHERE " + ix.where);
}

}  // namespace tpv::datos::pg
