// Tasseled cap of the six reflective TM bands into brightness, greenness and
// wetness, with the published TM coefficients and an offset of 32.
#pragma once

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// tm[0..5] are bands 1, 2, 3, 4, 5 and 7, all of one type and size; the three
// outputs are of that type and size. Each component is accumulated in double
// in its fixed band order, then 32 is added and the sum stored by the store
// rule of the type (truncation and wrap for byte and integer). False for an
// unknown type code or when cancelled.
bool TasseledCap(const Muestras* const tm[6], long filas, long columnas, Muestras& brillo, Muestras& verdor,
                 Muestras& humedad, Progreso& progreso = SinProgreso());

}  // namespace orvela
