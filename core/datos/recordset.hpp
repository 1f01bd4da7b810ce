#pragma once
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/datos/connection.hpp"

namespace tpv {

namespace datos {
struct Prepared;
struct Result;
class Session;
struct Translation;
}

class Recordset;

// One field of the current row: reads as a Value, takes a Value by assignment.
class Field {
public:
    Field(Recordset& rs, int index) : rs_(rs), index_(index) {}
    const tpv::Value& Value() const;
    operator const tpv::Value&() const { return Value(); }
    Field& operator=(tpv::Value v);
    bool IsNull() const { return Value().IsNull(); }
    std::string Name() const;

private:
    Recordset& rs_;
    int index_;
};

// A recordset as the till uses it: opened with a statement, all rows read at
// once (so RecordCount is right straight away), walked with MoveNext and Eof.
// A recordset opened with an updatable lock over one table can AddNew, assign
// fields, Update and Delete; those writes are optimistic: a row that another
// connection changed or deleted since it was read is not written, and the
// write fails as a run-time error.
class Recordset {
public:
    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    void Open(const std::string& sql, Connection& cn, CursorTypeEnum cursor = adOpenForwardOnly,
              LockTypeEnum lock = adLockReadOnly, int options = adCmdUnspecified);
    void Close();
    bool IsOpen() const;

    long RecordCount() const;
    bool Eof() const;  // EOF of the original; the name EOF is taken by the C library
    bool Bof() const;
    void MoveFirst();
    void MoveNext();
    void MoveLast();
    void MovePrevious();

    int FieldCount() const;
    std::string FieldName(int index) const;
    bool HasField(std::string_view name) const;
    // Fields by name, without regard to case; an alias names its column.
    Field Fields(std::string_view name);
    Field operator[](std::string_view name) { return Fields(name); }
    Field Fields(int index);
    const Value& Get(std::string_view name) const;
    void Set(std::string_view name, Value v);

    void AddNew();
    void Update();
    void CancelUpdate();
    void Delete();

private:
    friend class Field;
    int IndexOf(std::string_view name) const;
    const Value& GetAt(int index) const;
    void SetAt(int index, Value v);
    void RequireCurrent() const;
    void RequireOpen() const;
    void RequireUpdatable() const;
    void SkipDeleted(int step);

    struct Impl;
    std::unique_ptr<Impl> p_;
};

// A forward-only, read-only pass over the rows of a statement: each row is
// handed over as the engine reads it and none is kept, so a long list costs
// the memory of the list alone. The statement is read when the reader is
// made; ForEach runs it. The function given must not run statements itself.
class ForwardReader {
public:
    ForwardReader(Connection& cn, const std::string& sql);
    ~ForwardReader();
    ForwardReader(const ForwardReader&) = delete;
    ForwardReader& operator=(const ForwardReader&) = delete;

    int FieldCount() const;
    // A field's place in each row, by name as Recordset::Fields finds it.
    int IndexOf(std::string_view name) const;
    void ForEach(const std::function<void(const std::vector<Value>& row)>& f);

private:
    std::shared_ptr<datos::Session> session_;
    std::shared_ptr<const datos::Prepared> prepared_;
    std::string sql_;
};

}  // namespace tpv
