#include "tools/FiltroMedia.h"

#include "image/Estadisticas.h"
#include "tools/Convolucion.h"

namespace orvela {

namespace {

template <class T>
void FiltrarMedia(const T* entrada, long filas, long columnas, int k, double media, T* salida) {
    using convolucion::Toma;
    std::vector<Toma> vecinos;
    for (int f = 0; f < k; ++f)
        for (int c = 0; c < k; ++c)
            if (f != k / 2 || c != k / 2) vecinos.push_back({f, c, 1.0});
    // The divisor is the same for every pixel.
    const double divisor = media + static_cast<double>(k * k - 1);
    const auto op = [media, divisor](auto suma, auto centro) { return (suma + media * centro) / divisor; };
    convolucion::Convolucionar(entrada, filas, columnas, k, std::move(vecinos), op, salida);
}

}  // namespace

bool FiltroMedia(const Muestras& entrada, long filas, long columnas, int k, Muestras& salida) {
    if (!convolucion::Dimensiones(entrada, filas, columnas, k, salida)) return false;
    const double media = ImageMean(entrada);
    return ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        FiltrarMedia(entrada.Como<T>().data(), filas, columnas, k, media, salida.Como<T>().data());
    });
}

}  // namespace orvela
