#include "printing/cajon.hpp"

#include <cmath>

#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/texto.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/page_device.hpp"
#include "printing/puerto_serie.hpp"

namespace tpv {

namespace {

void EscribirEnFichero(const std::string& puerto, const std::vector<std::uint8_t>& bytes) {
    const std::string ruta = RutaDePuerto(puerto);
    std::string error;
    int fd = AbrirParaEscribir(ruta, error);
    if (fd < 0) throw RuntimeError(75, "Error de acceso a la ruta o el archivo: " + error);
    const bool bien = EscribirTodo(fd, bytes.data(), bytes.size(), kEsperaEscrituraMs, error);
    Cerrar(fd);
    if (!bien) throw RuntimeError(57, "Error de E/S del dispositivo: " + ruta + ": " + error);
}

EscritorPuerto& Escritor() {
    static EscritorPuerto escritor = EscribirEnFichero;
    return escritor;
}

}  // namespace

void FijarEscritorPuerto(EscritorPuerto escritor) {
    Escritor() = escritor ? std::move(escritor) : EscritorPuerto(EscribirEnFichero);
}

std::vector<std::uint8_t> BytesDeSecuencia(const std::string& secuencia) {
    const std::vector<std::string> items = Split(secuencia, "|");
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; i < 5; ++i) {
        const std::string item = i < items.size() ? items[i] : "";
        const double valor = item.empty() ? 0 : std::nearbyint(Val(item));
        if (!(valor >= 0 && valor <= 255)) throw ErrorLlamadaNoValida();
        bytes.push_back(static_cast<std::uint8_t>(valor));
    }
    return bytes;
}

void EscribirSecuenciaCajon(const std::string& puerto, const std::string& secuencia) {
    std::vector<std::uint8_t> bytes = BytesDeSecuencia(secuencia);
    bytes.push_back(13);
    bytes.push_back(10);
    Escritor()(puerto, bytes);
}

void AbrirCajon() {
    const Sesion& s = sesion();
    if (s.PuertoImpresora.empty()) {
        MsgBox("Compruebe la conexion con su impresora, si la impresora esta conectada a otro equipo compruebe el "
               "estado de la conexion. Tambien compruebe la configuracion de apertura del cajon.",
               vbCritical, "Apertura cajon");
        return;
    }
    if (!s.SecuenciaApertura.empty()) {
        EscribirSecuenciaCajon(s.PuertoImpresora, s.SecuenciaApertura);
        return;
    }
    if (UCase(s.PuertoImpresora) != "USB") return;
    BuscarImpresora(s.ImpresoraTickets);
    if (s.FuenteImpresora == "FontA1x1") {
        Printer().Print("");
        Printer().EndDoc();
        return;
    }
    Printer().Font.Name = "control";
    Printer().Print("A");
    Printer().EndDoc();
}

void DarImpresora(const std::string& nombre, ImpresoraInforme& control) {
    PageDevice* encontrada = nullptr;
    for (int i = 0; i < Printers().Count() && !encontrada; ++i)
        if (Printers()(i).DeviceName() == nombre) encontrada = &Printers()(i);
    control.Reiniciar();
    if (!encontrada) return;
    control.PrinterName = encontrada->DeviceName();
    control.PrinterDriver = encontrada->DriverName();
    control.PrinterPort = encontrada->Port();
}

}  // namespace tpv
