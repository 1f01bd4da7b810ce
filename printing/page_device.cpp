#include "printing/page_device.hpp"

#include "core/runtime/texto.hpp"
#include "printing/impresoras_sistema.hpp"

namespace tpv {

RuntimeError ErrorImpresora(const std::string& detalle) {
    return RuntimeError(kErrImpresora, "Error de la impresora" + (detalle.empty() ? "" : ": " + detalle));
}

PageDevice& PrinterList::operator()(int index) const {
    if (index < 0 || index >= Count()) throw ErrorLlamadaNoValida();
    return *items_[static_cast<std::size_t>(index)];
}

PageDevice* PrinterList::Find(const std::string& deviceName) const {
    for (const auto& p : items_)
        if (p->DeviceName() == deviceName) return p.get();
    return nullptr;
}

namespace {

// What Printer() gives when there is no printer at all: every drawing fails.
class SinImpresora : public PageDevice {
public:
    std::string DeviceName() const override { return ""; }
    std::string DriverName() const override { return ""; }
    std::string Port() const override { return ""; }
    double TextWidth(const std::string&) const override { throw Falta(); }
    double TextHeight(const std::string&) const override { throw Falta(); }
    void Print(const std::string&) override { throw Falta(); }
    void PaintPicture(const std::string&, double, double, double, double) override { throw Falta(); }
    void EndDoc() override { throw Falta(); }

private:
    static RuntimeError Falta() { return ErrorImpresora("no hay ninguna impresora instalada"); }
};

struct Estado {
    PrinterList lista;
    bool cargada = false;
    PageDevice* actual = nullptr;
};

Estado& estado() {
    static Estado e;
    return e;
}

void Cargar() {
    auto& e = estado();
    if (e.cargada) return;
    e.cargada = true;
    CargarImpresorasDelSistema(e.lista);
    e.actual = e.lista.Count() > 0 ? &e.lista(0) : nullptr;
}

}  // namespace

PrinterList& Printers() {
    Cargar();
    return estado().lista;
}

PageDevice& Printer() {
    Cargar();
    static SinImpresora ninguna;
    return estado().actual ? *estado().actual : ninguna;
}

void SetPrinter(PageDevice& printer) {
    Cargar();
    estado().actual = &printer;
}

void InstallPrinters(std::vector<std::unique_ptr<PageDevice>> printers) {
    auto& e = estado();
    e.lista.Clear();
    for (auto& p : printers) e.lista.Add(std::move(p));
    e.cargada = true;
    e.actual = e.lista.Count() > 0 ? &e.lista(0) : nullptr;
}

void ResetPrinters() {
    auto& e = estado();
    e.lista.Clear();
    e.cargada = false;
    e.actual = nullptr;
}

bool BuscarImpresora(const std::string& nombre) {
    auto& lista = Printers();
    const int n = lista.Count() - 1;
    for (int i = 0; i <= n; ++i) {
        if (lista(i).DeviceName() == nombre) {
            SetPrinter(lista(i));
            return true;
        }
    }
    return false;
}

}  // namespace tpv
