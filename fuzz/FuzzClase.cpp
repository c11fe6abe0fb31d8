// Any bytes as a class file, read as the classifiers read it: the first
// byte chooses the band count (1 to 16) and whether the deviations and the
// covariance matrix are asked for; the rest is the file's text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "classification/FicheroClase.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* datos, std::size_t n) {
    using namespace orvela;
    if (n < 1) return 0;
    const int bandas = 1 + (datos[0] & 0x0F);
    const bool desviacion = (datos[0] & 0x10) != 0, covarianza = (datos[0] & 0x20) != 0;
    std::string texto(reinterpret_cast<const char*>(datos + 1), n - 1);
    const auto c = AnalizarFicheroClase(std::move(texto), "clase", bandas, desviacion, covarianza);
    if (!c) return 0;
    const auto nb = static_cast<std::size_t>(bandas);
    if (c->media.size() != nb || c->desviacion.size() != nb) std::abort();
    if (covarianza) {
        if (c->covarianza.size() != nb) std::abort();
        for (const auto& fila : c->covarianza)
            if (fila.size() != nb) std::abort();
    } else if (!c->covarianza.empty()) {
        std::abort();
    }
    return 0;
}
