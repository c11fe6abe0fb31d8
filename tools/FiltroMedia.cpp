#include "tools/FiltroMedia.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "image/Estadisticas.h"
#include "tools/Convolucion.h"

namespace orvela {

namespace {

// The mean of the image, the same double as ImageMean gives. With integer
// samples, while the total stays below 2^53 every partial sum of ImageMean's
// loop is exact, so an integer total in any order is that same sum.
template <class T>
double Media(const Muestras& m) {
    if constexpr (std::is_integral_v<T>) {
        const auto d = m.Como<T>();
        if (static_cast<double>(d.size()) * std::numeric_limits<T>::max() < 0x1p53) {
            // Blocks of 2^16 samples fit a 32-bit total.
            uint64_t total = 0;
            for (std::size_t i = 0; i < d.size(); i += 65536) {
                const std::size_t fin = std::min(d.size(), i + 65536);
                uint32_t parcial = 0;
                for (std::size_t j = i; j < fin; ++j) parcial += d[j];
                total += parcial;
            }
            return static_cast<double>(total) / static_cast<double>(d.size());
        }
    }
    return ImageMean(m);
}

template <class T>
void FiltrarMedia(const T* entrada, long filas, long columnas, int k, double media, T* salida, Progreso& progreso) {
    using convolucion::Toma;
    std::vector<Toma> vecinos;
    for (int f = 0; f < k; ++f)
        for (int c = 0; c < k; ++c)
            if (f != k / 2 || c != k / 2) vecinos.push_back({f, c, 1.0});
    // The divisor is the same for every pixel.
    const double divisor = media + static_cast<double>(k * k - 1);
    const auto op = [media, divisor](auto suma, auto centro) { return (suma + media * centro) / divisor; };
    convolucion::Convolucionar(entrada, filas, columnas, k, std::move(vecinos), op, salida, progreso);
}

}  // namespace

bool FiltroMedia(const Muestras& entrada, long filas, long columnas, int k, Muestras& salida, Progreso& progreso) {
    if (!convolucion::Dimensiones(entrada, filas, columnas, k, salida)) return false;
    return ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        FiltrarMedia(entrada.Como<T>().data(), filas, columnas, k, Media<T>(entrada), salida.Como<T>().data(), progreso);
    });
}

}  // namespace orvela
