// Reclassification: every pixel in the half-open range [desde, hasta) takes
// one output value; the others are copied.
#pragma once

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// The three parameters as a sample of the image's type sees them: for byte
// and integer images truncated toward zero and reduced to their low 8 or 16
// bits (300 acts as 44 on a byte image, -1 as 255); for real and double
// images the doubles themselves.
struct ParametrosReclasificar {
    double desde, hasta, salida;
};
ParametrosReclasificar ReducirParametros(int codigo, double desde, double hasta, double salida);

// Byte and integer compare the reduced values (integer unsigned); real and
// double compare the sample widened to double with the parameters as
// doubles, and a matching real sample takes the output narrowed to float.
// `salida` has the input's type and length; false for an unknown code,
// lengths that differ, or a cancel.
bool Reclasificar(const Muestras& entrada, long filas, long columnas, double desde, double hasta, double valor,
                  Muestras& salida, Progreso& progreso = SinProgreso());

}  // namespace orvela
