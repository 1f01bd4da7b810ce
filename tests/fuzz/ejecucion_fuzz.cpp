// Any text run as a statement on a shop's database (SQLite, in memory, a few
// rows): the matching of LIKE patterns, the text comparisons, the functions
// the translated statements call and the typing of what comes back must end
// in a result or the data layer's error or the runtime's, in bounded time.
// Every value read is turned into text as the till shows it, so dates out of
// range must be the runtime's overflow. Each statement runs in a transaction
// undone after it, so every input meets the same rows. The first byte says
// whether the statement is prepared for writing (its lowest bit).
#include "core/runtime/conversiones.hpp"
#include "core/runtime/error.hpp"
#include "tests/fuzz/tienda_en_memoria.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::unique_ptr<tpv::datos::Session> tienda = tpvfuzz::NuevaTienda();
    const tpvfuzz::Entrada e = tpvfuzz::Leer(data, size);
    tienda->engine().Begin();
    try {
        tpv::datos::Result r = tienda->Run(e.texto, e.banderas & 1);
        for (const auto& fila : r.rows)
            for (const tpv::Value& v : fila) {
                try {
                    tpv::CStr(v);
                } catch (const tpv::RuntimeError&) {
                }
            }
    } catch (const tpv::RuntimeError&) {
        // The data layer's errors and the runtime's are the answers allowed.
    }
    tienda->engine().Rollback();
    return 0;
}
