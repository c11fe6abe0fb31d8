// Geometric correction: an image on a regular map grid built from the
// input through the estimated polynomials, by nearest neighbour, bilinear
// interpolation or cubic convolution. The line estimate counts from the
// input's last line up (input line = rows - estimate); a pixel whose
// neighbourhood falls partly outside the input is 0.
#pragma once

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

enum class Remuestreo { Vecino = 0, Bilineal = 1, Cubica = 2 };

struct Rejilla {
    double xMax = 0, xMin = 0, yMax = 0, yMin = 0;
    long filas = 0, columnas = 0;  // at most 32767 each
    // Pixel size: sqrt(psX * psY) with psX = (xMax - xMin) / columnas and
    // psY = (yMax - yMin) / filas.
    double TamanoPixel() const;
};

// `salida` holds rejilla.filas x rejilla.columnas samples of the input's
// type (zero-filled). Byte and integer results are truncated and keep their
// low bits (a cubic overshoot wraps). False for an unknown type code or when
// cancelled.
bool Remuestrear(Remuestreo metodo, const Muestras& entrada, long filas, long columnas, const double B[3],
                 const double A[3], const Rejilla& rejilla, Muestras& salida, Progreso& progreso = SinProgreso());

}  // namespace orvela
