#pragma once

#include "image/Muestras.h"

namespace orvela {

// Stores every sample of `origen` in `destino` (already sized, of its own
// type) by the store rule. Returns whether any value changed on the way.
bool ConvertirTipo(const Muestras& origen, Muestras& destino);

}  // namespace orvela
