// Lost lines: a line whose mean differs sharply from both neighbours' and
// with many samples at the ends of the 0..255 range is rebuilt from the
// previous line, the mean of its neighbours, or an auxiliary band.
#pragma once

#include <vector>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela {

enum class MetodoLineas { Anterior = 0, Media = 1, Auxiliar = 2 };

struct UmbralesLineas {
    double medias = 0;      // Tm: difference of line means, after truncation
    double linea = 0;       // Tv: a sample below Tv or above 255 - Tv is erroneous
    double porcentaje = 0;  // Tp: share of erroneous samples (%) a lost line exceeds
};

// Corrects `banda` in place (filas x columnas samples). Detection runs from
// line 1 to filas - 2, forward; the first and last lines are never touched.
// `auxiliar` (same type and size) is used by MetodoLineas::Auxiliar only.
// Returns the lines replaced, in order; nullopt for an unknown type code or
// when cancelled.
std::optional<std::vector<long>> CorregirLineas(Muestras& banda, const Muestras* auxiliar, long filas, long columnas,
                                                MetodoLineas metodo, const UmbralesLineas& u,
                                                Progreso& progreso = SinProgreso());

}  // namespace orvela
