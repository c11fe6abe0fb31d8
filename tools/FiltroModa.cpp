// Mode filter.
//
// For every position of the K x K window, the count of window samples equal
// to the sample there; the first position in row order whose count is
// strictly greater than every earlier one is kept. So the winner is the
// value of highest count whose first appearance comes first in row order.
// When no value repeats (highest count 1) the centre sample is left as it
// is; otherwise the output is the sample at the kept position.
//
// Real and double samples are compared by bin: with mn and mx the image's
// minimum and maximum (MinimoMaximo) and width = (mx - mn) * 0.00390625,
// a sample x falls in bin trunc((x - mn) / width), with quotients of 255 or
// more (the maximum itself) in the last bin, 255. Two samples in the same
// bin count as equal, and the output is the sample at the kept position,
// which is the first sample of the winning bin in row order. A constant
// image, or one whose range is not a finite positive number, is a single
// bin; NaN samples make a bin of their own.
//
// The counts of the window's values are slid along each row (2K updates per
// pixel), together with the highest count and how many values have it; the
// window is walked whole only when the last value with the highest count
// loses a sample. The output is then the first sample in row order whose
// count is the highest, a walk that usually stops after a few samples.
#include <cstdint>
#include <memory>
#include <type_traits>
#include <vector>

#include "image/Estadisticas.h"
#include "tools/FiltrosRango.h"
#include "tools/VentanaRango.h"

namespace orvela {
namespace {

// Counts of the values 0 .. N - 1 in the window, the highest count and how
// many values have it. Updates keep the pair exact except when the last
// value with the highest count loses a sample: then the pair is marked
// (ConMaximo() == 0) and the caller finds it again from the window.
template <unsigned N>
class Cuentas {
public:
    void Sumar(unsigned v) {
        const int c = ++cuenta_[v];
        if (c > maximo_) {
            maximo_ = c;
            conMaximo_ = 1;
        } else if (c == maximo_) {
            ++conMaximo_;
        }
    }
    void Restar(unsigned v) {
        const int c = cuenta_[v]--;
        if (c == maximo_) --conMaximo_;
    }
    int Cuenta(unsigned v) const { return cuenta_[v]; }
    int Maximo() const { return maximo_; }
    int ConMaximo() const { return conMaximo_; }
    void Fijar(int maximo, int conMaximo) {
        maximo_ = maximo;
        conMaximo_ = conMaximo;
    }

private:
    uint8_t cuenta_[N] = {};
    int maximo_ = 0, conMaximo_ = 0;
};

// Input rows f - h .. f + h of the labels (what is compared) and of the
// samples (what is written). For byte and integer images they are the same.
template <class T, class L, int K>
struct Ventana {
    const L* etiqueta[K];
    const T* muestra[K];
};

template <int K, unsigned N, class T, class L>
void ModaFila(Cuentas<N>& cuentas, const Ventana<T, L, K>& v, long columnas, T* salida) {
    constexpr int h = (K - 1) / 2;
    cuentas.Fijar(0, 0);
    for (int j = 0; j < K; ++j)
        for (int i = 0; i < K; ++i) cuentas.Sumar(v.etiqueta[j][i]);
    for (long c = h; c < columnas - h; ++c) {
        const long c0 = c - h;
        if (c > h) {
            for (int j = 0; j < K; ++j) {
                cuentas.Restar(v.etiqueta[j][c0 - 1]);
                cuentas.Sumar(v.etiqueta[j][c + h]);
            }
        }
        if (cuentas.ConMaximo() == 0) {
            // Highest count and how many window positions have it; each
            // value with that count fills that many positions.
            int m = 0, posiciones = 0;
            for (int j = 0; j < K; ++j) {
                for (int i = 0; i < K; ++i) {
                    const int n = cuentas.Cuenta(v.etiqueta[j][c0 + i]);
                    if (n > m) m = n, posiciones = 0;
                    posiciones += n == m;
                }
            }
            cuentas.Fijar(m, posiciones / m);
        }
        const int m = cuentas.Maximo();
        T r = v.muestra[h][c];
        if (m > 1) {
            // First position in row order whose value has the highest count.
            for (int j = 0; j < K; ++j) {
                const L* e = v.etiqueta[j] + c0;
                int i = 0;
                while (i < K && cuentas.Cuenta(e[i]) != m) ++i;
                if (i < K) {
                    r = v.muestra[j][c0 + i];
                    break;
                }
            }
        }
        salida[c] = r;
    }
    for (int j = 0; j < K; ++j)
        for (int i = 0; i < K; ++i) cuentas.Restar(v.etiqueta[j][columnas - K + i]);
}

template <int K, class T>
void ModaEntera(const T* entrada, long filas, long columnas, T* salida) {
    constexpr int h = (K - 1) / 2;
    constexpr unsigned N = 1u << (8 * sizeof(T));
    auto cuentas = std::make_unique<Cuentas<N>>();
    Ventana<T, T, K> v;
    for (long f = h; f < filas - h; ++f) {
        for (int j = 0; j < K; ++j) v.etiqueta[j] = v.muestra[j] = entrada + (f - h + j) * columnas;
        ModaFila<K, N, T, T>(*cuentas, v, columnas, salida + f * columnas);
    }
}

// Bin of a real sample; 256 for NaN.
inline uint16_t Bin(double x, double mn, double ancho) {
    if (x != x) return 256;
    const double q = (x - mn) / ancho;
    if (q >= 255.0) return 255;
    if (q > 0.0) return static_cast<uint16_t>(q);
    return 0;
}

template <int K, class T>
void ModaReal(const T* entrada, long filas, long columnas, double mn, double mx, T* salida) {
    constexpr int h = (K - 1) / 2;
    const double ancho = (mx - mn) * 0.00390625;
    const auto n = static_cast<std::size_t>(columnas);
    // Bins of K input rows in a ring: row f in slot f % K.
    std::vector<uint16_t> bins(K * n);
    auto clasificar = [&](long f) {
        const T* e = entrada + f * columnas;
        uint16_t* b = bins.data() + (f % K) * n;
        for (std::size_t i = 0; i < n; ++i) b[i] = Bin(static_cast<double>(e[i]), mn, ancho);
    };
    for (long f = 0; f < K - 1; ++f) clasificar(f);
    auto cuentas = std::make_unique<Cuentas<257>>();
    Ventana<T, uint16_t, K> v;
    for (long f = h; f < filas - h; ++f) {
        clasificar(f + h);
        for (int j = 0; j < K; ++j) {
            const long fila = f - h + j;
            v.etiqueta[j] = bins.data() + (fila % K) * n;
            v.muestra[j] = entrada + fila * columnas;
        }
        ModaFila<K, 257, T, uint16_t>(*cuentas, v, columnas, salida + f * columnas);
    }
}

template <int K, class T>
void Moda(const T* entrada, long filas, long columnas, double mn, double mx, T* salida) {
    if constexpr (std::is_integral_v<T>) ModaEntera<K>(entrada, filas, columnas, salida);
    else ModaReal<K>(entrada, filas, columnas, mn, mx, salida);
}

}  // namespace

bool FiltroModa(const Muestras& entrada, long filas, long columnas, int k, Muestras& salida, Progreso& progreso) {
    if (!rango::ArgumentosValidos(entrada, filas, columnas, k, salida)) return false;
    return ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        const T* e = entrada.Como<T>().data();
        T* s = salida.Como<T>().data();
        rango::BordeACero(s, filas, columnas, (k - 1) / 2);
        if (filas < k || columnas < k) return;
        double mn = 0.0, mx = 0.0;
        if constexpr (std::is_floating_point_v<T>) MinimoMaximo(entrada, mn, mx);
        rango::PorBandas(progreso, e, filas, columnas, (k - 1) / 2, s, [&](const T* x, long f, long c, T* y) {
            switch (k) {
                case 3: Moda<3>(x, f, c, mn, mx, y); break;
                case 5: Moda<5>(x, f, c, mn, mx, y); break;
                default: Moda<7>(x, f, c, mn, mx, y); break;
            }
        });
    });
}

}  // namespace orvela
