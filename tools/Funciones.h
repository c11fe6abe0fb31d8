// Functions of one image: each sample widened to double (integer samples
// read unsigned) and passed through the function; the result is double.
// Angles are in radians. Nothing guards a function's domain here: the
// square root and the logarithm are checked beforehand with the image
// minimum, and overflow (large exponentials, tangents near odd multiples of
// pi/2) is kept as it comes.
#pragma once

#include <span>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// Index of the function in the dialog's radio group.
enum class Funcion {
    Cuadrado = 0,       // A raised to the power 2.0
    RaizCuadrada = 1,
    LogNeperiano = 2,
    Exponencial = 3,
    Seno = 4,
    Coseno = 5,
    Tangente = 6,
    ValorAbsoluto = 7,
};

// The function applied to one value.
double ValorFuncion(Funcion f, double x);

template <class T> void AplicarFuncion(Funcion f, std::span<const T> a, std::span<double> r);

// `r` is a double buffer as long as `a`. False when the type code is
// unknown (message 61250) or the lengths differ.
bool AplicarFuncion(Funcion f, const Muestras& a, Muestras& r, Progreso& progreso = SinProgreso());

}  // namespace orvela
