// Placeholder definitions; replaced by the rank filter files.
#include "tools/FiltrosRango.h"

namespace orvela {
bool FiltroMediana(const Muestras&, long, long, int, Muestras&) { return true; }
bool FiltroMaximo(const Muestras&, long, long, int, Muestras&) { return true; }
bool FiltroMinimo(const Muestras&, long, long, int, Muestras&) { return true; }
bool FiltroModa(const Muestras&, long, long, int, Muestras&) { return true; }
}  // namespace orvela
