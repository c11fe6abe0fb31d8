// What the rank and mode filters share: the checks on their arguments, the
// zero border and the order-preserving keys of real and double samples.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela::rango {

// The arguments make sense: a known type on both buffers, K of 3, 5 or 7,
// and buffers holding at least rows x columns samples.
inline bool ArgumentosValidos(const Muestras& entrada, long filas, long columnas, int k,
                              const Muestras& salida) {
    if (!CodigoValido(entrada.Codigo()) || salida.Codigo() != entrada.Codigo()) return false;
    if (k != 3 && k != 5 && k != 7) return false;
    if (filas < 0 || columnas < 0) return false;
    if (filas == 0 || columnas == 0) return true;
    const auto total = static_cast<std::size_t>(filas) * static_cast<std::size_t>(columnas);
    if (total / static_cast<std::size_t>(filas) != static_cast<std::size_t>(columnas)) return false;
    return entrada.Cantidad() >= total && salida.Cantidad() >= total;
}

// Sets to 0 the first and last h samples of one row.
template <class T>
void ExtremosACero(T* fila, long columnas, int h) {
    std::fill(fila, fila + h, T{});
    std::fill(fila + columnas - h, fila + columnas, T{});
}

// Sets to 0 every pixel closer than h to an edge. An image with fewer than
// 2h + 1 rows or columns is all border. With `columnasTambien` false the ends of
// the interior rows are left to the caller, which zeroes them (with
// ExtremosACero) while the row is in the cache.
template <class T>
void BordeACero(T* salida, long filas, long columnas, int h, bool columnasTambien = true) {
    if (filas < 2 * h + 1 || columnas < 2 * h + 1) {
        std::fill(salida, salida + filas * columnas, T{});
        return;
    }
    std::fill(salida, salida + h * columnas, T{});
    std::fill(salida + (filas - h) * columnas, salida + filas * columnas, T{});
    if (columnasTambien)
        for (long f = h; f < filas - h; ++f) ExtremosACero(salida + f * columnas, columnas, h);
}

// Unsigned key of a sample whose integer order is the order of the values.
// Byte and integer samples are their own key; real and double samples map
// their bits so that the keys follow IEEE totalOrder: -NaN < -inf < ... <
// -0 < +0 < ... < +inf < +NaN. The mapping is one to one, so a key gives
// back the very sample it came from.
template <class T> struct Clave {
    using tipo = T;
    static T De(T v) { return v; }
    static T Valor(T k) { return k; }
};
template <class F, class U> struct ClaveReal {
    using tipo = U;
    static constexpr int kBits = 8 * sizeof(U);
    static U De(F v) {
        const U b = std::bit_cast<U>(v);
        const U signo = static_cast<U>(static_cast<std::make_signed_t<U>>(b) >> (kBits - 1));
        return b ^ (signo | (U{1} << (kBits - 1)));
    }
    static F Valor(U k) {
        const U alto = static_cast<U>(static_cast<std::make_signed_t<U>>(k) >> (kBits - 1));
        return std::bit_cast<F>(k ^ (static_cast<U>(~alto) | (U{1} << (kBits - 1))));
    }
};
template <> struct Clave<float> : ClaveReal<float, uint32_t> {};
template <> struct Clave<double> : ClaveReal<double, uint64_t> {};

// Runs `kernel(entrada, filas, columnas, salida)`, a filter whose interior
// rows depend only on the input rows of their windows, on bands of rows on
// every core. Each band runs the kernel on the rows its windows read, into a
// buffer of its own, and keeps only its own interior rows; the border rows
// are left as they are. The bands are a few per core, so that one core
// hardly repeats any work.
template <class T, class Kernel>
void PorBandas(Progreso& p, const T* entrada, long filas, long columnas, int h, T* salida, Kernel&& kernel) {
    const long interiores = filas - 2 * h;
    if (interiores <= 0) return;
    const long partes = 16L * NucleosEnUso();
    const long bloque = std::max(32L, (interiores + partes - 1) / partes);
    PorFilas(
        p, interiores,
        [&](long desde, long hasta) {
            const long filasSub = (hasta - desde) + 2 * h;
            std::vector<T> banda(static_cast<std::size_t>(filasSub) * static_cast<std::size_t>(columnas));
            kernel(entrada + desde * columnas, filasSub, columnas, banda.data());
            std::memcpy(salida + (desde + h) * columnas, banda.data() + static_cast<std::size_t>(h) * columnas,
                        static_cast<std::size_t>(hasta - desde) * static_cast<std::size_t>(columnas) * sizeof(T));
        },
        bloque);
}

}  // namespace orvela::rango
