// The load of the customer list that start-up does, on a (large) demo shop.
#include <benchmark/benchmark.h>

#include "core/sesion/clientes.hpp"
#include "core/sesion/sesion.hpp"
#include "tools/bench/bancos.hpp"

namespace tpvbench {

namespace {

void CargarClientes(benchmark::State& state, std::string uri) {
    tpv::sesion().Conexion.Close();
    tpv::sesion().Conexion.Open(uri);
    for (auto _ : state) tpv::CargarClientes();
    state.counters["clientes"] = static_cast<double>(tpv::sesion().Clientes.size());
    tpv::sesion().Conexion.Close();
}

void RegistrarArranque(const std::string& uri, const std::string& motor) {
    benchmark::RegisterBenchmark(("Arranque/" + motor + "/CargarClientes").c_str(), CargarClientes, uri)
        ->Unit(benchmark::kMillisecond);
}

const Banco banco(RegistrarArranque);

}  // namespace

}  // namespace tpvbench
