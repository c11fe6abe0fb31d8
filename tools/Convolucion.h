// The machinery shared by the convolution filters (mean, low-pass, high-pass,
// directional and user-defined): a K x K window slid over the interior of the
// image, the border set to 0, every result stored by the store rule.
//
// The value of an interior pixel is, by definition, what the plain loop gives:
//
//     suma = 0.0;
//     for each tap in row order (top row first, left to right):
//         suma += peso * (double) muestra;
//     resultado = op(suma, (double) centro);   // the filter's scale or divisor
//     salida = Almacenar<T>(resultado);
//
// The taps are the kernel's window positions (the mean filter leaves the
// centre out of them and adds it in `op`).
//
// Both ways of summing below give exactly that double:
// - SumasEnteras, for byte and integer samples under integer weights: every
//   product and every partial sum of the loop is an integer far below 2^53,
//   so the loop is exact and any order of addition gives the same value. The
//   sums are formed in 16-bit lanes (byte samples, small weights) or 32-bit
//   lanes, taps of equal weight added first and multiplied once.
// - SumasReales, for everything else: the row order of the sum is kept pixel
//   by pixel; the work is spread across neighbouring pixels, never across the
//   window.
// The scale and store step runs on two pairs of doubles at a time with the
// same operations, in the same order, as the scalar one.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "image/Conversion.h"
#include "base/Progreso.h"
#include "image/Muestras.h"

namespace orvela::convolucion {

// A window position and its weight; fila and columna from 0 at the top left.
struct Toma {
    int fila;
    int columna;
    double peso;
};

// The K * K weights of a kernel, in row order, as taps in row order.
inline std::vector<Toma> Tomas(int k, const std::vector<double>& pesos) {
    std::vector<Toma> t;
    t.reserve(pesos.size());
    for (int i = 0; i < k * k; ++i) t.push_back({i / k, i % k, pesos[static_cast<std::size_t>(i)]});
    return t;
}

// Sets to 0 every pixel closer than (K-1)/2 to an edge: whole rows at the
// top and bottom, and the first and last columns of the other rows. An image
// with fewer than K rows or columns is all border.
template <class T>
void BordeACero(T* salida, long filas, long columnas, int k) {
    const long h = k / 2;
    if (filas < k || columnas < k) {
        std::fill(salida, salida + filas * columnas, T{});
        return;
    }
    std::fill(salida, salida + h * columnas, T{});
    std::fill(salida + (filas - h) * columnas, salida + filas * columnas, T{});
    for (long y = h; y < filas - h; ++y) {
        T* fila = salida + y * columnas;
        std::fill(fila, fila + h, T{});
        std::fill(fila + columnas - h, fila + columnas, T{});
    }
}

namespace detalle {

// A vector of 16 bytes of E where the compiler has them, one E otherwise.
#if defined(__GNUC__)
template <class E>
struct Vector {
    typedef E tipo __attribute__((vector_size(16)));
};
#else
template <class E>
struct Vector {
    using tipo = E;
};
#endif
template <class E>
using VectorDe = typename Vector<E>::tipo;
template <class E>
inline constexpr long kCarriles = sizeof(VectorDe<E>) / sizeof(E);
using VReal = VectorDe<double>;
inline constexpr long kCarrilesReal = kCarriles<double>;
// Pixels computed together: four integer vectors, eight real vectors (enough
// independent sums to hide the latency of the additions).
inline constexpr int kVectoresEnt = 4;
template <class E>
inline constexpr long kBloqueEnt = kVectoresEnt * kCarriles<E>;
inline constexpr int kVectoresReal = 8;
inline constexpr long kBloqueReal = kVectoresReal * kCarrilesReal;
// Zero columns after each widened row, so that the last block may read past
// the row's end.
inline constexpr long kRelleno = 32;
static_assert(kRelleno >= kBloqueEnt<uint16_t> && kRelleno >= kBloqueEnt<uint32_t> && kRelleno >= kBloqueReal);

template <class V, class E>
inline V Cargar(const E* p) {
    V v;
    std::memcpy(&v, p, sizeof v);
    return v;
}
template <class V, class E>
inline void Guardar(E* p, const V& v) {
    std::memcpy(p, &v, sizeof v);
}

// The K input rows of the window, widened to E, in a ring: row f lives in
// slot f % K. Each row is widened once.
template <class E>
class Anillo {
public:
    Anillo(int k, long columnas) : k_(k), columnas_(columnas), ancho_(columnas + kRelleno),
                                   datos_(static_cast<std::size_t>(k) * static_cast<std::size_t>(ancho_), E{}) {}
    template <class T>
    void Ensanchar(const T* entrada, long f) {
        E* d = Fila(f);
        const T* s = entrada + f * columnas_;
        long c = 0;
#if defined(__SSE2__)
        if constexpr (std::is_same_v<T, float> && std::is_same_v<E, double>) {
            for (; c + 4 <= columnas_; c += 4) {
                const __m128 v = _mm_loadu_ps(s + c);
                _mm_storeu_pd(d + c, _mm_cvtps_pd(v));
                _mm_storeu_pd(d + c + 2, _mm_cvtps_pd(_mm_movehl_ps(v, v)));
            }
        }
#endif
        for (; c < columnas_; ++c) d[c] = static_cast<E>(s[c]);
    }
    E* Fila(long f) { return datos_.data() + (f % k_) * ancho_; }
    // Offset, from the start of the ring, of window position (fila, columna)
    // for the output row y; output column j reads at that offset + j.
    std::ptrdiff_t Desplazamiento(long y, int fila, int columna) const {
        return ((y - k_ / 2 + fila) % k_) * ancho_ + columna;
    }
    const E* Datos() const { return datos_.data(); }

private:
    int k_;
    long columnas_, ancho_;
    std::vector<E> datos_;
};

}  // namespace detalle

// Width in bits of the integer lanes that give the plain loop's value: 16
// for byte samples under weights whose absolute sum is at most 128, 32 when
// that sum times the largest sample stays inside 32 bits; 0 when the weights
// are not all whole numbers or are too large (the real way is then taken).
template <class T>
int BitsSumaEntera(const std::vector<Toma>& tomas) {
    if constexpr (!std::is_integral_v<T>) {
        return 0;
    } else {
        double total = 0.0;
        for (const Toma& t : tomas) {
            if (!(std::fabs(t.peso) <= 2147483647.0) || t.peso != std::trunc(t.peso)) return 0;
            total += std::fabs(t.peso);
        }
        const double mayor = total * static_cast<double>(std::numeric_limits<T>::max());
        if (sizeof(T) == 1 && mayor <= 32767.0) return 16;
        return mayor <= 2147483647.0 ? 32 : 0;
    }
}

// For every interior row y calls fila(y, sumas, n): sumas[j] (j < n) is the
// weighted sum of the window of column j + (K-1)/2, as a signed integer of
// the lanes' width (E is uint16_t or uint32_t). The samples are integer and
// the weights pass BitsSumaEntera for that width; taps of weight 0 add
// nothing and are skipped.
template <class E, class T, class Fila>
void SumasEnteras(const T* entrada, long filas, long columnas, int k, const std::vector<Toma>& tomas, Fila&& fila) {
    using namespace detalle;
    static_assert(std::is_integral_v<T> && std::is_unsigned_v<E> && sizeof(E) >= sizeof(T));
    using V = VectorDe<E>;
    using Signo = std::make_signed_t<E>;
    constexpr long L = kCarriles<E>;
    constexpr long B = kBloqueEnt<E>;
    if (filas < k || columnas < k) return;
    const int h = k / 2;
    const long n = columnas - 2 * h;
    const long bloques = (n + B - 1) / B * B;

    // Taps grouped by weight: the samples of a group are added, then the
    // group's sum is multiplied by its weight. Arithmetic is modulo the
    // lanes' width, which is exact because the true sum fits in it.
    std::vector<E> pesos;
    std::vector<std::vector<const Toma*>> grupos;
    for (const Toma& t : tomas) {
        if (t.peso == 0.0) continue;
        const auto p = static_cast<E>(static_cast<Signo>(t.peso));
        auto it = std::find(pesos.begin(), pesos.end(), p);
        if (it == pesos.end()) {
            pesos.push_back(p);
            grupos.emplace_back();
            it = pesos.end() - 1;
        }
        grupos[static_cast<std::size_t>(it - pesos.begin())].push_back(&t);
    }
    std::vector<std::size_t> finGrupo;
    std::vector<const Toma*> orden;
    for (const auto& g : grupos) {
        orden.insert(orden.end(), g.begin(), g.end());
        finGrupo.push_back(orden.size());
    }
    constexpr E kUno = 1, kMenosUno = static_cast<E>(~E{0});

    Anillo<E> anillo(k, columnas);
    std::vector<E> sumas(static_cast<std::size_t>(bloques));
    std::vector<std::ptrdiff_t> desp(orden.size());
    for (long f = 0; f < k - 1; ++f) anillo.Ensanchar(entrada, f);
    for (long y = h; y < filas - h; ++y) {
        anillo.Ensanchar(entrada, y + h);
        for (std::size_t t = 0; t < orden.size(); ++t) desp[t] = anillo.Desplazamiento(y, orden[t]->fila, orden[t]->columna);
        const E* base = anillo.Datos();
        for (long x = 0; x < bloques; x += B) {
            V a[kVectoresEnt] = {};
            std::size_t t = 0;
            for (std::size_t g = 0; g < pesos.size(); ++g) {
                V s[kVectoresEnt] = {};
                for (; t < finGrupo[g]; ++t) {
                    const E* p = base + desp[t] + x;
                    for (int i = 0; i < kVectoresEnt; ++i) s[i] += Cargar<V>(p + i * L);
                }
                const E w = pesos[g];
                if (w == kUno) {
                    for (int i = 0; i < kVectoresEnt; ++i) a[i] += s[i];
                } else if (w == kMenosUno) {
                    for (int i = 0; i < kVectoresEnt; ++i) a[i] -= s[i];
                } else {
                    for (int i = 0; i < kVectoresEnt; ++i) a[i] += s[i] * w;
                }
            }
            for (int i = 0; i < kVectoresEnt; ++i) Guardar(sumas.data() + x + i * L, a[i]);
        }
        fila(y, reinterpret_cast<const Signo*>(sumas.data()), n);
    }
}

// For every interior row y calls fila(y, sumas, n): sumas[j] (j < n) is the
// plain loop's sum for the window of column j + (K-1)/2, in double.
template <class T, class Fila>
void SumasReales(const T* entrada, long filas, long columnas, int k, const std::vector<Toma>& tomas, Fila&& fila) {
    using namespace detalle;
    if (filas < k || columnas < k) return;
    const int h = k / 2;
    const long n = columnas - 2 * h;
    const long bloques = (n + kBloqueReal - 1) / kBloqueReal * kBloqueReal;

    Anillo<double> anillo(k, columnas);
    std::vector<double> sumas(static_cast<std::size_t>(bloques));
    std::vector<std::ptrdiff_t> desp(tomas.size());
    for (long f = 0; f < k - 1; ++f) anillo.Ensanchar(entrada, f);
    for (long y = h; y < filas - h; ++y) {
        anillo.Ensanchar(entrada, y + h);
        for (std::size_t t = 0; t < tomas.size(); ++t) desp[t] = anillo.Desplazamiento(y, tomas[t].fila, tomas[t].columna);
        const double* base = anillo.Datos();
        for (long x = 0; x < bloques; x += kBloqueReal) {
            VReal a[kVectoresReal] = {};
            for (std::size_t t = 0; t < tomas.size(); ++t) {
                const double* p = base + desp[t] + x;
                const double w = tomas[t].peso;
                for (int i = 0; i < kVectoresReal; ++i) a[i] += w * Cargar<VReal>(p + i * kCarrilesReal);
            }
            for (int i = 0; i < kVectoresReal; ++i) Guardar(sumas.data() + x + i * kCarrilesReal, a[i]);
        }
        fila(y, static_cast<const double*>(sumas.data()), n);
    }
}

namespace detalle {

#if defined(__SSE2__)
// Four samples widened to double, in two pairs.
inline void Centro4(const uint8_t* p, __m128d& c0, __m128d& c1) {
    int32_t v;
    std::memcpy(&v, p, 4);
    const __m128i z = _mm_setzero_si128();
    const __m128i c = _mm_unpacklo_epi16(_mm_unpacklo_epi8(_mm_cvtsi32_si128(v), z), z);
    c0 = _mm_cvtepi32_pd(c);
    c1 = _mm_cvtepi32_pd(_mm_shuffle_epi32(c, _MM_SHUFFLE(3, 2, 3, 2)));
}
inline void Centro4(const uint16_t* p, __m128d& c0, __m128d& c1) {
    const __m128i c = _mm_unpacklo_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), _mm_setzero_si128());
    c0 = _mm_cvtepi32_pd(c);
    c1 = _mm_cvtepi32_pd(_mm_shuffle_epi32(c, _MM_SHUFFLE(3, 2, 3, 2)));
}
inline void Centro4(const float* p, __m128d& c0, __m128d& c1) {
    const __m128 c = _mm_loadu_ps(p);
    c0 = _mm_cvtps_pd(c);
    c1 = _mm_cvtps_pd(_mm_movehl_ps(c, c));
}
inline void Centro4(const double* p, __m128d& c0, __m128d& c1) {
    c0 = _mm_loadu_pd(p);
    c1 = _mm_loadu_pd(p + 2);
}

// Four sums (16- or 32-bit integers, or doubles) as two pairs of doubles.
template <class S>
inline void Sumas4(const S* p, __m128d& s0, __m128d& s1) {
    if constexpr (std::is_integral_v<S>) {
        __m128i s;
        if constexpr (sizeof(S) == 2) {
            const __m128i s16 = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
            s = _mm_srai_epi32(_mm_unpacklo_epi16(s16, s16), 16);
        } else {
            s = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        }
        s0 = _mm_cvtepi32_pd(s);
        s1 = _mm_cvtepi32_pd(_mm_shuffle_epi32(s, _MM_SHUFFLE(3, 2, 3, 2)));
    } else {
        s0 = _mm_loadu_pd(p);
        s1 = _mm_loadu_pd(p + 2);
    }
}

// Four results stored by the store rule. Byte and integer: truncation to 32
// bits (what does not fit gives -2147483648, as TruncarA32 does), then the
// low 8 or 16 bits. Real: narrowing with round-to-nearest, where what lies
// beyond the float range becomes an infinity, as EstrecharAFloat does.
inline void Guardar4(uint8_t* p, __m128d r0, __m128d r1) {
    __m128i t = _mm_unpacklo_epi64(_mm_cvttpd_epi32(r0), _mm_cvttpd_epi32(r1));
    t = _mm_and_si128(t, _mm_set1_epi32(0xFF));
    t = _mm_packs_epi32(t, t);
    t = _mm_packus_epi16(t, t);
    const int32_t v = _mm_cvtsi128_si32(t);
    std::memcpy(p, &v, 4);
}
inline void Guardar4(uint16_t* p, __m128d r0, __m128d r1) {
    __m128i t = _mm_unpacklo_epi64(_mm_cvttpd_epi32(r0), _mm_cvttpd_epi32(r1));
    // Sign-extending the low 16 bits makes the saturating pack exact.
    t = _mm_srai_epi32(_mm_slli_epi32(t, 16), 16);
    t = _mm_packs_epi32(t, t);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), t);
}
inline void Guardar4(float* p, __m128d r0, __m128d r1) {
    _mm_storeu_ps(p, _mm_movelh_ps(_mm_cvtpd_ps(r0), _mm_cvtpd_ps(r1)));
}
inline void Guardar4(double* p, __m128d r0, __m128d r1) {
    _mm_storeu_pd(p, r0);
    _mm_storeu_pd(p + 2, r1);
}
#endif

}  // namespace detalle

// salida[j] = Almacenar<T>(op(sumas[j], centro[j])) for j < n, both widened
// to double. `op` is written once for a double and for a pair of doubles (a
// generic lambda with plain arithmetic), so both forms perform the same
// operations, and the pair form stores as the store rule does.
template <class T, class S, class Op>
void AlmacenarFila(const S* sumas, const T* centro, long n, const Op& op, T* salida) {
    long j = 0;
#if defined(__SSE2__) && defined(__GNUC__)
    for (; j + 4 <= n; j += 4) {
        __m128d s0, s1, c0, c1;
        detalle::Sumas4(sumas + j, s0, s1);
        detalle::Centro4(centro + j, c0, c1);
        const __m128d r0 = op(s0, c0);
        const __m128d r1 = op(s1, c1);
        detalle::Guardar4(salida + j, r0, r1);
    }
#endif
    for (; j < n; ++j)
        salida[j] = Almacenar<T>(static_cast<double>(op(static_cast<double>(sumas[j]), static_cast<double>(centro[j]))));
}

// The whole filter: border to 0, and every interior pixel from its window.
// For integer samples, taps of weight 0 are left out (they add an exact 0);
// for real and double samples every tap takes part, so that an infinite
// sample under a 0 weight gives NaN just as the plain loop does.
template <class T, class Op>
void Convolucionar(const T* entrada, long filas, long columnas, int k, std::vector<Toma> tomas, const Op& op,
                   T* salida, Progreso& progreso = SinProgreso()) {
    BordeACero(salida, filas, columnas, k);
    if (filas < k || columnas < k) return;
    const int h = k / 2;
    if constexpr (std::is_integral_v<T>) std::erase_if(tomas, [](const Toma& t) { return t.peso == 0.0; });
    // Bands of output rows on every core; each band reads the rows its
    // windows need and writes only its own rows.
    PorFilas(progreso, filas - 2 * h, [&](long desde, long hasta) {
        const long y0 = desde + h;
        const T* sub = entrada + (y0 - h) * columnas;
        const long filasSub = (hasta - desde) + 2 * h;
        auto fila = [&](long y, const auto* sumas, long n) {
            const long yy = y + y0 - h;
            AlmacenarFila(sumas, entrada + yy * columnas + h, n, op, salida + yy * columnas + h);
        };
        if constexpr (std::is_integral_v<T>) {
            const int bits = BitsSumaEntera<T>(tomas);
            if (bits == 16) return SumasEnteras<uint16_t>(sub, filasSub, columnas, k, tomas, fila);
            if (bits == 32) return SumasEnteras<uint32_t>(sub, filasSub, columnas, k, tomas, fila);
        }
        SumasReales(sub, filasSub, columnas, k, tomas, fila);
    });
}

// The checks every filter entry point makes: a window of 3, 5 or 7, and an
// output of the input's type and size holding filas x columnas samples.
inline bool Dimensiones(const Muestras& entrada, long filas, long columnas, int k, const Muestras& salida) {
    if (k != 3 && k != 5 && k != 7) return false;
    if (filas < 1 || columnas < 1) return false;
    const auto n = static_cast<std::size_t>(filas) * static_cast<std::size_t>(columnas);
    return entrada.Cantidad() == n && salida.Cantidad() == n && salida.Codigo() == entrada.Codigo() &&
           entrada.Datos() != nullptr && salida.Datos() != nullptr;
}

}  // namespace orvela::convolucion
