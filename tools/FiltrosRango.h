// Rank and mode filters of a K x K window (K = 3, 5, 7). The border
// (rows and columns closer than (K-1)/2 to an edge) is set to 0; interior
// pixels take the value of their window in the input. `salida` is already
// sized, of the input's type. False for an unknown type code.
#pragma once

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

bool FiltroMediana(const Muestras& entrada, long filas, long columnas, int k, Muestras& salida,
                   Progreso& progreso = SinProgreso());
bool FiltroMaximo(const Muestras& entrada, long filas, long columnas, int k, Muestras& salida,
                  Progreso& progreso = SinProgreso());
bool FiltroMinimo(const Muestras& entrada, long filas, long columnas, int k, Muestras& salida,
                  Progreso& progreso = SinProgreso());
// Most frequent value; ties to the value met first in the window's row
// order; no repeated value keeps the centre. Real and double samples are
// grouped in bins of one 256th of the image's range.
bool FiltroModa(const Muestras& entrada, long filas, long columnas, int k, Muestras& salida,
                Progreso& progreso = SinProgreso());

}  // namespace orvela
