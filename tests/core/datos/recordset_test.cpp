// Recordsets as the till uses them: reading, writing in place, and what
// happens when another till wrote the same row first.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/base_prueba.hpp"

namespace tpv::prueba {
namespace {

class RecordsetTest : public BaseDeDatosTest {
protected:
    void SetUp() override {
        BaseDeDatosTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Ejecutar({"insert into relaciones_fijas (indice, daton) values ('Factura', 100)",
                  "insert into relaciones_fijas (indice, daton) values ('Venta', 7)"});
    }

    // Takes the next number of a counter the way the till does: read, add one, write back.
    long Siguiente(Connection& c, const std::string& clave) {
        Recordset rs;
        rs.Open("Select * from Relaciones_fijas where indice = '" + clave + "'", c, adOpenKeyset, adLockOptimistic);
        if (rs.RecordCount() < 1) return 0;
        long n = static_cast<long>(rs["daton"].Value().number());
        rs["daton"] = Value(n + 1);
        rs.Update();
        rs.Close();
        return n;
    }
};

TEST_P(RecordsetTest, Lectura_RecordCountAlMomento_EofYMoveNext) {
    Recordset rs;
    rs.Open("select indice, daton as numero from relaciones_fijas order by indice", cn, adOpenStatic, adLockOptimistic);
    EXPECT_EQ(rs.RecordCount(), 2);
    std::vector<std::string> vistos;
    while (!rs.Eof()) {
        vistos.push_back(rs["INDICE"].Value().text() + "=" + std::to_string(static_cast<long>(rs["Numero"].Value().number())));
        rs.MoveNext();
    }
    EXPECT_EQ(vistos, (std::vector<std::string>{"Factura=100", "Venta=7"}));
    EXPECT_THROW(rs.MoveNext(), RuntimeError);
    EXPECT_THROW(rs.Get("indice"), RuntimeError);
    EXPECT_THROW(rs.Get("no_existe"), RuntimeError);

    Recordset vacio;
    vacio.Open("select * from relaciones_fijas where indice = 'nada'", cn, adOpenStatic, adLockOptimistic);
    EXPECT_EQ(vacio.RecordCount(), 0);
    EXPECT_TRUE(vacio.Eof());
}

TEST_P(RecordsetTest, EscrituraEnSitio_AddNewYUpdate_YUnCursorEstaticoNoEscribe) {
    EXPECT_EQ(Siguiente(cn, "Factura"), 100);
    EXPECT_EQ(Siguiente(cn, "Factura"), 101);
    EXPECT_EQ(Valor("select daton from relaciones_fijas where indice = 'Factura'").number(), 102);

    Recordset rs;
    rs.Open("Select datoA,indice from relaciones_fijas where indice ='CampoOrdenItemsCaja'", cn, adOpenKeyset, adLockOptimistic);
    ASSERT_EQ(rs.RecordCount(), 0);
    rs.AddNew();
    rs["indice"] = Value("CampoOrdenItemsCaja");
    rs["DatoA"] = Value("Nombre");
    rs.Update();
    EXPECT_EQ(rs.RecordCount(), 1);
    rs["datoa"] = Value("Codigo");  // the new row can be changed again
    rs.Update();
    rs.Close();
    EXPECT_EQ(Valor("select datoa from relaciones_fijas where indice = 'CampoOrdenItemsCaja'"), Value("Codigo"));

    Recordset estatico;
    estatico.Open("Select * from relaciones_fijas where indice = 'Venta'", cn, adOpenStatic, adLockOptimistic);
    EXPECT_THROW(estatico["daton"] = Value(1), RuntimeError);
    Recordset suma;
    suma.Open("Select sum(daton) as s from relaciones_fijas", cn, adOpenKeyset, adLockOptimistic);
    EXPECT_THROW(suma.AddNew(), RuntimeError);
    EXPECT_EQ(Valor("select daton from relaciones_fijas where indice = 'Venta'").number(), 7);
}

TEST_P(RecordsetTest, Delete_QuitaLaFilaYElRecorridoSigue) {
    Ejecutar({"insert into relaciones_fijas (indice, daton) values ('Abonos', 1)"});
    Recordset rs;
    rs.Open("select * from relaciones_fijas order by indice", cn, adOpenKeyset, adLockOptimistic);
    std::vector<std::string> vistos;
    while (!rs.Eof()) {
        vistos.push_back(rs["indice"].Value().text());
        if (rs["indice"].Value().text() == "Factura") rs.Delete();
        rs.MoveNext();
    }
    EXPECT_EQ(vistos, (std::vector<std::string>{"Abonos", "Factura", "Venta"}));
    EXPECT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(Valor("select count(*) from relaciones_fijas").integer(), 2);
}

TEST_P(RecordsetTest, BloqueoOptimista_LaSegundaEscrituraFallaYNoCambiaNada) {
    Connection otra;
    otra.Open(uri);
    Recordset a, b;
    a.Open("Select * from Relaciones_fijas where indice = 'Factura'", cn, adOpenKeyset, adLockOptimistic);
    b.Open("Select * from Relaciones_fijas where indice = 'Factura'", otra, adOpenKeyset, adLockOptimistic);
    long na = static_cast<long>(a["daton"].Value().number());
    long nb = static_cast<long>(b["daton"].Value().number());
    EXPECT_EQ(na, nb);
    a["daton"] = Value(na + 1);
    a.Update();
    b["daton"] = Value(nb + 1);
    EXPECT_THROW(b.Update(), RuntimeError);  // the same number would have been handed out twice
    EXPECT_EQ(Valor("select daton from relaciones_fijas where indice = 'Factura'").number(), 101);

    // A row deleted by the other connection cannot be written or deleted.
    Recordset c;
    c.Open("Select * from Relaciones_fijas where indice = 'Venta'", cn, adOpenKeyset, adLockOptimistic);
    otra.Execute("delete * from relaciones_fijas where indice = 'Venta'");
    c["daton"] = Value(8);
    EXPECT_THROW(c.Update(), RuntimeError);
    c.CancelUpdate();
    EXPECT_THROW(c.Delete(), RuntimeError);
    EXPECT_EQ(Valor("select count(*) from relaciones_fijas where indice = 'Venta'").number(), 0);
}

TEST_P(RecordsetTest, DosProcesos_TomanNumerosDelMismoContador_SinRepetirNiPerder) {
    const int kVueltas = 40;
    int tubo[2];
    ASSERT_EQ(pipe(tubo), 0);
    pid_t hijo = fork();
    ASSERT_GE(hijo, 0);
    auto tomar = [&](Connection& c, std::vector<long>& numeros) {
        for (int i = 0; i < kVueltas; ++i) {
            for (;;) {
                try {
                    numeros.push_back(Siguiente(c, "Factura"));
                    break;
                } catch (const RuntimeError&) {
                    // Another till took it first: try again with a fresh read.
                }
            }
        }
    };
    if (hijo == 0) {
        close(tubo[0]);
        int estado = 0;
        try {
            Connection c;
            c.Open(uri);
            std::vector<long> numeros;
            tomar(c, numeros);
            for (long n : numeros)
                if (write(tubo[1], &n, sizeof n) != sizeof n) estado = 2;
        } catch (...) {
            estado = 1;
        }
        close(tubo[1]);
        _exit(estado);
    }
    close(tubo[1]);
    std::vector<long> mios;
    Connection c;
    c.Open(uri);
    tomar(c, mios);
    long n;
    std::vector<long> todos = mios;
    while (read(tubo[0], &n, sizeof n) == sizeof n) todos.push_back(n);
    close(tubo[0]);
    int estado = 0;
    waitpid(hijo, &estado, 0);
    ASSERT_TRUE(WIFEXITED(estado));
    ASSERT_EQ(WEXITSTATUS(estado), 0);
    std::sort(todos.begin(), todos.end());
    ASSERT_EQ(todos.size(), 2u * kVueltas);
    for (std::size_t i = 0; i < todos.size(); ++i) EXPECT_EQ(todos[i], 100 + static_cast<long>(i));
    EXPECT_EQ(Valor("select daton from relaciones_fijas where indice = 'Factura'").number(), 100 + 2 * kVueltas);
}

TEST_P(RecordsetTest, AsignarUnCampo_ConvierteAlTipoDelCampoComoElTpv) {
    Ejecutar({"insert into cabecera_factura_temp (numero, total, terminal) values (9, 0, 'CAJA1')"});
    Recordset rs;
    rs.Open("select * from cabecera_factura_temp where numero = 9", cn, adOpenKeyset, adLockOptimistic);
    ASSERT_EQ(rs.RecordCount(), 1);
    rs["total"] = Value("12,5");
    rs["fecha"] = Value("15/11/2026");
    rs["cliente"] = Value("44");
    rs["empleado"] = Value(2.5);
    EXPECT_THROW(rs["impuesto"] = Value("doce"), RuntimeError);
    rs.Update();
    rs["total"] = Value("1.234,5");  // thousands in the regional form
    rs.Update();
    rs.Close();
    Recordset leido;
    leido.Open("select total, fecha, cliente, empleado from cabecera_factura_temp where numero = 9 and fecha = #11/15/2026#",
               cn, adOpenStatic, adLockOptimistic);
    ASSERT_EQ(leido.RecordCount(), 1);
    EXPECT_EQ(leido["total"].Value(), Value(1234.5));
    EXPECT_EQ(leido["cliente"].Value(), Value(44));
    EXPECT_EQ(leido["empleado"].Value(), Value("2,5"));
}

TPV_EN_CADA_MOTOR(RecordsetTest);

}  // namespace
}  // namespace tpv::prueba
