#pragma once
#include <string>

#include "core/runtime/conversiones.hpp"
#include "core/runtime/fecha.hpp"
#include "core/runtime/reloj.hpp"
#include "tests/core/sesion/sesion_prueba.hpp"

namespace tpv::prueba {

// Open sales written by hand, with the session's clock set to 23/11/2026
// 12:00 on terminal "CAJA1".
class VentaAbiertaTest : public SesionTest {
protected:
    void SetUp() override {
        SesionTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        reloj::Fijar(Hoy(12, 0));
        sesion().TerminalActual = "CAJA1";
        sesion().IdentificadorTerminal = "CAJA1";
        sesion().CodigoEmpleadoActual = 7;
    }
    void TearDown() override {
        reloj::Soltar();
        SesionTest::TearDown();
    }

    static DateTime Hoy(int hora = 0, int minuto = 0) {
        return DateTime{fecha::DesdeFecha(2026, 11, 23).serial + (hora * 60 + minuto) / 1440.0};
    }

    // A header of an open sale; `columnas` and `valores` add more, each
    // starting with a comma.
    void Cabecera(int numero, double total, const std::string& columnas = "", const std::string& valores = "") {
        Ejecutar({"insert into cabecera_factura_temp (numero,fecha,hora,cliente,empleado,codigo_empleado,terminal,"
                  "total,impuesto,impuesto_2,impuestoincluido,tarjeta,efectivo,recargo,cierre,repartidor" +
                  columnas + ") values (" + std::to_string(numero) +
                  ",#11/23/2026#,#09:15:00#,0,'Juan Perez Lopez',3,'CAJA1'," + Str(total) +
                  ",2,0,-1,0,0,0,0,0" + valores + ")"});
    }
    void Linea(int numero, int orden, int codigo, const std::string& tipo = "P", double precio = 10,
               double descuento = 0, const std::string& codMenu = "NULL") {
        Ejecutar({"insert into detalle_factura_temp (num_factura,orden,codigo,tipo_venta,producto,unidades,precio,"
                  "descuento,recargo,precio_unit,impuesto,tipoimpuesto,impuesto_2,tipoimpuesto_2,codempleado,"
                  "nombreempleado,codfamilia,codmenu) values (" +
                  std::to_string(numero) + "," + std::to_string(orden) + "," + std::to_string(codigo) + ",'" + tipo +
                  "','Producto " + std::to_string(codigo) + "',1," + Str(precio) + "," + Str(descuento) + ",0," +
                  Str(precio) + ",1.74,21,0,0,3,'Juan  P. L.',0," + codMenu + ")"});
    }
    long Cuenta(const std::string& tabla, const std::string& donde = "1=1") {
        return CLng(Valor("select count(*) from " + tabla + " where " + donde));
    }
};

}  // namespace tpv::prueba
