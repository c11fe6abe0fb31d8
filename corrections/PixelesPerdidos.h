// Lost pixels: a sample that differs from the mean of its neighbours by more
// than a threshold takes that mean. The image is corrected in place, forward
// (line by line, column by column), so a sample already replaced counts with
// its new value as a neighbour of the later ones.
#pragma once

#include <cstddef>
#include <optional>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

// Neighbourhood: the 8 neighbours clipped to the image (8 inside, 5 on an
// edge, 3 at a corner; an image of one line or one column has 2 inside and
// 1 at its ends; a single sample has none and is kept). Byte and integer:
// whole sum divided with truncation; real and double: floating point (five
// neighbours: the sum times 0.2). The difference mean - sample is truncated
// to an integer before |d| > umbral is tested.
// Returns how many samples were replaced; nullopt for an unknown type code
// or when cancelled.
std::optional<std::size_t> CorregirPixeles(Muestras& imagen, long filas, long columnas, double umbral,
                                           Progreso& progreso = SinProgreso());

}  // namespace orvela
