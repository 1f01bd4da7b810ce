#include "core/datos/jet_parser.hpp"

#include <algorithm>

#include "core/runtime/error.hpp"

namespace tpv::datos {

using namespace ast;

namespace {

// How deep a statement may nest: parentheses, subqueries, NOT and signs, and
// the chains of AND, OR and operators, which make trees as deep as they are
// long. Every walk over the tree (types, writing, teardown) recurses, so a
// deeper statement is refused here, before anything walks it.
constexpr int kProfundidadMaxima = 200;

class Parser {
public:
    Parser(const std::string& sql, const Lexed& lx) : sql_(sql), t_(lx.tokens) {}

    Statement ParseStatement() {
        Statement st;
        if (IsKw("select")) {
            st.kind = Statement::Kind::Select;
            st.select = ParseSelect();
        } else if (IsKw("insert")) {
            st.kind = Statement::Kind::Insert;
            st.insert = ParseInsert();
        } else if (IsKw("update")) {
            st.kind = Statement::Kind::Update;
            st.update = ParseUpdate();
        } else if (IsKw("delete")) {
            st.kind = Statement::Kind::Delete;
            st.del = ParseDelete();
        } else {
            Fail("se esperaba SELECT, INSERT, UPDATE o DELETE");
        }
        if (Cur().kind != Tok::End) Fail("sobra texto después de '" + Prev().text + "'");
        return st;
    }

private:
    const Token& Cur() const { return t_[i_]; }
    const Token& Prev() const { return t_[i_ > 0 ? i_ - 1 : 0]; }
    const Token& Peek(std::size_t k = 1) const { return t_[i_ + k < t_.size() ? i_ + k : t_.size() - 1]; }
    bool IsKw(const char* w) const { return Cur().kind == Tok::Keyword && Cur().text == w; }
    bool IsSym(const char* s) const { return Cur().kind == Tok::Symbol && Cur().text == s; }
    bool AcceptKw(const char* w) {
        if (!IsKw(w)) return false;
        ++i_;
        return true;
    }
    bool AcceptSym(const char* s) {
        if (!IsSym(s)) return false;
        ++i_;
        return true;
    }
    void ExpectKw(const char* w) {
        if (!AcceptKw(w)) Fail(std::string("se esperaba ") + w);
    }
    void ExpectSym(const char* s) {
        if (!AcceptSym(s)) Fail(std::string("se esperaba '") + s + "'");
    }
    // Counts the reader's own recursion: nesting of parentheses, subqueries,
    // NOT and signs.
    struct Nivel {
        explicit Nivel(Parser& p) : p_(p) {
            if (++p_.nivel_ > kProfundidadMaxima) p_.Complejo();
        }
        ~Nivel() { --p_.nivel_; }
        Parser& p_;
    };

    [[noreturn]] void Complejo() const { throw DbError("complejidad", "La consulta es demasiado compleja.", sql_); }

    // Gives a finished node its depth (one more than its deepest part) and
    // refuses a tree grown too deep.
    ExprPtr Cerrar(ExprPtr e) {
        int d = e->sub ? subProfundidad_ : 0;
        for (const auto& a : e->args) d = std::max(d, a->depth);
        e->depth = d + 1;
        if (e->depth > kProfundidadMaxima) Complejo();
        return e;
    }

    [[noreturn]] void Fail(const std::string& what) const {
        std::string near = Cur().kind == Tok::End ? "el final" : "'" + Cur().text + "'";
        throw DbError("sintaxis", "Error de sintaxis en la instrucción SQL (" + what + ", cerca de " + near + ").", sql_);
    }
    std::string ExpectIdent(const char* what) {
        if (Cur().kind != Tok::Ident) Fail(std::string("se esperaba ") + what);
        return t_[i_++].text;
    }

    // A subquery counts as deep as its deepest expression or join.
    std::unique_ptr<Select> ParseSelect() {
        Nivel nivel(*this);
        int fuera = profundidadSelect_;
        profundidadSelect_ = 0;
        auto s = ParseSelectBody();
        subProfundidad_ = profundidadSelect_ + 1;
        profundidadSelect_ = std::max(fuera, subProfundidad_);
        if (subProfundidad_ > kProfundidadMaxima) Complejo();
        return s;
    }

    std::unique_ptr<Select> ParseSelectBody() {
        ExpectKw("select");
        auto s = std::make_unique<Select>();
        if (AcceptKw("distinct") || AcceptKw("distinctrow")) s->distinct = true;
        if (AcceptKw("top")) {
            if (Cur().kind != Tok::Number) Fail("se esperaba un número tras TOP");
            s->topSlot = t_[i_++].slot;
        }
        // Jet allows "distinct" again before the first column: "distinct(col) as x".
        if (AcceptKw("distinct")) s->distinct = true;
        do {
            SelectItem item;
            if (IsSym("*")) {
                ++i_;
                item.star = true;
            } else if (Cur().kind == Tok::Ident && Peek().kind == Tok::Symbol && Peek().text == "." &&
                       Peek(2).kind == Tok::Symbol && Peek(2).text == "*") {
                item.star = true;
                item.starQualifier = t_[i_].text;
                i_ += 3;
            } else {
                item.expr = ParseExpr();
                if (AcceptKw("as")) item.alias = ExpectIdent("un alias");
                else if (Cur().kind == Tok::Ident) item.alias = t_[i_++].text;
            }
            s->items.push_back(std::move(item));
        } while (AcceptSym(","));
        if (AcceptKw("from")) {
            do {
                s->from.push_back(ParseJoin(*s));
            } while (AcceptSym(","));
        }
        if (AcceptKw("where")) s->where = ParseExpr();
        if (AcceptKw("group")) {
            ExpectKw("by");
            do {
                s->groupBy.push_back(ParseExpr());
            } while (AcceptSym(","));
        }
        if (AcceptKw("having")) s->having = ParseExpr();
        if (AcceptKw("order")) {
            ExpectKw("by");
            do {
                OrderItem o;
                o.expr = ParseExpr();
                if (AcceptKw("desc")) o.desc = true;
                else AcceptKw("asc");
                s->orderBy.push_back(std::move(o));
            } while (AcceptSym(","));
        }
        return s;
    }

    TableRef ParseTableName() {
        TableRef r;
        r.name = ExpectIdent("el nombre de una tabla");
        if (AcceptKw("as")) r.alias = ExpectIdent("un alias");
        else if (Cur().kind == Tok::Ident) r.alias = t_[i_++].text;
        return r;
    }

    std::unique_ptr<JoinNode> ParseJoinPrimary(Select& s) {
        Nivel nivel(*this);
        if (AcceptSym("(")) {
            auto n = ParseJoin(s);
            ExpectSym(")");
            return n;
        }
        auto n = std::make_unique<JoinNode>();
        n->isTable = true;
        n->table = ParseTableName();
        return n;
    }

    std::unique_ptr<JoinNode> ParseJoin(Select& s) {
        auto left = ParseJoinPrimary(s);
        for (;;) {
            std::string type;
            if (AcceptKw("inner")) type = "inner";
            else if (AcceptKw("left")) type = "left";
            else if (AcceptKw("right")) type = "right";
            else if (IsKw("join")) type = "inner";
            else break;
            if (type != "inner") AcceptKw("outer");
            ExpectKw("join");
            auto right = ParseJoinPrimary(s);
            ExpectKw("on");
            auto n = std::make_unique<JoinNode>();
            n->isTable = false;
            n->joinType = type;
            n->left = std::move(left);
            n->right = std::move(right);
            n->on = ParseExpr();
            n->depth = std::max({n->left->depth, n->right->depth, n->on->depth}) + 1;
            if (n->depth > kProfundidadMaxima) Complejo();
            Anotar(n->depth);
            left = std::move(n);
        }
        return left;
    }

    std::unique_ptr<Insert> ParseInsert() {
        ExpectKw("insert");
        ExpectKw("into");
        auto ins = std::make_unique<Insert>();
        ins->table.name = ExpectIdent("el nombre de una tabla");
        if (IsSym("(") && Peek().kind == Tok::Ident) {
            ++i_;
            do {
                ins->columns.push_back(ExpectIdent("el nombre de una columna"));
            } while (AcceptSym(","));
            ExpectSym(")");
        }
        if (AcceptKw("values")) {
            ExpectSym("(");
            do {
                ins->values.push_back(ParseExpr());
            } while (AcceptSym(","));
            ExpectSym(")");
        } else if (IsKw("select")) {
            ins->select = ParseSelect();
        } else {
            Fail("se esperaba VALUES o SELECT");
        }
        return ins;
    }

    std::unique_ptr<Update> ParseUpdate() {
        ExpectKw("update");
        auto up = std::make_unique<Update>();
        up->table = ParseTableName();
        ExpectKw("set");
        do {
            Assignment a;
            a.column = ExpectIdent("el nombre de una columna");
            if (AcceptSym(".")) a.column = ExpectIdent("el nombre de una columna");
            ExpectSym("=");
            a.value = ParseExpr();
            up->sets.push_back(std::move(a));
        } while (AcceptSym(","));
        if (AcceptKw("where")) up->where = ParseExpr();
        return up;
    }

    std::unique_ptr<Delete> ParseDelete() {
        ExpectKw("delete");
        if (AcceptSym("*")) {
        } else if (Cur().kind == Tok::Ident && Peek().kind == Tok::Symbol && Peek().text == ".") {
            if (Peek(2).kind != Tok::Symbol || Peek(2).text != "*") {
                ++i_;
                Fail("se esperaba '*'");
            }
            i_ += 3;  // delete t.* from t
        }
        ExpectKw("from");
        auto d = std::make_unique<Delete>();
        d->table = ParseTableName();
        if (AcceptKw("where")) d->where = ParseExpr();
        return d;
    }

    static ExprPtr Make(ExprKind k) {
        auto e = std::make_unique<Expr>();
        e->kind = k;
        return e;
    }
    ExprPtr Binary(std::string op, ExprPtr a, ExprPtr b) {
        auto e = Make(ExprKind::Binary);
        e->op = std::move(op);
        e->args.push_back(std::move(a));
        e->args.push_back(std::move(b));
        return Hecho(std::move(e));
    }
    // Cerrar, and the select being read learns how deep it goes.
    ExprPtr Hecho(ExprPtr e) {
        e = Cerrar(std::move(e));
        Anotar(e->depth);
        return e;
    }
    void Anotar(int depth) { profundidadSelect_ = std::max(profundidadSelect_, depth); }

    ExprPtr ParseExpr() {
        Nivel nivel(*this);
        return ParseOr();
    }

    ExprPtr ParseOr() {
        auto e = ParseAnd();
        while (AcceptKw("or")) e = Binary("or", std::move(e), ParseAnd());
        return e;
    }

    ExprPtr ParseAnd() {
        auto e = ParseNot();
        while (AcceptKw("and")) e = Binary("and", std::move(e), ParseNot());
        return e;
    }

    ExprPtr ParseNot() {
        if (AcceptKw("not")) {
            Nivel nivel(*this);
            auto e = Make(ExprKind::Unary);
            e->op = "not";
            e->args.push_back(ParseNot());
            return Hecho(std::move(e));
        }
        return ParseComparison();
    }

    ExprPtr ParseComparison() {
        auto e = ParseConcat();
        for (;;) {
            if (Cur().kind == Tok::Symbol &&
                (IsSym("=") || IsSym("<>") || IsSym("<") || IsSym(">") || IsSym("<=") || IsSym(">="))) {
                std::string op = t_[i_++].text;
                e = Binary(op, std::move(e), ParseConcat());
                continue;
            }
            bool negated = false;
            std::size_t save = i_;
            if (AcceptKw("not")) negated = true;
            if (AcceptKw("like")) {
                auto l = Make(ExprKind::Like);
                l->negated = negated;
                l->args.push_back(std::move(e));
                l->args.push_back(ParseConcat());
                e = Hecho(std::move(l));
                continue;
            }
            if (AcceptKw("between")) {
                auto b = Make(ExprKind::Between);
                b->negated = negated;
                b->args.push_back(std::move(e));
                b->args.push_back(ParseConcat());
                ExpectKw("and");
                b->args.push_back(ParseConcat());
                e = Hecho(std::move(b));
                continue;
            }
            if (AcceptKw("in")) {
                ExpectSym("(");
                if (IsKw("select")) {
                    auto in = Make(ExprKind::InSelect);
                    in->negated = negated;
                    in->args.push_back(std::move(e));
                    in->sub = ParseSelect();
                    e = Hecho(std::move(in));
                } else {
                    auto in = Make(ExprKind::InList);
                    in->negated = negated;
                    in->args.push_back(std::move(e));
                    do {
                        in->args.push_back(ParseExpr());
                    } while (AcceptSym(","));
                    e = Hecho(std::move(in));
                }
                ExpectSym(")");
                continue;
            }
            if (!negated && AcceptKw("is")) {
                auto n = Make(ExprKind::IsNull);
                n->negated = AcceptKw("not");
                ExpectKw("null");
                n->args.push_back(std::move(e));
                e = Hecho(std::move(n));
                continue;
            }
            i_ = save;
            break;
        }
        return e;
    }

    ExprPtr ParseConcat() {
        auto e = ParseAdditive();
        while (AcceptSym("&")) e = Binary("&", std::move(e), ParseAdditive());
        return e;
    }

    ExprPtr ParseAdditive() {
        auto e = ParseMod();
        while (IsSym("+") || IsSym("-")) {
            std::string op = t_[i_++].text;
            e = Binary(op, std::move(e), ParseMod());
        }
        return e;
    }

    ExprPtr ParseMod() {
        auto e = ParseIntDiv();
        while (AcceptKw("mod")) e = Binary("mod", std::move(e), ParseIntDiv());
        return e;
    }

    ExprPtr ParseIntDiv() {
        auto e = ParseMultiplicative();
        while (AcceptSym("\\")) e = Binary("\\", std::move(e), ParseMultiplicative());
        return e;
    }

    ExprPtr ParseMultiplicative() {
        auto e = ParseUnary();
        while (IsSym("*") || IsSym("/")) {
            std::string op = t_[i_++].text;
            e = Binary(op, std::move(e), ParseUnary());
        }
        return e;
    }

    ExprPtr ParseUnary() {
        if (IsSym("-") || IsSym("+")) {
            Nivel nivel(*this);
            std::string op = t_[i_++].text;
            auto e = Make(ExprKind::Unary);
            e->op = op;
            e->args.push_back(ParseUnary());
            return Hecho(std::move(e));
        }
        return ParsePrimary();
    }

    ExprPtr ParsePrimary() {
        const Token& t = Cur();
        switch (t.kind) {
            case Tok::Number:
            case Tok::String:
            case Tok::Date: {
                auto e = Make(ExprKind::Literal);
                e->slot = t.slot;
                e->litKind = t.kind == Tok::Number ? LitKind::Number : t.kind == Tok::String ? LitKind::String : LitKind::Date;
                ++i_;
                return e;
            }
            case Tok::Keyword:
                if (t.text == "true" || t.text == "false" || t.text == "yes" || t.text == "no") {
                    auto e = Make(ExprKind::Bool);
                    e->boolValue = t.text == "true" || t.text == "yes";
                    ++i_;
                    return e;
                }
                if (t.text == "null") {
                    ++i_;
                    return Make(ExprKind::Null);
                }
                if (t.text == "distinct") {  // distinct(x) inside a select list: the select's own flag
                    Fail("DISTINCT fuera de lugar");
                }
                Fail("expresión no válida");
            case Tok::Symbol:
                if (t.text == "(") {
                    ++i_;
                    if (IsKw("select")) {
                        auto e = Make(ExprKind::Subquery);
                        e->sub = ParseSelect();
                        ExpectSym(")");
                        return Hecho(std::move(e));
                    }
                    auto e = ParseExpr();
                    ExpectSym(")");
                    return e;
                }
                if (t.text == "*") {
                    ++i_;
                    return Make(ExprKind::Star);
                }
                Fail("expresión no válida");
            case Tok::Ident: {
                std::string first = t.text;
                ++i_;
                if (IsSym("(")) {
                    ++i_;
                    auto f = Make(ExprKind::Func);
                    f->op = Minusculas(first);
                    if (AcceptKw("distinct")) f->distinctArg = true;
                    if (!IsSym(")")) {
                        do {
                            f->args.push_back(ParseExpr());
                        } while (AcceptSym(","));
                    }
                    ExpectSym(")");
                    return Hecho(std::move(f));
                }
                auto c = Make(ExprKind::Column);
                if (AcceptSym(".")) {
                    c->qualifier = first;
                    c->name = ExpectIdent("el nombre de una columna");
                } else {
                    c->name = first;
                }
                return c;
            }
            case Tok::End:
                Fail("falta una expresión");
        }
        Fail("expresión no válida");
    }

    const std::string& sql_;
    const std::vector<Token>& t_;
    std::size_t i_ = 0;
    int nivel_ = 0;              // the reader's recursion
    int profundidadSelect_ = 0;  // the deepest tree of the select being read
    int subProfundidad_ = 0;     // depth of the subquery read last
};

void CollectTables(JoinNode& n, std::vector<TableRef*>& out) {
    if (n.isTable) {
        out.push_back(&n.table);
        return;
    }
    CollectTables(*n.left, out);
    CollectTables(*n.right, out);
}

void CollectAll(Select& s);

void CollectExpr(Expr* e) {
    if (!e) return;
    for (auto& a : e->args) CollectExpr(a.get());
    if (e->sub) CollectAll(*e->sub);
}

void CollectJoinExprs(JoinNode& n) {
    if (n.isTable) return;
    CollectJoinExprs(*n.left);
    CollectJoinExprs(*n.right);
    CollectExpr(n.on.get());
}

void CollectAll(Select& s) {
    for (auto& f : s.from) {
        CollectTables(*f, s.tables);
        CollectJoinExprs(*f);
    }
    for (auto& it : s.items) CollectExpr(it.expr.get());
    CollectExpr(s.where.get());
    for (auto& g : s.groupBy) CollectExpr(g.get());
    CollectExpr(s.having.get());
    for (auto& o : s.orderBy) CollectExpr(o.expr.get());
}

}  // namespace

Statement Parse(const std::string& sql, const Lexed& lexed) {
    Parser p(sql, lexed);
    Statement st = p.ParseStatement();
    if (st.select) CollectAll(*st.select);
    if (st.insert) {
        if (st.insert->select) CollectAll(*st.insert->select);
        for (auto& v : st.insert->values) CollectExpr(v.get());
    }
    if (st.update) {
        for (auto& a : st.update->sets) CollectExpr(a.value.get());
        CollectExpr(st.update->where.get());
    }
    if (st.del) CollectExpr(st.del->where.get());
    return st;
}

}  // namespace tpv::datos
