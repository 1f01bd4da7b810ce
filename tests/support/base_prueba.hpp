#pragma once
#include <gtest/gtest.h>

#include <string>

#include "core/datos/recordset.hpp"

// A fresh shop database for each test, on every engine the machine has.
namespace tpv::prueba {

enum class Motor { SQLite, PostgreSQL };

std::string NombreMotor(const ::testing::TestParamInfo<Motor>& info);

// True when a PostgreSQL server for tests is reachable (TPV_PG_URI names it).
bool PostgresDisponible();

// Makes a new, empty database with the tables of the schema file and returns
// its URI. The file name is relative to the schema folder.
std::string NuevaBase(Motor motor, const std::string& esquema = "tienda.schema");

// Deletes a database made by NuevaBase.
void BorrarBase(Motor motor, const std::string& uri);

// Fixture: a fresh shop database and an open connection to it, per engine.
class BaseDeDatosTest : public ::testing::TestWithParam<Motor> {
protected:
    void SetUp() override;
    void TearDown() override;

    // Runs statements, failing the test on the first error.
    void Ejecutar(std::initializer_list<std::string> sentencias);
    // The first field of the first row of a statement.
    Value Valor(const std::string& sentencia);

    Motor motor = Motor::SQLite;
    std::string uri;
    Connection cn;
};

}  // namespace tpv::prueba

#define TPV_EN_CADA_MOTOR(Suite)                                                                                      \
    INSTANTIATE_TEST_SUITE_P(Motores, Suite,                                                                          \
                             ::testing::Values(::tpv::prueba::Motor::SQLite, ::tpv::prueba::Motor::PostgreSQL),       \
                             ::tpv::prueba::NombreMotor)
