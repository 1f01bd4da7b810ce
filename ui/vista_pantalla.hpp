#pragma once
#include <QWidget>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "screens/anfitrion.hpp"

// The window of one screen: a widget for each of its controls, placed from
// the model's twips and redrawn from the model on Refrescar. The widgets
// never keep state of their own that the model doesn't hold.
namespace tpv::ui {

class AnfitrionQt;

class VistaPantalla : public QWidget {
public:
    VistaPantalla(AnfitrionQt& anfitrion, Ventana& ventana);

    Ventana& ventana() const { return ventana_; }
    AnfitrionQt& anfitrion() const { return anfitrion_; }

    // Brings every widget in step with the model.
    void Refrescar();

    QWidget* WidgetDe(const Control& c) const;
    QWidget* WidgetDe(const std::string& nombreControl) const;
    // The control a widget (or a widget inside it) draws; nullptr for none.
    Control* ControlDe(const QObject* objeto) const;

    // Pixels of the window per twip of the model, on each axis.
    double PixelesPorTwipX() const;
    double PixelesPorTwipY() const;
    // The rectangle of a control inside its frame's widget.
    QRect Rectangulo(const Control& c) const;

    // True while the widgets are being set from the model: their signals
    // then are not the user's.
    bool Actualizando() const { return actualizando_; }

protected:
    void closeEvent(QCloseEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;

private:
    struct Enlace {
        Control* control;
        QWidget* widget;
        std::function<void()> refrescar;
    };
    void Construir();
    // A button's rectangle grown towards a finger's size.
    QRect RectanguloTactil(const Control& c, QRect r) const;

    AnfitrionQt& anfitrion_;
    Ventana& ventana_;
    std::vector<Enlace> enlaces_;
    std::unordered_map<const QObject*, Control*> controlDe_;
    bool actualizando_ = false;
};

// The widget of one control with the function that redraws it; nullptr for a
// kind that is not drawn (timers).
struct WidgetDeControl {
    QWidget* widget = nullptr;
    std::function<void()> refrescar;
};
WidgetDeControl CrearWidget(Control& c, QWidget* padre, VistaPantalla& vista);

// Colours of the model (0xBBGGRR) as Qt's; an invalid colour for a system
// colour or a value out of range.
QColor ColorDeModelo(long color);
// A text colour that reads on `fondo`.
QColor TextoSobre(const QColor& fondo);
// Sets a style sheet only when it changes (setting one is costly).
void FijarEstilo(QWidget* w, const QString& estilo);

}  // namespace tpv::ui
