#pragma once
#include <string>

#include "printing/page_device.hpp"
#include "printing/papel.hpp"

// What every ticket printer shares: the device fonts' measures and the
// layout of the prints on the paper grid. A ticket printer only says what
// becomes of a finished document (Entregar).
namespace tpv {

class DispositivoTicket : public PageDevice {
public:
    DispositivoTicket(std::string nombre, std::string puerto)
        : nombre_(std::move(nombre)), puerto_(std::move(puerto)) {}

    std::string DeviceName() const override { return nombre_; }
    std::string DriverName() const override { return "ESC/POS"; }
    std::string Port() const override { return puerto_; }

    double TextWidth(const std::string& text) const override;
    double TextHeight(const std::string& text) const override;
    void Print(const std::string& text) override;
    void PaintPicture(const std::string& path, double x, double y, double width, double height) override;
    void EndDoc() override;

    // The paper of the document in progress.
    const Papel& Pendiente() const { return pendiente_; }

protected:
    // Hands over a finished document. A failure here is the printer's (482).
    virtual void Entregar(Papel papel) = 0;
    // Called before every call: a printer known to be out raises 482 here.
    virtual void Comprobar() const {}

private:
    std::string nombre_, puerto_;
    Papel pendiente_;
};

}  // namespace tpv
