#pragma once
#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "screens/anfitrion.hpp"

// The settlement screen, shown modally by the till when a sale is finished:
// the assistant chooses how the customer pays, types what is handed over,
// splits a payment between cash and card, picks the document and the
// articles of a gift ticket, and closes the sale with cmd_FinVenta. It holds
// no sale of its own: it reads the till screen and writes back to it.
// Its workings: the opening and the payment (frm_cobrar.cpp), the panels
// that open over it (frm_cobrar_paneles.cpp, frm_cobrar_vales.cpp,
// frm_cobrar_deuda.cpp), its layout (frm_cobrar_diseno.cpp), the discount on
// the whole sale (frm_cobrar_descuentos.cpp).
namespace tpv {

class frmCaja;

class frmCobrar : public Ventana {
public:
    // --- Amounts ---
    TextBox CajaText_Pago, txt_Entrega, txt_Devolucion;
    Label Label1, Label2, Label3, lblEnter, lblFormaPago;
    // --- Carried from the till ---
    Label lblNumVenta, lblCodCliente, lbl_Empleado, lbl_codEmpleado;
    // --- Payment methods ---
    Frame Frame5, Frame1;
    ButtonMatrix PanelFormasPago;
    // --- Mixed payment ---
    Frame fr_totalesMixto;
    TextBox txtTotalMixto, txtPagoTarjeta, txtPagoEfectivo, txtCambioMixto;
    Label lblTotalMixto, lblPagoTarjeta, lblPagoEfectivo, lblCambioMixto;
    CheckBox chkFacturaMixto, chkTicketMixto, chkCajetinMixto;
    OptionButton Option2;
    CommandButton cmdObsMixto;
    // --- Document ---
    CheckBox chk_Imprimir, chk_Cajetin, chk_Factura;
    Frame frTipo, frNumCopias;
    OptionButton optFactura, optAlbaran;
    CommandButton cmdCopias1, cmdCopias2, cmdCopias3;
    PictureBox imgTicket;
    // --- Actions ---
    CommandButton cmd_FinVenta, cmdDeuda, cmdSalir, cmd_Observaciones;
    // --- Keypad ---
    Frame frmNumerico;
    std::array<CommandButton, 11> btnNumerico_Cobro;  // 0 to 9, and 10 the decimal separator
    CommandButton cmd_nuevoCobro;
    // --- Customer's balance ---
    Frame frDinDep;
    Label lblNomDinDep, lblValorDinDep, lblDinDepInfo, lblDinDepPregunta;
    CommandButton cmdAceptarDinDep, cmdCancelar;
    // --- Debt ---
    Frame frInfoDeuda, Frame6;
    Label lblInfoDeuda, lblDeudaTexto, lblDeudaCliente;
    CommandButton cmdAceptarDeuda, cmdCancelarDeuda;
    // --- Voucher ---
    CommandButton cmdapliVale, cmdAplicaVale, cmdCancelaVale;
    Frame frPideVale, frNoExisteVale;
    TextBox txtnumVale;
    Label lblPideVale, lblNoExisteVale;
    // --- Refund ---
    Frame frAbono;
    Label lblAbono;
    CommandButton cmdImprimirValeDescuento;
    // --- Gift ticket ---
    CommandButton cmdTicketRegalo, cmd_ObsTRegalo;
    Frame frTicketRegalo, fr_TRegalo;
    Grid FGCaja;
    CommandButton cmdImpTicketRegalo, cmdSalirTicketRegalo, cmd_AceptarTRegalo, cmd_CancelarTRegalo;
    TextBox txtObsTRegalo;
    // --- Discount on the whole sale ---
    CommandButton cmd_DescImporte, cmd_DescPorcentaje;
    Frame frDescuentoImporte;
    Label lblTitDesc, lblImporteDesc;
    TextBox txtImporte;
    CommandButton cmdAceptarEmp, cmdCancelarDesc;
    // --- Timers ---
    Timer tmrResalto, tmrColorear;

    // --- State of one opening ---
    std::string FormaPago = "0";   // formapago.codigo chosen; "0" none yet
    std::int32_t IndiceCliente = -1;
    double SaldoDinDep = 0;
    bool CobroConDinDep = false;   // paying from the balance: txt_Entrega doesn't react
    bool DescontarDinDep = false;  // at the finish, the balance becomes SaldoRestante
    double SaldoRestante = 0;
    bool ActualizandoMixto = false;
    std::int16_t ContadorResalto = 0;
    std::int32_t NumeroVale = -1;
    double ImporteVale = -1;
    double RestoVale = 0;
    bool ImprimirValeAbono = false;
    std::int16_t CopiasAlbaran = 1;
    TextBox* EntradaActiva = nullptr;  // the entry the keypad types into
    int ModoDescuento = 0;             // 0 by amount, 1 by percentage

    // Work of other parts of the closing plugs in here; an empty hook does
    // nothing. `GrabarAlbaran` makes a delivery note of the open sale.
    std::function<void(std::int32_t numeroVenta, int copias)> GrabarAlbaran;

    // --- The opening and the payment ---
    void pantallaInicial();
    void CargarDatosVenta();
    void SeleccionFPago(const std::string& codigo, const std::string& descripcion);
    void PagoExacto();
    void ResaltarFormasPago();
    void BotonFuncion(int tecla);
    void cmd_FinVenta_Click();
    void cmdSalir_Click();
    void txt_Entrega_Change();
    void txt_Entrega_KeyPress(int& tecla);
    void txtPagoTarjeta_Change();
    void txtPagoEfectivo_Change();
    void PulsarTecla(int indice);
    void cmd_nuevoCobro_Click();

    // --- Panels over the screen ---
    void DineroDeposito();
    void DisminuyoDinDepACliente(double valor, std::int32_t cliente);
    void cmdAceptarDinDep_Click();
    void cmdCancelar_Click();
    void cmdDeuda_Click();
    void cmdAceptarDeuda_Click();
    void cmdCancelarDeuda_Click();
    void cmdapliVale_Click();
    void cmdCancelaVale_Click();
    void cmdAplicaVale_Click();
    // Applies the voucher of that number to the sale and says whether it was
    // found; ImporteVale and RestoVale keep its value and what will be left.
    bool AplicaVale(const std::string& numero);
    void AplicarValeDescuento(double importe);
    void cmdTicketRegalo_Click();
    void FGCaja_Click();
    std::string ObtenerListaProdTicketRegalo();
    void cmd_ObsTRegalo_Click();
    void GuardarComentarioTRegalo(const std::string& texto);

    // --- Discount on the whole sale (frm_cobrar_descuentos.cpp) ---
    void cmd_DescImporte_Click();
    void cmd_DescPorcentaje_Click();
    void txtImporte_KeyPress(int& tecla);
    void txtImporte_Change();
    void cmdAceptarEmp_Click();
    void cmdCancelarDesc_Click();
    void AplicarDescuento();
    void AplicarDescuentoGrid(double& porcentaje);
    void AplicarDescuentoBD();

protected:
    void Disenar() override;
    void Form_Load() override;
    void Form_Activate() override;

private:
    void DisenarImportes();
    void DisenarFormasPago();
    void DisenarMixto();
    void DisenarDocumento();
    void DisenarTeclado();
    void DisenarPaneles();
    void DisenarRegalo();
    void DisenarDescuentos();
    void Conectar();
    void ConectarDescuentos();
    void PedirDescuento(int modo, int maximo, const CommandButton& boton, const std::string& etiqueta);
    void ConectarEntradas();
    void ConectarPaneles();
    void ConectarDeposito();
    void ConectarVales();   // frm_cobrar_vales.cpp
    void ConectarDeuda();   // frm_cobrar_deuda.cpp
    void colorearme();
    void ModificarTamano();
    void tmrResalto_Timer();
    void tmrColorear_Timer();
    void GuardarOpcion(CheckBox& casilla, CheckBox& gemela, const std::string& campo, bool& opcion);
    void FiltrarEntrada(TextBox& caja, int& tecla);
    void EntradaConFoco(TextBox& caja);
    void optAlbaran_Click();
    void optFactura_Click();
    void Copias(std::int16_t copias);
    bool ClienteEnVenta() const;  // the customer code reads above 0

    long colorResalte_ = 0, colorFoco_ = 0;
};

// The till finishes its sales on this screen, shown modally.
void ConectarCobro(frmCaja& caja);

}  // namespace tpv
