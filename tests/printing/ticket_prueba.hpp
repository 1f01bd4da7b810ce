#pragma once
#include <memory>
#include <string>
#include <vector>

#include "core/runtime/calendario.hpp"
#include "core/runtime/reloj.hpp"
#include "printing/page_device.hpp"
#include "printing/recording_printer.hpp"
#include "tests/printing/impresion_prueba.hpp"
#include "tests/support/mensajes_guionados.hpp"

namespace tpv::prueba {

// A shop with a ticket printer "TICKETS" of 35 characters (behind another
// printer, so that the printer is chosen by name), the clock set, and boxes
// answered by script.
class TicketTest : public ImpresionTest {
protected:
    void SetUp() override {
        ImpresionTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        reloj::Fijar(DateTime{DateSerial(2026, 3, 14).serial + TimeSerial(10, 30, 0).serial});
        auto otra = std::make_unique<RecordingPrinter>("OTRA");
        auto tickets = std::make_unique<RecordingPrinter>("TICKETS");
        otra_ = otra.get();
        tickets_ = tickets.get();
        std::vector<std::unique_ptr<PageDevice>> lista;
        lista.push_back(std::move(otra));
        lista.push_back(std::move(tickets));
        InstallPrinters(std::move(lista));
        Ejecutar({
            "insert into opciones (nombre,direccion,telefono,cif,NumDecimales,iva) values "
            "('Perfumería Olmo','C/ Mayor 3','918880000','B12345678',2,True)",
            "insert into impresoras (terminal,tipo,impresora,fuente,numCaracteres) values "
            "('CAJA1','T','TICKETS','FontA11',35)",
            "insert into configuracionregional (nombreimpuesto1,moneda) values ('IVA','euros')",
            "insert into formapago (codigo,nombre) values (1,'Contado')",
            "insert into formapago (codigo,nombre) values (2,'Tarjeta')",
        });
    }

    void TearDown() override {
        ResetPrinters();
        reloj::Soltar();
        ImpresionTest::TearDown();
    }

    std::vector<std::string> Papel() const {
        if (tickets_->Documents().empty()) return {"(sin documento)"};
        return tickets_->Documents().back().paper;
    }

    RecordingPrinter* otra_ = nullptr;
    RecordingPrinter* tickets_ = nullptr;
    MensajesGuionados cajas;
};

}  // namespace tpv::prueba
