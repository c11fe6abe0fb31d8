// "Clasificador de mínima distancia".
#include <cmath>

#include "classification/Supervisada.h"
#include "image/Conversion.h"

namespace orvela {

bool ClasificarMinimaDistancia(const BandasClasificar& b, const std::vector<ClaseLeida>& clases,
                               std::span<uint8_t> salida, Progreso& p) {
    const std::size_t n = b.bandas.size(), k = clases.size();
    std::vector<uint8_t> nd(k);
    for (std::size_t i = 0; i < k; ++i) nd[i] = AlmacenarEntero<uint8_t>(NdClase(clases[i]));
    if (k == 0) return true;
    return RecorrerFilas(b, salida, p, [&](const double* const* x, std::size_t c, uint8_t* r) {
        thread_local std::vector<double> suma, mejor, sumaMejor;
        suma.resize(c);
        mejor.resize(c);
        sumaMejor.resize(c);
        double* sb = sumaMejor.data();
        double* s = suma.data();
        double* dm = mejor.data();
        for (std::size_t i = 0; i < k; ++i) {
            // Per pixel: s = 0, then s += (x[b] - mean[b])^2 in band order.
            for (std::size_t j = 0; j < c; ++j) s[j] = 0;
            for (std::size_t bb = 0; bb < n; ++bb) {
                const double m = clases[i].media[bb];
                const double* xb = x[bb];
                for (std::size_t j = 0; j < c; ++j) s[j] += (xb[j] - m) * (xb[j] - m);
            }
            const uint8_t v = nd[i];
            if (i == 0) {
                for (std::size_t j = 0; j < c; ++j) {
                    dm[j] = std::sqrt(s[j]);
                    sb[j] = s[j];
                    r[j] = v;
                }
            } else {
                // sqrt is monotone: a sum not below the best one's cannot give
                // a smaller distance, so only smaller sums take the root.
                for (std::size_t j = 0; j < c; ++j) {
                    if (s[j] < sb[j]) {
                        const double d = std::sqrt(s[j]);
                        if (d < dm[j]) {
                            dm[j] = d;
                            sb[j] = s[j];
                            r[j] = v;
                        }
                    }
                }
            }
        }
    });
}

}  // namespace orvela
