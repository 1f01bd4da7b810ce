#include "screens/frm_clientes.hpp"

#include "core/datos/recordset.hpp"
#include "core/runtime/calendario.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/caption_translator.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/field_list.hpp"
#include "core/servicios/fuente_informes.hpp"
#include "core/servicios/key_filter.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/servicios/screen_fitter.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/informe.hpp"
#include "screens/colores.hpp"
#include "screens/pantallas.hpp"

namespace tpv {

namespace {

constexpr double kFila = 720;
constexpr double kAltoCaja = 600;
constexpr double kAnchoEtiqueta = 2400;
constexpr double kAnchoCaja = 4560;

// The decimals each numeric box lets through; -1 for the boxes without a filter.
int DecimalesDe(const frmClientes& f, const TextBox& caja) {
    if (&caja == &f.txtTlfFijo || &caja == &f.txtTlfMovil) return 0;
    if (&caja == &f.txtDesc) return 2;
    return -1;
}

}  // namespace

void frmClientes::Disenar() {
    nombre = "frmClientes";
    caption = "Nuevo Cliente";
    width = kAnchoDiseno;
    height = kAltoDiseno;
    cajaActiva_ = nullptr;

    Poner(frAltaCli, "frAltaCli", 120, 120, 15120, 7200, "Alta de Cliente");
    struct Fila {
        Label* etiqueta;
        const char* nombreEtiqueta;
        const char* texto;
        Control* caja;
        const char* nombreCaja;
    };
    const Fila filas[] = {{&lblTituloCod, "lblTituloCod", "Numero", &lblCod, "lblCod"},
                          {&lblCodigo, "lblCodigo", "Codigo (*)", &txtcodigo, "txtcodigo"},
                          {&lblNombre, "lblNombre", "Nombre (*)", &txtnombre, "txtnombre"},
                          {&lblApellidos, "lblApellidos", "Apellidos (*)", &txtapellidos, "txtapellidos"},
                          {&lblSexo, "lblSexo", "Sexo", &cmbSexo, "cmbSexo"},
                          {&lblNif, "lblNif", "N.I.F.", &txtNif, "txtNif"},
                          {&lblTlfFijo, "lblTlfFijo", "Telefono Fijo", &txtTlfFijo, "txtTlfFijo"},
                          {&lblTlfMovil, "lblTlfMovil", "Telefono Movil", &txtTlfMovil, "txtTlfMovil"},
                          {&lblDireccion, "lblDireccion", "Direccion", &txtDireccion, "txtDireccion"},
                          {&lblPoblacion, "lblPoblacion", "Poblacion", &txtPoblacion, "txtPoblacion"},
                          {&lblProvincia, "lblProvincia", "Provincia", &txtProvincia, "txtProvincia"},
                          {&lblCP, "lblCP", "C.P.", &txtCP, "txtCP"},
                          {&lblDesc, "lblDesc", "Descuento %", &txtDesc, "txtDesc"},
                          {&lblEmail, "lblEmail", "E-mail", &txtEmail, "txtEmail"},
                          {&lblNacimiento, "lblNacimiento", "Nacimiento (dia/mes)", &txtDia, "txtDia"},
                          {&lblRecomendadoPor, "lblRecomendadoPor", "Recomendado por", &txtRecomendadoPor,
                           "txtRecomendadoPor"}};
    int tab = 0;
    for (std::size_t i = 0; i < std::size(filas); ++i) {
        const double x = i < 8 ? 240 : 7680;
        const double y = 360 + (i % 8) * kFila;
        const double ancho = filas[i].caja == &txtDia ? 960 : kAnchoCaja;
        Poner(*filas[i].etiqueta, filas[i].nombreEtiqueta, x, y + 120, kAnchoEtiqueta, kAltoCaja, filas[i].texto,
              &frAltaCli);
        Control& c = *filas[i].caja;
        if (auto* t = dynamic_cast<TextBox*>(&c))
            Poner(*t, filas[i].nombreCaja, x + kAnchoEtiqueta, y, ancho, kAltoCaja, "", &frAltaCli);
        else if (auto* l = dynamic_cast<Label*>(&c))
            Poner(*l, filas[i].nombreCaja, x + kAnchoEtiqueta, y, ancho, kAltoCaja, "", &frAltaCli);
        else
            Poner(cmbSexo, filas[i].nombreCaja, x + kAnchoEtiqueta, y, ancho, kAltoCaja, "", &frAltaCli);
        c.fontSize = 14;
        c.tabIndex = tab++;
        if (filas[i].caja == &txtDia) {
            Poner(lblBarra, "lblBarra", x + kAnchoEtiqueta + 1020, y + 120, 240, kAltoCaja, "/", &frAltaCli);
            Poner(TxtMes, "TxtMes", x + kAnchoEtiqueta + 1320, y, 960, kAltoCaja, "", &frAltaCli);
            TxtMes.fontSize = 14;
            TxtMes.tabIndex = tab++;
        }
    }
    cmbSexo.AddItem("Mujer");
    cmbSexo.AddItem("Hombre");
    txtDia.maxLength = 2;
    TxtMes.maxLength = 2;

    Poner(cmdAceptar, "cmdAceptar", 7680, 6240, 2280, 840, "Aceptar", &frAltaCli);
    Poner(cmdCancelar, "cmdCancelar", 10080, 6240, 2280, 840, "Cancelar", &frAltaCli);
    Poner(cmdSalir_Alta, "cmdSalir_Alta", 12480, 6240, 2280, 840, "Salir", &frAltaCli);
    cmdSalir_Alta.visible = false;
    for (CommandButton* b : {&cmdAceptar, &cmdCancelar, &cmdSalir_Alta}) {
        b->fontSize = 12;
        b->tabIndex = tab++;
    }

    Poner(frTeclado, "frTeclado", 120, 7440, 15120, 3960, "");
    PonerTeclado(*this, bt_letra, &frTeclado, 120, 120, 1200, 840, [this](int codigo) { PulsarLetra(codigo); });

    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
    cmdSalir_Alta.Click = [this] { Unload(); };
    txtnombre.KeyPress = [this](int& tecla) {
        if (tecla != vbKeyReturn) return;
        tecla = 0;
        frmCaja::FocoSeguro(txtapellidos);
    };
    for (TextBox* caja : {&txtTlfFijo, &txtTlfMovil, &txtDesc}) {
        const int decimales = DecimalesDe(*this, *caja);
        caja->KeyPress = [caja, decimales](int& tecla) {
            tecla = KeyFilter::Instancia().FiltrarTecla(tecla, *caja, decimales);
        };
    }
    // A month out of 1 to 12 goes at once.
    TxtMes.Change = [this] {
        if (TxtMes.Text().empty()) return;
        const double mes = Val(TxtMes.Text());
        if (mes < 1 || mes > 12) TxtMes.SetText("");
    };
    for (Control& c : controles) {
        auto* caja = dynamic_cast<TextBox*>(&c);
        if (!caja) continue;
        caja->GotFocus = [this, caja] {
            cajaActiva_ = caja;
            caja->backColor = NumeroDeColor(ColorFoco);
        };
        caja->LostFocus = [caja] { caja->backColor = 0xFFFFFF; };
    }
}

void frmClientes::Form_Load() {
    Sesion& s = sesion();
    CaptionTranslator::Instancia().Traducir(s.Conexion, *this);
    ColourScheme colores;
    colores.Colorear(*this, s.EsquemaColores, s.Conexion);
    ColorFoco = colores.ColorFoco(s.Conexion, s.EsquemaColores);
    ScreenFitter::Instancia().Ajustar(s.Conexion, *this, s.AnchoPantalla, s.AltoPantalla, kAnchoDiseno, kAltoDiseno);
    darcodigo();
}

void frmClientes::Form_Activate() {
    if (!cajaActiva_) frmCaja::FocoSeguro(txtnombre);
}

void frmClientes::darcodigo() {
    Connection& cn = sesion().Conexion;
    Recordset rs;
    rs.Open("select max(codigo) as num from Clientes", cn, adOpenStatic);
    if (rs.Eof() || rs.Get("num").IsNull())
        lblCod.caption = "1";
    else
        lblCod.caption = CStr(Value(CDbl(rs.Get("num")) + 1));
    rs.Close();

    rs.Open("select max(codigocliente) as num2 from Clientes", cn, adOpenStatic);
    if (rs.Eof() || rs.Get("num2").IsNull())
        txtcodigo.SetText("1");
    else if (IsNumeric(rs.Get("num2")))
        txtcodigo.SetText(CStr(Value(CDbl(rs.Get("num2")) + 1)));
    else
        txtcodigo.SetText("");
    rs.Close();

    // The greatest card code is the greatest in text order, so the one after
    // it may be taken ("9" is above "10"): then the customer's own number is
    // tried, and the numbers after it until one is free.
    if (txtcodigo.Text().empty()) return;
    std::int32_t encontrado = -1;
    ExisteCodigo(txtcodigo.Text(), encontrado);
    if (encontrado == -1) return;
    txtcodigo.SetText(lblCod.caption);
    for (ExisteCodigo(txtcodigo.Text(), encontrado); encontrado != -1; ExisteCodigo(txtcodigo.Text(), encontrado))
        txtcodigo.SetText(CStr(Value(CDbl(Value(txtcodigo.Text())) + 1)));
}

void frmClientes::ExisteCodigo(const std::string& codigo, std::int32_t& encontrado) {
    Recordset rs;
    rs.Open("Select codigo from clientes where CODIGOCLIENTE = '" + codigo + "' and codigo <> " + lblCod.caption,
            sesion().Conexion, adOpenStatic);
    encontrado = rs.Eof() ? -1 : CLng(rs.Get("codigo"));
    rs.Close();
}

void frmClientes::GuardarCliente() {
    Sesion& s = sesion();
    const bool conFecha = !txtDia.Text().empty() && !TxtMes.Text().empty();
    const std::string nacimiento = conFecha ? txtDia.Text() + "/" + TxtMes.Text() + "/2000" : "1/1/2000";
    const std::string descuento = Replace(txtDesc.Text(), ".", ",");
    std::string campos;
    campos += "Codigo=" + lblCod.caption + "|";
    campos += "CodigoCliente=" + txtcodigo.Text() + "|";
    campos += "Nombre=" + txtnombre.Text() + "|";
    campos += "Apellidos=" + txtapellidos.Text() + "|";
    campos += "Sexo=" + cmbSexo.Text() + "|";
    campos += "NIF=" + txtNif.Text() + "|";
    campos += "Telefono1=" + txtTlfFijo.Text() + "|";
    campos += "Telefono2=" + txtTlfMovil.Text() + "|";
    campos += "Direccion=" + txtDireccion.Text() + "|";
    campos += "Poblacion=" + txtPoblacion.Text() + "|";
    campos += "Provincia=" + txtProvincia.Text() + "|";
    campos += "CP=" + txtCP.Text() + "|";
    campos += "Descuento=" + descuento + "|";
    campos += "Email=" + txtEmail.Text() + "|";
    campos += "Nacimiento=" + nacimiento + "|";
    campos += FieldList::Par("Ingreso", Value(Date()));
    campos += FieldList::Par("UltimaVisita", Value(Date()));
    campos += "ClientesTexto3=" + txtRecomendadoPor.Text() + "|";
    RecordWriter::Instancia().Insertar(s.Conexion, "Clientes", campos, s.NombreTienda, s.Multitienda, "");

    RegistroCliente nuevo;
    nuevo.Codigo = CLng(Value(lblCod.caption));
    nuevo.Nombre = txtnombre.Text();
    nuevo.Apellidos = txtapellidos.Text();
    nuevo.Nacimiento = CDate(Value(nacimiento));
    nuevo.Descuento = IsNumeric(Value(descuento)) ? CDbl(Value(descuento)) : 0.0;
    nuevo.ActivarDinDep = false;
    nuevo.DinDep = 0.0;
    s.Clientes.push_back(std::move(nuevo));
}

void frmClientes::ImprimirContratoConfi(const std::string& codigo) {
    Sesion& s = sesion();
    if (!s.opciones.privacidad) return;
    try {
        Connection informes;
        informes.Open(ResolverFuenteDatos(kFuenteInformes));
        Recordset cliente;
        cliente.Open("Select * from clientes where codigo = " + codigo, s.Conexion, adOpenStatic);
        if (!cliente.Eof()) {
            Recordset tienda;
            tienda.Open("Select nombre,direccion,poblacion,provincia,cp,cif,TextoPrivacidad  from opciones",
                        s.Conexion, adOpenStatic);
            const bool hayTienda = !tienda.Eof();
            auto deTienda = [&](const char* campo) { return hayTienda ? Texto(tienda.Get(campo)) : std::string(); };
            informes.Execute("Delete * from informes");
            Recordset fila;
            fila.Open("Select * from informes", informes, adOpenKeyset, adLockOptimistic);
            fila.AddNew();
            fila.Set("Texto1", Texto(cliente.Get("nombre")) + " " + Texto(cliente.Get("Apellidos")));
            fila.Set("Texto2", deTienda("nombre"));
            fila.Set("Texto3", deTienda("Direccion") + " " + deTienda("cp") + " " + deTienda("poblacion") + " " +
                                   deTienda("provincia"));
            const std::string privacidad = deTienda("TextoPrivacidad");
            std::string report = "N_protecciondatosgenerico.rpt";
            if (!privacidad.empty()) {
                fila.Set("Memo2", privacidad);
                report = "N_protecciondatosusuario.rpt";
            }
            fila.Update();
            fila.Close();
            tienda.Close();
            // The wait screen goes by itself after a few seconds.
            Unica<frmEsperar>().Show();
            std::string resultado;
            ImprimirReport(report, resultado, [] { AnfitrionActual().HacerEventos(); });
        }
        cliente.Close();
    } catch (const std::exception& e) {
        MsgBox(e.what(), vbCritical);
    }
}

void frmClientes::cmdAceptar_Click() {
    struct Requisito {
        TextBox* caja;
        const char* texto;
    };
    const Requisito requisitos[] = {{&txtcodigo, "Es necesario que escriba un codigo para el cliente"},
                                    {&txtnombre, "Es necesario que escriba un Nombre"},
                                    {&txtapellidos, "Es necesario que escriba los Apellidos"}};
    for (const Requisito& r : requisitos) {
        if (!r.caja->Text().empty()) continue;
        MsgBox(r.texto, vbCritical);
        frmCaja::FocoSeguro(*r.caja);
        return;
    }
    GuardarCliente();
    ImprimirContratoConfi(lblCod.caption);
    Unica<frmCaja>().lblCodCliente.caption = lblCod.caption;
    if (sesion().opciones.privacidad) {
        // The card stays for the customer to sign the contract; it is saved
        // already, so it can't be saved twice.
        cmdSalir_Alta.visible = true;
        cmdAceptar.enabled = false;
        return;
    }
    Unload();
}

void frmClientes::cmdCancelar_Click() {
    frAltaCli.visible = false;
    Unica<frmCaja>().lblCodCliente.caption = "-1";
    Unload();
}

void frmClientes::PulsarLetra(int codigo) {
    TextBox& caja = cajaActiva_ ? *cajaActiva_ : txtnombre;
    if (codigo == vbKeyReturn) {
        if (Control* siguiente = SiguienteEnTabulacion(&caja)) frmCaja::FocoSeguro(*siguiente);
        return;
    }
    const int decimales = DecimalesDe(*this, caja);
    if (decimales >= 0)
        KeyFilter::Instancia().PulsarTeclaPad(caja, codigo, decimales);
    else
        TeclaEnTexto(caja, codigo, false);
}

}  // namespace tpv
