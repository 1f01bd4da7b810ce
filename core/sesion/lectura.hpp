#pragma once
#include <string>

#include "core/datos/recordset.hpp"

// The two ways the session routines open a recordset on the connection of
// the run.
namespace tpv::lectura {

// A plain read: static cursor, so RecordCount is right at once.
void Abrir(Recordset& rs, const std::string& sql);

// Read and change in place: keyset cursor, optimistic lock.
void AbrirParaCambiar(Recordset& rs, const std::string& sql);

// The row of a key of relaciones_fijas, as far as the session needs it.
struct Clave {
    bool existe = false;
    Value datoa;
    Value daton;
    Value otros;
};
Clave LeerClave(const std::string& indice);

}  // namespace tpv::lectura
