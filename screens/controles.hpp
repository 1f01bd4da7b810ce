#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/runtime/value.hpp"
#include "core/servicios/formulario.hpp"
#include "core/sesion/button_record.hpp"

// The kinds of control the screens are made of, beyond the entry, the label
// and the grid of the screen model. Each behaves as the screens expect from
// the platform they were written for: assigning a value raises its event at
// once, a user's click goes through Clic().
namespace tpv {

class CommandButton : public Control {
public:
    CommandButton() : Control("", "CommandButton") {}
};

// A container: what it holds is hidden or disabled with it.
class Frame : public Control {
public:
    Frame() : Control("", "Frame") {}
    bool TomaFoco() const override { return false; }
};

// 0 unchecked, 1 checked. Assigning another value raises Click.
class CheckBox : public Control {
public:
    CheckBox() : Control("", "CheckBox") {}
    int Value() const { return value_; }
    void SetValue(int valor);
    void Clic() override;  // toggles 0 and 1

private:
    int value_ = 0;
};

// Selected or not; selecting one clears the others of the same frame (or of
// the screen when it stands in none) and raises its Click.
class OptionButton : public Control {
public:
    OptionButton() : Control("", "OptionButton") {}
    bool Value() const { return value_; }
    void SetValue(bool valor);
    void Clic() override;

private:
    bool value_ = false;
};

// Fires `Tick` each time its interval (ms) elapses while enabled, by the
// till's clock. Enabling it or changing the interval starts the count anew;
// a timer of a screen that is not loaded doesn't fire. Set `enabled` and the
// interval through the setters, which restart the count.
class Timer : public Control {
public:
    Timer() : Control("", "Timer") {}
    bool TomaFoco() const override { return false; }

    long Interval() const { return interval_; }
    void SetInterval(long ms);
    bool Enabled() const { return enabled; }
    void SetEnabled(bool activo);

    std::function<void()> Tick;

    // When it falls due next, in ms of the clock; -1 when it doesn't run.
    // A timer enabled without the setters is armed from `ahora`.
    std::int64_t Vencimiento(std::int64_t ahora);
    // After a firing at `momento`: the next is one interval later.
    void Disparado(std::int64_t momento);
    void Desarmar() { vence_ = -1; }

private:
    void Armar();
    long interval_ = 0;
    std::int64_t vence_ = -1;
};

// The till's clock in whole milliseconds, and back.
std::int64_t RelojMs();
DateTime MsAFecha(std::int64_t ms);

// A list of texts; ListIndex -1 when none is selected. Selecting raises Click.
class ListBox : public Control {
public:
    ListBox() : Control("", "ListBox") {}
    void AddItem(const std::string& texto, long indice = -1);
    void RemoveItem(long indice);
    void Clear();
    long ListCount() const { return static_cast<long>(items_.size()); }
    const std::string& List(long indice) const;
    long ItemData(long indice) const;
    void SetItemData(long indice, long dato);
    long ListIndex() const { return listIndex_; }
    virtual void SetListIndex(long indice);
    // The text of the selected item ("" when none).
    virtual std::string Text() const;
    // The first item whose text is that, or -1.
    long Indice(const std::string& texto) const;

protected:
    std::vector<std::string> items_;
    std::vector<long> datos_;
    long listIndex_ = -1;
};

// A list with an entry: its text raises Change when assigned; selecting an
// item puts its text in the entry (Click, not Change). Typing writes at the
// end of the entry, so a text of no item may be given.
class ComboBox : public ListBox {
public:
    ComboBox() { tipo = "ComboBox"; }
    void SetListIndex(long indice) override;
    std::string Text() const override { return text_; }
    void SetText(std::string texto);
    void RecibirCaracter(int keyAscii) override;
    std::function<void()> Change;

private:
    std::string text_;
};

class PictureBox : public Control {
public:
    PictureBox() : Control("", "PictureBox") {}
    std::string picture;  // path of the picture shown, "" for none
};

// A date picker: its value is a date; assigning one raises Change.
class DTPicker : public Control {
public:
    DTPicker() : Control("", "DTPicker") {}
    DateTime Value() const { return value_; }
    void SetValue(DateTime fecha);
    std::function<void()> Change;

private:
    DateTime value_{};
};

// A slider between Min and Max; assigning a value raises Change. A value out
// of range is the run-time error 380.
class Slider : public Control {
public:
    Slider() : Control("", "Slider") {}
    long Value() const { return value_; }
    void SetValue(long valor);
    long min = 0, max = 10;
    std::function<void()> Change;

private:
    long value_ = 0;
};

// A bar between Min and Max; a value out of range is the run-time error 380.
class ProgressBar : public Control {
public:
    ProgressBar() : Control("", "ProgressBar") {}
    bool TomaFoco() const override { return false; }
    double Value() const { return value_; }
    void SetValue(double valor);
    double min = 0, max = 100;

private:
    double value_ = 0;
};

// Shows a help page; `Cerrado` when the user closes it.
class PageOpener : public Control {
public:
    PageOpener() : Control("", "PageOpener") {}
    void Abrir(const std::string& ruta) { pagina = ruta; }
    void Cerrar();
    std::string pagina;
    std::function<void()> Cerrado;
};

// A panel of big buttons, one per record of the list it is handed. It pages
// by itself when the records don't fit. Pressing a button sets CodigoPulsado,
// ColorPulsado and TextoPulsado from its record, then raises Pulsado; a key
// on the panel raises KeyDown.
class ButtonMatrix : public Control {
public:
    ButtonMatrix() : Control("", "ButtonMatrix") {}

    void Recibo_Datos_De_Matriz(const PanelRegistros& registros) { registros_ = registros; }
    void LimpiarPanel() { botones_.clear(); pagina_ = 0; }
    void Cargar_Contenido_Boton() { botones_ = registros_; pagina_ = 0; }
    void Vaciar() { registros_.clear(); LimpiarPanel(); }
    // Scales the panel and its buttons by the two factors of the fitter.
    void Redimensionar(double factorAncho, double factorAlto, double ancho, double alto);

    // The two sizes of its buttons, in twips: the gap and the side.
    double Separacion = 120;
    double TamanoBoton = 1200;
    bool UsaColores = false;
    std::string CodigoPulsado;
    std::string ColorPulsado;
    std::string TextoPulsado;
    std::function<void()> Pulsado;

    // The buttons shown, in order; those of the page in view.
    const PanelRegistros& Botones() const { return botones_; }
    int BotonesPorPagina() const;
    int Pagina() const { return pagina_; }
    int Paginas() const;
    void PaginaSiguiente();
    void PaginaAnterior();
    // Presses the button `indice` (from 0) of the list shown, turning to its
    // page first. Out of range: run-time error 5.
    void Pulsar(std::size_t indice);
    // The first button shown with that code, or -1.
    long BuscarCodigo(const std::string& codigo) const;

private:
    PanelRegistros registros_;
    PanelRegistros botones_;
    int pagina_ = 0;
};

}  // namespace tpv
