#pragma once
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "core/sesion/paneles.hpp"
#include "printing/cajon.hpp"
#include "screens/frm_cobrar.hpp"
#include "screens/pantallas.hpp"
#include "tests/closing/cierre_prueba.hpp"
#include "tests/sale/venta_prueba.hpp"

// The till screen on a fresh shop, shown by a host without a display: keys
// go through the host as a keyboard or scanner sends them, and what a user
// would have seen (boxes, screens opening) is kept in `lineas`.
namespace tpv::prueba {

class CajaTest : public VentaTest {
protected:
    void SetUp() override {
        VentaTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        anfitrion.salida = [this](const std::string& l) { lineas.push_back(l); };
        FijarAnfitrion(&anfitrion);
        FijarMensajes(&anfitrion);
        Sesion& s = sesion();
        s.CodigoEmpleadoActual = 3;
        s.EmpleadoTerminal = 3;
        s.NombreEmpleadoActual = "Juan Perez Lopez";
        s.opciones.modopantallacaja = 1;
        s.PedirCantidad = false;
        s.LineaXProducto = false;
        s.PedirPrecioTotal = false;
        s.CampoOrdenItemsCaja = "Nombre";
        s.FiltroPantallaTactil = "Proveedores";
        s.DiasCaducidadValeDescuento = 15;
        s.ClaveTerminal = "PC1";
        s.ColoresGenericos = {"101", "102", "103", "104"};
        FijarEscritorPuerto([this](const std::string& puerto, const std::vector<std::uint8_t>& bytes) {
            cajon.emplace_back(puerto, bytes);
        });
    }

    void TearDown() override {
        Unica<frmCaja>().Unload();
        Unica<frmCaja>().MostrarCobro = nullptr;
        Unica<frmPrincipalCantarel>().Unload();
        FijarEscritorPuerto(nullptr);
        FijarAnfitrion(nullptr);
        FijarMensajes(nullptr);
        VentaTest::TearDown();
    }

    // A product the till sells, with its bar code, supplier and section.
    void Articulo(int codigo, const std::string& barras, const std::string& nombre, const std::string& precio,
                  int proveedor = 1, int seccion = 1, bool pesable = false, const std::string& extra = "") {
        Ejecutar({"insert into productos (codigo,codigocliente,nombre,precio,iva,stock,proveedor,seccion,modoventa"
                  ",mostrarencaja,borrar) values (" +
                  std::to_string(codigo) + ",'" + barras + "','" + nombre + "'," + precio + ",21,10," +
                  std::to_string(proveedor) + "," + std::to_string(seccion) + "," + (pesable ? "-1" : "0") +
                  ",-1,0)"});
        if (!extra.empty())
            Ejecutar({"update productos set " + extra + " where codigo = " + std::to_string(codigo)});
    }

    frmCaja& Abrir() {
        CargarPanelProveedores();
        CargarPanelSecciones();
        frmCaja& c = Unica<frmCaja>();
        c.Show();
        return c;
    }

    // Characters as a keyboard or scanner types them, each through the host.
    void Teclear(Control& c, const std::string& texto) {
        for (unsigned char ch : texto) {
            const int codigo = (ch >= 'a' && ch <= 'z') ? ch - 32 : ch;
            anfitrion.Accion([&] { anfitrion.Tecla(c, codigo, ch); });
        }
    }
    void Intro(Control& c) {
        anfitrion.Accion([&] { anfitrion.Tecla(c, vbKeyReturn, vbKeyReturn); });
    }
    void TeclaFuncion(Control& c, int n) {
        anfitrion.Accion([&] { anfitrion.Tecla(c, vbKeyF1 + n - 1, 0); });
    }
    void Escanear(const std::string& codigo) {
        frmCaja& c = Unica<frmCaja>();
        TextBox& entrada = sesion().opciones.modopantallacaja == 1 ? c.txtcod : c.txtCodBarras;
        Teclear(entrada, codigo);
        Intro(entrada);
    }
    void Clic(Control& c) {
        anfitrion.Accion([&] { c.Clic(); });
    }
    void Pulsar(ButtonMatrix& panel, std::size_t boton) {
        anfitrion.Accion([&] { panel.Pulsar(boton); });
    }

    long LineasDe(std::int32_t venta) {
        return CLng(Valor("select count(*) from detalle_factura_temp where num_factura = " + std::to_string(venta)));
    }
    std::string Clave(const std::string& indice) {
        return Texto(Valor("select datoa from relaciones_fijas where indice = '" + indice + "'"));
    }
    // Boxes and run-time errors the host showed.
    std::vector<std::string> Avisos() const {
        std::vector<std::string> r;
        for (const std::string& l : lineas)
            if (l.starts_with("MENSAJE") || l.starts_with("ERROR")) r.push_back(l);
        return r;
    }

    // Runs `pasos` one by one while a screen waits modally.
    void Guion(std::deque<std::function<void()>> pasos) {
        guion_ = std::move(pasos);
        anfitrion.siguiente = [this] {
            if (guion_.empty()) return false;
            auto paso = std::move(guion_.front());
            guion_.pop_front();
            paso();
            return true;
        };
    }

    AnfitrionSinPantalla anfitrion;
    std::vector<std::string> lineas;
    std::vector<std::pair<std::string, std::vector<std::uint8_t>>> cajon;  // what reached the drawer's port
    std::deque<std::function<void()>> guion_;
};

// The settlement screen over a sale of the till, in a shop that pays in
// cash or by card, with the invoice counter at 100, a ticket printer that
// keeps its paper and a customer, Ana Ruiz (4), in the till's list. Tickets
// and the drawer are off.
class CobroTest : public CajaTest {
protected:
    void SetUp() override {
        CajaTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({"insert into formapago (codigo,nombre,posicion,borrar) values (1,'Contado',1,0)",
                  "insert into formapago (codigo,nombre,posicion,borrar) values (2,'Tarjeta',2,0)",
                  "insert into opciones (nombre,abrircajetin,imprimirticket,facturas) values ('Tienda',0,0,0)",
                  "insert into relaciones_fijas (indice,daton) values ('Factura',100)",
                  "insert into relaciones_fijas (indice,daton) values ('PagosCuenta',3)"});
        CargarPanelFormasPago();
        tickets_ = InstalarTickets();
        Sesion& s = sesion();
        s.ImpresoraTickets = "TICKETS";
        s.opciones.abrircajetin = false;
        s.opciones.imprimirticket = false;
        s.Clientes.push_back(RegistroCliente{"Ana", "Ruiz", 4, {}, 0, false, 0});
    }

    void TearDown() override {
        Unica<frmCobrar>().Unload();
        ResetPrinters();
        CajaTest::TearDown();
    }

    // A new sale of `codigos` on the till for the customer given, and the
    // settlement screen opened over it.
    frmCobrar& Cobro(std::initializer_list<const char*> codigos = {"8410001"}, const std::string& cliente = "0",
                     const std::string& nombre = "Ana Ruiz") {
        Unica<frmCobrar>().Unload();
        Unica<frmCaja>().Unload();
        frmCaja& c = Abrir();
        if (cliente != "0") {
            c.lblCodCliente.caption = cliente;
            c.txtNomCliente.SetText(nombre);
        }
        for (const char* codigo : codigos) Escanear(codigo);
        frmCobrar& f = Unica<frmCobrar>();
        anfitrion.Accion([&] { f.Show(); });
        return f;
    }

    std::vector<std::string> Filas(const std::string& sql) { return FilasDe(sql, cn); }
    bool EnPapel(std::size_t documento, const std::string& texto) const {
        return prueba::EnPapel(tickets_->Documents().at(documento), texto);
    }

    RecordingPrinter* tickets_ = nullptr;
};

}  // namespace tpv::prueba
