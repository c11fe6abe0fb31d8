// Vegetation indices of a red (R) and a near-infrared (IR) band: the ratio
// IR / R and the normalised difference (IR - R) / (IR + R), into real.
#pragma once

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

enum class TipoIndice { Cociente = 0, Ndvi = 1 };

// `rojo` and `infrarrojo` of one type and size; `salida` holds as many
// floats. Ratio: a zero of the red band is first replaced by 1 in `rojo`
// itself, in its own type, so a zero red pixel gives the IR value. NDVI: both
// zero gives 0; any other pair is divided as it stands. The quotient is
// computed in double and narrowed to float. False for an unknown type code
// or when cancelled.
bool CocienteVegetacion(Muestras& rojo, const Muestras& infrarrojo, long filas, long columnas, Muestras& salida,
                        Progreso& progreso = SinProgreso());
bool Ndvi(const Muestras& rojo, const Muestras& infrarrojo, long filas, long columnas, Muestras& salida,
          Progreso& progreso = SinProgreso());

}  // namespace orvela
