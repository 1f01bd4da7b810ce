// Selling by code: from the code in the entry, through the product shown and
// its quantity or weight, to the line of the sale.
#include <cmath>
#include <filesystem>
#include <system_error>

#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/key_filter.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"
#include "sale/busqueda.hpp"
#include "sale/lineas_venta.hpp"
#include "sale/peso.hpp"
#include "screens/frm_caja.hpp"

namespace tpv {

namespace {

constexpr long kRojo = 255;
constexpr long kRojoStock = 192;
constexpr long kNegro = 0;

// Whole numbers the sale routines take, from the texts the screen holds.
std::int32_t Entero(const std::string& texto) { return CLng(Value(texto)); }

void SeleccionarTodo(TextBox& caja) {
    caja.selStart = 0;
    caja.selLength = Len(caja.Text());
}

bool ExisteFichero(const std::string& ruta) {
    std::error_code ec;
    return std::filesystem::is_regular_file(ruta, ec);
}

}  // namespace

void frmCaja::ValidarTeclaCodigo(int& tecla) {
    const bool letra = (tecla >= 'A' && tecla <= 'Z') || (tecla >= 'a' && tecla <= 'z');
    const bool digito = tecla >= '0' && tecla <= '9';
    if (!letra && !digito && tecla != vbKeyBack) tecla = 0;
}

void frmCaja::txtcod_KeyPress(int& tecla) {
    frUltimaVenta.visible = false;
    Vender_Con_Codigo(tecla, txtcod);
}

void frmCaja::txtCodBarras_KeyPress(int& tecla) {
    frUltimaVenta.visible = false;
    Vender_Con_Codigo(tecla, txtCodBarras);
}

void frmCaja::Vender_Con_Codigo(int& tecla, TextBox& caja) {
    frImagen.visible = false;
    lblStock.caption = "";
    lblStock.foreColor = kRojo;
    lblPedido.caption = "";
    if (tecla != vbKeyReturn) {
        ValidarTeclaCodigo(tecla);
        return;
    }
    tecla = 0;
    ProductoEncontrado p;
    std::int32_t resultado = BuscarPorCodigoBarras(caja.Text(), p);
    if (resultado == -1) {
        resultado = BuscarPorCodigoBarras(QuitarCerosIzquierda(caja.Text()), p);
        if (resultado == -1) {
            lblnomProd.caption = "Producto no encontrado";
            SeleccionarTodo(caja);
            return;
        }
    }
    if (resultado == kCodigoDuplicado) return;
    MostrarResultado(Trim(p.nombre), resultado, p.stock, p.pedido, p.entrega, p.UbicacionPrincipal, p.imagen,
                     p.modoventa, p.precio);
}

void frmCaja::VisualizarArticulo(std::int32_t codigo) {
    lblStock.caption = "";
    lblPedido.caption = "";
    lblCodProd.caption = std::to_string(codigo);
    ProductoEncontrado p;
    if (BuscarPorCodigo(codigo, p) == -1) return;
    MostrarResultado(Trim(p.nombre), codigo, p.stock, p.pedido, p.entrega, p.UbicacionPrincipal, p.imagen,
                     p.modoventa, p.precio);
}

void frmCaja::MostrarResultado(const std::string& nombre, std::int32_t codigo, double stock, double pedido,
                               const std::string& fechaPedido, const std::string& ubicacion, const std::string& imagen,
                               bool pesable, double precio) {
    const Sesion& s = sesion();
    lblnomProd.caption = nombre;
    lblCodProd.caption = std::to_string(codigo);
    lblStock.caption = CStr(Value(stock));
    lblStock.foreColor = stock <= 0 ? kRojoStock : kNegro;
    lblPedido.caption = pedido > 0 ? CStr(Value(pedido)) + Space(9) + fechaPedido : "";
    lblUbicacion.caption = ubicacion;

    const std::string ruta = imagen.empty() ? "" : s.CarpetaFotos + imagen;
    picImagen.visible = false;
    picImagen.picture.clear();
    imgProdZoom.picture.clear();
    if (!ruta.empty() && ExisteFichero(ruta)) {
        picImagen.visible = true;
        picImagen.picture = ruta;
        imgProdZoom.picture = ruta;
    }

    ActivaCantidad(pesable);
    if (pesable) {
        if (s.TarifaActual > -1) {
            const double deTarifa = PrecioTarifa(codigo);
            if (deTarifa > -1) precio = deTarifa;
        }
        ActivarVentaConPeso(precio);
    }
}

void frmCaja::ActivaCantidad(bool pesable) {
    if (!pesable && !sesion().PedirCantidad) {
        txtCantidad.SetText("1");
        int enter = vbKeyReturn;
        txtCantidad_KeyPress(enter);
        txtcod.SetText("0");
        txtCodBarras.SetText("0");
        lblCodProd.caption = "";
        SeleccionarTodo(txtcod);
        return;
    }
    lblCant.visible = true;
    txtCantidad.visible = true;
    txtCantidad.SetText("1");
    FocoSeguro(txtCantidad);
}

void frmCaja::DesactivaCantidad() {
    lblCant.visible = false;
    txtCantidad.visible = false;
    txtcod.SetText("0");
    FocoSeguro(txtcod);
    if (ModoTactil()) {
        txtCodBarras.SetText("0");
        FocoSeguro(txtCodBarras);
    }
}

void frmCaja::txtCantidad_KeyPress(int& tecla) {
    if (tecla != vbKeyReturn) {
        tecla = KeyFilter::Instancia().FiltrarTecla(tecla, txtCantidad, 2);
        return;
    }
    tecla = 0;
    VentaItem(lblCodProd.caption, CDbl(Value(txtCantidad.Text())), txtcod.Text());
    DesactivaCantidad();
    MostrarTerminar(true);
}

void frmCaja::ActivarVentaConPeso(double precio) {
    const Sesion& s = sesion();
    if (ModoTactil()) {
        frVentaPeso.left = frTactil.left + frProductos.left;
        frVentaPeso.top = frTactil.top + frProductos.top;
    } else {
        frVentaPeso.left = FGCaja.left;
        frVentaPeso.top = FGCaja.top;
    }
    txtPrecio.tag = CStr(Value(precio));
    const int decimales = s.opciones.NumDecimales;
    txtPrecio.SetText(FormatNumber(Value(s.PedirPrecioTotal ? 0.0 : precio), decimales));
    frVentaPeso.visible = true;
    txtPeso.SetText("0");
    FocoSeguro(txtPeso);
}

void frmCaja::txtPeso_KeyPress(int& tecla) {
    if (tecla == vbKeyReturn) {
        tecla = 0;
        FocoSeguro(txtPrecio);
        return;
    }
    if (txtPeso.selLength > 0 && txtPeso.selLength == Len(txtPeso.Text())) txtPeso.SetText("");
    if (txtPeso.Text().empty() && (tecla == KeyFilter::kComa || tecla == KeyFilter::kPunto)) {
        txtPeso.SetText("0");
        txtPeso.selStart = 1;
        txtPeso.selLength = 0;
    }
    tecla = KeyFilter::Instancia().FiltrarTecla(tecla, txtPeso, 3);
}

void frmCaja::txtPrecio_KeyPress(int& tecla) {
    const Sesion& s = sesion();
    if (tecla != vbKeyReturn) {
        if (txtPrecio.selLength > 0 && txtPrecio.selLength == Len(txtPrecio.Text())) txtPrecio.SetText("");
        tecla = KeyFilter::Instancia().FiltrarTecla(tecla, txtPrecio, s.opciones.NumDecimales);
        return;
    }
    tecla = 0;
    const double peso = txtPeso.Text().empty() ? 0.0 : CDbl(Value(txtPeso.Text()));
    const double precio = txtPrecio.Text().empty() ? 0.0 : CDbl(Value(txtPrecio.Text()));
    const double importe = optPTotal.Value() ? precio : peso * precio;
    VentaItem_x_Peso(lblCodProd.caption, peso, importe, ModoTactil() ? txtCodBarras.Text() : txtcod.Text());
    frVentaPeso.visible = false;
    DesactivaCantidad();
    MostrarTerminar(true);
}

void frmCaja::VentaItem(const std::string& codigo, double cantidad, const std::string& textoLeido) {
    Sesion& s = sesion();
    if (ModoAbono && !ProductoEnFactura(VentaReabierta, codigo)) {
        MsgBox("No puede realizar la devolucion de este producto ya que en la factura seleccionada no se realizo su "
               "venta.",
               vbInformation);
        return;
    }
    if (s.CodigoEmpleadoActual == -1) {
        cmd_CambioEmpleado_Click();
        return;
    }
    const std::string empleado = std::to_string(s.CodigoEmpleadoActual);
    if (VentaNueva) AbrirVenta(lblNumVenta, Entero(lblCodCliente.caption), s.NombreEmpleadoActual, empleado);
    const std::int32_t numero = Entero(lblNumVenta.caption);
    const std::int32_t producto = Entero(codigo);
    controlesVenta.ModoAbono = ModoAbono;
    if (s.LineaXProducto && cantidad == std::round(cantidad)) {
        for (double i = 0; i < cantidad; ++i)
            AnadirItem(numero, producto, 1.0, textoLeido, "P", empleado, s.NombreEmpleadoActual, 0, controlesVenta);
    } else {
        AnadirItem(numero, producto, cantidad, textoLeido, "P", empleado, s.NombreEmpleadoActual, 0, controlesVenta);
    }
    VentaNueva = false;
    if (FGCaja.Rows() > 8) FGCaja.SetTopRow(FGCaja.Rows() - 3);
}

void frmCaja::VentaItem_x_Peso(const std::string& codigo, double peso, double importe,
                               const std::string& textoLeido) {
    Sesion& s = sesion();
    if (s.CodigoEmpleadoActual == -1) {
        cmd_CambioEmpleado_Click();
        return;
    }
    const std::string empleado = std::to_string(s.CodigoEmpleadoActual);
    if (VentaNueva) AbrirVenta(lblNumVenta, Entero(lblCodCliente.caption), s.NombreEmpleadoActual, empleado);
    controlesVenta.ModoAbono = ModoAbono;
    AnadirItemPeso(Entero(lblNumVenta.caption), Entero(codigo), peso, importe, textoLeido, "P", empleado,
                   s.NombreEmpleadoActual, 0, controlesVenta);
    VentaNueva = false;
    if (FGCaja.Rows() > 8) FGCaja.SetTopRow(FGCaja.Rows() - 3);
}

void frmCaja::contarNumArticulos() {
    double articulos = 0;
    for (long f = 1; f < FGCaja.Rows(); ++f) {
        if (FGCaja.TextMatrix(f, 0).empty()) continue;
        const std::string& cantidad = FGCaja.TextMatrix(f, kColUnidades);
        const double n = NumeroCelda(FGCaja, f, kColUnidades);
        if (n == 0) continue;
        articulos += Len(cantidad) > 4 ? 1 : n;
    }
    txtTArticulos.SetText(CStr(Value(articulos)));
}

}  // namespace tpv
