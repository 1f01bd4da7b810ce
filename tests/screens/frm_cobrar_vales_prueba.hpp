#pragma once
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "printing/page_device.hpp"
#include "printing/recording_printer.hpp"
#include "screens/frm_cobrar.hpp"
#include "tests/screens/caja_prueba.hpp"

namespace tpv::prueba {

// The settlement screen over a sale of the till, in a shop that pays in
// cash or by card, with a ticket printer that keeps its paper and a
// customer, Ana Ruiz (4), in the till's list. Tickets and the drawer are
// off, so that the paper holds only the vouchers.
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
        auto tickets = std::make_unique<RecordingPrinter>("TICKETS");
        tickets_ = tickets.get();
        std::vector<std::unique_ptr<PageDevice>> lista;
        lista.push_back(std::move(tickets));
        InstallPrinters(std::move(lista));
        Sesion& s = sesion();
        s.ImpresoraTickets = "TICKETS";
        s.opciones.abrircajetin = false;
        s.opciones.imprimirticket = false;
        s.Clientes.push_back(RegistroCliente{"Ana", "Ruiz", 4, {}, 0, false, 0});
        Articulo(5, "8410001", "Colonia", "40");
        Articulo(6, "8410002", "Jabon", "12.1");
    }

    void TearDown() override {
        Unica<frmCobrar>().Unload();
        ResetPrinters();
        CajaTest::TearDown();
    }

    // The till with a sale of `codigos` for `cliente`, and the settlement
    // screen opened over it.
    frmCobrar& Cobro(std::initializer_list<const char*> codigos, const std::string& cliente = "0") {
        Unica<frmCobrar>().Unload();
        Unica<frmCaja>().Unload();
        frmCaja& c = Abrir();
        if (cliente != "0") {
            c.lblCodCliente.caption = cliente;
            c.txtNomCliente.SetText("Ana Ruiz");
        }
        for (const char* codigo : codigos) Escanear(codigo);
        frmCobrar& f = Unica<frmCobrar>();
        anfitrion.Accion([&] { f.Show(); });
        return f;
    }

    // The rows of a query, each as its columns' texts joined by "|".
    std::vector<std::string> Filas(const std::string& sql) {
        std::vector<std::string> filas;
        Recordset rs;
        rs.Open(sql, cn);
        for (; !rs.Eof(); rs.MoveNext()) {
            std::string fila;
            for (int i = 0; i < rs.FieldCount(); ++i) fila += (i ? "|" : "") + Texto(rs.Fields(i).Value());
            filas.push_back(fila);
        }
        return filas;
    }

    bool EnPapel(std::size_t documento, const std::string& texto) const {
        const auto& papel = tickets_->Documents().at(documento).paper;
        return std::any_of(papel.begin(), papel.end(),
                           [&](const std::string& l) { return l.find(texto) != std::string::npos; });
    }

    RecordingPrinter* tickets_ = nullptr;
};

}  // namespace tpv::prueba
