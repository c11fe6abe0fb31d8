// A 7000 x 7000 scene for the benchmarks: the Landsat bands tiled to that
// size (a synthetic band when the shared data are absent), in each type.
#pragma once

#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "image/Conversion.h"
#include "image/Muestras.h"

namespace orvela::bench {

inline constexpr long kLado = 7000;

// Band `banda` (1..7) of the Landsat scene tiled to kLado x kLado, as bytes.
inline const std::vector<uint8_t>& BandaByte(int banda) {
    static std::vector<uint8_t> cache[8];
    auto& v = cache[banda];
    if (!v.empty()) return v;
    const long f0 = 310, c0 = 287;
    std::vector<uint8_t> base(f0 * c0);
    std::ifstream in(std::string(ORVELA_DATOS_COMPARTIDOS) + "/landsat-tm/tm" + std::to_string(banda) + ".ozm",
                     std::ios::binary);
    if (!in.read(reinterpret_cast<char*>(base.data()), static_cast<std::streamsize>(base.size()))) {
        uint32_t s = 12345u + banda;
        for (auto& b : base) {
            s = s * 1664525u + 1013904223u;
            b = static_cast<uint8_t>(40 + (s >> 24) % 120);
        }
    }
    v.resize(kLado * kLado);
    for (long f = 0; f < kLado; ++f)
        for (long c = 0; c < kLado; ++c) v[f * kLado + c] = base[(f % f0) * c0 + (c % c0)];
    return v;
}

// The same band in the sample type of `codigo`: byte as is, integer times
// 200, real and double with a fractional part.
inline Muestras Banda(int banda, int codigo) {
    const auto& b = BandaByte(banda);
    Muestras m = Muestras::Crear(codigo, b.size());
    ConTipo(codigo, [&]<class T>(Muestra<T>) {
        auto d = m.Como<T>();
        for (std::size_t i = 0; i < b.size(); ++i) {
            if constexpr (std::is_same_v<T, uint8_t>) d[i] = b[i];
            else if constexpr (std::is_same_v<T, uint16_t>) d[i] = static_cast<uint16_t>(b[i] * 200u);
            else d[i] = static_cast<T>(b[i] + 0.25 * (i % 4));
        }
    });
    return m;
}

// A result buffer whose pages are already in memory, so that the timed
// kernel does not pay the first touch of freshly allocated pages.
inline Muestras Salida(int codigo, std::size_t cantidad) {
    Muestras m = Muestras::Crear(codigo, cantidad);
    if (m.Datos()) std::memset(m.Datos(), 1, m.Bytes());
    return m;
}

}  // namespace orvela::bench
