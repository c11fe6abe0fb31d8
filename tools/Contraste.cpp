#include "tools/Contraste.h"

#include <cmath>
#include <limits>
#include <type_traits>
#include <vector>

#include "image/Conversion.h"
#include "image/Estadisticas.h"

namespace orvela {

namespace {

// Level 0..255 of a sample, or -1 when it is at none.
template <class T> inline int Nivel(T v) {
    if constexpr (std::is_integral_v<T>) {
        return v <= 255 ? static_cast<int>(v) : -1;
    } else {
        // Truncation toward zero lands in 0..255 exactly for -1 < v < 256.
        return (v > T(-1) && v < T(256)) ? static_cast<int>(v) : -1;
    }
}

template <class T> inline T Recta(T x, const RectaContraste& recta) {
    return Almacenar<T>(static_cast<double>(x) * recta.ganancia + recta.desplazamiento);
}

}  // namespace

RectaContraste RectaLineal(double media, double desviacion, double nvMinimo, double nvMaximo) {
    RectaContraste r;
    const double lo = media - 2.0 * desviacion;
    const double hi = media + 2.0 * desviacion;
    if (hi - lo == 0.0) {
        r.constante = true;
        return r;
    }
    r.ganancia = (nvMaximo - nvMinimo) / (hi - lo);
    r.desplazamiento = nvMinimo - r.ganancia * lo;
    return r;
}

RectaContraste RectaRango(double ndMinimo, double ndMaximo, double nvMinimo, double nvMaximo) {
    RectaContraste r;
    r.ganancia = (nvMaximo - nvMinimo) / (ndMaximo - ndMinimo);
    r.desplazamiento = nvMinimo - r.ganancia * ndMinimo;
    return r;
}

template <class T> std::array<uint64_t, 256> ContarNiveles(std::span<const T> x) {
    std::array<uint64_t, 256> c{};
    const T* p = x.data();
    const std::size_t n = x.size();
    if constexpr (std::is_same_v<T, uint8_t>) {
        // Four tables, so that runs of equal samples do not wait on one
        // counter; added up at the end.
        std::array<std::array<uint64_t, 256>, 4> h{};
        std::size_t i = 0;
        for (; i + 4 <= n; i += 4) {
            ++h[0][p[i]];
            ++h[1][p[i + 1]];
            ++h[2][p[i + 2]];
            ++h[3][p[i + 3]];
        }
        for (; i < n; ++i) ++h[0][p[i]];
        for (int k = 0; k < 256; ++k) c[k] = h[0][k] + h[1][k] + h[2][k] + h[3][k];
    } else {
        for (std::size_t i = 0; i < n; ++i) {
            const int k = Nivel(p[i]);
            if (k >= 0) ++c[k];
        }
    }
    return c;
}

TablaEcualizacion CalcularTablaEcualizacion(const std::array<uint64_t, 256>& cuentas, std::size_t n) {
    TablaEcualizacion t{};
    const double total = static_cast<double>(n);
    double acumulado = 0.0;
    for (int k = 0; k < 256; ++k) {
        t[k].nivel = k;
        t[k].porcentaje = static_cast<double>(cuentas[k]) / total * 100.0;
        acumulado += t[k].porcentaje;
        t[k].acumulado = acumulado;
    }
    const double u = total / (total * 256.0) * 100.0;
    double ideal = u;
    for (int j = 0; j < 256; ++j) {
        if (j > 0) ideal += u;
        t[j].ideal = ideal;
    }
    for (int k = 0; k < 256; ++k) {
        int mejor = 0;
        double distancia = std::fabs(t[k].acumulado - t[0].ideal);
        for (int j = 1; j < 256; ++j) {
            const double d = std::fabs(t[k].acumulado - t[j].ideal);
            if (d < distancia) {
                distancia = d;
                mejor = j;
            }
        }
        t[k].nuevo = mejor;
    }
    return t;
}

template <class T>
void AplicarRecta(std::span<const T> x, std::span<T> r, const RectaContraste& recta, double nvMinimo) {
    const T* px = x.data();
    T* pr = r.data();
    const std::size_t n = r.size();
    if (recta.constante) {
        const T v = Almacenar<T>(nvMinimo);
        for (std::size_t i = 0; i < n; ++i) pr[i] = v;
        return;
    }
    if constexpr (std::is_integral_v<T>) {
        // Every possible sample is mapped once; the image is looked up.
        constexpr std::size_t kValores = std::size_t{std::numeric_limits<T>::max()} + 1;
        if (n >= kValores) {
            std::vector<T> tabla(kValores);
            for (std::size_t v = 0; v < kValores; ++v) tabla[v] = Recta(static_cast<T>(v), recta);
            for (std::size_t i = 0; i < n; ++i) pr[i] = tabla[px[i]];
            return;
        }
    }
    for (std::size_t i = 0; i < n; ++i) pr[i] = Recta(px[i], recta);
}

template <class T> void Ecualizar(std::span<const T> x, std::span<T> r, const TablaEcualizacion& tabla) {
    const T* px = x.data();
    T* pr = r.data();
    const std::size_t n = r.size();
    if constexpr (std::is_integral_v<T>) {
        // New level of every possible sample; samples above 255 stay.
        constexpr std::size_t kValores = std::size_t{std::numeric_limits<T>::max()} + 1;
        std::vector<T> nuevo(kValores);
        for (std::size_t v = 0; v < kValores; ++v)
            nuevo[v] = v < 256 ? static_cast<T>(tabla[v].nuevo) : static_cast<T>(v);
        for (std::size_t i = 0; i < n; ++i) pr[i] = nuevo[px[i]];
    } else {
        for (std::size_t i = 0; i < n; ++i) {
            const int k = Nivel(px[i]);
            pr[i] = k >= 0 ? static_cast<T>(tabla[k].nuevo) : px[i];
        }
    }
}

#define ORVELA_CONTRASTE(T)                                                                                 \
    template std::array<uint64_t, 256> ContarNiveles<T>(std::span<const T>);                                \
    template void AplicarRecta<T>(std::span<const T>, std::span<T>, const RectaContraste&, double);          \
    template void Ecualizar<T>(std::span<const T>, std::span<T>, const TablaEcualizacion&);
ORVELA_CONTRASTE(uint8_t)
ORVELA_CONTRASTE(uint16_t)
ORVELA_CONTRASTE(float)
ORVELA_CONTRASTE(double)
#undef ORVELA_CONTRASTE

bool ExpandirContraste(const Muestras& x, Muestras& r, const ParametrosContraste& p, Progreso& progreso) {
    if (x.Codigo() != r.Codigo() || x.Cantidad() != r.Cantidad() || x.Cantidad() == 0) return false;
    return ConTipo(x.Codigo(), [&]<class T>(Muestra<T>) {
        const auto in = x.Como<T>();
        const auto out = r.Como<T>();
        auto aplicar = [&](const auto& porTrozo) {
            PorTrozos(progreso, in.size(), [&](std::size_t i, std::size_t j) {
                porTrozo(in.subspan(i, j - i), out.subspan(i, j - i));
            });
        };
        switch (p.metodo) {
            case MetodoContraste::Lineal: {
                const double media = ImageMean(x);
                const double desviacion = ImageStdDev(x, media);
                const RectaContraste recta = RectaLineal(media, desviacion, p.nvMinimo, p.nvMaximo);
                aplicar([&](auto a, auto b) { AplicarRecta<T>(a, b, recta, p.nvMinimo); });
                break;
            }
            case MetodoContraste::Ecualizacion: {
                const TablaEcualizacion tabla = CalcularTablaEcualizacion(ContarNiveles<T>(in), in.size());
                aplicar([&](auto a, auto b) { Ecualizar<T>(a, b, tabla); });
                break;
            }
            case MetodoContraste::RangoInteractivo: {
                const RectaContraste recta = RectaRango(p.ndMinimo, p.ndMaximo, p.nvMinimo, p.nvMaximo);
                aplicar([&](auto a, auto b) { AplicarRecta<T>(a, b, recta, p.nvMinimo); });
                break;
            }
        }
    });
}

}  // namespace orvela
