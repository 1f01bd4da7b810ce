#include "core/datos/recordset.hpp"

#include "core/datos/session.hpp"
#include "core/runtime/conversiones.hpp"

namespace tpv {

namespace {

[[noreturn]] void NoCurrent() {
    throw RuntimeError(3021,
                       "BOF o EOF es True, o el registro actual se eliminó. La operación solicitada requiere un "
                       "registro actual.");
}

[[noreturn]] void NotFound(std::string_view name) {
    throw RuntimeError(3265, "No se encontró el elemento '" + std::string(name) +
                                 "' en la colección correspondiente al nombre o al ordinal solicitado.");
}

// A value assigned to a field takes the field's type, as the runtime converts
// it: "12,5" into a number field is 12,5; "15/11/2026" into a date field is
// that day; a number into a text field is its regional text.
Value Convertir(const Value& v, datos::ColType tipo) {
    if (v.IsNull()) return v;
    switch (tipo) {
        case datos::ColType::Integer:
        case datos::ColType::Flag:
            if (v.kind() == Value::Kind::Text || v.kind() == Value::Kind::Double || v.kind() == Value::Kind::Date)
                return Value(static_cast<long long>(CLng(v)));
            return v;
        case datos::ColType::Double:
            if (v.kind() != Value::Kind::Double) return Value(CDbl(v));
            return v;
        case datos::ColType::Date:
        case datos::ColType::Time:
            if (v.kind() != Value::Kind::Date) return Value(CDate(v));
            return v;
        case datos::ColType::Text:
            if (v.kind() != Value::Kind::Text) return Value(CStr(v));
            return v;
        default: return v;
    }
}

// A field by name, without regard to case; a qualified name
// ("productos.codigo") finds its column too.
int IndiceDeCampo(const std::vector<std::string>& names, std::string_view name) {
    for (std::size_t i = 0; i < names.size(); ++i)
        if (datos::IgualesSinCaso(names[i], name)) return static_cast<int>(i);
    auto dot = name.find('.');
    if (dot != std::string_view::npos) return IndiceDeCampo(names, name.substr(dot + 1));
    return -1;
}

}  // namespace

struct Recordset::Impl {
    std::shared_ptr<datos::Session> session;  // the database stays open while the recordset is
    std::shared_ptr<datos::Translation> translation;
    std::string sql;
    std::vector<std::vector<Value>> rows;  // visible values, then key and image when writable
    std::vector<bool> deleted;             // rows this recordset deleted: skipped by the moves
    std::size_t visible = 0;
    long pos = 0;
    bool writable = false;
    const datos::TableInfo* table = nullptr;
    std::vector<int> tableColumn;  // per visible field: its column in the table, -1 if none

    // Edit buffer.
    enum class Mode { None, Edit, Add } mode = Mode::None;
    std::vector<Value> buffer;
    std::vector<bool> dirty;
    long addReturn = 0;
};

Recordset::Recordset() = default;
Recordset::~Recordset() = default;

void Recordset::Open(const std::string& sql, Connection& cn, CursorTypeEnum cursor, LockTypeEnum lock, int) {
    Close();
    auto p = std::make_unique<Impl>();
    p->session = cn.SharedSession();
    // A static cursor is a snapshot and never writes; the others write when
    // the lock allows it and the statement reads one table.
    bool wantWrite = cursor != adOpenStatic && cursor != adOpenForwardOnly && lock != adLockReadOnly &&
                     lock != adLockUnspecified;
    datos::Result r = p->session->Run(sql, wantWrite, &p->translation, false);
    p->sql = sql;
    p->visible = p->translation->names.size();
    p->rows = std::move(r.rows);
    p->deleted.assign(p->rows.size(), false);
    p->table = p->translation->baseTable;
    p->writable = wantWrite && p->table;
    if (p->writable) {
        for (std::size_t i = 0; i < p->visible; ++i) {
            const auto& it = p->translation->stmt.select->items[i];
            int col = -1;
            if (it.expr->kind == datos::ast::ExprKind::Column && it.expr->column) col = p->table->IndexOf(it.expr->column->name);
            p->tableColumn.push_back(col);
        }
    }
    p_ = std::move(p);
}

void Recordset::Close() { p_.reset(); }
bool Recordset::IsOpen() const { return static_cast<bool>(p_); }

void Recordset::RequireOpen() const {
    if (!p_) throw RuntimeError(3704, "No se permite la operación si el objeto está cerrado.");
}

void Recordset::RequireCurrent() const {
    RequireOpen();
    if (p_->mode == Impl::Mode::Add) return;
    if (p_->pos < 0 || p_->pos >= static_cast<long>(p_->rows.size()) || p_->deleted[static_cast<std::size_t>(p_->pos)])
        NoCurrent();
}

void Recordset::RequireUpdatable() const {
    RequireOpen();
    if (!p_->writable)
        throw RuntimeError(3251, "El recordset no admite actualizaciones. Puede deberse a una limitación del proveedor o del "
                                 "tipo de bloqueo seleccionado.");
}

long Recordset::RecordCount() const {
    RequireOpen();
    long n = 0;
    for (bool d : p_->deleted) n += d ? 0 : 1;
    return n;
}

bool Recordset::Eof() const {
    RequireOpen();
    return p_->pos >= static_cast<long>(p_->rows.size());
}

bool Recordset::Bof() const {
    RequireOpen();
    return p_->pos < 0 || p_->rows.empty();
}

void Recordset::MoveFirst() {
    RequireOpen();
    if (p_->mode != Impl::Mode::None) Update();
    p_->pos = 0;
    SkipDeleted(1);
}

void Recordset::MoveNext() {
    RequireOpen();
    if (p_->mode != Impl::Mode::None) Update();
    if (p_->pos >= static_cast<long>(p_->rows.size())) NoCurrent();
    ++p_->pos;
    SkipDeleted(1);
}

void Recordset::MoveLast() {
    RequireOpen();
    if (p_->mode != Impl::Mode::None) Update();
    p_->pos = static_cast<long>(p_->rows.size()) - 1;
    SkipDeleted(-1);
    if (p_->pos < 0) p_->pos = 0;
}

void Recordset::MovePrevious() {
    RequireOpen();
    if (p_->mode != Impl::Mode::None) Update();
    if (p_->pos < 0) NoCurrent();
    --p_->pos;
    SkipDeleted(-1);
}

void Recordset::SkipDeleted(int step) {
    while (p_->pos >= 0 && p_->pos < static_cast<long>(p_->rows.size()) && p_->deleted[static_cast<std::size_t>(p_->pos)])
        p_->pos += step;
}

int Recordset::FieldCount() const {
    RequireOpen();
    return static_cast<int>(p_->visible);
}

std::string Recordset::FieldName(int index) const {
    RequireOpen();
    if (index < 0 || index >= static_cast<int>(p_->visible)) NotFound(std::to_string(index));
    return p_->translation->names[static_cast<std::size_t>(index)];
}

int Recordset::IndexOf(std::string_view name) const {
    RequireOpen();
    return IndiceDeCampo(p_->translation->names, name);
}

bool Recordset::HasField(std::string_view name) const { return IndexOf(name) >= 0; }

Field Recordset::Fields(std::string_view name) {
    int i = IndexOf(name);
    if (i < 0) NotFound(name);
    return Field(*this, i);
}

Field Recordset::Fields(int index) {
    RequireOpen();
    if (index < 0 || index >= static_cast<int>(p_->visible)) NotFound(std::to_string(index));
    return Field(*this, index);
}

const Value& Recordset::Get(std::string_view name) const {
    int i = IndexOf(name);
    if (i < 0) NotFound(name);
    return GetAt(i);
}

void Recordset::Set(std::string_view name, Value v) {
    int i = IndexOf(name);
    if (i < 0) NotFound(name);
    SetAt(i, std::move(v));
}

const Value& Recordset::GetAt(int index) const {
    RequireCurrent();
    if (p_->mode != Impl::Mode::None) return p_->buffer[static_cast<std::size_t>(index)];
    return p_->rows[static_cast<std::size_t>(p_->pos)][static_cast<std::size_t>(index)];
}

void Recordset::SetAt(int index, Value v) {
    RequireUpdatable();
    RequireCurrent();
    if (p_->tableColumn[static_cast<std::size_t>(index)] < 0)
        throw RuntimeError(3251, "No se puede actualizar el campo '" + p_->translation->names[static_cast<std::size_t>(index)] + "'.");
    if (p_->mode == Impl::Mode::None) {
        const auto& row = p_->rows[static_cast<std::size_t>(p_->pos)];
        p_->buffer.assign(row.begin(), row.begin() + static_cast<long>(p_->visible));
        p_->dirty.assign(p_->visible, false);
        p_->mode = Impl::Mode::Edit;
    }
    p_->buffer[static_cast<std::size_t>(index)] = Convertir(v, p_->translation->types[static_cast<std::size_t>(index)]);
    p_->dirty[static_cast<std::size_t>(index)] = true;
}

void Recordset::AddNew() {
    RequireUpdatable();
    if (p_->mode != Impl::Mode::None) Update();
    p_->buffer.assign(p_->visible, Value());
    p_->dirty.assign(p_->visible, false);
    p_->addReturn = p_->pos;
    p_->mode = Impl::Mode::Add;
}

void Recordset::CancelUpdate() {
    RequireOpen();
    if (p_->mode == Impl::Mode::Add) p_->pos = p_->addReturn;
    p_->mode = Impl::Mode::None;
}

void Recordset::Update() {
    RequireUpdatable();
    if (p_->mode == Impl::Mode::None) return;
    std::vector<int> cols;
    std::vector<Value> vals;
    for (std::size_t i = 0; i < p_->visible; ++i) {
        if (!p_->dirty[i]) continue;
        cols.push_back(p_->tableColumn[i]);
        vals.push_back(p_->buffer[i]);
    }
    datos::Engine& engine = p_->session->engine();
    std::size_t v = p_->visible;
    try {
        if (p_->mode == Impl::Mode::Add) {
            std::vector<Value> keyImage = engine.InsertRow(*p_->table, cols, vals);
            std::vector<Value> row;
            for (std::size_t i = 0; i < v; ++i) {
                int c = p_->tableColumn[i];
                row.push_back(c >= 0 ? datos::Session::Typed(keyImage[static_cast<std::size_t>(c) + 1], p_->translation->types[i]) : Value());
            }
            row.insert(row.end(), keyImage.begin(), keyImage.end());
            p_->rows.push_back(std::move(row));
            p_->deleted.push_back(false);
            p_->pos = static_cast<long>(p_->rows.size()) - 1;
        } else {
            auto& row = p_->rows[static_cast<std::size_t>(p_->pos)];
            std::vector<Value> image(row.begin() + static_cast<long>(v) + 1, row.end());
            if (engine.UpdateRow(*p_->table, row[v], image, cols, vals) != 1)
                throw RuntimeError(kErrDatabase,
                                   "No se encuentra la fila para actualizar. Algunos valores pueden haber cambiado desde la "
                                   "última vez que se leyeron.");
            row[v] = engine.KeyAfterUpdate(row[v]);
            for (std::size_t k = 0; k < cols.size(); ++k) {
                row[v + 1 + static_cast<std::size_t>(cols[k])] = engine.dialect().Bind(vals[k], p_->table->columns[static_cast<std::size_t>(cols[k])].type);
            }
            for (std::size_t i = 0; i < v; ++i)
                if (p_->dirty[i]) row[i] = p_->buffer[i];
        }
    } catch (...) {
        // The edit stays pending, as it did: the caller may cancel it.
        throw;
    }
    p_->mode = Impl::Mode::None;
}

void Recordset::Delete() {
    RequireUpdatable();
    RequireCurrent();
    if (p_->mode == Impl::Mode::Add) {
        CancelUpdate();
        return;
    }
    p_->mode = Impl::Mode::None;
    auto& row = p_->rows[static_cast<std::size_t>(p_->pos)];
    std::size_t v = p_->visible;
    std::vector<Value> image(row.begin() + static_cast<long>(v) + 1, row.end());
    if (p_->session->engine().DeleteRow(*p_->table, row[v], image) != 1)
        throw RuntimeError(kErrDatabase,
                           "No se encuentra la fila para eliminar. Algunos valores pueden haber cambiado desde la última vez "
                           "que se leyeron.");
    p_->deleted[static_cast<std::size_t>(p_->pos)] = true;
}

const tpv::Value& Field::Value() const { return rs_.GetAt(index_); }

Field& Field::operator=(tpv::Value v) {
    rs_.SetAt(index_, std::move(v));
    return *this;
}

std::string Field::Name() const { return rs_.FieldName(index_); }

ForwardReader::ForwardReader(Connection& cn, const std::string& sql) : session_(cn.SharedSession()), sql_(sql) {
    prepared_ = session_->Prepare(sql, false);
    if (!prepared_->translation->returnsRows)
        throw DbError("sintaxis", "La instrucción no devuelve filas.", sql);
}

ForwardReader::~ForwardReader() = default;

int ForwardReader::FieldCount() const { return static_cast<int>(prepared_->translation->names.size()); }

int ForwardReader::IndexOf(std::string_view name) const {
    int i = IndiceDeCampo(prepared_->translation->names, name);
    if (i < 0) NotFound(name);
    return i;
}

void ForwardReader::ForEach(const std::function<void(const std::vector<Value>& row)>& f) {
    session_->Each(prepared_, sql_, [&](std::vector<Value>& row) { f(row); });
}

}  // namespace tpv
