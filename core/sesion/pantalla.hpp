#pragma once
#include <memory>

namespace tpv {

// The size of the machine's display, in twips (15 to a pixel). The drawing
// layer supplies the real one; without a display the till takes 1024 x 768.
class Pantalla {
public:
    virtual ~Pantalla() = default;
    virtual double AnchoTwips() const = 0;
    virtual double AltoTwips() const = 0;
};

inline constexpr double kTwipsPorPixel = 15.0;

class PantallaFija : public Pantalla {
public:
    PantallaFija(int anchoPixeles, int altoPixeles) : ancho_(anchoPixeles), alto_(altoPixeles) {}
    double AnchoTwips() const override { return ancho_ * kTwipsPorPixel; }
    double AltoTwips() const override { return alto_ * kTwipsPorPixel; }

private:
    int ancho_;
    int alto_;
};

// The display in use; a null pointer goes back to the 1024 x 768 one.
Pantalla& PantallaActual();
void FijarPantalla(std::unique_ptr<Pantalla> pantalla);

}  // namespace tpv
