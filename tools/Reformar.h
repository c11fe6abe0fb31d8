// Reshaping: a window cut out of an image, a second image joined to a main
// one, subsampling and enlargement by whole factors. Samples are copied bit
// for bit; the result has the input's type. Each function fills a result
// buffer already made with the result's size (`salida`) and returns false
// for an unknown type code, sizes that do not agree, or a cancel.
#pragma once

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// Result rows r2 - r1 and columns c2 - c1 (the bottom-right row and column
// are excluded); result (i, j) = input (r1 + i, c1 + j). The window must lie
// inside the input.
bool Enventanar(const Muestras& entrada, long filas, long columnas, long r1, long c1, long r2, long c2,
                Muestras& salida, Progreso& progreso = SinProgreso());

// Result of max(Rm, r0 + Rs) rows and max(Cm, c0 + Cs) columns: the second
// image placed at (r0, c0) wins where the two overlap, then the main image,
// then 0. Both images have the type of `salida`.
struct TamanoConcatenado {
    long filas, columnas;
};
TamanoConcatenado TamanoConcatenar(long filasM, long columnasM, long filasS, long columnasS, long r0, long c0);
bool Concatenar(const Muestras& principal, long filasM, long columnasM, const Muestras& segunda, long filasS,
                long columnasS, long r0, long c0, Muestras& salida, Progreso& progreso = SinProgreso());

// Result rows / fr and columns / fc (truncated); result (i, j) = input
// ((i + 1) fr - 1, (j + 1) fc - 1): the last pixel of each block.
bool Contraer(const Muestras& entrada, long filas, long columnas, long fr, long fc, Muestras& salida,
              Progreso& progreso = SinProgreso());

// Result rows x fr and columns x fc; every input pixel fills its fr x fc block.
bool Expandir(const Muestras& entrada, long filas, long columnas, long fr, long fc, Muestras& salida,
              Progreso& progreso = SinProgreso());

}  // namespace orvela
