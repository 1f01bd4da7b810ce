#pragma once
#include <memory>
#include <string>

#include "core/runtime/error.hpp"
#include "core/runtime/value.hpp"

namespace tpv {

namespace datos {
class Session;
}

enum CursorTypeEnum { adOpenUnspecified = -1, adOpenForwardOnly = 0, adOpenKeyset = 1, adOpenDynamic = 2, adOpenStatic = 3 };
enum LockTypeEnum { adLockUnspecified = -1, adLockReadOnly = 1, adLockPessimistic = 2, adLockOptimistic = 3, adLockBatchOptimistic = 4 };
enum CommandTypeEnum { adCmdUnspecified = -1, adCmdText = 1, adCmdTable = 2 };

// The one road to the shop's database. Statements are written in the Jet
// dialect the till has always used; the connection translates them for the
// engine behind it (an SQLite file, or a PostgreSQL server), which no caller
// needs to know.
//
// Database URIs: a file path or "sqlite:PATH" for SQLite;
// "postgresql://user@host:port/dbname" for a server.
class Connection {
public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    Connection(Connection&&) noexcept;
    Connection& operator=(Connection&&) noexcept;

    void Open(const std::string& uri);
    void Close();
    bool IsOpen() const;

    // Runs one whole statement; returns the number of rows it changed
    // (0 for a statement that returns rows).
    long long Execute(const std::string& sql);

    // The database's full name: the file's path without extension for SQLite
    // ("/var/tpv/SUPERMERCADO" for "/var/tpv/SUPERMERCADO.db"), the database
    // name for a server. Its last component is the sector word.
    std::string DefaultDatabase() const;
    const std::string& ConnectionString() const;

    // Only the tools use these; the till itself never opens a transaction.
    void BeginTrans();
    void CommitTrans();
    void RollbackTrans();

    datos::Session& session();
    std::shared_ptr<datos::Session> SharedSession();

private:
    std::shared_ptr<datos::Session> s_;  // shared with the recordsets opened on it
    std::string uri_;
};

}  // namespace tpv
