// The till screen laid out on its design size, 15360 x 11520 twips. The
// right half always holds the sale: its number, employee, customer, the
// grid, the total and the button to finish. The left half holds the code
// entry and the product just read, or, in touch mode, the panels of
// suppliers, sections and products over it. Two rows of big buttons and a
// strip with help and exit run along the bottom.
#include "screens/frm_caja.hpp"
#include "screens/pantallas.hpp"

namespace tpv {

namespace {

// Columns and rows of the layout.
constexpr double kMargen = 240;
constexpr double kDerecha = 7800;                           // left edge of the sale's half
constexpr double kAnchoDerecha = kAnchoDiseno - kDerecha - kMargen;  // 7320
constexpr double kAltoArriba = 9000;                        // where the button rows start
constexpr double kAltoBoton = 720;
constexpr double kFuenteGrande = 14;
constexpr double kFuenteTotal = 24;

}  // namespace

void frmCaja::Disenar() {
    nombre = "frmCaja";
    caption = "Caja";
    width = kAnchoDiseno;
    height = kAltoDiseno;
    keyPreview = false;
    Poner(fr_Padre, "fr_Padre", 0, 0, kAnchoDiseno, kAltoDiseno);
    Poner(fr_hijo, "fr_hijo", 0, 0, kAnchoDiseno, kAltoArriba, "", &fr_Padre);
    DisenarCabecera();
    DisenarCodigo();
    DisenarVenta();
    DisenarTactil();
    DisenarPeso();
    DisenarPaneles();
    DisenarBotonera();
    DisenarTimers();
    // Tab order: the entries of the sale flow first, then the rest as laid out.
    int orden = 0;
    for (TextBox* t : {&txtcod, &txtCantidad, &txtCodBarras, &txtPeso, &txtPrecio}) t->tabIndex = orden++;
    for (Control& c : controles)
        if (c.tabIndex == 0 && &c != &txtcod) c.tabIndex = orden++;
    Conectar();
}

void frmCaja::DisenarCabecera() {
    const double x = kDerecha;
    Poner(lblNumVenta, "lblNumVenta", x, 120, 1800, 480, "", &fr_hijo);
    lblNumVenta.fontSize = kFuenteGrande;
    Poner(lbl_Empleado, "lbl_Empleado", x + 1920, 120, 3240, 480, "", &fr_hijo);
    lbl_Empleado.toolTipText = "Empleado que apertura la venta";
    Poner(lblHora, "lblHora", x + 5280, 120, 2040, 480, "", &fr_hijo);
    lblHora.fontSize = kFuenteGrande;
    Poner(lblCodCliente, "lblCodCliente", x, 720, 900, 480, "0", &fr_hijo);
    Poner(txtNomCliente, "txtNomCliente", x + 1020, 720, 3780, 480, "", &fr_hijo);
    Poner(cmdBuscarCliente, "cmdBuscarCliente", x + 4920, 720, 1140, 480, "Buscar <F4>", &fr_hijo);
    Poner(Command10, "Command10", x + 6180, 720, 1140, 480, "Nuevo Cliente", &fr_hijo);
    Poner(Fecha1, "Fecha1", x, 1320, 2160, 480, "", &fr_hijo);
    Poner(lblUltFactura, "lblUltFactura", x + 2280, 1320, 2400, 480, "", &fr_hijo);
    Poner(Bandera, "Bandera", x + 6600, 1320, 720, 480, "", &fr_hijo);
}

void frmCaja::DisenarCodigo() {
    Poner(txtcod, "txtcod", kMargen, 240, 4440, 720, "", &fr_hijo);
    txtcod.fontSize = kFuenteGrande;
    Poner(Picture1, "Picture1", 4800, 240, 720, 720, "", &fr_hijo);
    Picture1.toolTipText = "Buscar producto <F6>";
    Picture1.picture = "tpv:lupa";  // a magnifying glass the window draws
    Poner(lblCant, "lblCant", 5640, 0, 1920, 240, "Cantidad", &fr_hijo);
    Poner(txtCantidad, "txtCantidad", 5640, 240, 1920, 720, "", &fr_hijo);
    txtCantidad.fontSize = kFuenteGrande;
    Poner(lblCodProd, "lblCodProd", kMargen, 1080, 1320, 480, "", &fr_hijo);
    Poner(lblnomProd, "lblnomProd", 1680, 1080, 5880, 480, "", &fr_hijo);
    lblnomProd.fontSize = 12;
    Poner(lblStock, "lblStock", kMargen, 1680, 2280, 480, "", &fr_hijo);
    Poner(lblPedido, "lblPedido", 2640, 1680, 4920, 480, "", &fr_hijo);
    Poner(lblUbicacion, "lblUbicacion", kMargen, 2280, 3480, 480, "", &fr_hijo);
    Poner(lblDescuentoInfo, "lblDescuentoInfo", 3840, 2280, 3720, 480, "", &fr_hijo);
    Poner(picImagen, "picImagen", kMargen, 2880, 3480, 2880, "", &fr_hijo);
    Poner(lblInfoAbono, "lblInfoAbono", kMargen, 5880, 3480, 480, "", &fr_hijo);
    Poner(frUltimaLinea, "frUltimaLinea", kMargen, 6480, 3480, 1080, "", &fr_hijo);
    Poner(txtUltProd, "txtUltProd", 0, 0, 3480, 480, "", &frUltimaLinea);
    txtUltProd.locked = true;
    Poner(txtUltCant, "txtUltCant", 0, 600, 1680, 480, "0", &frUltimaLinea);
    txtUltCant.locked = true;
    Poner(txtTArticulos, "txtTArticulos", kMargen, 7680, 3480, 480, "0", &fr_hijo);
    txtTArticulos.locked = true;
    txtTArticulos.toolTipText = "Articulos de la venta";
    // The main pad: 7 8 9 / 4 5 6 / 1 2 3 / 0 , erase, and accept below it.
    Teclado(btnNumerico_Cobro, "btnNumerico_Cobro", &fr_hijo, 3840, 2880, 1080);
    Poner(cmd_nuevoCobro, "cmd_nuevoCobro", 3840 + 2 * 1200, 2880 + 3 * 1092, 1080, 972, "C", &fr_hijo);
    Poner(cmdAceptarNum, "cmdAceptarNum", 3840, 2880 + 4 * 1092, 3480, 960, "Aceptar", &fr_hijo);
}

void frmCaja::DisenarVenta() {
    const double x = kDerecha;
    Poner(FGCaja, "FGCaja", x, 1920, kAnchoDerecha, 5280, "", &fr_hijo);
    FGCaja = NuevaGridVenta();
    FGCaja.nombre = "FGCaja";
    FGCaja.left = x;
    FGCaja.top = 1920;
    FGCaja.width = kAnchoDerecha;
    FGCaja.height = 5280;
    Poner(frTarifas, "frTarifas", x, 6360, kAnchoDerecha, 840, "", &fr_hijo);
    Poner(PanelTarifas, "PanelTarifas", 0, 0, kAnchoDerecha, 840, "", &frTarifas);
    PanelTarifas.Separacion = 60;
    PanelTarifas.TamanoBoton = 720;
    Poner(fr_SeparacionH1, "fr_SeparacionH1", x, 7200, kAnchoDerecha, 60, "", &fr_hijo);
    Poner(CajaText_Pago, "CajaText_Pago", x, 7320, 4080, 960, "", &fr_hijo);
    CajaText_Pago.fontSize = kFuenteTotal;
    CajaText_Pago.locked = true;
    CajaText_Pago.tabStop = false;
    Poner(cmdTerminarVenta, "cmdTerminarVenta", x + 4200, 7320, 3120, 960, "Terminar Venta <F9>", &fr_hijo);
    cmdTerminarVenta.fontSize = 12;
    Poner(cmd_DescPorcentaje, "cmd_DescPorcentaje", x, 8400, 2400, 480, "Descuento X Porcentaje", &fr_hijo);
    Poner(cmd_DescImporte, "cmd_DescImporte", x + 2520, 8400, 2400, 480, "Descuento X Importe", &fr_hijo);
    Poner(cmdIngDeposito, "cmdIngDeposito", x + 5040, 8400, 2280, 480, "Ing. Deposito", &fr_hijo);
    // The totals of the sale just closed, over the total until the next key.
    Poner(frUltimaVenta, "frUltimaVenta", x, 7190, kAnchoDerecha, 1100, "Ultima Venta", &fr_Padre);
    Poner(txtTotal_U_V, "txtTotal_U_V", 120, 240, 1800, 720, "", &frUltimaVenta);
    Poner(txt_Entrega_U_V, "txt_Entrega_U_V", 2040, 240, 1800, 720, "", &frUltimaVenta);
    Poner(txt_Devolucion_U_V, "txt_Devolucion_U_V", 3960, 240, 1800, 720, "", &frUltimaVenta);
    Poner(lblForma_U_V, "lblForma_U_V", 5880, 240, 1320, 360, "", &frUltimaVenta);
    Poner(lblNumProductos, "lblNumProductos", 5880, 600, 1320, 360, "", &frUltimaVenta);
    for (TextBox* t : {&txtTotal_U_V, &txt_Entrega_U_V, &txt_Devolucion_U_V}) {
        t->locked = true;
        t->tabStop = false;
    }
    frUltimaVenta.visible = false;
}

void frmCaja::DisenarTactil() {
    Poner(frTactil, "frTactil", 0, 0, kDerecha - 120, kAltoArriba, "", &fr_Padre);
    Poner(txtCodBarras, "txtCodBarras", kMargen, 120, 3600, 600, "", &frTactil);
    txtCodBarras.fontSize = kFuenteGrande;
    Poner(lblInfoFiltro, "lblInfoFiltro", 3960, 120, 3600, 600, "", &frTactil);
    Poner(cmdXProveedor, "cmdXProveedor", kMargen, 840, 1800, kAltoBoton, "Proveedores", &frTactil);
    Poner(cmdXSeccion, "cmdXSeccion", 2160, 840, 1800, kAltoBoton, "Secciones", &frTactil);
    Poner(cmdTerminarVenta_Tactil, "cmdTerminarVenta_Tactil", 4080, 840, 3480, kAltoBoton, "Terminar Venta <F9>",
          &frTactil);
    Poner(panelProveedores, "panelProveedores", kMargen, 1680, 7320, 1800, "", &frTactil);
    Poner(PanelSecciones, "PanelSecciones", kMargen, 1680, 7320, 1800, "", &frTactil);
    for (ButtonMatrix* p : {&panelProveedores, &PanelSecciones}) {
        p->Separacion = 120;
        p->TamanoBoton = 1320;
    }
    Poner(frProductos, "frProductos", 120, 3600, 7440, 5280, "", &frTactil);
    Poner(PanelProductos, "PanelProductos", 120, 120, 7200, 5040, "", &frProductos);
    PanelProductos.Separacion = 120;
    PanelProductos.TamanoBoton = 1560;
}

void frmCaja::DisenarPeso() {
    // The weighed item; placed over the grid or, in touch mode, over the products.
    Poner(frVentaPeso, "frVentaPeso", kDerecha, 1920, kAnchoDerecha, 5280, "Venta por Peso", &fr_Padre);
    frVentaPeso.visible = false;
    Poner(lblPesoInfo, "lblPesoInfo", 240, 240, 1680, 480, "Peso (Kg)", &frVentaPeso);
    Poner(txtPeso, "txtPeso", 2040, 240, 2160, 720, "", &frVentaPeso);
    txtPeso.fontSize = kFuenteGrande;
    Poner(lblPrecioInfo, "lblPrecioInfo", 240, 1080, 1680, 480, "Precio", &frVentaPeso);
    Poner(txtPrecio, "txtPrecio", 2040, 1080, 2160, 720, "", &frVentaPeso);
    txtPrecio.fontSize = kFuenteGrande;
    Poner(optPTotal, "optPTotal", 240, 1920, 1920, 480, "Precio Total", &frVentaPeso);
    Poner(optPXKilo, "optPXKilo", 2280, 1920, 1920, 480, "Precio x Kilo", &frVentaPeso);
    Teclado(btnNumPeso_Cobro, "btnNumPeso_Cobro", &frVentaPeso, 4320, 240, 840);
    Poner(cmd_nuevoPeso, "cmd_nuevoPeso", 4320 + 2 * 960, 240 + 3 * 876, 840, 756, "C", &frVentaPeso);
    Poner(cmdAceptarNumPeso, "cmdAceptarNumPeso", 240, 2640, 3960, 960, "Aceptar", &frVentaPeso);
}

void frmCaja::DisenarPaneles() {
    // Open sales, over the grid.
    Poner(fr_Ventas, "fr_Ventas", kDerecha, 1920, kAnchoDerecha, 5280, "Ventas Abiertas", &fr_Padre);
    fr_Ventas.visible = false;
    Poner(lblVentasAbiertas, "lblVentasAbiertas", 120, 240, 5640, 480,
          "Tiene <XXX> ventas Abiertas -> Pulse Aqui para Eliminarlas", &fr_Ventas);
    Poner(cmd_SalirVentas, "cmd_SalirVentas", 5880, 120, 1320, kAltoBoton, "Volver", &fr_Ventas);
    Poner(PanelVentas, "PanelVentas", 120, 960, 7080, 4200, "", &fr_Ventas);
    PanelVentas.Separacion = 120;
    PanelVentas.TamanoBoton = 1320;

    // The till's options, centred over the grid.
    Poner(frOpcionesCaja, "frOpcionesCaja", kDerecha, 1920, kAnchoDerecha, 5280, "Opciones Caja", &fr_Padre);
    frOpcionesCaja.visible = false;
    Poner(chkPideCantidad, "chkPideCantidad", 240, 360, 3360, 480, "Pedir Cantidad", &frOpcionesCaja);
    Poner(chkLineaXProducto, "chkLineaXProducto", 3720, 360, 3360, 480, "Una linea por producto", &frOpcionesCaja);
    Poner(optNombre, "optNombre", 240, 1080, 3360, 480, "Ordenar por Nombre", &frOpcionesCaja);
    Poner(optPosicion, "optPosicion", 3720, 1080, 3360, 480, "Ordenar por Posicion", &frOpcionesCaja);
    Poner(slDiasCad, "slDiasCad", 240, 1800, 4560, 480, "", &frOpcionesCaja);
    slDiasCad.min = 0;
    slDiasCad.max = 14;
    Poner(lbldiasCad, "lbldiasCad", 4920, 1800, 2160, 480, "", &frOpcionesCaja);
    Poner(chkCadValeNunca, "chkCadValeNunca", 240, 2400, 3360, 480, "Nunca Caduca", &frOpcionesCaja);
    Poner(cmdAbonoVenta, "cmdAbonoVenta", 240, 3120, 3360, kAltoBoton, "Abono de Venta", &frOpcionesCaja);
    Poner(cmdBorrarVentas, "cmdBorrarVentas", 3720, 3120, 3360, kAltoBoton, "Borrar Ventas", &frOpcionesCaja);
    Poner(cmdSalirOpciones, "cmdSalirOpciones", 3720, 4200, 3360, kAltoBoton, "Salir", &frOpcionesCaja);

    // Panels of later screens' workings, hidden until they are used.
    Poner(frImagen, "frImagen", kMargen, 1080, 7320, 7800, "", &fr_Padre);
    Poner(imgProdZoom, "imgProdZoom", 0, 0, 7320, 7800, "", &frImagen);
    Poner(fr_Lupa, "fr_Lupa", kDerecha, 1920, kAnchoDerecha, 5280, "MODIFICACION DE LINEA DE VENTA", &fr_Padre);
    DisenarLupa();
    Poner(frTop, "frTop", kDerecha, 1920, kAnchoDerecha, 5280, "", &fr_Padre);
    DisenarTop();
    Poner(frDescuentoImporte, "frDescuentoImporte", kDerecha + 1200, 3000, 4920, 2400, "", &fr_Padre);
    DisenarDescuentos();
    Poner(frDeuda, "frDeuda", kDerecha + 600, 3000, 6120, 2400, "", &fr_Padre);
    Poner(lblDeudaInfo, "lblDeudaInfo", 240, 240, 5640, 720, "", &frDeuda);
    Poner(lblImpDeuda, "lblImpDeuda", 240, 1080, 5640, 720, "", &frDeuda);
    Poner(frDindep, "frDindep", kDerecha, 8400, kAnchoDerecha, 480, "", &fr_Padre);
    Poner(lblValorDinDep, "lblValorDinDep", 0, 0, kAnchoDerecha, 480, "", &frDindep);
    for (Frame* f : {&frImagen, &fr_Lupa, &frTop, &frDescuentoImporte, &frDeuda, &frDindep}) f->visible = false;

    // The help page, above the screen until tmrAyuda slides it in.
    Poner(Open1, "Open1", 0, -kAltoArriba, kAnchoDiseno, kAltoArriba, "", &fr_Padre);
    Open1.visible = false;
}

void frmCaja::DisenarBotonera() {
    // Two rows of eight, then the strip where lblModificacion runs between
    // the help and exit buttons.
    CommandButton* filas[2][8] = {
        {&cmdNuevaVenta, &cmd_CambioEmpleado, &cmd_VentasActivas, &cmdCambioTactil, &cmdAbrirCajetin,
         &cmdReimprimir, &cmdDevoluciones, &cmdAlbaranes},
        {&cmdObservaciones, &cmdGastos, &cmdCajaInicial, &Command7, &cmd_TopEmpleados, &cmd_TopProductos,
         &cmdIrAPagos, &bt_historico}};
    const char* nombres[2][8] = {
        {"cmdNuevaVenta", "cmd_CambioEmpleado", "cmd_VentasActivas", "cmdCambioTactil", "cmdAbrirCajetin",
         "cmdReimprimir", "cmdDevoluciones", "cmdAlbaranes"},
        {"cmdObservaciones", "cmdGastos", "cmdCajaInicial", "Command7", "cmd_TopEmpleados", "cmd_TopProductos",
         "cmdIrAPagos", "bt_historico"}};
    const char* captions[2][8] = {
        {"Nueva Venta <F1>", "Cambiar Empleado <F2>", "Ventas Activas <F3>", "Ventas en modo Tactil",
         "Abrir Cajetin", "Reimprimir Venta", "Modificar Venta", "Conversion"},
        {"Opciones Caja", "Gastos", "Caja Inicial", "Observaciones", "Top Clientes", "Top Productos",
         "Ir a Clientes con Deuda", "Historico de Consumo"}};
    constexpr double ancho = 1770, hueco = 120;
    for (int f = 0; f < 2; ++f)
        for (int c = 0; c < 8; ++c) {
            CommandButton& b = *filas[f][c];
            Poner(b, nombres[f][c], kMargen + c * (ancho + hueco), kAltoArriba + 120 + f * (kAltoBoton + hueco),
                  ancho, kAltoBoton, captions[f][c], &fr_Padre);
        }
    const double franja = kAltoArriba + 120 + 2 * (kAltoBoton + hueco);  // 10800
    Poner(cmdAyuda, "cmdAyuda", kMargen, franja, 960, 600, "", &fr_Padre);
    cmdAyuda.toolTipText = "Ayuda";
    Poner(lblModificacion, "lblModificacion", kMargen + 1080, franja, 3000, 600, "", &fr_Padre);
    lblModificacion.visible = false;
    Poner(cmd_Salir, "cmd_Salir", kAnchoDiseno - kMargen - 960, franja, 960, 600, "", &fr_Padre);
    cmd_Salir.toolTipText = "Salir";
    // Corners with no caption: size of the screen, letters, colours.
    Poner(fr_Zoom1, "fr_Zoom1", 0, kAltoDiseno - 240, 240, 240, "", &fr_Padre);
    Poner(fr_Zoom2, "fr_Zoom2", kAnchoDiseno - 240, kAltoDiseno - 240, 240, 240, "", &fr_Padre);
    Poner(fr_Zoom3, "fr_Zoom3", kAnchoDiseno - 240, 0, 240, 240, "", &fr_Padre);
}

void frmCaja::DisenarTimers() {
    struct T {
        Timer* t;
        const char* nombre;
        long intervalo;
        bool activo;
    } timers[] = {{&tmrHora, "tmrHora", 1000, true},           {&tmrColorear, "tmrColorear", 500, false},
                  {&tmrDinDep, "tmrDinDep", 500, false},         {&tmrQuitarImg, "tmrQuitarImg", 1000, false},
                  {&tmrfinDeuda, "tmrfinDeuda", 1, false},       {&tmrMovGen, "tmrMovGen", 1, false},
                  {&tmrMovLupa, "tmrMovLupa", 1, false},         {&tmrMovModificacion, "tmrMovModificacion", 5, true},
                  {&tmrVolverLista, "tmrVolverLista", 1, false}, {&tmrAyuda, "tmrAyuda", 1, false}};
    for (const T& t : timers) {
        Poner(*t.t, t.nombre, 0, 0, 0, 0);
        t.t->SetInterval(t.intervalo);
        t.t->enabled = t.activo;
    }
}

void PonerTecladoCobro(Ventana& v, Frame& frmNumerico, TecladoNumerico& teclas, CommandButton& cmd_nuevoCobro,
                       double x, double y) {
    constexpr double lado = 1080, paso = 1200;
    v.Poner(frmNumerico, "frmNumerico", x, y, 3 * paso + 120, 4 * paso + 120);
    static constexpr int kOrden[4][3] = {{7, 8, 9}, {4, 5, 6}, {1, 2, 3}, {0, 10, -1}};
    for (int f = 0; f < 4; ++f)
        for (int c = 0; c < 3; ++c) {
            const int n = kOrden[f][c];
            if (n < 0) continue;
            CommandButton& b = teclas[static_cast<std::size_t>(n)];
            v.Poner(b, "btnNumerico_Cobro" + std::to_string(n), 60 + c * paso, 60 + f * paso, lado, lado,
                    n == 10 ? "," : std::to_string(n), &frmNumerico);
            b.fontSize = kFuenteGrande;
            b.tabStop = false;
        }
    v.Poner(cmd_nuevoCobro, "cmd_nuevoCobro", 60 + 2 * paso, 60 + 3 * paso, lado, lado, "C", &frmNumerico);
    cmd_nuevoCobro.fontSize = kFuenteGrande;
    cmd_nuevoCobro.tabStop = false;
}

void frmCaja::Teclado(TecladoNumerico& teclas, const std::string& prefijo, Control* marco, double x, double y,
                      double lado) {
    // Rows 7 8 9 / 4 5 6 / 1 2 3 / 0 and the comma.
    const double paso = lado + 120;
    const double alto = lado * 0.9;
    const double pasoAlto = alto + 120;
    for (int d = 1; d <= 9; ++d) {
        const int fila = 2 - (d - 1) / 3;
        const int col = (d - 1) % 3;
        Poner(teclas[d], prefijo + std::to_string(d), x + col * paso, y + fila * pasoAlto, lado, alto,
              std::to_string(d), marco);
    }
    Poner(teclas[0], prefijo + "0", x, y + 3 * pasoAlto, lado, alto, "0", marco);
    Poner(teclas[10], prefijo + "10", x + paso, y + 3 * pasoAlto, lado, alto, ",", marco);
    for (CommandButton& b : teclas) b.tabStop = false;
}

}  // namespace tpv
