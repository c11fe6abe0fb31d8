// "Clasificador de paralelepípedos".
#include "classification/Supervisada.h"
#include "image/Conversion.h"

namespace orvela {

bool ClasificarParalelepipedos(const BandasClasificar& b, const std::vector<ClaseLeida>& clases, int multiplicador,
                               std::span<uint8_t> salida, Progreso& p) {
    const std::size_t n = b.bandas.size(), k = clases.size();
    const double m = multiplicador;
    std::vector<uint8_t> nd(k);
    std::vector<double> bajo(k * n), alto(k * n);
    for (std::size_t i = 0; i < k; ++i) {
        nd[i] = AlmacenarEntero<uint8_t>(NdClase(clases[i]));
        for (std::size_t j = 0; j < n; ++j) {
            bajo[i * n + j] = clases[i].media[j] - m * clases[i].desviacion[j];
            alto[i * n + j] = clases[i].media[j] + m * clases[i].desviacion[j];
        }
    }
    return RecorrerPixeles(b, salida, p, [&](const double* x) {
        uint8_t v = 0;
        // Every class is tried: the last box that holds the pixel wins.
        for (std::size_t i = 0; i < k; ++i) {
            const double* lo = bajo.data() + i * n;
            const double* hi = alto.data() + i * n;
            std::size_t dentro = 0;
            for (std::size_t j = 0; j < n; ++j) dentro += (lo[j] <= x[j] && x[j] <= hi[j]) ? 1 : 0;
            if (dentro == n) v = nd[i];
        }
        return v;
    });
}

}  // namespace orvela
