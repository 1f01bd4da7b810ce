// Any text given to the data layer as a statement: the reader, the
// translator and the writers of both engines must answer it with the data
// layer's error or the runtime's, never a crash, a hang or undefined
// behaviour. The statements are prepared against a shop's database in
// memory and written for PostgreSQL as well, with no server. The first byte
// says whether the statement is prepared for writing (its lowest bit).
#include "core/datos/postgres_dialecto.hpp"
#include "core/runtime/error.hpp"
#include "tests/fuzz/tienda_en_memoria.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::unique_ptr<tpv::datos::Session> tienda = tpvfuzz::NuevaTienda();
    const tpvfuzz::Entrada e = tpvfuzz::Leer(data, size);
    const bool writable = e.banderas & 1;
    try {
        auto p = tienda->Prepare(e.texto, writable);
        const auto& t = *p->translation;
        for (unsigned mask : {0u, ~0u}) tpv::datos::Render(t, tpv::datos::pg::Dialecto(), mask, writable && t.baseTable);
        for (const tpv::Value& v : p->params)
            for (auto tipo : {tpv::datos::ColType::Text, tpv::datos::ColType::Double, tpv::datos::ColType::Date})
                tpv::datos::pg::Dialecto().Bind(v, tipo);
    } catch (const tpv::RuntimeError&) {
        // The data layer's errors and the runtime's are the answers allowed.
    }
    return 0;
}
