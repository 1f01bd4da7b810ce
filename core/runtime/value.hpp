#pragma once
#include <cstdint>
#include <string>
#include <variant>

namespace tpv {

// A date as the original runtime held it: days since 30/12/1899, the time of
// day as the fraction. A time alone is a date on day 0.
struct DateTime {
    double serial = 0.0;
    friend bool operator==(const DateTime&, const DateTime&) = default;
};

// A database or variant value that keeps NULL apart from 0 and "".
// Flags travel as whole numbers -1 and 0, as they are stored.
class Value {
public:
    enum class Kind { Null, Integer, Double, Text, Date };

    Value() = default;
    Value(std::nullptr_t) {}
    Value(int v) : v_(static_cast<std::int64_t>(v)) {}
    Value(long v) : v_(static_cast<std::int64_t>(v)) {}
    Value(long long v) : v_(static_cast<std::int64_t>(v)) {}
    Value(bool v) : v_(static_cast<std::int64_t>(v ? -1 : 0)) {}
    Value(double v) : v_(v) {}
    Value(const char* v) : v_(std::string(v)) {}
    Value(std::string v) : v_(std::move(v)) {}
    Value(std::string_view v) : v_(std::string(v)) {}
    Value(DateTime v) : v_(v) {}

    Kind kind() const { return static_cast<Kind>(v_.index()); }
    bool IsNull() const { return v_.index() == 0; }
    bool IsNumber() const { return kind() == Kind::Integer || kind() == Kind::Double; }

    // Raw access; the conversions of the runtime (CDbl, CLng, CStr...) give
    // the original meaning for every kind.
    std::int64_t integer() const { return std::get<std::int64_t>(v_); }
    double real() const { return std::get<double>(v_); }
    const std::string& text() const { return std::get<std::string>(v_); }
    DateTime date() const { return std::get<DateTime>(v_); }

    // Numeric value of a number or date; 0 for anything else.
    double number() const {
        switch (kind()) {
            case Kind::Integer: return static_cast<double>(integer());
            case Kind::Double: return real();
            case Kind::Date: return date().serial;
            default: return 0.0;
        }
    }

    friend bool operator==(const Value&, const Value&) = default;

private:
    std::variant<std::monostate, std::int64_t, double, std::string, DateTime> v_;
};

}  // namespace tpv
