#include "screens/controles.hpp"

#include <algorithm>
#include <cmath>

#include "core/runtime/error.hpp"
#include "core/runtime/reloj.hpp"
#include "core/runtime/texto.hpp"

namespace tpv {

namespace {

constexpr double kMsPorDia = 86400000.0;

RuntimeError ValorNoValido() { return RuntimeError(380, "Valor de propiedad no válido"); }

}  // namespace

std::int64_t RelojMs() { return std::llround(reloj::Ahora().serial * kMsPorDia); }

DateTime MsAFecha(std::int64_t ms) { return DateTime{static_cast<double>(ms) / kMsPorDia}; }

void CheckBox::SetValue(int valor) {
    if (valor < 0 || valor > 2) throw ValorNoValido();
    if (valor == value_) return;
    value_ = valor;
    if (Click) Click();
}

void CheckBox::Clic() { SetValue(value_ == 1 ? 0 : 1); }

void OptionButton::SetValue(bool valor) {
    if (valor == value_) return;
    value_ = valor;
    if (!valor) return;
    if (formulario) {
        for (Control& c : formulario->controles) {
            auto* otro = dynamic_cast<OptionButton*>(&c);
            if (otro && otro != this && otro->contenedor == contenedor) otro->value_ = false;
        }
    }
    if (Click) Click();
}

void OptionButton::Clic() {
    if (value_) {
        if (Click) Click();
        return;
    }
    SetValue(true);
}

void Timer::Armar() { vence_ = enabled && interval_ > 0 ? RelojMs() + interval_ : -1; }

void Timer::SetInterval(long ms) {
    if (ms < 0) throw ValorNoValido();
    interval_ = ms;
    Armar();
}

void Timer::SetEnabled(bool activo) {
    enabled = activo;
    Armar();
}

std::int64_t Timer::Vencimiento(std::int64_t ahora) {
    if (!enabled || interval_ <= 0) {
        vence_ = -1;
        return -1;
    }
    if (vence_ < 0) vence_ = ahora + interval_;
    return vence_;
}

void Timer::Disparado(std::int64_t momento) { vence_ = enabled && interval_ > 0 ? momento + interval_ : -1; }

void ListBox::AddItem(const std::string& texto, long indice) {
    if (indice == -1) indice = ListCount();
    if (indice < 0 || indice > ListCount()) throw ErrorLlamadaNoValida();
    items_.insert(items_.begin() + indice, texto);
    datos_.insert(datos_.begin() + indice, 0);
    if (listIndex_ >= indice) ++listIndex_;
}

void ListBox::RemoveItem(long indice) {
    if (indice < 0 || indice >= ListCount()) throw ErrorLlamadaNoValida();
    items_.erase(items_.begin() + indice);
    datos_.erase(datos_.begin() + indice);
    if (listIndex_ == indice) listIndex_ = -1;
    else if (listIndex_ > indice) --listIndex_;
}

void ListBox::Clear() {
    items_.clear();
    datos_.clear();
    listIndex_ = -1;
}

const std::string& ListBox::List(long indice) const {
    if (indice < 0 || indice >= ListCount()) throw ErrorLlamadaNoValida();
    return items_[static_cast<std::size_t>(indice)];
}

long ListBox::ItemData(long indice) const {
    if (indice < 0 || indice >= ListCount()) throw ErrorLlamadaNoValida();
    return datos_[static_cast<std::size_t>(indice)];
}

void ListBox::SetItemData(long indice, long dato) {
    if (indice < 0 || indice >= ListCount()) throw ErrorLlamadaNoValida();
    datos_[static_cast<std::size_t>(indice)] = dato;
}

void ListBox::SetListIndex(long indice) {
    if (indice < -1 || indice >= ListCount()) throw ValorNoValido();
    listIndex_ = indice;
    if (indice >= 0 && Click) Click();
}

std::string ListBox::Text() const { return listIndex_ >= 0 ? items_[static_cast<std::size_t>(listIndex_)] : ""; }

long ListBox::Indice(const std::string& texto) const {
    const auto i = std::find(items_.begin(), items_.end(), texto);
    return i == items_.end() ? -1 : static_cast<long>(i - items_.begin());
}

void ComboBox::SetListIndex(long indice) {
    if (indice < -1 || indice >= ListCount()) throw ValorNoValido();
    listIndex_ = indice;
    if (indice < 0) return;
    text_ = items_[static_cast<std::size_t>(indice)];
    if (Click) Click();
}

void ComboBox::SetText(std::string texto) {
    text_ = std::move(texto);
    listIndex_ = Indice(text_);
    if (Change) Change();
}

void ComboBox::RecibirCaracter(int keyAscii) {
    TextBox entrada(text_, Len(text_), 0);
    entrada.RecibirCaracter(keyAscii);
    if (entrada.Text() != text_) SetText(entrada.Text());
}

void DTPicker::SetValue(DateTime fecha) {
    value_ = fecha;
    if (Change) Change();
}

void Slider::SetValue(long valor) {
    if (valor < min || valor > max) throw ValorNoValido();
    value_ = valor;
    if (Change) Change();
}

void ProgressBar::SetValue(double valor) {
    if (valor < min || valor > max) throw ValorNoValido();
    value_ = valor;
}

void PageOpener::Cerrar() {
    pagina.clear();
    if (Cerrado) Cerrado();
}

void ButtonMatrix::Redimensionar(double factorAncho, double factorAlto, double ancho, double alto) {
    Separacion *= std::min(factorAncho, factorAlto);
    TamanoBoton *= std::min(factorAncho, factorAlto);
    width = ancho;
    height = alto;
}

int ButtonMatrix::BotonesPorPagina() const {
    const double paso = TamanoBoton + Separacion;
    if (!(paso > 0)) return 1;
    const int columnas = std::max(1, static_cast<int>((width - Separacion) / paso));
    const int filas = std::max(1, static_cast<int>((height - Separacion) / paso));
    return columnas * filas;
}

int ButtonMatrix::Paginas() const {
    const int porPagina = BotonesPorPagina();
    return std::max(1, (static_cast<int>(botones_.size()) + porPagina - 1) / porPagina);
}

void ButtonMatrix::PaginaSiguiente() {
    if (pagina_ + 1 < Paginas()) ++pagina_;
}

void ButtonMatrix::PaginaAnterior() {
    if (pagina_ > 0) --pagina_;
}

void ButtonMatrix::Pulsar(std::size_t indice) {
    if (indice >= botones_.size()) throw ErrorLlamadaNoValida();
    pagina_ = static_cast<int>(indice) / BotonesPorPagina();
    const ButtonRecord& b = botones_[indice];
    CodigoPulsado = b.Codigo;
    ColorPulsado = b.Color;
    TextoPulsado = b.Texto;
    if (Pulsado) Pulsado();
}

long ButtonMatrix::BuscarCodigo(const std::string& codigo) const {
    for (std::size_t i = 0; i < botones_.size(); ++i)
        if (botones_[i].Codigo == codigo) return static_cast<long>(i);
    return -1;
}

}  // namespace tpv
