#include "core/servicios/field_list.hpp"

#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"

#include "core/runtime/texto.hpp"

namespace tpv {

namespace {


}  // namespace

std::vector<CampoFieldList> FieldList::Leer(std::string_view campos) {
    std::vector<CampoFieldList> pares;
    std::size_t inicio = 0;
    while (inicio < campos.size()) {
        std::size_t fin = campos.find('|', inicio);
        if (fin == std::string_view::npos) fin = campos.size();
        std::string_view par = campos.substr(inicio, fin - inicio);
        inicio = fin + 1;
        if (Recortar(par, " \t\r\n").empty()) continue;
        std::size_t igual = par.find('=');
        std::string nombre = igual == std::string_view::npos ? "" : Recortar(par.substr(0, igual), " \t\r\n");
        if (nombre.empty())
            throw DbError("campos", "Lista de campos mal formada: '" + std::string(par) + "'.", std::string(campos));
        pares.push_back({std::move(nombre), std::string(par.substr(igual + 1))});
    }
    return pares;
}

std::string FieldList::Par(std::string_view nombre, const Value& valor) {
    return std::string(nombre) + "=" + Texto(valor) + "|";
}

}  // namespace tpv
