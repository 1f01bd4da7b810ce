#include "ui/visor_pantalla.hpp"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "core/runtime/texto.hpp"
#include "core/servicios/suite_settings.hpp"
#include "core/sesion/sesion.hpp"
#include "printing/pc858.hpp"
#include "printing/visor_serie.hpp"

namespace tpv::ui {

TiraVisor::TiraVisor() {
    setObjectName(QStringLiteral("visorEnPantalla"));
    setWindowTitle(QStringLiteral("Visor"));
    // A display of its own: above the till's screens, never taking the focus.
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setStyleSheet(QStringLiteral("TiraVisor,QWidget#visorEnPantalla{background:#050805;border:3px solid #3a3a3a;}"
                                 "QLabel{color:#39ff5a;background:#050805;}"));
    auto* caja = new QVBoxLayout(this);
    caja->setContentsMargins(10, 6, 10, 6);
    caja->setSpacing(2);
    QFont letra = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    letra.setPixelSize(20);
    letra.setBold(true);
    for (int i = 0; i < 2; ++i) {
        etiquetas_[i] = new QLabel(this);
        etiquetas_[i]->setObjectName(QStringLiteral("visorFila%1").arg(i + 1));
        etiquetas_[i]->setFont(letra);
        etiquetas_[i]->setTextFormat(Qt::PlainText);
        caja->addWidget(etiquetas_[i]);
    }
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, QColor(0x05, 0x08, 0x05));
    setPalette(p);
    Borrar();
    adjustSize();
    setFixedSize(sizeHint());
    // At the foot of the screen, in the middle, where the till's screens keep
    // a strip of their own free.
    if (const QScreen* pantalla = QGuiApplication::primaryScreen()) {
        const QRect r = pantalla->geometry();
        move(r.center().x() - width() / 2, r.bottom() - height() - 28);
    }
}

void TiraVisor::Borrar() {
    filas_.fill(QString(kAncho, ' '));
    fila_ = columna_ = 0;
    Pintar();
}

void TiraVisor::Pintar() {
    for (int i = 0; i < 2; ++i)
        if (etiquetas_[i]->text() != filas_[i]) etiquetas_[i]->setText(filas_[i]);
}

QString TiraVisor::Fila(int n) const { return filas_.at(static_cast<std::size_t>(n)); }

void TiraVisor::Recibir(const std::vector<std::uint8_t>& bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::uint8_t b = bytes[i];
        switch (b) {
            case 12:
                Borrar();
                continue;
            case 13:
                columna_ = 0;
                continue;
            case 10:
                fila_ = 1;
                continue;
            default:
                break;
        }
        if (b == 31 && i + 3 < bytes.size() && bytes[i + 1] == 36) {
            columna_ = std::clamp(static_cast<int>(bytes[i + 2]) - 1, 0, kAncho);
            fila_ = std::clamp(static_cast<int>(bytes[i + 3]) - 1, 0, 1);
            i += 3;
        } else if (b >= 32 && columna_ < kAncho) {
            const QString ch = QString::fromStdString(DesdePc858(std::string(1, static_cast<char>(b))));
            filas_[static_cast<std::size_t>(fila_)][columna_++] = ch.isEmpty() ? QChar('?') : ch.front();
        }
    }
    Pintar();
}

VisorEnPantalla::VisorEnPantalla() : tira_(std::make_unique<TiraVisor>()) {}

VisorEnPantalla::~VisorEnPantalla() { FijarVisor(nullptr); }

VisorSerie& VisorEnPantalla::Serie() {
    if (!serie_) {
        serie_ = std::make_unique<VisorSerie>(sesion().PuertoVisor, sesion().DatoVisor);
        TiraVisor* tira = tira_.get();
        serie_->FijarSalida([tira](const std::vector<std::uint8_t>& bytes) { tira->Recibir(bytes); });
    }
    return *serie_;
}

void VisorEnPantalla::InicializarVisor() {
    Serie().InicializarVisor();
    tira_->show();
    tira_->raise();
}

void VisorEnPantalla::MostrarEnVisor(const std::string& concepto, const std::string& importe) {
    Serie().MostrarEnVisor(concepto, importe);
    if (!tira_->isVisible()) tira_->show();
}

void VisorEnPantalla::MostrarBienvenida() {
    Serie().MostrarBienvenida();
    if (!tira_->isVisible()) tira_->show();
}

bool VisorEnPantallaPedido() {
    const std::string valor = UCase(Trim(SuiteSettings::Instancia().Leer("visor_en_pantalla")));
    return valor == "SI" || valor == "SÍ" || valor == "S" || valor == "1";
}

std::unique_ptr<VisorEnPantalla> InstalarVisorEnPantalla() {
    if (!VisorEnPantallaPedido()) return nullptr;
    auto visor = std::make_unique<VisorEnPantalla>();
    FijarVisor(visor.get());
    return visor;
}

}  // namespace tpv::ui
