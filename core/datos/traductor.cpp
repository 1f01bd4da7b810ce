#include "core/datos/traductor.hpp"

#include <unordered_set>

#include "core/datos/jet_parser.hpp"
#include "core/runtime/error.hpp"

namespace tpv::datos {

using namespace ast;

namespace {

struct Scope {
    std::vector<TableRef*> tables;
    const Scope* outer = nullptr;
    const Select* select = nullptr;  // for aliases in ORDER BY / HAVING
};

bool IsBoolOp(const Expr& e) {
    switch (e.kind) {
        case ExprKind::Like:
        case ExprKind::Between:
        case ExprKind::InList:
        case ExprKind::InSelect:
        case ExprKind::IsNull: return true;
        case ExprKind::Unary: return e.op == "not";
        case ExprKind::Binary:
            return e.op == "and" || e.op == "or" || e.op == "=" || e.op == "<>" || e.op == "<" || e.op == ">" ||
                   e.op == "<=" || e.op == ">=";
        default: return false;
    }
}

bool IsAggregate(const std::string& f) { return f == "sum" || f == "count" || f == "max" || f == "min" || f == "avg"; }

// ------------------------------------------------------------ a quicker plan

// True when the expression names a column of the table seen as `visible`.
bool Nombra(const Expr* e, const std::string& visible) {
    if (!e) return false;
    if (e->kind == ExprKind::Column && e->op != "alias" && IgualesSinCaso(e->tableName, visible)) return true;
    for (const auto& a : e->args)
        if (Nombra(a.get(), visible)) return true;
    return e->sub != nullptr;  // a subquery might name it: take it as named
}

bool SoloDe(const Expr* e, const std::string& visible) {
    if (e->sub) return false;
    if (e->kind == ExprKind::Column) return e->op != "alias" && IgualesSinCaso(e->tableName, visible);
    for (const auto& a : e->args)
        if (!SoloDe(a.get(), visible)) return false;
    return true;
}


bool SePuedeReescribir(const Expr* e, const std::string& visible) {
    if (!e || !Nombra(e, visible)) return true;
    if (IsBoolOp(*e) && SoloDe(e, visible)) return true;
    bool logico = (e->kind == ExprKind::Binary && (e->op == "and" || e->op == "or")) ||
                  (e->kind == ExprKind::Unary && e->op == "not");
    if (!logico) return false;
    for (const auto& a : e->args)
        if (!SePuedeReescribir(a.get(), visible)) return false;
    return true;
}

ExprPtr Nueva(ExprKind k) {
    auto e = std::make_unique<Expr>();
    e->kind = k;
    return e;
}

// A resolved column reference like c.
ExprPtr CopiaDeColumna(const Expr& c) {
    auto e = Nueva(ExprKind::Column);
    e->qualifier = c.qualifier;
    e->name = c.name;
    e->column = c.column;
    e->tableName = c.tableName;
    e->type = c.type;
    return e;
}

// Replaces every condition on the joined table alone by "key in (select ...)".
// False when the joined table is named in some other way.
bool Reescribir(ExprPtr& e, const TableRef& b, const Expr& claveA, const Expr& claveB) {
    if (!e || !Nombra(e.get(), b.Visible())) return true;
    if (IsBoolOp(*e) && SoloDe(e.get(), b.Visible())) {
        auto sub = std::make_unique<Select>();
        SelectItem it;
        it.expr = CopiaDeColumna(claveB);
        sub->items.push_back(std::move(it));
        auto nodo = std::make_unique<JoinNode>();
        nodo->table = b;
        sub->from.push_back(std::move(nodo));
        sub->tables.push_back(&sub->from[0]->table);
        sub->where = std::move(e);
        auto in = Nueva(ExprKind::InSelect);
        in->type = ColType::Flag;
        in->op = "clave";  // a lookup of the few keys of a join: written by Dialect::KeyLookup
        in->args.push_back(CopiaDeColumna(claveA));
        in->sub = std::move(sub);
        e = std::move(in);
        return true;
    }
    if (e->kind != ExprKind::Binary || (e->op != "and" && e->op != "or")) {
        if (!(e->kind == ExprKind::Unary && e->op == "not")) return false;
    }
    for (auto& a : e->args)
        if (!Reescribir(a, b, claveA, claveB)) return false;
    return true;
}

// "select distinct <columns of A> from A left join B on A.k = B.k where ..."
// gives the same rows as the statement without the join, once each condition
// on B becomes "A.k in (select B.k from B where ...)": nothing of B is shown
// and DISTINCT folds the repeats. Written so, each branch of an OR can use
// its own index (the bar-code lookup runs on every scan).
bool QuitarUnionInnecesaria(Select& s) {
    if (!s.distinct || s.from.size() != 1) return false;
    JoinNode& j = *s.from[0];
    if (j.isTable || j.joinType != "left" || !j.left->isTable || !j.right->isTable) return false;
    const TableRef& a = j.left->table;
    const TableRef& b = j.right->table;
    if (IgualesSinCaso(a.Visible(), b.Visible())) return false;
    const Expr* on = j.on.get();
    if (!on || on->kind != ExprKind::Binary || on->op != "=") return false;
    const Expr* x = on->args[0].get();
    const Expr* y = on->args[1].get();
    if (x->kind != ExprKind::Column || y->kind != ExprKind::Column) return false;
    if (IgualesSinCaso(x->tableName, b.Visible())) std::swap(x, y);
    if (!IgualesSinCaso(x->tableName, a.Visible()) || !IgualesSinCaso(y->tableName, b.Visible())) return false;
    for (const auto& it : s.items)
        if (Nombra(it.expr.get(), b.Visible())) return false;
    for (const auto& g : s.groupBy)
        if (Nombra(g.get(), b.Visible())) return false;
    for (const auto& o : s.orderBy)
        if (Nombra(o.expr.get(), b.Visible())) return false;
    if (Nombra(s.having.get(), b.Visible())) return false;
    // If some use of B can't be rewritten, nothing changes.
    if (!SePuedeReescribir(s.where.get(), b.Visible())) return false;
    TableRef copiaB = b;
    Reescribir(s.where, copiaB, *x, *y);
    auto soloA = std::make_unique<JoinNode>();
    soloA->table = a;
    s.from[0] = std::move(soloA);
    s.tables.clear();
    s.tables.push_back(&s.from[0]->table);
    return true;
}

// The conditions of an AND chain, each in its place in the tree.
void Conjuncion(ExprPtr& e, std::vector<ExprPtr*>& out) {
    if (e && e->kind == ExprKind::Binary && e->op == "and") {
        Conjuncion(e->args[0], out);
        Conjuncion(e->args[1], out);
    } else if (e) {
        out.push_back(&e);
    }
}

ExprPtr Y(ExprPtr a, ExprPtr b) {
    if (!a) return b;
    if (!b) return a;
    auto e = Nueva(ExprKind::Binary);
    e->op = "and";
    e->type = ColType::Flag;
    e->args.push_back(std::move(a));
    e->args.push_back(std::move(b));
    return e;
}

bool EsColumnaEntera(const Expr& e) {
    return e.kind == ExprKind::Column && e.op != "alias" && e.column && e.type == ColType::Integer;
}

// "from A, B where A.x = B.k and <conditions on B alone> and ..." where B.k
// is unique: every row of A meets at most one row of B, so the join gives
// the rows of A whose x is among the keys of the B rows that pass, each
// once. When nothing else names B the join becomes "A.x in (select B.k from
// B where <conditions on B>)", which the engine may answer with a set of the
// keys instead of one index lookup per row of A. Only grouped statements
// take it: a report over many rows of A, which reads them anyway.
bool JoinAConjuntoDeClaves(Select& s) {
    if (s.from.size() != 2 || !s.from[0]->isTable || !s.from[1]->isTable || s.groupBy.empty() || !s.where) return false;
    std::vector<ExprPtr*> condiciones;
    Conjuncion(s.where, condiciones);
    for (int cual = 1; cual >= 0; --cual) {
        const TableRef& a = s.from[static_cast<std::size_t>(1 - cual)]->table;
        const TableRef& b = s.from[static_cast<std::size_t>(cual)]->table;
        const std::string& vb = b.Visible();
        if (IgualesSinCaso(a.Visible(), vb)) return false;
        bool fuera = false;
        for (const auto& it : s.items) fuera = fuera || Nombra(it.expr.get(), vb);
        for (const auto& g : s.groupBy) fuera = fuera || Nombra(g.get(), vb);
        for (const auto& o : s.orderBy) fuera = fuera || Nombra(o.expr.get(), vb);
        if (fuera || Nombra(s.having.get(), vb)) continue;
        ExprPtr* union_ = nullptr;
        const Expr* claveA = nullptr;
        const Expr* claveB = nullptr;
        std::vector<ExprPtr*> deB;
        bool valida = true;
        for (ExprPtr* c : condiciones) {
            const Expr& e = **c;
            if (!Nombra(&e, vb)) continue;
            if (!union_ && e.kind == ExprKind::Binary && e.op == "=" && EsColumnaEntera(*e.args[0]) &&
                EsColumnaEntera(*e.args[1])) {
                const Expr* x = e.args[0].get();
                const Expr* y = e.args[1].get();
                if (IgualesSinCaso(x->tableName, vb)) std::swap(x, y);
                if (IgualesSinCaso(x->tableName, a.Visible()) && IgualesSinCaso(y->tableName, vb) && y->column->unico) {
                    union_ = c;
                    claveA = x;
                    claveB = y;
                    continue;
                }
            }
            if (IsBoolOp(e) && SoloDe(&e, vb)) deB.push_back(c);
            else valida = false;
        }
        if (!valida || !union_) continue;

        auto sub = std::make_unique<Select>();
        SelectItem it;
        it.expr = CopiaDeColumna(*claveB);
        sub->items.push_back(std::move(it));
        auto nodo = std::make_unique<JoinNode>();
        nodo->table = b;
        sub->from.push_back(std::move(nodo));
        sub->tables.push_back(&sub->from[0]->table);
        for (ExprPtr* c : deB) sub->where = Y(std::move(sub->where), std::move(*c));
        auto en = Nueva(ExprKind::InSelect);
        en->type = ColType::Flag;
        en->op = "conjunto";  // written by Dialect::KeySet
        en->args.push_back(CopiaDeColumna(*claveA));
        en->sub = std::move(sub);

        // What stays of the WHERE, in its order, then the test of the keys.
        ExprPtr resto;
        for (ExprPtr* c : condiciones)
            if (*c && c != union_) resto = Y(std::move(resto), std::move(*c));
        s.where = Y(std::move(resto), std::move(en));
        s.from.erase(s.from.begin() + cual);
        s.tables.clear();
        s.tables.push_back(&s.from[0]->table);
        return true;
    }
    return false;
}

class Resolver {
public:
    Resolver(const std::string& sql, const Catalog& cat, Translation& t) : sql_(sql), cat_(cat), t_(t) {}

    void ResolveStatement(Statement& st) {
        switch (st.kind) {
            case Statement::Kind::Select: {
                t_.returnsRows = true;
                ResolveSelect(*st.select, nullptr, true);
                break;
            }
            case Statement::Kind::Insert: ResolveInsert(*st.insert); break;
            case Statement::Kind::Update: ResolveUpdate(*st.update); break;
            case Statement::Kind::Delete: {
                auto& d = *st.del;
                BindTable(d.table);
                Scope s;
                s.tables.push_back(&d.table);
                Resolve(d.where.get(), s);
                break;
            }
        }
    }

private:
    [[noreturn]] void Fail(const std::string& code, const std::string& msg) { throw DbError(code, msg, sql_); }

    void BindTable(TableRef& r) {
        r.info = cat_.Find(r.name);
        if (!r.info) throw TablaDesconocida{r.name};
    }

    void ResolveSelect(Select& s, const Scope* outer, bool top) {
        for (TableRef* r : s.tables) BindTable(*r);
        Scope scope;
        scope.tables = s.tables;
        scope.outer = outer;
        // Expand * and t.* into the columns of the tables.
        std::vector<SelectItem> items;
        for (auto& it : s.items) {
            if (!it.star) {
                items.push_back(std::move(it));
                continue;
            }
            bool found = false;
            for (TableRef* r : s.tables) {
                if (!it.starQualifier.empty() && !IgualesSinCaso(it.starQualifier, r->Visible()) &&
                    !IgualesSinCaso(it.starQualifier, r->name))
                    continue;
                found = true;
                for (const ColumnInfo& c : r->info->columns) {
                    SelectItem ni;
                    ni.expr = std::make_unique<Expr>();
                    ni.expr->kind = ExprKind::Column;
                    ni.expr->qualifier = r->Visible();
                    ni.expr->name = c.name;
                    items.push_back(std::move(ni));
                }
            }
            if (!found) Fail("tabla", "No se encuentra la tabla '" + it.starQualifier + "'.");
        }
        s.items = std::move(items);
        if (s.items.empty()) Fail("sintaxis", "La consulta no tiene columnas.");

        for (auto& f : s.from) ResolveJoin(*f, scope);
        for (auto& it : s.items) Resolve(it.expr.get(), scope);
        Resolve(s.where.get(), scope);
        for (auto& g : s.groupBy) Resolve(g.get(), scope);
        scope.select = &s;
        Resolve(s.having.get(), scope);
        for (auto& o : s.orderBy) {
            // ORDER BY 2: a column by its place, written as it stands.
            if (o.expr->kind == ExprKind::Literal && o.expr->litKind == LitKind::Number) {
                t_.slots[static_cast<std::size_t>(o.expr->slot)].inlineInt = true;
                continue;
            }
            Resolve(o.expr.get(), scope);
        }
        if (s.topSlot >= 0) t_.slots[static_cast<std::size_t>(s.topSlot)].inlineInt = true;

        JoinAConjuntoDeClaves(s);
        if (QuitarUnionInnecesaria(s) && top && s.topSlot < 0 && s.orderBy.empty() && s.groupBy.empty() && !s.having) {
            s.distinctFoldable = true;
            for (const auto& it : s.items)
                if (it.expr->kind != ExprKind::Column) s.distinctFoldable = false;
        }
        if (top) {
            NombrarColumnas(s);
            bool single = s.from.size() == 1 && s.from[0]->isTable && !s.distinct && s.groupBy.empty() && !s.having;
            for (auto& it : s.items)
                if (it.expr->kind == ExprKind::Func && IsAggregate(it.expr->op)) single = false;
            if (single) t_.baseTable = s.tables[0]->info;
        }
    }

    // The names of the visible columns. An alias names its column; a column
    // without one is known by its own name; any other value is Expr1000,
    // Expr1001... in order. A column whose name an earlier one already took
    // (select * over a join, or one column asked for twice) is known by its
    // table, "tabla.Codigo", the table as the statement calls it; if that is
    // taken too, it gets the next ExprNNNN. Names compare without regard to case.
    void NombrarColumnas(const Select& s) {
        int expr = 1000;
        std::unordered_set<std::string> usados;
        usados.reserve(s.items.size() * 2);
        t_.names.reserve(s.items.size());
        auto siguienteExpr = [&] {
            std::string n;
            do n = "Expr" + std::to_string(expr++);
            while (usados.count(Minusculas(n)));
            return n;
        };
        for (const auto& it : s.items) {
            bool columna = it.expr->kind == ExprKind::Column && it.expr->column;
            std::string name = !it.alias.empty() ? it.alias : columna ? it.expr->column->name : siguienteExpr();
            if (it.alias.empty() && columna && usados.count(Minusculas(name))) {
                const std::string& tabla = it.expr->qualifier.empty() ? it.expr->tableName : it.expr->qualifier;
                name = tabla + "." + name;
                if (usados.count(Minusculas(name))) name = siguienteExpr();
            }
            usados.insert(Minusculas(name));
            t_.names.push_back(std::move(name));
            t_.types.push_back(it.expr->type);
        }
    }

    void ResolveJoin(JoinNode& n, const Scope& scope) {
        if (n.isTable) return;
        ResolveJoin(*n.left, scope);
        ResolveJoin(*n.right, scope);
        Resolve(n.on.get(), scope);
    }

    void ResolveInsert(Insert& ins) {
        BindTable(ins.table);
        const TableInfo& ti = *ins.table.info;
        std::vector<const ColumnInfo*> targets;
        if (ins.columns.empty()) {
            // Positional: the table's columns in their order.
            for (const ColumnInfo& c : ti.columns) {
                ins.columns.push_back(c.name);
                targets.push_back(&c);
            }
            std::size_t n = ins.select ? ins.select->items.size() : ins.values.size();
            if (n > ins.columns.size()) Fail("columnas", "El número de valores de la consulta no coincide con el de campos de destino.");
            if (!ins.select) {
                ins.columns.resize(n);
                targets.resize(n);
            }
        } else {
            for (auto& c : ins.columns) {
                const ColumnInfo* ci = ti.Find(c);
                if (!ci) Fail("columna", "No se encuentra el campo '" + c + "' en la tabla '" + ti.name + "'.");
                c = ci->name;
                targets.push_back(ci);
            }
        }
        Scope empty;
        if (ins.select) {
            ResolveSelect(*ins.select, nullptr, false);
            if (ins.select->items.size() != ins.columns.size() && ins.columns.size() != ti.columns.size())
                Fail("columnas", "El número de valores de la consulta no coincide con el de campos de destino.");
            ins.columns.resize(ins.select->items.size());
            return;
        }
        if (ins.values.size() != ins.columns.size())
            Fail("columnas", "El número de valores de la consulta no coincide con el de campos de destino.");
        for (std::size_t i = 0; i < ins.values.size(); ++i) {
            Resolve(ins.values[i].get(), empty);
            Target(ins.values[i].get(), targets[i]->type);
        }
    }

    void ResolveUpdate(Update& up) {
        BindTable(up.table);
        Scope s;
        s.tables.push_back(&up.table);
        for (auto& a : up.sets) {
            a.info = up.table.info->Find(a.column);
            if (!a.info) Fail("columna", "No se encuentra el campo '" + a.column + "' en la tabla '" + up.table.info->name + "'.");
            Resolve(a.value.get(), s);
            Target(a.value.get(), a.info->type);
        }
        Resolve(up.where.get(), s);
    }

    const ColumnInfo* FindColumn(Expr& e, const Scope& scope) {
        for (const Scope* sc = &scope; sc; sc = sc->outer) {
            for (TableRef* r : sc->tables) {
                if (!e.qualifier.empty() && !IgualesSinCaso(e.qualifier, r->Visible()) && !IgualesSinCaso(e.qualifier, r->name))
                    continue;
                if (const ColumnInfo* c = r->info->Find(e.name)) {
                    e.tableName = r->Visible();
                    return c;
                }
            }
        }
        return nullptr;
    }

    void Resolve(Expr* e, const Scope& scope) {
        if (!e) return;
        if (e->sub) {
            ResolveSelect(*e->sub, &scope, false);
            if (e->sub->items.empty()) Fail("sintaxis", "Subconsulta sin columnas.");
        }
        for (auto& a : e->args) Resolve(a.get(), scope);
        switch (e->kind) {
            case ExprKind::Column: {
                e->column = FindColumn(*e, scope);
                if (e->column) {
                    e->type = e->column->type;
                    break;
                }
                // An alias of the select list (ORDER BY, HAVING).
                for (const Scope* sc = &scope; sc; sc = sc->outer) {
                    if (!sc->select || !e->qualifier.empty()) continue;
                    for (auto& it : sc->select->items) {
                        if (IgualesSinCaso(it.alias, e->name)) {
                            e->op = "alias";
                            e->type = it.expr->type;
                            return;
                        }
                    }
                }
                Fail("parametros", "Pocos parámetros. Se esperaba 1. ('" + (e->qualifier.empty() ? "" : e->qualifier + ".") +
                                       e->name + "' no es un campo de las tablas de la consulta)");
            }
            case ExprKind::Literal:
                e->type = e->litKind == LitKind::Number ? ColType::Double
                          : e->litKind == LitKind::String ? ColType::Text
                                                          : ColType::Date;
                break;
            case ExprKind::Bool: e->type = ColType::Flag; break;
            case ExprKind::Null:
            case ExprKind::Star: e->type = ColType::Unknown; break;
            case ExprKind::Unary: e->type = e->op == "not" ? ColType::Flag : e->args[0]->type; break;
            case ExprKind::Binary: ResolveBinary(*e); break;
            case ExprKind::Like:
                Target(e->args[1].get(), ColType::Text);
                if (e->args[0]->type == ColType::Text && e->args[1]->kind == ExprKind::Literal &&
                    e->args[1]->litKind == LitKind::String) {
                    int idx = static_cast<int>(t_.likeSlots.size());
                    if (idx < 30) {
                        t_.likeIndex[e] = idx;
                        t_.likeSlots.push_back(e->args[1]->slot);
                    }
                }
                e->type = ColType::Flag;
                break;
            case ExprKind::Between:
                Target(e->args[1].get(), e->args[0]->type);
                Target(e->args[2].get(), e->args[0]->type);
                e->type = ColType::Flag;
                break;
            case ExprKind::InList:
                for (std::size_t i = 1; i < e->args.size(); ++i) Target(e->args[i].get(), e->args[0]->type);
                e->type = ColType::Flag;
                break;
            case ExprKind::InSelect:
            case ExprKind::IsNull: e->type = ColType::Flag; break;
            case ExprKind::Subquery: e->type = e->sub->items[0].expr->type; break;
            case ExprKind::Func: ResolveFunc(*e); break;
        }
    }

    void ResolveBinary(Expr& e) {
        Expr& a = *e.args[0];
        Expr& b = *e.args[1];
        const std::string& op = e.op;
        if (op == "=" || op == "<>" || op == "<" || op == ">" || op == "<=" || op == ">=") {
            // "= null" and "<> null" are tests for NULL, as Jet has them.
            Target(&b, a.type);
            Target(&a, b.type);
            e.type = ColType::Flag;
        } else if (op == "and" || op == "or") {
            e.type = ColType::Flag;
        } else if (op == "&") {
            e.type = ColType::Text;
        } else if (op == "/") {
            e.type = ColType::Double;
        } else if (op == "\\" || op == "mod") {
            e.type = ColType::Integer;
        } else {  // + - *
            if (op == "+" && a.type == ColType::Text && b.type == ColType::Text) {
                e.op = "+text";
                e.type = ColType::Text;
            } else if ((a.type == ColType::Integer || a.type == ColType::Flag) &&
                       (b.type == ColType::Integer || b.type == ColType::Flag)) {
                e.type = ColType::Integer;
            } else if ((a.type == ColType::Date || b.type == ColType::Date) && op != "*") {
                e.type = ColType::Date;
            } else {
                e.type = ColType::Double;
            }
        }
    }

    void ResolveFunc(Expr& e) {
        const std::string& f = e.op;
        ColType arg = e.args.empty() ? ColType::Unknown : e.args[0]->type;
        if (f == "count") e.type = ColType::Integer;
        else if (f == "sum") e.type = (arg == ColType::Integer || arg == ColType::Flag) ? ColType::Integer : ColType::Double;
        else if (f == "max" || f == "min" || f == "abs" || f == "first" || f == "last") e.type = arg;
        else if (f == "avg") e.type = ColType::Double;
        else if (f == "ucase" || f == "lcase" || f == "trim" || f == "ltrim" || f == "rtrim") e.type = ColType::Text;
        else if (f == "len") e.type = ColType::Integer;
        else if (f == "nz") e.type = arg;
        else Fail("funcion", "Función '" + f + "' no definida en la expresión.");
        if ((f == "count" || f == "sum" || f == "max" || f == "min" || f == "avg") && e.args.size() != 1)
            Fail("sintaxis", "Número de argumentos incorrecto en '" + f + "'.");
    }

    // A literal that meets a column takes the column's type: '12,5' against a
    // number column is the number 12,5; '15/11/2026' against a date is a date.
    void Target(Expr* e, ColType type) {
        if (!e || type == ColType::Unknown) return;
        if (e->kind == ExprKind::Unary && (e->op == "-" || e->op == "+") && e->args[0]->kind == ExprKind::Literal)
            e = e->args[0].get();
        if (e->kind != ExprKind::Literal) return;
        SlotPlan& p = t_.slots[static_cast<std::size_t>(e->slot)];
        if (p.target == ColType::Unknown) p.target = type;
        if (e->litKind == LitKind::String && type != ColType::Text) e->type = type;
    }

    const std::string& sql_;
    const Catalog& cat_;
    Translation& t_;
};

// ---------------------------------------------------------------- writing

class Writer {
public:
    Writer(const Translation& t, const Dialect& d, unsigned mask) : t_(t), d_(d), mask_(mask) {}

    Rendered Finish() {
        Flush();
        return std::move(out_);
    }

    void Statement(const ast::Statement& st, bool writable) {
        switch (st.kind) {
            case Statement::Kind::Select: WriteSelect(*st.select, writable); break;
            case Statement::Kind::Insert: WriteInsert(*st.insert); break;
            case Statement::Kind::Update: WriteUpdate(*st.update); break;
            case Statement::Kind::Delete: {
                const auto& del = *st.del;
                Put("DELETE FROM " + d_.QuoteIdent(del.table.info->name));
                if (!del.table.alias.empty()) Put(" AS " + d_.QuoteIdent(del.table.alias));
                if (del.where) {
                    Put(" WHERE ");
                    Cond(*del.where);
                }
                break;
            }
        }
    }

private:
    void Put(const std::string& s) { cur_ += s; }
    void Flush() {
        if (!cur_.empty()) out_.chunks.push_back(Chunk{std::move(cur_), -1});
        cur_.clear();
    }
    void Slot(int slot) {
        Flush();
        out_.chunks.push_back(Chunk{"", slot});
    }

    std::string Sub(const ast::Expr& e) {
        // Writes into a side buffer: used where the dialect needs the text of an operand.
        Flush();
        Rendered saved = std::move(out_);
        out_ = Rendered{};
        ValueExpr(e);
        Flush();
        Rendered mine = std::move(out_);
        out_ = std::move(saved);
        // Literals inside keep their places: they are re-emitted by Emit().
        pending_.push_back(std::move(mine));
        return "\x03" + std::to_string(pending_.size() - 1) + "\x03";
    }

    // A subquery into a side buffer, as Sub() does for an expression.
    std::string SubSelect(const Select& s) {
        Flush();
        Rendered saved = std::move(out_);
        out_ = Rendered{};
        WriteSelect(s, false);
        Flush();
        Rendered mine = std::move(out_);
        out_ = std::move(saved);
        pending_.push_back(std::move(mine));
        return "\x03" + std::to_string(pending_.size() - 1) + "\x03";
    }

    // Puts a dialect's text that holds markers of Sub() operands.
    void Emit(const std::string& text) {
        std::size_t i = 0;
        while (i < text.size()) {
            std::size_t m = text.find('\x03', i);
            if (m == std::string::npos) {
                Put(text.substr(i));
                break;
            }
            Put(text.substr(i, m - i));
            std::size_t end = text.find('\x03', m + 1);
            std::size_t idx = std::stoul(text.substr(m + 1, end - m - 1));
            Flush();
            for (auto& c : pending_[idx].chunks) out_.chunks.push_back(c);
            i = end + 1;
        }
    }

    void WriteSelect(const Select& s, bool writable) {
        // Only its own WHERE is read as a report's.
        struct Guarda {
            bool& flag;
            bool antes;
            ~Guarda() { flag = antes; }
        } guarda{informe_, informe_};
        informe_ = false;
        Put("SELECT ");
        if (s.distinct && s.distinctFoldable && d_.FoldsDistinctLate()) out_.foldRows = true;
        else if (s.distinct) Put("DISTINCT ");
        bool first = true;
        for (const auto& it : s.items) {
            if (!first) Put(", ");
            first = false;
            if (&s == conjunto_) {
                Emit(d_.KeySetColumn(Sub(*it.expr)));
                continue;
            }
            ValueExpr(*it.expr);
            if (!it.alias.empty()) Put(" AS " + d_.QuoteIdent(it.alias));
        }
        if (writable && t_.baseTable) {
            const TableRef& r = *s.tables[0];
            std::string q = d_.QuoteIdent(r.Visible()) + ".";
            Put(", " + q + d_.RowKey());
            for (const ColumnInfo& c : r.info->columns) Put(", " + q + d_.QuoteIdent(c.name));
        }
        if (!s.from.empty()) {
            Put(" FROM ");
            for (std::size_t i = 0; i < s.from.size(); ++i) {
                if (i) Put(", ");
                Join(*s.from[i]);
            }
        }
        if (s.where) {
            Put(" WHERE ");
            informe_ = !s.groupBy.empty();
            Cond(*s.where);
            informe_ = false;
        }
        if (!s.groupBy.empty()) {
            Put(" GROUP BY ");
            for (std::size_t i = 0; i < s.groupBy.size(); ++i) {
                if (i) Put(", ");
                Ex(*s.groupBy[i]);
            }
        }
        if (s.having) {
            Put(" HAVING ");
            Cond(*s.having);
        }
        if (!s.orderBy.empty()) {
            Put(" ORDER BY ");
            for (std::size_t i = 0; i < s.orderBy.size(); ++i) {
                if (i) Put(", ");
                const auto& o = s.orderBy[i];
                if (o.expr->type == ColType::Text && o.expr->kind != ExprKind::Literal) Emit(d_.TextCollate(Sub(*o.expr)));
                else Ex(*o.expr);
                // NULL sorts below every value, as in Jet: first going up, last
                // going down. Said outright, since engines differ on it.
                Put(o.desc ? " DESC NULLS LAST" : " NULLS FIRST");
            }
        }
        if (s.topSlot >= 0) {
            Put(" LIMIT ");
            Slot(s.topSlot);
        }
    }

    void Join(const JoinNode& n) {
        if (n.isTable) {
            Put(d_.QuoteIdent(n.table.info->name));
            if (!n.table.alias.empty()) Put(" AS " + d_.QuoteIdent(n.table.alias));
            return;
        }
        Put("(");
        Join(*n.left);
        Put(n.joinType == "left" ? " LEFT JOIN " : n.joinType == "right" ? " RIGHT JOIN " : " INNER JOIN ");
        Join(*n.right);
        Put(" ON ");
        Cond(*n.on);
        Put(")");
    }

    void WriteInsert(const Insert& ins) {
        Put("INSERT INTO " + d_.QuoteIdent(ins.table.info->name) + " (");
        for (std::size_t i = 0; i < ins.columns.size(); ++i) {
            if (i) Put(", ");
            Put(d_.QuoteIdent(ins.columns[i]));
        }
        Put(") ");
        if (ins.select) {
            WriteSelect(*ins.select, false);
            return;
        }
        Put("VALUES (");
        for (std::size_t i = 0; i < ins.values.size(); ++i) {
            if (i) Put(", ");
            ValueExpr(*ins.values[i]);
        }
        Put(")");
    }

    void WriteUpdate(const Update& up) {
        Put("UPDATE " + d_.QuoteIdent(up.table.info->name));
        if (!up.table.alias.empty()) Put(" AS " + d_.QuoteIdent(up.table.alias));
        Put(" SET ");
        for (std::size_t i = 0; i < up.sets.size(); ++i) {
            if (i) Put(", ");
            Put(d_.QuoteIdent(up.sets[i].info->name) + " = ");
            ValueExpr(*up.sets[i].value);
        }
        if (up.where) {
            Put(" WHERE ");
            Cond(*up.where);
        }
    }

    // A truth value where the engine wants a condition.
    void Cond(const ast::Expr& e) {
        if (e.kind == ExprKind::Bool) {
            Put(e.boolValue ? "(1 = 1)" : "(1 = 0)");
        } else if (IsBoolOp(e)) {
            Ex(e);
        } else {
            Put("(");
            Ex(e);
            Put(" <> 0)");
        }
    }

    // A value where the engine wants a value: truth values become -1 and 0.
    void ValueExpr(const ast::Expr& e) {
        if (IsBoolOp(e)) {
            Put("(CASE WHEN ");
            Ex(e);
            Put(" THEN -1 WHEN NOT (");
            Ex(e);
            Put(") THEN 0 END)");
        } else {
            Ex(e);
        }
    }

    static bool IsNullExpr(const ast::Expr& e) { return e.kind == ExprKind::Null; }

    void Ex(const ast::Expr& e) {
        switch (e.kind) {
            case ExprKind::Column:
                if (e.op == "alias") {
                    Put(d_.QuoteIdent(e.name));
                } else {
                    Put(d_.QuoteIdent(e.tableName) + "." + d_.QuoteIdent(e.column->name));
                }
                break;
            case ExprKind::Literal: Slot(e.slot); break;
            case ExprKind::Bool: Put(e.boolValue ? "-1" : "0"); break;
            case ExprKind::Null: Put("NULL"); break;
            case ExprKind::Star: Put("*"); break;
            case ExprKind::Unary:
                if (e.op == "not") {
                    Put("(NOT ");
                    Cond(*e.args[0]);
                    Put(")");
                } else {
                    Put("(" + e.op);
                    Ex(*e.args[0]);
                    Put(")");
                }
                break;
            case ExprKind::Binary: Binary(e); break;
            case ExprKind::Like: {
                auto it = t_.likeIndex.find(&e);
                bool plain = it != t_.likeIndex.end() && !(mask_ & (1u << it->second));
                Put(e.negated ? "(NOT " : "(");
                if (plain) {
                    Ex(*e.args[0]);
                    Put(" = ");
                    Ex(*e.args[1]);
                } else {
                    Emit(d_.Like(Sub(*e.args[0]), Sub(*e.args[1])));
                }
                Put(")");
                break;
            }
            case ExprKind::Between:
                Put("(");
                Ex(*e.args[0]);
                Put(e.negated ? " NOT BETWEEN " : " BETWEEN ");
                Ex(*e.args[1]);
                Put(" AND ");
                Ex(*e.args[2]);
                Put(")");
                break;
            case ExprKind::InList:
                Put("(");
                Ex(*e.args[0]);
                Put(e.negated ? " NOT IN (" : " IN (");
                for (std::size_t i = 1; i < e.args.size(); ++i) {
                    if (i > 1) Put(", ");
                    Ex(*e.args[i]);
                }
                Put("))");
                break;
            case ExprKind::InSelect:
                if (e.op == "conjunto") {
                    Put("(");
                    conjunto_ = e.sub.get();
                    Emit(d_.KeySet(Sub(*e.args[0]), SubSelect(*e.sub)));
                    Put(")");
                    break;
                }
                if (e.op == "clave") {
                    Put("(");
                    Emit(d_.KeyLookup(Sub(*e.args[0]), SubSelect(*e.sub)));
                    Put(")");
                    break;
                }
                Put("(");
                Ex(*e.args[0]);
                Put(e.negated ? " NOT IN (" : " IN (");
                WriteSelect(*e.sub, false);
                Put("))");
                break;
            case ExprKind::IsNull:
                Put("(");
                Ex(*e.args[0]);
                Put(e.negated ? " IS NOT NULL)" : " IS NULL)");
                break;
            case ExprKind::Subquery:
                Put("(");
                WriteSelect(*e.sub, false);
                Put(")");
                break;
            case ExprKind::Func: Func(e); break;
        }
    }

    void Binary(const ast::Expr& e) {
        const ast::Expr& a = *e.args[0];
        const ast::Expr& b = *e.args[1];
        const std::string& op = e.op;
        if ((op == "=" || op == "<>") && (IsNullExpr(a) || IsNullExpr(b))) {
            const ast::Expr& other = IsNullExpr(a) ? b : a;
            Put("(");
            Ex(other);
            Put(op == "=" ? " IS NULL)" : " IS NOT NULL)");
            return;
        }
        if (op == "and" || op == "or") {
            Put("(");
            Cond(a);
            Put(op == "and" ? " AND " : " OR ");
            Cond(b);
            Put(")");
            return;
        }
        if (op == "&") {
            Put("(");
            Emit(d_.Concat(Sub(a), a.type, Sub(b), b.type));
            Put(")");
            return;
        }
        if (op == "+text") {
            Put("(");
            Ex(a);
            Put(" || ");
            Ex(b);
            Put(")");
            return;
        }
        if (op == "/") {
            Put("(");
            Emit(d_.Divide(Sub(a), Sub(b)));
            Put(")");
            return;
        }
        if (op == "=" && informe_ && TextoContraValor(a, b)) {
            Put("(");
            Emit(d_.TextEqualsInScan(Sub(a), Sub(b)));
            Put(")");
            return;
        }
        bool compare = op == "=" || op == "<>" || op == "<" || op == ">" || op == "<=" || op == ">=";
        Put("(");
        if (compare && a.type == ColType::Text && b.type == ColType::Text && a.kind != ExprKind::Column &&
            b.kind != ExprKind::Column) {
            Emit(d_.TextCollate(Sub(a)));
        } else {
            Ex(a);
        }
        if (op == "\\") Put(" / ");
        else if (op == "mod") Put(" % ");
        else Put(" " + op + " ");
        Ex(b);
        Put(")");
    }

    // A text column against a value of the statement.
    static bool TextoContraValor(const ast::Expr& a, const ast::Expr& b) {
        auto columna = [](const ast::Expr& e) { return e.kind == ExprKind::Column && e.op != "alias" && e.type == ColType::Text; };
        auto valor = [](const ast::Expr& e) { return e.kind == ExprKind::Literal && e.type == ColType::Text; };
        return (columna(a) && valor(b)) || (valor(a) && columna(b));
    }

    void Func(const ast::Expr& e) {
        static const std::map<std::string, std::string> kNames = {
            {"sum", "SUM"},     {"count", "COUNT"}, {"max", "MAX"},   {"min", "MIN"},     {"avg", "AVG"},
            {"abs", "ABS"},     {"ucase", "UPPER"}, {"lcase", "LOWER"}, {"trim", "TRIM"}, {"ltrim", "LTRIM"},
            {"rtrim", "RTRIM"}, {"len", "LENGTH"},  {"nz", "COALESCE"}, {"first", "MIN"}, {"last", "MAX"}};
        auto it = kNames.find(e.op);
        if (it == kNames.end()) {
            // The resolver lets no other function through.
            throw DbError("funcion", "Función '" + e.op + "' no definida en la expresión.", "");
        }
        Put(it->second + "(");
        if (e.distinctArg) Put("DISTINCT ");
        for (std::size_t i = 0; i < e.args.size(); ++i) {
            if (i) Put(", ");
            Ex(*e.args[i]);
        }
        if (e.op == "nz" && e.args.size() == 1) Put(e.args[0]->type == ColType::Text ? ", ''" : ", 0");
        Put(")");
    }

    const Translation& t_;
    const Dialect& d_;
    unsigned mask_;
    Rendered out_;
    std::string cur_;
    std::vector<Rendered> pending_;
    const Select* conjunto_ = nullptr;  // the subquery of a key set: its column goes through KeySetColumn
    bool informe_ = false;              // writing the WHERE of a grouped statement, which reads many rows
};

}  // namespace

std::shared_ptr<Translation> Translate(const std::string& sql, const Lexed& lexed, const Catalog& catalog) {
    auto t = std::make_shared<Translation>();
    t->stmt = Parse(sql, lexed);
    t->slots.resize(lexed.literals.size());
    Resolver r(sql, catalog, *t);
    r.ResolveStatement(t->stmt);
    return t;
}

Rendered Render(const Translation& t, const Dialect& d, unsigned likeMask, bool writable) {
    Writer w(t, d, likeMask);
    w.Statement(t.stmt, writable);
    return w.Finish();
}

}  // namespace tpv::datos
