// Directional filter ("Direccional"), 3 x 3 only: an interior pixel becomes
//     0.1 * (sum over the window, in row order, of peso * muestra)
// with 0.1 as a single-precision constant. Each mask has -2 in the centre and
// +1 on the side facing the chosen direction, -1 on the other:
//   N  1 1 1 / 1 -2 1 / -1 -1 -1      S  -1 -1 -1 / 1 -2 1 / 1 1 1
//   E  -1 1 1 / -1 -2 1 / -1 1 1      W  1 1 -1 / 1 -2 -1 / 1 1 -1
//   NE 1 1 1 / -1 -2 1 / -1 -1 1      NW 1 1 1 / 1 -2 -1 / 1 -1 -1
//   SE -1 -1 1 / -1 -2 1 / 1 1 1      SW 1 -1 -1 / 1 -2 -1 / 1 1 1
// Border pixels are 0; the result is stored in the input's type by the
// store rule.
#pragma once

#include <vector>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// In the order of the dialog.
enum class Direccion { N, S, E, W, NE, NW, SE, SW };

// The nine weights of the mask in row order.
std::vector<double> MascaraDireccional(Direccion d);

// `salida` is already sized, of the input's type. False for an unknown type
// code or sizes that do not match.
bool FiltroDireccional(const Muestras& entrada, long filas, long columnas, Direccion d, Muestras& salida,
        Progreso& progreso = SinProgreso());

}  // namespace orvela
