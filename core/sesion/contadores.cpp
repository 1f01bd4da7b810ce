#include "core/sesion/contadores.hpp"

#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "core/servicios/connection_opener.hpp"
#include "core/sesion/lectura.hpp"
#include "core/sesion/sesion.hpp"

namespace tpv {

namespace {

bool SemaforosActivos() { return sesion().Sector == "SUPERMERCADO"; }

bool SemaforoLibre(const std::string& nombre) {
    Recordset rs;
    lectura::Abrir(rs, "Select * from relaciones_fijas where indice = 'Semaforo" + nombre + "' and datoa = 'rojo'");
    const bool libre = rs.RecordCount() < 1;
    rs.Close();
    return libre;
}

// Reads the counter and moves it on by one; the number read is handed out.
// Without its row the counter hands out 0, or adds the row when it may.
std::int32_t Incrementar(const std::string& indice, bool crearSiFalta) {
    std::int32_t numero = 0;
    Recordset rs;
    lectura::AbrirParaCambiar(rs, "Select * from Relaciones_fijas where indice = '" + indice + "'");
    if (rs.RecordCount() > 0) {
        numero = CLng(rs["daton"]);
        rs["daton"] = Value(static_cast<long long>(numero) + 1);
        rs.Update();
    } else if (crearSiFalta) {
        rs.AddNew();
        rs["indice"] = Value(indice);
        rs["daton"] = Value(2);
        try {
            rs.Update();
            numero = 1;
        } catch (const RuntimeError&) {
            // The row is one of a kind: when another till added it first,
            // this insert fails and the number is taken from its row.
            rs.CancelUpdate();
            rs.Close();
            if (!lectura::LeerClave(indice).existe) throw;
            return Incrementar(indice, false);
        }
    }
    rs.Close();
    return numero;
}

std::int32_t IncrementarConSemaforo(const std::string& indice, const std::string& semaforo) {
    TomarSemaforo(semaforo);
    const std::int32_t numero = Incrementar(indice, false);
    SoltarSemaforo(semaforo);
    return numero;
}

}  // namespace

void CrearSemaforos() {
    for (const char* nombre : {kSemaforoFactura, kSemaforoSalidaProd, kSemaforoVentaTemp}) {
        Recordset rs;
        lectura::Abrir(
            rs, std::string("select indice,datoa from relaciones_fijas where indice = 'Semaforo") + nombre + "'");
        const bool falta = rs.RecordCount() < 1;
        rs.Close();
        if (!falta) continue;
        try {
            sesion().Conexion.Execute(std::string("insert into relaciones_fijas (indice,datoa) values ('Semaforo") +
                                      nombre + "','verde')");
        } catch (const RuntimeError&) {
            // Another till starting at the same time added it first.
            if (!lectura::LeerClave(std::string("Semaforo") + nombre).existe) throw;
        }
    }
}

int TomarSemaforo(const std::string& nombre) {
    if (!SemaforosActivos()) return 0;
    Sesion& s = sesion();
    // Every acquire reconnects, so that the probes see what other tills wrote.
    s.Conexion.Close();
    ConnectionOpener::Instancia().Abrir("", s.Conexion);

    // Probing without a pause: the whole wait is a hundred small queries.
    int sondeos = 0;
    while (sondeos < kSondeosSemaforo) {
        ++sondeos;
        if (SemaforoLibre(nombre)) break;
    }
    s.Conexion.Execute("update relaciones_fijas set datoa='rojo' where indice = 'Semaforo" + nombre + "'");
    return sondeos;
}

void SoltarSemaforo(const std::string& nombre) {
    sesion().Conexion.Execute("update relaciones_fijas set datoa='verde' where indice = 'Semaforo" + nombre + "'");
}

std::int32_t SiguienteNumeroVenta() { return IncrementarConSemaforo("Venta", kSemaforoVentaTemp); }
std::int32_t SiguienteNumeroFactura() { return IncrementarConSemaforo("Factura", kSemaforoFactura); }
std::int32_t SiguienteNumeroAbono() { return Incrementar("Abonos", false); }
std::int32_t SiguienteNumeroPagoCuenta() { return Incrementar("PagosCuenta", false); }
std::int32_t SiguienteNumeroAlbaran() { return Incrementar("Albaran", true); }

std::int32_t UltimoNumeroFactura() {
    std::int32_t ultimo = 0;
    Recordset rs;
    lectura::Abrir(rs, "Select * from Relaciones_fijas where indice = 'Factura'");
    if (rs.RecordCount() > 0) {
        ultimo = CLng(rs["daton"]) - 1;
        if (ultimo == -1) ultimo = 0;
    }
    rs.Close();
    return ultimo;
}

}  // namespace tpv
