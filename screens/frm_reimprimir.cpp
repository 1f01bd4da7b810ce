#include "screens/frm_reimprimir.hpp"

#include <exception>

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/grid_formatter.hpp"
#include "core/servicios/key_filter.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/ticket_service.hpp"
#include "screens/frm_caja_inicial.hpp"
#include "screens/pantallas.hpp"

namespace tpv {

namespace {

// The four columns' widths add up to this many base widths.
constexpr double kAnchoColumnas = 1000 + 2700 + 1200 + 1500;
constexpr double kAnchoGrid = 14400;

}  // namespace

void InicializarGrid(Grid& grid, const std::string& encabezados, const std::string& columnas) {
    GridFormatter::Instancia().Formatear(grid, encabezados, columnas);
}

std::string ObtenerNomClientexCodigo(std::int32_t codigo) {
    Recordset rs;
    rs.Open("Select nombre,apellidos from clientes where codigo = " + CStr(Value(codigo)), sesion().Conexion);
    if (rs.Eof()) return "Cliente Generico";
    return Texto(rs["nombre"]) + " " + Texto(rs["Apellidos"]);
}

void frmReImprimir::Disenar() {
    nombre = "frmReImprimir";
    caption = "Reimprimir Ticket";
    width = kAnchoDiseno;
    height = kAltoDiseno;
    Poner(Frame1, "Frame1", 240, 240, 14880, 11040);
    Poner(Label1, "Label1", 240, 120, 14400, 720, "Reimprimir Ticket", &Frame1);
    Label1.fontSize = 18;
    Poner(Label3, "Label3", 240, 960, 14400, 480, "Doble click para seleccionar el ticket a reimprimir.", &Frame1);
    Poner(grid_Reimprimir, "grid_Reimprimir", 240, 1560, kAnchoGrid, 6600, "", &Frame1);
    grid_Reimprimir.fontSize = 12;
    Poner(Label2, "Label2", 240, 8280, 14400, 480,
          "Si el ticket no aparece en la lista, escriba su numero.", &Frame1);
    Poner(Label4, "Label4", 240, 8880, 3600, 720, "Número de Ticket", &Frame1);
    Poner(txtnumFactura, "txtnumFactura", 3960, 8880, 3600, 720, "", &Frame1);
    txtnumFactura.fontSize = 14;
    Poner(Command1, "Command1", 8520, 9840, 2880, 1080, "Aceptar", &Frame1);
    Poner(cmd_Salir, "cmd_Salir", 11760, 9840, 2880, 1080, "Cancelar", &Frame1);
    txtnumFactura.tabIndex = 0;
    Command1.tabIndex = 1;
    cmd_Salir.tabIndex = 2;

    txtnumFactura.KeyPress = [this](int& k) { k = KeyFilter::Instancia().FiltrarTecla(k, txtnumFactura, 0); };
    grid_Reimprimir.DblClick = [this] {
        txtnumFactura.SetText(grid_Reimprimir.TextMatrix(grid_Reimprimir.Row(), 0));
    };
    Command1.Click = [this] { Command1_Click(); };
    cmd_Salir.Click = [this] { Unload(); };
}

void frmReImprimir::Form_Load() {
    AjustarPantallaDeCaja(*this);
    ancho = grid_Reimprimir.width / kAnchoColumnas;
    const std::string columnas = CStr(Value(ancho * 1000)) + "/Centrado;" + CStr(Value(ancho * 2700)) +
                                 "/Izquierda;" + CStr(Value(ancho * 1200)) + "/Centrado;" +
                                 CStr(Value(ancho * 1500)) + "/Centrado";
    InicializarGrid(grid_Reimprimir, "Factura;Cliente;Fecha;Importe", columnas);
    CargarUltimasVentas();
}

// The newest sale first, its fields as they come.
void frmReImprimir::CargarUltimasVentas() {
    Recordset rs;
    rs.Open("SELECT top 20 Cabecera_factura.Numero, Cabecera_factura.cliente, Cabecera_factura.Fechaventa, "
            "Cabecera_factura.Total,cabecera_factura.empleado FROM Cabecera_factura ORDER BY "
            "Cabecera_factura.Numero DESC",
            sesion().Conexion);
    long fila = 1;
    for (; !rs.Eof(); rs.MoveNext(), ++fila) {
        if (fila >= grid_Reimprimir.Rows()) grid_Reimprimir.SetRows(fila + 1);
        const Value cliente = rs["cliente"];
        grid_Reimprimir.SetTextMatrix(fila, 0, Texto(rs["Numero"]));
        grid_Reimprimir.SetTextMatrix(fila, 1, ObtenerNomClientexCodigo(cliente.IsNull() ? 0 : CLng(cliente)));
        grid_Reimprimir.SetTextMatrix(fila, 2, Texto(rs["Fechaventa"]));
        grid_Reimprimir.SetTextMatrix(fila, 3, Texto(rs["Total"]));
    }
}

// Reprints always go through the ticket service, whatever the till's own
// tickets use; any failure, an empty number too, ends in the printer box.
void frmReImprimir::Command1_Click() {
    Sesion& s = sesion();
    try {
        TicketService().ImprimirTicketVenta(s.Conexion, s.ImpresoraTickets, CLng(Value(txtnumFactura.Text())), "",
                                            "");
    } catch (const std::exception&) {
        MsgBox("Compruebe la conexion con su impresora, si la impresora esta conectada a otro equipo compruebe el "
               "estado de la conexion.",
               vbCritical, "Impresion");
    }
    Unload();
}

}  // namespace tpv
