#pragma once
#include <string>

// Message boxes. The routines of the till ask through MsgBox, with the
// original platform's style word (buttons + icon + default button); whoever
// draws the screens installs the one that shows them. Without one, a box
// answers with its default button at once.
namespace tpv {

// Buttons.
inline constexpr int vbOKOnly = 0;
inline constexpr int vbOKCancel = 1;
inline constexpr int vbAbortRetryIgnore = 2;
inline constexpr int vbYesNoCancel = 3;
inline constexpr int vbYesNo = 4;
inline constexpr int vbRetryCancel = 5;
// Icons.
inline constexpr int vbCritical = 16;
inline constexpr int vbQuestion = 32;
inline constexpr int vbExclamation = 48;
inline constexpr int vbInformation = 64;
// Default button.
inline constexpr int vbDefaultButton1 = 0;
inline constexpr int vbDefaultButton2 = 256;
inline constexpr int vbDefaultButton3 = 512;
// Answers.
inline constexpr int vbOK = 1;
inline constexpr int vbCancel = 2;
inline constexpr int vbAbort = 3;
inline constexpr int vbRetry = 4;
inline constexpr int vbIgnore = 5;
inline constexpr int vbYes = 6;
inline constexpr int vbNo = 7;

// The title of a box that names none.
inline constexpr const char* kTituloPrograma = "TPV";

struct CajaMensaje {
    std::string texto;
    std::string titulo;  // never empty: kTituloPrograma when the caller gave none
    int estilo = vbOKOnly;

    int Botones() const { return estilo & 7; }
    int Icono() const { return estilo & 0x70; }
    // The answers of the buttons, in order, and the one of the default button.
    int Respuesta(int boton) const;
    int NumeroDeBotones() const;
    int RespuestaPorDefecto() const;
};

class Mensajes {
public:
    virtual ~Mensajes() = default;
    // Shows the box and waits for the answer (vbOK, vbYes...).
    virtual int Mostrar(const CajaMensaje& caja) = 0;
};

// Installs the shower of boxes; nullptr goes back to answering by default.
void FijarMensajes(Mensajes* mensajes);
Mensajes* MensajesInstalados();

int MsgBox(const std::string& texto, int estilo = vbOKOnly, const std::string& titulo = "");

}  // namespace tpv
