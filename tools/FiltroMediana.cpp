// Median filter: the middle sample of the K x K window once its K² samples
// are ordered. Real and double samples are ordered by IEEE totalOrder (see
// rango::Clave), which puts -0 before +0 and NaN at the ends, so the median
// is always one well-defined sample of the window.
//
// 3 x 3: a selection network on the keys, run across a row at a time (the
// compiler turns it into vector minima and maxima). Each column of three is
// sorted; the median of the nine is the median of (largest of the column
// minima, median of the column medians, smallest of the column maxima).
//
// 5 x 5 and 7 x 7: a histogram of the window slid along each row (2K
// updates per pixel) with counts per value, per 16 values and, for 16-bit
// values, per 256 values; the search for the median starts where the last
// one was found (see Histograma). Byte and integer samples go into the
// histogram as they are; real and double images are cut into tiles of at
// most 65536 samples whose samples are replaced by the rank of their value
// among the tile's distinct values, so that they too fit a 16-bit
// histogram.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>
#include <vector>

#include "tools/FiltrosRango.h"
#include "tools/VentanaRango.h"

namespace orvela {
namespace {

using rango::Clave;

// ---------------------------------------------------------------- 3 x 3

template <class U> inline U Menor(U a, U b) { return b < a ? b : a; }
template <class U> inline U Mayor(U a, U b) { return b > a ? b : a; }
template <class U> inline U Medio(U a, U b, U c) { return Mayor(Menor(a, b), Menor(Mayor(a, b), c)); }

// Each column of three rows sorted: bajo <= medio <= alto.
template <class U>
void OrdenarColumnas(const U* __restrict a, const U* __restrict b, const U* __restrict c, long n,
                     U* __restrict bajo, U* __restrict medio, U* __restrict alto) {
    for (long i = 0; i < n; ++i) {
        const U m = Menor(a[i], b[i]), M = Mayor(a[i], b[i]);
        bajo[i] = Menor(m, c[i]);
        const U t = Mayor(m, c[i]);
        medio[i] = Menor(M, t);
        alto[i] = Mayor(M, t);
    }
}

template <class U>
void MedianaDeColumnas(const U* __restrict bajo, const U* __restrict medio, const U* __restrict alto, long n,
                       U* __restrict salida) {
    for (long i = 0; i < n; ++i) {
        const U x = Mayor(Mayor(bajo[i], bajo[i + 1]), bajo[i + 2]);
        const U y = Medio(medio[i], medio[i + 1], medio[i + 2]);
        const U z = Menor(Menor(alto[i], alto[i + 1]), alto[i + 2]);
        salida[i] = Medio(x, y, z);
    }
}

// Medians of the 3 x 3 windows over rows a, b, c, written from the window
// at columns 0..2 on; the row is taken in pieces that stay in the L1 cache.
template <class U>
void MedianaFila3(const U* a, const U* b, const U* c, long columnas, U* salida) {
    constexpr long kTrozo = 1024;
    U bajo[kTrozo + 2], medio[kTrozo + 2], alto[kTrozo + 2];
    for (long i = 0; i + 2 < columnas; i += kTrozo) {
        const long m = std::min(kTrozo, columnas - 2 - i);
        OrdenarColumnas(a + i, b + i, c + i, m + 2, bajo, medio, alto);
        MedianaDeColumnas(bajo, medio, alto, m, salida + i);
    }
}

template <class T>
void Mediana3(const T* entrada, long filas, long columnas, T* salida) {
    using U = typename Clave<T>::tipo;
    const auto n = static_cast<std::size_t>(columnas);
    if constexpr (std::is_same_v<U, T>) {
        for (long f = 1; f + 1 < filas; ++f) {
            const T* e = entrada + (f - 1) * columnas;
            MedianaFila3<U>(e, e + columnas, e + 2 * columnas, columnas, salida + f * columnas + 1);
            rango::ExtremosACero(salida + f * columnas, columnas, 1);
        }
    } else {
        // Keys of three input rows in a ring (row f in slot f % 3).
        std::vector<U> claves(3 * n), res(n);
        auto convertir = [&](long f) {
            const T* e = entrada + f * columnas;
            U* k = claves.data() + (f % 3) * n;
            for (std::size_t i = 0; i < n; ++i) k[i] = Clave<T>::De(e[i]);
        };
        convertir(0);
        convertir(1);
        for (long f = 1; f + 1 < filas; ++f) {
            convertir(f + 1);
            MedianaFila3<U>(claves.data() + ((f - 1) % 3) * n, claves.data() + (f % 3) * n,
                            claves.data() + ((f + 1) % 3) * n, columnas, res.data());
            T* s = salida + f * columnas + 1;
            for (long i = 0; i + 2 < columnas; ++i) s[i] = Clave<T>::Valor(res[i]);
            rango::ExtremosACero(salida + f * columnas, columnas, 1);
        }
    }
}

// ------------------------------------------------------- sliding histogram

// Counts of the window's values, 0 .. 2^B - 1 (B = 8 or 16), with a value
// `m` near where the median was last found and the number of samples below
// it; from one pixel to the next the search starts there. 16-bit values are
// also counted per 16 and per 256 values.
//
// kPorValor: m is the median itself and is walked value by value; whole
// groups are stepped over where their count allows it (for bytes, runs of
// 8 empty values, read as one 64-bit word). Best when the values present
// are close together (bytes, ranks).
// Otherwise (16-bit only) m is the start of the median's group of 256
// values, walked a group at a time (8 empty groups at a time), and the
// median is then found inside the group; best for values spread far apart.
template <int B, bool kPorValor>
class Histograma {
    static_assert(B == 16 || kPorValor);
    static constexpr bool kGrupos = B == 16;

public:
    void Sumar(unsigned v) {
        ++fino_[v];
        if constexpr (kGrupos) {
            ++medio_[v >> 4];
            ++grueso_[v >> 8];
        }
        debajo_ += static_cast<int>(v < valor_);
    }
    void Restar(unsigned v) {
        --fino_[v];
        if constexpr (kGrupos) {
            --medio_[v >> 4];
            --grueso_[v >> 8];
        }
        debajo_ -= static_cast<int>(v < valor_);
    }
    // The value of rank t (0-based) among the samples counted: the value m
    // with at most t samples below it and more than t up to it.
    unsigned Rango(int t) {
        if constexpr (kPorValor) return PorValor(t);
        else return PorGrupo(t);
    }

private:
    // The 8 counts from c[i] on (i a multiple of 8) are all 0.
    static bool OchoVacios(const uint8_t* c, unsigned i) {
        uint64_t w;
        std::memcpy(&w, c + i, sizeof w);
        return w == 0;
    }

    unsigned PorValor(int t) {
        unsigned m = valor_;
        int d = debajo_;
        while (d > t) {
            if constexpr (kGrupos) {
                if ((m & 15) == 0) {
                    if ((m & 255) == 0 && d - grueso_[(m >> 8) - 1] > t) {
                        d -= grueso_[(m >> 8) - 1];
                        m -= 256;
                        continue;
                    }
                    if (d - medio_[(m >> 4) - 1] > t) {
                        d -= medio_[(m >> 4) - 1];
                        m -= 16;
                        continue;
                    }
                }
            } else if ((m & 7) == 0 && OchoVacios(fino_, m - 8)) {
                m -= 8;
                continue;
            }
            d -= fino_[--m];
        }
        while (d + fino_[m] <= t) {
            d += fino_[m++];
            if constexpr (kGrupos) {
                while ((m & 15) == 0) {
                    if ((m & 255) == 0 && d + grueso_[m >> 8] <= t) {
                        d += grueso_[m >> 8];
                        m += 256;
                    } else if (d + medio_[m >> 4] <= t) {
                        d += medio_[m >> 4];
                        m += 16;
                    } else {
                        break;
                    }
                }
            } else {
                // The median lies above m, so an empty run never reaches the end.
                while ((m & 7) == 0 && OchoVacios(fino_, m)) m += 8;
            }
        }
        valor_ = m;
        debajo_ = d;
        return m;
    }

    unsigned PorGrupo(int t) {
        unsigned grupo = valor_ >> 8;
        int d = debajo_;
        while (d > t) {
            if ((grupo & 7) == 0 && OchoVacios(grueso_, grupo - 8)) grupo -= 8;
            else d -= grueso_[--grupo];
        }
        while (d + grueso_[grupo] <= t) {
            d += grueso_[grupo++];
            while ((grupo & 7) == 0 && OchoVacios(grueso_, grupo)) grupo += 8;
        }
        valor_ = grupo << 8;
        debajo_ = d;
        int r = t - d;
        unsigned i = grupo * 16;
        while (r >= medio_[i]) r -= medio_[i++];
        i *= 16;
        while (r >= fino_[i]) r -= fino_[i++];
        return i;
    }

    uint8_t fino_[1u << B] = {};
    uint8_t medio_[kGrupos ? 4096 : 1] = {};
    uint8_t grueso_[kGrupos ? 256 : 1] = {};
    unsigned valor_ = 0;
    int debajo_ = 0;
};

// Slides a K x K window over a block of `filas` x `columnas` values (rows
// `paso` apart) and calls escribir(f, c, median) for every interior pixel.
// The histogram is left empty.
template <int K, class H, class V, class Escribir>
void MedianaDeslizante(H& hist, const V* valores, long filas, long columnas, long paso,
                       Escribir&& escribir) {
    constexpr int h = (K - 1) / 2;
    constexpr int t = (K * K - 1) / 2;
    for (long f = h; f < filas - h; ++f) {
        const V* arriba = valores + (f - h) * paso;
        for (int j = 0; j < K; ++j)
            for (int i = 0; i < K; ++i) hist.Sumar(arriba[j * paso + i]);
        escribir(f, h, hist.Rango(t));
        for (long c = h + 1; c < columnas - h; ++c) {
            const V* sale = arriba + (c - h - 1);
            const V* entra = arriba + (c + h);
            for (int j = 0; j < K; ++j) {
                hist.Restar(sale[j * paso]);
                hist.Sumar(entra[j * paso]);
            }
            escribir(f, c, hist.Rango(t));
        }
        const V* ultima = arriba + (columnas - K);
        for (int j = 0; j < K; ++j)
            for (int i = 0; i < K; ++i) hist.Restar(ultima[j * paso + i]);
    }
}

template <class T, int K>
void MedianaEntera(const T* entrada, long filas, long columnas, T* salida) {
    using H = std::conditional_t<sizeof(T) == 1, Histograma<8, true>, Histograma<16, false>>;
    auto hist = std::make_unique<H>();
    MedianaDeslizante<K>(*hist, entrada, filas, columnas, columnas, [&](long f, long c, unsigned v) {
        salida[f * columnas + c] = static_cast<T>(v);
    });
}

// ---------------------------------------------------- real and double tiles

// Stable LSD radix sort of n keys with their indices, 11 bits per pass;
// passes where every key has the same digit are skipped. The sorted keys
// and indices end in (clave, indice).
template <class U>
void OrdenarClaves(std::vector<U>& clave, std::vector<uint16_t>& indice, std::vector<U>& clave2,
                   std::vector<uint16_t>& indice2, std::size_t n) {
    constexpr int kDigito = 11, kCubos = 1 << kDigito;
    constexpr int kPasadas = (8 * static_cast<int>(sizeof(U)) + kDigito - 1) / kDigito;
    std::vector<uint32_t> cuenta(kPasadas * kCubos, 0);
    for (std::size_t i = 0; i < n; ++i) {
        const U k = clave[i];
        for (int p = 0; p < kPasadas; ++p) ++cuenta[p * kCubos + ((k >> (p * kDigito)) & (kCubos - 1))];
    }
    for (int p = 0; p < kPasadas; ++p) {
        uint32_t* c = cuenta.data() + p * kCubos;
        if (c[(clave[0] >> (p * kDigito)) & (kCubos - 1)] == n) continue;
        uint32_t suma = 0;
        for (int d = 0; d < kCubos; ++d) {
            const uint32_t x = c[d];
            c[d] = suma;
            suma += x;
        }
        for (std::size_t i = 0; i < n; ++i) {
            const uint32_t destino = c[(clave[i] >> (p * kDigito)) & (kCubos - 1)]++;
            clave2[destino] = clave[i];
            indice2[destino] = indice[i];
        }
        clave.swap(clave2);
        indice.swap(indice2);
    }
}

template <class T, int K>
void MedianaReal(const T* entrada, long filas, long columnas, T* salida) {
    using U = typename Clave<T>::tipo;
    constexpr int h = (K - 1) / 2;
    constexpr long kMaximo = 65536;
    const long ancho = std::min(columnas, 256L);
    const long alto = std::min(filas, kMaximo / ancho);
    std::vector<U> clave(kMaximo), clave2(kMaximo);
    std::vector<uint16_t> indice(kMaximo), indice2(kMaximo), rango(kMaximo);
    std::vector<T> valor(kMaximo);
    auto hist = std::make_unique<Histograma<16, true>>();
    for (long f0 = 0; f0 + K <= filas; f0 += alto - 2 * h) {
        const long nf = std::min(filas, f0 + alto) - f0;
        for (long c0 = 0; c0 + K <= columnas; c0 += ancho - 2 * h) {
            const long nc = std::min(columnas, c0 + ancho) - c0;
            const auto n = static_cast<std::size_t>(nf * nc);
            for (long f = 0; f < nf; ++f) {
                const T* e = entrada + (f0 + f) * columnas + c0;
                for (long c = 0; c < nc; ++c) {
                    const auto i = static_cast<std::size_t>(f * nc + c);
                    clave[i] = Clave<T>::De(e[c]);
                    indice[i] = static_cast<uint16_t>(i);
                }
            }
            OrdenarClaves(clave, indice, clave2, indice2, n);
            // Equal samples share a rank: rank r is the r-th distinct value.
            unsigned r = 0;
            valor[0] = Clave<T>::Valor(clave[0]);
            rango[indice[0]] = 0;
            for (std::size_t p = 1; p < n; ++p) {
                if (clave[p] != clave[p - 1]) valor[++r] = Clave<T>::Valor(clave[p]);
                rango[indice[p]] = static_cast<uint16_t>(r);
            }
            MedianaDeslizante<K>(*hist, rango.data(), nf, nc, nc, [&](long f, long c, unsigned r) {
                salida[(f0 + f) * columnas + c0 + c] = valor[r];
            });
        }
    }
}

template <int K, class T>
void Mediana(const T* entrada, long filas, long columnas, T* salida) {
    if constexpr (K == 3) Mediana3(entrada, filas, columnas, salida);
    else if constexpr (std::is_integral_v<T>) MedianaEntera<T, K>(entrada, filas, columnas, salida);
    else MedianaReal<T, K>(entrada, filas, columnas, salida);
}

}  // namespace

bool FiltroMediana(const Muestras& entrada, long filas, long columnas, int k, Muestras& salida, Progreso& progreso) {
    if (!rango::ArgumentosValidos(entrada, filas, columnas, k, salida)) return false;
    return ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        const T* e = entrada.Como<T>().data();
        T* s = salida.Como<T>().data();
        // The 3 x 3 rows zero their own ends.
        rango::BordeACero(s, filas, columnas, (k - 1) / 2, k != 3);
        if (filas < k || columnas < k) return;
        rango::PorBandas(progreso, e, filas, columnas, (k - 1) / 2, s, [k](const T* x, long f, long c, T* y) {
            switch (k) {
                case 3: Mediana<3>(x, f, c, y); break;
                case 5: Mediana<5>(x, f, c, y); break;
                default: Mediana<7>(x, f, c, y); break;
            }
        });
    });
}

}  // namespace orvela
