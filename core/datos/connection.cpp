#include "core/datos/connection.hpp"

#include <cctype>

#include "core/datos/servidor.hpp"
#include "core/datos/session.hpp"

namespace tpv {

namespace datos {

DestinoBase LeerUri(const std::string& uri) {
    if (servidor::EsUri(uri)) return {true, ""};
    std::size_t esquema = uri.find("://");
    bool letras = esquema != std::string::npos && esquema > 0;
    for (std::size_t i = 0; letras && i < esquema; ++i)
        letras = std::isalnum(static_cast<unsigned char>(uri[i])) || uri[i] == '+' || uri[i] == '-' || uri[i] == '.';
    if (letras && uri.rfind("sqlite:", 0) != 0)
        throw DbError("uri",
                      "La dirección de la base de datos '" + servidor::SinClave(uri) +
                          "' no es válida: para un servidor empieza por postgresql://, para un archivo es su ruta.",
                      "", kErrBaseNoSeAbre);
    DestinoBase d{false, uri.rfind("sqlite:", 0) == 0 ? uri.substr(7) : uri};
    if (d.ruta.empty()) throw DbError("uri", "No se ha indicado el archivo de la base de datos.", "", kErrBaseNoSeAbre);
    return d;
}

}  // namespace datos

Connection::Connection() = default;
Connection::~Connection() = default;
Connection::Connection(Connection&&) noexcept = default;
Connection& Connection::operator=(Connection&&) noexcept = default;

void Connection::Open(const std::string& uri) {
    Close();
    const datos::DestinoBase destino = datos::LeerUri(uri);
    std::unique_ptr<datos::Engine> engine =
        destino.servidor ? datos::OpenPostgres(uri) : datos::OpenSqlite(destino.ruta, false);
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
