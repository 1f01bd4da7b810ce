#include "sale/fecha_negocio.hpp"

#include "tests/sale/venta_abierta_prueba.hpp"

namespace tpv {
namespace {

class FechaNegocioTest : public prueba::VentaAbiertaTest {};

TEST_P(FechaNegocioTest, AlrededorDeMedianoche_CuentaParaAyerSoloAntesDelCierre) {
    struct Caso {
        int hora, minuto;
        const char* apertura;  // NULL, or a time literal; "" for no row of the terminal
        const char* cierre;
        int dias;  // result less today
    };
    const Caso casos[] = {
        {2, 0, "#10:00:00#", "#03:00:00#", -1},
        {2, 59, "#10:00:00#", "#03:00:00#", -1},
        {3, 0, "#10:00:00#", "#03:00:00#", 0},  // the closing hour itself is today
        {23, 30, "#10:00:00#", "#03:00:00#", 0},
        {1, 0, "#09:00:00#", "#22:00:00#", 0},  // a shop that closes before midnight
        {2, 0, "NULL", "#22:00:00#", -1},       // a NULL reads as 4 and 3
        {2, 0, "#09:00:00#", "NULL", -1},
        {3, 10, "NULL", "NULL", 0},
        {1, 0, "", "", 0},  // no row: both 0
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(std::to_string(c.hora) + ":" + std::to_string(c.minuto) + " " + c.apertura + "-" + c.cierre);
        Ejecutar({"delete from entradas",
                  "insert into entradas (identificador,horaapertura,horacierre) values ('OTRA',#10:00:00#,#03:00:00#)"});
        if (*c.apertura)
            Ejecutar({std::string("insert into entradas (identificador,horaapertura,horacierre) values ('CAJA1',") +
                      c.apertura + "," + c.cierre + ")"});
        reloj::Fijar(Hoy(c.hora, c.minuto));
        EXPECT_EQ(FechaNegocio(Hoy()), DateTime{Hoy().serial + c.dias});
    }
}

TEST_P(FechaNegocioTest, FechaDePantallaDeOtroDia_EsEsaFechaSinMas) {
    Ejecutar({"insert into entradas (identificador,horaapertura,horacierre) values ('CAJA1',#10:00:00#,#03:00:00#)"});
    reloj::Fijar(Hoy(1, 0));
    const DateTime otro{Hoy().serial + 3};
    EXPECT_EQ(FechaNegocio(otro), otro);
}

TPV_EN_CADA_MOTOR(FechaNegocioTest);

}  // namespace
}  // namespace tpv
