// User-defined filter ("Personalizado"): the K*K coefficients w typed by the
// user, in row order. An interior pixel becomes
//     (sum over the window, in row order, of w * muestra) / d
// where d is the sum over all coefficients of the absolute value of the
// coefficient truncated toward zero (0.5 adds 0, -2.7 adds 2). When d is 0
// (every coefficient below 1 in absolute value) the division has no value a
// sample can hold, and every pixel of the result is 0. Border pixels are 0;
// the result is stored in the input's type by the store rule.
#pragma once

#include <vector>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// The divisor d of a kernel.
double DivisorPersonalizado(const std::vector<double>& coeficientes);

// `salida` is already sized, of the input's type; k is 3, 5 or 7 and there
// are k*k coefficients. False for an unknown type code, sizes that do not
// match or a wrong number of coefficients.
bool FiltroPersonalizado(const Muestras& entrada, long filas, long columnas, int k,
                         const std::vector<double>& coeficientes, Muestras& salida,
        Progreso& progreso = SinProgreso());

}  // namespace orvela
