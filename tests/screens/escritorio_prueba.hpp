#pragma once
#include <string>

#include "core/runtime/formato.hpp"
#include "screens/frm_caja_inicial.hpp"
#include "screens/frm_gastos.hpp"
#include "screens/frm_observaciones.hpp"
#include "screens/frm_reimprimir.hpp"
#include "tests/screens/caja_prueba.hpp"

// The small screens round the day's cash on a fresh shop with two employees:
// Ana (code 1, password "1234") and Luis (code 2, no password, no surname).
namespace tpv::prueba {

class EscritorioTest : public CajaTest {
protected:
    void SetUp() override {
        CajaTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({"insert into empleados (codigo,nombre,apellidos,clave) values (1,'Ana','Lopez','1234')",
                  "insert into empleados (codigo,nombre,apellidos,clave) values (2,'Luis',null,null)"});
        sesion().PanelEmpleados = {{"", "", "", "Ana Lopez", "", "1"}, {"", "", "", "Luis", "", "2"}};
    }

    void TearDown() override {
        Unica<frmCajaInicial>().Unload();
        Unica<frmGastos>().Unload();
        Unica<frmObservaciones>().Unload();
        Unica<frmReImprimir>().Unload();
        CajaTest::TearDown();
    }

    template <class T>
    T& Mostrar() {
        T& v = Unica<T>();
        anfitrion.Accion([&] { v.Show(); });
        return v;
    }

    // Moves the till's clock to another moment of the day or another day.
    static void Reloj(int dia, int hora, int minuto) {
        reloj::Fijar(DateTime{DateSerial(2026, 11, dia).serial + TimeSerial(hora, minuto, 0).serial});
    }

    // The boxes shown, as "[title] text".
    std::vector<std::string> Cajas() const {
        std::vector<std::string> r;
        for (const std::string& l : lineas)
            if (l.starts_with("MENSAJE")) r.push_back(l);
        return r;
    }
};

}  // namespace tpv::prueba
