#pragma once
#include <memory>
#include <string>

#include "printing/page_device.hpp"

// A full-page printer: each document becomes an A4 PDF drawn with real fonts
// (the font name as the system's font matching finds it; the ticket device
// fonts as a monospaced one) and real text measures. The PDF goes to the
// printer's device URI (a print queue, or a folder where it is saved).
namespace tpv {

class PdfPrinter : public PageDevice {
public:
    PdfPrinter(std::string nombre, std::string uri);
    ~PdfPrinter() override;

    std::string DeviceName() const override { return nombre_; }
    std::string DriverName() const override { return "PDF"; }
    std::string Port() const override { return uri_; }

    double TextWidth(const std::string& text) const override;
    double TextHeight(const std::string& text) const override;
    void Print(const std::string& text) override;
    void PaintPicture(const std::string& path, double x, double y, double width, double height) override;
    void EndDoc() override;

    // Draws a new page: what prints below the page's foot goes on the next.
    void NewPage();
    // A straight line of `grosor` twips, grey level 0 (black) to 1 (white).
    void Line(double x1, double y1, double x2, double y2, double grosor = 10, double gris = 0);
    // A box filled in a grey level.
    void FillBox(double x, double y, double width, double height, double gris);
    // Ends the document and writes it to the file `ruta`, replacing it,
    // instead of sending it to the printer's destination.
    void SaveAs(const std::string& ruta);
    // The file the last document was saved in, when the destination saves.
    const std::string& LastFile() const { return ultimoFichero_; }

    static constexpr double kAnchoPagina = 11906;  // A4 in twips
    static constexpr double kAltoPagina = 16838;

private:
    struct Documento;
    Documento& Doc();

    std::string nombre_, uri_, ultimoFichero_;
    std::unique_ptr<Documento> doc_;
};

}  // namespace tpv
