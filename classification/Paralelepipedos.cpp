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
    return RecorrerFilas(b, salida, p, [&](const double* const* x, std::size_t c, uint8_t* r) {
        thread_local std::vector<uint32_t> dentro;
        dentro.resize(c);
        uint32_t* d = dentro.data();
        for (std::size_t j = 0; j < c; ++j) r[j] = 0;
        // Every class is tried: the last box that holds the pixel wins.
        for (std::size_t i = 0; i < k; ++i) {
            for (std::size_t j = 0; j < c; ++j) d[j] = 0;
            for (std::size_t bb = 0; bb < n; ++bb) {
                const double lo = bajo[i * n + bb], hi = alto[i * n + bb];
                const double* xb = x[bb];
                for (std::size_t j = 0; j < c; ++j) d[j] += (lo <= xb[j]) & (xb[j] <= hi);
            }
            const uint8_t v = nd[i];
            for (std::size_t j = 0; j < c; ++j) r[j] = d[j] == n ? v : r[j];
        }
    });
}

}  // namespace orvela
