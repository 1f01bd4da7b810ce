// tpvimprimir: the technician's tool for the till's printers, drawer and
// pole display.
#include <cmath>
#include <iostream>
#include <string>
#include <vector>

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "core/servicios/connection_opener.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/cajon.hpp"
#include "printing/page_device.hpp"
#include "printing/pdf_printer.hpp"
#include "printing/ticket_configurable.hpp"
#include "printing/ticket_service.hpp"
#include "printing/visor_serie.hpp"

namespace {

using namespace tpv;

int Uso() {
    std::cerr << "Uso:\n"
                 "  tpvimprimir lista                          las impresoras que ve este equipo\n"
                 "  tpvimprimir cajon PUERTO SECUENCIA         abre el cajón escribiendo la secuencia en el puerto\n"
                 "  tpvimprimir cajon-impresora IMPRESORA      abre el cajón a través de la impresora de tickets\n"
                 "  tpvimprimir visor PUERTO TEXTO [IMPORTE]   envía una línea al visor del cliente\n"
                 "  tpvimprimir prueba IMPRESORA               imprime una página de prueba\n"
                 "  tpvimprimir ticket IMPRESORA [NUMERO]      imprime el ticket de una venta cerrada, o el de\n"
                 "                                             ejemplo sin número o con uno negativo\n"
                 "\n"
                 "Los tickets leen la base de datos de la tienda (TPV_DATABASE o base_de_datos en los ajustes).\n";
    return 2;
}

PageDevice& Elegir(const std::string& nombre) {
    if (!BuscarImpresora(nombre)) throw RuntimeError(kErrImpresora, "no existe la impresora \"" + nombre + "\"");
    return Printer();
}

int Lista() {
    if (Printers().Count() == 0) {
        std::cout << "No se ve ninguna impresora.\n";
        return 0;
    }
    for (int i = 0; i < Printers().Count(); ++i) {
        const PageDevice& p = Printers()(i);
        std::cout << p.DeviceName() << "\t" << p.DriverName() << "\t" << p.Port() << "\n";
    }
    return 0;
}

int Prueba(const std::string& nombre) {
    PageDevice& p = Elegir(nombre);
    const bool ticket = p.DriverName() == "ESC/POS";
    if (ticket) p.Font.Name = "FontA11";
    p.Font.Size = 14;
    p.Print("PRUEBA");
    p.Font.Size = 9;
    p.Print("Impresora: " + nombre);
    p.Print("Puerto: " + p.Port());
    p.Print(" ");
    p.Print("123456789012345678901234567890123");
    p.Print("áéíóú ÁÉÍÓÚ ñÑ üÜ ¿? ¡! €");
    if (ticket) {
        p.Font.Name = "FontB11";
        p.Print("Fuente B: 123456789012345678901234567890");
    }
    p.EndDoc();
    std::cout << "Página de prueba enviada a " << nombre << ".\n";
    if (auto* pdf = dynamic_cast<PdfPrinter*>(&p); pdf && !pdf->LastFile().empty())
        std::cout << "Guardada en " << pdf->LastFile() << "\n";
    return 0;
}

// The ticket code reports a printer that fails in a box: here the box is a
// line on standard error, and the tool ends with an error.
class MensajesEnConsola : public Mensajes {
public:
    int Mostrar(const CajaMensaje& caja) override {
        std::cerr << "tpvimprimir: " << caja.texto << "\n";
        ++mostradas;
        return caja.RespuestaPorDefecto();
    }
    int mostradas = 0;
};

// The sample ticket (no number) or the ticket of the closed sale `numero`,
// in the shop's wording of confticket, or the till's own without it.
int Ticket(const std::string& nombre, const std::string& numeroTexto) {
    Elegir(nombre);
    std::int32_t numero = -1;
    if (!numeroTexto.empty()) {
        double valor = 0;
        if (!LeerNumero(numeroTexto, valor) || valor != std::floor(valor) || std::fabs(valor) > 2147483647)
            throw RuntimeError(kErrInvalidCall, "el número de venta \"" + numeroTexto + "\" no es válido");
        // A negative number asks for the sample, as the ticket code takes it.
        numero = valor < 0 ? -1 : static_cast<std::int32_t>(valor);
    }
    Connection& cn = sesion().Conexion;
    ConnectionOpener::Instancia().Abrir("", cn);
    if (numero >= 0) {
        Recordset rs;
        rs.Open("Select numero from cabecera_factura where numero = " + std::to_string(numero), cn, adOpenStatic);
        const bool existe = !rs.Eof();
        rs.Close();
        if (!existe) throw RuntimeError(kErrInvalidCall, "no existe la venta " + std::to_string(numero));
    }
    MensajesEnConsola consola;
    FijarMensajes(&consola);
    double propina = 0;
    ImprimirConfONOFF ticket(RotulosDelServicio(cn));
    ticket.ImprimirNuevoTicket(cn, nombre, "", "", 0, 0, 0, numero, numero >= 0 ? "cabecera_factura" : "", 0, 0, 0,
                               propina);
    FijarMensajes(nullptr);
    if (consola.mostradas > 0) return 1;
    if (numero >= 0) std::cout << "Ticket de la venta " << numero << " enviado a " << nombre << ".\n";
    else std::cout << "Ticket de ejemplo enviado a " << nombre << ".\n";
    return 0;
}

int CajonPorImpresora(const std::string& nombre) {
    PageDevice& p = Elegir(nombre);
    p.Font.Name = "control";
    p.Print("A");
    p.EndDoc();
    std::cout << "Cajón abierto a través de " << nombre << ".\n";
    return 0;
}

int EnviarAlVisor(const std::vector<std::string>& a) {
    const std::string ruta = VisorSerie::RutaDelPuerto(a[2]);
    VisorSerie visor(a[2], "");
    visor.InicializarVisor();
    visor.MostrarEnVisor(a[3], a.size() > 4 ? a[4] : "");
    std::cout << "Enviado al visor en " << ruta << ": " << LineaVisor(a[3], a.size() > 4 ? a[4] : "") << "\n";
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> a(argv, argv + argc);
    if (a.size() < 2) return Uso();
    const std::string& orden = a[1];
    try {
        if (orden == "lista" && a.size() == 2) return Lista();
        if (orden == "cajon" && a.size() == 4) {
            EscribirSecuenciaCajon(a[2], a[3]);
            std::cout << "Secuencia del cajón escrita en " << a[2] << ".\n";
            return 0;
        }
        if (orden == "cajon-impresora" && a.size() == 3) return CajonPorImpresora(a[2]);
        if (orden == "visor" && (a.size() == 4 || a.size() == 5)) return EnviarAlVisor(a);
        if (orden == "prueba" && a.size() == 3) return Prueba(a[2]);
        if (orden == "ticket" && (a.size() == 3 || a.size() == 4)) return Ticket(a[2], a.size() == 4 ? a[3] : "");
    } catch (const RuntimeError& e) {
        std::cerr << "tpvimprimir: error " << e.Number() << ": " << e.what() << "\n";
        return 1;
    } catch (const std::exception& e) {
        std::cerr << "tpvimprimir: " << e.what() << "\n";
        return 1;
    }
    return Uso();
}
