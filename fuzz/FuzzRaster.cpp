// A header and a raster loaded as the program loads an image, both from
// memory (the checks are those of a pair on disk, without a file per run):
// the input is a 16-bit little-endian header length, the header, then the
// raster bytes. A pair is either refused or read whole with exactly the
// samples its header counts.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

#include "image/CImagen.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* datos, std::size_t n) {
    using namespace orvela;
    if (n < 2) return 0;
    const std::size_t largo = std::min<std::size_t>(n - 2, datos[0] | (std::size_t{datos[1]} << 8));
    const std::string inf(reinterpret_cast<const char*>(datos + 2), largo);
    const std::span<const std::byte> raster(reinterpret_cast<const std::byte*>(datos + 2 + largo), n - 2 - largo);
    CImagen im;
    if (!im.CargarDeMemoria(inf, raster, "f.ozm")) {
        // Read whole: exactly the samples of the header, no byte more.
        if (im.pixeles.Bytes() != raster.size()) std::abort();
        if (im.pixeles.Cantidad() != static_cast<std::size_t>(im.Filas()) * static_cast<std::size_t>(im.Columnas()))
            std::abort();
        (void)im.ValorPixel(im.Filas() - 1, im.Columnas() - 1);
    } else if (im.tieneImagen || im.pixeles.Valido()) {
        std::abort();  // a refusal leaves the record as it was
    }
    return 0;
}
