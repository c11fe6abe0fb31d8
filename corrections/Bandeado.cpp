#include "corrections/Bandeado.h"

#include <cmath>
#include <cstdint>

#include "image/Estadisticas.h"

namespace orvela {

bool Destripe(const Muestras& entrada, long filas, long columnas, Muestras& salida, FigurasBandeado* figuras,
              Progreso& progreso) {
    if (!CodigoValido(entrada.Codigo()) || salida.Codigo() != kDouble) return false;
    FigurasBandeado f;
    f.media = ImageMean(entrada);
    f.desviacion = ImageStdDev(entrada, f.media);
    const std::size_t ancho = static_cast<std::size_t>(columnas);
    bool hecho = false;
    ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        const T* p = entrada.Como<T>().data();
        // Each detector sums its own lines in line order: the 16 detectors
        // are independent, so they run side by side.
        const bool sumas = PorFilas(
            progreso, kDetectores,
            [&](long d0, long d1) {
                for (long d = d0; d < d1; ++d) {
                    double suma = 0;
                    long n = 0;
                    for (long l = d; l < filas; l += kDetectores, ++n) {
                        const T* fila = p + static_cast<std::size_t>(l) * ancho;
                        if constexpr (std::is_integral_v<T>) {
                            // A line sum of whole samples is exact in 64 bits
                            // and, below 2^53, in double at every step too.
                            uint64_t s = 0;
                            for (std::size_t c = 0; c < ancho; ++c) s += fila[c];
                            suma += static_cast<double>(s);
                        } else {
                            for (std::size_t c = 0; c < ancho; ++c) suma += static_cast<double>(fila[c]);
                        }
                    }
                    const double cuenta = static_cast<double>(n) * static_cast<double>(columnas);
                    const double media = suma / cuenta;
                    double cuadrados = 0;
                    for (long l = d; l < filas; l += kDetectores) {
                        const T* fila = p + static_cast<std::size_t>(l) * ancho;
                        for (std::size_t c = 0; c < ancho; ++c) {
                            const double e = static_cast<double>(fila[c]) - media;
                            cuadrados += std::pow(e, 2.0);
                        }
                    }
                    Detector& det = f.detectores[d];
                    det.media = media;
                    det.desviacion = std::sqrt(cuadrados / cuenta);
                }
            },
            1);
        if (!sumas) return;
        for (Detector& det : f.detectores) det.ganancia = f.desviacion / det.desviacion;
        for (Detector& det : f.detectores) det.desplazamiento = f.media - det.ganancia * det.media;
        double* q = salida.Como<double>().data();
        hecho = PorFilas(progreso, filas, [&](long desde, long hasta) {
            for (long l = desde; l < hasta; ++l) {
                const Detector& det = f.detectores[l % kDetectores];
                const T* fila = p + static_cast<std::size_t>(l) * ancho;
                double* destino = q + static_cast<std::size_t>(l) * ancho;
                for (std::size_t c = 0; c < ancho; ++c)
                    destino[c] = static_cast<double>(fila[c]) * det.ganancia + det.desplazamiento;
            }
        });
    });
    if (figuras) *figuras = f;
    return hecho;
}

}  // namespace orvela
