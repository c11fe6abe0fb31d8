// A header and a raster on disk, loaded as the program loads an image: the
// input is a 16-bit little-endian header length, the header, then the
// raster bytes. A pair is either refused or read whole with exactly the
// samples its header counts.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

#include "image/CImagen.h"

namespace {

void Escribir(const std::string& ruta, const uint8_t* p, std::size_t n) {
    std::FILE* f = std::fopen(ruta.c_str(), "wb");
    if (!f) std::abort();
    if (n) std::fwrite(p, 1, n, f);
    std::fclose(f);
}

const std::string& Carpeta() {
    static const std::string c = [] {
        std::string plantilla = "/tmp/orvela-fuzz-XXXXXX";
        if (!::mkdtemp(plantilla.data())) std::abort();
        return plantilla;
    }();
    return c;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* datos, std::size_t n) {
    using namespace orvela;
    if (n < 2) return 0;
    const std::size_t largo = std::min<std::size_t>(n - 2, datos[0] | (std::size_t{datos[1]} << 8));
    const std::string raster = Carpeta() + "/f.ozm";
    Escribir(Carpeta() + "/f.inf", datos + 2, largo);
    Escribir(raster, datos + 2 + largo, n - 2 - largo);
    CImagen im;
    if (!im.Cargar(raster)) {
        // Read whole: exactly the samples of the header, no byte more.
        if (im.pixeles.Bytes() != n - 2 - largo) std::abort();
        (void)im.ValorPixel(im.Filas() - 1, im.Columnas() - 1);
    }
    return 0;
}
