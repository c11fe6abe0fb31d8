// Any bytes as a palette file.
#include <cstddef>
#include <cstdint>
#include <string>

#include "image/Paleta.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* datos, std::size_t n) {
    orvela::Paleta p;
    (void)orvela::LeerPaletaTexto(std::string(reinterpret_cast<const char*>(datos), n), p);
    return 0;
}
