#pragma once
#include <stdexcept>
#include <string>

namespace tpv {

// A run-time error: what ends a user action in the till. It carries the
// number the original runtime gave the failure and its message; the one
// handler at the top of each user action shows it and logs it.
class RuntimeError : public std::runtime_error {
public:
    RuntimeError(long number, const std::string& message)
        : std::runtime_error(message), number_(number) {}
    long Number() const noexcept { return number_; }

private:
    long number_;
};

// Error numbers used by the runtime conversions and the data layer.
inline constexpr long kErrInvalidCall = 5;  // invalid procedure call or argument
inline constexpr long kErrOverflow = 6;
inline constexpr long kErrTypeMismatch = 13;
inline constexpr long kErrInvalidUse = 94;   // invalid use of Null
inline constexpr long kErrDatabase = -2147467259;  // the generic database failure

// The runtime's own failures, with the messages the till shows for them.
inline RuntimeError ErrorLlamadaNoValida() {
    return RuntimeError(kErrInvalidCall, "Argumento o llamada a procedimiento no válida");
}
inline RuntimeError ErrorDesbordamiento() { return RuntimeError(kErrOverflow, "Desbordamiento"); }
inline RuntimeError ErrorTiposNoCoinciden() { return RuntimeError(kErrTypeMismatch, "No coinciden los tipos"); }
inline RuntimeError ErrorUsoDeNull() { return RuntimeError(kErrInvalidUse, "Uso no válido de Null"); }

// A failure of the database or of a statement: carries the engine's own code
// (an SQLite result code, a PostgreSQL SQLSTATE, or the translator's) and the
// statement as the program wrote it.
class DbError : public RuntimeError {
public:
    DbError(std::string engineCode, const std::string& message, std::string statement)
        : RuntimeError(kErrDatabase, message + (statement.empty() ? "" : " [" + statement + "]")),
          engineCode_(std::move(engineCode)), statement_(std::move(statement)) {}
    const std::string& EngineCode() const noexcept { return engineCode_; }
    const std::string& Statement() const noexcept { return statement_; }

private:
    std::string engineCode_;
    std::string statement_;
};

}  // namespace tpv
