#include "core/servicios/caption_translator.hpp"

#include "core/datos/recordset.hpp"
#include "core/datos/session.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/servicios/record_writer.hpp"
#include "core/servicios/suite_settings.hpp"
#include "core/servicios/valor_columna.hpp"

namespace tpv {

namespace {

constexpr const char* kTabla = "traducciones";

bool EsEspanol(const std::string& idioma) {
    const std::string i = datos::Minusculas(idioma);
    return i.empty() || i == "es" || i == "esp" || i == "espanol" || i == "español" || i == "castellano";
}

}  // namespace

CaptionTranslator& CaptionTranslator::Instancia() {
    static CaptionTranslator instancia;
    return instancia;
}

std::string CaptionTranslator::Idioma() const {
    std::string idioma = SuiteSettings::Instancia().Leer("idioma");
    return EsEspanol(idioma) ? kIdiomaBase : idioma;
}

void CaptionTranslator::Traducir(Connection& conexion, Formulario& pantalla) {
    const std::string idioma = Idioma();
    if (EsEspanol(idioma) || !conexion.session().catalog().Find(kTabla)) return;
    Recordset rs;
    rs.Open("select control, texto from traducciones where pantalla = " + TextoJet(pantalla.nombre) +
                " and idioma = " + TextoJet(idioma),
            conexion, adOpenStatic, adLockOptimistic);
    while (!rs.Eof()) {
        const Value& control = rs.Fields("control").Value();
        const Value& texto = rs.Fields("texto").Value();
        if (!control.IsNull() && !texto.IsNull()) {
            const std::string nombre = CStr(control);
            if (datos::IgualesSinCaso(nombre, pantalla.nombre))
                pantalla.caption = CStr(texto);
            else if (Control* c = pantalla.Buscar(nombre))
                c->caption = CStr(texto);
        }
        rs.MoveNext();
    }
    rs.Close();
}

void CaptionTranslator::GenerarCaptions(Connection& conexion, Formulario& pantalla) {
    RecordWriter& escritor = RecordWriter::Instancia();
    escritor.Borrar(conexion, kTabla, "", false,
                    "pantalla = " + TextoJet(pantalla.nombre) + " and idioma = " + TextoJet(kIdiomaBase));
    auto escribir = [&](const std::string& control, const std::string& texto) {
        escritor.InsertarValores(conexion, kTabla,
                                 {{"pantalla", Value(pantalla.nombre)},
                                  {"control", Value(control)},
                                  {"idioma", Value(kIdiomaBase)},
                                  {"texto", Value(texto)}});
    };
    if (!pantalla.caption.empty()) escribir(pantalla.nombre, pantalla.caption);
    for (const Control& c : pantalla.controles)
        if (!c.caption.empty()) escribir(c.nombre, c.caption);
}

}  // namespace tpv
