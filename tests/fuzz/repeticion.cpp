// Runs a fuzz target over the files given (or the files in the folders
// given) once each, without libFuzzer: the checked-in cases of a target run
// with any compiler, in the ordinary test build.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    std::vector<std::filesystem::path> archivos;
    for (int i = 1; i < argc; ++i) {
        std::filesystem::path p(argv[i]);
        if (std::filesystem::is_directory(p)) {
            for (const auto& e : std::filesystem::directory_iterator(p))
                if (e.is_regular_file()) archivos.push_back(e.path());
        } else {
            archivos.push_back(p);
        }
    }
    if (archivos.empty()) {
        std::cerr << "uso: " << argv[0] << " CASO|CARPETA...\n";
        return 2;
    }
    for (const auto& a : archivos) {
        std::ifstream f(a, std::ios::binary);
        if (!f) {
            std::cerr << "no se puede leer " << a << "\n";
            return 1;
        }
        std::string datos((std::istreambuf_iterator<char>(f)), std::istreambuf_iterator<char>());
        std::cerr << a.filename().string() << "\n";
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(datos.data()), datos.size());
    }
    std::cerr << archivos.size() << " casos sin fallos\n";
    return 0;
}
