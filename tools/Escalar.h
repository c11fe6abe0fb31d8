// Operations of an image with a number: every sample widened to double
// (integer samples read unsigned) and combined with the scalar in floating
// point; the result is of type double.
#pragma once

#include <span>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// Index of the operation in the dialog's radio group.
enum class OperacionEscalar {
    Suma = 0,       // A + s
    Resta = 1,      // A - s
    Producto = 2,   // A * s
    Cociente = 3,   // A / s
};

template <class T> void OperarConEscalar(OperacionEscalar op, std::span<const T> a, double s, std::span<double> r);

// `r` is a double buffer as long as `a`. False when the type code is
// unknown (message 61250) or the lengths differ.
bool OperarConEscalar(OperacionEscalar op, const Muestras& a, double s, Muestras& r,
                      Progreso& progreso = SinProgreso());

}  // namespace orvela
