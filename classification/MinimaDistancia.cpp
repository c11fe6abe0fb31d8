// "Clasificador de mínima distancia".
#include <cmath>

#include "classification/Supervisada.h"
#include "image/Conversion.h"

namespace orvela {

namespace {

// One row: per pixel s = 0, then s += (x[b] - mean[b])^2 in band order,
// class after class; the smallest sqrt(s) wins, the earlier class on equal
// distances. Where AVX2 is there the loops run four pixels at a time
// instead of two, with the same operations in the same order.
__attribute__((target_clones("avx2", "default"))) void FilaMinimaDistancia(const double* const* x, std::size_t c,
                                                                           std::size_t n,
                                                                           const std::vector<ClaseLeida>& clases,
                                                                           const std::vector<uint8_t>& nd,
                                                                           double* s, double* dm, double* sb,
                                                                           uint8_t* r) {
    for (std::size_t i = 0; i < clases.size(); ++i) {
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
}

}  // namespace

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
        FilaMinimaDistancia(x, c, n, clases, nd, suma.data(), mejor.data(), sumaMejor.data(), r);
    });
}

}  // namespace orvela
