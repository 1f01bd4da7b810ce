#include "core/datos/fallos.hpp"

#include "core/datos/servidor.hpp"
#include "core/runtime/registro.hpp"

namespace tpv::datos {

namespace {

constexpr std::chrono::milliseconds kEsperaOcupada{10000};
std::chrono::milliseconds espera = kEsperaOcupada;

struct Texto {
    long numero;
    std::string mensaje;
};

Texto TextoDe(Fallo fallo, const std::string& base, const std::string& detalle) {
    const std::string nombre = "'" + base + "'";
    switch (fallo) {
        case Fallo::NoSeAbre:
            return {kErrBaseNoSeAbre, "No se puede abrir la base de datos " + nombre +
                                          ": no existe o este usuario no tiene permiso para abrirla."};
        case Fallo::NoValida:
            return {kErrBaseNoValida, "La base de datos " + nombre +
                                          " no es una base de datos de la tienda o está dañada: "
                                          "hay que recuperarla de una copia de seguridad."};
        case Fallo::Ocupada: {
            const long segundos = static_cast<long>((EsperaOcupada().count() + 999) / 1000);
            return {kErrBaseOcupada, "Otro programa tiene ocupada la base de datos " + nombre + " y no la ha soltado en " +
                                         std::to_string(segundos) + (segundos == 1 ? " segundo" : " segundos") +
                                         ": cierre ese programa o espere, y repita la operación."};
        }
        case Fallo::Repetido:
            return {kErrValorRepetido, "No se ha guardado: ya hay un registro con el mismo valor en un campo "
                                       "que no admite valores repetidos."};
        case Fallo::Obligatorio:
            return {kErrValorObligatorio, "No se ha guardado: falta un valor que la base de datos exige."};
        case Fallo::Regla:
            return {kErrReglaDeLaBase, "No se ha guardado: un valor no cumple una regla de la base de datos."};
        case Fallo::SoloLectura:
            return {kErrSoloLectura, "No se puede guardar: la base de datos " + nombre +
                                         " es de solo lectura para este usuario."};
        case Fallo::Acceso:
            return {kErrAcceso, "El servidor de la base de datos " + nombre +
                                    " no acepta el usuario o la contraseña de la conexión."};
        case Fallo::SinServidor:
            return {kErrSinServidor, "No hay conexión con el servidor de la base de datos " + nombre +
                                         ": compruebe la red y que el servidor esté en marcha."};
        case Fallo::Otro: break;
    }
    return {kErrDatabase, "Error de la base de datos: " + detalle};
}

}  // namespace

DbError ErrorDeMotor(Fallo fallo, const std::string& base, const std::string& codigo, const std::string& detalle,
                     const std::string& sentencia) {
    const std::string visible = servidor::EsUri(base) ? servidor::SinClave(base) : base;
    const std::string& palabras = detalle;
    Texto t = TextoDe(fallo, visible, palabras);
    Registrar("Error " + std::to_string(t.numero) + " de la base de datos: " + t.mensaje + " | motor " + codigo +
              ": " + palabras + (sentencia.empty() ? "" : " | sentencia: " + sentencia));
    return DbError(codigo, t.mensaje, sentencia, t.numero, palabras);
}

std::chrono::milliseconds EsperaOcupada() { return espera; }

void FijarEsperaOcupada(std::chrono::milliseconds nueva) { espera = nueva.count() > 0 ? nueva : kEsperaOcupada; }

}  // namespace tpv::datos
