#include "image/Visualizacion.h"

#include <algorithm>
#include <cmath>

#include "image/Conversion.h"
#include "image/Estadisticas.h"

namespace orvela {

uint8_t IndicePaleta(double s, double mn, double mx) {
    const double paso = (mx - mn) * 0.00390625;
    if (!(paso > 0.0)) return 0;
    const double q = (s - mn) / paso;
    if (!(q >= 0.0)) return 0;
    if (q >= 255.0) return 255;
    return static_cast<uint8_t>(TruncarA32(q));
}

std::vector<uint8_t> IndicesPaleta(const Muestras& m) {
    std::vector<uint8_t> r(m.Cantidad());
    if (m.Codigo() == kByte) {
        const auto d = m.Como<uint8_t>();
        std::copy(d.begin(), d.end(), r.begin());
        return r;
    }
    double mn = 0, mx = 0;
    if (!MinimoMaximo(m, mn, mx)) return r;
    ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
        const auto d = m.Como<T>();
        for (std::size_t i = 0; i < d.size(); ++i) r[i] = IndicePaleta(static_cast<double>(d[i]), mn, mx);
    });
    return r;
}

const char* NombreRealce(Realce r) {
    switch (r) {
        case Realce::Ninguno: return "Ninguno";
        case Realce::MinimoMaximo: return "Mínimo-máximo";
        case Realce::Lineal2: return "Lineal 2 %";
        case Realce::Desviaciones: return "Desviaciones típicas (±2)";
    }
    return "";
}

LimitesRealce CalcularRealce(const Muestras& m, Realce r) {
    LimitesRealce l;
    if (m.Cantidad() == 0 || !CodigoValido(m.Codigo())) return l;
    switch (r) {
        case Realce::Ninguno:
            if (m.Codigo() == kByte) {
                l.bajo = 0;
                l.alto = 255;
                l.valido = true;
                return l;
            }
            [[fallthrough]];
        case Realce::MinimoMaximo:
            l.valido = MinimoMaximo(m, l.bajo, l.alto);
            return l;
        case Realce::Desviaciones: {
            const double media = ImageMean(m);
            const double desviacion = ImageStdDev(m, media);
            l.bajo = media - 2.0 * desviacion;
            l.alto = media + 2.0 * desviacion;
            l.valido = true;
            return l;
        }
        case Realce::Lineal2:
            ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
                const auto d = m.Como<T>();
                std::vector<T> orden;
                orden.reserve(d.size());
                for (T x : d)
                    if (!std::isnan(static_cast<double>(x))) orden.push_back(x);
                if (orden.empty()) return;
                const std::size_t n = orden.size();
                const std::size_t k = n * 2 / 100;
                std::nth_element(orden.begin(), orden.begin() + static_cast<std::ptrdiff_t>(k), orden.end());
                l.bajo = static_cast<double>(orden[k]);
                std::nth_element(orden.begin(), orden.begin() + static_cast<std::ptrdiff_t>(n - 1 - k), orden.end());
                l.alto = static_cast<double>(orden[n - 1 - k]);
                l.valido = true;
            });
            return l;
    }
    return l;
}

std::vector<uint8_t> IndicesRealce(const Muestras& m, Realce r) {
    if (r == Realce::Ninguno) return IndicesPaleta(m);
    std::vector<uint8_t> indices(m.Cantidad());
    const LimitesRealce l = CalcularRealce(m, r);
    if (!l.valido) return indices;
    ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
        const auto d = m.Como<T>();
        for (std::size_t i = 0; i < d.size(); ++i) indices[i] = IndicePaleta(static_cast<double>(d[i]), l.bajo, l.alto);
    });
    return indices;
}

std::vector<uint32_t> ColoresComposicion(const ComposicionColor& c) {
    std::vector<uint32_t> r;
    if (!c.Valida()) return r;
    r.resize(c.rojo.size());
    for (std::size_t i = 0; i < r.size(); ++i)
        r[i] = 0xFF000000u | (uint32_t{c.rojo[i]} << 16) | (uint32_t{c.verde[i]} << 8) | c.azul[i];
    return r;
}

std::vector<uint32_t> ColoresPaleta(const std::vector<uint8_t>& indices, const Paleta& p) {
    std::array<uint32_t, 256> tabla{};
    for (int i = 0; i < 256; ++i)
        tabla[i] = 0xFF000000u | (uint32_t{p.rojo[i]} << 16) | (uint32_t{p.verde[i]} << 8) | p.azul[i];
    std::vector<uint32_t> r(indices.size());
    for (std::size_t i = 0; i < indices.size(); ++i) r[i] = tabla[indices[i]];
    return r;
}

}  // namespace orvela
