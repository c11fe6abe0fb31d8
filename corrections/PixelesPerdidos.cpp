#include "corrections/PixelesPerdidos.h"

#include <cstdint>
#include <cstdlib>
#include <type_traits>

#include "image/Conversion.h"

namespace orvela {

namespace {

// Sum of the neighbours of (l, c) that lie inside the image, above row left
// to right, then left and right, then below row left to right.
template <class S, class T>
inline S SumaVecinos(const T* p, long filas, long columnas, long l, long c, int& n) {
    S s = 0;
    n = 0;
    const long c0 = c > 0 ? c - 1 : c, c1 = c + 1 < columnas ? c + 1 : c;
    for (long f = l - 1; f <= l + 1; ++f) {
        if (f < 0 || f >= filas) continue;
        const T* fila = p + static_cast<std::size_t>(f) * static_cast<std::size_t>(columnas);
        for (long k = c0; k <= c1; ++k) {
            if (f == l && k == c) continue;
            s += static_cast<S>(fila[k]);
            ++n;
        }
    }
    return s;
}

template <class T>
inline bool Corregir(T& v, double media, double umbral) {
    const int32_t d = TruncarA32(media - static_cast<double>(v));
    if (static_cast<double>(std::llabs(static_cast<int64_t>(d))) > umbral) {
        v = Almacenar<T>(media);
        return true;
    }
    return false;
}

}  // namespace

std::optional<std::size_t> CorregirPixeles(Muestras& imagen, long filas, long columnas, double umbral,
                                           Progreso& progreso) {
    std::size_t cambiados = 0;
    bool cancelado = false;
    const bool conocido = ConTipo(imagen.Codigo(), [&]<class T>(Muestra<T>) {
        T* p = imagen.Como<T>().data();
        const std::size_t ancho = static_cast<std::size_t>(columnas);
        const bool interiorPosible = filas >= 3 && columnas >= 3;
        for (long l = 0; l < filas; ++l) {
            T* fila = p + static_cast<std::size_t>(l) * ancho;
            const bool bordeFila = l == 0 || l == filas - 1;
            for (long c = 0; c < columnas; ++c) {
                double media;
                if (interiorPosible && !bordeFila && c > 0 && c < columnas - 1) {
                    // Interior: the 8 neighbours (the sum divided by 8).
                    const T* a = fila - ancho + c;
                    const T* b = fila + ancho + c;
                    if constexpr (std::is_integral_v<T>) {
                        const uint32_t s = static_cast<uint32_t>(a[-1]) + a[0] + a[1] + fila[c - 1] + fila[c + 1] +
                                           b[-1] + b[0] + b[1];
                        media = static_cast<double>(s >> 3);
                    } else {
                        double s = static_cast<double>(a[-1]);
                        s += static_cast<double>(a[0]);
                        s += static_cast<double>(a[1]);
                        s += static_cast<double>(fila[c - 1]);
                        s += static_cast<double>(fila[c + 1]);
                        s += static_cast<double>(b[-1]);
                        s += static_cast<double>(b[0]);
                        s += static_cast<double>(b[1]);
                        media = s / 8.0;
                    }
                } else {
                    int n = 0;
                    if constexpr (std::is_integral_v<T>) {
                        const uint64_t s = SumaVecinos<uint64_t>(p, filas, columnas, l, c, n);
                        if (n == 0) continue;
                        media = static_cast<double>(s / static_cast<uint64_t>(n));
                    } else {
                        const double s = SumaVecinos<double>(p, filas, columnas, l, c, n);
                        if (n == 0) continue;
                        media = n == 5 ? s * 0.2 : s / static_cast<double>(n);
                    }
                }
                cambiados += Corregir(fila[c], media, umbral) ? 1 : 0;
            }
            if ((l & 255) == 255) {
                if (progreso.Cancelado()) {
                    cancelado = true;
                    return;
                }
                progreso.Informar(static_cast<double>(l + 1) / static_cast<double>(filas));
            }
        }
    });
    if (!conocido || cancelado) return std::nullopt;
    return cambiados;
}

}  // namespace orvela
