// Maximum and minimum filters.
//
// The value of a window is what a scan of its samples in row order gives
// when the running value is replaced only by a strictly smaller (larger)
// sample. The window is split in two passes: each input row is reduced
// once over K neighbouring columns, then K reduced rows are combined from
// the top row down. Reductions use a combination that keeps the earlier
// operand on a tie, so among equal values (-0 and +0 in real images) the
// one met first in row order is kept, as the scan keeps it.
//
// A NaN sample never replaces the running value in the scan, and a running
// value that is NaN is never replaced: the window's value is therefore its
// first sample when that is NaN, and otherwise the extreme of its numbers.
// Images without NaN (the usual case) take plain comparisons; in an image
// with NaN the passes skip it (a NaN operand gives way to the other) and the
// first sample of each window is looked at last.
#include <cstdint>
#include <type_traits>
#include <vector>

#include "tools/FiltrosRango.h"
#include "tools/VentanaRango.h"

namespace orvela {
namespace {

// How a window is reduced: minimum or maximum, and whether NaN may occur.
template <class T, bool kMinimoP, bool kNaNP>
struct Modo {
    using tipo = T;
    static constexpr bool kMinimo = kMinimoP;
    static constexpr bool kNaN = kNaNP;
};

// The earlier operand `a` or the later `b`, whichever the scan would keep.
template <class M, class T>
inline T Elegir(T a, T b) {
    bool tomarB;
    if constexpr (M::kMinimo) tomarB = b < a;
    else tomarB = b > a;
    if constexpr (M::kNaN) tomarB = tomarB | (a != a);
    return tomarB ? b : a;
}

// salida[i] = reduction of x[i .. i + K - 1], for i < n, by doubling spans.
template <class M, int K, class T = typename M::tipo>
void ReducirFila(const T* __restrict x, long n, T* __restrict t1, T* __restrict t2,
                 T* __restrict salida) {
    for (long i = 0; i < n + K - 2; ++i) t1[i] = Elegir<M>(x[i], x[i + 1]);
    if constexpr (K == 3) {
        for (long i = 0; i < n; ++i) salida[i] = Elegir<M>(t1[i], t1[i + 1]);
    } else {
        for (long i = 0; i < n + K - 4; ++i) t2[i] = Elegir<M>(t1[i], t1[i + 2]);
        // Spans of four starting at i and at i + K - 4 cover the K columns.
        for (long i = 0; i < n; ++i) salida[i] = Elegir<M>(t2[i], t2[i + K - 4]);
    }
}

// salida[i] = reduction of the K rows, top row first; for real samples the
// first sample of the window (primera[i]) wins when it is NaN.
template <class M, int K, class T = typename M::tipo>
void CombinarFilas(const T* const* filas, const T* __restrict primera, long n, T* __restrict salida) {
    const T* __restrict f0 = filas[0];
    const T* __restrict f1 = filas[1];
    const T* __restrict f2 = filas[2];
    if constexpr (K == 3) {
        for (long i = 0; i < n; ++i)
            salida[i] = Elegir<M>(Elegir<M>(f0[i], f1[i]), f2[i]);
    } else {
        const T* __restrict f3 = filas[3];
        const T* __restrict f4 = filas[4];
        if constexpr (K == 5) {
            for (long i = 0; i < n; ++i) {
                T v = Elegir<M>(Elegir<M>(f0[i], f1[i]), f2[i]);
                salida[i] = Elegir<M>(Elegir<M>(v, f3[i]), f4[i]);
            }
        } else {
            const T* __restrict f5 = filas[5];
            const T* __restrict f6 = filas[6];
            for (long i = 0; i < n; ++i) {
                T v = Elegir<M>(Elegir<M>(f0[i], f1[i]), f2[i]);
                v = Elegir<M>(Elegir<M>(v, f3[i]), f4[i]);
                salida[i] = Elegir<M>(Elegir<M>(v, f5[i]), f6[i]);
            }
        }
    }
    if constexpr (M::kNaN) {
        for (long i = 0; i < n; ++i) {
            const T p = primera[i];
            salida[i] = p != p ? p : salida[i];
        }
    }
}

template <class M, int K, class T = typename M::tipo>
void Extremo(const T* entrada, long filas, long columnas, T* salida) {
    constexpr int h = (K - 1) / 2;
    const long n = columnas - 2 * h;
    // Reduced rows kept in a ring: input row f lives in slot f % K.
    std::vector<T> anillo(static_cast<std::size_t>(K * n)), t1(columnas), t2(columnas);
    auto reducir = [&](long f) {
        ReducirFila<M, K>(entrada + f * columnas, n, t1.data(), t2.data(), anillo.data() + (f % K) * n);
    };
    for (long f = 0; f < K - 1; ++f) reducir(f);
    const T* ventana[K];
    for (long f = h; f < filas - h; ++f) {
        reducir(f + h);
        for (int j = 0; j < K; ++j) ventana[j] = anillo.data() + ((f - h + j) % K) * n;
        CombinarFilas<M, K>(ventana, entrada + (f - h) * columnas, n, salida + f * columnas + h);
        rango::ExtremosACero(salida + f * columnas, columnas, h);
    }
}

template <class T>
bool HayNaN(const T* x, long n) {
    unsigned hay = 0;
    for (long i = 0; i < n; ++i) hay |= x[i] != x[i];
    return hay != 0;
}

template <class M, class T>
void PorTamano(const T* e, long filas, long columnas, int k, T* s, Progreso& progreso) {
    rango::PorBandas(progreso, e, filas, columnas, (k - 1) / 2, s, [k](const T* x, long f, long c, T* y) {
        switch (k) {
            case 3: Extremo<M, 3>(x, f, c, y); break;
            case 5: Extremo<M, 5>(x, f, c, y); break;
            default: Extremo<M, 7>(x, f, c, y); break;
        }
    });
}

template <bool kMinimo>
bool Filtrar(const Muestras& entrada, long filas, long columnas, int k, Muestras& salida, Progreso& progreso) {
    if (!rango::ArgumentosValidos(entrada, filas, columnas, k, salida)) return false;
    return ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        const T* e = entrada.Como<T>().data();
        T* s = salida.Como<T>().data();
        const int h = (k - 1) / 2;
        rango::BordeACero(s, filas, columnas, h, false);
        if (filas < k || columnas < k) return;
        if constexpr (std::is_floating_point_v<T>) {
            if (HayNaN(e, filas * columnas)) {
                PorTamano<Modo<T, kMinimo, true>>(e, filas, columnas, k, s, progreso);
                return;
            }
        }
        PorTamano<Modo<T, kMinimo, false>>(e, filas, columnas, k, s, progreso);
    });
}

}  // namespace

bool FiltroMaximo(const Muestras& entrada, long filas, long columnas, int k, Muestras& salida, Progreso& progreso) {
    return Filtrar<false>(entrada, filas, columnas, k, salida, progreso);
}

bool FiltroMinimo(const Muestras& entrada, long filas, long columnas, int k, Muestras& salida, Progreso& progreso) {
    return Filtrar<true>(entrada, filas, columnas, k, salida, progreso);
}

}  // namespace orvela
