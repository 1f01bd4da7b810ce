#pragma once
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/sesion/paneles.hpp"
#include "printing/cajon.hpp"
#include "screens/pantallas.hpp"
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

    AnfitrionSinPantalla anfitrion;
    std::vector<std::string> lineas;
    std::vector<std::pair<std::string, std::vector<std::uint8_t>>> cajon;  // what reached the drawer's port
};

}  // namespace tpv::prueba
