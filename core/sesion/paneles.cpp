#include "core/sesion/paneles.hpp"

#include <filesystem>
#include <system_error>

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

namespace {

// White, for a button whose own colour is missing.
constexpr const char* kBlanco = "16777215";

// The start-up panels walk their rows with a keyset cursor, as text.
void AbrirPanel(Recordset& rs, const std::string& sql) {
    rs.Open(sql, sesion().Conexion, adOpenKeyset, adLockOptimistic, adCmdText);
}

// Buttons without a colour of their own take the four generic colours by
// turns; the turn is counted per panel.
class Coloreado {
public:
    explicit Coloreado(int turno = 0) : turno_(turno) {}

    std::string Color(const Value& usaColor, const Value& color) {
        const std::string propio = color.IsNull() ? kBlanco : CStr(color);
        if (SinColorPropio(usaColor) || propio.empty()) return Generico();
        return propio;
    }

    std::string Generico() {
        const std::string c = sesion().ColoresGenericos[turno_];
        turno_ = (turno_ + 1) % 4;
        return c;
    }

private:
    static bool SinColorPropio(const Value& usaColor) {
        if (Texto(usaColor).empty()) return true;
        return IsNumeric(usaColor) && CDbl(usaColor) == 0.0;
    }

    int turno_;
};

bool ExisteFichero(const std::string& ruta) {
    std::error_code ec;
    return std::filesystem::exists(ruta, ec);
}

// Suppliers and sections: the same panel over two tables; only suppliers
// carry the pseudo-entries.
void CargarPanelGrupos(PanelRegistros& panel, const std::string& sql, const char* columnaColor, bool proveedores) {
    Sesion& s = sesion();
    panel.clear();
    Recordset rs;
    AbrirPanel(rs, sql);
    if (rs.RecordCount() < 1 && proveedores) {
        ButtonRecord vacio;
        vacio.TextoSuperior = "Sin Proveedores";
        vacio.Codigo = "-1";
        vacio.Color = "255";
        panel.push_back(vacio);
        rs.Close();
        return;
    }
    Coloreado colores;
    if (proveedores && s.Sector == "PANADERIA") {
        ButtonRecord propia;
        propia.Texto = "Elaboracion Propia";
        propia.Codigo = "-1";
        propia.Color = colores.Generico();
        panel.push_back(propia);
    }
    for (; !rs.Eof(); rs.MoveNext()) {
        ButtonRecord b;
        b.Codigo = CStr(rs["codigo"]);
        b.Color = colores.Color(rs[columnaColor], rs["color"]);
        b.Imagen = s.CarpetaFotos + Texto(rs["imagen"]);
        b.Texto = CStr(rs["Nombre"]);
        panel.push_back(b);
    }
    rs.Close();
}

// One button per row, coloured in turn and numbered from 1; `boton` fills
// the picture and the caption, which differ per panel.
template <class Boton>
void LlenarPanel(PanelRegistros& panel, const std::string& sql, const char* columnaColor, Boton boton) {
    panel.clear();
    Recordset rs;
    AbrirPanel(rs, sql);
    Coloreado colores;
    for (int n = 1; !rs.Eof(); rs.MoveNext(), ++n) {
        ButtonRecord b;
        b.Color = colores.Color(rs[columnaColor], rs["color"]);
        boton(rs, n, b);
        b.Codigo = CStr(rs["codigo"]);
        panel.push_back(b);
    }
    rs.Close();
}

}  // namespace

void CargarPanelProveedores() {
    Sesion& s = sesion();
    CargarPanelGrupos(s.PanelProveedores,
                      "Select * from Proveedores where Borrar=false and codigo in (Select proveedor from productos) "
                      "order by " +
                          s.CampoOrdenItemsCaja,
                      "prv_color", true);
}

void CargarPanelSecciones() {
    Sesion& s = sesion();
    CargarPanelGrupos(s.PanelSecciones,
                      "Select * from Seccion where Borrar=false and codigo in (Select seccion from productos) "
                      "order by " +
                          s.CampoOrdenItemsCaja,
                      "sec_color", false);
}

void CargarPanelEmpleados() {
    const std::string& fotos = sesion().CarpetaFotos;
    LlenarPanel(sesion().PanelEmpleados,
                "Select codigo,nombre,apellidos,imagen,color,emp_color from empleados where baja= false and "
                "mostrar_caja = -1 order by posicion",
                "emp_color", [&](Recordset& rs, int, ButtonRecord& b) {
                    // Only a picture that is there is shown.
                    const Value& imagen = rs["imagen"];
                    if (!imagen.IsNull() && ExisteFichero(fotos + CStr(imagen))) b.Imagen = fotos + CStr(imagen);
                    b.Texto = Texto(rs["nombre"]) + " " + Texto(rs["Apellidos"]);
                });
}

void CargarPanelFormasPago() {
    const std::string& fotos = sesion().CarpetaFotos;
    LlenarPanel(sesion().PanelFormasPago,
                "SELECT codigo, nombre, imagen, color,fpa_color from formapago where borrar = false and codigo <> 4 "
                "order by posicion",
                "fpa_color", [&](Recordset& rs, int n, ButtonRecord& b) {
                    const Value& imagen = rs["imagen"];
                    if (!imagen.IsNull()) b.Imagen = fotos + CStr(imagen);
                    b.Texto = "<F" + std::to_string(n) + "> " + Texto(rs["nombre"]);
                });
}

}  // namespace tpv
