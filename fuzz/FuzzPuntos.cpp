// Any bytes as a control-point file. What reads is as many finite points as
// its first line counts, writes back to a text that reads back the same
// points, bit for bit, and goes through the estimation without a fault.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "corrections/PuntosControl.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* datos, std::size_t n) {
    using namespace orvela;
    std::string error;
    const auto puntos = AnalizarPuntosControl(std::string(reinterpret_cast<const char*>(datos), n), &error);
    if (!puntos) {
        if (error.empty()) std::abort();  // every refusal says why
        return 0;
    }
    if (puntos->empty()) std::abort();
    for (const auto& p : *puntos)
        if (!std::isfinite(p.fila) || !std::isfinite(p.columna) || !std::isfinite(p.x) || !std::isfinite(p.y))
            std::abort();
    const auto otra = AnalizarPuntosControl(TextoPuntosControl(*puntos));
    if (!otra || otra->size() != puntos->size()) std::abort();
    for (std::size_t i = 0; i < puntos->size(); ++i) {
        const auto& a = (*puntos)[i];
        const auto& b = (*otra)[i];
        const double va[4] = {a.fila, a.columna, a.x, a.y}, vb[4] = {b.fila, b.columna, b.x, b.y};
        if (std::memcmp(va, vb, sizeof va) != 0) std::abort();
    }
    const Estimacion e = EstimarPolinomio(*puntos);
    if (e.errores.size() != puntos->size()) std::abort();
    (void)InformeEstimacion(e, *puntos);
    return 0;
}
