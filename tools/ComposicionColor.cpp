#include "tools/ComposicionColor.h"

#include <algorithm>
#include <cmath>

#include "image/Estadisticas.h"

namespace orvela {

namespace {

// Samples at 2 % and 98 % of the band in ascending order (NaN left out).
template <class T> LimitesBanda Posiciones(std::span<const T> d) {
    auto indices = [](std::size_t n) {
        const double pb = 0.02 * static_cast<double>(n - 1), pa = 0.98 * static_cast<double>(n - 1);
        return std::pair<uint64_t, uint64_t>(static_cast<uint64_t>(std::floor(pb)), static_cast<uint64_t>(std::ceil(pa)));
    };
    LimitesBanda l;
    if constexpr (!kEsReal<T>) {
        // Whole samples: counted by value, the positions found in the counts.
        std::vector<uint64_t> cuenta(std::size_t{1} << (8 * sizeof(T)), 0);
        for (const T v : d) ++cuenta[v];
        const auto [kb, ka] = indices(d.size());
        uint64_t acumulado = 0;
        bool bajo = false;
        l.alto = static_cast<double>(cuenta.size() - 1);
        for (std::size_t v = 0; v < cuenta.size(); ++v) {
            acumulado += cuenta[v];
            if (!bajo && acumulado > kb) {
                l.bajo = static_cast<double>(v);
                bajo = true;
            }
            if (acumulado > ka) {
                l.alto = static_cast<double>(v);
                break;
            }
        }
    } else {
        std::vector<T> copia;
        copia.reserve(d.size());
        for (const T v : d)
            if (!std::isnan(v)) copia.push_back(v);
        if (copia.empty()) return l;
        const auto [kb, ka] = indices(copia.size());
        std::nth_element(copia.begin(), copia.begin() + static_cast<std::ptrdiff_t>(ka), copia.end());
        l.alto = static_cast<double>(copia[ka]);
        std::nth_element(copia.begin(), copia.begin() + static_cast<std::ptrdiff_t>(kb), copia.begin() + static_cast<std::ptrdiff_t>(ka));
        l.bajo = static_cast<double>(copia[kb]);
    }
    return l;
}

}  // namespace

std::optional<LimitesBanda> LimitesEscalado(const Muestras& banda, EscaladoColor regla) {
    if (!CodigoValido(banda.Codigo()) || banda.Cantidad() == 0) return std::nullopt;
    LimitesBanda l;
    if (regla == EscaladoColor::MinimoMaximo) {
        MinimoMaximo(banda, l.bajo, l.alto);
        return l;
    }
    ConTipo(banda.Codigo(), [&]<class T>(Muestra<T>) { l = Posiciones<T>(banda.Como<T>()); });
    return l;
}

uint8_t EscalarValor(double v, const LimitesBanda& l) {
    if (!(v > l.bajo)) return 0;
    if (v >= l.alto) return 255;
    const double t = (v - l.bajo) / (l.alto - l.bajo) * 255.0;
    return t >= 255 ? 255 : static_cast<uint8_t>(t);
}

std::optional<PlanosColor> ComponerColor(const Muestras& azul, const Muestras& verde, const Muestras& rojo,
                                         long filas, EscaladoColor regla, Progreso& progreso) {
    const std::size_t n = azul.Cantidad();
    if (verde.Codigo() != azul.Codigo() || rojo.Codigo() != azul.Codigo() || verde.Cantidad() != n ||
        rojo.Cantidad() != n || filas <= 0 || n % static_cast<std::size_t>(filas) != 0)
        return std::nullopt;
    PlanosColor p;
    const auto la = LimitesEscalado(azul, regla), lv = LimitesEscalado(verde, regla), lr = LimitesEscalado(rojo, regla);
    if (!la || !lv || !lr) return std::nullopt;
    p.limitesAzul = *la;
    p.limitesVerde = *lv;
    p.limitesRojo = *lr;
    p.azul.resize(n);
    p.verde.resize(n);
    p.rojo.resize(n);
    const long columnas = static_cast<long>(n / static_cast<std::size_t>(filas));
    bool hecho = true;
    ConTipo(azul.Codigo(), [&]<class T>(Muestra<T>) {
        const T* b[3] = {azul.Como<T>().data(), verde.Como<T>().data(), rojo.Como<T>().data()};
        uint8_t* o[3] = {p.azul.data(), p.verde.data(), p.rojo.data()};
        const LimitesBanda* l[3] = {&p.limitesAzul, &p.limitesVerde, &p.limitesRojo};
        // Whole samples: the byte of each possible value, once per band.
        std::vector<uint8_t> tabla[3];
        if constexpr (!kEsReal<T>)
            for (int k = 0; k < 3; ++k) {
                tabla[k].resize(std::size_t{1} << (8 * sizeof(T)));
                for (std::size_t v = 0; v < tabla[k].size(); ++v)
                    tabla[k][v] = EscalarValor(static_cast<double>(v), *l[k]);
            }
        hecho = PorFilas(progreso, filas, [&](long desde, long hasta) {
            const std::size_t i0 = static_cast<std::size_t>(desde * columnas), i1 = static_cast<std::size_t>(hasta * columnas);
            for (int k = 0; k < 3; ++k) {
                if constexpr (!kEsReal<T>)
                    for (std::size_t i = i0; i < i1; ++i) o[k][i] = tabla[k][b[k][i]];
                else
                    for (std::size_t i = i0; i < i1; ++i) o[k][i] = EscalarValor(static_cast<double>(b[k][i]), *l[k]);
            }
        });
    });
    if (!hecho) return std::nullopt;
    return p;
}

}  // namespace orvela
