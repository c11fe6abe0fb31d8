// Any bytes as a class file, read for its band means only.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "transforms/MediasClase.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* datos, std::size_t n) {
    const auto medias = orvela::AnalizarMediasClase(std::string(reinterpret_cast<const char*>(datos), n));
    // A file that reads gives one mean per band block, and has at least one.
    if (medias && medias->empty()) std::abort();
    return 0;
}
