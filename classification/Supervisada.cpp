#include "classification/Supervisada.h"

#include "image/Conversion.h"

namespace orvela {

int32_t NdClase(const ClaseLeida& c) {
    double suma = 0;
    for (double m : c.media) suma += m;
    return TruncarA32(suma / static_cast<double>(c.media.size()));
}

}  // namespace orvela
