#include "corrections/CorreccionGeometrica.h"

#include <cmath>
#include <cstdint>
#include <type_traits>
#include <vector>

#include "image/Conversion.h"

namespace orvela {

double Rejilla::TamanoPixel() const {
    const double psY = (yMax - yMin) / static_cast<double>(filas);
    const double psX = (xMax - xMin) / static_cast<double>(columnas);
    return std::sqrt(psX * psY);
}

namespace {

// floor, ceil and trunc without a call into the maths library (the build
// targets the baseline processor, which has no rounding instruction); exact
// for every double, the largest ones and NaN going to the library.
constexpr double kEntero = 4503599627370496.0;  // 2^52: above it every double is whole
inline double Truncar(double v) {
    return (v > -kEntero && v < kEntero) ? static_cast<double>(static_cast<int64_t>(v)) : std::trunc(v);
}
inline double Piso(double v) {
    if (!(v > -kEntero && v < kEntero)) return std::floor(v);
    const double t = static_cast<double>(static_cast<int64_t>(v));
    return t > v ? t - 1 : t;
}
inline double Techo(double v) {
    if (!(v > -kEntero && v < kEntero)) return std::ceil(v);
    const double t = static_cast<double>(static_cast<int64_t>(v));
    return t < v ? t + 1 : t;
}

// Cubic convolution of parameter -1 through p0..p3 (at -1, 0, 1, 2) at t.
inline double Cubica(double p0, double p1, double p2, double p3, double t) {
    return p1 + t * ((p2 - p0) + t * ((2 * p0 - 2 * p1 + p2 - p3) + t * (p3 - p2 + p1 - p0)));
}
// The same with the coefficients of whole samples formed in whole numbers.
inline double CubicaEntera(int32_t p0, int32_t p1, int32_t p2, int32_t p3, double t) {
    const int32_t a = p2 - p0, b = 2 * p0 - 2 * p1 + p2 - p3, c = p3 - p2 + p1 - p0;
    return static_cast<double>(p1) +
           t * (static_cast<double>(a) + t * (static_cast<double>(b) + t * static_cast<double>(c)));
}

template <class T, Remuestreo M>
void Filas(const T* in, long filas, long columnas, const double B[3], const double A[3], const Rejilla& g, T* out,
           long desde, long hasta) {
    const double psY = (g.yMax - g.yMin) / static_cast<double>(g.filas);
    const double psX = (g.xMax - g.xMin) / static_cast<double>(g.columnas);
    const double nf = static_cast<double>(filas);
    const std::size_t ancho = static_cast<std::size_t>(columnas);
    // B0 + B1 x and A0 + A1 x depend on the column only: the same sums as
    // (B0 + B1 x) + B2 y per pixel, taken once per column.
    std::vector<double> bx(static_cast<std::size_t>(g.columnas)), ax(static_cast<std::size_t>(g.columnas));
    for (long c = 0; c < g.columnas; ++c) {
        const double x = g.xMin + static_cast<double>(c) * psX;
        bx[static_cast<std::size_t>(c)] = B[0] + B[1] * x;
        ax[static_cast<std::size_t>(c)] = A[0] + A[1] * x;
    }
    for (long r = desde; r < hasta; ++r) {
        T* destino = out + static_cast<std::size_t>(r) * static_cast<std::size_t>(g.columnas);
        const double y = g.yMax - static_cast<double>(r) * psY;
        const double by = B[2] * y, ay = A[2] * y;
        for (long c = 0; c < g.columnas; ++c) {
            const double f = bx[static_cast<std::size_t>(c)] + by;
            const double k = ax[static_cast<std::size_t>(c)] + ay;
            if constexpr (M == Remuestreo::Vecino) {
                const double ff = Piso(f), fc = Techo(f);
                const double kf = Piso(k), kc = Techo(k);
                const double fe = (f - ff <= fc - f) ? ff : fc;
                const double ke = (k - kf <= kc - k) ? kf : kc;
                const double linea = Truncar(nf - fe);
                if (!(linea >= 0 && ke >= 0 && linea < nf && ke < static_cast<double>(columnas))) continue;
                destino[c] = in[static_cast<std::size_t>(linea) * ancho + static_cast<std::size_t>(ke)];
            } else if constexpr (M == Remuestreo::Bilineal) {
                const double f0 = Piso(f), k0 = Piso(k);
                const double dr = std::fabs(f0 - f), dc = std::fabs(k0 - k);
                const double linea = Truncar(nf - f0);
                if (!(linea >= 0 && k0 >= 0 && linea + 1 < nf && k0 + 1 < static_cast<double>(columnas))) continue;
                const T* a = in + static_cast<std::size_t>(linea) * ancho + static_cast<std::size_t>(k0);
                const T* b = a + ancho;
                const double v = (static_cast<double>(a[1]) * dc + static_cast<double>(a[0]) * (1 - dc)) * (1 - dr) +
                                 (static_cast<double>(b[1]) * dc + static_cast<double>(b[0]) * (1 - dc)) * dr;
                destino[c] = Almacenar<T>(v);
            } else {
                const double f0 = Piso(f) - 1, k0 = Piso(k) - 1;
                const double t = k - (k0 + 1), u = f - (f0 + 1);
                const double linea = Truncar(nf - f0);
                if (!(linea >= 0 && k0 >= 0 && linea + 3 < nf && k0 + 3 < static_cast<double>(columnas))) continue;
                const T* q = in + static_cast<std::size_t>(linea) * ancho + static_cast<std::size_t>(k0);
                double w[4];
                for (int i = 0; i < 4; ++i, q += ancho) {
                    if constexpr (std::is_integral_v<T>)
                        w[i] = CubicaEntera(q[0], q[1], q[2], q[3], t);
                    else
                        w[i] = Cubica(static_cast<double>(q[0]), static_cast<double>(q[1]), static_cast<double>(q[2]),
                                      static_cast<double>(q[3]), t);
                }
                destino[c] = Almacenar<T>(Cubica(w[0], w[1], w[2], w[3], u));
            }
        }
    }
}

}  // namespace

bool Remuestrear(Remuestreo metodo, const Muestras& entrada, long filas, long columnas, const double B[3],
                 const double A[3], const Rejilla& rejilla, Muestras& salida, Progreso& progreso) {
    if (!CodigoValido(entrada.Codigo()) || salida.Codigo() != entrada.Codigo()) return false;
    bool hecho = false;
    ConTipo(entrada.Codigo(), [&]<class T>(Muestra<T>) {
        const T* in = entrada.Como<T>().data();
        T* out = salida.Como<T>().data();
        hecho = PorFilas(progreso, rejilla.filas, [&](long desde, long hasta) {
            switch (metodo) {
                case Remuestreo::Vecino:
                    Filas<T, Remuestreo::Vecino>(in, filas, columnas, B, A, rejilla, out, desde, hasta);
                    break;
                case Remuestreo::Bilineal:
                    Filas<T, Remuestreo::Bilineal>(in, filas, columnas, B, A, rejilla, out, desde, hasta);
                    break;
                case Remuestreo::Cubica:
                    Filas<T, Remuestreo::Cubica>(in, filas, columnas, B, A, rejilla, out, desde, hasta);
                    break;
            }
        });
    });
    return hecho;
}

}  // namespace orvela
