// Composition of several co-registered images of one type and size: at each
// pixel the largest or smallest value of the images, or the value of the
// image whose reference is largest or smallest there.
#pragma once

#include <vector>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// Index of the criterion in the dialog's radio group.
enum class CriterioComponer { Maximo = 0, Minimo = 1 };

// v starts at the first image's value and is replaced only by a strictly
// greater (smaller) value, so the first image wins ties. Every buffer has
// the type and length of `salida`. False for an unknown type code or
// buffers that do not agree, or when cancelled.
bool ComponerSinReferencia(const std::vector<const Muestras*>& imagenes, CriterioComponer criterio, long filas,
                           long columnas, Muestras& salida, Progreso& progreso = SinProgreso());

// The reference of the first image is the starting value; a later image is
// taken only where its reference is strictly greater (smaller) than the best
// so far, so equal references keep the earlier image.
bool ComponerConReferencia(const std::vector<const Muestras*>& imagenes, const std::vector<const Muestras*>& referencias,
                           CriterioComponer criterio, long filas, long columnas, Muestras& salida,
                           Progreso& progreso = SinProgreso());

}  // namespace orvela
