#include "core/servicios/suite_context.hpp"

#include <array>
#include <cmath>
#include <utility>

#include "core/datos/session.hpp"
#include "core/datos/tipos.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/colour_scheme.hpp"
#include "core/servicios/suite_settings.hpp"

namespace tpv {

namespace {

constexpr const char* kClaveEsquema = "esquema_colores";
constexpr const char* kClaveAjusteLetra = "ajuste_letra";
constexpr const char* kClaveAncho = "ancho_pantalla";
constexpr const char* kClaveAlto = "alto_pantalla";
constexpr const char* kClaveSector = "sector";

// Display sizes in twips (15 to a pixel) that the size choice steps through.
constexpr std::array<std::pair<double, double>, 5> kTamanos{{
    {15360.0, 11520.0},  // 1024 x 768, the size screens are drawn for
    {19200.0, 15360.0},  // 1280 x 1024
    {20490.0, 11520.0},  // 1366 x 768
    {24000.0, 15750.0},  // 1600 x 1050
    {28800.0, 16200.0},  // 1920 x 1080
}};

double LeerNumero(const char* clave) {
    double x = 0;
    std::string texto = SuiteSettings::Instancia().Leer(clave);
    if (texto.empty() || !datos::LeerNumeroRegional(texto, x) || !std::isfinite(x)) return 0.0;
    return x;
}

std::string TextoNumero(double x) { return CStr(Value(x)); }

}  // namespace

SuiteContext& SuiteContext::Instancia() {
    static SuiteContext instancia;
    return instancia;
}

void SuiteContext::FijarElectores(ElectorEsquema esquema, ElectorTamano tamano) {
    electorEsquema_ = std::move(esquema);
    electorTamano_ = std::move(tamano);
}

int SuiteContext::EsquemaColores(Connection&) {
    double x = LeerNumero(kClaveEsquema);
    int esquema = static_cast<int>(x);
    return esquema >= 0 && esquema < ColourScheme::kNumEsquemas ? esquema : 0;
}

int SuiteContext::ElegirEsquemaColores(Connection& conexion) {
    const int actual = EsquemaColores(conexion);
    int elegido = electorEsquema_ ? electorEsquema_(actual) : (actual + 1) % ColourScheme::kNumEsquemas;
    if (elegido < 0 || elegido >= ColourScheme::kNumEsquemas) return actual;
    if (elegido != actual) SuiteSettings::Instancia().Escribir(kClaveEsquema, std::to_string(elegido));
    return elegido;
}

std::string SectorDeBaseDeDatos(const std::string& defaultDatabase) {
    std::string nombre = defaultDatabase;
    std::size_t barra = nombre.find_last_of("/\\");
    if (barra != std::string::npos) nombre.erase(0, barra + 1);
    // The data layer gives the name without extension already; a file name
    // handed over as it stands loses its database extension here.
    std::size_t punto = nombre.rfind('.');
    if (punto != std::string::npos) {
        std::string ext = datos::Minusculas(nombre.substr(punto + 1));
        if (ext == "db" || ext == "sqlite" || ext == "sqlite3" || ext == "mdb") nombre.erase(punto);
    }
    return nombre;
}

std::string SuiteContext::Sector(Connection& conexion) {
    std::string fijado = SuiteSettings::Instancia().Leer(kClaveSector);
    if (!fijado.empty()) return fijado;
    return SectorDeBaseDeDatos(conexion.DefaultDatabase());
}

bool SuiteContext::AjusteLetra(Connection&) {
    std::string v = datos::Minusculas(SuiteSettings::Instancia().Leer(kClaveAjusteLetra));
    return v == "si" || v == "sí" || v == "1" || v == "-1" || v == "true" || v == "verdadero";
}

double SuiteContext::AnchoConfigurado(Connection&) { return LeerNumero(kClaveAncho); }

double SuiteContext::AltoConfigurado(Connection&) { return LeerNumero(kClaveAlto); }

bool SuiteContext::ElegirTamano(Connection&, double& ancho, double& alto) {
    double nuevoAncho = ancho, nuevoAlto = alto;
    if (electorTamano_) {
        if (!electorTamano_(nuevoAncho, nuevoAlto)) return false;
    } else {
        // The next usual size after the one in use, round to the first.
        std::size_t siguiente = 0;
        for (std::size_t i = 0; i < kTamanos.size(); ++i)
            if (kTamanos[i].first == ancho && kTamanos[i].second == alto) siguiente = (i + 1) % kTamanos.size();
        nuevoAncho = kTamanos[siguiente].first;
        nuevoAlto = kTamanos[siguiente].second;
    }
    if (!(nuevoAncho > 0 && nuevoAlto > 0) || (nuevoAncho == ancho && nuevoAlto == alto)) return false;
    SuiteSettings& ajustes = SuiteSettings::Instancia();
    ajustes.Escribir(kClaveAncho, TextoNumero(nuevoAncho));
    ajustes.Escribir(kClaveAlto, TextoNumero(nuevoAlto));
    ancho = nuevoAncho;
    alto = nuevoAlto;
    return true;
}

}  // namespace tpv
