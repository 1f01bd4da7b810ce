#include "printing/impresoras_sistema.hpp"

#include <cups/cups.h>

#include <cstring>

#include "core/runtime/texto.hpp"
#include "core/runtime/unicode.hpp"
#include "core/servicios/suite_settings.hpp"
#include "printing/destino.hpp"
#include "printing/escpos_printer.hpp"
#include "printing/pdf_printer.hpp"

namespace tpv {

namespace {

bool EsPdf(const std::string& driver) { return unicode::Upper(Trim(driver)) == "PDF"; }

void AnadirColasDelSistema(PrinterList& lista) {
    http_t* http = httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1,
                                kEsperaConexionMs, nullptr);
    if (!http) return;
    cups_dest_t* destinos = nullptr;
    const int n = cupsGetDests2(http, &destinos);
    for (int i = 0; i < n; ++i) {
        const cups_dest_t& d = destinos[i];
        if (d.instance || lista.Find(d.name)) continue;
        const char* modelo = cupsGetOption("printer-make-and-model", d.num_options, d.options);
        const bool cruda = modelo && std::strstr(modelo, "Raw") != nullptr;
        lista.Add(CrearImpresora(d.name, cruda ? "ESC/POS" : "PDF", std::string("cups:") + d.name));
    }
    cupsFreeDests(n, destinos);
    httpClose(http);
}

}  // namespace

std::unique_ptr<PageDevice> CrearImpresora(const std::string& nombre, const std::string& driver,
                                           const std::string& uri) {
    if (EsPdf(driver)) return std::make_unique<PdfPrinter>(nombre, uri);
    return std::make_unique<EscPosPrinter>(nombre, uri);
}

void CargarImpresorasDelSistema(PrinterList& lista) {
    const auto& ajustes = SuiteSettings::Instancia();
    for (const std::string& bruto : Split(ajustes.Leer("impresoras"), "|")) {
        const std::string nombre = Trim(bruto);
        if (nombre.empty() || lista.Find(nombre)) continue;
        lista.Add(CrearImpresora(nombre, ajustes.Leer("impresora." + nombre + ".driver"),
                                 ajustes.Leer("impresora." + nombre)));
    }
    AnadirColasDelSistema(lista);
}

}  // namespace tpv
