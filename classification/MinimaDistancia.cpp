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
    std::vector<double> medias(k * n);
    for (std::size_t i = 0; i < k; ++i)
        for (std::size_t j = 0; j < n; ++j) medias[i * n + j] = clases[i].media[j];
    if (k == 0) return true;
    return RecorrerPixeles(b, salida, p, [&](const double* x) {
        std::size_t mejor = 0;
        double dMejor = 0;
        for (std::size_t i = 0; i < k; ++i) {
            const double* m = medias.data() + i * n;
            double s = 0;
            for (std::size_t j = 0; j < n; ++j) s += (x[j] - m[j]) * (x[j] - m[j]);
            const double d = std::sqrt(s);
            if (i == 0 || d < dMejor) {
                mejor = i;
                dMejor = d;
            }
        }
        return nd[mejor];
    });
}

}  // namespace orvela
