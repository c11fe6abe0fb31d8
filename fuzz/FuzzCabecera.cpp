// Any bytes as a header: the reading never fails hard, and what it gives
// is either refused by the picker's check or a size that can be counted.
#include <cstddef>
#include <cstdint>
#include <string>

#include "image/CImagen.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* datos, std::size_t n) {
    using namespace orvela;
    Cabecera c;
    LeerInfTexto(std::string(reinterpret_cast<const char*>(datos), n), c);
    if (c.filas > 0 && c.columnas > 0) {
        const int codigo = CodigoDeNombre(c.nombreTipo);
        (void)ContarMuestras(c.filas, c.columnas, codigo);
    }
    return 0;
}
