// Low-pass filter ("Paso bajo"): an interior pixel becomes
//     escala * (sum over the window, in row order, of peso * muestra)
// with the weights of the chosen kernel and the reciprocal of their sum as
// the scale, written as a single-precision constant (1/25 is the float
// 0.039999999105930328...), so a flat region of value v may come out as v - 1
// in a byte or integer image.
//   Promedio:      every weight 1                        1/9, 1/25, 1/49
//   Ponderado a 1: 0.25 at even positions (0-based, row
//                  order), 0.5 at odd ones, centre 1     1/4, 1/10, 1/19
//   Ponderado a 2: every weight 1, centre 2              1/10, 1/26, 1/50
// Border pixels are 0; the result is stored in the input's type by the
// store rule.
#pragma once

#include <vector>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// In the order of the dialog.
enum class PasoBajo { Promedio, Ponderado1, Ponderado2 };

// The K*K weights in row order and the scale (widened from its float).
std::vector<double> NucleoPasoBajo(int k, PasoBajo v);
double EscalaPasoBajo(int k, PasoBajo v);

// `salida` is already sized, of the input's type; k is 3, 5 or 7. False for
// an unknown type code or sizes that do not match.
bool FiltroPasoBajo(const Muestras& entrada, long filas, long columnas, int k, PasoBajo v, Muestras& salida,
        Progreso& progreso = SinProgreso());

}  // namespace orvela
