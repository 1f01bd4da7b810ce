#include "core/datos/connection.hpp"

#include "core/datos/session.hpp"

namespace tpv {

namespace {

bool EsPostgres(const std::string& uri) {
    return uri.rfind("postgresql://", 0) == 0 || uri.rfind("postgres://", 0) == 0;
}

std::string RutaSqlite(const std::string& uri) {
    if (uri.rfind("sqlite:", 0) == 0) return uri.substr(7);
    return uri;
}

}  // namespace

Connection::Connection() = default;
Connection::~Connection() = default;
Connection::Connection(Connection&&) noexcept = default;
Connection& Connection::operator=(Connection&&) noexcept = default;

void Connection::Open(const std::string& uri) {
    Close();
    std::unique_ptr<datos::Engine> engine =
        EsPostgres(uri) ? datos::OpenPostgres(uri) : datos::OpenSqlite(RutaSqlite(uri), false);
    s_ = std::make_shared<datos::Session>(std::move(engine));
    uri_ = uri;
}

void Connection::Close() { s_.reset(); }

bool Connection::IsOpen() const { return static_cast<bool>(s_); }

datos::Session& Connection::session() {
    if (!s_) throw RuntimeError(3704, "No se permite la operación si el objeto está cerrado.");
    return *s_;
}

std::shared_ptr<datos::Session> Connection::SharedSession() {
    session();
    return s_;
}

long long Connection::Execute(const std::string& sql) { return session().Run(sql, false).changes; }

std::string Connection::DefaultDatabase() const {
    if (!s_) return "";
    return s_->engine().DefaultDatabase();
}

const std::string& Connection::ConnectionString() const { return uri_; }

void Connection::BeginTrans() { session().engine().Begin(); }
void Connection::CommitTrans() { session().engine().Commit(); }
void Connection::RollbackTrans() { session().engine().Rollback(); }

}  // namespace tpv
