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

// The database's failures that a technician can act on, one number each,
// the same on every engine (the numbers the original runtime's database
// engine gave them). Anything else is kErrDatabase.
inline constexpr long kErrBaseNoSeAbre = 3024;      // missing file, no permission, unknown database
inline constexpr long kErrBaseNoValida = 3343;      // not a database, or damaged
inline constexpr long kErrBaseOcupada = 3218;       // another program holds it locked
inline constexpr long kErrValorRepetido = 3022;     // a unique index refuses the row
inline constexpr long kErrValorObligatorio = 3314;  // a required value is missing
inline constexpr long kErrReglaDeLaBase = 3317;     // another rule of the database refuses it
inline constexpr long kErrSoloLectura = 3027;       // the database can only be read
inline constexpr long kErrAcceso = 3029;            // the server refuses user or password
inline constexpr long kErrSinServidor = 3151;       // no connection to the server, or lost

// A failure of the database or of a statement: its number, a message in
// Spanish for the user, the engine's own code (an SQLite result code, a
// PostgreSQL SQLSTATE, or the translator's) and text (the detail, for the
// log), and the statement as the program wrote it.
class DbError : public RuntimeError {
public:
    DbError(std::string engineCode, const std::string& message, std::string statement, long number = kErrDatabase,
            std::string detail = "")
        : RuntimeError(number, message + (statement.empty() ? "" : " [" + statement + "]")),
          engineCode_(std::move(engineCode)), message_(message), statement_(std::move(statement)),
          detail_(std::move(detail)) {}
    const std::string& EngineCode() const noexcept { return engineCode_; }
    const std::string& Statement() const noexcept { return statement_; }
    // The message without the statement.
    const std::string& Mensaje() const noexcept { return message_; }
    // What the engine said, as it said it ("" when the message is the whole story).
    const std::string& Detalle() const noexcept { return detail_; }
    // The same failure, named by another statement.
    DbError ConSentencia(std::string statement) const {
        return DbError(engineCode_, message_, std::move(statement), Number(), detail_);
    }

private:
    std::string engineCode_;
    std::string message_;
    std::string statement_;
    std::string detail_;
};

}  // namespace tpv
