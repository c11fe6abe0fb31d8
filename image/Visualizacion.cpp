#include "image/Visualizacion.h"

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

void IndicesPaletaTramo(const Muestras& m, std::size_t desde, std::size_t n, double mn, double mx, uint8_t* destino) {
    if (desde > m.Cantidad() || n > m.Cantidad() - desde) return;
    if (m.Codigo() == kByte) {
        const auto d = m.Como<uint8_t>().subspan(desde, n);
        std::copy(d.begin(), d.end(), destino);
        return;
    }
    ConTipo(m.Codigo(), [&]<class T>(Muestra<T>) {
        const auto d = m.Como<T>().subspan(desde, n);
        for (std::size_t i = 0; i < d.size(); ++i) destino[i] = IndicePaleta(static_cast<double>(d[i]), mn, mx);
    });
}

std::vector<uint8_t> IndicesPaleta(const Muestras& m) {
    std::vector<uint8_t> r(m.Cantidad());
    double mn = 0, mx = 0;
    if (m.Codigo() != kByte && !MinimoMaximo(m, mn, mx)) return r;
    IndicesPaletaTramo(m, 0, m.Cantidad(), mn, mx, r.data());
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
