// The touch side of the till screen: the panels of suppliers, sections,
// products, tariffs and open sales, what a press on each does, the filters
// and ordering, and the numeric pads.
#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/key_filter.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/servicios/tax_calculator.hpp"
#include "core/sesion/configuracion.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/colores.hpp"
#include "screens/frm_caja.hpp"

namespace tpv {

namespace {

constexpr const char* kRojo = "255";
constexpr const char* kBlanco = "16777215";

bool SinColorPropio(const Value& usaColor) {
    if (Texto(usaColor).empty()) return true;
    return IsNumeric(usaColor) && CDbl(usaColor) == 0.0;
}

// The products of one supplier or section, `columna` naming which.
void CargarProductos(const std::string& columna, const std::string& codigo, const std::string& color,
                     ButtonMatrix& panel) {
    Sesion& s = sesion();
    Recordset rs;
    rs.Open("Select * from Productos where borrar=false and " + columna + " = " + Trim(codigo) +
                " and mostrarencaja=-1 order by " + s.CampoOrdenItemsCaja,
            s.Conexion, adOpenKeyset, adLockOptimistic, adCmdText);
    PanelRegistros productos;
    int turno = 0;
    double stock = 0;  // a stock that can't be read keeps the one before, as the loop always did
    for (; !rs.Eof(); rs.MoveNext()) {
        ButtonRecord b;
        const std::string nombre = Texto(rs["Nombre"]);
        try {
            stock = CDbl(rs["Stock"]);
        } catch (const RuntimeError&) {
            MsgBox("Compruebe el stock del producto " + nombre, vbInformation);
        }
        b.TextoSuperior = nombre;
        b.Codigo = CStr(rs["codigo"]);
        if (SinColorPropio(rs["pro_color"])) {
            b.Color = color;
        } else {
            const Value& propio = rs["Color"];
            b.Color = propio.IsNull() ? kBlanco : CStr(propio);
            if (b.Color.empty()) {
                b.Color = s.ColoresGenericos[turno];
                turno = (turno + 1) % 4;
            }
        }
        const Value& minimo = rs["Stockminimo"];
        if (!minimo.IsNull() && IsNumeric(minimo) && stock < CDbl(minimo)) b.Color = kRojo;
        const Value& imagen = rs["imagen"];
        b.Imagen = imagen.IsNull() ? "" : s.CarpetaFotos + CStr(imagen);
        try {
            TaxCalculator::Instancia().CalcularImpuesto(CDbl(rs["Precio"]), CDbl(rs["iva"]), s.opciones.iva);
        } catch (const RuntimeError&) {
            // The tax of a row without a price is not needed to show its button.
        }
        b.Texto = nombre;
        productos.push_back(b);
    }
    rs.Close();
    s.PanelProductos = productos;
    panel.Recibo_Datos_De_Matriz(productos);
    panel.LimpiarPanel();
    panel.Cargar_Contenido_Boton();
}

void CargarEnPanel(ButtonMatrix& panel, const PanelRegistros& registros) {
    panel.Recibo_Datos_De_Matriz(registros);
    panel.LimpiarPanel();
    panel.Cargar_Contenido_Boton();
}

}  // namespace

void CargarPanelProductos(const std::string& codigo, const std::string& color, ButtonMatrix& panel) {
    CargarProductos("proveedor", codigo, color, panel);
}

void CargarPanelProductosSeccion(const std::string& codigo, const std::string& color, ButtonMatrix& panel) {
    CargarProductos("seccion", codigo, color, panel);
}

void frmCaja::cargarPanelEmpleadosLupa() {
    CargarEnPanel(PanelEmpLupa, sesion().PanelEmpleados);
    PanelEmpLupa.UsaColores = sesion().opciones.UtilizaColores_empleados;
}

void frmCaja::cargarPanelTarifas() {
    const Sesion& s = sesion();
    if (s.Tarifas.empty()) return;
    CargarEnPanel(PanelTarifas, s.Tarifas);
    PanelTarifas.UsaColores = true;
}

void frmCaja::cargarPanelSecciones() { CargarEnPanel(PanelSecciones, sesion().PanelSecciones); }

void frmCaja::cargarPanelProveedores() { CargarEnPanel(panelProveedores, sesion().PanelProveedores); }

void frmCaja::PanelProductos_Pulsado() {
    frUltimaVenta.visible = false;
    txtcod.SetText("");
    VisualizarArticulo(CLng(Value(PanelProductos.CodigoPulsado)));
}

void frmCaja::panelProveedores_Pulsado() {
    frUltimaVenta.visible = false;
    CargarPanelProductos(panelProveedores.CodigoPulsado, panelProveedores.ColorPulsado, PanelProductos);
    lblInfoFiltro.caption = "Productos de: " + panelProveedores.TextoPulsado;
    FocoSeguro(txtCodBarras);
}

void frmCaja::PanelSecciones_Pulsado() {
    frUltimaVenta.visible = false;
    CargarPanelProductosSeccion(PanelSecciones.CodigoPulsado, PanelSecciones.ColorPulsado, PanelProductos);
    lblInfoFiltro.caption = "Productos de: " + PanelSecciones.TextoPulsado;
    FocoSeguro(txtCodBarras);
}

void frmCaja::PanelVentas_Pulsado() {
    LimpiarPantalla();
    mostrarVenta(CLng(Value(PanelVentas.CodigoPulsado)));
    tmrColorear.SetEnabled(true);
    FocoEntrada();
}

void frmCaja::PanelTarifas_Pulsado() {
    Sesion& s = sesion();
    const std::string codigo = PanelTarifas.CodigoPulsado;
    RecordWriter::Instancia().Borrar(s.Conexion, "relaciones_fijas", s.NombreTienda, s.Multitienda,
                                     "indice='TarifaAplicada' and datoA = '" + s.ClaveTerminal + "'");
    if (codigo != "-1")
        s.Conexion.Execute("Insert into relaciones_fijas values ('TarifaAplicada'," + codigo + ",'" +
                           s.ClaveTerminal + "','')");
    fr_hijo.backColor = NumeroDeColor(PanelTarifas.ColorPulsado);
    s.TarifaActual = codigo == "-1" ? -1 : CLng(Value(codigo));
}

void frmCaja::cmdXProveedor_Click() {
    frUltimaVenta.visible = false;
    panelProveedores.visible = true;
    PanelSecciones.visible = false;
    GuardarFiltroPantallaTactil("Proveedores");
}

void frmCaja::cmdXSeccion_Click() {
    frUltimaVenta.visible = false;
    PanelSecciones.visible = true;
    panelProveedores.visible = false;
    GuardarFiltroPantallaTactil("Secciones");
}

void frmCaja::guardarOrdenItems(const std::string& campo) {
    Sesion& s = sesion();
    Recordset rs;
    lectura::AbrirParaCambiar(rs, "Select datoA,indice from relaciones_fijas where indice ='CampoOrdenItemsCaja'");
    if (rs.RecordCount() < 1) {
        rs.AddNew();
        rs["indice"] = Value("CampoOrdenItemsCaja");
    }
    rs["DatoA"] = Value(campo);
    rs.Update();
    rs.Close();
    if (campo != s.CampoOrdenItemsCaja) {
        s.CampoOrdenItemsCaja = campo;
        MsgBox("Para que este cambio haga efecto tiene que salir de caja.", vbOKOnly, "Modo de Ordenacion");
    }
}

int frmCaja::TeclaEnCaja(TextBox& caja, int tecla) {
    if (caja.selLength > 0 && caja.selLength == Len(caja.Text())) caja.SetText("");
    // The key goes as if typed at the end of the entry.
    caja.selStart = Len(caja.Text());
    caja.selLength = 0;
    const int decimales = caja.nombre == "txtPeso" ? 3 : sesion().opciones.NumDecimales;
    return KeyFilter::Instancia().FiltrarTecla(tecla, caja, decimales);
}

void frmCaja::PulsarDigito(TextBox* caja, int digito) {
    frUltimaVenta.visible = false;
    if (!caja) return;
    if (caja->selLength > 0 && caja->selLength == Len(caja->Text())) caja->SetText("");
    const int tecla = TeclaEnCaja(*caja, '0' + digito);
    if (tecla == 0) return;
    caja->SetText(caja->Text() + Chr(tecla));
    caja->selStart = Len(caja->Text());
}

void frmCaja::PulsarComa(TextBox* caja) {
    frUltimaVenta.visible = false;
    if (caja) {
        if (caja->nombre == "txtPeso") {
            if (caja->selLength > 0 && caja->selLength == Len(caja->Text())) caja->SetText("");
            if (caja->Text().empty()) {
                caja->SetText("0");
                caja->selStart = 1;
                caja->selLength = 0;
            }
        }
        const int tecla = TeclaEnCaja(*caja, KeyFilter::kComa);
        if (tecla != 0 && !caja->Text().empty()) {
            caja->SetText(caja->Text() + Chr(tecla));
            caja->selStart = Len(caja->Text());
        }
    }
    FocoSeguro(cmdAceptarNum);
}

void frmCaja::cmdAceptarNum_Click() {
    if (!ControlActivo) return;
    int enter = vbKeyReturn;
    if (ControlActivo == &txtcod)
        txtcod_KeyPress(enter);
    else if (ControlActivo == &txtCantidad)
        txtCantidad_KeyPress(enter);
    else if (ControlActivo == &txtPeso)
        txtPeso_KeyPress(enter);
    else if (ControlActivo == &txtPrecio)
        txtPrecio_KeyPress(enter);
}

}  // namespace tpv
