// Normalization of the fractions of a spectral unmixing: vegetation and soil
// re-scaled as if the shade fraction were zero. Fractions are coded 100 +
// 100 x fraction (0 % is 100, 100 % is 200).
#pragma once

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// For each pixel, with s the shade value and x the vegetation or the soil:
// s <= 100 keeps x; 100 < s < 200 gives (x - 100) * 100 / (100 - (s - 100))
// + 100; s >= 200 gives 100. Stored by the store rule of the input type.
// False for an unknown type code or when cancelled.
bool Normalizar(const Muestras& vegetacion, const Muestras& sombra, const Muestras& suelo, long filas, long columnas,
                Muestras& sueloNormal, Muestras& vegetacionNormal, Progreso& progreso = SinProgreso());

}  // namespace orvela
