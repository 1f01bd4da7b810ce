#pragma once
#include <functional>
#include <string>
#include <vector>

#include "printing/dispositivo_ticket.hpp"

// A ticket printer that prints nothing: it keeps every call made on it and
// each finished document as its paper reads. Tests and the scripted runner
// install it under the names of the shop's printers. It measures and lays
// out exactly as the real ticket printer does (the device fonts of
// page_device.hpp), and can give the ESC/POS bytes the real one would send.
namespace tpv {

class RecordingPrinter : public DispositivoTicket {
public:
    struct Call {
        std::string what;  // "Print", "PaintPicture", "EndDoc"
        std::string text;  // Print: the text; PaintPicture: the path
        double x = 0, y = 0;
        PrinterFont font;
        double width = 0, height = 0;  // PaintPicture
    };
    struct Document {
        std::vector<std::string> paper;  // the text lines, trailing blanks removed
        bool opensDrawer = false;
        Papel layout;
    };
    using Observer = std::function<void(const RecordingPrinter&, const Document&)>;

    explicit RecordingPrinter(std::string name, std::string driver = "ESC/POS", std::string port = "");

    std::string DriverName() const override { return driver_; }

    void Print(const std::string& text) override;
    void PaintPicture(const std::string& path, double x, double y, double width, double height) override;
    void EndDoc() override;

    const std::vector<Call>& Calls() const { return calls_; }
    const std::vector<Document>& Documents() const { return documents_; }
    // The paper of the document in progress (not yet ended).
    std::vector<std::string> PendingPaper() const { return Pendiente().Lineas(); }
    // Called at each EndDoc with the finished document.
    void SetObserver(Observer observer) { observer_ = std::move(observer); }
    // From now on every call fails with error 482, as an unplugged printer.
    void SetFailing(bool failing) { failing_ = failing; }
    void Clear();

protected:
    void Entregar(Papel papel) override;
    void Comprobar() const override;

private:
    std::string driver_;
    std::vector<Call> calls_;
    std::vector<Document> documents_;
    Observer observer_;
    bool failing_ = false;
};

}  // namespace tpv
