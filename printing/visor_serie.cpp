#include "printing/visor_serie.hpp"

#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/suite_settings.hpp"
#include "printing/pc858.hpp"
#include "printing/puerto_serie.hpp"

namespace tpv {

VisorSerie::VisorSerie(std::string puertoVisor, std::string datoVisor)
    : puerto_(std::move(puertoVisor)), dato_(std::move(datoVisor)) {}

VisorSerie::~VisorSerie() { Cerrar(fd_); }

std::string VisorSerie::RutaDelPuerto(const std::string& puertoVisor) {
    const auto& ajustes = SuiteSettings::Instancia();
    const std::string n = Trim(puertoVisor);
    if (ajustes.Existe("visor." + n)) return ajustes.Leer("visor." + n);
    const double numero = Val(n);
    if (numero >= 1 && numero <= 256) return "/dev/ttyS" + std::to_string(static_cast<int>(numero) - 1);
    return n;
}

void VisorSerie::InicializarVisor() {
    if (salida_) return;
    Cerrar(fd_);
    std::string error;
    fd_ = AbrirPuertoSerie(RutaDelPuerto(puerto_), 9600, error);
}

void VisorSerie::Escribir(const std::vector<std::uint8_t>& bytes) {
    if (salida_) {
        salida_(bytes);
        return;
    }
    if (fd_ < 0) return;
    std::string error;
    if (!EscribirTodo(fd_, bytes.data(), bytes.size(), 500, error)) Cerrar(fd_);
}

void VisorSerie::Pantalla(const std::string& linea) {
    auto texto = [](const std::string& s) {
        const std::string b = APc858(s);
        return std::vector<std::uint8_t>(b.begin(), b.end());
    };
    Escribir({12});
    Escribir({13});
    Escribir(texto(dato_));
    Escribir({31, 36, 1, 2});
    Escribir(texto(linea));
}

std::string LineaVisor(const std::string& concepto, const std::string& importe) {
    const long espacio = 20 - Len(importe);
    std::string texto;
    if (Len(concepto) <= espacio - 3) {
        texto = concepto + "...";
        if (Len(texto) < espacio) texto += Space(espacio - Len(texto));
    } else {
        texto = Left(concepto, espacio - 3 > 0 ? espacio - 3 : 0) + "...";
    }
    return texto + importe;
}

void VisorSerie::MostrarEnVisor(const std::string& concepto, const std::string& importe) {
    Pantalla(LineaVisor(concepto, importe));
}

void VisorSerie::MostrarBienvenida() { Pantalla(" **  Bienvenido  ** "); }

}  // namespace tpv
