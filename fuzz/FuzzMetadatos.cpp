// Any bytes as a Landsat metadata file, read for one reflective TM band
// (chosen by the length, so that a real file is a seed as it stands). What
// reads is a real date for the band asked; every refusal says what is
// missing.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "corrections/Reflectancia.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* datos, std::size_t n) {
    using namespace orvela;
    static constexpr int kBandas[] = {1, 2, 3, 4, 5, 7};
    const int banda = kBandas[n % 6];
    std::string error;
    const auto c = AnalizarMetadatosTM(std::string(reinterpret_cast<const char*>(datos), n), "MTL.txt", banda, &error);
    if (!c) {
        if (error.empty()) std::abort();
        return 0;
    }
    if (c->banda != banda || DiaDelAnio(c->anio, c->mes, c->dia) == 0) std::abort();
    (void)DistanciaTierraSol(DiaDelAnio(c->anio, c->mes, c->dia));
    return 0;
}
