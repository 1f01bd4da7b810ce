#pragma once
#include <functional>
#include <string>
#include <vector>

#include "core/runtime/value.hpp"
#include "printing/cajon.hpp"

// The reports of the till: documents laid out on A4 pages from the rows
// staged in `informes` of the reporting data source. The report's file name
// chooses the layout:
//
//   "N_factura.rpt"                       the invoice of the staged sale
//   "N_protecciondatosusuario.rpt"        the privacy contract in the shop's words
//   "N_protecciondatosgenerico.rpt"       the privacy contract in standard words
//
// A report goes as a PDF to the list printer the control was given when that
// is a page printer; otherwise (no list printer, or one that can't take a
// page) it is saved as a PDF file in the reports folder (CarpetaInformes).
namespace tpv {

// One staged row of `informes`, by column name in lower case.
class FilaInforme {
public:
    void Poner(const std::string& columna, Value valor);
    std::string Texto(const std::string& columna) const;  // NULL and missing as ""
    double Numero(const std::string& columna) const;      // NULL, missing and text as 0
    const Value& Valor(const std::string& columna) const;

private:
    std::vector<std::pair<std::string, Value>> columnas_;
};
using FilasInforme = std::vector<FilaInforme>;

// "Select * from informes" on a connection of its own to the reporting source.
FilasInforme LeerInformes();

// The folder where reports are saved: the settings key "carpeta_informes",
// else "Documentos/tpv" in the user's home folder. Made when missing.
std::string CarpetaInformes();

// The report control of the till screen.
class ControlInforme {
public:
    std::string ReportFileName;  // the program's folder and the report's name
    std::string WindowTitle;
    int CopiesToPrinter = 1;
    ImpresoraInforme Impresora;  // set by DarImpresora; empty: the default

    // What the last run did: "" for nothing (no rows staged), else the
    // printer's name or the path of the saved file.
    std::string Resultado;

    // Clears the state of the last run; the file, title and printer stay.
    void Reset() { Resultado.clear(); }
    // 1 runs the report. A failure is a run-time error: 53 for a report
    // whose layout is unknown, 482 for a printer that fails.
    void SetAction(int accion);
};

// Runs the report `nombreReport` on the list printer of the session: sets
// the control up, runs it and, on an error, shows the error's description in
// a box titled with its number and runs it once more; when that run fails
// too the document is saved in the reports folder so it is not lost.
// `hacerEventos` lets the screen's pending events run (may be empty).
// `resultado` tells where the document went ("" when nothing was staged).
void ImprimirReport(const std::string& nombreReport, std::string& resultado,
                    const std::function<void()>& hacerEventos = {});

class PdfPrinter;

// The layouts, drawn on a page printer; each ends its pages but not the
// document. The invoice prints nothing for no rows.
void MaquetarFactura(PdfPrinter& hoja, const FilasInforme& filas);
void MaquetarProteccionDatos(PdfPrinter& hoja, const FilaInforme& fila, bool textoDeLaTienda);

}  // namespace tpv
