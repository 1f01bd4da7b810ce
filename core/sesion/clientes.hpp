#pragma once

namespace tpv {

// Reads the customers not deleted, with codes from 0, ordered by name, into
// the session's in-memory list. The list is not read again during the run.
void CargarClientes();

}  // namespace tpv
