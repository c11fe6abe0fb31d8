// Any bytes as a legend file, through both readings.
#include <cstddef>
#include <cstdint>
#include <string>

#include "image/Leyenda.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* datos, std::size_t n) {
    const std::string s(reinterpret_cast<const char*>(datos), n);
    (void)orvela::LeerLeyendaVentanaTexto(s);
    (void)orvela::LeerLeyendaConfusionTexto(s);
    return 0;
}
