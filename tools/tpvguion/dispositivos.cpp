#include "tools/tpvguion/dispositivos.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <vector>

#include "core/datos/recordset.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/texto.hpp"
#include "core/servicios/suite_launcher.hpp"
#include "core/sesion/sesion.hpp"
#include "core/sesion/visor.hpp"
#include "printing/cajon.hpp"
#include "printing/escpos.hpp"
#include "printing/page_device.hpp"
#include "printing/pc858.hpp"
#include "printing/pdf_printer.hpp"
#include "printing/recording_printer.hpp"
#include "printing/visor_serie.hpp"

namespace fs = std::filesystem;

namespace tpv::guion {

namespace {

// A list printer: each document is saved as a PDF and announced by the
// file that holds it, which `guardar` gives.
class ImpresoraDePaginas : public PdfPrinter {
public:
    using Guardar = std::function<std::string(const std::string& pdf)>;
    ImpresoraDePaginas(std::string nombre, const std::string& carpeta, Salida salida, Guardar guardar)
        : PdfPrinter(std::move(nombre), "carpeta:" + carpeta), salida_(std::move(salida)), guardar_(std::move(guardar)) {}
    void EndDoc() override {
        PdfPrinter::EndDoc();
        if (!LastFile().empty()) salida_("DOCUMENTO " + DeviceName() + " " + guardar_(LastFile()));
    }

private:
    Salida salida_;
    Guardar guardar_;
};

// The two rows of twenty characters of the display, as its bytes leave them.
class PantallaDelVisor {
public:
    explicit PantallaDelVisor(Salida salida) : salida_(std::move(salida)) { Borrar(); }

    void Recibir(const std::vector<std::uint8_t>& bytes) {
        bool texto = false;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const std::uint8_t b = bytes[i];
            if (b == 12) {
                Borrar();
            } else if (b == 13) {
                columna_ = 0;
            } else if (b == 10) {
                fila_ = 1;
            } else if (b == 31 && i + 3 < bytes.size() && bytes[i + 1] == 36) {
                columna_ = std::clamp<int>(bytes[i + 2] - 1, 0, kAncho - 1);
                fila_ = std::clamp<int>(bytes[i + 3] - 1, 0, 1);
                i += 3;
            } else if (b >= 32) {
                if (columna_ < kAncho) filas_[fila_][columna_++] = DesdePc858(std::string(1, static_cast<char>(b)));
                texto = true;
            }
        }
        // A screen is whole once its second row has been written.
        if (texto && fila_ == 1) salida_("VISOR " + Fila(0) + " | " + Fila(1));
    }

private:
    static constexpr int kAncho = 20;
    void Borrar() {
        for (auto& f : filas_) f.assign(kAncho, " ");
        fila_ = columna_ = 0;
    }
    std::string Fila(int n) const {
        std::string s;
        for (const std::string& c : filas_[n]) s += c;
        return RTrim(s);
    }
    Salida salida_;
    std::vector<std::string> filas_[2];
    int fila_ = 0, columna_ = 0;
};

std::string Decimales(const std::vector<std::uint8_t>& bytes) {
    std::string s;
    for (std::uint8_t b : bytes) s += (s.empty() ? "" : ",") + std::to_string(b);
    return s;
}

}  // namespace

struct Dispositivos::Estado {
    Salida salida;
    std::string carpetaPapel;
    std::string carpetaTemporal;
    std::unique_ptr<PantallaDelVisor> pantalla;
    std::unique_ptr<VisorSerie> visor;

    int numero = 0;

    // The next free name of the paper folder, numbered across printers.
    fs::path SiguienteFichero(const char* extension) {
        std::error_code ec;
        fs::create_directories(carpetaPapel, ec);
        for (;;) {
            char nombre[16];
            std::snprintf(nombre, sizeof nombre, "%04d", ++numero);
            const fs::path base = fs::path(carpetaPapel) / nombre;
            if (!fs::exists(base.string() + ".bin", ec) && !fs::exists(base.string() + ".pdf", ec))
                return base.string() + extension;
        }
    }

    // A PDF saved in the temporary folder goes to the paper folder when there is one.
    std::string GuardarPdf(const std::string& pdf) {
        if (carpetaPapel.empty()) return pdf;
        const fs::path destino = SiguienteFichero(".pdf");
        std::error_code ec;
        fs::copy_file(pdf, destino, fs::copy_options::overwrite_existing, ec);
        if (ec) return pdf;
        fs::remove(pdf, ec);
        return destino.string();
    }

    void Ticket(const RecordingPrinter& impresora, const RecordingPrinter::Document& doc) {
        const std::string nombre = impresora.DeviceName();
        if (!carpetaPapel.empty()) {
            const Bytes bytes = CodificarEscPos(doc.layout);
            std::ofstream f(SiguienteFichero(".bin"), std::ios::binary);
            f.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        }
        // A document of nothing but the drawer's kick leaves no paper.
        const bool patada = doc.layout.EsPatadaDelControlador();
        if (!patada && !doc.paper.empty()) {
            salida("IMPRESORA " + nombre);
            for (const std::string& l : doc.paper) salida("| " + l);
            salida("CORTE");
        }
        if (doc.opensDrawer || patada) salida("CAJON impresora " + nombre);
    }

    std::string CarpetaTemporal() {
        if (carpetaTemporal.empty()) {
            std::string plantilla = (fs::temp_directory_path() / "tpvguion-XXXXXX").string();
            if (char* hecha = mkdtemp(plantilla.data())) carpetaTemporal = hecha;
        }
        return carpetaTemporal;
    }
};

Dispositivos::Dispositivos(Salida salida, std::string carpetaPapel) : estado_(std::make_unique<Estado>()) {
    estado_->salida = std::move(salida);
    estado_->carpetaPapel = std::move(carpetaPapel);
    Estado* e = estado_.get();
    FijarEscritorPuerto([e](const std::string& puerto, const std::vector<std::uint8_t>& bytes) {
        std::vector<std::uint8_t> sinFin = bytes;
        if (sinFin.size() >= 2 && sinFin[sinFin.size() - 2] == 13 && sinFin.back() == 10) sinFin.resize(sinFin.size() - 2);
        e->salida("CAJON " + puerto + " " + Decimales(sinFin));
    });
    SuiteLauncher::FijarGrabador([e](const std::string& programa, const std::string& titulo) {
        e->salida("LANZA " + programa + " \"" + titulo + "\"");
    });
}

Dispositivos::~Dispositivos() {
    FijarVisor(nullptr);
    FijarEscritorPuerto(nullptr);
    SuiteLauncher::FijarGrabador(nullptr);
    ResetPrinters();
    // With a paper folder the temporary one only passed the PDFs on.
    std::error_code ec;
    if (!estado_->carpetaPapel.empty() && !estado_->carpetaTemporal.empty())
        fs::remove_all(estado_->carpetaTemporal, ec);
}

void Dispositivos::InstalarImpresoras(Connection& cn) {
    Recordset rs;
    rs.Open("select impresora, tipo, puerto from impresoras", cn);
    std::vector<std::unique_ptr<PageDevice>> lista;
    std::set<std::string> vistas;
    Estado* e = estado_.get();
    for (; !rs.Eof(); rs.MoveNext()) {
        const std::string nombre = Texto(rs["impresora"]);
        if (nombre.empty() || !vistas.insert(nombre).second) continue;
        if (UCase(Texto(rs["tipo"])) == "L") {
            lista.push_back(std::make_unique<ImpresoraDePaginas>(
                nombre, e->CarpetaTemporal(), e->salida, [e](const std::string& pdf) { return e->GuardarPdf(pdf); }));
            continue;
        }
        auto ticket = std::make_unique<RecordingPrinter>(nombre, "ESC/POS", Texto(rs["puerto"]));
        ticket->SetObserver(
            [e](const RecordingPrinter& impresora, const RecordingPrinter::Document& doc) { e->Ticket(impresora, doc); });
        lista.push_back(std::move(ticket));
    }
    InstallPrinters(std::move(lista));
}

void Dispositivos::InstalarVisor() {
    const Sesion& s = sesion();
    Estado* e = estado_.get();
    e->pantalla = std::make_unique<PantallaDelVisor>(e->salida);
    e->visor = std::make_unique<VisorSerie>(s.PuertoVisor, s.DatoVisor);
    e->visor->FijarSalida([e](const std::vector<std::uint8_t>& bytes) { e->pantalla->Recibir(bytes); });
    FijarVisor(e->visor.get());
}

}  // namespace tpv::guion
