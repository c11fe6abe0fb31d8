// Destriping: the lines of each of the 16 detectors of a sweeping scanner
// (line l belongs to detector l mod 16) are rescaled linearly to the mean
// and population deviation of the whole image. The result is always double.
#pragma once

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

inline constexpr int kDetectores = 16;

// Figures of one detector: its mean, deviation, gain and offset.
struct Detector {
    double media = 0, desviacion = 0, ganancia = 0, desplazamiento = 0;
};

struct FigurasBandeado {
    double media = 0, desviacion = 0;  // whole image
    Detector detectores[kDetectores];
};

// `salida` must hold filas x columnas doubles. A detector whose lines are
// all equal has deviation 0: its gain is infinite and its lines come out
// infinite or not-a-number (no fallback). False for an unknown type code or
// when cancelled.
bool Destripe(const Muestras& entrada, long filas, long columnas, Muestras& salida,
              FigurasBandeado* figuras = nullptr, Progreso& progreso = SinProgreso());

}  // namespace orvela
