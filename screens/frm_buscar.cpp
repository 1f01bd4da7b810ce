#include "screens/frm_buscar.hpp"

#include <utility>

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/caption_translator.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/screen_fitter.hpp"
#include "core/sesion/sesion.hpp"
#include "screens/pantallas.hpp"

namespace tpv {

namespace {

constexpr const char* kTitulo = "Buscar";
constexpr double kFila = 720;         // height of a box and its gap
constexpr double kAltoCaja = 600;
constexpr double kAnchoEtiqueta = 2160;
constexpr double kAnchoCaja = 4800;

bool SoloDigitos(const TextBox& caja) {
    static const char* const kTelefonos[] = {"txttelefono", "txtmovil", "txtfijoemp", "txtmovilemp"};
    const std::string nombre = LCase(caja.nombre);
    for (const char* t : kTelefonos)
        if (nombre == t) return true;
    return false;
}

std::string Etiqueta(int codigo) {
    switch (codigo) {
        case 8: return "BORRAR";
        case 13: return "Intro";
        case 32: return "ESPACIO";
        default: return Chr(codigo);
    }
}

}  // namespace

void PonerTeclado(Ventana& v, TecladoLetras& teclas, Control* marco, double x, double y, double ancho, double alto,
                  const std::function<void(int codigo)>& pulsada) {
    constexpr double hueco = 60;
    // Rows of 11, 10, 10 and 10 keys; each row after the first starts half a key further right.
    const std::size_t finFila[] = {11, 21, 31, 41};
    std::size_t fila = 0, columna = 0;
    for (std::size_t i = 0; i < teclas.size(); ++i) {
        if (i == finFila[fila]) {
            ++fila;
            columna = 0;
        }
        const int codigo = kCodigosTeclado[i];
        double izquierda = x + columna * (ancho + hueco) + (fila ? ancho / 2 : 0);
        double anchoTecla = ancho;
        if (codigo == 32) anchoTecla = 2 * ancho + hueco;
        if (codigo == 13) izquierda += ancho + hueco;
        CommandButton& b = v.Poner(teclas[i], "bt_letra" + std::to_string(codigo), izquierda,
                                   y + fila * (alto + hueco), anchoTecla, alto, Etiqueta(codigo), marco);
        b.tag = std::to_string(codigo);
        b.tabStop = false;
        b.fontSize = 14;
        b.Click = [pulsada, codigo] { pulsada(codigo); };
        ++columna;
    }
}

void TeclaEnTexto(TextBox& caja, int codigo, bool soloDigitos) {
    std::string texto = caja.Text();
    if (codigo == 8) {
        if (texto.empty()) return;
        texto = Left(texto, Len(texto) - 1);
    } else {
        if (soloDigitos && (codigo < '0' || codigo > '9')) return;
        // A text wholly selected is emptied before the character goes in:
        // two changes, so the box's Change runs on the empty text too.
        if (!texto.empty() && caja.selStart == 0 && caja.selLength >= Len(texto)) {
            caja.selLength = 0;
            caja.SetText("");
        }
        texto = caja.Text() + Chr(codigo);
    }
    caja.selStart = Len(texto);
    caja.selLength = 0;
    caja.SetText(texto);
}

void frmBuscar::Disenar() {
    nombre = "frmBuscar";
    caption = kTitulo;
    width = kAnchoDiseno;
    height = kAltoDiseno;
    keyPreview = true;
    cajaActiva_ = nullptr;
    elegido_ = false;

    Poner(FrCli, "FrCli", 120, 120, 15120, 3720, "Buscar Clientes");
    Poner(FrProd, "FrProd", 120, 120, 15120, 3720, "Buscar Productos");
    DisenarClientes();
    DisenarProductos();

    Poner(ListBusClie, "ListBusClie", 120, 3960, 11400, 3480);
    ListBusClie.fontSize = 14;
    Poner(Auxiliar, "Auxiliar", 120, 3960, 1200, 3480);
    Auxiliar.visible = false;
    Poner(cmdbuscar, "cmdbuscar", 11760, 3960, 3480, 1080, "Buscar <F1>");
    Poner(cmdLimpiar, "cmdLimpiar", 11760, 5160, 3480, 1080, "Limpiar <F2>");
    Poner(cmdSalir, "cmdSalir", 11760, 6360, 3480, 1080, "Salir <F4>");
    for (CommandButton* b : {&cmdbuscar, &cmdLimpiar, &cmdSalir}) b->fontSize = 12;

    Poner(frTeclado, "frTeclado", 120, 7560, 15120, 3840, "");
    PonerTeclado(*this, bt_letra, &frTeclado, 120, 120, 1200, 840, [this](int codigo) {
        if (codigo == 13)
            cmdbuscar_Click();
        else
            PulsarLetra(codigo);
    });

    cmdbuscar.Click = [this] { cmdbuscar_Click(); };
    cmdLimpiar.Click = [this] { cmdLimpiar_Click(); };
    cmdSalir.Click = [this] { Unload(); };
    ListBusClie.DblClick = [this] { ListBusClie_DblClick(); };
    KeyDown = [this](int& keyCode, int) { BotonFuncion(keyCode); };
    txtnombre.Change = [this] {
        if (txtnombre.Text() != "*") BuscarClientesxNombre(txtnombre.Text());
    };
    txtNombreProd.Change = [this] {
        if (Len(txtNombreProd.Text()) >= 3) BuscarProductosxNombre(txtNombreProd.Text());
    };
    for (Control& c : controles) {
        auto* caja = dynamic_cast<TextBox*>(&c);
        if (!caja) continue;
        caja->GotFocus = [this, caja] { cajaActiva_ = caja; };
    }
    for (TextBox* caja : {&txtnombre, &txtapellidos, &txtTelefono, &txtMovil, &txtcodigo, &txtEmail, &txtDNI})
        caja->KeyPress = [this](int& tecla) {
            if (tecla == vbKeyReturn) {
                tecla = 0;
                CambiarFoco();
            }
        };
}

void frmBuscar::DisenarClientes() {
    struct Fila {
        Label* etiqueta;
        const char* nombreEtiqueta;
        const char* texto;
        TextBox* caja;
        const char* nombreCaja;
    };
    const Fila filas[] = {{&lblNombre, "lblNombre", "Nombre", &txtnombre, "txtnombre"},
                          {&lblApellidos, "lblApellidos", "Apellidos", &txtapellidos, "txtapellidos"},
                          {&lblTelefono, "lblTelefono", "Telefono Fijo", &txtTelefono, "txtTelefono"},
                          {&lblMovil, "lblMovil", "Movil", &txtMovil, "txtMovil"},
                          {&lblCodigo, "lblCodigo", "Codigo", &txtcodigo, "txtcodigo"},
                          {&lblEmail, "lblEmail", "E-mail", &txtEmail, "txtEmail"},
                          {&lblDNI, "lblDNI", "D.N.I.", &txtDNI, "txtDNI"}};
    // Two columns of boxes: four on the left, three and the dates on the right.
    int tab = 0;
    for (std::size_t i = 0; i < std::size(filas); ++i) {
        const double x = i < 4 ? 240 : 7680;
        const double y = 360 + (i % 4) * kFila;
        Poner(*filas[i].etiqueta, filas[i].nombreEtiqueta, x, y + 120, kAnchoEtiqueta, kAltoCaja, filas[i].texto,
              &FrCli);
        Poner(*filas[i].caja, filas[i].nombreCaja, x + kAnchoEtiqueta, y, kAnchoCaja, kAltoCaja, "", &FrCli);
        filas[i].caja->fontSize = 14;
        filas[i].caja->tabIndex = tab++;
    }
    const double y = 360 + 3 * kFila;
    Poner(lblDesde, "lblDesde", 7680, y + 120, 1080, kAltoCaja, "Desde", &FrCli);
    Poner(fechadesde, "fechadesde", 8760, y, 2520, kAltoCaja, "", &FrCli);
    Poner(lblHasta, "lblHasta", 11400, y + 120, 960, kAltoCaja, "Hasta", &FrCli);
    Poner(fechahasta, "fechahasta", 12360, y, 2520, kAltoCaja, "", &FrCli);
    fechadesde.SetValue(DateSerial(2000, 1, 1));
    fechahasta.SetValue(Date());
}

void frmBuscar::DisenarProductos() {
    Poner(lblNombreProd, "lblNombreProd", 240, 480, kAnchoEtiqueta, kAltoCaja, "Nombre", &FrProd);
    Poner(txtNombreProd, "txtNombreProd", 240 + kAnchoEtiqueta, 360, kAnchoCaja, kAltoCaja, "", &FrProd);
    Poner(lblCodigoProd, "lblCodigoProd", 240, 480 + kFila, kAnchoEtiqueta, kAltoCaja, "Codigo", &FrProd);
    Poner(txtCodigoProd, "txtCodigoProd", 240 + kAnchoEtiqueta, 360 + kFila, kAnchoCaja, kAltoCaja, "", &FrProd);
    Poner(lblPrecioProd, "lblPrecioProd", 240, 480 + 2 * kFila, kAnchoEtiqueta, kAltoCaja, "Precio", &FrProd);
    Poner(txtPrecioProd, "txtPrecioProd", 240 + kAnchoEtiqueta, 360 + 2 * kFila, kAnchoCaja, kAltoCaja, "",
          &FrProd);
    Poner(lblCodBarras, "lblCodBarras", 240, 480 + 3 * kFila, kAnchoEtiqueta, kAltoCaja, "Codigo de Barras",
          &FrProd);
    Poner(txtCodBarras, "txtCodBarras", 240 + kAnchoEtiqueta, 360 + 3 * kFila, kAnchoCaja, kAltoCaja, "", &FrProd);
    Poner(lblSeccion, "lblSeccion", 7680, 480, kAnchoEtiqueta, kAltoCaja, "Seccion", &FrProd);
    Poner(cmbComboProductos, "cmbComboProductos", 7680 + kAnchoEtiqueta, 360, kAnchoCaja, kAltoCaja, "", &FrProd);
    Poner(cmb_AuxComboProductos, "cmb_AuxComboProductos", 7680 + kAnchoEtiqueta, 360, 1200, kAltoCaja, "",
          &FrProd);
    Poner(lblProveedor, "lblProveedor", 7680, 480 + kFila, kAnchoEtiqueta, kAltoCaja, "Proveedor", &FrProd);
    Poner(cbProveedor, "cbProveedor", 7680 + kAnchoEtiqueta, 360 + kFila, kAnchoCaja, kAltoCaja, "", &FrProd);
    Poner(cbAuxProveedor, "cbAuxProveedor", 7680 + kAnchoEtiqueta, 360 + kFila, 1200, kAltoCaja, "", &FrProd);
    cmb_AuxComboProductos.visible = false;
    cbAuxProveedor.visible = false;
    int tab = 0;
    for (Control* c : std::initializer_list<Control*>{&txtNombreProd, &txtCodigoProd, &txtPrecioProd, &txtCodBarras,
                                                      &cmbComboProductos, &cbProveedor}) {
        c->fontSize = 14;
        c->tabIndex = tab++;
    }
}

void frmBuscar::Form_Load() {
    Sesion& s = sesion();
    ModoBusqueda = Unica<frmCaja>().ModoBusqueda;
    CaptionTranslator::Instancia().Traducir(s.Conexion, *this);
    ColourScheme colores;
    colores.Colorear(*this, s.EsquemaColores, s.Conexion);
    ScreenFitter::Instancia().Ajustar(s.Conexion, *this, s.AnchoPantalla, s.AltoPantalla, kAnchoDiseno, kAltoDiseno);
    pantallaInicial();
}

void frmBuscar::Form_Activate() {
    if (!cajaActiva_) frmCaja::FocoSeguro(ModoBusqueda == "Cl" ? txtnombre : txtNombreProd);
}

void frmBuscar::pantallaInicial() {
    FrProd.left = FrCli.left;
    FrProd.top = FrCli.top;
    const bool clientes = ModoBusqueda == "Cl";
    FrCli.visible = clientes;
    FrProd.visible = !clientes;
    if (clientes) return;
    Sesion& s = sesion();
    struct Combo {
        ComboBox* nombres;
        ComboBox* codigos;
        const char* sql;
    } combos[] = {{&cmbComboProductos, &cmb_AuxComboProductos, "Select * from Seccion where Borrar=false order by Nombre"},
                  {&cbProveedor, &cbAuxProveedor, "Select * from Proveedores where Borrar=false order by Nombre"}};
    for (const Combo& c : combos) {
        c.nombres->Clear();
        c.codigos->Clear();
        Recordset rs;
        rs.Open(c.sql, s.Conexion, adOpenStatic);
        for (; !rs.Eof(); rs.MoveNext()) {
            c.nombres->AddItem(Texto(rs.Get("nombre")));
            c.codigos->AddItem(Texto(rs.Get("codigo")));
        }
        rs.Close();
    }
}

void frmBuscar::Form_Unload(int&) {
    // Leaving the customer search without a choice leaves "-1" on the till.
    if (ModoBusqueda == "Cl" && !elegido_) Unica<frmCaja>().lblCodCliente.caption = "-1";
}

void frmBuscar::BotonFuncion(int tecla) {
    switch (tecla) {
        case vbKeyF1: cmdbuscar_Click(); break;
        case vbKeyF1 + 1: cmdLimpiar_Click(); break;
        case vbKeyF1 + 2:
            ListBusClie.SetFocus();
            if (ListBusClie.ListCount() > 0) ListBusClie.SetListIndex(0);
            break;
        case vbKeyF1 + 3: Unload(); break;
        default: break;
    }
}

bool frmBuscar::LlenarListas(const std::string& sql, bool conApellidos, const std::string& codigo) {
    Recordset rs;
    rs.Open(sql, sesion().Conexion, adOpenStatic);
    const bool hay = !rs.Eof();
    for (; !rs.Eof(); rs.MoveNext()) {
        std::string texto = Texto(rs.Get("nombre"));
        if (conApellidos) texto += " " + Texto(rs.Get("apellidos"));
        ListBusClie.AddItem(texto);
        Auxiliar.AddItem(Texto(rs.Get(codigo)));
    }
    rs.Close();
    return hay;
}

void frmBuscar::BuscarClientesxNombre(const std::string& texto) {
    ListBusClie.Clear();
    Auxiliar.Clear();
    if (!LlenarListas("Select * from clientes where nombre like '" + texto + "%' and borrar = false order by nombre",
                      true, "codigo"))
        MsgBox("No existe ningún cliente con esas condiciones", vbOKOnly, kTitulo);
}

void frmBuscar::BuscarProductosxNombre(const std::string& texto) {
    ListBusClie.Clear();
    Auxiliar.Clear();
    if (!LlenarListas("Select * from productos where nombre like '" + texto + "%' and borrar =0 order by nombre",
                      false, "codigo"))
        MsgBox("No existe ningún producto con esas condiciones", vbOKOnly, kTitulo);
}

void frmBuscar::cmdbuscar_Click() {
    if (ModoBusqueda == "Cl")
        BuscarClientes();
    else
        BuscarProductos();
}

void frmBuscar::BuscarClientes() {
    TextBox* const cajas[] = {&txtnombre, &txtapellidos, &txtTelefono, &txtMovil, &txtcodigo, &txtEmail, &txtDNI};
    bool vacias = true;
    for (const TextBox* c : cajas) vacias = vacias && c->Text().empty();
    // The date pickers always hold a date, so this never stops a search.
    if (vacias && CStr(Value(fechadesde.Value())).empty() && CStr(Value(fechahasta.Value())).empty()) {
        MsgBox("Debe rellenar algún dato para poder buscar", vbOKOnly, kTitulo);
        return;
    }
    if (txtnombre.Text() == "*") txtnombre.SetText("");
    ListBusClie.Clear();
    Auxiliar.Clear();

    // The D.N.I. box searches the e-mail column, as the shops are used to.
    const std::pair<TextBox*, std::string> piezas[] = {
        {&txtnombre, " and Nombre like '" + txtnombre.Text() + "%'"},
        {&txtapellidos, " and Apellidos like '" + txtapellidos.Text() + "%'"},
        {&txtTelefono, " and Telefono1 like '" + txtTelefono.Text() + "%'"},
        {&txtMovil, " and telefono2 like '" + txtMovil.Text() + "%'"},
        {&txtcodigo, " and codigocliente like '" + txtcodigo.Text() + "'"},
        {&txtEmail, " and email like '" + txtEmail.Text() + "%'"},
        {&txtDNI, " and email like '" + txtDNI.Text() + "%'"}};
    std::string sql = std::string("Select * from Clientes ") + " where codigo <> null and borrar = false";
    for (const auto& [caja, pieza] : piezas)
        if (!caja->Text().empty()) sql += pieza;
    sql += " order by nombre";
    if (!LlenarListas(sql, true, "codigo")) MsgBox("No existe ningún cliente con esas condiciones", vbOKOnly, kTitulo);

    for (TextBox* c : cajas)
        if (c->Text() == "%") c->SetText("*");
    if (ListBusClie.ListCount() > 0) CambiarFoco();
}

void frmBuscar::BuscarProductos() {
    std::string sql;
    const std::string& nombreProd = txtNombreProd.Text();
    if (nombreProd.empty() || nombreProd == "*") {
        txtNombreProd.SetText("%");
        sql = "select * from productos where Nombre like '" + Replace(txtNombreProd.Text(), "'", "''") + "' ";
    } else {
        sql = "select * from productos where Nombre like '" + nombreProd + "%'";
    }
    if (!txtPrecioProd.Text().empty()) sql += " and precio = " + Replace(txtPrecioProd.Text(), ",", ".");
    if (!txtCodigoProd.Text().empty()) sql += " and codigocliente like '" + txtCodigoProd.Text() + "%'";
    if (cmbComboProductos.ListIndex() >= 0)
        sql += " and seccion = " + cmb_AuxComboProductos.List(cmbComboProductos.ListIndex());
    if (cbProveedor.ListIndex() >= 0) sql += " and proveedor = " + cbAuxProveedor.List(cbProveedor.ListIndex());
    sql += " and Borrar=0 order by Nombre";
    if (!txtCodBarras.Text().empty()) {
        const std::string& barras = txtCodBarras.Text();
        sql = std::string("SELECT distinct(productos.Codigo) as codigo,nombre ") +
              "  FROM productos LEFT JOIN productos_CodigosExtra ON productos.Codigo = "
              "productos_CodigosExtra.Codigo " +
              " WHERE (((productos_CodigosExtra.Codigo_Extra) like '" + barras + "')) or codigocliente = '" + barras +
              "'";
    }
    ListBusClie.Clear();
    Auxiliar.Clear();
    if (!LlenarListas(sql, false, "codigo")) MsgBox("No existe ningún servicio con esas condiciones", vbOKOnly, kTitulo);
    if (txtNombreProd.Text() == "%") txtNombreProd.SetText("*");
}

void frmBuscar::cmdLimpiar_Click() {
    for (TextBox* c : {&txtnombre, &txtapellidos, &txtTelefono, &txtMovil, &txtcodigo, &txtEmail, &txtDNI,
                       &txtNombreProd, &txtCodigoProd, &txtPrecioProd, &txtCodBarras})
        if (!c->Text().empty()) c->SetText("");
    fechadesde.SetValue(DateSerial(2000, 1, 1));
    fechahasta.SetValue(Date());
    for (ComboBox* c : {&cmbComboProductos, &cmb_AuxComboProductos, &cbProveedor, &cbAuxProveedor})
        c->SetListIndex(-1);
    ListBusClie.Clear();
    Auxiliar.Clear();
    frmCaja::FocoSeguro(ModoBusqueda == "Cl" ? txtnombre : txtNombreProd);
}

void frmBuscar::CambiarFoco() {
    static const char* const kOrden[] = {"txtnombre", "txtapellidos", "txttelefono", "txtmovil",
                                         "txtcodigo", "txtemail",     "txtdni"};
    const Control* activo = ActiveControl();
    if (!activo) return;
    const std::string actual = LCase(activo->nombre);
    for (std::size_t i = 0; i < std::size(kOrden); ++i) {
        if (actual != kOrden[i]) continue;
        if (Control* siguiente = Buscar(kOrden[(i + 1) % std::size(kOrden)])) frmCaja::FocoSeguro(*siguiente);
        return;
    }
}

TextBox* frmBuscar::CajaActiva() {
    if (cajaActiva_) return cajaActiva_;
    return ModoBusqueda == "Cl" ? &txtnombre : &txtNombreProd;
}

void frmBuscar::PulsarLetra(int codigo) {
    TextBox& caja = *CajaActiva();
    TeclaEnTexto(caja, codigo, SoloDigitos(caja));
}

void frmBuscar::ListBusClie_DblClick() {
    const long fila = ListBusClie.ListIndex();
    if (fila < 0 || fila >= Auxiliar.ListCount()) return;
    const std::string codigo = Auxiliar.List(fila);
    frmCaja& caja = Unica<frmCaja>();
    if (ModoBusqueda == "Cl")
        caja.lblCodCliente.caption = codigo;
    else
        caja.lblCodProd.caption = codigo;
    elegido_ = true;
    Unload();
}

}  // namespace tpv
