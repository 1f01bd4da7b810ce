#include "core/datos/session.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/fecha.hpp"
#include "core/runtime/unicode.hpp"

namespace tpv::datos {

namespace {

bool Digits(std::string_view s, std::size_t& i, int& v, int maxLen) {
    std::size_t start = i;
    v = 0;
    while (i < s.size() && s[i] >= '0' && s[i] <= '9' && static_cast<int>(i - start) < maxLen) v = v * 10 + (s[i++] - '0');
    return i > start;
}

// "hh:mm[:ss]" from position i.
bool ReadTime(std::string_view s, std::size_t& i, double& frac) {
    int h, m, sec = 0;
    if (!Digits(s, i, h, 2) || i >= s.size() || s[i] != ':') return false;
    ++i;
    if (!Digits(s, i, m, 2)) return false;
    if (i < s.size() && s[i] == ':') {
        ++i;
        if (!Digits(s, i, sec, 2)) return false;
    }
    if (h > 23 || m > 59 || sec > 59) return false;
    frac = fecha::DesdeHora(h, m, sec).serial;
    return true;
}

std::string_view Trim(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
    return s;
}

// A date: first/second/year with an optional time; monthFirst says which of
// the first two is the month. Jet takes the other order when the month is
// impossible (#15/11/2026# is the 15th of November).
bool ReadDate(std::string_view text, bool monthFirst, DateTime& out) {
    std::string_view s = Trim(text);
    std::size_t i = 0;
    double frac = 0;
    if (ReadTime(s, i, frac) && i == s.size()) {
        out = DateTime{frac};
        return true;
    }
    i = 0;
    int a, b, y;
    if (!Digits(s, i, a, 4)) return false;
    if (i < s.size() && s[i] == '-' && i == 4) {  // yyyy-mm-dd
        ++i;
        if (!Digits(s, i, b, 2) || i >= s.size() || s[i] != '-') return false;
        ++i;
        int d;
        if (!Digits(s, i, d, 2) || !fecha::EsFechaValida(a, b, d)) return false;
        out = fecha::DesdeFecha(a, b, d);
    } else {
        if (i >= s.size() || (s[i] != '/' && s[i] != '-' && s[i] != '.')) return false;
        char sep = s[i++];
        if (!Digits(s, i, b, 2) || i >= s.size() || s[i] != sep) return false;
        ++i;
        std::size_t ys = i;
        if (!Digits(s, i, y, 4)) return false;
        if (i - ys <= 2) y += y < 30 ? 2000 : 1900;
        int m = monthFirst ? a : b, d = monthFirst ? b : a;
        if (!fecha::EsFechaValida(y, m, d)) std::swap(m, d);
        if (!fecha::EsFechaValida(y, m, d)) return false;
        out = fecha::DesdeFecha(y, m, d);
    }
    while (i < s.size() && s[i] == ' ') ++i;
    if (i < s.size()) {
        if (!ReadTime(s, i, frac)) return false;
        out.serial += frac;
    }
    return i == s.size();
}

// Two values of a column in the order DISTINCT tells them apart: NULL,
// then numbers and dates by value, then text (without regard to case in a
// text column, as its collation compares).
int CompararCelda(const Value& a, const Value& b, ColType type) {
    auto rango = [](const Value& v) { return v.IsNull() ? 0 : v.kind() == Value::Kind::Text ? 2 : 1; };
    int ra = rango(a), rb = rango(b);
    if (ra != rb) return ra < rb ? -1 : 1;
    if (ra == 0) return 0;
    if (ra == 1) return a.number() < b.number() ? -1 : b.number() < a.number() ? 1 : 0;
    return type == ColType::Text ? unicode::CompareText(a.text(), b.text()) : a.text().compare(b.text());
}

// Keeps the first of every run of equal rows, in the order they came.
void PlegarFilas(std::vector<std::vector<Value>>& rows, const std::vector<ColType>& types) {
    if (rows.size() < 2) return;
    auto comparar = [&](std::size_t x, std::size_t y) {
        for (std::size_t c = 0; c < types.size(); ++c)
            if (int k = CompararCelda(rows[x][c], rows[y][c], types[c])) return k;
        return 0;
    };
    std::vector<std::size_t> orden(rows.size());
    for (std::size_t i = 0; i < orden.size(); ++i) orden[i] = i;
    std::stable_sort(orden.begin(), orden.end(), [&](std::size_t x, std::size_t y) { return comparar(x, y) < 0; });
    std::vector<bool> repetida(rows.size(), false);
    for (std::size_t i = 1; i < orden.size(); ++i)
        if (comparar(orden[i - 1], orden[i]) == 0) repetida[orden[i]] = true;
    std::size_t fuera = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (repetida[i]) continue;
        if (fuera != i) rows[fuera] = std::move(rows[i]);
        ++fuera;
    }
    rows.resize(fuera);
}

[[noreturn]] void Mismatch(const std::string& sql) {
    throw DbError("tipos", "No coinciden los tipos de datos en la expresión de criterios.", sql);
}

}  // namespace

bool LeerNumeroRegional(std::string_view text, double& out) { return LeerNumero(text, out); }

Value LiteralValue(const Token& t, const SlotPlan& plan, const std::string& sql) {
    switch (t.kind) {
        case Tok::Number: {
            bool whole = t.text.find_first_of(".eE") == std::string::npos;
            if (whole && t.text.size() < 18 && plan.target != ColType::Double) return Value(std::stoll(t.text));
            double d = 0;
            auto r = std::from_chars(t.text.data(), t.text.data() + t.text.size(), d);
            if (r.ec == std::errc::result_out_of_range) {
                // Too small is 0, as the runtime reads it; too big does not fit.
                auto e = t.text.find_first_of("eE");
                if (e == std::string::npos || t.text[e + 1] != '-') throw ErrorDesbordamiento();
                d = 0;
            }
            return Value(d);
        }
        case Tok::Date: {
            DateTime d;
            if (!ReadDate(t.text, true, d))
                throw DbError("sintaxis", "Error de sintaxis en la fecha de la expresión de consulta '#" + t.text + "#'.", sql);
            return Value(d);
        }
        case Tok::String:
            switch (plan.target) {
                case ColType::Integer:
                case ColType::Double:
                case ColType::Flag: {
                    double d;
                    if (!LeerNumeroODesborda(t.text, d)) Mismatch(sql);
                    if (plan.target != ColType::Double && d == std::floor(d) && std::fabs(d) < 9e15)
                        return Value(static_cast<long long>(d));
                    return Value(d);
                }
                case ColType::Date:
                case ColType::Time: {
                    DateTime d;
                    if (!ReadDate(t.text, false, d)) Mismatch(sql);
                    return Value(d);
                }
                default: return Value(t.text);
            }
        default: return Value();
    }
}

Session::Session(std::unique_ptr<Engine> engine) : engine_(std::move(engine)) {
    catalog_ = std::make_shared<const Catalog>(engine_->LoadCatalog());
}

void Session::ReloadCatalog() {
    cache_.clear();
    exact_.clear();
    catalog_ = std::make_shared<const Catalog>(engine_->LoadCatalog());
}

std::shared_ptr<Translation> Session::Find(const std::string& jetSql, const Lexed& lexed) {
    auto it = cache_.find(lexed.shape);
    if (it != cache_.end()) return it->second;
    std::shared_ptr<Translation> t;
    try {
        t = Translate(jetSql, lexed, *catalog_);
    } catch (const TablaDesconocida&) {
        // Perhaps made since we opened (a tool, another till): look once more.
        ReloadCatalog();
        try {
            t = Translate(jetSql, lexed, *catalog_);
        } catch (const TablaDesconocida& e) {
            throw DbError("tabla", "No se encuentra la tabla o consulta de entrada '" + e.name + "'.", jetSql);
        }
    }
    t->catalog = catalog_;
    if (cache_.size() > 2000) cache_.clear();
    cache_.emplace(lexed.shape, t);
    return t;
}

std::shared_ptr<const Prepared> Session::Prepare(const std::string& jetSql, bool writable) {
    auto it = exact_.find(jetSql);
    if (it != exact_.end() && it->second[writable]) return it->second[writable];
    auto p = std::make_shared<const Prepared>(PrepareNew(jetSql, writable));
    // Texts that change with every call (a scanned code) would grow the map
    // without end: it starts again when full.
    if (exact_.size() >= 4000) exact_.clear();
    exact_[jetSql][writable] = p;
    return p;
}

Prepared Session::PrepareNew(const std::string& jetSql, bool writable) {
    Lexed lexed;
    Lex(jetSql, lexed);
    Prepared p;
    p.translation = Find(jetSql, lexed);
    Translation& t = *p.translation;

    std::vector<Value> values;
    values.reserve(lexed.literals.size());
    for (std::size_t i = 0; i < lexed.literals.size(); ++i) {
        values.push_back(LiteralValue(*lexed.literals[i], t.slots[i], jetSql));
        // A number meant for a date must be a date the runtime can hold.
        ColType target = t.slots[i].target;
        if ((target == ColType::Date || target == ColType::Time) && values.back().IsNumber())
            fecha::EnRangoODesborda(DateTime{values.back().number()});
    }

    unsigned mask = 0;
    for (std::size_t k = 0; k < t.likeSlots.size(); ++k) {
        const Value& v = values[static_cast<std::size_t>(t.likeSlots[k])];
        if (v.kind() != Value::Kind::Text || unicode::HasLikeWildcard(v.text())) mask |= 1u << k;
    }
    unsigned key = mask | (writable && t.baseTable ? 0x80000000u : 0u);
    const Rendered* r;
    {
        std::lock_guard<std::mutex> lock(t.mu);
        auto it = t.variants.find(key);
        if (it == t.variants.end()) it = t.variants.emplace(key, Render(t, engine_->dialect(), mask, writable && t.baseTable)).first;
        r = &it->second;
    }
    const Dialect& d = engine_->dialect();
    p.foldRows = r->foldRows;
    int n = 0;
    for (const Chunk& c : r->chunks) {
        if (c.slot < 0) {
            p.sql += c.text;
            continue;
        }
        const Value& v = values[static_cast<std::size_t>(c.slot)];
        if (t.slots[static_cast<std::size_t>(c.slot)].inlineInt) {
            if (v.kind() != Value::Kind::Integer) throw DbError("sintaxis", "Se esperaba un número entero.", jetSql);
            p.sql += std::to_string(v.integer());
            continue;
        }
        p.sql += d.Placeholder(++n);
        p.params.push_back(d.Bind(v, t.slots[static_cast<std::size_t>(c.slot)].target));
    }
    return p;
}

Value Session::Typed(const Value& raw, ColType type) {
    Value v = raw;
    TypeInPlace(v, type);
    return v;
}

void Session::TypeInPlace(Value& v, ColType type) {
    switch (type) {
        case ColType::Double:
            if (v.kind() == Value::Kind::Integer) v = Value(static_cast<double>(v.integer()));
            return;
        case ColType::Date:
        case ColType::Time:
            if (v.kind() == Value::Kind::Text) {
                DateTime d;
                if (fecha::DesdeTextoIso(v.text(), d)) v = Value(d);
            } else if (v.IsNumber()) {
                v = Value(DateTime{v.number()});
            }
            return;
        case ColType::Integer:
        case ColType::Flag:
            if (v.kind() == Value::Kind::Double && v.real() == std::floor(v.real()) && std::fabs(v.real()) < 9e15)
                v = Value(static_cast<long long>(v.real()));
            return;
        default: return;
    }
}

void Session::Rethrow(const DbError& e, const std::string& jetSql) {
    // A date the server's arithmetic took beyond its range: what the runtime
    // calls an overflow.
    if (e.EngineCode() == "22008") throw ErrorDesbordamiento();
    // Name the statement as the program wrote it, not as the engine got it.
    throw e.ConSentencia(jetSql);
}

Result Session::Run(const std::string& jetSql, bool writable, std::shared_ptr<Translation>* translation, bool withNames) {
    std::shared_ptr<const Prepared> p = Prepare(jetSql, writable);
    const Translation& t = *p->translation;
    Result r;
    try {
        r = engine_->Run(p->sql, p->params, t.returnsRows);
    } catch (const DbError& e) {
        Rethrow(e, jetSql);
    }
    if (t.returnsRows) {
        if (withNames) {
            r.names = t.names;
            r.types = t.types;
        }
        std::size_t n = t.types.size();
        for (auto& row : r.rows)
            for (std::size_t c = 0; c < n && c < row.size(); ++c) TypeInPlace(row[c], t.types[c]);
        if (p->foldRows) PlegarFilas(r.rows, t.types);
    }
    if (translation) *translation = p->translation;
    return r;
}

void Session::Each(const std::shared_ptr<const Prepared>& p, const std::string& jetSql, const RowSink& sink) {
    const Translation& t = *p->translation;
    std::size_t n = t.types.size();
    RowSink typed = [&](std::vector<Value>& row) {
        for (std::size_t c = 0; c < n && c < row.size(); ++c) TypeInPlace(row[c], t.types[c]);
        sink(row);
    };
    if (p->foldRows) {
        // Folding needs every row: they are held, then handed over.
        std::vector<std::vector<Value>> rows;
        Each(std::make_shared<const Prepared>(Prepared{p->translation, p->sql, p->params, false}), jetSql,
             [&](std::vector<Value>& row) { rows.push_back(std::move(row)); });
        PlegarFilas(rows, t.types);
        for (auto& row : rows) sink(row);
        return;
    }
    try {
        engine_->RunEach(p->sql, p->params, typed);
    } catch (const DbError& e) {
        if (e.Statement() != p->sql) throw;  // from the sink: not the engine's
        Rethrow(e, jetSql);
    }
}

}  // namespace tpv::datos
