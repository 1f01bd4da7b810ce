#include "sale/linea_comun.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/sesion.hpp"
#include "core/sesion/visor.hpp"

namespace tpv {

bool LeerArticulo(const std::string& tabla, std::int32_t codigo, ArticuloVenta& articulo) {
    Recordset rs;
    lectura::Abrir(rs,
                   "Select nombre,precio,iva,impuesto_2 from " + tabla + " where codigo = " + std::to_string(codigo));
    const bool hay = rs.RecordCount() > 0;
    if (hay) articulo = {rs["nombre"].Value(), rs["precio"].Value(), rs["iva"].Value(), rs["impuesto_2"].Value()};
    rs.Close();
    return hay;
}

double CeroSiNulo(const Value& v) { return v.IsNull() ? 0.0 : CDbl(v); }

long ColorFocoActual() {
    Sesion& s = sesion();
    return CLng(ColourScheme().ColorFoco(s.Conexion, s.EsquemaColores));
}

void PintarCelda(Grid& grid, long fila, long columna, long color) {
    grid.SetRow(fila);
    grid.SetCol(columna);
    grid.SetCellBackColor(color);
}

void MostrarLineaEnVisor(const std::string& nombre, const std::string& importe) {
    if (sesion().VisorActivo) VisorDelPuesto().MostrarEnVisor(nombre, importe);
}

std::string SumarArticulos(const std::string& texto, double cuantos) {
    const double antes = texto.empty() ? 0 : CInt(texto);
    return CStr(antes + cuantos);
}

}  // namespace tpv
