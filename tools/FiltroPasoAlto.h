// High-pass filter ("Paso alto"): an interior pixel becomes
//     escala * (sum over the window, in row order, of peso * muestra).
//   Laplaciano 9: every weight -1, centre 9
//   Laplaciano 5: 0 at even positions (0-based, row order), -1 at odd ones,
//                 centre 5 (3 x 3: 0 -1 0 / -1 5 -1 / 0 -1 0)
// The 3 x 3 scales are the reciprocals of the sums of the absolute weights
// (1/17, 1/9); the 5 x 5 and 7 x 7 scales are the reciprocals of the plain
// weight sums (-1/15, -1/39 and -1/7, -1/19), so those sizes turn the sign
// of the response. The scales are single-precision constants. Border pixels
// are 0; the result is stored in the input's type by the store rule.
#pragma once

#include <vector>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// In the order of the dialog.
enum class PasoAlto { Laplaciano9, Laplaciano5 };

// The K*K weights in row order and the scale (widened from its float).
std::vector<double> NucleoPasoAlto(int k, PasoAlto v);
double EscalaPasoAlto(int k, PasoAlto v);

// `salida` is already sized, of the input's type; k is 3, 5 or 7. False for
// an unknown type code or sizes that do not match.
bool FiltroPasoAlto(const Muestras& entrada, long filas, long columnas, int k, PasoAlto v, Muestras& salida,
        Progreso& progreso = SinProgreso());

}  // namespace orvela
