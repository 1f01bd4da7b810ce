#pragma once
#include <functional>
#include <string>

#include "core/datos/connection.hpp"

namespace tpv {

// Facts of the installation and of the machine, kept in the suite's settings
// (SuiteSettings) apart from the sector, which the database's name gives.
//
// Settings keys: "esquema_colores" (0 to 3), "ajuste_letra" (SI/NO, 1/0,
// true/false), "ancho_pantalla" and "alto_pantalla" (twips, 0 or absent: not
// set, the real display counts), "sector" (overrides the database's name).
class SuiteContext {
public:
    static SuiteContext& Instancia();

    // How the user picks a scheme or a size; the drawing layer installs them.
    // A scheme chooser returns the scheme picked, or -1 when the user gave up.
    // A size chooser changes the size in place and says whether it did.
    using ElectorEsquema = std::function<int(int actual)>;
    using ElectorTamano = std::function<bool(double& ancho, double& alto)>;
    void FijarElectores(ElectorEsquema esquema, ElectorTamano tamano);

    int EsquemaColores(Connection& conexion);
    // Lets the user pick a scheme, keeps it and returns it. Without a
    // chooser, each call moves on to the next of the fixed schemes.
    int ElegirEsquemaColores(Connection& conexion);

    // The business sector word: the last component of the database's name
    // (e.g. "/var/tpv/SUPERMERCADO" gives "SUPERMERCADO"), as it stands.
    std::string Sector(Connection& conexion);

    bool AjusteLetra(Connection& conexion);
    double AnchoConfigurado(Connection& conexion);
    double AltoConfigurado(Connection& conexion);
    // Lets the user pick the screen size (twips); keeps it when it changes.
    // Without a chooser, each call moves on to the next of the usual display
    // sizes after the one given.
    bool ElegirTamano(Connection& conexion, double& ancho, double& alto);

private:
    SuiteContext() = default;
    ElectorEsquema electorEsquema_;
    ElectorTamano electorTamano_;
};

// The sector word out of a database's full name (path or server name).
std::string SectorDeBaseDeDatos(const std::string& defaultDatabase);

}  // namespace tpv
