#pragma once
#include <QLabel>
#include <QWidget>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/sesion/visor.hpp"

// The customer's pole display mirrored on the screen: a small strip of two
// rows of twenty characters, green on black, fed with the very bytes the
// display's port would get. For a till shown without a real display (a demo,
// a training seat), asked for with "visor_en_pantalla=SI" in the suite's
// settings.
namespace tpv {
class VisorSerie;
}

namespace tpv::ui {

class TiraVisor : public QWidget {
public:
    static constexpr int kAncho = 20;

    TiraVisor();
    // Plays the bytes as the display would: 12 clears it, 13 goes to the
    // start of the row, 10 to the second row, 31 36 x y moves the cursor
    // (counted from 1); other bytes from 32 up are characters of code page
    // 858 written at the cursor, those past the twentieth column lost.
    void Recibir(const std::vector<std::uint8_t>& bytes);
    // A row as shown, trailing blanks included.
    QString Fila(int n) const;

private:
    void Borrar();
    void Pintar();

    std::array<QString, 2> filas_;
    int fila_ = 0, columna_ = 0;
    std::array<QLabel*, 2> etiquetas_{};
};

// The pole display of this terminal, sent to the strip instead of a port. The
// port and the fixed first line are the session's, read when the till first
// talks to the display.
class VisorEnPantalla : public Visor {
public:
    VisorEnPantalla();
    ~VisorEnPantalla() override;

    void InicializarVisor() override;
    void MostrarEnVisor(const std::string& concepto, const std::string& importe) override;
    void MostrarBienvenida() override;

    TiraVisor& tira() { return *tira_; }

private:
    VisorSerie& Serie();

    std::unique_ptr<TiraVisor> tira_;
    std::unique_ptr<VisorSerie> serie_;
};

// Whether the suite's settings ask for the display on the screen.
bool VisorEnPantallaPedido();

// Installs the on-screen display when the settings ask for it (nullptr
// otherwise); it stays installed while the returned object lives.
std::unique_ptr<VisorEnPantalla> InstalarVisorEnPantalla();

}  // namespace tpv::ui
