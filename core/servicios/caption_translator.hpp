#pragma once
#include <string>

#include "core/datos/connection.hpp"
#include "core/servicios/formulario.hpp"

namespace tpv {

// Captions in the suite's language. Screens are written in Spanish; the
// settings key "idioma" names another language, whose captions stand in the
// table `traducciones` (pantalla, control, idioma, texto). The control named
// like the screen holds its title.
class CaptionTranslator {
public:
    static constexpr const char* kIdiomaBase = "es";

    static CaptionTranslator& Instancia();

    // Replaces the captions that have a translation; in Spanish, or without
    // the table, the screen stays as it is.
    void Traducir(Connection& conexion, Formulario& pantalla);

    // Writes the screen's Spanish captions (title and every control with a
    // caption) into `traducciones` under "es", replacing those written
    // before, for translators to work from.
    void GenerarCaptions(Connection& conexion, Formulario& pantalla);

    // The language in force ("es" when none is set).
    std::string Idioma() const;

private:
    CaptionTranslator() = default;
};

}  // namespace tpv
