// The `ver` action: what a person would read on a control.
#include "core/datos/tipos.hpp"
#include "core/runtime/conversiones.hpp"
#include "core/runtime/formato.hpp"
#include "core/runtime/texto.hpp"
#include "tools/tpvguion/ejecutor.hpp"

namespace tpv::guion {

namespace {

std::string Plano(const std::string& texto) { return Replace(Replace(texto, "\r\n", "\\n"), "\n", "\\n"); }

std::string Bandera(bool valor) { return CStr(Value(valor)); }

std::string Medida(double twips) { return CStr(Value(twips)); }

std::string FilaDeGrid(const Grid& g, long f) {
    std::string fila;
    for (long c = 0; c < g.Cols(); ++c) fila += (c ? "|" : "") + Plano(g.TextMatrix(f, c));
    return fila;
}

// The scalar value of a control: its text, caption or value by its kind.
std::string ValorDe(const Control& c) {
    if (auto* t = dynamic_cast<const TextBox*>(&c)) return t->Text();
    if (auto* l = dynamic_cast<const ListBox*>(&c)) return l->Text();
    if (auto* k = dynamic_cast<const CheckBox*>(&c)) return std::to_string(k->Value());
    if (auto* o = dynamic_cast<const OptionButton*>(&c)) return Bandera(o->Value());
    if (auto* d = dynamic_cast<const DTPicker*>(&c)) return Format(Value(d->Value()), "dd/mm/yyyy");
    if (auto* s = dynamic_cast<const Slider*>(&c)) return std::to_string(s->Value());
    if (auto* p = dynamic_cast<const ProgressBar*>(&c)) return CStr(Value(p->Value()));
    if (auto* i = dynamic_cast<const PictureBox*>(&c)) return i->picture;
    if (auto* r = dynamic_cast<const Timer*>(&c)) return Bandera(r->Enabled());
    if (auto* g = dynamic_cast<const Grid*>(&c)) return g->Text();
    return c.caption;
}

bool EsPropiedad(const std::string& nombre) {
    static const char* const kPropiedades[] = {"visible", "enabled", "locked", "backcolor", "forecolor", "tag",
                                               "caption", "text",    "value",  "left",      "top",       "width",
                                               "height",  "rows",    "cols",   "toprow"};
    const std::string n = datos::Minusculas(nombre);
    for (const char* p : kPropiedades)
        if (n == p) return true;
    return false;
}

}  // namespace

void Ejecutor::Ver(const Linea& l) {
    ExigirArgumentos(l, 1, 3, "ver CONTROL, ver CONTROL.PROPIEDAD, ver GRID FILA COLUMNA o ver pantalla");
    const std::string& nombre = l.argumentos[0];
    if (l.argumentos.size() == 1 && datos::IgualesSinCaso(nombre, "pantalla")) {
        std::string lista;
        for (const Ventana* v : anfitrion_.Abiertas())
            lista += (lista.empty() ? "" : ", ") + v->nombre + (v->visible ? "" : " (oculta)");
        salida_("pantalla = " + lista);
        return;
    }
    if (l.argumentos.size() == 3) {
        const auto* g = dynamic_cast<const Grid*>(&BuscarControl(nombre));
        if (!g) throw NoSePuede(nombre + " no es una rejilla");
        const std::optional<long long> f = LeerEntero(l.argumentos[1]), c = LeerEntero(l.argumentos[2]);
        if (!f || !c || *f < 0 || *f >= g->Rows() || *c < 0 || *c >= g->Cols())
            throw NoSePuede(nombre + " no tiene la celda " + l.argumentos[1] + "," + l.argumentos[2]);
        salida_(nombre + "(" + l.argumentos[1] + "," + l.argumentos[2] + ") = " +
                Plano(g->TextMatrix(static_cast<long>(*f), static_cast<long>(*c))));
        return;
    }
    if (l.argumentos.size() != 1) throw NoSePuede("se escribe: ver GRID FILA COLUMNA");

    // "control", "pantalla.control", "control.Propiedad", "pantalla.control.Propiedad".
    const std::vector<std::string> partes = Split(nombre, ".");
    std::string control = nombre, propiedad;
    if (partes.size() == 3) {
        control = partes[0] + "." + partes[1];
        propiedad = partes[2];
    } else if (partes.size() == 2 && EsPropiedad(partes[1])) {
        control = partes[0];
        propiedad = partes[1];
    } else if (partes.size() == 2 && !anfitrion_.Buscar(partes[0]) && !anfitrion_.Abiertas().empty() &&
               PantallaActiva().Buscar(partes[0])) {
        throw NoSePuede(partes[0] + " no tiene la propiedad " + partes[1]);
    }
    const Control& c = BuscarControl(control);
    if (propiedad.empty())
        VerControl(nombre, c);
    else
        salida_(nombre + " = " + Plano(Propiedad(c, propiedad)));
}

void Ejecutor::VerControl(const std::string& nombre, const Control& c) {
    if (auto* g = dynamic_cast<const Grid*>(&c)) {
        salida_(nombre + " = " + std::to_string(g->Rows()) + " filas");
        for (long f = 0; f < g->Rows(); ++f) salida_("  fila " + std::to_string(f) + ": " + FilaDeGrid(*g, f));
        return;
    }
    if (auto* lista = dynamic_cast<const ListBox*>(&c); lista && !dynamic_cast<const ComboBox*>(&c)) {
        salida_(nombre + " = " + std::to_string(lista->ListCount()) + " elementos");
        for (long f = 0; f < lista->ListCount(); ++f) salida_("  fila " + std::to_string(f) + ": " + Plano(lista->List(f)));
        return;
    }
    if (auto* panel = dynamic_cast<const ButtonMatrix*>(&c)) {
        const PanelRegistros& botones = panel->Botones();
        salida_(nombre + " = " + std::to_string(botones.size()) + " botones");
        for (std::size_t i = 0; i < botones.size(); ++i)
            salida_("  boton " + std::to_string(i + 1) + ": " + botones[i].Codigo + "|" + Plano(botones[i].Texto) + "|" +
                    Plano(botones[i].TextoSuperior));
        return;
    }
    salida_(nombre + " = " + Plano(ValorDe(c)));
}

std::string Ejecutor::Propiedad(const Control& c, const std::string& propiedad) const {
    const std::string p = datos::Minusculas(propiedad);
    const auto* g = dynamic_cast<const Grid*>(&c);
    if (p == "visible") return Bandera(c.visible);
    if (p == "enabled") return Bandera(c.enabled);
    if (p == "backcolor") return std::to_string(c.backColor);
    if (p == "forecolor") return std::to_string(c.foreColor);
    if (p == "tag") return c.tag;
    if (p == "caption") return c.caption;
    if (p == "left") return Medida(c.left);
    if (p == "top") return Medida(c.top);
    if (p == "width") return Medida(c.width);
    if (p == "height") return Medida(c.height);
    if (p == "value") return ValorDe(c);
    if (p == "text") {
        if (dynamic_cast<const TextBox*>(&c) || dynamic_cast<const ListBox*>(&c) || g) return ValorDe(c);
    } else if (p == "locked") {
        if (auto* t = dynamic_cast<const TextBox*>(&c)) return Bandera(t->locked);
    } else if (g && p == "rows") {
        return std::to_string(g->Rows());
    } else if (g && p == "cols") {
        return std::to_string(g->Cols());
    } else if (g && p == "toprow") {
        return std::to_string(g->TopRow());
    } else if (p == "rows") {
        if (auto* l = dynamic_cast<const ListBox*>(&c)) return std::to_string(l->ListCount());
    }
    throw NoSePuede(c.nombre + " no tiene la propiedad " + propiedad);
}

}  // namespace tpv::guion
