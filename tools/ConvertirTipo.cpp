#include "tools/ConvertirTipo.h"

#include <cmath>

#include "image/Conversion.h"

namespace orvela {

bool ConvertirTipo(const Muestras& origen, Muestras& destino) {
    bool cambio = false;
    ConTipo(origen.Codigo(), [&]<class E>(Muestra<E>) {
        ConTipo(destino.Codigo(), [&]<class S>(Muestra<S>) {
            const auto in = origen.Como<E>();
            const auto out = destino.Como<S>();
            for (std::size_t i = 0; i < in.size(); ++i) {
                const double x = static_cast<double>(in[i]);
                const S y = Almacenar<S>(x);
                out[i] = y;
                const double vuelta = static_cast<double>(y);
                // NaN survives a trip through float or double unchanged.
                if (vuelta != x && !(std::isnan(vuelta) && std::isnan(x))) cambio = true;
            }
        });
    });
    return cambio;
}

}  // namespace orvela
