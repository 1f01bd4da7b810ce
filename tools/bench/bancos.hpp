#pragma once
#include <string>
#include <vector>

// Benchmarks that need the databases named on tpvbench's command line. A
// benchmark file adds its registering function with a static Banco object;
// the main registers every one for each database given.
namespace tpvbench {

using Registrar = void (*)(const std::string& uri, const std::string& motor);

inline std::vector<Registrar>& Bancos() {
    static std::vector<Registrar> bancos;
    return bancos;
}

struct Banco {
    explicit Banco(Registrar r) { Bancos().push_back(r); }
};

}  // namespace tpvbench
