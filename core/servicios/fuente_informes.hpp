#pragma once
#include <string>

namespace tpv {

// The connection text of the reporting data source, which holds
// `listadostemporal` (this machine's identity) and `informes`.
inline constexpr const char* kFuenteInformes = "dsn=Velmora";

// The database URI behind a connection text. "dsn=NAME" (any case, other
// "clave=valor" parts separated by ";" ignored) names the URI in the
// environment variable TPV_DSN_<NAME> (upper-cased, other characters than
// letters and digits as "_"), else in the settings key "dsn.<NAME>"; an
// unknown name is a run-time error. A text without "dsn=" is a URI already.
std::string ResolverFuenteDatos(const std::string& cadenaConexion);

// What this machine calls itself: "Select list2 from listadostemporal" on a
// connection of its own; "" when the table has no row.
std::string LeerIdentificadorTerminal();
// The second half of the terminal's key: "Select list1 from listadostemporal".
std::string LeerSegundoIdentificador();

}  // namespace tpv
