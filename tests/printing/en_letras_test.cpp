#include "printing/en_letras.hpp"

#include <gtest/gtest.h>

#include <string>

namespace tpv {
namespace {

TEST(EnLetras, CifraACifraComoLosTicketsDeSiempre) {
    const struct {
        const char* texto;
        const char* moneda;
        const char* esperado;
    } casos[] = {
        {"1595.35", "euros", "mil quinientos noventa y cinco con treinta y cinco  euros"},
        {"21", "", "veintiuno "}, {"21000", "", "veintiun mil "}, {"100", "", "cien "}, {"101", "", "ciento uno "},
        {"110", "", "ciento diez "}, {"1000", "", "mil "}, {"1001", "", "mil uno "}, {"101000", "", "ciento un mil "},
        {"1000000", "", "un millón "},
        {"20005", "", "veinte mil "},           // the unit is lost after a round ten
        {"1500000", "", "un millón quinientos "},  // thousands word looks at fixed places
        {"1000500", "", "un millón mil quinientos "}, {"2000000", "", "dos millones "},
        {"21000000", "", "veintiun millones "},
        {"123456789", "", "ciento veintitres millones cuatrocientos cincuenta y seis mil setecientos ochenta y nueve "},
        {"123000456", "", "ciento veintitres millones cuatrocientos cincuenta y seis "},
        {"999999999", "", "novecientos noventa y nueve millones novecientos noventa y nueve mil novecientos noventa y nueve "},
        {"1000000000", "", ""}, {"-1000000000", "euros", ""}, {"12.5", "", "doce con cincuenta "},
        {"12.05", "", "doce con cinco "}, {"12.00", "", "doce "}, {"0.5", "", "con cincuenta "},
        {"0", "euros", " euros"}, {"-12.5", "", "menos doce con cincuenta "}, {"-7", "", "menos siete "},
        {"-1000", "", "menos mil "}, {"11", "", "once "}, {"15", "", "quince "}, {"16", "", "dieciseis "},
        {"19", "", "diecinueve "}, {"30", "", "treinta "}, {"45", "", "cuarenta y cinco "},
        {"200", "", "doscientos "}, {"500500", "", "quinientos mil quinientos "}, {"", "", ""}, {"abc", "", ""},
    };
    for (const auto& c : casos) EXPECT_EQ(EnLetras(c.texto, c.moneda), c.esperado) << c.texto;
}

TEST(EnLetras, TextoEnormeNoRompe) {
    EXPECT_EQ(EnLetras(std::string(10000, '9'), "euros"), "");
    EXPECT_EQ(EnLetras("1." + std::string(10000, '0'), ""), "uno con millones ");
    // Leading zeros still reach the millions place, which always speaks.
    EXPECT_EQ(EnLetras(std::string(10000, '0') + "5", ""), "millones cinco ");
    EXPECT_EQ(EnLetras("ñ\xFF.\xFF", ""), "");
}

}  // namespace
}  // namespace tpv
