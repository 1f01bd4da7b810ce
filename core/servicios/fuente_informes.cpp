#include "core/servicios/fuente_informes.hpp"

#include <cctype>
#include <cstdlib>

#include "core/datos/recordset.hpp"
#include "core/datos/tipos.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "core/servicios/suite_settings.hpp"

#include "core/runtime/texto.hpp"

namespace tpv {

namespace {


// The value of "dsn=" among the ";"-separated parts; false when there is none.
bool NombreDsn(const std::string& cadena, std::string& nombre) {
    std::size_t inicio = 0;
    while (inicio <= cadena.size()) {
        std::size_t fin = cadena.find(';', inicio);
        if (fin == std::string::npos) fin = cadena.size();
        std::string_view parte = std::string_view(cadena).substr(inicio, fin - inicio);
        std::size_t igual = parte.find('=');
        if (igual != std::string_view::npos && datos::IgualesSinCaso(Recortar(parte.substr(0, igual)), "dsn")) {
            nombre = Recortar(parte.substr(igual + 1));
            return true;
        }
        inicio = fin + 1;
    }
    return false;
}

std::string VariableDeEntorno(const std::string& nombre) {
    std::string v = "TPV_DSN_";
    for (unsigned char c : nombre) v += std::isalnum(c) ? static_cast<char>(std::toupper(c)) : '_';
    return v;
}

// The first row's one column of a statement on the reporting data source.
std::string LeerPrimeraFila(const std::string& sentencia) {
    Connection cn;
    cn.Open(ResolverFuenteDatos(kFuenteInformes));
    Recordset rs;
    rs.Open(sentencia, cn, adOpenStatic, adLockOptimistic);
    std::string resultado;
    // A NULL is not guarded: reading it is the runtime's "invalid use of Null".
    if (rs.RecordCount() > 0) resultado = CStr(rs.Fields(0).Value());
    rs.Close();
    cn.Close();
    return resultado;
}

}  // namespace

std::string ResolverFuenteDatos(const std::string& cadenaConexion) {
    std::string nombre;
    if (!NombreDsn(cadenaConexion, nombre)) return Recortar(cadenaConexion);
    if (nombre.empty()) throw DbError("dsn", "No se ha indicado el nombre del origen de datos.", cadenaConexion);
    const char* env = std::getenv(VariableDeEntorno(nombre).c_str());
    if (env && *env) return env;
    std::string uri = SuiteSettings::Instancia().Leer("dsn." + nombre);
    if (uri.empty())
        throw DbError("dsn",
                      "No se encuentra el nombre del origen de datos '" + nombre + "': falta la clave \"dsn." + nombre +
                          "\" en " + SuiteSettings::Instancia().Donde() + " (o la variable " +
                          VariableDeEntorno(nombre) + ").",
                      cadenaConexion);
    return uri;
}

std::string LeerIdentificadorTerminal() { return LeerPrimeraFila("Select list2 from listadostemporal"); }

std::string LeerSegundoIdentificador() { return LeerPrimeraFila("Select list1 from listadostemporal"); }

}  // namespace tpv
