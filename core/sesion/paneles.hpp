#pragma once

// The touch panels read once at start: employees, suppliers, sections and
// payment methods, into the session's arrays. They touch no screen.
namespace tpv {

// Suppliers with products, ordered by CampoOrdenItemsCaja. None: one red
// "Sin Proveedores" entry. A bakery gets "Elaboracion Propia" first.
void CargarPanelProveedores();

// Sections with products, ordered by CampoOrdenItemsCaja.
void CargarPanelSecciones();

// Employees shown at the till, by position; the caption is the full name.
void CargarPanelEmpleados();

// Payment methods but the customer's balance (4), by position; each caption
// shows its function key: "<F1> Contado".
void CargarPanelFormasPago();

}  // namespace tpv
