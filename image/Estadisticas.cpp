#include "image/Estadisticas.h"

#include <cmath>
#include <type_traits>

namespace orvela {

double ImageMean(const Muestras& m, const uint8_t* mascara) {
    double suma = 0.0;
    ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
        const auto d = m.Como<T>();
        constexpr uint64_t kExacto = (uint64_t{1} << 53) / 65535u;
        if (std::is_integral_v<T> && d.size() <= kExacto) {
            // Byte and integer sums stay whole numbers below 2^53, exact in
            // double at every step: an integer total gives the same sum.
            uint64_t total = 0;
            for (std::size_t i = 0; i < d.size(); ++i)
                if (!mascara || mascara[i]) total += static_cast<uint64_t>(d[i]);
            suma = static_cast<double>(total);
        } else if (mascara) {
            for (std::size_t i = 0; i < d.size(); ++i)
                if (mascara[i]) suma += static_cast<double>(d[i]);
        } else {
            for (const T v : d) suma += static_cast<double>(v);
        }
    });
    return suma / static_cast<double>(m.Cantidad());
}

double ImageStdDev(const Muestras& m, double media, const uint8_t* mascara) {
    double suma = 0.0;
    ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
        const auto d = m.Como<T>();
        for (std::size_t i = 0; i < d.size(); ++i) {
            if (mascara && !mascara[i]) continue;
            const double e = static_cast<double>(d[i]) - media;
            suma += std::pow(e, 2.0);
        }
    });
    return std::sqrt(suma / static_cast<double>(m.Cantidad()));
}

bool MinimoMaximo(const Muestras& m, double& mn, double& mx) {
    if (m.Cantidad() == 0) return false;
    return ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
        const auto d = m.Como<T>();
        T a = d[0], b = d[0];
        for (const T v : d) {
            if (v < a) a = v;
            if (v > b) b = v;
        }
        mn = static_cast<double>(a);
        mx = static_cast<double>(b);
    });
}

}  // namespace orvela
