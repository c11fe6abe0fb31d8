// Mean filter ("Media"), deliberately not a plain average: the centre sample
// weighs as much as the mean m of the whole input image, the K*K - 1
// neighbours weigh 1 each, so an interior pixel becomes
//     (sum of the neighbours in row order + m * centre) / (m + K*K - 1).
// Border pixels are 0; the result is stored in the input's type by the
// store rule.
#pragma once

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// `salida` is already sized, of the input's type; k is 3, 5 or 7. False for
// an unknown type code or sizes that do not match.
bool FiltroMedia(const Muestras& entrada, long filas, long columnas, int k, Muestras& salida,
        Progreso& progreso = SinProgreso());

}  // namespace orvela
