#include "printing/informe.hpp"

#include <cstdlib>
#include <filesystem>

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "core/runtime/texto.hpp"
#include "core/runtime/unicode.hpp"
#include "core/servicios/fuente_informes.hpp"
#include "core/servicios/suite_launcher.hpp"
#include "core/servicios/suite_settings.hpp"
#include "core/sesion/mensajes.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/page_device.hpp"
#include "printing/pdf_printer.hpp"

namespace tpv {

void FilaInforme::Poner(const std::string& columna, Value valor) {
    columnas_.emplace_back(unicode::Lower(columna), std::move(valor));
}

const Value& FilaInforme::Valor(const std::string& columna) const {
    static const Value nulo;
    const std::string clave = unicode::Lower(columna);
    for (const auto& [nombre, valor] : columnas_)
        if (nombre == clave) return valor;
    return nulo;
}

std::string FilaInforme::Texto(const std::string& columna) const { return tpv::Texto(Valor(columna)); }

double FilaInforme::Numero(const std::string& columna) const {
    const Value& v = Valor(columna);
    return v.IsNumber() ? CDbl(v) : 0.0;
}

FilasInforme LeerInformes() {
    Connection cn;
    cn.Open(ResolverFuenteDatos(kFuenteInformes));
    FilasInforme filas;
    Recordset rs;
    rs.Open("Select * from informes", cn, adOpenStatic);
    for (; !rs.Eof(); rs.MoveNext()) {
        FilaInforme fila;
        for (int i = 0; i < rs.FieldCount(); ++i) fila.Poner(rs.Fields(i).Name(), rs.Fields(i).Value());
        filas.push_back(std::move(fila));
    }
    rs.Close();
    return filas;
}

std::string CarpetaInformes() {
    std::string carpeta = SuiteSettings::Instancia().Leer("carpeta_informes");
    if (carpeta.empty()) {
        const char* casa = std::getenv("HOME");
        carpeta = std::string(casa && *casa ? casa : "/tmp") + "/Documentos/tpv";
    }
    std::error_code ec;
    std::filesystem::create_directories(carpeta, ec);
    return carpeta;
}

namespace {

enum class Maqueta { Factura, ProteccionUsuario, ProteccionGenerico };

Maqueta MaquetaDe(const std::string& fichero) {
    std::string nombre = fichero;
    if (const auto barra = nombre.find_last_of("/\\"); barra != std::string::npos) nombre.erase(0, barra + 1);
    nombre = unicode::Lower(nombre);
    if (nombre == "n_factura.rpt") return Maqueta::Factura;
    if (nombre == "n_protecciondatosusuario.rpt") return Maqueta::ProteccionUsuario;
    if (nombre == "n_protecciondatosgenerico.rpt") return Maqueta::ProteccionGenerico;
    throw RuntimeError(53, "No se ha encontrado el archivo: " + fichero);
}

// A file name made of a document's own words: no folder separators or
// control characters.
std::string NombreDeFichero(const std::string& texto) {
    std::string s;
    for (char c : texto) s += (c == '/' || c == '\\' || static_cast<unsigned char>(c) < 32) ? '-' : c;
    return s;
}

std::string NombreDelDocumento(Maqueta m, const FilaInforme& fila) {
    if (m == Maqueta::Factura)
        return NombreDeFichero(fila.Texto("texto13").empty() ? "Factura" : fila.Texto("texto13")) + " " +
               FormatNumber(fila.Numero("numerico1"), 0) + ".pdf";
    return "Proteccion de datos - " + NombreDeFichero(Trim(fila.Texto("texto1"))) + ".pdf";
}

void Maquetar(Maqueta m, PdfPrinter& hoja, const FilasInforme& filas) {
    if (m == Maqueta::Factura) MaquetarFactura(hoja, filas);
    else MaquetarProteccionDatos(hoja, filas.front(), m == Maqueta::ProteccionUsuario);
}

ControlInforme& ControlDelPuesto() {
    static ControlInforme control;
    return control;
}

}  // namespace

void ControlInforme::SetAction(int accion) {
    if (accion != 1) return;
    const Maqueta maqueta = MaquetaDe(ReportFileName);
    const FilasInforme filas = LeerInformes();
    if (filas.empty()) return;

    PdfPrinter* impresora = nullptr;
    if (!Impresora.PrinterName.empty())
        impresora = dynamic_cast<PdfPrinter*>(Printers().Find(Impresora.PrinterName));
    if (impresora) {
        for (int copia = 0; copia < std::max(CopiesToPrinter, 1); ++copia) {
            Maquetar(maqueta, *impresora, filas);
            impresora->EndDoc();
        }
        Resultado = impresora->LastFile().empty() ? impresora->DeviceName() : impresora->LastFile();
        return;
    }
    // No page printer to print on: the document is kept where the shop can
    // open and print it.
    PdfPrinter hoja("", "");
    Maquetar(maqueta, hoja, filas);
    const std::string ruta =
        (std::filesystem::path(CarpetaInformes()) / NombreDelDocumento(maqueta, filas.front())).string();
    hoja.SaveAs(ruta);
    Resultado = ruta;
}

void ImprimirReport(const std::string& nombreReport, std::string& resultado,
                    const std::function<void()>& hacerEventos) {
    auto eventos = [&] {
        if (hacerEventos) hacerEventos();
    };
    resultado.clear();
    eventos();
    eventos();
    ControlInforme& control = ControlDelPuesto();
    if (!sesion().ImpresoraListados.empty()) DarImpresora(sesion().ImpresoraListados, control.Impresora);
    eventos();
    control.ReportFileName = SuiteLauncher::CarpetaProgramas() + "/" + nombreReport;
    control.WindowTitle = "INFORMES:";
    control.CopiesToPrinter = 1;
    try {
        control.Reset();
        control.SetAction(1);
    } catch (const RuntimeError& e) {
        MsgBox(e.what(), vbCritical, std::to_string(e.Number()));
        control.Reset();
        try {
            control.SetAction(1);
        } catch (const RuntimeError&) {
            // The printer failed twice: the document is saved instead, so
            // that the shop can still print it.
            const ImpresoraInforme impresora = control.Impresora;
            control.Impresora.Reiniciar();
            try {
                control.SetAction(1);
            } catch (const RuntimeError&) {
                control.Reset();
            }
            control.Impresora = impresora;
        }
    }
    resultado = control.Resultado;
    eventos();
    eventos();
}

}  // namespace tpv
