#pragma once
#include <memory>
#include <string>
#include <vector>

#include "core/runtime/error.hpp"

// The page device the till draws its paper on, and the list of printers it
// can reach. The ticket code uses it as it always used the system's printer:
//
//     Printer().Font.Name = "FontA11";  Printer().Font.Size = 9;
//     Printer().CurrentX = 0;           Printer().Print("Gracias");
//     Printer().EndDoc();
//
// All measures are in twips (1440 to the inch). Print writes the text at the
// current position and moves to the start of the next line (CurrentX back to
// 0, CurrentY down by the height of a line of the font in force). A document
// runs from the first drawing call to EndDoc, which sends it to the printer.
//
// Ticket printers (DriverName "ESC/POS") have fixed-pitch device fonts, named
// by the shop in impresoras.fuente:
//
//   name          font   cell (dots at 180 dpi)   width     line height
//   "FontA11"     A      12 x 24                  96 twips  240 twips
//   "FontA1x1"    A      12 x 24                  96 twips  240 twips
//   "FontB11"     B       9 x 17                  72 twips  192 twips
//   "FontA22", "FontA2x2", "FontB21"...: the digits are the width and height
//                 multipliers of the cell (1 to 8)
//   "control"     the printer's control font: the letter "A" in it is the
//                 drawer's kick; it prints nothing on paper
//   any other     font A
//
// A font size of 14 points or more doubles the width and the height again.
// TextWidth of a text is its length in characters times the width of one
// character of the font in force; TextHeight is the line height. Names
// compare without regard to case. Page printers (DriverName "PDF") measure
// with the real font of that name (or a sans-serif) at its size.
//
// A failing printer (unplugged, not answering, no such printer) raises a
// RuntimeError with number 482.
namespace tpv {

inline constexpr long kErrImpresora = 482;
RuntimeError ErrorImpresora(const std::string& detalle);

struct PrinterFont {
    std::string Name = "FontA11";
    double Size = 9;
    bool Bold = false;
};

class PageDevice {
public:
    virtual ~PageDevice() = default;

    // The printer as the system lists it.
    virtual std::string DeviceName() const = 0;
    virtual std::string DriverName() const = 0;  // "ESC/POS" or "PDF"
    virtual std::string Port() const = 0;        // where its bytes go

    // The font in force, read by every measure and print.
    PrinterFont Font;
    // The current position, in twips from the top left corner of the page.
    double CurrentX = 0;
    double CurrentY = 0;

    virtual double TextWidth(const std::string& text) const = 0;
    virtual double TextHeight(const std::string& text) const = 0;
    // Prints at the current position and moves to the start of the next line.
    virtual void Print(const std::string& text) = 0;
    // Draws the picture file in the box (twips). A file that can't be read
    // draws nothing.
    virtual void PaintPicture(const std::string& path, double x, double y, double width, double height) = 0;
    // Ends the document and sends it; the next call starts a new one. The
    // position goes back to the top; the font stays.
    virtual void EndDoc() = 0;
};

// The printers this till can reach, in the order the system lists them.
class PrinterList {
public:
    int Count() const { return static_cast<int>(items_.size()); }
    PageDevice& operator()(int index) const;  // 0 to Count() - 1; other: error 5
    PageDevice* Find(const std::string& deviceName) const;

    void Add(std::unique_ptr<PageDevice> printer) { items_.push_back(std::move(printer)); }
    void Clear() { items_.clear(); }

private:
    std::vector<std::unique_ptr<PageDevice>> items_;
};

// The list of printers. On first use it holds the printers the suite's
// settings declare and the queues of the print system; tests and the scripted
// runner replace it with InstallPrinters.
PrinterList& Printers();
// The current printer: the first of the list until SetPrinter chooses one.
// With no printer at all, one whose every drawing call fails with error 482.
PageDevice& Printer();
void SetPrinter(PageDevice& printer);

// Replaces the list (and makes its first printer the current one).
void InstallPrinters(std::vector<std::unique_ptr<PageDevice>> printers);
// Drops the installed list: the next use reads the system's printers again.
void ResetPrinters();

// The walk of the printers list: the first printer whose DeviceName equals
// `nombre` becomes the current printer. When none does, the current printer
// stays and printing goes on there. Returns whether one was found.
bool BuscarImpresora(const std::string& nombre);

}  // namespace tpv
