#pragma once
#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "sale/grid_venta.hpp"
#include "screens/anfitrion.hpp"

// The till screen: where the assistant sells, by code or by touch, all day.
// Its controls keep the names the rest of the till knows them by; its
// workings are split by subject: the screen and its modes (frm_caja.cpp),
// its layout (frm_caja_diseno.cpp), selling by code (frm_caja_codigo.cpp),
// the touch panels and pads (frm_caja_tactil.cpp), the timers and sliding
// panels (frm_caja_eventos.cpp), the line editor (frm_caja_lupa.cpp) and the
// discounts on the whole sale (frm_caja_descuentos.cpp).
namespace tpv {

// Eleven keys of a numeric pad: the digits 0 to 9 and the comma (10).
using TecladoNumerico = std::array<CommandButton, 11>;

// The keypad of the screens that take money, 7 8 9 / 4 5 6 / 1 2 3 / 0 , C,
// in keys of 1080 twips: the frame frmNumerico at (x, y) holding the keys
// btnNumerico_Cobro0 to 10 and the clearing key cmd_nuevoCobro.
// A key in the entry of a discount on the whole sale: Enter accepts it,
// any other goes through the amount filter.
void TeclaDeDescuento(int& tecla, TextBox& importe, const std::function<void()>& aceptar);
// Whether the entry holds a discount by percentage (modoDescuento 1) over 100.
bool PorcentajeExcesivo(int modoDescuento, const TextBox& importe);

void PonerTecladoCobro(Ventana& v, Frame& frmNumerico, TecladoNumerico& teclas, CommandButton& cmd_nuevoCobro,
                       double x, double y);

class frmCaja : public Ventana {
public:
    frmCaja();

    // --- Frames that overlay one another ---
    Frame fr_Padre, fr_hijo, frTactil, frProductos, frVentaPeso, fr_Lupa, fr_Ventas, frOpcionesCaja, frTop,
        frDescuentoImporte, frDeuda, frDindep, frImagen, frUltimaVenta, frTarifas, frUltimaLinea, fr_SeparacionH1;
    // Hidden corner frames: size of the screen, size of the letters, colours.
    Frame fr_Zoom1, fr_Zoom2, fr_Zoom3;

    // --- The sale ---
    Grid FGCaja;
    TextBox txtcod, txtCodBarras, txtCantidad, txtPeso, txtPrecio, txtNomCliente, CajaText_Pago, txtUltProd,
        txtUltCant, txtTArticulos, txtTotal_U_V, txt_Entrega_U_V, txt_Devolucion_U_V, txt_ValorLupa;
    Label lblNumVenta, lbl_Empleado, lblHora, lblCodCliente, lblCodProd, lblnomProd, lblStock, lblPedido,
        lblUbicacion, lblCant, lblModificacion, lblInfoAbono, lblDescuentoInfo, lblUltFactura, lblInfoFiltro,
        lblVentasAbiertas, lbldiasCad, lblForma_U_V, lblValorDinDep, lblDeudaInfo, lblImpDeuda, lblPesoInfo,
        lblPrecioInfo, lblNumProductos;
    PictureBox picImagen, imgProdZoom, Bandera, Picture1;
    DTPicker Fecha1;
    PageOpener Open1;

    // --- Buttons ---
    CommandButton cmdTerminarVenta, cmdTerminarVenta_Tactil, cmdNuevaVenta, cmd_CambioEmpleado, cmd_VentasActivas,
        cmd_SalirVentas, cmdBuscarCliente, Command10, cmdCambioTactil, cmd_Salir, cmdAbrirCajetin, cmdReimprimir,
        cmdDevoluciones, cmdAlbaranes, cmdObservaciones, cmdAbonoVenta, cmdBorrarVentas, cmdGastos, cmdCajaInicial,
        Command7, cmd_TopEmpleados, cmd_TopProductos, cmd_DescPorcentaje, cmd_DescImporte, bt_historico, cmdIrAPagos,
        cmdIngDeposito, cmdAyuda, cmdSalirOpciones, cmdXProveedor, cmdXSeccion, cmdAceptarNum, cmdAceptarNumPeso,
        cmd_nuevoCobro, cmd_nuevoPeso, cmd_nuevoLupa;
    TecladoNumerico btnNumerico_Cobro, btnNumPeso_Cobro, btnNumerico_Lupa;

    // --- Options panel ---
    CheckBox chkPideCantidad, chkLineaXProducto, chkCadValeNunca;
    OptionButton optNombre, optPosicion, optPTotal, optPXKilo;
    Slider slDiasCad;

    // --- Touch panels ---
    ButtonMatrix PanelEmpLupa, PanelSecciones, panelProveedores, PanelTarifas, PanelVentas, PanelProductos;

    // --- Rankings panel (frm_caja_top.cpp) ---
    Grid fg_top;
    DTPicker f_desde, f_hasta;
    Label lblTopInfo, lbl_cerrar;
    CommandButton cmdActualizarTop;

    // --- Timers ---
    Timer tmrHora, tmrColorear, tmrDinDep, tmrQuitarImg, tmrfinDeuda, tmrMovGen, tmrMovLupa, tmrMovModificacion,
        tmrVolverLista, tmrAyuda;

    // --- State of the screen ---
    bool VentaNueva = true;            // no sale open: the next item opens one
    bool ModoAbono = false;            // taking a refund
    std::int32_t VentaReabierta = 0;   // the closed sale being refunded, or the open sale of a modification
    std::string NumeroFacturaAbonada;  // the invoice under refund, as the closing reads it
    std::int32_t VentaBorrar = 0;      // the open sale that a deletion made of a closed one
    bool VentaDinDep = false;          // a deposit-money sale
    bool VentaCobrada = false;         // left by the settlement screen: the sale was closed
    bool ImprimirFacturaAlCerrar = false;  // left by the settlement screen: print the invoice
    bool FocoEnBuscarProducto = false;     // the product search was opened from here
    std::string ModoBusqueda;              // what the search screen looks for: "Pr" products, "Cl" customers
    TextBox* ControlActivo = nullptr;      // the entry that last took the focus: the pads write to it
    std::string ColorResalte, ColorFoco, ColorFondo, ColorSegundo, ColorFilasGrid;
    std::string DireccionModificacion;     // "derecha" or "izquierda": where lblModificacion goes
    std::string VentaAlbaranes;            // left by frmAlbaranes: the sale made of the notes

    // The sale's grid and boxes as the sale routines take them.
    ControlesVenta controlesVenta;

    // Screens of other parts of the till plug in here; while a hook is empty
    // its button does nothing. `MostrarCobro` shows the settlement screen
    // modally and leaves VentaCobrada and ImprimirFacturaAlCerrar set;
    // `ImprimirFactura` prints the invoice report of the sale just closed.
    std::function<void()> MostrarCobro;
    std::function<void()> ImprimirFactura;
    std::function<void()> MostrarBuscar;  // the search screen, modal; a product comes back in lblCodProd

    // --- The screen and its modes ---
    void BotonFuncion(int tecla);
    void pantallaInicial();
    void LimpiarPantalla();
    void LimpiarPantallaDinDep();
    void limpiarGrids();
    void InicializarGrids();
    void PonerNomTarifa();
    void cmdCambioTactil_Click();
    void cmdNuevaVenta_Click();
    void cmdTerminarVenta_Click();
    void cmd_VentasActivas_Click();
    void cmd_SalirVentas_Click();
    void cmd_CambioEmpleado_Click();
    void Picture1_Click();
    void mostrarVenta(std::int32_t numero);

    // --- Refunds, modifying and deleting closed sales ---
    void cmdAbonoVenta_Click();
    void cmdDevoluciones_Click();
    void cmdBorrarVentas_Click();
    // Gives up the whole sale on the screen: it goes to the annulled sales.
    void cmd_Borrar_Click();
    void cargarPanelVentas();
    // Focus to the code entry of the mode; a control that can't take it is passed over.
    void FocoEntrada();
    static void FocoSeguro(Control& c);
    bool ModoTactil() const;

    // --- Selling by code ---
    void Vender_Con_Codigo(int& tecla, TextBox& caja);
    static void ValidarTeclaCodigo(int& tecla);
    void MostrarResultado(const std::string& nombre, std::int32_t codigo, double stock, double pedido,
                          const std::string& fechaPedido, const std::string& ubicacion, const std::string& imagen,
                          bool pesable, double precio);
    void VisualizarArticulo(std::int32_t codigo);
    void ActivaCantidad(bool pesable);
    void DesactivaCantidad();
    void ActivarVentaConPeso(double precio);
    void VentaItem(const std::string& codigo, double cantidad, const std::string& textoLeido);
    void VentaItem_x_Peso(const std::string& codigo, double peso, double importe, const std::string& textoLeido);
    void contarNumArticulos();
    void txtCantidad_KeyPress(int& tecla);
    void txtPeso_KeyPress(int& tecla);
    void txtPrecio_KeyPress(int& tecla);
    void txtcod_KeyPress(int& tecla);
    void txtCodBarras_KeyPress(int& tecla);

    // --- Touch panels and pads ---
    void cargarPanelEmpleadosLupa();
    void cargarPanelTarifas();
    void cargarPanelSecciones();
    void cargarPanelProveedores();
    void PanelProductos_Pulsado();
    void panelProveedores_Pulsado();
    void PanelSecciones_Pulsado();
    void PanelVentas_Pulsado();
    void PanelTarifas_Pulsado();
    void cmdXProveedor_Click();
    void cmdXSeccion_Click();
    void guardarOrdenItems(const std::string& campo);
    int TeclaEnCaja(TextBox& caja, int tecla);
    void PulsarDigito(TextBox* caja, int digito);
    void PulsarComa(TextBox* caja);
    void cmdAceptarNum_Click();

    // --- Rankings ---
    void mostrarTop();
    void CargarTop(const std::string& titulo, DateTime desde, DateTime hasta);
    void Top_Ten(const std::string& tipo, DateTime desde, DateTime hasta);
    void lbl_cerrar_Click();

    // --- Line editor (frm_caja_lupa.cpp) ---
    Frame fr_DatosLupa, frLupaInferior, fr_LupaMovil, fr_NuevoValor, fr_EmpLupa;
    TextBox txt_NomLupa, txt_PrecioLupa, txt_EmpLupa, txt_CantLupa, txt_DescLupa, txt_TotalLupa;
    Label lblCodEmp, lbl_tipoItem, lbl_TitValorLupa, lblEmpleadosLupa;
    CommandButton cmd_AceptarImporte, cmd_AceptarLupa, cmd_SalirLupa, cmd_BorrarLupa;
    void FGCaja_Click();
    void MuestroLupaEmpleados(long fila);
    void ColocoLupa(long fila);
    void ReducirLupa();
    void QuitarFocoCajasLupa();
    void CargoDatosLupa(long fila);
    void EditarEntradaLupa(TextBox& entrada);
    void moverLupa(bool conEmpleados);
    void txt_ValorLupa_KeyPress(int& tecla);
    void cmd_AceptarImporte_Click();
    void RecalcularTotalLupa();
    void PanelEmpLupa_Pulsado();
    void ModificarGrid(long fila);
    void cmd_AceptarLupa_Click();
    void cmd_SalirLupa_Click();
    void cmd_BorrarLupa_Click();

    // --- Discounts on the whole sale (frm_caja_descuentos.cpp) ---
    TextBox txtImporte;
    Label lblTitDesc, lblImporteDesc;
    CommandButton cmdAceptarEmp, cmdCancelar;
    int ModoDescuento = 0;  // 0 by amount, 1 by percentage
    void cmd_DescImporte_Click();
    void cmd_DescPorcentaje_Click();
    void txtImporte_KeyPress(int& tecla);
    void txtImporte_Change();
    void cmdAceptarEmp_Click();
    void cmdCancelar_Click();
    void AplicarDescuento();
    void AplicarDescuentoGrid(double& porcentaje);
    void AplicarDescuentoBD();

    // --- Delivery notes (frm_caja_albaranes.cpp) ---
    void cmdAlbaranes_Click();

    // --- The customer's balance (frm_caja_deposito.cpp) ---
    void cmdIngDeposito_Click();
    // Clears the sale but keeps the customer, ready for money paid in.
    // (The flag of the same name says whether the sale is such a one.)
    void EmpezarVentaDinDep();
    void DineroDeposito(std::int32_t indiceCliente);

    // --- The customer's debt (frm_caja_deuda.cpp) ---
    void tmrfinDeuda_Timer();
    void cmdIrAPagos_Click();

    // --- Timers and sliding panels ---
    void ColocarAyuda();
    void cmdAyuda_Click();
    // Slides `panel` by a fixed step per tick of tmrMovGen towards `destino`
    // (its left for "izquierda"/"derecha", its top for "arriba"/"abajo").
    void MoveFrame(Control& panel, const std::string& direccion, double destino);

    // --- The customer of the sale (frm_caja_clientes.cpp) ---
    void txtNomCliente_KeyPress(int& tecla);
    void txtNomCliente_Click();
    void cmdBuscarCliente_Click();
    void Command10_Click();
    void MostrarResultadoBusqueda();
    void bt_historico_Click();

protected:
    void Disenar() override;
    void Form_Load() override;
    void Form_Activate() override;

private:
    void DisenarCabecera();
    void DisenarCodigo();
    void DisenarVenta();
    void DisenarTactil();
    void DisenarPeso();
    void DisenarPaneles();
    void DisenarBotonera();
    void DisenarTimers();
    void DisenarTop();
    void ConectarTop();
    void DisenarLupa();
    void DisenarDescuentos();
    void ConectarLupa();
    void ConectarDescuentos();
    void ConectarAlbaranes();
    void ConectarDeposito();
    void ConectarDeuda();
    void tmrMovLupa_Timer();
    void Teclado(TecladoNumerico& teclas, const std::string& prefijo, Control* marco, double x, double y,
                 double lado);
    void Conectar();
    void ConectarCodigo();
    void ConectarTactil();
    void ConectarOpciones();
    void ConectarTimers();
    void ConectarClientes();
    void ConectarTeclasDeFuncion();
    void ConectarDevoluciones();
    void colorearme();
    void ModificarTamano();
    void CargarOpcionesEnPantalla();
    void MostrarTerminar(bool mostrar);
    void tmrMovGen_Timer();
    void tmrMovModificacion_Timer();
    void LetreroEnMovimiento(const std::string& texto);
    void tmrAyuda_Timer();

    struct Movimiento {
        Control* panel = nullptr;
        std::string direccion;
        double destino = 0;
    } movimiento_;
    bool ayudaEntrando_ = false;
    int ticksImagen_ = 0;
    long ticksDeuda_ = 0;
    bool destelloTerminar_ = false;
    bool destelloDeposito_ = false;
    bool cambiandoOpciones_ = false;
};

// Asks, on a date other than today, whether the sale goes with that date.
bool ConfirmarFechaCambiada(DateTime fecha);

// The help page of the till: "ayudas/caja1.html" in the program's folder.
std::string PaginaDeAyuda();

// Products of a supplier, or of a section, on `panel` and in the session's
// PanelProductos: each button inherits `color` unless the product has a
// colour of its own, and turns red below its minimum stock.
void CargarPanelProductos(const std::string& codigo, const std::string& color, ButtonMatrix& panel);
void CargarPanelProductosSeccion(const std::string& codigo, const std::string& color, ButtonMatrix& panel);

}  // namespace tpv
